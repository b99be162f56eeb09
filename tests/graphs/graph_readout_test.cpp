#include "graphs/graph_readout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vesk {
namespace {

GraphSeries Station(double levelCm, const std::vector<int>& times) {
  std::vector<GraphPoint> points;
  for (const int time : times) points.push_back({levelCm, time, ReadingKind::Ordinary});
  return {std::move(points), true};
}

int TimeOf(const GraphSheet& sheet, ReadoutPlace place) {
  return sheet.series[static_cast<std::size_t>(place.series)].Readable(place.position).minutes;
}

// What a look at every reading would find, drawn ones only.
std::optional<double> LeastDistance(const GraphSheet& sheet, const PageScale& page, QPointF cursor) {
  std::optional<double> least;
  for (const GraphSeries& series : sheet.series) {
    for (const GraphPoint& point : series.OnPage(1000, 2000)) {
      if (point.minutes < 1000 || point.levelCm > page.topCm) continue;
      const QPointF at(XOfTime(page, point.minutes * 0.01), YOfLevel(page, point.levelCm));
      const double away = std::hypot(at.x() - cursor.x(), at.y() - cursor.y());
      if (away <= kReadoutReach && away < least.value_or(1e9)) least = away;
    }
  }
  return least;
}

TEST(Readout, TakesTheNearestDrawnReadingOnThePictureOrNone) {
  GraphSheet sheet;
  sheet.series = {Station(100, {1600, 2010, 990, 1400}), Station(150, {999, 1900, 2005})};
  std::vector<GraphPoint> restless;  // with a spike, levels above the page and a negative end
  for (int minute = 1000; minute < 1900; minute += 7) {
    const double level = minute % 11 == 0 ? 230 : 40.0 + minute % 50;
    restless.push_back({minute < 1750 ? level : -1, minute, ReadingKind::Ordinary});
    if (minute >= 1750) restless.back().levelCm = minute < 1757 ? -1 : 60;
  }
  sheet.series.emplace_back(restless, true);
  const PageScale page = MakePageScale({1200, 700}, 10, 20, 200);
  int found = 0;
  for (double x = 30; x < 1200; x += 7) {
    for (double y = 5; y < 700; y += 9) {
      const auto place = NearestReading(sheet, page, {x, y});
      const auto least = LeastDistance(sheet, page, {x, y});
      ASSERT_EQ(place.has_value(), least.has_value()) << x << ',' << y;
      if (!place) continue;
      const QPointF at = PointOfReading(sheet, page, *place);
      ASSERT_NEAR(std::hypot(at.x() - x, at.y() - y), *least, 1e-9) << x << ',' << y;
      ++found;
    }
  }
  EXPECT_GT(found, 500);
}

// Read-outs in any order, and a page that cuts between readings: one just outside must not hide those on it.
TEST(Readout, KeysWalkTheReadingsThatThePageDraws) {
  GraphSheet sheet;
  sheet.series = {Station(100, {1400, 1600, 2010}), Station(150, {999, 999, 1900, 2005}),
                  Station(50, {10, 999, 2001})};
  std::vector<GraphPoint> ended = {{80, 1450, ReadingKind::Ordinary},
                                   {-1, 1500, ReadingKind::Ordinary},
                                   {80, 1550, ReadingKind::Ordinary}};
  sheet.series.emplace_back(ended, true);
  const PageScale page = MakePageScale({1200, 700}, 10, 20, 200);
  EXPECT_EQ(TimeOf(sheet, EdgeReading(sheet, page, false).value()), 1400);
  EXPECT_EQ(TimeOf(sheet, EdgeReading(sheet, page, true).value()), 1900);
  EXPECT_EQ(TimeOf(sheet, StepReading(sheet, page, {0, 0}, 1)), 1600);
  EXPECT_EQ(TimeOf(sheet, StepReading(sheet, page, {0, 1}, 1)), 1600) << "the arrows stay on the page";
  EXPECT_EQ(TimeOf(sheet, StepReading(sheet, page, {3, 0}, 1)), 1450) << "nothing behind a negative level";
  EXPECT_EQ(TimeOf(sheet, StepSeries(sheet, page, {0, 0}, 1)), 1900);
  EXPECT_EQ(TimeOf(sheet, StepSeries(sheet, page, {1, 2}, 1)), 1450) << "a station without one is passed";
  const GraphSheet empty;
  EXPECT_FALSE(EdgeReading(empty, page, true));
}

}  // namespace
}  // namespace vesk
