// Grids of a few readings, as a test writes them down.
#pragma once

#include "review/review_grid.h"

namespace vesk::test {

struct GridRow {
  const char* time;
  double levelCm;
  ReadingKind kind = ReadingKind::Ordinary;
  const char* discharge = "";
};

inline constexpr auto kMax = ReadingKind::Maximum;
inline constexpr auto kMin = ReadingKind::Minimum;

inline ReviewGrid GridOf(const std::vector<GridRow>& rows) {
  ReviewGrid grid;
  for (const GridRow& row : rows) {
    const DateTime at = ReadDateTime(QString::fromLatin1(row.time)).value();
    const Day day = std::chrono::floor<std::chrono::days>(at);
    grid.Append({.levelCm = row.levelCm,
                 .day = day,
                 .minuteOfDay = static_cast<std::int16_t>((at - day).count()),
                 .kind = row.kind});
    grid.SetDischarge(grid.ReadingCount(), QString::fromLatin1(row.discharge));
  }
  return grid;
}

}  // namespace vesk::test
