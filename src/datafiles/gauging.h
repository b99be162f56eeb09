// A gauging: discharge measured at a station, with the level that belongs to it.
#pragma once

#include <QString>

#include <optional>

#include "datafiles/reading.h"

namespace vesk {

struct Gauging {
  std::optional<DateTime> time = {};  ///< on the station's own time; nothing: not known
  std::optional<double> levelCm = {};
  double dischargeM3s = 0;                        ///< above 0
  std::optional<double> uncertaintyPercent = {};  ///< of the discharge, at the 95 % level; above 0
  QString method = {}, party = {}, remark = {};
  bool used = true;  ///< taken for rating curves

  bool operator==(const Gauging&) const = default;
};

}  // namespace vesk
