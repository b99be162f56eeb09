#include "review/station_series.h"

#include <algorithm>

namespace vesk {

namespace {

constexpr std::uint8_t kComputedFile = 1;  // computed extremes are labelled "01-"

void SetTime(Reading& reading, DateTime time) {
  reading.day = std::chrono::floor<std::chrono::days>(time);
  reading.minuteOfDay = static_cast<std::int16_t>((time - reading.day).count());
}

ExtremeKey KeyOf(const RetimedRow& extreme) {
  return {std::chrono::floor<std::chrono::days>(extreme.time), extreme.kind};
}

}  // namespace

StationSeries::StationSeries(std::vector<Reading> raw, std::vector<RawFileRows> files, StationId station,
                             Choice chosen)
    : station_(std::move(station)),
      chosen_(std::move(chosen)),
      raw_(std::move(raw)),
      files_(std::move(files)) {}

int StationSeries::ReadingCount() const {
  return target_ ? static_cast<int>(view_.size()) : raw_.ReadingCount();
}

const ExtremeEdit* StationSeries::EditOf(const RetimedRow& extreme) const {
  if (edits_.empty()) return nullptr;
  const auto edit = edits_.find(KeyOf(extreme));
  return edit == edits_.end() ? nullptr : &edit->second;
}

Reading StationSeries::RetimedAt(int row) const {
  const RetimedRow& shown = Retimed(row);
  Reading reading{.levelCm = shown.computedCm, .kind = shown.kind, .sourceFile = kComputedFile};
  if (shown.rawRow > 0) reading = raw_.At(shown.rawRow);
  SetTime(reading, shown.time);
  if (const ExtremeEdit* edit = shown.rawRow > 0 ? nullptr : EditOf(shown)) {
    reading.levelCm = edit->state.levelCm;
    reading.minuteOfDay = static_cast<std::int16_t>(edit->minuteOfDay);
  }
  return reading;
}

RowMark StationSeries::Mark(int row) const {
  if (!target_) return raw_.Mark(row);
  const RetimedRow& shown = Retimed(row);
  if (shown.rawRow == 0) {
    if (const ExtremeEdit* edit = EditOf(shown)) return edit->state.mark;
    return {.rawCm = shown.computedCm, .baselineCm = shown.computedCm, .shade = RowShade::Corrected};
  }
  RowMark mark = raw_.Mark(shown.rawRow);
  // A changed level stays marked: operators go from change to change in a re-timed grid, too.
  if (mark.shade != RowShade::Changed) mark.shade = RowShade::Corrected;
  return mark;
}

std::optional<DischargeValue> StationSeries::CurveDischargeOf(int row) const {
  if (!curve_) return std::nullopt;
  const Reading reading = At(row);
  return curve_->At(reading.Time(), reading.levelCm);
}

Discharge StationSeries::DischargeOf(int row) const {
  if (const auto value = CurveDischargeOf(row)) return {DischargeText(*value), DischargeOrigin::Curve};
  return LoggedDischargeOf(row);
}

Discharge StationSeries::LoggedDischargeOf(int row) const {
  if (!target_) return raw_.DischargeOf(row);
  const RetimedRow& shown = Retimed(row);
  if (shown.rawRow > 0) return raw_.DischargeOf(shown.rawRow);
  const ExtremeEdit* edit = EditOf(shown);
  return edit ? edit->state.discharge : Discharge();
}

std::vector<Reading> StationSeries::ReadingsAsShown() const {
  std::vector<Reading> readings;
  readings.reserve(static_cast<std::size_t>(ReadingCount()));
  for (int row = 1; row <= ReadingCount(); ++row) readings.push_back(At(row));
  return readings;
}

RowRef StationSeries::RefOf(int shownRow) const {
  if (!target_) return {.rawRow = shownRow};
  const RetimedRow& shown = Retimed(shownRow);
  if (shown.rawRow > 0) return {.rawRow = shown.rawRow};
  return {.extreme = KeyOf(shown)};
}

int StationSeries::ShownRowOf(const RowRef& row) const {
  if (!target_) return row.rawRow;
  for (int shown = 1; shown <= ReadingCount(); ++shown) {
    if (RefOf(shown) == row) return shown;
  }
  return 0;
}

QString StationSeries::FileOf(int rawRow) const {
  const auto file = std::partition_point(files_.begin(), files_.end(),
                                         [rawRow](const RawFileRows& rows) { return rows.last < rawRow; });
  return file != files_.end() && file->first <= rawRow ? file->rawFile : QString();
}

std::optional<RowState> StationSeries::StateOf(const RowRef& row) const {
  if (row.rawRow > 0) {
    if (!raw_.IsReading(row.rawRow)) return std::nullopt;
    return raw_.StateOf(row.rawRow);
  }
  const auto edit = edits_.find(row.extreme);
  if (edit != edits_.end()) return edit->second.state;
  const int shown = ShownRowOf(row);
  if (shown == 0) return std::nullopt;
  return RowState{At(shown).levelCm, Mark(shown), {}};
}

void StationSeries::Store(const RowRef& row, const RowState& state) {
  if (row.rawRow > 0) {
    raw_.SetState(row.rawRow, state);
    return;
  }
  if (state.mark.editCode <= 0) {  // nobody's any more
    edits_.erase(row.extreme);
    return;
  }
  const auto known = edits_.find(row.extreme);
  if (known != edits_.end()) {
    known->second.state = state;
    return;
  }
  const int shown = ShownRowOf(row);
  edits_[row.extreme] = {.minuteOfDay = shown > 0 ? At(shown).minuteOfDay : 0, .state = state};
}

void StationSeries::SetState(const RowRef& row, const RowState& state) {
  SetStates({{row, state}});
}

void StationSeries::SetStates(const std::vector<std::pair<RowRef, RowState>>& states) {
  for (const auto& [row, state] : states) Store(row, state);
  FormView();
}

void StationSeries::PutExtreme(const ExtremeKey& key, const ExtremeEdit& edit) {
  edits_[key] = edit;
  FormView();
}

void StationSeries::SetTarget(const std::optional<TrueTimes>& target) {
  const auto span = SpanOf(raw_);
  const bool corrects = target && span && span->first < span->last && *target != TrueTimes(span->last);
  target_ = corrects ? target : std::nullopt;
  FormView();
}

std::optional<DateTime> StationSeries::LastReading() const {
  if (target_) return target_->last;
  const auto span = SpanOf(raw_);
  return span ? std::optional(span->last) : std::nullopt;
}

void StationSeries::TakeBaseline() {
  raw_.TakeBaseline();
  for (auto& [key, edit] : edits_) edit.state.mark.baselineCm = edit.state.levelCm;
}

void StationSeries::FormView() {
  view_ = target_ ? RetimeReadings(raw_, *target_) : std::vector<RetimedRow>();
}

}  // namespace vesk
