// Where readings are missing.
#include <algorithm>
#include <cmath>

#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

std::int64_t MinuteOf(Day day) {
  return DateTime(day).time_since_epoch().count();
}

Message ExpectedInterval(double minutes) {
  return {Wording{u"%1 dakikada bir okuma", u"a reading every %1 minutes"}, NumberText(minutes)};
}

/// Looks at [first, last) of the readings in time order.
void FindGapsBetween(const Samples& samples, std::size_t first, std::size_t last,
                     std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  for (std::size_t i = first + 1; i < last; ++i) {
    if (!all[i].gapBefore) continue;
    Finding gap = samples.Over(FindingRule::Gap, all[i - 1], all[i]);
    const double interval = std::max(samples.IntervalOf(all[i - 1].file), samples.IntervalOf(all[i].file));
    gap.value =
        std::max(1.0, std::round(static_cast<double>(all[i].minute - all[i - 1].minute) / interval) - 1);
    gap.expected = ExpectedInterval(interval);
    found.push_back(std::move(gap));
  }
}

/// Days of which there is no reading at all.
Finding WithoutReadings(const DayWindow& window) {
  Finding gap{.rule = FindingRule::Gap,
              .from = DateTime(window.first),
              .to = DateTime(window.last) + std::chrono::minutes(kLastMinuteOfDay),
              .file = {}};
  gap.expected = Wording{u"bu günlerin okumaları", u"readings of these days"};
  return gap;
}

/// The days asked for must be begun and ended by readings. The last one is due at midnight, the first one an
/// interval behind it.
void FindMissingEnds(const Samples& samples, const DayWindow& window, const Sample& first, const Sample& last,
                     std::vector<Finding>& found) {
  const auto add = [&](const Sample& at, std::int64_t minutes, DateTime from, DateTime to, int present) {
    const double interval = samples.IntervalOf(at.file);
    if (interval <= 0 || static_cast<double>(minutes) <= samples.MostMinutesBetween(at, at)) return;
    Finding gap = samples.Over(FindingRule::Gap, at, at);
    gap.from = from;
    gap.to = to;
    gap.value = std::round(static_cast<double>(minutes) / interval) - present;
    gap.expected = ExpectedInterval(interval);
    found.push_back(std::move(gap));
  };
  const DateTime begin(window.first);
  const DateTime end = DateTime(window.last) + std::chrono::minutes(kLastMinuteOfDay);
  add(first, first.minute - MinuteOf(window.first), begin, first.Time(), 1);
  add(last, MinuteOf(window.last) + kMinutesPerDay - last.minute, last.Time(), end, 0);
}

}  // namespace

void FindGaps(const Samples& samples, const FindingInput& input, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  if (input.windows.empty()) FindGapsBetween(samples, 0, all.size(), found);
  for (const DayWindow& window : input.windows) {
    // Behind 00:00 of the first day up to 00:00 behind the last one, which is that day's last minute.
    const auto first = std::ranges::upper_bound(all, MinuteOf(window.first), {}, &Sample::minute);
    const auto last =
        std::ranges::upper_bound(all, MinuteOf(window.last) + kMinutesPerDay, {}, &Sample::minute);
    if (first == last) {
      found.push_back(WithoutReadings(window));
      continue;
    }
    FindMissingEnds(samples, window, *first, *std::prev(last), found);
    FindGapsBetween(samples, static_cast<std::size_t>(first - all.begin()),
                    static_cast<std::size_t>(last - all.begin()), found);
  }
}

}  // namespace vesk
