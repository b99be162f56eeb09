// What the title of a single-station graph says.
#pragma once

#include <QString>

namespace vesk {

struct GraphStation {
  QString number;  ///< station number as the title shows it, e.g. "12345"
  QString name;    ///< station name; may be empty
  int waterYear =
      0;  ///< calendar year in which the water year ends; 0 takes the one of the grid's first reading
};

}  // namespace vesk
