#include "review/editing.h"

#include <algorithm>

namespace vesk {
namespace {

bool CarriesChange(RowShade shade) {
  return shade == RowShade::Changed;
}

/// One row back to its baseline, its edit code one down.
void UndoRow(ReviewGrid& grid, int row) {
  RowMark mark = grid.Mark(row);
  const int code = grid.CodeValue(row) - 1;
  mark.editCode = std::max(code, 0);
  if (code >= 0) mark.shade = code > 0 ? RowShade::Changed : RowShade::None;
  grid.SetLevel(row, mark.baselineCm);
  grid.SetMark(row, mark);
}

}  // namespace

QString NormaliseTypedLevel(const QString& typed) {
  QString text = typed.trimmed();
  for (const char16_t stand : {u'\u00F6', u'/', u','}) text.replace(QChar(stand), QLatin1Char('.'));
  return text;
}

Result<double> ReadTypedLevel(const QString& typed) {
  const QString what = QStringLiteral("The level was not changed");
  const QString text = NormaliseTypedLevel(typed);
  if (text.isEmpty()) return Error{what, {}, QStringLiteral("a level cannot be empty")};
  const auto level = ReadWholeNumber(text);
  if (!level) return Error{what, {}, QStringLiteral("a level must be a number")};
  return *level;
}

EditSession::EditSession(QObject* parent) : QObject(parent) {}

void EditSession::Begin(LoadedReadings& loaded) {
  logs_ = loaded.changeLogs;
  singleFile_ = loaded.waterYear == 0;
  journals_.Use(loaded);
  journalFailed_ = false;
  ResetSteps();
  changedRows_.clear();
  ReplaceGrid(std::move(loaded.grid));
  Q_EMIT StateChanged();
}

void EditSession::Clear() {
  LoadedReadings nothing;
  Begin(nothing);
}

void EditSession::ResetSteps() {
  done_.clear();
  undone_.clear();
  unsaved_ = false;
}

void EditSession::ReplaceGrid(ReviewGrid grid) {
  Q_EMIT GridAboutToBeReplaced();
  grid_ = std::move(grid);
  Q_EMIT GridReplaced();
}

Result<PendingEdits> EditSession::Pending() const {
  return journals_.Pending();
}

int EditSession::ResolveRow(const JournalRecord& record) const {
  const auto fits = [&](int row) {
    const Reading& reading = grid_.At(row);
    return reading.day == record.day && reading.minuteOfDay == record.minuteOfDay &&
           RecordLabel(reading) == record.label;
  };
  if (grid_.IsReading(record.row) && fits(record.row)) return record.row;
  int row = grid_.FindRow(record.day, record.minuteOfDay, 1);
  while (grid_.IsReading(row) && !fits(row)) row = grid_.FindRow(record.day, record.minuteOfDay, row + 1);
  return grid_.IsReading(row) ? row : 0;
}

bool EditSession::Repeat(const JournalRecord& record) {
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

int EditSession::Restore(const PendingEdits& pending) {
  int misfits = 0;
  for (const JournalRecord& record : pending.records) {
    if (!Repeat(record)) ++misfits;
  }
  std::vector<JournalRecord> kept;
  for (const Step& step : done_) kept.push_back(step.record);
  Journal(journals_.Restart(kept, misfits > 0));
  Q_EMIT AllRowsChanged();
  Q_EMIT StateChanged();
  return misfits;
}

Status EditSession::Discard() {
  const bool ownWork = unsaved_;
  ResetSteps();
  Q_EMIT StateChanged();
  return ownWork ? journals_.Finish() : journals_.Remove();
}

EditCommands EditSession::Commands() const {
  return {.save = unsaved_, .undoAll = unsaved_, .undoStep = !done_.empty(), .redoStep = !undone_.empty()};
}

bool EditSession::IsEditable(int row, GridColumn column) const {
  return column == GridColumn::Level && grid_.IsReading(row);
}

Result<bool> EditSession::EditLevel(int row, const QString& typed) {
  if (!IsEditable(row, GridColumn::Level)) {
    return Error{QStringLiteral("The level was not changed"), {}, QStringLiteral("the row holds no reading")};
  }
  const Result<double> level = ReadTypedLevel(typed);
  if (!level) return level.Failure();
  if (!ApplyEdit(row, *level)) return false;
  if (!journalFailed_) Journal(journals_.Append(done_.back().record));
  Q_EMIT RowChanged(row);
  Q_EMIT StateChanged();
  return true;
}

bool EditSession::ApplyEdit(int row, double levelCm) {
  const Reading& reading = grid_.At(row);
  if (NumberText(levelCm) == NumberText(reading.levelCm)) return false;
  Step step;
  step.record = {.kind = JournalRecord::Kind::Edit,
                 .row = row,
                 .day = reading.day,
                 .minuteOfDay = reading.minuteOfDay,
                 .label = RecordLabel(reading),
                 .levelCm = levelCm};
  step.oldLevelCm = reading.levelCm;
  step.oldMark = step.newMark = grid_.Mark(row);
  step.newMark.editCode = grid_.CodeValue(row) + 1;
  step.newMark.shade = RowShade::Changed;
  Redo(step);
  undone_.clear();
  done_.push_back(std::move(step));
  return true;
}

Result<bool> EditSession::CorrectDates(const QString& targetText) {
  if (!CanCorrectDates()) {
    return Error{QStringLiteral("The dates were not corrected"),
                 {},
                 QStringLiteral("only the readings of a single file can be re-timed")};
  }
  const Result<DateTime> target = ReadCorrectionTarget(targetText, grid_);
  if (!target) return target.Failure();
  if (!ApplyCorrection(*target)) return false;
  if (!journalFailed_) Journal(journals_.Append(done_.back().record));
  Q_EMIT StateChanged();
  return true;
}

bool EditSession::IsCorrected() const {
  return (!logs_.empty() && !logs_.front().overlay.correction.targets.empty()) || HasUnsavedCorrection();
}

bool EditSession::HasUnsavedCorrection() const {
  return std::any_of(done_.begin(), done_.end(),
                     [](const Step& step) { return step.gridBefore.has_value(); });
}

bool EditSession::ApplyCorrection(DateTime target) {
  if (target == SpanOf(grid_)->last) return false;
  Step step;
  step.record = {.kind = JournalRecord::Kind::CorrectDates, .target = target};
  step.gridBefore = grid_;
  Redo(step);
  undone_.clear();
  done_.push_back(std::move(step));
  return true;
}

void EditSession::Redo(const Step& step) {
  unsaved_ = true;
  if (step.gridBefore) {
    ReviewGrid corrected = grid_;
    vesk::CorrectDates(corrected, step.record.target);
    ReplaceGrid(std::move(corrected));
    return;
  }
  const int row = step.record.row;
  grid_.SetLevel(row, step.record.levelCm);
  grid_.SetMark(row, step.newMark);
  changedRows_.insert(std::upper_bound(changedRows_.begin(), changedRows_.end(), row), row);
}

std::optional<int> EditSession::UndoStep() {
  if (done_.empty()) return std::nullopt;
  Step step = std::move(done_.back());
  done_.pop_back();
  const int row = step.gridBefore ? 0 : step.record.row;
  if (step.gridBefore) {
    ReplaceGrid(*step.gridBefore);
  } else {
    grid_.SetLevel(row, step.oldLevelCm);
    grid_.SetMark(row, step.oldMark);
    changedRows_.erase(std::lower_bound(changedRows_.begin(), changedRows_.end(), row));
    Q_EMIT RowChanged(row);
  }
  undone_.push_back(std::move(step));
  unsaved_ = !done_.empty();
  if (!journalFailed_) Journal(journals_.AppendUndo(undone_.back().record));
  Q_EMIT StateChanged();
  return row;
}

std::optional<int> EditSession::RedoStep() {
  if (undone_.empty()) return std::nullopt;
  Step step = std::move(undone_.back());
  undone_.pop_back();
  const int row = step.gridBefore ? 0 : step.record.row;
  Redo(step);
  done_.push_back(std::move(step));
  if (!journalFailed_) Journal(journals_.AppendRedo(done_.back().record));
  if (row > 0) Q_EMIT RowChanged(row);
  Q_EMIT StateChanged();
  return row;
}

void EditSession::UndoAll() {
  // A date correction is taken back as a whole: the grid as it was before the first one holds every reading.
  const auto correction =
      std::find_if(done_.begin(), done_.end(), [](const Step& step) { return step.gridBefore.has_value(); });
  if (correction != done_.end()) ReplaceGrid(std::move(*correction->gridBefore));
  for (int row = 1; row <= grid_.ReadingCount(); ++row) UndoRow(grid_, row);
  ResetSteps();
  journalFailed_ = false;
  Journal(journals_.Finish());
  Q_EMIT AllRowsChanged();
  Q_EMIT StateChanged();
}

Status EditSession::Save() {
  Status saved = SaveChangeLogs();
  if (saved) saved = SaveCorrection();
  if (saved) {
    ResetSteps();
    journalFailed_ = false;
    Journal(journals_.Finish());
  }
  Q_EMIT AllRowsChanged();  // also behind a failure: an earlier log of this load may have been saved
  Q_EMIT StateChanged();
  return saved;
}

Status EditSession::SaveChangeLogs() {
  for (const LoadedChangeLog& log : logs_) {
    const std::optional<int> waterYear = singleFile_ ? std::nullopt : std::optional(log.waterYear);
    Status saved = SaveChangeLog(log.saveTo, grid_, log.overlay.orphans, waterYear);
    if (!saved) return saved;
  }
  return {};
}

// The change log now holds corrected times; the next load re-times its readings before it lays the log over
// them.
Status EditSession::SaveCorrection() {
  if (logs_.empty()) return {};
  SavedCorrection correction = logs_.front().overlay.correction;
  for (const Step& step : done_) {
    if (step.gridBefore) correction.targets.push_back(step.record.target);
  }
  if (correction == logs_.front().overlay.correction) return {};
  Status saved = WriteSavedCorrection(logs_.front().saveTo, correction);
  if (saved) logs_.front().overlay.correction = correction;
  return saved;
}

int EditSession::NextChange(int fromRow) const {
  for (int row = std::max(fromRow + 1, 1); row <= grid_.ReadingCount(); ++row) {
    const RowShade shade = grid_.Mark(row).shade;
    if (CarriesChange(shade) || shade == RowShade::Grey) return row;
  }
  return 0;
}

int EditSession::PreviousChange(int fromRow) const {
  for (int row = std::min(fromRow - 1, grid_.ReadingCount()); row >= 1; --row) {
    if (CarriesChange(grid_.Mark(row).shade)) return row;
  }
  return 0;
}

DateJump EditSession::GoToDate(const QString& typed) const {
  if (typed.trimmed().isEmpty()) return {};
  DateJump jump{.text = NormaliseDateText(typed).trimmed()};
  const auto day = ReadDate(jump.text);
  if (!day) return jump;
  const auto& readings = grid_.Readings();
  const auto found =
      std::find_if(readings.begin(), readings.end(), [&](const Reading& r) { return r.day == *day; });
  if (found != readings.end()) jump.row = static_cast<int>(found - readings.begin()) + 1;
  return jump;
}

void EditSession::Journal(const Status& status) {
  if (status) return;
  journalFailed_ = true;
  Q_EMIT JournalFailed(status.Failure().Text(), status.Failure());
}

}  // namespace vesk
