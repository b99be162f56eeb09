#include "review/session_journals.h"

#include <algorithm>
#include <iterator>

namespace vesk {

void SessionJournals::Use(const LoadedReadings& loaded) {
  journals_.clear();
  rows_.clear();
  const bool singleFile = IsSingleFile(loaded.series.Chosen());
  const auto& files = loaded.series.Files();
  const QString rawFile = singleFile && !files.empty() ? files.front().rawFile : QString();
  for (const LoadedChangeLog& log : loaded.changeLogs) {
    rows_.push_back(log.rows);
    journals_.push_back(std::make_unique<EditJournal>(JournalPath(log.saveTo, rawFile)));
  }
  if (journals_.empty()) journals_.push_back(std::make_unique<EditJournal>());
}

std::size_t SessionJournals::IndexOf(int row) const {
  const auto year =
      std::find_if(rows_.begin(), rows_.end(), [row](const RowRange& rows) { return rows.Holds(row); });
  return year == rows_.end() ? 0 : static_cast<std::size_t>(std::distance(rows_.begin(), year));
}

Result<PendingEdits> SessionJournals::Pending() const {
  PendingEdits all;
  for (const auto& journal : journals_) {
    Result<PendingEdits> pending = journal->Pending();
    if (!pending) return pending;
    all.torn = all.torn || pending->torn;
    AppendRecords(all.records, pending->records);
  }
  return all;
}

std::vector<std::vector<JournalRecord>> SessionJournals::SharesOf(
    const std::vector<JournalRecord>& records) const {
  std::vector<std::vector<JournalRecord>> shares(journals_.size());
  for (const JournalRecord& record : records) shares[IndexOf(record)].push_back(record);
  return shares;
}

// An operation over the end of a water year stands in two journals. Where the second cannot be written the
// first has it all the same: what was done is offered again rather than lost.
Status SessionJournals::Append(const std::vector<JournalRecord>& step) {
  if (journals_.size() == 1) return journals_.front()->Append(step);
  const auto shares = SharesOf(step);
  for (std::size_t i = 0; i < journals_.size(); ++i) {
    if (shares[i].empty()) continue;
    if (Status written = journals_[i]->Append(shares[i]); !written) return written;
  }
  return {};
}

Status SessionJournals::AppendUndo(const std::vector<JournalRecord>& step) {
  if (journals_.size() == 1) return journals_.front()->AppendUndo();
  const auto shares = SharesOf(step);
  for (std::size_t i = 0; i < journals_.size(); ++i) {
    if (shares[i].empty()) continue;
    if (Status written = journals_[i]->AppendUndo(); !written) return written;
  }
  return {};
}

Status SessionJournals::Restart(const std::vector<JournalRecord>& records, bool keepOld) {
  const auto shares = SharesOf(records);
  for (std::size_t i = 0; i < journals_.size(); ++i) {
    Status status = journals_[i]->Restart(shares[i], keepOld);
    if (!status) return status;
  }
  return {};
}

Status SessionJournals::Finish() {
  return OnEach(&EditJournal::Finish);
}
Status SessionJournals::Remove() {
  return OnEach(&EditJournal::Remove);
}

void SessionJournals::Leave() {
  for (const auto& journal : journals_) journal->Leave();
}

/// All of them, also behind one that failed; the first failure.
Status SessionJournals::OnEach(Status (EditJournal::*action)()) {
  Status first;
  for (const auto& journal : journals_) {
    Status status = (journal.get()->*action)();
    if (first && !status) first = status;
  }
  return first;
}

}  // namespace vesk
