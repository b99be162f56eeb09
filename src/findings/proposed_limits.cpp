#include "findings/proposed_limits.h"

#include <algorithm>
#include <cmath>

#include "findings/samples.h"

namespace vesk {
namespace {

constexpr std::size_t kLeastReadings = 100;
/// Share of the readings that is surely sound; faults are among the rest.
constexpr double kSoundShare = 0.995;

constexpr double kSpikeFactor = 2.5;
constexpr double kLeastSpikeCm = 3;
constexpr double kRateFactor = 1.75;
constexpr double kLeastRateCmPerHour = 10;
constexpr double kFlatFactor = 3;
constexpr double kLeastFlatHours = 24;
constexpr double kMostFlatHours = 48;
constexpr double kRangeShare = 0.001;
constexpr double kLeastSpanCm = 50;

/// Counts values in buckets, so that a share of them is found without sorting. Values beyond the last bucket
/// count there.
class Histogram {
 public:
  Histogram(double from, double width, std::size_t buckets)
      : from_(from), width_(width), perUnit_(1 / width), counts_(buckets) {}

  void Add(double value) {
    const double place = std::max(0.0, (value - from_) * perUnit_ + kMiddle);
    ++counts_[std::min(static_cast<std::size_t>(place), counts_.size() - 1)];
    ++all_;
  }
  /// The value that so large a share does not exceed, to a bucket; 0 of none.
  [[nodiscard]] double Quantile(double share) const {
    if (all_ == 0) return 0;
    auto left = static_cast<std::int64_t>(share * static_cast<double>(all_ - 1));
    std::size_t bucket = 0;
    while (left >= counts_[bucket]) left -= counts_[bucket++];
    return from_ + width_ * static_cast<double>(bucket);
  }

 private:
  static constexpr double kMiddle = 0.5;
  double from_, width_, perUnit_;
  std::vector<std::int32_t> counts_;
  std::int64_t all_ = 0;
};

/// Up to a half, so that a limit reads as an office would put it.
double RoundedUp(double value) {
  constexpr double kHalves = 2;
  return std::ceil(value * kHalves - kSameCm) / kHalves;
}

struct Behaviour {
  Histogram offNeighbours{0, 0.05, 10'000};  ///< cm
  Histogram rates{0, 0.25, 10'000};          ///< cm/h
  Histogram stillHours{0, 0.25, 1'000};
  Histogram levels{-1'000, 1, 11'000};  ///< cm
};

Behaviour BehaviourOf(const std::vector<Sample>& all) {
  Behaviour seen;
  std::size_t stillSince = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    seen.levels.Add(all[i].levelCm);
    if (i == 0) continue;
    const auto minutes = static_cast<double>(all[i].minute - all[i - 1].minute);
    const double change = all[i].levelCm - all[i - 1].levelCm;
    if (all[i].gapBefore || std::abs(change) > kSameCm) {
      seen.stillHours.Add(static_cast<double>(all[i - 1].minute - all[stillSince].minute) / kMinutesPerHour);
      stillSince = i;
    }
    if (all[i].gapBefore || minutes <= 0) continue;
    seen.rates.Add(std::abs(change) * kMinutesPerHour / minutes);
    if (i + 1 == all.size() || all[i + 1].gapBefore) continue;
    seen.offNeighbours.Add(std::abs(all[i].levelCm - (all[i - 1].levelCm + all[i + 1].levelCm) / 2));
  }
  return seen;
}

}  // namespace

StationLimits ProposeLimits(const StationSeries& series, const std::vector<ReadOut>& readOuts) {
  return ProposeLimits(Samples(series, readOuts));
}

StationLimits ProposeLimits(const Samples& samples) {
  if (samples.InTime().size() < kLeastReadings) return {};
  const Behaviour seen = BehaviourOf(samples.InTime());
  StationLimits limits;
  limits.spikeCm =
      RoundedUp(std::max(kLeastSpikeCm, kSpikeFactor * seen.offNeighbours.Quantile(kSoundShare)));
  limits.rateCmPerHour =
      RoundedUp(std::max(kLeastRateCmPerHour, kRateFactor * seen.rates.Quantile(kSoundShare)));
  limits.flatHours = std::round(
      std::clamp(kFlatFactor * seen.stillHours.Quantile(kSoundShare), kLeastFlatHours, kMostFlatHours));
  const double low = seen.levels.Quantile(kRangeShare);
  const double high = seen.levels.Quantile(1 - kRangeShare);
  const double span = std::max(high - low, kLeastSpanCm);
  limits.lowestCm = std::max(0.0, std::floor(low - span / 2));
  limits.highestCm = std::ceil(high + span);
  return limits;
}

}  // namespace vesk
