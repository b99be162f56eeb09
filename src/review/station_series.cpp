#include "review/station_series.h"

#include <algorithm>

namespace vesk {

StationSeries::StationSeries(ReviewGrid raw, std::vector<RawFileRows> files)
    : raw_(std::move(raw)), files_(std::move(files)) {}

RowRef StationSeries::RefOf(int shownRow) const {
  if (!target_) return {.rawRow = shownRow};
  const int rawRow = view_.rawRows[static_cast<std::size_t>(shownRow - 1)];
  if (rawRow > 0) return {.rawRow = rawRow};
  const Reading& extreme = view_.grid.At(shownRow);
  return {.extreme = {extreme.day, extreme.kind}};
}

int StationSeries::ShownRowOf(const RowRef& row) const {
  if (!target_) return row.rawRow;
  for (int shown = 1; shown <= view_.grid.ReadingCount(); ++shown) {
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
  const bool isRaw = row.rawRow > 0;
  if (!isRaw) {
    const auto edit = edits_.find(row.extreme);
    if (edit != edits_.end())
      return RowState{edit->second.levelCm, edit->second.mark, edit->second.discharge};
  }
  const int at = isRaw ? row.rawRow : ShownRowOf(row);
  const ReviewGrid& grid = isRaw ? raw_ : Shown();
  if (!grid.IsReading(at)) return std::nullopt;
  return RowState{grid.At(at).levelCm, grid.Mark(at), grid.Discharge(at)};
}

void StationSeries::Store(const RowRef& row, const RowState& state) {
  if (row.rawRow > 0) {
    raw_.SetLevel(row.rawRow, state.levelCm);
    raw_.SetMark(row.rawRow, state.mark);
    raw_.SetDischarge(row.rawRow, state.discharge);
    return;
  }
  if (state.mark.editCode <= 0) {  // nobody's any more
    edits_.erase(row.extreme);
    return;
  }
  const auto known = edits_.find(row.extreme);
  const int shown = known == edits_.end() ? ShownRowOf(row) : 0;
  const int minute = shown > 0               ? view_.grid.At(shown).minuteOfDay
                     : known != edits_.end() ? known->second.minuteOfDay
                                             : 0;
  edits_[row.extreme] = {
      .levelCm = state.levelCm, .minuteOfDay = minute, .mark = state.mark, .discharge = state.discharge};
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

void StationSeries::SetTarget(std::optional<DateTime> target) {
  const auto span = SpanOf(raw_);
  const bool corrects = target && span && span->first < span->last && *target != span->last;
  target_ = corrects ? target : std::nullopt;
  FormView();
}

std::optional<DateTime> StationSeries::LastReading() const {
  if (target_) return target_;
  const auto span = SpanOf(raw_);
  return span ? std::optional(span->last) : std::nullopt;
}

void StationSeries::TakeBaseline() {
  raw_.TakeBaseline();
  for (auto& [key, edit] : edits_) edit.mark.baselineCm = edit.levelCm;
  FormView();
}

void StationSeries::FormView() {
  view_ = target_ ? RetimeReadings(raw_, *target_, edits_) : RetimedView();
}

}  // namespace vesk
