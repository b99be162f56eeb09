// What a load brought, in a few figures.
#pragma once

#include "review/load_readings.h"

namespace vesk {

struct LoadSummary {
  int daysPresent = 0;  ///< with an ordinary reading at least
  int daysMissing =
      0;  ///< of the chosen water years; of a single file: between its first and its last reading
  int corrections = 0;  ///< laid over the readings
  qint64 refusedLines = 0;
  bool retimed = false;  ///< the times are corrected
};

LoadSummary SummaryOf(const LoadedReadings& loaded);

}  // namespace vesk
