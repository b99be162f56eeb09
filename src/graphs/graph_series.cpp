#include "graphs/graph_series.h"

#include <algorithm>
#include <limits>

namespace vesk {

GraphSeries::GraphSeries(std::vector<GraphPoint> points, bool withExtremes) : points_(std::move(points)) {
  if (!withExtremes) {
    std::erase_if(points_, [](const GraphPoint& point) { return point.Kind() != ReadingKind::Ordinary; });
  }
  latestSoFar_.reserve(points_.size());
  std::vector<std::uint32_t> ordinary;
  std::vector<std::uint32_t> extremes;
  ordinary.reserve(points_.size());
  std::int32_t latest = std::numeric_limits<std::int32_t>::min();
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const GraphPoint& point = points_[i];
    latest = std::max(latest, point.minutes);
    latestSoFar_.push_back(latest);
    auto& list = point.levelCm < 0 ? negatives_ : point.Kind() == ReadingKind::Ordinary ? ordinary : extremes;
    list.push_back(static_cast<std::uint32_t>(i));
  }
  MergeByTime(std::move(ordinary), std::move(extremes));
}

// A day's extremes follow its readings in the records: each kind is in order as a rule, both together are
// not.
void GraphSeries::MergeByTime(std::vector<std::uint32_t> ordinary, std::vector<std::uint32_t> extremes) {
  const auto earlier = [this](std::uint32_t a, std::uint32_t b) {
    return points_[a].minutes != points_[b].minutes ? points_[a].minutes < points_[b].minutes : a < b;
  };
  for (std::vector<std::uint32_t>* list : {&ordinary, &extremes}) {
    if (!std::is_sorted(list->begin(), list->end(), earlier)) std::sort(list->begin(), list->end(), earlier);
  }
  if (extremes.empty()) {
    byTime_ = std::move(ordinary);
    return;
  }
  byTime_.resize(ordinary.size() + extremes.size());
  std::merge(ordinary.begin(), ordinary.end(), extremes.begin(), extremes.end(), byTime_.begin(), earlier);
}

GraphSeries::PageRange GraphSeries::RangeOf(int startMinutes, int endMinutes) const {
  const auto begin = latestSoFar_.begin();
  PageRange range;
  range.startMinutes = startMinutes;
  range.endMinutes = endMinutes;
  range.first = static_cast<std::size_t>(std::lower_bound(begin, latestSoFar_.end(), startMinutes) - begin);
  range.last = static_cast<std::size_t>(std::upper_bound(begin, latestSoFar_.end(), endMinutes) - begin);
  auto negative = std::lower_bound(negatives_.begin(), negatives_.end(), range.first);
  while (negative != negatives_.end() && points_[*negative].minutes < startMinutes) ++negative;
  if (negative != negatives_.end() && *negative < range.last) {
    range.last = *negative;
    range.endsNegative = true;
  }
  range.first = std::min(range.first, range.last);
  return range;
}

std::span<const GraphPoint> GraphSeries::OnPage(int startMinutes, int endMinutes) const {
  const PageRange range = RangeOf(startMinutes, endMinutes);
  return std::span(points_).subspan(range.first, range.last - range.first);
}

std::optional<GraphPoint> GraphSeries::EndedByNegative(int startMinutes, int endMinutes) const {
  const PageRange range = RangeOf(startMinutes, endMinutes);
  if (!range.endsNegative) return std::nullopt;
  return points_[range.last];
}

const GraphPoint& GraphSeries::Readable(int position) const {
  return points_[byTime_[static_cast<std::size_t>(position)]];
}

int GraphSeries::ReadableFrom(int minutes) const {
  const auto later =
      std::lower_bound(byTime_.begin(), byTime_.end(), minutes,
                       [this](std::uint32_t i, int value) { return points_[i].minutes < value; });
  return static_cast<int>(later - byTime_.begin());
}

bool GraphSeries::Drawn(int position, const PageRange& page) const {
  const std::uint32_t record = byTime_[static_cast<std::size_t>(position)];
  const int minutes = points_[record].minutes;
  return record >= page.first && record < page.last && minutes >= page.startMinutes &&
         minutes <= page.endMinutes;
}

}  // namespace vesk
