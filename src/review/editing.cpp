#include "review/editing.h"

#include <algorithm>

namespace vesk {
namespace {

/// One row back to its baseline, its edit code one down.
void UndoRow(ReviewGrid& grid, int row) {
  RowMark mark = grid.Mark(row);
  const int code = grid.CodeValue(row) - 1;
  mark.editCode = std::max(code, 0);
  if (code >= 0) mark.shade = code > 0 ? RowShade::Changed : RowShade::None;
  grid.SetLevel(row, mark.baselineCm);
  grid.SetMark(row, mark);
}

/// Level in cm of a typed text; refused when it is empty or no number.
Result<double> ReadTypedLevel(const QString& typed) {
  const QString what = QStringLiteral("The level was not changed");
  const QString text = NormaliseTypedLevel(typed);
  if (text.isEmpty()) return Error{what, {}, QStringLiteral("a level cannot be empty")};
  const auto level = ReadLevel(text);
  if (!level) return Error{what, {}, QStringLiteral("a level must be a number")};
  return *level;
}

}  // namespace

QString NormaliseTypedLevel(const QString& typed) {
  QString text = typed.trimmed();
  for (const char16_t stand : {u'\u00F6', u'/', u','}) text.replace(QChar(stand), QLatin1Char('.'));
  return text;
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
}

void EditSession::ReplaceGrid(ReviewGrid grid) {
  Q_EMIT GridAboutToBeReplaced();
  grid_ = std::move(grid);
  Q_EMIT GridReplaced();
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
  JournalLastStep();
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
                 .levelCm = levelCm,
                 .corrections = Corrections()};
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
  JournalLastStep();
  Q_EMIT StateChanged();
  return true;
}

int EditSession::SavedCorrections() const {
  return logs_.empty() ? 0 : static_cast<int>(logs_.front().overlay.correction.targets.size());
}

int EditSession::Corrections() const {
  if (done_.empty()) return SavedCorrections();
  return done_.back().record.corrections + (done_.back().gridBefore ? 1 : 0);
}

bool EditSession::ApplyCorrection(DateTime target) {
  if (target == SpanOf(grid_)->last) return false;
  Step step;
  step.record = {.kind = JournalRecord::Kind::CorrectDates, .target = target, .corrections = Corrections()};
  step.gridBefore = grid_;
  Redo(step);
  undone_.clear();
  done_.push_back(std::move(step));
  return true;
}

void EditSession::Redo(const Step& step) {
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
  if (!journalFailed_) Journal(journals_.AppendUndo(undone_.back().record));
  if (done_.empty()) FinishJournals();
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
  JournalLastStep();
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
  FinishJournals();
  Q_EMIT AllRowsChanged();
  Q_EMIT StateChanged();
}

Status EditSession::Save() {
  Status saved = singleFile_ && !logs_.empty() ? SaveLogOfFile(logs_.front()) : SaveLogsOfYears();
  if (saved) {
    ResetSteps();
    FinishJournals();
  }
  Q_EMIT AllRowsChanged();  // also behind a failure: an earlier log of this load may have been saved
  Q_EMIT StateChanged();
  return saved;
}

// Each year goes into its own log, where the next load of that year alone finds it.
Status EditSession::SaveLogsOfYears() {
  if (logs_.empty()) return {};
  std::vector<std::vector<int>> rows(logs_.size());
  for (const int row : RowsToSave(grid_)) rows[journals_.IndexOf(row)].push_back(row);
  for (std::size_t i = 0; i < logs_.size(); ++i) {
    const LoadedChangeLog& log = logs_[i];
    Status saved = SaveChangeLog(log.saveTo, grid_, rows[i], log.overlay.orphans, log.rows);
    if (!saved) return saved;
  }
  return {};
}

// A change log with corrected times fits re-timed readings only, so the corrections go first, as a plan that
// counts from the moment when the change log is in its place.
Status EditSession::SaveLogOfFile(LoadedChangeLog& log) {
  SavedCorrection& correction = log.overlay.correction;
  const std::vector<int> rows = RowsToSave(grid_);
  PlannedTargets planned;
  for (const Step& step : done_) {
    if (step.gridBefore) planned.targets.push_back(step.record.target);
  }
  if (!planned.targets.empty()) planned.changeLog = ChangeLogContent(grid_, rows, log.overlay.orphans);
  Status saved = WriteSavedCorrection(log.saveTo, correction, planned);
  if (saved) saved = SaveChangeLog(log.saveTo, grid_, rows, log.overlay.orphans);
  if (!saved) return saved;
  correction.targets.insert(correction.targets.end(), planned.targets.begin(), planned.targets.end());
  // From here on the plan counts; a next save makes it plain if this cannot.
  static_cast<void>(WriteSavedCorrection(log.saveTo, correction));
  return {};
}

int EditSession::NextChange(int fromRow) const {
  for (int row = std::max(fromRow + 1, 1); row <= grid_.ReadingCount(); ++row) {
    const RowShade shade = grid_.Mark(row).shade;
    if (shade == RowShade::Changed || shade == RowShade::Grey) return row;
  }
  return 0;
}

int EditSession::PreviousChange(int fromRow) const {
  for (int row = std::min(fromRow - 1, grid_.ReadingCount()); row >= 1; --row) {
    if (grid_.Mark(row).shade == RowShade::Changed) return row;
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

}  // namespace vesk
