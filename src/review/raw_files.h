// The raw logger files of a data directory: names, days covered, stations and water years.
#pragma once

#include <QString>

#include <vector>

#include "datafiles/raw_header.h"

namespace vesk {

/// One raw file. listName carries the day count ("???-?????-??????=????.txt") even where the file on disk could
/// not be renamed; diskName is what to open.
struct RawFile {
  QString diskName;
  QString listName;
  bool superseded = false;      ///< a later read-out of the same recording is there
  RawHeaderReading reading;     ///< header as read

  [[nodiscard]] QString Station() const { return listName.left(9); }
};

struct WaterYearEntry {
  int waterYear = 0;
  QString text;                 ///< year, blank, mark
};

}  // namespace vesk
