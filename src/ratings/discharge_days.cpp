#include "ratings/discharge_days.h"

#include <algorithm>
#include <array>
#include <map>

#include "datafiles/water_year.h"
#include "review/station_series.h"

namespace vesk {
namespace {

constexpr double kSecondsPerDay = 86'400;
constexpr double kM3PerHm3 = 1e6;
constexpr double kLitresPerM3 = 1000;
constexpr double kMmPerHm3AndKm2 = 1000;

/// 1 October to 30 September, a month each.
DischargeSpan MonthOf(int waterYear, int place) {
  using std::chrono::month;
  using std::chrono::year;
  constexpr int kFirstMonth = 10;
  constexpr int kMonths = 12;
  const int number = (kFirstMonth - 1 + place) % kMonths + 1;
  const year in(number >= kFirstMonth ? waterYear - 1 : waterYear);
  const auto first = in / month(static_cast<unsigned>(number)) / 1;
  DischargeSpan span;
  span.first = Day(first);
  span.last = Day(in / month(static_cast<unsigned>(number)) / std::chrono::last);
  return span;
}

void TakePeaks(const std::optional<DischargePeak>& highest, const std::optional<DischargePeak>& lowest,
               DischargeSpan& span) {
  if (highest && (!span.highest || highest->m3s > span.highest->m3s)) span.highest = highest;
  if (lowest && (!span.lowest || lowest->m3s < span.lowest->m3s)) span.lowest = lowest;
}

DischargeSpan Summarise(DischargeSpan span, const std::map<Day, const DischargeDay*>& days,
                        std::optional<double> catchmentKm2) {
  span.days = static_cast<int>((span.last - span.first).count()) + 1;
  double sum = 0;
  for (auto at = days.lower_bound(span.first); at != days.end() && at->first <= span.last; ++at) {
    const DischargeDay& day = *at->second;
    span.tooHigh = span.tooHigh || day.tooHigh;
    span.tooLow = span.tooLow || day.tooLow;
    TakePeaks(day.highest, day.lowest, span);
    if (!day.meanM3s) continue;
    sum += *day.meanM3s;
    ++span.daysKept;
    span.daysPartial += day.Partial() ? 1 : 0;
    span.extrapolated = span.extrapolated || day.extrapolated;
  }
  if (span.daysKept == 0) return span;
  span.meanM3s = sum / span.daysKept;
  span.volumeHm3 = sum * kSecondsPerDay / kM3PerHm3;
  if (catchmentKm2 && *catchmentKm2 > 0) {
    span.runoffMm = *span.volumeHm3 / *catchmentKm2 * kMmPerHm3AndKm2;
    span.specificLsKm2 = *span.meanM3s * kLitresPerM3 / *catchmentKm2;
  }
  return span;
}

}  // namespace

void DischargeDayMaker::Add(DateTime time, int minute, int previousMinute, const DischargeValue& value) {
  Widen(time, value);
  if (!HasDischarge(value.flag)) return;
  const int minutes = minute - previousMinute;
  weighted_ += value.m3s * minutes;
  minutes_ += minutes;
  covered_ += std::min(minutes, mostMinutes_);
  made_.extrapolated = made_.extrapolated || (IsExtrapolated(value.flag) && minutes > 0);
}

void DischargeDayMaker::Widen(DateTime time, const DischargeValue& value) {
  made_.tooHigh = made_.tooHigh || value.flag == DischargeFlag::TooHigh;
  made_.tooLow = made_.tooLow || value.flag == DischargeFlag::TooLow;
  if (!HasDischarge(value.flag)) return;
  const DischargePeak peak{time, value.m3s, IsExtrapolated(value.flag)};
  if (!made_.highest || value.m3s > made_.highest->m3s) made_.highest = peak;
  if (!made_.lowest || value.m3s < made_.lowest->m3s) made_.lowest = peak;
}

DischargeDay DischargeDayMaker::Close(Day day) {
  DischargeDay made = made_;
  made.day = day;
  if (minutes_ > 0) made.meanM3s = weighted_ / minutes_;
  made.share = std::clamp(static_cast<double>(covered_) / kLastMinuteOfDay, 0.0, 1.0);
  *this = DischargeDayMaker(mostMinutes_);
  return made;
}

DischargeYear SummariseDischarge(const std::vector<DischargeDay>& days, int waterYear,
                                 std::optional<double> catchmentKm2) {
  constexpr int kMonths = 12;
  std::map<Day, const DischargeDay*> byDay;
  for (const DischargeDay& day : days) byDay[day.day] = &day;
  DischargeYear made;
  for (int place = 0; place < kMonths; ++place)
    made.months.push_back(Summarise(MonthOf(waterYear, place), byDay, catchmentKm2));
  DischargeSpan year;
  year.first = WaterYearFirstDay(waterYear);
  year.last = WaterYearLastDay(waterYear);
  made.year = Summarise(year, byDay, catchmentKm2);
  return made;
}

int CommonInterval(const StationSeries& series) {
  constexpr int kUnknown = 60;
  std::array<int, kMinutesPerDay> counts{};
  std::optional<Reading> before;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    if (reading.kind != ReadingKind::Ordinary) continue;
    const int step = before && before->day == reading.day ? reading.minuteOfDay - before->minuteOfDay : 0;
    if (step > 0) ++counts[static_cast<std::size_t>(step)];
    before = reading;
  }
  const auto most = std::max_element(counts.begin(), counts.end());
  return *most == 0 ? kUnknown : static_cast<int>(most - counts.begin());
}

}  // namespace vesk
