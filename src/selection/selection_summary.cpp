#include "selection/selection_summary.h"

#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"

namespace vesk {

std::optional<SelectionSummary> SummaryOf(const StationSeries& series, int first, int last,
                                          const std::vector<Finding>& findings) {
  SelectionSummary summary;
  double sum = 0;
  for (int row = std::max(first, 1); row <= std::min(last, series.ReadingCount()); ++row) {
    const Reading reading = series.At(row);
    if (reading.kind != ReadingKind::Ordinary) continue;
    const DateTime time = reading.Time();
    const double level = reading.levelCm;
    if (summary.readings++ == 0) {
      summary.from = summary.to = summary.lowestAt = summary.highestAt = time;
      summary.lowestCm = summary.highestCm = level;
    }
    summary.from = std::min(summary.from, time);
    summary.to = std::max(summary.to, time);
    if (level < summary.lowestCm) {
      summary.lowestCm = level;
      summary.lowestAt = time;
    }
    if (level > summary.highestCm) {
      summary.highestCm = level;
      summary.highestAt = time;
    }
    sum += level;
  }
  if (summary.readings == 0) return std::nullopt;
  summary.meanCm = sum / summary.readings;
  summary.gaps = static_cast<int>(std::ranges::count_if(findings, [&](const Finding& finding) {
    return finding.rule == FindingRule::Gap && finding.firstRow >= first && finding.lastRow <= last &&
           finding.firstRow < finding.lastRow;
  }));
  return summary;
}

Message SummaryText(const SelectionSummary& summary) {
  constexpr double kHundredths = 100;
  const Message span(Wording{u"%1 okuma  ·  %2 – %3", u"%1 readings  ·  %2 – %3"}, summary.readings,
                     DateTimeText(summary.from), DateTimeText(summary.to));
  const Message levels(Wording{u"min %1 cm (%2)  ·  max %3 cm (%4)  ·  ort. %5 cm",
                               u"min %1 cm (%2)  ·  max %3 cm (%4)  ·  mean %5 cm"},
                       NumberText(summary.lowestCm), DateTimeText(summary.lowestAt),
                       NumberText(summary.highestCm), DateTimeText(summary.highestAt),
                       NumberText(std::round(summary.meanCm * kHundredths) / kHundredths));
  const Message gaps = summary.gaps == 0 ? Message(Wording{u"boşluk yok", u"no gap"})
                                         : Message(Wording{u"%1 boşluk", u"gaps: %1"}, summary.gaps);
  return Message::Joined({span, levels, gaps}, QStringLiteral("  ·  "));
}

}  // namespace vesk
