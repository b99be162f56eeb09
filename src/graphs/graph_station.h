// What the title of a single-station graph says.
#pragma once

#include <QString>

#include <optional>

namespace vesk {

struct GraphStation {
  QString number;                     ///< station number as the title shows it, e.g. "12345"
  QString name;                       ///< station name; may be empty
  std::optional<int> waterYear = {};  ///< in which it ends; none takes those of the readings
};

}  // namespace vesk
