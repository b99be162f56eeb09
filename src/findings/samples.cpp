#include "findings/samples.h"

#include <algorithm>

namespace vesk {
namespace {

constexpr double kGapIntervals = 1.5;

}  // namespace

std::int64_t SampleMinute(DateTime shown) {
  const std::int64_t minute = shown.time_since_epoch().count();
  return (minute + 1) % kMinutesPerDay == 0 ? minute + 1 : minute;
}

std::int64_t SampleMinute(const Reading& reading) {
  const int minute = reading.minuteOfDay == kLastMinuteOfDay ? kMinutesPerDay : reading.minuteOfDay;
  return std::int64_t{reading.day.time_since_epoch().count()} * kMinutesPerDay + minute;
}

FileNumbers::FileNumbers(const StationSeries& series) : files_(series.Files()) {
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const auto same = std::ranges::find(files_, files_[i].rawFile, &RawFileRows::rawFile);
    const auto first = static_cast<std::size_t>(same - files_.begin());
    numbers_.push_back(first < i ? numbers_[first] : (numbers_.empty() ? 0 : std::ranges::max(numbers_) + 1));
  }
  if (!numbers_.empty()) count_ = std::ranges::max(numbers_) + 1;
}

int FileNumbers::Search(int rawRow) const {
  const auto holds = [&](const RawFileRows& rows) { return rows.first <= rawRow && rawRow <= rows.last; };
  const auto found = std::ranges::find_if(files_, holds);
  if (found == files_.end()) return 0;
  last_ = static_cast<std::size_t>(found - files_.begin());
  return numbers_[last_];
}

std::optional<int> FileNumbers::Of(const QString& file) const {
  const auto found = std::ranges::find(files_, file, &RawFileRows::rawFile);
  if (found == files_.end()) return std::nullopt;
  return numbers_[static_cast<std::size_t>(found - files_.begin())];
}

DateTime Sample::Time() const {
  return DateTime(std::chrono::minutes(minute % kMinutesPerDay == 0 ? minute - 1 : minute));
}

void StepCounts::Add(std::int64_t minutes) {
  if (minutes <= 0) return;
  if (minutes != last_) Flush();
  last_ = minutes;
  ++run_;
}

void StepCounts::Flush() {
  if (run_ > 0) counts_[last_] += run_;
  run_ = 0;
}

std::int64_t StepCounts::MostCommon() {
  Flush();
  const auto most = std::ranges::max_element(counts_, {}, [](const auto& entry) { return entry.second; });
  return most == counts_.end() ? 0 : most->first;
}

Samples::Samples(const StationSeries& series, const std::vector<ReadOut>& readOuts, bool each)
    : series_(series), each_(each) {
  const FileNumbers numbers(series_);
  TakeRows(numbers);
  if (!std::ranges::is_sorted(inRows_, {}, &Sample::minute)) {
    inTime_ = inRows_;
    std::ranges::stable_sort(inTime_, {}, &Sample::minute);
  }
  LearnIntervals(readOuts, numbers);
  MarkGaps();
}

void Samples::TakeRows(const FileNumbers& numbers) {
  const bool retimed = series_.Target().has_value();  // the rows are no longer in the raw order
  inRows_.reserve(static_cast<std::size_t>(series_.ReadingCount()));
  const int count = series_.ReadingCount();
  for (int row = 1; row <= count; ++row) {
    const Reading reading = series_.At(row);
    if (reading.kind != ReadingKind::Ordinary) continue;
    inRows_.push_back(
        {.minute = SampleMinute(reading),
         .levelCm = reading.levelCm,
         .row = row,
         .file = static_cast<std::uint16_t>(numbers.Of(retimed ? series_.RefOf(row).rawRow : row))});
  }
}

void Samples::LearnIntervals(const std::vector<ReadOut>& readOuts, const FileNumbers& numbers) {
  intervals_.resize(static_cast<std::size_t>(numbers.Count()));
  for (const ReadOut& readOut : readOuts) {
    const auto number = numbers.Of(readOut.file);
    if (number) intervals_[static_cast<std::size_t>(*number)] = readOut.header.RecordInterval;
  }
  if (std::ranges::min(intervals_) > 0) return;
  std::vector<StepCounts> steps(intervals_.size());
  for (std::size_t i = 1; i < inRows_.size(); ++i) {
    if (inRows_[i].file == inRows_[i - 1].file)
      steps[static_cast<std::size_t>(inRows_[i].file)].Add(inRows_[i].minute - inRows_[i - 1].minute);
  }
  for (std::size_t file = 0; file < intervals_.size(); ++file) {
    if (intervals_[file] <= 0) intervals_[file] = static_cast<double>(steps[file].MostCommon());
  }
}

void Samples::MarkGaps() {
  std::vector<Sample>& all = inTime_.empty() ? inRows_ : inTime_;
  for (std::size_t i = 1; i < all.size(); ++i) {
    const double most = MostMinutesBetween(all[i - 1], all[i]);
    all[i].gapBefore = most > 0 && static_cast<double>(all[i].minute - all[i - 1].minute) > most;
  }
}

double Samples::MostMinutesBetween(const Sample& earlier, const Sample& later) const {
  return kGapIntervals * std::max(IntervalOf(earlier.file), IntervalOf(later.file));
}

Finding Samples::Over(FindingRule rule, const Sample& first, const Sample& last) const {
  return {.rule = rule,
          .firstRow = std::min(first.row, last.row),
          .lastRow = std::max(first.row, last.row),
          .from = first.Time(),
          .to = last.Time(),
          .file = series_.FileOf(series_.RefOf(first.row).rawRow)};
}

void Samples::Add(const Finding& run, std::size_t first, std::size_t last,
                  std::vector<Finding>& found) const {
  if (!each_) {
    found.push_back(run);
    return;
  }
  for (std::size_t i = first; i <= last; ++i) {
    Finding one = Over(run.rule, InTime()[i], InTime()[i]);
    one.severity = run.severity;
    one.value = run.value;
    one.unit = run.unit;
    one.expected = run.expected;
    found.push_back(std::move(one));
  }
}

FlaggedRuns::FlaggedRuns(const Samples& samples, FindingRule rule, FindingUnit unit, Message expected,
                         std::vector<Finding>& found)
    : samples_(samples), rule_(rule), unit_(unit), expected_(std::move(expected)), found_(found) {}

void FlaggedRuns::Flag(std::size_t place, double value, double by) {
  if (open_ && place == last_ + 1 && !samples_.Each()) {
    last_ = place;
    if (by > by_) {
      value_ = value;
      by_ = by;
    }
    return;
  }
  End();
  first_ = last_ = place;
  value_ = value;
  by_ = by;
  open_ = true;
}

void FlaggedRuns::End() {
  if (!open_) return;
  Finding run = samples_.Over(rule_, samples_.InTime()[first_], samples_.InTime()[last_]);
  for (std::size_t i = first_; i <= last_; ++i) {  // where read-outs overlap, rows and times differ in order
    run.firstRow = std::min(run.firstRow, samples_.InTime()[i].row);
    run.lastRow = std::max(run.lastRow, samples_.InTime()[i].row);
  }
  run.value = value_;
  run.unit = unit_;
  run.expected = expected_;
  found_.push_back(std::move(run));
  open_ = false;
}

}  // namespace vesk
