// What the selected readings come to.
#pragma once

#include <optional>
#include <vector>

#include "datafiles/reading.h"
#include "findings/findings.h"
#include "review/station_series.h"

namespace vesk {

struct SelectionSummary {
  int readings = 0;  ///< ordinary ones
  DateTime from{}, to{};
  double lowestCm = 0, highestCm = 0, meanCm = 0;
  DateTime lowestAt{}, highestAt{};  ///< the first time each
  int gaps = 0;                      ///< that begin within the selection
};

/// Of the ordinary readings of rows first to last, both included; nothing when there is none.
std::optional<SelectionSummary> SummaryOf(const StationSeries& series, int first, int last,
                                          const std::vector<Finding>& findings);

/// "96 readings · from – to · lowest … · highest … · mean … · 1 gap".
Message SummaryText(const SelectionSummary& summary);

}  // namespace vesk
