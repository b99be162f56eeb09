#include "graphs/graph_scales.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <cmath>

#include "datafiles/helpers.h"

namespace vesk {
namespace {

using namespace std::chrono_literals;

const Day kFirst = Day(2010y / 10 / 1);

PageScale YearScale(double width = 1000, double height = 600) {
  return MakePageScale({width, height}, 14.4, 365 * 14.4 + 14.39, 230);
}

TEST(GraphTime, CoordinateCountsDaysHoursAndMinutes) {
  EXPECT_DOUBLE_EQ(TimeCoordinate(kFirst, DateTime(kFirst)), 14.4);
  EXPECT_DOUBLE_EQ(TimeCoordinate(kFirst, DateTime(Day(2010y / 10 / 2)) + 750min), 36.3);
  EXPECT_DOUBLE_EQ(TimeCoordinate(kFirst, DateTime(Day(2010y / 9 / 30)) + 1min), 0.01);
}

TEST(GraphTime, EveryMinuteOfAYearComesBack) {
  const DateTime start(kFirst - std::chrono::days(2));
  for (int minute = 0; minute < 370 * 1440; ++minute) {
    const DateTime time = start + std::chrono::minutes(minute);
    ASSERT_EQ(TimeOfCoordinate(kFirst, TimeCoordinate(kFirst, time)), time)
        << DateTimeText(time).toStdString();
  }
  EXPECT_EQ(TimeOfCoordinate(kFirst, 36.309), DateTime(Day(2010y / 10 / 2)) + 750min)
      << "a minute holds its end";
}

TEST(LevelAxis, StepAndTopFollowTheMaximum) {
  struct Case {
    double maximumCm, stepCm, topCm;
  };
  const std::vector<Case> cases = {
      {96, 10, 100},          {230, 25, 250},    {1480, 100, 1500},       {0, 10, 10},
      {149.9, 10, 150},       {150, 25, 175},    {374, 25, 375},          {375, 50, 400},
      {1499, 100, 1500},      {1500, 250, 1750}, {149999, 10000, 150000}, {150000, 10000, 150000},
      {987654, 10000, 987654}};
  for (const Case& one : cases) {
    EXPECT_EQ(LevelAxisFor(one.maximumCm).stepCm, one.stepCm) << one.maximumCm;
    EXPECT_EQ(LevelAxisFor(one.maximumCm).topCm, one.topCm) << one.maximumCm;
  }
}

TEST(PageScale, EdgesLieAtTheMargins) {
  const PageScale scale = YearScale();
  EXPECT_NEAR(XOfTime(scale, scale.startT), 45, 1e-9);
  EXPECT_NEAR(XOfTime(scale, scale.endT), 980, 1e-9);
  EXPECT_NEAR(YOfLevel(scale, 0), 505, 1e-9);
  EXPECT_NEAR(YOfLevel(scale, 250), 20, 1e-9);
  EXPECT_NEAR(XOfTime(scale, scale.xMin), 0, 1e-9);
  EXPECT_NEAR(YOfLevel(scale, scale.yMax), 0, 1e-9);
}

TEST(PageScale, InversesGiveBackTimeAndLevel) {
  const PageScale scale = YearScale(1437, 811);
  for (double part = 0; part <= 1; part += 0.07) {
    const double t = scale.startT + part * (scale.endT - scale.startT);
    EXPECT_NEAR(TimeOfX(scale, XOfTime(scale, t)), t, 1e-9);
    EXPECT_NEAR(LevelOfY(scale, YOfLevel(scale, part * 250)), part * 250, 1e-9);
  }
}

TEST(PageScale, StaysUsableOnAPictureWithoutRoomAndAPageWithoutLength) {
  const PageScale scale = MakePageScale({10, 10}, 20, 20, 0);
  EXPECT_LT(scale.PlotLeft(), scale.PlotRight());
  EXPECT_LT(scale.PlotTop(), scale.PlotBottom());
  EXPECT_TRUE(std::isfinite(XOfTime(scale, 20)));
  EXPECT_TRUE(std::isfinite(TimeOfX(scale, 5)));
}

TEST(LevelTicks, RunFromBottomToTop) {
  EXPECT_EQ(LevelTicks(YearScale()), (std::vector<double>{0, 25, 50, 75, 100, 125, 150, 175, 200, 225, 250}));
}

QStringList TickTexts(const PageScale& scale, Day first = kFirst) {
  QStringList texts;
  for (const Day day : DayTicks(scale, first)) texts.append(DateText(day).left(5));
  return texts;
}

TEST(DayTicks, IntervalGrowsAsThePageNarrows) {
  struct Case {
    double width;
    int interval, ticks;
  };
  for (const Case& one :
       {Case{6000, 1, 365}, Case{1600, 5, 72}, Case{1000, 10, 36}, Case{520, 15, 24}, Case{300, 30, 12}}) {
    const PageScale scale = YearScale(one.width);
    EXPECT_EQ(DayInterval(scale), one.interval) << one.width;
    EXPECT_EQ(DayTicks(scale, kFirst).size(), static_cast<std::size_t>(one.ticks)) << one.width;
  }
}

TEST(DayTicks, TheLastLabelOfAMonthIsItsLastDay) {
  const QStringList texts = TickTexts(YearScale(1000));
  EXPECT_EQ(texts.first(6),
            (QStringList{QStringLiteral("10/10"), QStringLiteral("20/10"), QStringLiteral("31/10"),
                         QStringLiteral("10/11"), QStringLiteral("20/11"), QStringLiteral("30/11")}));
  EXPECT_TRUE(texts.contains(QStringLiteral("28/02")));
  EXPECT_EQ(texts.back(), QStringLiteral("30/09"));
  EXPECT_EQ(TickTexts(YearScale(300)).first(5),
            (QStringList{QStringLiteral("31/10"), QStringLiteral("30/11"), QStringLiteral("31/12"),
                         QStringLiteral("31/01"), QStringLiteral("28/02")}))
      << "every month has its label, not only the first";
}

TEST(DayTicks, LieWithinThePageAndLeaveOutTheLeapDay) {
  const Day first = Day(2011y / 10 / 1);
  const double start = TimeCoordinate(first, DateTime(Day(2012y / 2 / 26)) + 1min);
  const double end = TimeCoordinate(first, DateTime(Day(2012y / 3 / 2)));
  EXPECT_EQ(TickTexts(MakePageScale({1000, 600}, start, end, 100), first),
            (QStringList{QStringLiteral("27/02"), QStringLiteral("28/02"), QStringLiteral("01/03"),
                         QStringLiteral("02/03")}));
}

TEST(ClockTicks, FillPagesOfHoursOnly) {
  EXPECT_TRUE(ClockTicks(YearScale(), kFirst).empty());
  const double start = TimeCoordinate(kFirst, DateTime(kFirst) + 100min);
  const auto ticks = ClockTicks(MakePageScale({1000, 600}, start, start + 24 * kHourUnits, 100), kFirst);
  ASSERT_EQ(ticks.size(), 47U) << "half hours, without midnight";
  EXPECT_EQ(ticks.front(), DateTime(kFirst) + 120min);
}

}  // namespace
}  // namespace vesk
