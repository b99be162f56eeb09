// One water year's part of a review grid.
#pragma once

#include "review/review_grid.h"

namespace vesk {

/// The readings of a water year with their discharges, in grid order; edit marks stay behind.
ReviewGrid GridOfWaterYear(const ReviewGrid& grid, int waterYear);

}  // namespace vesk
