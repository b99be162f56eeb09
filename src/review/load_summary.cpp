#include "review/load_summary.h"

#include <set>

namespace vesk {
namespace {

std::set<Day> DaysWithReadings(const StationSeries& series) {
  std::set<Day> days;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    if (reading.kind == ReadingKind::Ordinary) days.insert(days.end(), reading.day);
  }
  return days;
}

int DaysOf(WaterYear year) {
  return static_cast<int>((year.LastDay() - year.FirstDay()).count()) + 1;
}

}  // namespace

LoadSummary SummaryOf(const LoadedReadings& loaded) {
  const std::set<Day> days = DaysWithReadings(loaded.series);
  LoadSummary summary{.daysPresent = static_cast<int>(days.size()),
                      .refusedLines = loaded.refusedLines,
                      .retimed = loaded.series.Target().has_value()};
  int daysInAll = days.empty() ? 0 : static_cast<int>((*days.rbegin() - *days.begin()).count()) + 1;
  if (!IsSingleFile(loaded.series.Chosen())) daysInAll = 0;
  for (const StationWaterYear& chosen : YearsOf(loaded.series.Chosen())) daysInAll += DaysOf(chosen.year);
  summary.daysMissing = daysInAll - summary.daysPresent;
  for (const LoadedChangeLog& log : loaded.changeLogs) summary.corrections += log.overlay.applied;
  return summary;
}

}  // namespace vesk
