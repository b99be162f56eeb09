// A raw file that gave readings to a load, with what its header promised and what its lines gave.
#pragma once

#include <QString>

#include "datafiles/data_lines.h"
#include "datafiles/raw_header.h"

namespace vesk {

struct ReadOut {
  QString file = {};  ///< first 16 characters of its name in the list
  QString diskName = {};
  RawHeader header = {};
  DataLineTally tally = {};       ///< of the days that were asked for
  bool readingsInHeader = false;  ///< the header is damaged and holds readings, which are not read
};

}  // namespace vesk
