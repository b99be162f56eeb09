// Limits that a station's own readings suggest.
#pragma once

#include "findings/findings.h"

namespace vesk {

/// Limits by robust statistics of the ordinary readings, so that a few faults among them do not widen them:
/// docs/findings.md has the definitions. Nothing is proposed of too few readings.
StationLimits ProposeLimits(const StationSeries& series, const std::vector<ReadOut>& readOuts);
StationLimits ProposeLimits(const Samples& samples);

}  // namespace vesk
