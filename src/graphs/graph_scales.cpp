#include "graphs/graph_scales.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vesk {
namespace {

constexpr int kMostLevelSteps = 15;
constexpr double kMostLevelCm = 1e9;      // no river; keeps the axis countable whatever a file holds
constexpr double kLeastLabelWidth = 200;  // page units that 15 labelled days must exceed

using Month = std::chrono::year_month;

constexpr double kTen = 10;

/// Levels between the plot's lower and upper edge.
struct LevelSpan {
  double bottomCm = 0, topCm = 0, stepCm = 0;
};

PageScale ScaleOver(QSizeF size, const PlotMargins& margins, double startT, double endT,
                    const LevelSpan& levels) {
  PageScale scale;
  scale.margins = margins;
  scale.width = std::max(size.width(), margins.left + margins.right + 1);
  scale.height = std::max(size.height(), margins.top + margins.bottom + 1);
  scale.startT = startT;
  scale.endT = std::max(endT, startT + kMinuteUnits);
  scale.bottomCm = levels.bottomCm;
  scale.topCm = levels.topCm;
  scale.stepCm = levels.stepCm;
  const double perX = (scale.endT - startT) / (scale.width - margins.left - margins.right);
  const double perY = (scale.topCm - scale.bottomCm) / (scale.height - margins.top - margins.bottom);
  scale.xMin = startT - perX * margins.left;
  scale.xMax = scale.endT + perX * margins.right;
  scale.yMin = scale.bottomCm - perY * margins.bottom;
  scale.yMax = scale.topCm + perY * margins.top;
  return scale;
}

int LabelledMonthLength(Month month) {
  constexpr std::array<int, 12> kLengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return kLengths[static_cast<unsigned>(month.month()) - 1];
}

std::vector<int> LabelledDays(Month month, int interval) {
  const int length = LabelledMonthLength(month);
  std::vector<int> days;
  const int last = interval == 1 ? length : 30;
  for (int day = interval; day <= last; day += interval)
    days.push_back(interval > 1 && day == 30 ? length : day);
  return days;
}

bool IsLeapDay(Day day) {
  const std::chrono::year_month_day date(day);
  return date.month() == std::chrono::February && date.day() == std::chrono::day(29);
}

Month MonthOfDay(Day day) {
  const std::chrono::year_month_day date(day);
  return date.year() / date.month();
}

}  // namespace

int GraphMinutes(Day firstDay, DateTime time) {
  const auto sinceStart = time - DateTime(firstDay - std::chrono::days(1));
  return static_cast<int>(sinceStart.count());
}

double TimeCoordinate(Day firstDay, DateTime time) {
  return GraphMinutes(firstDay, time) * kMinuteUnits;
}

DateTime TimeOfCoordinate(Day firstDay, double t) {
  // The small addition keeps 36.3, which no double holds exactly, from reading as the minute before.
  const auto minutes = static_cast<long>(std::floor(t / kMinuteUnits + 1e-4));
  return DateTime(firstDay - std::chrono::days(1)) + std::chrono::minutes(minutes);
}

LevelAxis LevelAxisFor(double maximumCm) {
  LevelAxis axis{10000, maximumCm};
  for (const double power : {10.0, 100.0, 1000.0}) {
    for (const double factor : {1.0, 2.5, 5.0, 10.0}) {
      const double step = factor * power;
      const double count = std::floor(maximumCm / step) + 1;
      if (count <= kMostLevelSteps) return {step, count * step};
    }
  }
  return axis;
}

double TopOfPage(double maximumCm) {
  return LevelAxisFor(std::clamp(maximumCm, 0.0, kMostLevelCm)).topCm;
}

PageScale MakePageScale(QSizeF size, double startT, double endT, double maximumCm) {
  const LevelAxis axis = LevelAxisFor(std::clamp(maximumCm, 0.0, kMostLevelCm));
  return ScaleOver(size, {}, startT, endT, {.topCm = axis.topCm, .stepCm = axis.stepCm});
}

