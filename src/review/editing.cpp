#include "review/editing.h"

#include <QDateTime>

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "platform/current_user.h"

namespace vesk {
namespace {

/// A row back to its baseline, its edit code one down.
RowState Undone(RowState state, int codeValue) {
  const int code = codeValue - 1;
  state.levelCm = state.mark.baselineCm;
  state.mark.editCode = std::max(code, 0);
  if (code >= 0) state.mark.shade = code > 0 ? RowShade::Changed : RowShade::None;
  return state;
}

Message NotChanged() {
  return Wording{u"Seviye değiştirilmedi", u"The level was not changed"};
}

/// Level in cm of a typed text; refused when it is empty or no number.
Result<double> ReadTypedLevel(const QString& typed) {
  const QString text = NormaliseTypedLevel(typed);
  if (text.isEmpty())
    return Error{NotChanged(), {}, Wording{u"seviye boş olamaz", u"a level cannot be empty"}};
  const auto level = ReadLevel(text);
  if (!level)
    return Error{NotChanged(), {}, Wording{u"seviye bir sayı olmalıdır", u"a level must be a number"}};
  return *level;
}

}  // namespace

QString NormaliseTypedLevel(const QString& typed) {
  QString text = typed.trimmed();
  for (const char16_t stand : {u'\u00F6', u'/', u','}) text.replace(QChar(stand), QLatin1Char('.'));
  return text;
}

EditSession::EditSession(QObject* parent) : QObject(parent) {}

void EditSession::Begin(LoadedReadings loaded) {
  whole_ = loaded.whole;
  journals_.Use(loaded);
  logs_ = std::move(loaded.changeLogs);
  journalFailed_ = false;
  ResetSteps();
  edited_.clear();
  Q_EMIT GridAboutToBeReplaced();
  series_ = std::move(loaded.series);
  Q_EMIT GridReplaced();
  locks_.clear();
  lockPaths_.clear();
  for (const LoadedChangeLog& log : logs_) lockPaths_.push_back(log.saveTo + QStringLiteral(".lock"));
  outdated_ = false;
  TryLocks();
  Q_EMIT StateChanged();
}

void EditSession::Clear() {
  Begin({});
}

void EditSession::ResetSteps() {
  done_.clear();
  undone_.clear();
}

bool EditSession::IsEditable(int row, GridColumn column) const {
  return column == GridColumn::Level && series_.IsReading(row);
}

Result<bool> EditSession::EditLevel(int row, const QString& typed) {
  if (!IsEditable(row, GridColumn::Level)) {
    return Error{NotChanged(), {}, Wording{u"bu satırda kayıt yok", u"the row holds no reading"}};
  }
  const Result<double> level = ReadTypedLevel(typed);
  if (!level) return level.Failure();
  return Edit(row, *level);
}

Result<bool> EditSession::RestoreRawLevel(int row) {
  if (!series_.IsReading(row))
    return Error{NotChanged(), {}, Wording{u"bu satırda kayıt yok", u"the row holds no reading"}};
  return Edit(row, series_.RawLevel(row));
}

Result<bool> EditSession::Edit(int row, double levelCm) {
  const RowRef ref = series_.RefOf(row);
  if (NumberText(levelCm) == NumberText(series_.At(row).levelCm)) return false;
  if (const Status may = MayEdit(); !may) return may.Failure();
  ApplyEdit(ref, levelCm);
  JournalLastStep();
  Q_EMIT StateChanged();
  return true;
}

/// False when the row has that level already.
bool EditSession::ApplyEdit(const RowRef& row, double levelCm) {
  Step step{
      .record = RecordOf(row, levelCm), .row = row, .before = series_.StateOf(row).value_or(RowState{})};
  if (NumberText(levelCm) == NumberText(step.before.levelCm)) return false;
  step.after = step.before;
  step.after.levelCm = levelCm;
  const int code =
      row.rawRow > 0 ? series_.Raw().CodeValue(row.rawRow) : std::max(step.before.mark.editCode, 0);
  step.after.mark.editCode = code + 1;
  step.after.mark.shade = RowShade::Changed;
  Do(std::move(step));
  return true;
}

JournalRecord EditSession::RecordOf(const RowRef& row, double levelCm) const {
  if (row.rawRow > 0) {
    const Reading reading = series_.Raw().At(row.rawRow);
    return {.row = row.rawRow,
            .rawFile = series_.FileOf(row.rawRow),
            .time = reading.Time(),
            .readingKind = reading.kind,
            .fromCm = reading.levelCm,
            .levelCm = levelCm};
  }
  return {.kind = JournalRecord::Kind::EditExtreme,
          .time = DateTime(row.extreme.day),
          .readingKind = row.extreme.kind,
          .fromCm = series_.StateOf(row).value_or(RowState{}).levelCm,
          .levelCm = levelCm};
}

Result<bool> EditSession::CorrectDates(const QString& targetText) {
  const Message what = Wording{u"Tarihler düzeltilmedi", u"The dates were not corrected"};
  if (!CanCorrectDates()) {
    return Error{what,
                 {},
                 Wording{u"yalnız tek dosyanın kayıtları düzeltilebilir",
                         u"only the readings of a single file can be re-timed"}};
  }
  const Result<DateTime> target = ReadCorrectionTarget(targetText, series_.Raw());
  if (!target) return target.Failure();
  if (*target == series_.LastReading()) return false;
  if (const Status may = MayEdit(); !may) return Error{what, may.Failure().path, may.Failure().reason};
  ApplyCorrection(*target);
  JournalLastStep();
  Q_EMIT StateChanged();
  return true;
}

Result<bool> EditSession::RemoveDateCorrection() {
  const auto span = SpanOf(series_.Raw());
  if (!IsCorrected() || !span) return false;
  return CorrectDates(DateTimeText(span->last));
}

std::optional<DateTime> EditSession::SavedTarget() const {
  return logs_.empty() ? std::nullopt : logs_.front().overlay.correction.target;
}

/// False when the last reading stands there already.
bool EditSession::ApplyCorrection(DateTime target) {
  if (target == series_.LastReading()) return false;
  Step step{.record = {.kind = JournalRecord::Kind::CorrectDates, .target = target},
            .targetBefore = series_.Target()};
  const auto span = SpanOf(series_.Raw());
  if (span && target != span->last) step.targetAfter = target;
  Do(std::move(step));
  return true;
}

void EditSession::Do(Step step) {
  TakeStep(step, true);
  undone_.clear();
  done_.push_back(std::move(step));
}

void EditSession::TakeStep(const Step& step, bool forward) {
  if (step.IsCorrection()) {
    RetimeTo(forward ? step.targetAfter : step.targetBefore);
    return;
  }
  series_.SetState(step.row, forward ? step.after : step.before);
  if (forward) {
    edited_.push_back(step.row);
  } else {
    const auto last = std::find(edited_.rbegin(), edited_.rend(), step.row);
    if (last != edited_.rend()) edited_.erase(std::next(last).base());
  }
  ShowChanged(step.row);
}

void EditSession::RetimeTo(const std::optional<DateTime>& target) {
  Q_EMIT GridAboutToBeReplaced();
  series_.SetTarget(target);
  Q_EMIT GridReplaced();
}

/// In a re-timed grid the day's computed extremes follow a reading.
void EditSession::ShowChanged(const RowRef& row) {
  if (IsCorrected()) {
    Q_EMIT AllRowsChanged();
  } else {
    Q_EMIT RowChanged(row.rawRow);
  }
}

std::vector<int> EditSession::ChangedRows() const {
  std::vector<int> rows;
  for (const RowRef& row : edited_) {
    if (const int shown = series_.ShownRowOf(row); shown > 0) rows.push_back(shown);
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::optional<int> EditSession::UndoStep() {
  if (done_.empty()) return std::nullopt;
  Step step = std::move(done_.back());
  done_.pop_back();
  TakeStep(step, false);
  const int row = step.IsCorrection() ? 0 : series_.ShownRowOf(step.row);
  undone_.push_back(std::move(step));
  if (!journalFailed_) Journal(journals_.AppendUndo(undone_.back().record));
  if (done_.empty()) FinishJournals();
  Q_EMIT StateChanged();
  return row;
}

std::optional<int> EditSession::RedoStep() {
  if (undone_.empty() || !MayEdit()) return std::nullopt;
  Step step = std::move(undone_.back());
  undone_.pop_back();
  TakeStep(step, true);
  const int row = step.IsCorrection() ? 0 : series_.ShownRowOf(step.row);
  done_.push_back(std::move(step));
  JournalLastStep();
  Q_EMIT StateChanged();
  return row;
}

void EditSession::UndoAll() {
  if (HasUnsavedCorrection()) RetimeTo(SavedTarget());
  std::vector<std::pair<RowRef, RowState>> states;
  const RawRows& raw = series_.Raw();
  states.reserve(static_cast<std::size_t>(raw.ReadingCount()));
  for (int row = 1; row <= raw.ReadingCount(); ++row) {
    const RowRef ref{.rawRow = row};
    states.emplace_back(ref, Undone(*series_.StateOf(ref), raw.CodeValue(row)));
  }
  for (const auto& [key, edit] : series_.EditedExtremes()) {
    const RowRef ref{.extreme = key};
    RowState state = Undone(*series_.StateOf(ref), edit.state.mark.editCode);
    // Never saved (a saved one counts on from kSavedCode) and back at what was computed, it is nobody's any
    // more, or it would keep the minute of its edit.
    if (state.mark.baselineCm == state.mark.rawCm && state.mark.editCode < kSavedCode / 2)
      state.mark.editCode = 0;
    states.emplace_back(ref, state);
  }
  series_.SetStates(states);
  ResetSteps();
  FinishJournals();
  Q_EMIT AllRowsChanged();
  Q_EMIT StateChanged();
}

int EditSession::NextChange(int fromRow) const {
  for (int row = std::max(fromRow + 1, 1); row <= series_.ReadingCount(); ++row) {
    const RowShade shade = series_.Mark(row).shade;
    if (shade == RowShade::Changed || shade == RowShade::Grey) return row;
  }
  return 0;
}

int EditSession::PreviousChange(int fromRow) const {
  for (int row = std::min(fromRow - 1, series_.ReadingCount()); row >= 1; --row) {
    if (series_.Mark(row).shade == RowShade::Changed) return row;
  }
  return 0;
}

DateJump EditSession::GoToDate(const QString& typed) const {
  if (typed.trimmed().isEmpty()) return {};
  DateJump jump{.text = NormaliseDateText(typed).trimmed()};
  const auto day = ReadDate(jump.text);
  if (!day) return jump;
  for (int row = 1; row <= series_.ReadingCount() && jump.row == 0; ++row) {
    if (series_.At(row).day == *day) jump.row = row;
  }
  return jump;
}

}  // namespace vesk
