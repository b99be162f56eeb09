#include "findings/findings.h"

#include <algorithm>
#include <array>

#include "findings/samples.h"

namespace vesk {

QString RuleWord(FindingRule rule) {
  constexpr std::array kWords = {"gap",   "overlap", "double", "order", "step",
                                 "spike", "rate",    "flat",   "range"};
  return QString::fromLatin1(kWords[static_cast<std::size_t>(rule)]);
}

std::vector<Finding> FindAll(const FindingInput& input) {
  std::vector<Finding> found;
  const Samples samples(input);
  FindInTimes(samples, input, found);
  FindInLevels(samples, input, found);
  std::ranges::stable_sort(found, {}, &Finding::from);
  return found;
}

}  // namespace vesk
