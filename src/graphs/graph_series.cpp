#include "graphs/graph_series.h"

#include <algorithm>
#include <limits>

namespace vesk {

GraphSeries::GraphSeries(std::vector<SeriesPoint> points, bool withExtremes) : points_(std::move(points)) {
  for (const SeriesPoint& point : points_) highestCm_ = std::max(highestCm_, point.levelCm);
  if (!withExtremes) {
    std::erase_if(points_, [](const SeriesPoint& point) { return point.kind != ReadingKind::Ordinary; });
  }
  latestSoFar_.reserve(points_.size());
  byTime_.reserve(points_.size());
  std::int32_t latest = std::numeric_limits<std::int32_t>::min();
  bool sorted = true;
  for (std::size_t i = 0; i < points_.size(); ++i) {
    sorted = sorted && points_[i].minutes >= latest;
    latest = std::max(latest, points_[i].minutes);
    latestSoFar_.push_back(latest);
    (points_[i].levelCm < 0 ? negatives_ : byTime_).push_back(static_cast<std::uint32_t>(i));
  }
  if (sorted) return;
  std::stable_sort(byTime_.begin(), byTime_.end(), [this](std::uint32_t a, std::uint32_t b) {
    return points_[a].minutes < points_[b].minutes;
  });
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

std::span<const SeriesPoint> GraphSeries::OnPage(int startMinutes, int endMinutes) const {
  const PageRange range = RangeOf(startMinutes, endMinutes);
  return std::span(points_).subspan(range.first, range.last - range.first);
}

std::optional<SeriesPoint> GraphSeries::EndedByNegative(int startMinutes, int endMinutes) const {
  const PageRange range = RangeOf(startMinutes, endMinutes);
  if (!range.endsNegative) return std::nullopt;
  return points_[range.last];
}

const SeriesPoint& GraphSeries::Readable(int position) const {
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
