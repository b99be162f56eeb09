#include "graphs/review_points.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "graphs/graph_scales.h"

namespace vesk {
namespace {

constexpr double kLeastMinutes = 60;  // no closer look than an hour

bool IsEarlier(const GraphPoint& one, const GraphPoint& other) {
  return one.minutes < other.minutes;
}

}  // namespace

ReviewPoints::ReviewPoints(const StationSeries& series) {
  const int count = series.ReadingCount();
  if (count == 0) return;
  firstDay_ = series.At(1).day;
  points_.reserve(static_cast<std::size_t>(count));
  for (int row = 1; row <= count; ++row) {
    const Reading reading = series.At(row);
    if (reading.kind != ReadingKind::Ordinary) continue;
    points_.emplace_back(reading.levelCm, GraphMinutes(firstDay_, reading.Time()), ReadingKind::Ordinary,
                         row);
  }
  rowsAscend_ = std::ranges::is_sorted(points_, IsEarlier);
  if (!rowsAscend_) {
    std::ranges::stable_sort(points_, IsEarlier);
    byRow_.resize(points_.size());
    for (std::size_t i = 0; i < byRow_.size(); ++i) byRow_[i] = i;
    std::ranges::sort(byRow_, {}, [this](std::size_t place) { return points_[place].Row(); });
  }
  TakeCorrections(series);
}

void ReviewPoints::TakeCorrections(const StationSeries& series) {
  if (!series.HasCorrections()) return;
  std::size_t lastPlace = points_.size();
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const GraphPoint& point = points_[i];
    if (!series.IsCorrected(point.Row())) continue;
    corrected_.push_back(point);
    if (lastPlace + 1 != i || rawLines_.empty()) {
      rawLines_.emplace_back();
      if (i > 0) rawLines_.back().push_back(points_[i - 1]);
    }
    rawLines_.back().emplace_back(series.RawLevel(point.Row()), point.minutes, ReadingKind::Ordinary,
                                  point.Row());
    lastPlace = i;
    const bool ends = i + 1 < points_.size() && !series.IsCorrected(points_[i + 1].Row());
    if (ends) rawLines_.back().push_back(points_[i + 1]);
  }
}

std::pair<std::size_t, std::size_t> ReviewPoints::PlacesIn(const MinuteSpan& span) const {
  const auto first = std::ranges::lower_bound(points_, span.start, {}, &GraphPoint::minutes);
  const auto last = std::ranges::upper_bound(points_, span.end, {}, &GraphPoint::minutes);
  return {static_cast<std::size_t>(first - points_.begin()),
          static_cast<std::size_t>(last - points_.begin())};
}

std::span<const GraphPoint> ReviewPoints::In(const MinuteSpan& span) const {
  auto [first, last] = PlacesIn(span);
  if (first > 0) --first;
  if (last < points_.size()) ++last;
  return std::span(points_).subspan(first, last - first);
}

MinuteSpan ReviewPoints::Whole() const {
  if (points_.empty()) return {0, kMinutesPerDay};
  const MinuteSpan span{static_cast<double>(points_.front().minutes),
                        static_cast<double>(points_.back().minutes)};
  if (span.Length() >= kLeastMinutes) return span;
  const double middle = (span.start + span.end) / 2;
  return {middle - kMinutesPerDay / 2.0, middle + kMinutesPerDay / 2.0};
}

LevelExtent ReviewPoints::LevelsIn(const MinuteSpan& span) const {
  const auto [first, last] = PlacesIn(span);
  LevelExtent levels{.highestCm = -std::numeric_limits<double>::max(),
                     .lowestCm = std::numeric_limits<double>::max()};
  for (std::size_t i = first; i < last; ++i) levels.Widen(points_[i].levelCm);
  return first == last ? LevelExtent() : levels;
}

std::size_t ReviewPoints::Nearest(double minutes) const {
  const auto later = std::ranges::lower_bound(points_, minutes, {}, &GraphPoint::minutes);
  auto place = static_cast<std::size_t>(later - points_.begin());
  if (place == points_.size()) return place - 1;
  if (place > 0 && minutes - points_[place - 1].minutes < points_[place].minutes - minutes) --place;
  return place;
}

std::size_t ReviewPoints::PlaceOfRow(int row) const {
  if (rowsAscend_) {
    const auto behind = std::ranges::upper_bound(points_, row, {}, &GraphPoint::Row);
    return behind == points_.begin() ? 0 : static_cast<std::size_t>(behind - points_.begin()) - 1;
  }
  const auto behind =
      std::ranges::upper_bound(byRow_, row, {}, [this](std::size_t place) { return points_[place].Row(); });
  return behind == byRow_.begin() ? byRow_.front() : *std::prev(behind);
}

std::vector<GraphPoint> ReviewPoints::OfRows(int first, int last) const {
  if (points_.empty() || last < first) return {};
  if (rowsAscend_) {
    const auto from = std::ranges::lower_bound(points_, first, {}, &GraphPoint::Row);
    const auto to = std::ranges::upper_bound(points_, last, {}, &GraphPoint::Row);
    return {from, to};
  }
  std::vector<GraphPoint> points;
  for (const GraphPoint& point : points_) {
    if (point.Row() >= first && point.Row() <= last) points.push_back(point);
  }
  return points;
}

std::pair<int, int> ReviewPoints::RowsIn(const MinuteSpan& span) const {
  const auto [first, last] = PlacesIn(span);
  if (first == last) return {0, 0};
  const auto [low, high] =
      std::ranges::minmax_element(points_.begin() + static_cast<std::ptrdiff_t>(first),
                                  points_.begin() + static_cast<std::ptrdiff_t>(last), {}, &GraphPoint::Row);
  return {low->Row(), high->Row()};
}

double ReviewPoints::MinutesOf(DateTime time) const {
  return GraphMinutes(firstDay_, time);
}

DateTime ReviewPoints::TimeOf(double minutes) const {
  return TimeOfCoordinate(firstDay_, minutes * kMinuteUnits);
}

MinuteSpan Zoomed(const MinuteSpan& span, double about, double factor, const MinuteSpan& whole) {
  const double length =
      std::clamp(span.Length() * factor, std::min(kLeastMinutes, whole.Length()), whole.Length());
  const double share = span.Length() > 0 ? (about - span.start) / span.Length() : 0;
  const double start = about - share * length;
  return Within({start, start + length}, whole);
}

MinuteSpan Within(MinuteSpan span, const MinuteSpan& whole) {
  const double length = std::min(span.Length(), whole.Length());
  span.start = std::clamp(span.start, whole.start, whole.end - length);
  span.end = span.start + length;
  return span;
}

}  // namespace vesk
