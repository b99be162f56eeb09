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

inline StationSeries GridOf(const std::vector<GridRow>& rows) {
  std::vector<Reading> readings;
  for (const GridRow& row : rows) {
    const DateTime at = ReadDateTime(QString::fromLatin1(row.time)).value();
    const Day day = std::chrono::floor<std::chrono::days>(at);
    readings.push_back({.levelCm = row.levelCm,
                        .day = day,
                        .minuteOfDay = static_cast<std::int16_t>((at - day).count()),
                        .kind = row.kind});
  }
  StationSeries series(std::move(readings));
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    RowState state = series.Raw().StateOf(row);
    state.discharge = DischargeOfLog(QString::fromLatin1(rows[static_cast<std::size_t>(row - 1)].discharge));
    series.SetState({.rawRow = row}, state);
  }
  return series;
}

}  // namespace vesk::test
