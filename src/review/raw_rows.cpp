#include "review/raw_rows.h"

namespace vesk {

RowState RawRows::StateOf(int row) const {
  if (const RowState* state = Touched(row)) return *state;
  const double rawCm = RawLevel(row);
  return {.levelCm = rawCm, .mark = {.rawCm = rawCm, .baselineCm = rawCm}};
}

RowMark RawRows::Mark(int row) const {
  if (const RowState* state = Touched(row)) return state->mark;
  return {.rawCm = RawLevel(row), .baselineCm = RawLevel(row)};
}

Discharge RawRows::DischargeOf(int row) const {
  const RowState* state = Touched(row);
  return state ? state->discharge : Discharge();
}

void RawRows::SetState(int row, const RowState& state) {
  if (places_.empty()) places_.resize(readings_.size());
  std::uint32_t& place = places_[Index(row)];
  if (place == 0) {
    states_.emplace_back();
    place = static_cast<std::uint32_t>(states_.size());
  }
  states_[place - 1] = state;
  states_[place - 1].mark.rawCm = RawLevel(row);
}

void RawRows::TakeBaseline() {
  for (RowState& state : states_) state.mark.baselineCm = state.levelCm;
}

}  // namespace vesk
