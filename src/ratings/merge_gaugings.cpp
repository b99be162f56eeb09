#include "ratings/merge_gaugings.h"

#include <algorithm>

namespace vesk {

GaugingMerge MergeGaugings(const std::vector<StoredGauging>& stored, const std::vector<Gauging>& incoming,
                           bool replace) {
  GaugingMerge merge;
  std::vector<StoredGauging> present = stored;  // with what came in so far
  for (std::size_t i = 0; i < incoming.size(); ++i) {
    const Gauging& gauging = incoming[i];
    const auto isEqual = [&gauging](const StoredGauging& one) { return one.gauging == gauging; };
    const auto hasTime = [&gauging](const StoredGauging& one) { return one.gauging.time == gauging.time; };
    if (std::ranges::any_of(present, isEqual)) {
      merge.same.push_back(i);
      continue;
    }
    const auto known = gauging.time ? std::ranges::find_if(present, hasTime) : present.end();
    if (known == present.end()) {
      merge.changes.push_back({{}, StoredGauging{0, gauging}});
      merge.added.push_back(i);
      present.push_back({0, gauging});
      continue;
    }
    const bool single = known->key != 0 && std::ranges::count_if(present, hasTime) == 1;
    if (!replace || !single) {
      merge.different.push_back(i);
      continue;
    }
    merge.changes.push_back({*known, StoredGauging{known->key, gauging}});
    merge.replaced.push_back(i);
    *known = {0, gauging};  // a second one of that time among those that come in replaces nothing
  }
  return merge;
}

}  // namespace vesk
