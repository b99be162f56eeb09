#include "graphs/graph_scales.h"
#include "datafiles/dates.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>

namespace vesk {
namespace {

using namespace std::chrono_literals;

const Day kFirst = Day(2011y / 10 / 1);  // of a leap year

PageScale YearScale(double width, double maximumCm = 230) {
  return MakePageScale({width, 600}, 14.4, 366 * 14.4 + 14.39, maximumCm);
}

TEST(GraphTime, EveryMinuteOfAYearHasItsCoordinateAndComesBack) {
  EXPECT_DOUBLE_EQ(TimeCoordinate(kFirst, DateTime(kFirst)), 14.4);
  EXPECT_DOUBLE_EQ(TimeCoordinate(kFirst, DateTime(Day(2011y / 10 / 2)) + 750min), 36.3);
  const DateTime start(kFirst - std::chrono::days(2));
  for (int minute = 0; minute < 370 * 1440; ++minute) {
    const DateTime time = start + std::chrono::minutes(minute);
    ASSERT_EQ(TimeOfCoordinate(kFirst, TimeCoordinate(kFirst, time)), time)
        << DateTimeText(time).toStdString();
  }
  EXPECT_EQ(TimeOfCoordinate(kFirst, 36.309), DateTime(Day(2011y / 10 / 2)) + 750min)
      << "a minute holds its end";
}

TEST(LevelAxis, StepAndTopFollowTheMaximum) {
  struct Case {
    double maximumCm, stepCm, topCm;
  };
  for (const Case& one :
       {Case{96, 10, 100}, Case{230, 25, 250}, Case{1480, 100, 1500}, Case{0, 10, 10}, Case{149.9, 10, 150},
        Case{150, 25, 175}, Case{374, 25, 375}, Case{375, 50, 400}, Case{1500, 250, 1750},
        Case{149999, 10000, 150000}, Case{150000, 10000, 150000}, Case{987654, 10000, 987654}}) {
    EXPECT_EQ(LevelAxisFor(one.maximumCm).stepCm, one.stepCm) << one.maximumCm;
    EXPECT_EQ(LevelAxisFor(one.maximumCm).topCm, one.topCm) << one.maximumCm;
  }
}

TEST(PageScale, EdgesLieAtTheMarginsAndInversesGiveBackTimeAndLevel) {
  const PageScale scale = YearScale(1000);
  EXPECT_NEAR(XOfTime(scale, scale.startT), 45, 1e-9);
  EXPECT_NEAR(XOfTime(scale, scale.endT), 980, 1e-9);
  EXPECT_NEAR(YOfLevel(scale, 0), 505, 1e-9);
  EXPECT_NEAR(YOfLevel(scale, 250), 20, 1e-9);
  for (double part = 0; part <= 1; part += 0.07) {
    EXPECT_NEAR(TimeOfX(scale, XOfTime(scale, part * 5000)), part * 5000, 1e-9);
    EXPECT_NEAR(LevelOfY(scale, YOfLevel(scale, part * 250)), part * 250, 1e-9);
  }
  EXPECT_EQ(LevelTicks(scale), (std::vector<double>{0, 25, 50, 75, 100, 125, 150, 175, 200, 225, 250}));
}

TEST(PageScale, StaysUsableOnAPictureWithoutRoomAndWithLevelsOutOfThisWorld) {
  const PageScale tiny = MakePageScale({10, 10}, 20, 20, 0);
  EXPECT_LT(tiny.PlotLeft(), tiny.PlotRight());
  EXPECT_NEAR(TimeOfX(tiny, XOfTime(tiny, 20)), 20, 1e-9);
  EXPECT_EQ(LevelTicks(YearScale(1000, 1e300)).size(), 61U);
}

QStringList TickTexts(const PageScale& scale) {
  QStringList texts;
  for (const Day day : DayTicks(scale, kFirst)) texts.append(DateText(day).left(5));
  return texts;
}

TEST(DayTicks, GrowApartAsThePageNarrowsAndEndEveryMonthOnItsLastDayWithoutTheLeapDay) {
  struct Case {
    double width;
    int ticks;
    QString first;
  };
  for (const Case& one : {
           Case{6000, 365, QStringLiteral("01/10 02/10 03/10")},
           Case{1600, 72, QStringLiteral("05/10 10/10 15/10 20/10 25/10 31/10 05/11")},
           Case{1000, 36, QStringLiteral("10/10 20/10 31/10 10/11 20/11 30/11")},
           Case{520, 24, QStringLiteral("15/10 31/10 15/11 30/11")},
           Case{300, 12, QStringLiteral("31/10 30/11 31/12 31/01 28/02")},
       }) {
    const QStringList texts = TickTexts(YearScale(one.width));
    EXPECT_EQ(texts.size(), one.ticks) << one.width;
    EXPECT_EQ(texts.first(one.first.count(QLatin1Char(' ')) + 1).join(QLatin1Char(' ')), one.first);
    EXPECT_EQ(texts.back(), QStringLiteral("30/09"));
  }
}

TEST(ClockTicks, FillPagesOfHoursOnly) {
  EXPECT_TRUE(ClockTicks(YearScale(1000), kFirst).empty());
  const double start = TimeCoordinate(kFirst, DateTime(kFirst) + 100min);
  const PageScale page = MakePageScale({1000, 600}, start, start + 24 * kHourUnits, 100);
  EXPECT_EQ(TickTexts(page), QStringList{QStringLiteral("02/10")})
      << "the day before begins ahead of the page";
  const auto ticks = ClockTicks(page, kFirst);
  ASSERT_EQ(ticks.size(), 47U) << "half hours, without midnight";
  EXPECT_EQ(ticks.front(), DateTime(kFirst) + 120min);
}

TEST(ClockTicks, TheLeapDayHasADateOfItsOwnAmongItsHours) {
  const DateTime leap{Day(2012y / 2 / 29)};
  for (const int days : {1, 3, 40}) {
    const double start = TimeCoordinate(kFirst, leap - std::chrono::days(days / 2));
    const PageScale page = MakePageScale({1600, 600}, start, start + days * kDayUnits, 100);
    const auto ticks = ClockTicks(page, kFirst);
    EXPECT_EQ(std::ranges::count(ticks, leap), 1) << days;
    const auto midnights = std::ranges::count_if(
        ticks, [](DateTime time) { return time == DateTime(std::chrono::floor<std::chrono::days>(time)); });
    EXPECT_EQ(midnights, 1) << "every other day has its tick already";
  }
}

}  // namespace
}  // namespace vesk
