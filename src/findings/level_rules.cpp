// How levels run: the field's standard tests for water level, spike, rate of change, flat line and gross
// range.
#include <algorithm>
#include <cmath>
#include <deque>

#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

constexpr double kMinutesPerHour = 60;
constexpr double kSameCm =
    1e-9;  // levels are decimal figures held in binary: a limit that is met is not passed

/// Joins flagged neighbours into one finding, which has the largest value of its readings.
class Runs {
 public:
  Runs(const Samples& samples, FindingRule rule, Message expected, std::vector<Finding>& found)
      : samples_(samples), rule_(rule), expected_(std::move(expected)), found_(found) {}
  ~Runs() { End(); }
  Q_DISABLE_COPY_MOVE(Runs)

  void Flag(std::size_t place, double value) {
    if (open_ && place == last_ + 1) {
      last_ = place;
      if (std::abs(value) > std::abs(value_)) value_ = value;
      return;
    }
    End();
    first_ = last_ = place;
    value_ = value;
    open_ = true;
  }

 private:
  void End() {
    if (!open_) return;
    Finding run = samples_.Over(rule_, samples_.InTime()[first_], samples_.InTime()[last_]);
    run.value = value_;
    run.expected = expected_;
    found_.push_back(std::move(run));
    open_ = false;
  }

  const Samples& samples_;
  FindingRule rule_;
  Message expected_;
  std::vector<Finding>& found_;
  bool open_ = false;
  std::size_t first_ = 0, last_ = 0;
  double value_ = 0;
};

void FindSpikes(const Samples& samples, double mostCm, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  Runs runs(samples, FindingRule::Spike,
            Message(Wording{u"komşularının ortalamasından en çok %1 cm uzakta",
                            u"at most %1 cm off the mean of its neighbours"},
                    NumberText(mostCm)),
            found);
  for (std::size_t i = 1; i + 1 < all.size(); ++i) {
    if (samples.GapBetween(all[i - 1], all[i]) || samples.GapBetween(all[i], all[i + 1])) continue;
    const double off = all[i].levelCm - (all[i - 1].levelCm + all[i + 1].levelCm) / 2;
    if (std::abs(off) > mostCm + kSameCm) runs.Flag(i, off);
  }
}

void FindFastChanges(const Samples& samples, double mostCmPerHour, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  Runs runs(samples, FindingRule::Rate,
            Message(Wording{u"saatte en çok %1 cm değişim", u"a change of at most %1 cm in an hour"},
                    NumberText(mostCmPerHour)),
            found);
  for (std::size_t i = 1; i < all.size(); ++i) {
    const auto minutes = static_cast<double>(all[i].minute - all[i - 1].minute);
    if (minutes <= 0 || samples.GapBetween(all[i - 1], all[i])) continue;
    const double rate = (all[i].levelCm - all[i - 1].levelCm) * kMinutesPerHour / minutes;
    if (std::abs(rate) > mostCmPerHour + kSameCm) runs.Flag(i, rate);
  }
}

/// Places of the lowest or the highest levels of a window that slides on, the extreme one in front.
template <class Before>
class SlidingExtreme {
 public:
  SlidingExtreme(const std::vector<Sample>& all, Before before) : all_(all), before_(before) {}
  void Add(std::size_t place) {
    while (!places_.empty() && !before_(all_[places_.back()].levelCm, all_[place].levelCm))
      places_.pop_back();
    places_.push_back(place);
  }
  void DropBefore(std::size_t place) {
    while (!places_.empty() && places_.front() < place) places_.pop_front();
  }
  [[nodiscard]] double Level() const { return all_[places_.front()].levelCm; }

 private:
  const std::vector<Sample>& all_;
  Before before_;
  std::deque<std::size_t> places_;
};

/// Stretches without a gap, each as long as it gets, over which the level stands still.
void FindFlatLines(const Samples& samples, double hours, double toleranceCm, std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  SlidingExtreme low(all, std::less<>{});
  SlidingExtreme high(all, std::greater<>{});
  const Message expected(
      Wording{u"%1 saat içinde %2 cm üzerinde değişim", u"a change of more than %2 cm within %1 hours"},
      NumberText(hours), NumberText(toleranceCm));
  std::size_t first = 0;
  std::size_t reported = all.size();  // first place of the run that was reported last
  std::size_t reportedLast = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (i > 0 && samples.GapBetween(all[i - 1], all[i])) first = i;
    low.Add(i);
    high.Add(i);
    low.DropBefore(first);
    high.DropBefore(first);
    while (high.Level() - low.Level() > toleranceCm + kSameCm) {
      ++first;
      low.DropBefore(first);
      high.DropBefore(first);
    }
    const double lasted = static_cast<double>(all[i].minute - all[first].minute) / kMinutesPerHour;
    if (lasted < hours) continue;
    if (reported < all.size() && first <= reportedLast) {  // the same stretch, or one that reaches into it
      found.back().to = all[i].time;
      found.back().lastRow = std::max(found.back().lastRow, all[i].row);
      found.back().value = static_cast<double>(all[i].minute - all[reported].minute) / kMinutesPerHour;
    } else {
      Finding flat = samples.Over(FindingRule::Flat, all[first], all[i]);
      flat.value = lasted;
      flat.expected = expected;
      found.push_back(std::move(flat));
      reported = first;
    }
    reportedLast = i;
  }
}

void FindOutOfRange(const Samples& samples, const StationLimits& limits, std::vector<Finding>& found) {
  if (!limits.lowestCm && !limits.highestCm) return;
  const std::vector<Sample>& all = samples.InTime();
  const auto text = [](const std::optional<double>& cm) {
    return cm ? NumberText(*cm) : QStringLiteral("-");
  };
  Runs runs(samples, FindingRule::Range,
            Message(Wording{u"%1 ile %2 cm arasında", u"between %1 and %2 cm"}, text(limits.lowestCm),
                    text(limits.highestCm)),
            found);
  for (std::size_t i = 0; i < all.size(); ++i) {
    const double level = all[i].levelCm;
    if ((limits.lowestCm && level < *limits.lowestCm - kSameCm) ||
        (limits.highestCm && level > *limits.highestCm + kSameCm))
      runs.Flag(i, level);
  }
}

}  // namespace

void FindInLevels(const Samples& samples, const FindingInput& input, std::vector<Finding>& found) {
  const StationLimits& limits = input.limits;
  if (limits.spikeCm) FindSpikes(samples, *limits.spikeCm, found);
  if (limits.rateCmPerHour) FindFastChanges(samples, *limits.rateCmPerHour, found);
  if (limits.flatHours) FindFlatLines(samples, *limits.flatHours, limits.flatCm, found);
  FindOutOfRange(samples, limits, found);
}

}  // namespace vesk
