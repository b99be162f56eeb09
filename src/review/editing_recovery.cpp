// Unsaved work across a crash: what the journals give back to a load, and when they go.
#include <algorithm>
#include <map>

#include "review/change_log_rows.h"
#include "review/editing.h"

namespace vesk {

Result<PendingEdits> EditSession::Pending() {
  if (holder_) return PendingEdits();  // the journal is the holder's
  Result<PendingEdits> pending = journals_.Pending();
  if (!pending || pending->Empty() || HasUnsavedChanges()) return pending;
  if (IsSaved(pending->records)) {  // a journal outlived the save of its work
    if (Status gone = journals_.Remove(); !gone) return gone.Failure();
    return PendingEdits();
  }
  const bool fits = std::ranges::all_of(pending->records, [this](const JournalRecord& record) {
    return record.kind != JournalRecord::Kind::Edit || ResolveRawRow(record) > 0;
  });
  if (fits || whole_) return pending;
  return Error{
      Wording{u"Kaydedilmemiş değişiklikler bekliyor", u"Unsaved changes wait"},
      {},
      Wording{u"ait oldukları kayıtlar bu yüklemede eksik; yükleme tam olunca önerilirler",
              u"readings that they belong to are missing from this load; they are offered when it is whole"}};
}

/// The level that each row has in the end.
EditSession::Levels EditSession::FinalLevels(const std::vector<JournalRecord>& records) const {
  Levels levelsCm;
  for (const JournalRecord& record : records) {
    if (record.kind == JournalRecord::Kind::CorrectDates) continue;
    if (const auto row = Resolve(record)) levelsCm[*row] = record.levelCm;
  }
  return levelsCm;
}

bool EditSession::HasLevel(const RowRef& row, double levelCm) const {
  const auto state = series_.StateOf(row);
  return state && IsSameLevel(state->levelCm, levelCm);
}

/// True when doing it all again would change nothing.
bool EditSession::IsSaved(const std::vector<JournalRecord>& records) const {
  std::optional<TrueTimes> target = PresentTimes();
  for (const JournalRecord& record : records) {
    if (record.kind == JournalRecord::Kind::CorrectDates) {
      target = record.target;
    } else if (!Resolve(record)) {
      return false;
    }
  }
  return target == PresentTimes() && std::ranges::all_of(FinalLevels(records), [this](const auto& row) {
           return HasLevel(row.first, row.second);
         });
}

// A raw file that came in between shifts the rows. Then a reading counts as found only when it is the one of
// its kind at that minute in its file, or in all of them when its file is told by nothing: files can overlap.
int EditSession::ResolveRawRow(const JournalRecord& record) const {
  const RawRows& raw = series_.Raw();
  const auto isMeant = [&](int row) {
    return raw.At(row).Time() == record.time && raw.At(row).kind == record.readingKind &&
           series_.FileOf(row).compare(record.rawFile, Qt::CaseInsensitive) == 0;
  };
  if (raw.IsReading(record.row) && isMeant(record.row)) return record.row;
  int found = 0;
  for (int row = 1; row <= raw.ReadingCount(); ++row) {
    if (!isMeant(row)) continue;
    if (found > 0) return 0;
    found = row;
  }
  return found;
}

std::optional<RowRef> EditSession::Resolve(const JournalRecord& record) const {
  if (record.kind == JournalRecord::Kind::Edit) {
    const int row = ResolveRawRow(record);
    return row > 0 ? std::optional(RowRef{.rawRow = row}) : std::nullopt;
  }
  return RowRef{.extreme = {std::chrono::floor<std::chrono::days>(record.time), record.readingKind}};
}

/// Repeats one step; how many of its records do not fit. saved: rows that have their last level of the
/// journal already, because a save got as far as that.
int EditSession::Repeat(const std::vector<JournalRecord>& records, const Levels& saved) {
  const JournalRecord& first = records.front();
  if (first.kind == JournalRecord::Kind::CorrectDates) {
    if (!CanCorrectDates() || !CheckCorrectionTarget(first.target, series_.Raw())) return 1;
    ApplyCorrection(first.target);
    return 0;
  }
  Step step{.why = {first.step > 0 ? first.operation : QStringLiteral("edit"), first.reason}};
  int misfits = 0;
  for (const JournalRecord& record : records) misfits += RepeatEdit(record, saved, step) ? 0 : 1;
  if (!step.rows.empty()) Do(std::move(step));
  return misfits;
}

/// Adds what the record does to the step; false when it does not fit.
bool EditSession::RepeatEdit(const JournalRecord& record, const Levels& saved, Step& step) {
  const auto row = Resolve(record);
  if (!row || !series_.StateOf(*row)) return false;
  if (saved.contains(*row) || HasLevel(*row, record.levelCm)) return true;
  // Of two unsaved works behind one another, the later one did not see the earlier one's levels.
  const bool touched = touched_.contains(*row);
  if (!touched && !HasLevel(*row, record.fromCm)) return false;
  if (auto change = StepOf(*row, record.levelCm)) step.rows.push_back(std::move(*change));
  touched_.insert(*row);
  return true;
}

int EditSession::Restore(const PendingEdits& pending) {
  if (const Status may = MayEdit(); !may) return static_cast<int>(pending.records.size());
  Levels saved = FinalLevels(pending.records);
  std::erase_if(saved, [this](const auto& row) { return !HasLevel(row.first, row.second); });
  touched_.clear();
  touched_.insert(edited_.begin(), edited_.end());
  int misfits = 0;
  const std::vector<JournalRecord>& records = pending.records;
  for (std::size_t first = 0; first < records.size();) {
    const std::size_t end = EndOfStep(records, first);
    const auto at = [&](std::size_t place) { return records.begin() + static_cast<std::ptrdiff_t>(place); };
    misfits += Repeat({at(first), at(end)}, saved);
    first = end;
  }
  touched_.clear();
  Journal(journals_.Restart(DoneRecords(), misfits > 0));
  Q_EMIT AllRowsChanged();
  Q_EMIT StateChanged();
  return misfits;
}

std::vector<JournalRecord> EditSession::DoneRecords() const {
  std::vector<JournalRecord> records;
  int number = 0;
  for (const Step& step : done_) {
    ++number;
    for (JournalRecord& record : RecordsOf(step)) {
      if (record.step > 0) record.step = number;
      records.push_back(std::move(record));
    }
  }
  return records;
}

Status EditSession::Discard() {
  Status gone = HasUnsavedChanges() ? journals_.Finish() : journals_.Remove();
  if (!gone) return gone;
  ResetSteps();
  Q_EMIT StateChanged();
  return gone;
}

void EditSession::FinishJournals() {
  journalFailed_ = false;
  Journal(journals_.Finish());
}

void EditSession::JournalLastStep() {
  if (!journalFailed_) Journal(journals_.Append(RecordsOf(done_.back())));
}

void EditSession::Journal(const Status& status) {
  if (status) return;
  journalFailed_ = true;
  Q_EMIT JournalFailed(status.Failure());
}

}  // namespace vesk
