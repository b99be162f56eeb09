// Levels that a failing sensor gives: below zero, at the ends of its field, stuck on one value.
#include <algorithm>
#include <cmath>
#include <map>

#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

constexpr double kFieldHighestCm = 9999;  // 99.99 m
constexpr double kFieldLowestCm = -999;   // -9.99 m
constexpr double kMostShare = 0.05;
constexpr double kTenthsPerCm = 10;

bool IsFieldLimit(double levelCm) {
  return std::abs(levelCm - kFieldHighestCm) <= kSameCm || std::abs(levelCm - kFieldLowestCm) <= kSameCm;
}

/// Readings that no flat line has, by their places in time.
std::vector<std::size_t> OutsideFlatLines(const std::vector<Sample>& all, const std::vector<Finding>& found) {
  std::vector<bool> flat(all.size());
  for (const Finding& finding : found) {
    if (finding.rule != FindingRule::Flat) continue;
    for (auto at = std::ranges::lower_bound(all, SampleMinute(finding.from), {}, &Sample::minute);
         at != all.end() && at->minute <= SampleMinute(finding.to); ++at)
      flat[static_cast<std::size_t>(at - all.begin())] = true;
  }
  std::vector<std::size_t> outside;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (!flat[i]) outside.push_back(i);
  }
  return outside;
}

bool IsCrowd(std::size_t readings, std::size_t ofAll) {
  return static_cast<double>(readings) > kMostShare * static_cast<double>(ofAll);
}

std::int64_t Tenths(double levelCm) {
  return std::llround(levelCm * kTenthsPerCm);
}

/// A crowd at one value is one within its centimetre: most series have none, which takes no more than a
/// count.
bool MayBeCrowded(const std::vector<Sample>& all) {
  constexpr double kBelowAll = -1000;
  constexpr double kHalfTenth = 0.05;
  constexpr std::size_t kCentimetres = 11'000;
  std::vector<std::uint32_t> counts(kCentimetres);
  for (const Sample& sample : all) {
    const double above =
        std::clamp(sample.levelCm + kHalfTenth - kBelowAll, 0.0, static_cast<double>(kCentimetres - 1));
    ++counts[static_cast<std::size_t>(above)];
  }
  return IsCrowd(std::ranges::max(counts), all.size());
}

/// Values that more than their share of the readings has, tenths of a centimetre.
std::vector<std::int64_t> CrowdedValues(const std::vector<Sample>& all) {
  if (!MayBeCrowded(all)) return {};
  std::map<std::int64_t, std::size_t> counts;
  for (const Sample& sample : all) ++counts[Tenths(sample.levelCm)];
  std::vector<std::int64_t> crowded;
  for (const auto& [tenths, count] : counts) {
    if (IsCrowd(count, all.size())) crowded.push_back(tenths);
  }
  return crowded;
}

void FindCrowdedValues(const Samples& samples, std::vector<Finding>& found) {
  constexpr std::size_t kLeastReadings = 200;  // of a few readings a twentieth is no crowd
  constexpr double kPercent = 100;
  const std::vector<Sample>& all = samples.InTime();
  if (all.size() < kLeastReadings) return;
  const std::vector<std::int64_t> crowded = CrowdedValues(all);
  if (crowded.empty()) return;
  const std::vector<std::size_t> outside = OutsideFlatLines(all, found);
  for (const std::int64_t tenths : crowded) {
    std::vector<std::size_t> places;
    std::ranges::copy_if(outside, std::back_inserter(places),
                         [&](std::size_t i) { return Tenths(all[i].levelCm) == tenths; });
    if (!IsCrowd(places.size(), all.size())) continue;
    const Sample& first = all[places.front()];
    Finding crowd = samples.Over(FindingRule::Sensor, first, all[places.back()]);
    crowd.severity = FindingSeverity::Note;
    crowd.value = kPercent * static_cast<double>(places.size()) / static_cast<double>(all.size());
    crowd.unit = FindingUnit::Percent;
    crowd.expected = Message(Wording{u"okumaların en çok yüzde 5'i tek bir değerde (%1 cm)",
                                     u"at most 5 % of the readings at one value (%1 cm)"},
                             NumberText(first.levelCm));
    if (!samples.Each()) {
      found.push_back(std::move(crowd));
      continue;
    }
    for (const std::size_t i : places) samples.Add(crowd, i, i, found);
  }
}

}  // namespace

void FindSensorFaults(const Samples& samples, std::vector<Finding>& found) {
  FindCrowdedValues(samples, found);
  FlaggedRuns limits(
      samples, FindingRule::Sensor, FindingUnit::Cm,
      Wording{u"ölçüm alanının sınırında olmayan bir seviye", u"a level that is not the limit of its field"},
      found);
  FlaggedRuns negatives(samples, FindingRule::Sensor, FindingUnit::Cm,
                        Wording{u"sıfırın altında olmayan bir seviye", u"a level that is not below zero"},
                        found);
  const std::vector<Sample>& all = samples.InTime();
  for (std::size_t i = 0; i < all.size(); ++i) {
    const double level = all[i].levelCm;
    if (IsFieldLimit(level)) {
      limits.Flag(i, level, std::abs(level));
    } else if (level < -kSameCm) {
      negatives.Flag(i, level, -level);
    }
  }
}

}  // namespace vesk
