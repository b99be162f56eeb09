#include "graphs/graph_series.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vesk {
namespace {

constexpr auto kOrdinary = ReadingKind::Ordinary;

// The rule of a page, reading by reading.
std::vector<int> TimesOneByOne(const std::vector<GraphPoint>& points, int start, int end) {
  std::vector<int> times;
  for (const GraphPoint& point : points) {
    if (point.minutes < start) continue;
    if (point.minutes > end || point.levelCm < 0) break;
    times.push_back(point.minutes);
  }
  return times;
}

TEST(GraphSeries, APageHoldsWhatAWalkThroughAllRecordsWouldFind) {
  std::vector<GraphPoint> points;
  for (int i = 0; i < 40; ++i) points.push_back({100.0 + i, i * 10, kOrdinary});
  for (int i = 30; i < 80; ++i)
    points.push_back({100.0 + i, i * 10 + 5, kOrdinary});  // an overlapping read-out
  points[55].levelCm = -1;
  const GraphSeries series(points, true);
  for (int start = -20; start < 820; start += 13) {
    for (const int length : {0, 5, 60, 300, 2000}) {
      std::vector<int> times;
      for (const GraphPoint& point : series.OnPage(start, start + length)) {
        if (point.minutes >= start) times.push_back(point.minutes);
      }
      ASSERT_EQ(times, TimesOneByOne(points, start, start + length)) << start << '+' << length;
    }
  }
}

TEST(GraphSeries, ReadingsAreWalkedInTimeWhateverTheirRecordsOrder) {
  std::vector<GraphPoint> points;
  std::uint32_t random = 3;
  for (int i = 0; i < 3000; ++i) {
    random = random * 1664525U + 1013904223U;
    const int day = i / 50 * 1440;
    const bool extreme = i % 50 > 47;
    const int minute = i < 2000 && !extreme ? i % 50 * 20 : static_cast<int>(random >> 21U) % 1440;
    points.push_back(
        {(random & 255U) == 0 ? -1.0 : i, day + minute, extreme ? ReadingKind::Maximum : kOrdinary});
  }
  const GraphSeries series(points, true);
  std::vector<GraphPoint> expected;
  for (const GraphPoint& point : points) {
    if (point.levelCm >= 0) expected.push_back(point);
  }
  std::ranges::stable_sort(expected, {}, &GraphPoint::minutes);
  ASSERT_EQ(series.ReadableCount(), static_cast<int>(expected.size()));
  for (int i = 0; i < series.ReadableCount(); ++i) {
    ASSERT_EQ(series.Readable(i).levelCm, expected[static_cast<std::size_t>(i)].levelCm) << i;
  }
}

TEST(GraphSeries, ExtremesAreLeftOutWhereTheyAreNotWanted) {
  const std::vector<GraphPoint> points = {{10, 100, kOrdinary}, {99, 150, ReadingKind::Maximum}};
  const GraphSeries without(points, false);
  EXPECT_EQ(without.OnPage(0, 1000).size(), 1U);
  EXPECT_EQ(GraphSeries(points, true).OnPage(0, 1000).size(), 2U);
}

}  // namespace
}  // namespace vesk
