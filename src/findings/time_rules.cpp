// When readings were taken: overlaps, doubles, order, step.
#include <algorithm>
#include <cmath>
#include <map>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

/// Stretches of time that two read-outs cover.
void FindOverlaps(const Samples& samples, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InRows();
  std::map<int, std::pair<const Sample*, const Sample*>> spans;  // earliest and latest of a file
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
      overlap.unit = FindingUnit::Minutes;
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
    twice.unit = FindingUnit::Cm;
    twice.expected = Wording{u"her zaman için tek seviye", u"one level for every time"};
    samples.Add(twice, runFirst, last, found);
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
    back.unit = FindingUnit::Minutes;
    back.expected =
        Message(Wording{u"%1 sonrası bir zaman", u"a time after %1"}, DateTimeText(all[i - 1].Time()));
    found.push_back(std::move(back));
  }
}

/// Of each reading, in the order of rows, the minute of its file's interval at which it stands.
std::vector<std::int64_t> PhasesOf(const Samples& samples) {
  const std::vector<Sample>& all = samples.InRows();
  std::vector<std::int64_t> phases(all.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    const std::int64_t interval = std::max<std::int64_t>(std::llround(samples.IntervalOf(all[i].file)), 1);
    const bool inStep =
        i > 0 && all[i].file == all[i - 1].file && all[i].minute - all[i - 1].minute == interval;
    phases[i] = inStep ? phases[i - 1] : all[i].minute % interval;
  }
  return phases;
}

/// The phase that most readings of a file have.
std::map<int, std::int64_t> UsualPhases(const std::vector<Sample>& all,
                                        const std::vector<std::int64_t>& phases) {
  std::map<int, std::map<std::int64_t, std::size_t>> counts;
  for (std::size_t i = 0; i < all.size();) {
    std::size_t end = i + 1;
    while (end < all.size() && all[end].file == all[i].file && phases[end] == phases[i]) ++end;
    counts[all[i].file][phases[i]] += end - i;
    i = end;
  }
  std::map<int, std::int64_t> usual;
  for (const auto& [file, ofFile] : counts)
    usual[file] = std::ranges::max_element(ofFile, {}, [](const auto& entry) { return entry.second; })->first;
  return usual;
}

/// Times that do not stand on the step which most readings of their file keep.
void FindOffStep(const Samples& samples, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InRows();
  const std::vector<std::int64_t> phases = PhasesOf(samples);
  const std::map<int, std::int64_t> usual = UsualPhases(all, phases);
  auto ofFile = usual.begin();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (ofFile->first != all[i].file) ofFile = usual.find(all[i].file);
    if (phases[i] == ofFile->second) continue;
    std::size_t last = i;
    while (!samples.Each() && last + 1 < all.size() && all[last + 1].file == all[i].file &&
           phases[last + 1] != ofFile->second)
      ++last;
    Finding off = samples.Over(FindingRule::Step, all[i], all[last]);
    off.severity = FindingSeverity::Note;
    off.value = static_cast<double>(last - i + 1);
    off.expected = Message(Wording{u"%1 dakikada bir okuma", u"a reading every %1 minutes"},
                           NumberText(samples.IntervalOf(all[i].file)));
    found.push_back(std::move(off));
    i = last;
  }
}

}  // namespace

void FindInTimes(const Samples& samples, std::vector<Finding>& found) {
  FindOverlaps(samples, found);
  FindDoubles(samples, found);
  FindDisorder(samples, found);
  FindOffStep(samples, found);
}

}  // namespace vesk
