// What an office takes for ordinary at a station; readings beyond it are to be looked at.
#pragma once

#include <optional>

namespace vesk {

/// A limit that is not set turns its rule off.
struct StationLimits {
  std::optional<double> spikeCm = {};  ///< T: most that a reading may lie off the mean of its neighbours
  std::optional<double> rateCmPerHour = {};  ///< R: fastest change
  std::optional<double> flatHours = {};      ///< N: so long may the level stand still
  double flatCm = 0;                         ///< still: highest less lowest at most this
  std::optional<double> lowestCm = {}, highestCm = {};

  bool operator==(const StationLimits&) const = default;
};

}  // namespace vesk
