// Corrections over a range of readings. What they would change is worked out first, so that it can be looked
// at before it is done.
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

#include "platform/result.h"
#include "review/station_series.h"

namespace vesk {

/// A level that a row is to get, cm.
struct LevelChange {
  int row = 0;  ///< as shown, from 1
  double levelCm = 0;

  bool operator==(const LevelChange&) const = default;
};

enum class RangeOperation : std::uint8_t {
  Shift,         ///< by a constant
  Drift,         ///< linear in time, from one amount at the first reading to another one at the last
  Line,          ///< straight between the readings on both sides of the range
  Set,           ///< one level
  Raw,           ///< back to the level of the raw file
  OtherReadOut,  ///< levels of another read-out that covers the same times
};

/// "shift", "drift", "line", "set", "raw", "other": as the review record names what was done.
QString OperationWord(RangeOperation operation);

struct RangeCorrection {
  RangeOperation operation = RangeOperation::Shift;
  double firstCm = 0;  ///< Shift: the amount; Drift: that at the first reading; Set: the level; cm
  double lastCm = 0;   ///< Drift: the amount at the last reading, cm
  bool exact = false;  ///< not rounded to the logger's resolution of 1 cm
};

/// Rows as shown, both ends included.
struct ShownRange {
  int first = 0, last = 0;
};

/// The ordinary readings of the range that the correction changes, ascending. Refused, with the reason: a
/// range without readings, no reading beside the range to draw a line from, no other read-out of these times,
/// a level that no raw file can hold (-999 to 9999 cm).
Result<std::vector<LevelChange>> ProposeCorrection(const StationSeries& series, const ShownRange& range,
                                                   const RangeCorrection& correction);

/// The logger's records of the days that the changes are about which would then be other than the highest and
/// the lowest reading of their day and file, each with that level. None where a corrected clock computes
/// them.
std::vector<LevelChange> RecordsConcerned(const StationSeries& series,
                                          const std::vector<LevelChange>& changes);

}  // namespace vesk
