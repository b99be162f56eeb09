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

void EditSession::UseCurve(std::shared_ptr<const DischargeSource> curve) {
  if (curve == series_.Curve()) return;
  series_.SetCurve(std::move(curve));
  Q_EMIT AllRowsChanged();
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

Result<int> EditSession::RestoreRawLevels(const ShownRange& range) {
  std::vector<LevelChange> changes;
  for (int row = std::max(range.first, 1); row <= std::min(range.last, series_.ReadingCount()); ++row) {
    if (series_.IsCorrected(row)) changes.push_back({row, series_.RawLevel(row)});
  }
  return Correct(changes, {OperationWord(RangeOperation::Raw), reason_});
}

Result<bool> EditSession::Edit(int row, double levelCm) {
  if (NumberText(levelCm) == NumberText(series_.At(row).levelCm)) return false;
  const Result<int> changed = Correct({{row, levelCm}}, {QStringLiteral("edit"), reason_});
  if (!changed) return changed.Failure();
  return *changed > 0;
}

Result<int> EditSession::Correct(const std::vector<LevelChange>& changes, const Purpose& why) {
  Step step{.why = why};
  std::vector<bool> taken(static_cast<std::size_t>(series_.RowCount()));
  for (const LevelChange& change : changes) {
    if (!series_.IsReading(change.row))
      return Error{NotChanged(), {}, Wording{u"bu satırda kayıt yok", u"the row holds no reading"}};
    if (!ReadLevel(NumberText(change.levelCm)))
      return Error{NotChanged(), {}, Wording{u"seviye bir sayı olmalıdır", u"a level must be a number"}};
    auto row = StepOf(series_.RefOf(change.row), change.levelCm);
    if (!row || taken[static_cast<std::size_t>(change.row)]) continue;
    taken[static_cast<std::size_t>(change.row)] = true;
    step.rows.push_back(std::move(*row));
  }
  if (step.rows.empty()) return 0;
  if (const Status may = MayEdit(); !may) return may.Failure();
  const auto count = static_cast<int>(step.rows.size());
  Do(std::move(step));
  JournalLastStep();
  Q_EMIT StateChanged();
  return count;
}

/// Nothing when the row has that level already.
std::optional<EditSession::RowStep> EditSession::StepOf(const RowRef& row, double levelCm) const {
  RowStep step{.row = row, .before = series_.StateOf(row).value_or(RowState{})};
  if (NumberText(levelCm) == NumberText(step.before.levelCm)) return std::nullopt;
  step.after = step.before;
  step.after.levelCm = levelCm;
  const int code =
      row.rawRow > 0 ? series_.Raw().CodeValue(row.rawRow) : std::max(step.before.mark.editCode, 0);
  step.after.mark.editCode = code + 1;
  step.after.mark.shade = RowShade::Changed;
  return step;
}

JournalRecord EditSession::RecordOf(const RowStep& change) const {
  const RowRef& row = change.row;
  if (row.rawRow > 0) {
    const Reading& reading = series_.Raw().Readings()[static_cast<std::size_t>(row.rawRow - 1)];
    return {.row = row.rawRow,
            .rawFile = series_.FileOf(row.rawRow),
            .time = reading.Time(),
            .readingKind = reading.kind,
            .fromCm = change.before.levelCm,
            .levelCm = change.after.levelCm};
  }
  return {.kind = JournalRecord::Kind::EditExtreme,
          .time = DateTime(row.extreme.day),
          .readingKind = row.extreme.kind,
          .fromCm = change.before.levelCm,
          .levelCm = change.after.levelCm};
}

std::vector<JournalRecord> EditSession::RecordsOf(const Step& step) const {
  if (step.IsCorrection()) return {{.kind = JournalRecord::Kind::CorrectDates, .target = step.target}};
  const bool plain = step.rows.size() == 1 && step.why == Purpose{QStringLiteral("edit"), {}};
  std::vector<JournalRecord> records;
  records.reserve(step.rows.size());
  for (const RowStep& change : step.rows) {
    records.push_back(RecordOf(change));
    if (plain) continue;
    records.back().step = 1;
    records.back().operation = step.why.operation;
    records.back().reason = step.why.reason;
  }
  return records;
}

/// What each row was changed for last.
std::map<RowRef, Purpose> EditSession::Purposes() const {
  std::map<RowRef, Purpose> purposes;
  for (const Step& step : done_) {
    for (const RowStep& change : step.rows) purposes[change.row] = step.why;
  }
  return purposes;
}

Result<bool> EditSession::CorrectDates(const QString& targetText) {
  return CorrectDates(ReadCorrectionTarget(targetText, series_.Raw()));
}

Result<bool> EditSession::CorrectDates(const TrueTimes& times) {
  return CorrectDates(CheckCorrectionTarget(times, series_.Raw()));
}

Result<bool> EditSession::CorrectDates(const Result<TrueTimes>& target) {
  const Message what = Wording{u"Tarihler düzeltilmedi", u"The dates were not corrected"};
  if (!CanCorrectDates()) {
    return Error{what,
                 {},
                 Wording{u"yalnız tek dosyanın kayıtları düzeltilebilir",
                         u"only the readings of a single file can be re-timed"}};
  }
  if (!target) return target.Failure();
  if (*target == PresentTimes()) return false;
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

/// Those that hold now, be they the logger's own; nothing without readings.
std::optional<TrueTimes> EditSession::PresentTimes() const {
  if (series_.Target()) return series_.Target();
  const auto last = series_.LastReading();
  return last ? std::optional<TrueTimes>(*last) : std::nullopt;
}

std::optional<TrueTimes> EditSession::SavedTarget() const {
  return logs_.empty() ? std::nullopt : logs_.front().overlay.correction.target;
}

/// False when the readings have these times already.
bool EditSession::ApplyCorrection(const TrueTimes& target) {
  if (target == PresentTimes()) return false;
  Step step{.target = target, .targetBefore = series_.Target()};
  const auto span = SpanOf(series_.Raw());
  if (span && target != TrueTimes(span->last)) step.targetAfter = target;
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
  std::vector<std::pair<RowRef, RowState>> states;
  states.reserve(step.rows.size());
  for (const RowStep& change : step.rows)
    states.emplace_back(change.row, forward ? change.after : change.before);
  series_.SetStates(states);
  if (forward) {
    for (const RowStep& change : step.rows) edited_.push_back(change.row);
  } else {
    ForgetEdits(step);
  }
  ShowChanged(step);
}

/// Of several edits of a row the last one goes. Steps are taken back in turn, so nearly always those at the
/// end.
void EditSession::ForgetEdits(const Step& step) {
  const auto atEnd = [&] {
    return edited_.size() >= step.rows.size() &&
           std::equal(step.rows.rbegin(), step.rows.rend(), edited_.rbegin(),
                      [](const RowStep& change, const RowRef& row) { return change.row == row; });
  };
  if (atEnd()) {
    edited_.resize(edited_.size() - step.rows.size());
    return;
  }
  for (const RowStep& change : step.rows) {
    const auto last = std::find(edited_.rbegin(), edited_.rend(), change.row);
    if (last != edited_.rend()) edited_.erase(std::next(last).base());
  }
}

void EditSession::RetimeTo(const std::optional<TrueTimes>& target) {
  Q_EMIT GridAboutToBeReplaced();
  series_.SetTarget(target);
  Q_EMIT GridReplaced();
}

/// In a re-timed grid the day's computed extremes follow a reading.
void EditSession::ShowChanged(const Step& step) {
  if (IsCorrected() || step.rows.size() > 1) {
    Q_EMIT AllRowsChanged();
  } else {
    Q_EMIT RowChanged(step.rows.front().row.rawRow);
  }
}

/// 0: the step was the whole grid's, or none of its rows is on the screen.
int EditSession::FirstShownRow(const Step& step) const {
  int first = 0;
  for (const RowStep& change : step.rows) {
    const int shown = series_.ShownRowOf(change.row);
    if (shown > 0 && (first == 0 || shown < first)) first = shown;
  }
  return first;
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
  const int row = FirstShownRow(step);
  undone_.push_back(std::move(step));
  if (!journalFailed_) Journal(journals_.AppendUndo(RecordsOf(undone_.back())));
  if (done_.empty()) FinishJournals();
  Q_EMIT StateChanged();
  return row;
}

std::optional<int> EditSession::RedoStep() {
  if (undone_.empty() || !MayEdit()) return std::nullopt;
  Step step = std::move(undone_.back());
  undone_.pop_back();
  TakeStep(step, true);
  const int row = FirstShownRow(step);
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
