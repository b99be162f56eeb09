// The ordinary readings of a series as the rules see them.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "findings/findings.h"

namespace vesk {

struct Sample {
  std::int64_t minute =
      0;  ///< since 1970; a day's last minute that stands for midnight counts as the next 00:00
  double levelCm = 0;
  int row = 0;  ///< of the series as shown
  std::uint8_t file = 1;
  DateTime time{};  ///< as shown
};

/// The ordinary readings with what the rules ask of their files.
class Samples {
 public:
  explicit Samples(const FindingInput& input);

  /// In the order of their rows.
  [[nodiscard]] const std::vector<Sample>& InRows() const { return inRows_; }
  /// In the order of their times; readings of one time in the order of their rows.
  [[nodiscard]] const std::vector<Sample>& InTime() const { return inTime_; }
  /// Minutes between two readings of a file; 0 when nobody can tell.
  [[nodiscard]] double IntervalOf(std::uint8_t file) const;
  /// True where readings are missing between two neighbours in time.
  [[nodiscard]] bool GapBetween(const Sample& earlier, const Sample& later) const;
  /// Longest distance that two neighbours may have, minutes; 0 when nobody can tell.
  [[nodiscard]] double MostMinutesBetween(const Sample& earlier, const Sample& later) const;

  /// A finding over rows, from the time of one to that of another.
  [[nodiscard]] Finding Over(FindingRule rule, const Sample& first, const Sample& last) const;

 private:
  void LearnIntervals(const std::vector<ReadOut>& readOuts);

  const StationSeries& series_;
  std::vector<Sample> inRows_, inTime_;
  std::map<std::uint8_t, double> intervals_;
};

/// gap, overlap, double, order, step.
void FindInTimes(const Samples& samples, const FindingInput& input, std::vector<Finding>& found);
/// spike, rate, flat, range.
void FindInLevels(const Samples& samples, const FindingInput& input, std::vector<Finding>& found);

}  // namespace vesk
