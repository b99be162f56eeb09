// Gaugings that come in beside those that a station has.
#pragma once

#include <vector>

#include "stations/station_register.h"

namespace vesk {

/// What becomes of gaugings that come in: by their place among them, from 0.
struct GaugingMerge {
  std::vector<GaugingChange> changes;  ///< one a gauging that is new, or replaces one
  std::vector<std::size_t> added, replaced;
  std::vector<std::size_t> same;       ///< there already, or twice among those that come in
  std::vector<std::size_t> different;  ///< of a time that has another gauging, which is kept
};

/// A gauging is known by its time, one without by all its fields. replace: one of a known time takes the
/// place of the stored one where just one has that time; else the stored one is kept.
GaugingMerge MergeGaugings(const std::vector<StoredGauging>& stored, const std::vector<Gauging>& incoming,
                           bool replace);

}  // namespace vesk
