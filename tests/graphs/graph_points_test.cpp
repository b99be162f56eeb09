#include "graphs/graph_points.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vesk {
namespace {

using namespace std::chrono_literals;

constexpr auto kOrdinary = ReadingKind::Ordinary;
constexpr auto kMaximum = ReadingKind::Maximum;
constexpr auto kMinimum = ReadingKind::Minimum;
const Day kFirst = Day(2008y / 10 / 1);

TEST(GridPoint, CarriesRowTimeAndKindUpToTheSpareRow) {
  const StationSeries grid({{.levelCm = 100, .day = kFirst},
                            {.levelCm = 101.5, .day = kFirst, .minuteOfDay = 750, .kind = kMaximum}});
  ASSERT_TRUE(LoadGridPoint(grid, 1, kFirst));
  EXPECT_EQ(LoadGridPoint(grid, 1, kFirst)->minutes, 1440);
  const auto second = LoadGridPoint(grid, 2, kFirst);
  ASSERT_TRUE(second);
  EXPECT_EQ(second->minutes, 2190);
  EXPECT_EQ(second->Row(), 2);
  EXPECT_EQ(second->Kind(), kMaximum);
  EXPECT_DOUBLE_EQ(second->levelCm, 101.5);
  for (const int row : {0, 3, 4}) EXPECT_FALSE(LoadGridPoint(grid, row, kFirst)) << row;
}

TEST(FilePoint, ARecordIsAPointOrNamedAsDamaged) {
  constexpr auto kPoint = FilePointState::Point;
  constexpr auto kUnreadable = FilePointState::Unreadable;
  struct Case {
    const char* record;
    FilePointState state;
    double x, levelCm;
    ReadingKind kind;
  };
  for (const Case& one : {
           Case{"01/10/2008,12:30,  12.5,01-ort\r\n", kPoint, 21.9, 12.5, kOrdinary},
           Case{"02/10/2008,00:00,    -5,03-Max\r\n", kPoint, 28.8, -5, kMaximum},
           Case{"30/09/2009,23:59,   100,11-Min\r\n", kPoint, 365 * 14.4 + 14.39, 100, kMinimum},
           Case{"01/10/2008,12:30,   100,01-Ort\r\n", kPoint, 21.9, 100, kMinimum},  // the kind before stays
           Case{"01/10/2008,xx:yy,   abc,01-ort\r\n", kPoint, 14.4, 0, kOrdinary},
           Case{"01/10/2008,00:00,   inf,01-ort\r\n", kPoint, 14.4, 0, kOrdinary},
           Case{"31/02/2009,12:30,   100,01-ort\r\n", kUnreadable, 0, 0, kOrdinary},
           Case{"01/10/2008,12:30,  12", kUnreadable, 0, 0, kOrdinary},  // 12 of 12.5 is no level
           Case{"01/10/", kUnreadable, 0, 0, kOrdinary},
           Case{"01/10", FilePointState::End, 0, 0, kOrdinary},
       }) {
    const FilePoint read = LoadFilePoint(one.record, 1, kFirst, kMinimum);
    EXPECT_EQ(read.state, one.state) << one.record;
    if (read.state != kPoint) continue;
    EXPECT_EQ(read.point.minutes, std::lround(one.x * 100)) << one.record;
    EXPECT_EQ(read.point.levelCm, one.levelCm) << one.record;
    EXPECT_EQ(read.point.Kind(), one.kind) << one.record;
  }
  EXPECT_EQ(LoadFilePoint("30/09/2009,23:59,   100,11-Min\r\n", 1, kFirst, kOrdinary).point.Kind(), kMinimum);
}

TEST(FilePoint, RecordsAreReadByNumberAndCountOneDayLessThanTheGridInTheFallbackCalendar) {
  const Day first = Day(1387y / 10 / 1);
  const StationSeries grid({{.levelCm = 100, .day = first + std::chrono::days(3)}});
  EXPECT_EQ(LoadGridPoint(grid, 1, first)->minutes, 4 * 1440);
  const QByteArray content = "02/10/1387,12:30,  12.5,01-ort\r\n04/10/1387,00:00,   100,01-ort\r\n";
  EXPECT_EQ(LoadFilePoint(content, 2, first, {}).point.minutes, 3 * 1440);
  EXPECT_EQ(LoadFilePoint(content, 2, first, {}).point.Row(), 2);
  EXPECT_EQ(LoadFilePoint(content, 0, first, {}).state, FilePointState::None);
  EXPECT_EQ(LoadFilePoint(content, 3, first, {}).state, FilePointState::End);
}

}  // namespace
}  // namespace vesk
