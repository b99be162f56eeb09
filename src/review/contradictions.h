// Extreme records that contradict corrected readings. A drop-out that was corrected in the readings alone
// stays the day's, the month's and the year's minimum wherever the logger's own records count.
#pragma once

#include <QString>

#include <vector>

#include "review/station_series.h"

namespace vesk {

struct RecordContradiction {
  int row = 0;  ///< of the record, counted from 1
  Day day{};
  ReadingKind kind = ReadingKind::Maximum;
  double recordedCm = 0;  ///< what the record says, cm
  double readingsCm = 0;  ///< the day's highest (lowest) reading as corrected, cm
  int minuteOfDay = 0;    ///< when that reading was taken
};

/// Records, in the order of the rows, that the readings of their file and day contradict: a record nobody has
/// edited that lies beyond all of them while a reading of its raw level or of its minute has been corrected,
/// or one that a corrected reading exceeds.
std::vector<RecordContradiction> FindContradictions(const StationSeries& series);

}  // namespace vesk
