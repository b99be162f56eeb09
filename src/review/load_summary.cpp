#include "review/load_summary.h"

#include <set>

namespace vesk {
namespace {

std::set<Day> DaysWithReadings(const ReviewGrid& grid) {
  std::set<Day> days;
  for (const Reading& reading : grid.Readings()) {
    if (reading.kind == ReadingKind::Ordinary) days.insert(days.end(), reading.day);
  }
  return days;
}

int DaysOfYear(int waterYear) {
  return static_cast<int>((WaterYearLastDay(waterYear) - WaterYearFirstDay(waterYear)).count()) + 1;
}

}  // namespace

LoadSummary SummaryOf(const LoadedReadings& loaded) {
  const std::set<Day> days = DaysWithReadings(loaded.grid);
  LoadSummary summary{.daysPresent = static_cast<int>(days.size()),
                      .refusedLines = loaded.refusedLines,
                      .retimed = loaded.retimed && loaded.retimed->Target()};
  int daysInAll = days.empty() ? 0 : static_cast<int>((*days.rbegin() - *days.begin()).count()) + 1;
  if (!loaded.waterYears.empty()) daysInAll = 0;
  for (const int year : loaded.waterYears) daysInAll += DaysOfYear(year);
  summary.daysMissing = daysInAll - summary.daysPresent;
  for (const LoadedChangeLog& log : loaded.changeLogs) summary.corrections += log.overlay.applied;
  return summary;
}

}  // namespace vesk
