// When readings were taken: gaps, overlaps, doubles, order, step.
#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
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

void FindGaps(const Samples& samples, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (!samples.GapBetween(all[i - 1], all[i])) continue;
    Finding gap = samples.Over(FindingRule::Gap, all[i - 1], all[i]);
    const double interval = std::max(samples.IntervalOf(all[i - 1].file), samples.IntervalOf(all[i].file));
    gap.value = std::round(static_cast<double>(all[i].minute - all[i - 1].minute) / interval) - 1;
    gap.expected = ExpectedInterval(interval);
    found.push_back(std::move(gap));
  }
}

/// The days asked for must be begun and ended by readings.
void FindMissingEnds(const Samples& samples, const DayWindow& window, std::vector<Finding>& found) {
  if (samples.InTime().empty()) return;
  const Sample& first = samples.InTime().front();
  const Sample& last = samples.InTime().back();
  const auto add = [&](const Sample& at, std::int64_t missing, DateTime from, DateTime to) {
    const double interval = samples.IntervalOf(at.file);
    if (interval <= 0 || static_cast<double>(missing) <= samples.MostMinutesBetween(at, at)) return;
    Finding gap = samples.Over(FindingRule::Gap, at, at);
    gap.from = from;
    gap.to = to;
    gap.value = std::round(static_cast<double>(missing) / interval) - 1;
    gap.expected = ExpectedInterval(interval);
    found.push_back(std::move(gap));
  };
  const DateTime begin(window.first);
  const DateTime end = DateTime(window.last) + std::chrono::minutes(kLastMinuteOfDay);
  add(first, first.minute - MinuteOf(window.first), begin, first.time);
  add(last, MinuteOf(window.last) + kMinutesPerDay - last.minute, last.time, end);
}

/// Stretches of time that two read-outs cover.
void FindOverlaps(const Samples& samples, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InRows();
  std::map<std::uint8_t, std::pair<const Sample*, const Sample*>> spans;  // earliest and latest of a file
  for (const Sample& sample : all) {
    auto& [first, last] = spans[sample.file];
    if (first == nullptr || sample.minute < first->minute) first = &sample;
    if (last == nullptr || sample.minute > last->minute) last = &sample;
  }
  for (auto one = spans.begin(); one != spans.end(); ++one) {
    for (auto other = std::next(one); other != spans.end(); ++other) {
      const auto& [first, last] = one->second;
      const auto& [otherFirst, otherLast] = other->second;
      const Sample& from = first->minute > otherFirst->minute ? *first : *otherFirst;
      const Sample& to = last->minute < otherLast->minute ? *last : *otherLast;
      if (from.minute > to.minute) continue;
      Finding overlap = samples.Over(FindingRule::Overlap, from, to);
      overlap.value = static_cast<double>(to.minute - from.minute);
      overlap.expected = Wording{u"her zaman için tek dosya", u"one file for every time"};
      found.push_back(std::move(overlap));
    }
  }
}

/// The same time twice; a run is one finding, and a doubt as soon as one pair's levels differ.
void FindDoubles(const Samples& samples, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  const auto isDouble = [&](std::size_t i) { return i > 0 && all[i].minute == all[i - 1].minute; };
  std::size_t runFirst = 0;
  int count = 0;
  bool differ = false;
  double most = 0;
  const auto end = [&](std::size_t last) {
    if (count == 0) return;
    Finding twice = samples.Over(FindingRule::Double, all[runFirst], all[last]);
    for (std::size_t i = runFirst; i <= last; ++i) {
      twice.firstRow = std::min(twice.firstRow, all[i].row);
      twice.lastRow = std::max(twice.lastRow, all[i].row);
    }
    twice.severity = differ ? FindingSeverity::Doubt : FindingSeverity::Note;
    twice.value = most;
    twice.expected = Wording{u"her zaman için tek seviye", u"one level for every time"};
    found.push_back(std::move(twice));
    count = 0;
    differ = false;
    most = 0;
  };
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (isDouble(i)) {
      if (count++ == 0) runFirst = i - 1;
      most = std::max(most, std::abs(all[i].levelCm - all[i - 1].levelCm));
      differ = differ || all[i].levelCm != all[i - 1].levelCm;
    } else if (count > 0 && !isDouble(i + 1 < all.size() ? i + 1 : 0)) {
      end(i - 1);
    }
  }
  if (!all.empty()) end(all.size() - 1);
}

/// Within a file, a reading that is earlier than the one before it.
void FindDisorder(const Samples& samples, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InRows();
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (all[i].file != all[i - 1].file || all[i].minute >= all[i - 1].minute) continue;
    Finding back = samples.Over(FindingRule::Order, all[i], all[i - 1]);
    back.value = static_cast<double>(all[i - 1].minute - all[i].minute);
    back.expected =
        Message(Wording{u"%1 sonrası bir zaman", u"a time after %1"}, DateTimeText(all[i - 1].time));
    found.push_back(std::move(back));
  }
}

/// Times that do not stand on the step which most readings of their file keep.
void FindOffStep(const Samples& samples, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InRows();
  std::map<std::uint8_t, std::map<std::int64_t, int>> phases;
  const auto phaseOf = [&](const Sample& sample) {
    return sample.minute % std::max<std::int64_t>(std::llround(samples.IntervalOf(sample.file)), 1);
  };
  for (const Sample& sample : all) ++phases[sample.file][phaseOf(sample)];
  std::map<std::uint8_t, std::int64_t> usual;
  for (const auto& [file, counts] : phases) {
    usual[file] = std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; })->first;
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (phaseOf(all[i]) == usual[all[i].file]) continue;
    std::size_t last = i;
    while (last + 1 < all.size() && all[last + 1].file == all[i].file &&
           phaseOf(all[last + 1]) != usual[all[i].file])
      ++last;
    Finding off = samples.Over(FindingRule::Step, all[i], all[last]);
    off.severity = FindingSeverity::Note;
    off.value = static_cast<double>(last - i + 1);
    off.expected = ExpectedInterval(samples.IntervalOf(all[i].file));
    found.push_back(std::move(off));
    i = last;
  }
}

}  // namespace

void FindInTimes(const Samples& samples, const FindingInput& input, std::vector<Finding>& found) {
  FindGaps(samples, found);
  if (input.window) FindMissingEnds(samples, *input.window, found);
  FindOverlaps(samples, found);
  FindDoubles(samples, found);
  FindDisorder(samples, found);
  FindOffStep(samples, found);
}

}  // namespace vesk
