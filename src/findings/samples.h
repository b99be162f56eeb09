// The ordinary readings of a series as the rules see them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "findings/findings.h"

namespace vesk {

/// Levels are decimal figures held in binary: a limit that is met is not passed.
inline constexpr double kSameCm = 1e-9;
inline constexpr double kMinutesPerHour = 60;

struct Sample {
  /// Since 1970; a day's last minute, which stands for midnight, counts as the next 00:00.
  std::int64_t minute = 0;
  double levelCm = 0;
  int row = 0;             ///< of the series as shown
  std::uint16_t file = 0;  ///< of its read-out, as FileNumbers has it
  bool gapBefore = false;  ///< readings are missing since the one before it in time

  [[nodiscard]] DateTime Time() const;  ///< as shown
};

/// Minutes since 1970 of a time as shown, midnight as the samples have it.
std::int64_t SampleMinute(DateTime shown);
std::int64_t SampleMinute(const Reading& reading);

/// Which read-out a raw row came from. A file that is read for several water years is one read-out.
class FileNumbers {
 public:
  explicit FileNumbers(const StationSeries& series);

  /// From 0 up; 0 too where nobody knows. Quick for rows that come in their order.
  [[nodiscard]] int Of(int rawRow) const {
    return last_ < files_.size() && files_[last_].first <= rawRow && rawRow <= files_[last_].last
               ? numbers_[last_]
               : Search(rawRow);
  }
  /// file: first 16 characters of a name; nothing when no reading came from it.
  [[nodiscard]] std::optional<int> Of(const QString& file) const;
  [[nodiscard]] int Count() const { return count_; }

 private:
  [[nodiscard]] int Search(int rawRow) const;
  const std::vector<RawFileRows>& files_;
  std::vector<int> numbers_;  ///< one an entry of files_
  int count_ = 1;
  mutable std::size_t last_ = 0;  ///< entry that the last row was found in
};

/// The ordinary readings with what the rules ask of their files.
class Samples {
 public:
  Samples(const StationSeries& series, const std::vector<ReadOut>& readOuts, bool each = false);

  /// In the order of their rows.
  [[nodiscard]] const std::vector<Sample>& InRows() const { return inRows_; }
  /// In the order of their times; readings of one time in the order of their rows.
  [[nodiscard]] const std::vector<Sample>& InTime() const { return inTime_.empty() ? inRows_ : inTime_; }
  /// Minutes between two readings of a file; 0 when nobody can tell.
  [[nodiscard]] double IntervalOf(int file) const { return intervals_[static_cast<std::size_t>(file)]; }
  /// Longest distance that two neighbours may have, minutes; 0 when nobody can tell.
  [[nodiscard]] double MostMinutesBetween(const Sample& earlier, const Sample& later) const;

  /// A finding over rows, from the time of one to that of another.
  [[nodiscard]] Finding Over(FindingRule rule, const Sample& first, const Sample& last) const;
  /// Adds a finding over [first, last] of the readings in time order; or one for each of them.
  void Add(const Finding& run, std::size_t first, std::size_t last, std::vector<Finding>& found) const;
  [[nodiscard]] bool Each() const { return each_; }

 private:
  void TakeRows(const FileNumbers& numbers);
  void LearnIntervals(const std::vector<ReadOut>& readOuts, const FileNumbers& numbers);
  void MarkGaps();

  const StationSeries& series_;
  bool each_ = false;
  std::vector<Sample> inRows_;
  std::vector<Sample> inTime_;     ///< empty where the rows are in the order of their times
  std::vector<double> intervals_;  ///< by the number of the file
};

/// How often each step between readings of a file that follow each other occurs.
class StepCounts {
 public:
  void Add(std::int64_t minutes);
  /// The most common one, minutes; 0 when there is none.
  [[nodiscard]] std::int64_t MostCommon();

 private:
  void Flush();
  std::map<std::int64_t, int> counts_;
  std::int64_t last_ = 0;  ///< seen so many times in a row
  int run_ = 0;
};

/// Joins flagged neighbours in time into one finding, which has the value of its worst reading.
class FlaggedRuns {
 public:
  FlaggedRuns(const Samples& samples, FindingRule rule, FindingUnit unit, Message expected,
              std::vector<Finding>& found);
  ~FlaggedRuns() { End(); }
  Q_DISABLE_COPY_MOVE(FlaggedRuns)

  /// place: in the order of times, ascending from call to call. by: how far beyond the limit.
  void Flag(std::size_t place, double value, double by);

 private:
  void End();

  const Samples& samples_;
  FindingRule rule_;
  FindingUnit unit_;
  Message expected_;
  std::vector<Finding>& found_;
  bool open_ = false;
  std::size_t first_ = 0, last_ = 0;
  double value_ = 0, by_ = 0;
};

/// gap.
void FindGaps(const Samples& samples, const FindingInput& input, std::vector<Finding>& found);
/// overlap, double, order, step.
void FindInTimes(const Samples& samples, std::vector<Finding>& found);
/// spike, rate, flat, range.
void FindInLevels(const Samples& samples, const StationLimits& limits, std::vector<Finding>& found);
/// extreme. A corrected clock computes the extremes: there are no records to compare.
void FindInRecords(const FindingInput& input, std::vector<Finding>& found);
/// joint.
void FindAtJoints(const Samples& samples, const StationLimits& limits, std::vector<Finding>& found);
/// header, refused.
void FindInFiles(const FindingInput& input, std::vector<Finding>& found);
/// curve.
void FindOffCurve(const Samples& samples, const StationSeries& series, std::vector<Finding>& found);
/// sensor. found: the flat lines are among them already.
void FindSensorFaults(const Samples& samples, std::vector<Finding>& found);

}  // namespace vesk
