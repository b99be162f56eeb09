// What of a station is chosen to be loaded: one of its raw files, or water years.
#pragma once

#include <QString>

#include <variant>
#include <vector>

#include "datafiles/water_year.h"

namespace vesk {

/// A water year of a station, and the word that marks it in the names of its change log: empty unless its
/// converted file is in the folder.
struct StationWaterYear {
  WaterYear year;
  QString mark = {};

  bool operator==(const StationWaterYear&) const = default;
};

struct SingleFile {
  bool operator==(const SingleFile&) const = default;
};
/// In list order; never empty.
struct WaterYears {
  std::vector<StationWaterYear> years;
  bool operator==(const WaterYears&) const = default;
};

using Choice = std::variant<SingleFile, WaterYears>;

inline bool IsSingleFile(const Choice& choice) {
  return std::holds_alternative<SingleFile>(choice);
}
/// Those of a choice of water years; none of a single file.
inline std::vector<StationWaterYear> YearsOf(const Choice& choice) {
  const auto* chosen = std::get_if<WaterYears>(&choice);
  return chosen ? chosen->years : std::vector<StationWaterYear>();
}

}  // namespace vesk
