#include "graphs/graph_readout.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

constexpr int kPageStart = 1000;
constexpr int kPageEnd = 2000;

// Two stations on a page from minute 1000 to 2000, which cuts between their readings.
class Readout : public testing::Test {
 protected:
  void Add(const std::vector<int>& times, double levelCm) {
    std::vector<SeriesPoint> points;
    for (const int time : times) points.push_back({levelCm, time, ReadingKind::Ordinary});
    sheet_.series.emplace_back(std::move(points), true);
  }
  int TimeOf(std::optional<ReadoutPlace> place) const {
    if (!place) return -1;
    return sheet_.series[static_cast<std::size_t>(place->series)].Readable(place->position).minutes;
  }
  QPointF At(int minutes, double levelCm) const {
    return {XOfTime(scale_, minutes * kMinuteUnits), YOfLevel(scale_, levelCm)};
  }

  GraphSheet sheet_;
  PageScale scale_ = MakePageScale({1200, 700}, kPageStart* kMinuteUnits, kPageEnd* kMinuteUnits, 200);
};

TEST_F(Readout, AReadingJustOutsideDoesNotHideThoseOnThePage) {
  Add({990, 1400, 1600, 2010}, 100);
  struct Case {
    int cursor, reading;
  };
  for (const Case& one : {Case{kPageStart, 1400}, Case{1100, 1400}, Case{1450, 1400}, Case{1550, 1600},
                          Case{1950, 1600}, Case{kPageEnd, 1600}, Case{900, 1400}, Case{2100, 1600}}) {
    EXPECT_EQ(TimeOf(NearestReading(sheet_, scale_, At(one.cursor, 100))), one.reading) << one.cursor;
  }
  EXPECT_EQ(TimeOf(StepReading(sheet_, scale_, {0, 2}, 1)), 1600) << "the arrows stay on the page";
  EXPECT_EQ(TimeOf(StepReading(sheet_, scale_, {0, 1}, -1)), 1400);
}

TEST_F(Readout, TheOtherStationIsReachedThroughItsFirstReadingOnThePage) {
  Add({1010, 1500}, 50);
  Add({999, 999, 1900, 2005}, 150);
  const auto lower = NearestReading(sheet_, scale_, At(1010, 50));
  ASSERT_EQ(TimeOf(lower), 1010);
  const ReadoutPlace upper = StepSeries(sheet_, scale_, *lower, 1);
  EXPECT_EQ(upper.series, 1);
  EXPECT_EQ(TimeOf(upper), 1900);
}

TEST_F(Readout, APageBetweenReadingsHasNone) {
  Add({}, 100);
  Add({10, 999, 2001, 5000}, 100);
  EXPECT_FALSE(NearestReading(sheet_, scale_, At(1500, 100)));
}

}  // namespace
}  // namespace vesk
