// How levels run: the field's standard tests for water level, spike, rate of change, flat line and gross
// range.
#include <algorithm>
#include <cmath>

#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

void FindSpikes(const Samples& samples, double mostCm, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  FlaggedRuns runs(samples, FindingRule::Spike, FindingUnit::Cm,
                   Message(Wording{u"komşularının ortalamasından en çok %1 cm uzakta",
                                   u"at most %1 cm off the mean of its neighbours"},
                           NumberText(mostCm)),
                   found);
  for (std::size_t i = 1; i + 1 < all.size(); ++i) {
    if (all[i].gapBefore || all[i + 1].gapBefore) continue;
    const double off = all[i].levelCm - (all[i - 1].levelCm + all[i + 1].levelCm) / 2;
    if (std::abs(off) > mostCm + kSameCm) runs.Flag(i, off, std::abs(off));
  }
}

void FindFastChanges(const Samples& samples, double mostCmPerHour, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  FlaggedRuns runs(samples, FindingRule::Rate, FindingUnit::CmPerHour,
                   Message(Wording{u"saatte en çok %1 cm değişim", u"a change of at most %1 cm in an hour"},
                           NumberText(mostCmPerHour)),
                   found);
  for (std::size_t i = 1; i < all.size(); ++i) {
    const auto minutes = static_cast<double>(all[i].minute - all[i - 1].minute);
    if (minutes <= 0 || all[i].gapBefore) continue;
    const double rate = (all[i].levelCm - all[i - 1].levelCm) * kMinutesPerHour / minutes;
    if (std::abs(rate) > mostCmPerHour + kSameCm) runs.Flag(i, rate, std::abs(rate));
  }
}

/// A stretch of readings in time order, both ends included.
struct Stretch {
  std::size_t first = 0, last = 0;
};

/// Looks for stretches without a gap over which the level stands still.
class FlatSearch {
 public:
  FlatSearch(const std::vector<Sample>& inTime, double hours, double toleranceCm)
      : all_(inTime), minutes_(hours * kMinutesPerHour), toleranceCm_(toleranceCm) {}

  /// Each as long as it gets; those that reach into each other are one.
  std::vector<Stretch> Stretches() {
    std::vector<Stretch> flat;
    std::size_t first = 0;
    std::size_t last = 0;
    while (first < all_.size()) {
      last = FirstAfter(first, last);
      if (last == all_.size()) break;
      // What moves near the end of the time asked for moves in every stretch that begins before it.
      const std::size_t begin = BeginOfStillness(first, last);
      if (begin > first) {
        first = begin;
        continue;
      }
      Extend(first, last);
      if (!flat.empty() && first <= flat.back().last) {
        flat.back().last = last;
      } else {
        flat.push_back({first, last});
      }
      if (last + 1 == all_.size()) break;
      ++last;
      first = BeginOfStillness(first, last);
    }
    return flat;
  }

 private:
  /// The first reading at least the time asked for behind `first`; `from`: one that is not behind it.
  [[nodiscard]] std::size_t FirstAfter(std::size_t first, std::size_t from) const {
    std::size_t at = std::max(first, from);
    while (at < all_.size() && static_cast<double>(all_[at].minute - all_[first].minute) < minutes_) ++at;
    return at;
  }

  /// The earliest reading from `first` on from which the level stands still up to `last`.
  std::size_t BeginOfStillness(std::size_t first, std::size_t last) {
    low_ = high_ = all_[last].levelCm;
    for (std::size_t at = last; at > first; --at) {
      if (all_[at].gapBefore || !Takes(all_[at - 1].levelCm)) return at;
    }
    return first;
  }

  void Extend(std::size_t first, std::size_t& last) {
    BeginOfStillness(first, last);
    while (last + 1 < all_.size() && !all_[last + 1].gapBefore && Takes(all_[last + 1].levelCm)) ++last;
  }

  /// False, and nothing taken, when the level moves by too much.
  bool Takes(double levelCm) {
    const double low = std::min(low_, levelCm);
    const double high = std::max(high_, levelCm);
    if (high - low > toleranceCm_ + kSameCm) return false;
    low_ = low;
    high_ = high;
    return true;
  }

  const std::vector<Sample>& all_;
  double minutes_;
  double toleranceCm_;
  double low_ = 0, high_ = 0;
};

void FindFlatLines(const Samples& samples, double hours, double toleranceCm, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  for (const Stretch& stretch : FlatSearch(all, hours, toleranceCm).Stretches()) {
    Finding flat = samples.Over(FindingRule::Flat, all[stretch.first], all[stretch.last]);
    flat.value = static_cast<double>(all[stretch.last].minute - all[stretch.first].minute) / kMinutesPerHour;
    flat.unit = FindingUnit::Hours;
    flat.expected = Message(
        Wording{u"%1 saat içinde %2 cm üzerinde değişim", u"a change of more than %2 cm within %1 hours"},
        NumberText(hours), NumberText(toleranceCm));
    samples.Add(flat, stretch.first, stretch.last, found);
  }
}

void FindOutOfRange(const Samples& samples, const StationLimits& limits, std::vector<Finding>& found) {
  if (!limits.lowestCm && !limits.highestCm) return;
  const std::vector<Sample>& all = samples.InTime();
  const auto text = [](const std::optional<double>& cm) {
    return cm ? NumberText(*cm) : QStringLiteral("-");
  };
  FlaggedRuns runs(samples, FindingRule::Range, FindingUnit::Cm,
                   Message(Wording{u"%1 ile %2 cm arasında", u"between %1 and %2 cm"}, text(limits.lowestCm),
                           text(limits.highestCm)),
                   found);
  for (std::size_t i = 0; i < all.size(); ++i) {
    const double level = all[i].levelCm;
    const double below = limits.lowestCm ? *limits.lowestCm - level : 0;
    const double above = limits.highestCm ? level - *limits.highestCm : 0;
    const double by = std::max(below, above);
    if (by > kSameCm) runs.Flag(i, level, by);
  }
}

}  // namespace

void FindInLevels(const Samples& samples, const StationLimits& limits, std::vector<Finding>& found) {
  if (limits.spikeCm) FindSpikes(samples, *limits.spikeCm, found);
  if (limits.rateCmPerHour) FindFastChanges(samples, *limits.rateCmPerHour, found);
  if (limits.flatHours) FindFlatLines(samples, *limits.flatHours, limits.flatCm, found);
  FindOutOfRange(samples, limits, found);
}

}  // namespace vesk
