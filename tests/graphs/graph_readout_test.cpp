#include "graphs/graph_readout.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

GraphSeries Station(double levelCm, const std::vector<int>& times) {
  std::vector<SeriesPoint> points;
  for (const int time : times) points.push_back({levelCm, time, ReadingKind::Ordinary});
  return {std::move(points), true};
}

// Read-outs in any order, and a page that cuts between readings: one just outside, nearer than any on the
// page, must not hide those.
TEST(Readout, FindsAndWalksTheReadingsOfThePage) {
  GraphSheet sheet;
  sheet.series = {Station(100, {1600, 2010, 990, 1400}), Station(150, {999, 999, 1900, 2005}),
                  Station(50, {10, 999, 2001})};
  const PageScale page = MakePageScale({1200, 700}, 10, 20, 200);
  const auto timeOf = [&sheet](ReadoutPlace place) {
    return sheet.series[static_cast<std::size_t>(place.series)].Readable(place.position).minutes;
  };
  struct Case {
    int cursor;
    double levelCm;
    int reading;
  };
  for (const Case& one :
       {Case{1000, 90, 1400}, Case{1450, 90, 1400}, Case{1550, 90, 1600}, Case{2000, 90, 1600},
        Case{900, 90, 1400}, Case{2100, 90, 1600}, Case{1100, 160, 1900}, Case{1500, 0, 1400}}) {
    const auto place =
        NearestReading(sheet, page, {XOfTime(page, one.cursor * 0.01), YOfLevel(page, one.levelCm)});
    ASSERT_TRUE(place) << one.cursor;
    EXPECT_EQ(timeOf(*place), one.reading) << one.cursor;
  }
  EXPECT_EQ(timeOf(StepReading(sheet, page, {0, 2}, 1)), 1600) << "the arrows stay on the page";
  EXPECT_EQ(timeOf(StepReading(sheet, page, {0, 1}, 1)), 1600);
  EXPECT_EQ(timeOf(StepSeries(sheet, page, {0, 1}, 1)), 1900);
  EXPECT_EQ(timeOf(StepSeries(sheet, page, {0, 1}, -1)), 1900) << "a station without a reading is passed";
}

}  // namespace
}  // namespace vesk
