// Unsaved work across a crash: what the journals give back to a load, and when they go.
#include <algorithm>
#include <iterator>

#include "review/editing.h"

namespace vesk {
namespace {

/// "ort", "Max" or "Min" of a record label.
QStringView KindOf(const QString& label) {
  return QStringView(label).mid(label.indexOf(QLatin1Char('-')) + 1);
}

}  // namespace

Result<PendingEdits> EditSession::Pending() const {
  return journals_.Pending();
}

// A raw file that came in between shifts the rows and the file numbers in the labels. Then a reading counts
// as found only when it is the one of its kind at that minute: files can overlap.
int EditSession::ResolveRow(const JournalRecord& record) const {
  const auto hasTime = [&](int row) {
    return grid_.At(row).day == record.day && grid_.At(row).minuteOfDay == record.minuteOfDay;
  };
  if (grid_.IsReading(record.row) && hasTime(record.row) &&
      RecordLabel(grid_.At(record.row)) == record.label) {
    return record.row;
  }
  int found = 0;
  int row = grid_.FindRow(record.day, record.minuteOfDay, 1);
  for (; grid_.IsReading(row); row = grid_.FindRow(record.day, record.minuteOfDay, row + 1)) {
    if (KindOf(RecordLabel(grid_.At(row))) != KindOf(record.label)) continue;
    if (found > 0) return 0;
    found = row;
  }
  return found;
}

// A record speaks of the times that were in force when it was made; under others its minute is another
// reading's.
bool EditSession::Repeat(const JournalRecord& record) {
  if (record.corrections != Corrections()) return false;
  if (record.kind == JournalRecord::Kind::CorrectDates) {
    if (!CanCorrectDates() || !ReadCorrectionTarget(DateTimeText(record.target), grid_)) return false;
    ApplyCorrection(record.target);
    return true;
  }
  const int row = ResolveRow(record);
  if (row == 0) return false;
  ApplyEdit(row, record.levelCm);
  return true;
}

// A journal can outlive the save of its work. A date correction in it that is among the saved ones gives that
// away: it was saved, and what stands before it too.
std::size_t EditSession::CountSaved(const std::vector<JournalRecord>& records) const {
  if (logs_.empty()) return 0;
  const std::vector<DateTime>& targets = logs_.front().overlay.correction.targets;
  const auto last = std::find_if(records.rbegin(), records.rend(), [&](const JournalRecord& record) {
    const auto index = static_cast<std::size_t>(record.corrections);
    return record.kind == JournalRecord::Kind::CorrectDates && index < targets.size() &&
           targets[index] == record.target;
  });
  return static_cast<std::size_t>(std::distance(last, records.rend()));
}

int EditSession::Restore(const PendingEdits& pending) {
  const std::size_t saved = CountSaved(pending.records);
  int misfits = 0;
  bool fits = true;
  for (std::size_t i = saved; i < pending.records.size(); ++i) {
    // Behind a correction that does not fit, the times are others than the records say.
    const bool done = fits && Repeat(pending.records[i]);
    if (!done) ++misfits;
    fits = fits && (done || pending.records[i].kind == JournalRecord::Kind::Edit);
  }
  std::vector<JournalRecord> kept;
  for (const Step& step : done_) kept.push_back(step.record);
  Journal(journals_.Restart(kept, misfits > 0 || saved > 0));
  Q_EMIT AllRowsChanged();
  Q_EMIT StateChanged();
  return misfits;
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
  if (!journalFailed_) Journal(journals_.Append(done_.back().record));
}

void EditSession::Journal(const Status& status) {
  if (status) return;
  journalFailed_ = true;
  Q_EMIT JournalFailed(status.Failure());
}

}  // namespace vesk
