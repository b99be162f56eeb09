#include "graphs/graph_trace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vesk {
namespace {

constexpr auto kOrdinary = ReadingKind::Ordinary;
constexpr int kYearStart = 1440;
constexpr int kYearEnd = 365 * 1440 + 1439;

PageScale YearScale(double width, double maximumCm = 230) {
  return MakePageScale({width, 600}, kYearStart * 0.01, kYearEnd * 0.01, maximumCm);
}

std::size_t PointCount(const SeriesTrace& trace) {
  std::size_t count = 0;
  for (const auto& line : trace.lines) count += line.size();
  return count;
}

TEST(SeriesTrace, GapsAboveSixtyHoursStayOpen) {
  struct Case {
    int hours;
    std::size_t lines, dots;
  };
  for (const Case& one : {Case{59, 1, 0}, Case{60, 1, 0}, Case{61, 0, 2}}) {
    const GraphSeries series({{100, 5000, kOrdinary}, {110, 5000 + one.hours * 60, kOrdinary}}, true);
    const SeriesTrace trace = TraceSeries(series, YearScale(1000), 1);
    EXPECT_EQ(trace.lines.size(), one.lines) << one.hours;
    EXPECT_EQ(trace.dots.size(), one.dots) << one.hours;
  }
}

TEST(SeriesTrace, AnExtremeInsideAGapDoesNotBridgeIt) {
  const GraphSeries series({{100, 5000, kOrdinary},
                            {100, 5060, kOrdinary},
                            {150, 5060 + 61 * 60, ReadingKind::Maximum},
                            {100, 5120 + 61 * 60, kOrdinary},
                            {100, 5180 + 61 * 60, kOrdinary}},
                           true);
  const SeriesTrace trace = TraceSeries(series, YearScale(200000), 1);
  EXPECT_EQ(trace.lines.size(), 2U);
  EXPECT_EQ(trace.maxima.size(), 1U);
}

TEST(SeriesTrace, StepsBackBetweenReadOutsAreNotJoined) {
  std::vector<SeriesPoint> points;
  for (int i = 0; i < 100; ++i) points.push_back({100, 20000 + i * 60, kOrdinary});
  for (int i = 0; i < 100; ++i) points.push_back({120, 20000 + i * 60, kOrdinary});
  EXPECT_EQ(TraceSeries(GraphSeries(points, true), YearScale(1000), 1).lines.size(), 2U);
}

TEST(SeriesTrace, APeakOfOneReadingStaysAtEveryWidth) {
  std::vector<SeriesPoint> points;
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
    ASSERT_LE(PointCount(trace), static_cast<std::size_t>(width) * 4) << "columns are gathered";
  }
}

TEST(SeriesTrace, FewReadingsAreAllKept) {
  std::vector<SeriesPoint> points;
  for (int i = 0; i < 50; ++i) points.push_back({100.0 + i % 7, kYearStart + i * 3000, kOrdinary});
  const PageScale scale = YearScale(4000);
  const SeriesTrace trace = TraceSeries(GraphSeries(points, true), scale, 1);
  ASSERT_EQ(PointCount(trace), points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    EXPECT_NEAR(trace.lines[0][i].x(), XOfTime(scale, points[i].minutes * 0.01), 1e-6);
    EXPECT_NEAR(trace.lines[0][i].y(), YOfLevel(scale, points[i].levelCm), 1e-6);
  }
}

TEST(SeriesTrace, NothingRisesAboveThePlot) {
  const GraphSeries series({{50, 5000, kOrdinary},
                            {200, 6000, kOrdinary},
                            {200, 7000, kOrdinary},
                            {50, 8000, kOrdinary},
                            {200, 8500, ReadingKind::Maximum}},
                           true);
  const PageScale scale = YearScale(100000, 95);  // top 100
  const SeriesTrace trace = TraceSeries(series, scale, 1);
  ASSERT_EQ(trace.lines.size(), 2U);
  EXPECT_NEAR(trace.lines[0].back().y(), scale.PlotTop(), 1e-9);
  EXPECT_NEAR(trace.lines[0].back().x(), XOfTime(scale, 50 + 10.0 / 3), 1e-6)
      << "cut where the line crosses 100 cm";
  EXPECT_NEAR(trace.lines[1].front().y(), scale.PlotTop(), 1e-9);
  EXPECT_TRUE(trace.maxima.empty());
}

}  // namespace
}  // namespace vesk
