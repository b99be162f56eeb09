#include "findings/samples.h"

#include <algorithm>

namespace vesk {
namespace {

constexpr double kGapIntervals = 1.5;

/// The most common step between readings of a file that follow each other; 0 when there is none.
double MostCommonStep(const std::vector<Sample>& samples, std::uint8_t file) {
  std::map<std::int64_t, int> counts;
  for (std::size_t i = 1; i < samples.size(); ++i) {
    if (samples[i].file != file || samples[i - 1].file != file) continue;
    if (const std::int64_t step = samples[i].minute - samples[i - 1].minute; step > 0) ++counts[step];
  }
  const auto most = std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; });
  return most == counts.end() ? 0 : static_cast<double>(most->first);
}

}  // namespace

Samples::Samples(const FindingInput& input) : series_(input.series) {
  inRows_.reserve(static_cast<std::size_t>(series_.ReadingCount()));
  bool inOrder = true;
  for (int row = 1; row <= series_.ReadingCount(); ++row) {
    const Reading reading = series_.At(row);
    if (reading.kind != ReadingKind::Ordinary) continue;
    // Midnight is kept as the last minute of the day that it ends.
    const bool midnight = reading.minuteOfDay == kLastMinuteOfDay;
    const DateTime time = reading.Time();
    const Sample sample{.minute = time.time_since_epoch().count() + (midnight ? 1 : 0),
                        .levelCm = reading.levelCm,
                        .row = row,
                        .file = reading.sourceFile,
                        .time = time};
    inOrder = inOrder && (inRows_.empty() || inRows_.back().minute <= sample.minute);
    inRows_.push_back(sample);
  }
  inTime_ = inRows_;
  if (!inOrder) std::ranges::stable_sort(inTime_, {}, &Sample::minute);
  LearnIntervals(input.readOuts);
}

void Samples::LearnIntervals(const std::vector<ReadOut>& readOuts) {
  for (const ReadOut& readOut : readOuts) {
    if (readOut.intervalMinutes > 0) intervals_[readOut.number] = readOut.intervalMinutes;
  }
  for (const Sample& sample : inRows_) {
    if (!intervals_.contains(sample.file)) intervals_[sample.file] = MostCommonStep(inRows_, sample.file);
  }
}

double Samples::IntervalOf(std::uint8_t file) const {
  const auto known = intervals_.find(file);
  return known == intervals_.end() ? 0 : known->second;
}

double Samples::MostMinutesBetween(const Sample& earlier, const Sample& later) const {
  return kGapIntervals * std::max(IntervalOf(earlier.file), IntervalOf(later.file));
}

bool Samples::GapBetween(const Sample& earlier, const Sample& later) const {
  const double most = MostMinutesBetween(earlier, later);
  return most > 0 && static_cast<double>(later.minute - earlier.minute) > most;
}

Finding Samples::Over(FindingRule rule, const Sample& first, const Sample& last) const {
  return {.rule = rule,
          .firstRow = std::min(first.row, last.row),
          .lastRow = std::max(first.row, last.row),
          .from = first.time,
          .to = last.time,
          .file = series_.FileOf(series_.RefOf(first.row).rawRow)};
}

}  // namespace vesk
