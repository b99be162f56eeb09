// The readings of a load as the raw files have them, each with what corrects it.
#pragma once

#include <cstdint>
#include <vector>

#include "review/series_row.h"

namespace vesk {

/// Rows are numbered from 1. The readings stay what they were when the load was complete; a correction stands
/// beside its reading. Most rows of a year have none and take no room for one.
class RawRows {
 public:
  RawRows() = default;
  explicit RawRows(std::vector<Reading> readings) : readings_(std::move(readings)) {}

  [[nodiscard]] int ReadingCount() const { return static_cast<int>(readings_.size()); }
  [[nodiscard]] bool IsReading(int row) const { return row >= 1 && row <= ReadingCount(); }
  /// The readings as they were recorded.
  [[nodiscard]] const std::vector<Reading>& Readings() const { return readings_; }

  /// row: 1 to ReadingCount(), here and below. The reading with the level as corrected.
  [[nodiscard]] Reading At(int row) const {
    Reading reading = readings_[Index(row)];
    if (const RowState* state = Touched(row)) reading.levelCm = state->levelCm;
    return reading;
  }
  /// Level as the raw file has it, cm.
  [[nodiscard]] double RawLevel(int row) const { return readings_[Index(row)].levelCm; }
  /// A row that nobody touched has its raw level as baseline.
  [[nodiscard]] RowState StateOf(int row) const;
  [[nodiscard]] RowMark Mark(int row) const;
  [[nodiscard]] Discharge DischargeOf(int row) const;
  [[nodiscard]] int CodeValue(int row) const { return vesk::CodeValue(readings_[Index(row)], Mark(row)); }
  [[nodiscard]] bool IsChanged(int row) const { return CodeValue(row) > 0; }

  /// What a row's state says of the raw level is left aside: that is the reading's.
  void SetState(int row, const RowState& state);
  /// True once somebody touched a row.
  [[nodiscard]] bool HasStates() const { return !states_.empty(); }
  /// Every level as it is now becomes its baseline.
  void TakeBaseline();

 private:
  static std::size_t Index(int row) { return static_cast<std::size_t>(row - 1); }
  [[nodiscard]] const RowState* Touched(int row) const {
    if (states_.empty()) return nullptr;
    const std::uint32_t place = places_[Index(row)];
    return place == 0 ? nullptr : &states_[place - 1];
  }

  std::vector<Reading> readings_;
  std::vector<RowState> states_;  ///< of rows that somebody touched
  std::vector<std::uint32_t>
      places_{};  ///< per row: place in states_, from 1; 0: untouched. Empty as states_
};

}  // namespace vesk
