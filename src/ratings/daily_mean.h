// What a day comes to, for summaries and graphs.
#pragma once

#include <optional>

#include "datafiles/reading.h"

namespace vesk {

struct DailyMean {
  Day day{};
  std::optional<double> levelCm = {};
  std::optional<double> m3s = {};
  bool flagged = false;  ///< of less than the whole day, or extrapolated
};

}  // namespace vesk
