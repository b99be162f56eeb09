#include "graphs/graph_points.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

using namespace std::chrono_literals;

const Day kFirst = Day(2008y / 10 / 1);

Reading At(Day day, int minute, double levelCm, ReadingKind kind = ReadingKind::Ordinary) {
  Reading reading;
  reading.day = day;
  reading.minuteOfDay = static_cast<std::int16_t>(minute);
  reading.levelCm = levelCm;
  reading.kind = kind;
  return reading;
}

TEST(GridPoint, CarriesDayClockKindAndCoordinate) {
  ReviewGrid grid;
  grid.Append(At(kFirst, 0, 100));
  grid.Append(At(kFirst, 750, 101.5, ReadingKind::Maximum));
  grid.Append(At(Day(2009y / 9 / 30), 1439, 99, ReadingKind::Minimum));
  const auto first = LoadGridPoint(grid, 1, kFirst);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->dayNumber, 1);
  EXPECT_DOUBLE_EQ(first->X(), 14.4);
  const auto second = LoadGridPoint(grid, 2, kFirst);
  EXPECT_DOUBLE_EQ(second->X(), 21.9);
  EXPECT_EQ(second->Minutes(), 2190);
  EXPECT_EQ(second->kind, ReadingKind::Maximum);
  EXPECT_DOUBLE_EQ(second->levelCm, 101.5);
  const auto last = LoadGridPoint(grid, 3, kFirst);
  EXPECT_EQ(last->dayNumber, 365);
  EXPECT_EQ(last->hour, 23);
  EXPECT_EQ(last->minute, 59);
}

TEST(GridPoint, EndsAtTheSpareRow) {
  ReviewGrid grid;
  grid.Append(At(kFirst, 0, 100));
  EXPECT_FALSE(LoadGridPoint(grid, 0, kFirst));
  EXPECT_FALSE(LoadGridPoint(grid, 2, kFirst));
  EXPECT_FALSE(LoadGridPoint(grid, 3, kFirst));
}

const QByteArray kTwoRecords = "01/10/2008,12:30,  12.5,01-ort\r\n02/10/2008,00:00,    -5,03-Max\r\n";

TEST(FilePoint, RecordsAreReadByNumber) {
  const FilePoint one = LoadFilePoint(kTwoRecords, 1, kFirst, ReadingKind::Minimum);
  ASSERT_EQ(one.state, FilePointState::Point);
  EXPECT_DOUBLE_EQ(one.point.X(), 21.9);
  EXPECT_DOUBLE_EQ(one.point.levelCm, 12.5);
  EXPECT_EQ(one.point.kind, ReadingKind::Ordinary);
  const FilePoint two = LoadFilePoint(kTwoRecords, 2, kFirst, ReadingKind::Ordinary);
  EXPECT_EQ(two.point.dayNumber, 2);
  EXPECT_DOUBLE_EQ(two.point.levelCm, -5);
  EXPECT_EQ(two.point.kind, ReadingKind::Maximum);
  EXPECT_EQ(LoadFilePoint(kTwoRecords, 0, kFirst, {}).state, FilePointState::None);
  EXPECT_EQ(LoadFilePoint(kTwoRecords, 3, kFirst, {}).state, FilePointState::End);
  EXPECT_EQ(LoadFilePoint("", 1, kFirst, {}).state, FilePointState::End);
}

TEST(FilePoint, KindComesFromTheLabel) {
  const auto kindOf = [](const char* label, ReadingKind before) {
    return LoadFilePoint(QByteArray("01/10/2008,12:30,   100,") + label + "\r\n", 1, kFirst, before)
        .point.kind;
  };
  EXPECT_EQ(kindOf("03-Max", ReadingKind::Ordinary), ReadingKind::Maximum);
  EXPECT_EQ(kindOf("01-ort", ReadingKind::Maximum), ReadingKind::Ordinary);
  EXPECT_EQ(kindOf("11-Min", ReadingKind::Maximum), ReadingKind::Minimum);
  EXPECT_EQ(kindOf("01-Ort", ReadingKind::Maximum), ReadingKind::Maximum)
      << "no kind named: the one before stays";
}

TEST(FilePoint, UnreadablePartsCountAsZeroButADateMustBeOne) {
  const FilePoint clock = LoadFilePoint("01/10/2008,xx:yy,   abc,01-ort\r\n", 1, kFirst, {});
  ASSERT_EQ(clock.state, FilePointState::Point);
  EXPECT_DOUBLE_EQ(clock.point.X(), 14.4);
  EXPECT_DOUBLE_EQ(clock.point.levelCm, 0);
  EXPECT_EQ(LoadFilePoint("31/02/2009,12:30,   100,01-ort\r\n", 1, kFirst, {}).state,
            FilePointState::Unreadable);
  EXPECT_EQ(LoadFilePoint("01/10/", 1, kFirst, {}).state, FilePointState::Unreadable);
}

TEST(FilePoint, TheFallbackCalendarCountsOneDayLessThanTheGrid) {
  const Day first = Day(1387y / 10 / 1);
  ReviewGrid grid;
  grid.Append(At(Day(1387y / 10 / 4), 0, 100));
  const FilePoint file = LoadFilePoint("04/10/1387,00:00,   100,01-ort\r\n", 1, first, {});
  EXPECT_EQ(LoadGridPoint(grid, 1, first)->dayNumber, 4);
  EXPECT_EQ(file.point.dayNumber, 3);
}

}  // namespace
}  // namespace vesk
