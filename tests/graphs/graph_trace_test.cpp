#include "graphs/graph_trace.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vesk {
namespace {

constexpr auto kOrdinary = ReadingKind::Ordinary;
constexpr auto kMaximum = ReadingKind::Maximum;
constexpr int kYearStart = 1440;
constexpr int kYearEnd = 365 * 1440 + 1439;

PageScale YearScale(double width) {
  return MakePageScale({width, 600}, kYearStart * 0.01, kYearEnd * 0.01, 230);
}

TEST(SeriesTrace, GapsAboveSixtyHoursStayOpen) {
  struct Case {
    std::vector<int> hours;
    std::size_t extreme;  // which of them is one; none when there are fewer
    std::size_t lines, dots;
  };
  for (const Case& one : {Case{{0, 59}, 9, 1, 0}, Case{{0, 60}, 9, 1, 0}, Case{{0, 61}, 9, 0, 2},
                          Case{{0, 61, 62}, 1, 0, 2},    // an extreme does not bridge a gap
                          Case{{70, 0, 1}, 9, 1, 1}}) {  // a read-out that starts anew is not joined
    std::vector<GraphPoint> points;
    for (const int hour : one.hours) {
      points.emplace_back(100, 5000 + hour * 60, points.size() == one.extreme ? kMaximum : kOrdinary);
    }
    const SeriesTrace trace = TraceSeries(GraphSeries(points, true), YearScale(200000), 1);
    EXPECT_EQ(trace.lines.size(), one.lines) << one.hours.back();
    EXPECT_EQ(trace.dots.size(), one.dots) << one.hours.back();
  }
}

TEST(SeriesTrace, APeakOfOneReadingStaysAtEveryWidth) {
  std::vector<GraphPoint> points;
  for (int minute = kYearStart; minute <= kYearEnd; minute += 5) points.push_back({50, minute, kOrdinary});
  points[70001].levelCm = 200;
  points[30003].levelCm = 10;
  const GraphSeries series(points, true);
  for (int width = 100; width <= 3000; width += 37) {
    const PageScale scale = YearScale(width);
    const SeriesTrace trace = TraceSeries(series, scale, 1);
    ASSERT_EQ(trace.lines.size(), 1U);
    const auto byY = [](QPointF a, QPointF b) { return a.y() < b.y(); };
    const auto [top, bottom] = std::minmax_element(trace.lines[0].begin(), trace.lines[0].end(), byY);
    ASSERT_NEAR(top->y(), YOfLevel(scale, 200), 1e-6) << width;
    ASSERT_NEAR(bottom->y(), YOfLevel(scale, 10), 1e-6) << width;
    ASSERT_NEAR(top->x(), XOfTime(scale, points[70001].minutes * 0.01), 1e-6) << width;
    ASSERT_LE(trace.lines[0].size(), static_cast<std::size_t>(width) * 4) << "columns are gathered";
  }
}

TEST(SeriesTrace, ALineThatLeavesThePlotGoesToItsEdgeAndComesBackFromThere) {
  const PageScale scale = YearScale(1000);
  const double topCm = scale.topCm;
  const auto at = [](int day) { return kYearStart + day * 1440; };
  const GraphSeries series({{topCm - 10, at(0), kOrdinary},
                            {topCm + 10, at(2), kOrdinary},
                            {topCm + 30, at(4), kOrdinary},
                            {topCm - 30, at(6), kOrdinary}},
                           true);
  const SeriesTrace trace = TraceSeries(series, scale, 1);
  ASSERT_EQ(trace.lines.size(), 2U);
  const QPointF left = trace.lines[0].back(), right = trace.lines[1].front();
  EXPECT_NEAR(left.y(), YOfLevel(scale, topCm), 1e-6);
  EXPECT_NEAR(left.x(), XOfTime(scale, at(1) * 0.01), 1e-6);
  EXPECT_NEAR(right.y(), YOfLevel(scale, topCm), 1e-6);
  EXPECT_NEAR(right.x(), XOfTime(scale, at(5) * 0.01), 1e-6);
}

}  // namespace
}  // namespace vesk
