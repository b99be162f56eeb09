#include "review/water_year_grid.h"

namespace vesk {

ReviewGrid GridOfWaterYear(const ReviewGrid& grid, int waterYear) {
  ReviewGrid part;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    if (WaterYearOf(grid.At(row).day) != waterYear) continue;
    part.Append(grid.At(row));
    if (const QString discharge = grid.Discharge(row); !discharge.isEmpty()) {
      part.SetDischarge(part.ReadingCount(), discharge);
    }
  }
  return part;
}

}  // namespace vesk
