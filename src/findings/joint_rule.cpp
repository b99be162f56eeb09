// Where one read-out goes on where another one ended: the level goes on with the river, and the clock with
// its step.
#include <algorithm>
#include <cmath>
#include <map>

#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

constexpr double kLeastJumpCm = 3;  // a float put back by hand stands a little higher or lower
/// Of the steps inside the read-outs so many may be as sudden as one at a joint before that is a jump.
constexpr double kUsualShare = 0.995;

double Change(const Sample& earlier, const Sample& later) {
  return later.levelCm - earlier.levelCm;
}

/// True for the last reading of its file with the first one of the next file behind it.
struct FileEnds {
  explicit FileEnds(const std::vector<Sample>& inTime) {
    for (std::size_t i = 0; i < inTime.size(); ++i) {
      first.try_emplace(inTime[i].file, i);
      last[inTime[i].file] = i;
    }
  }
  [[nodiscard]] bool IsJoint(const std::vector<Sample>& inTime, std::size_t later) const {
    return inTime[later].file != inTime[later - 1].file && last.at(inTime[later - 1].file) == later - 1 &&
           first.at(inTime[later].file) == later;
  }
  std::map<int, std::size_t> first, last;
};

/// How far a step is off the mean of the step before it and the one behind; nothing beside a gap.
std::optional<double> Suddenness(const Samples& samples, std::size_t later) {
  const std::vector<Sample>& all = samples.InTime();
  if (later < 2 || later + 1 >= all.size()) return std::nullopt;
  for (std::size_t i = later - 1; i <= later + 1; ++i) {
    if (all[i].minute == all[i - 1].minute || all[i].gapBefore) return std::nullopt;
  }
  const double before = Change(all[later - 2], all[later - 1]);
  const double behind = Change(all[later], all[later + 1]);
  return std::abs(Change(all[later - 1], all[later]) - (before + behind) / 2);
}

/// What nearly all steps inside the read-outs stay below, cm.
double UsualSuddenness(const Samples& samples, const FileEnds& ends) {
  const std::vector<Sample>& all = samples.InTime();
  std::vector<double> inside;
  for (std::size_t i = 2; i + 1 < all.size(); ++i) {
    if (ends.IsJoint(all, i)) continue;
    if (const auto off = Suddenness(samples, i)) inside.push_back(*off);
  }
  if (inside.empty()) return 0;
  const auto place = static_cast<std::ptrdiff_t>(kUsualShare * static_cast<double>(inside.size() - 1));
  std::nth_element(inside.begin(), inside.begin() + place, inside.end());
  return inside[static_cast<std::size_t>(place)];
}

class JointRule {
 public:
  JointRule(const Samples& samples, const StationLimits& limits, std::vector<Finding>& found)
      : samples_(samples), limits_(limits), found_(found), ends_(samples.InTime()) {}

  void LookAtAll() {
    const std::vector<Sample>& all = samples_.InTime();
    if (ends_.first.size() < 2) return;
    const double usual = UsualSuddenness(samples_, ends_);
    for (std::size_t i = 1; i < all.size(); ++i) {
      if (!ends_.IsJoint(all, i)) continue;
      LookAtLevel(i, usual);
      LookAtClock(all[i - 1], all[i]);
    }
  }

 private:
  /// The fastest change bounds the jump over any pause; without a pause the steps beside it bound it closer.
  void LookAtLevel(std::size_t later, double usual) {
    const Sample& one = samples_.InTime()[later - 1];
    const Sample& other = samples_.InTime()[later];
    const double hours = static_cast<double>(other.minute - one.minute) / kMinutesPerHour;
    if (limits_.rateCmPerHour) {
      const double most = std::max(kLeastJumpCm, *limits_.rateCmPerHour * hours);
      if (std::abs(Change(one, other)) > most + kSameCm) return TellJump(one, other, most);
    }
    const auto sudden = Suddenness(samples_, later);
    const double most = std::max(kLeastJumpCm, usual);
    if (sudden && *sudden > most + kSameCm) TellJump(one, other, most);
  }

  void TellJump(const Sample& one, const Sample& other, double most) {
    Finding jump = samples_.Over(FindingRule::Joint, one, other);
    jump.value = Change(one, other);
    jump.unit = FindingUnit::Cm;
    jump.expected = Message(
        Wording{u"dosyadan dosyaya en çok %1 cm atlama", u"a jump of at most %1 cm from file to file"},
        NumberText(most));
    found_.push_back(std::move(jump));
  }

  void LookAtClock(const Sample& one, const Sample& other) {
    const auto interval = static_cast<std::int64_t>(samples_.IntervalOf(other.file));
    if (interval <= 0 || samples_.IntervalOf(one.file) != samples_.IntervalOf(other.file)) return;
    const std::int64_t ahead = (other.minute - one.minute) % interval;
    if (ahead == 0) return;
    Finding jump = samples_.Over(FindingRule::Joint, one, other);
    jump.severity = FindingSeverity::Note;
    jump.value = static_cast<double>(ahead > interval / 2 ? ahead - interval : ahead);
    jump.unit = FindingUnit::Minutes;
    jump.expected =
        Message(Wording{u"aynı adımda giden saat: %1 dakika", u"a clock that keeps its step of %1 minutes"},
                interval);
    found_.push_back(std::move(jump));
  }

  const Samples& samples_;
  const StationLimits& limits_;
  std::vector<Finding>& found_;
  FileEnds ends_;
};

}  // namespace

void FindAtJoints(const Samples& samples, const StationLimits& limits, std::vector<Finding>& found) {
  JointRule(samples, limits, found).LookAtAll();
}

}  // namespace vesk