PageScale MakeFittedScale(QSizeF size, const PlotMargins& margins, double startT, double endT,
                          const LevelExtent& levels, double leastTickDistance) {
  const double low = std::clamp(levels.lowestCm, -kMostLevelCm, kMostLevelCm);
  const double high = std::clamp(std::max(levels.highestCm, low), -kMostLevelCm, kMostLevelCm);
  const double room = std::max(size.height() - margins.top - margins.bottom, leastTickDistance);
  const double mostSteps = std::max(1.0, std::floor(room / leastTickDistance));
  LevelSpan span;
  for (double power = 1; power <= kMostLevelCm; power *= kTen) {
    for (const double factor : {1.0, 2.0, 5.0}) {
      span.stepCm = factor * power;
      span.bottomCm = std::floor(low / span.stepCm) * span.stepCm;
      span.topCm = std::max(std::ceil(high / span.stepCm) * span.stepCm, span.bottomCm + span.stepCm);
      if (span.topCm - span.bottomCm <= mostSteps * span.stepCm)
        return ScaleOver(size, margins, startT, endT, span);
    }
  }
  return ScaleOver(size, margins, startT, endT, span);
}

double XOfTime(const PageScale& scale, double t) {
  return scale.width * (t - scale.xMin) / (scale.xMax - scale.xMin);
}

double YOfLevel(const PageScale& scale, double levelCm) {
  return scale.height - scale.height * (levelCm - scale.yMin) / (scale.yMax - scale.yMin);
}

double TimeOfX(const PageScale& scale, double x) {
  return scale.xMin + (scale.xMax - scale.xMin) * x / scale.width;
}

double LevelOfY(const PageScale& scale, double y) {
  return scale.yMin + (scale.yMax - scale.yMin) * (scale.height - y) / scale.height;
}

std::vector<double> LevelTicks(const PageScale& scale) {
  std::vector<double> ticks;
  const auto count = static_cast<int>(std::floor((scale.topCm - scale.bottomCm) / scale.stepCm + 1e-9));
  const int stride = std::max(1, count / (4 * kMostLevelSteps));  // a level beyond the table of steps
  for (int i = 0; i <= count; i += stride) ticks.push_back(scale.bottomCm + i * scale.stepCm);
  return ticks;
}

int DayInterval(const PageScale& scale) {
  const double dayWidth = XOfTime(scale, kDayUnits) - XOfTime(scale, 0);
  for (const int days : {1, 5, 10, 15}) {
    if (days * 15 * dayWidth > kLeastLabelWidth) return days;
  }
  return 30;
}

std::vector<Day> DayTicks(const PageScale& scale, Day firstDay) {
  const DateTime start = TimeOfCoordinate(firstDay, scale.startT);
  const DateTime end = TimeOfCoordinate(firstDay, scale.endT);
  const int interval = DayInterval(scale);
  std::vector<Day> ticks;
  const Month last = MonthOfDay(std::chrono::floor<std::chrono::days>(end));
  for (Month month = MonthOfDay(std::chrono::floor<std::chrono::days>(start)); month <= last;
       month += std::chrono::months(1)) {
    for (const int number : LabelledDays(month, interval)) {
      const Day day = month / std::chrono::day(static_cast<unsigned>(number));
      if (DateTime(day) >= start && DateTime(day) <= end) ticks.push_back(day);
    }
  }
  return ticks;
}

std::vector<DateTime> ClockTicks(const PageScale& scale, Day firstDay) {
  constexpr double kLeastSpacing = kLeastLabelWidth / 15;
  const double minuteWidth = XOfTime(scale, kMinuteUnits) - XOfTime(scale, 0);
  for (const int minutes : {1, 5, 10, 15, 30, 60, 120, 180, 360, 720}) {
    if (minutes * minuteWidth <= kLeastSpacing) continue;
    const DateTime end = TimeOfCoordinate(firstDay, scale.endT);
    std::vector<DateTime> ticks;
    const std::chrono::minutes step(minutes);
    DateTime time(std::chrono::floor<std::chrono::days>(TimeOfCoordinate(firstDay, scale.startT)));
    for (; time <= end; time += step) {
      const Day day = std::chrono::floor<std::chrono::days>(time);
      const bool dayTick = time == DateTime(day) && !IsLeapDay(day);
      if (!dayTick && TimeCoordinate(firstDay, time) >= scale.startT) ticks.push_back(time);
    }
    return ticks;
  }
  return {};
}

}  // namespace vesk
