#include "tables/level_table.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

struct Row {
  const char* date;
  const char* time;
  double levelCm;
  ReadingKind kind = ReadingKind::Ordinary;
};

constexpr auto kMax = ReadingKind::Maximum;
constexpr auto kMin = ReadingKind::Minimum;

ReviewGrid Grid(const std::vector<Row>& rows) {
  ReviewGrid grid;
  for (const Row& row : rows) {
    Reading reading;
    reading.day = *ReadDate(QString::fromLatin1(row.date));
    reading.minuteOfDay = static_cast<std::int16_t>(*ReadClock(QString::fromLatin1(row.time)));
    reading.levelCm = row.levelCm;
    reading.kind = row.kind;
    grid.Append(reading);
  }
  return grid;
}

LevelTable Table(const std::vector<Row>& rows, ExtremeMode mode = ExtremeMode::Recorded) {
  return ComputeLevelTable(Grid(rows), 2011, mode, QStringLiteral("12345 - Ad"));
}

TEST(LevelTable, PlacesOfMonthsAndDays) {
  const struct {
    const char* date;
    int row;
  } rows[] = {
      {"01/10/2010", 5}, {"31/10/2010", 35}, {"01/11/2010", 40}, {"01/01/2011", 110}, {"30/09/2011", 419}};
  for (const auto& row : rows)
    EXPECT_EQ(DailySheetRow(*ReadDate(QString::fromLatin1(row.date))), row.row) << row.date;
  EXPECT_EQ(MinutesOfDay(u"23:59"), 1439);
}

TEST(LevelTable, MeanIsWeightedByTheTimeUpToEachReading) {
  const LevelTable table = Table({{"01/10/2010", "06:00", 100},
                                  {"01/10/2010", "23:59", 200},
                                  {"01/10/2010", "07:00", 300, kMax},
                                  {"01/10/2010", "08:00", 50, kMin},
                                  {"02/10/2010", "12:00", 123.5},
                                  {"02/10/2010", "12:00", 124, kMax},
                                  {"02/10/2010", "12:00", 123, kMin},
                                  {"03/10/2010", "12:00", 123.49},
                                  {"03/10/2010", "12:00", 124, kMax},
                                  {"03/10/2010", "12:00", 123, kMin}});
  ASSERT_EQ(table.days.size(), 3U);
  const DayRecord& first = table.days[0];
  EXPECT_EQ(first.weightedSum, 100 * 360 + 200 * (1439 - 360));
  EXPECT_EQ(first.lastMinute, 1439);
  EXPECT_EQ(first.meanCm, 175.0) << "(36000 + 215800) / 1439 = 174.98";
  EXPECT_EQ(first.readings, 2);
  EXPECT_EQ(table.days[1].meanCm, 124.0) << "a half is rounded up";
  EXPECT_EQ(table.days[1].lastMinute, 720) << "divided by the minutes of the day's last reading";
  EXPECT_EQ(table.days[2].meanCm, 123.0);
}

TEST(LevelTable, ExtremesAsRecordedOrComputed) {
  const std::vector<Row> rows = {{"01/10/2010", "06:00", 150},       {"01/10/2010", "07:00", 90},
                                 {"01/10/2010", "08:00", 150},       {"01/10/2010", "09:00", 90},
                                 {"01/10/2010", "06:10", 155, kMax}, {"01/10/2010", "07:10", 85, kMin}};
  const DayRecord recorded = Table(rows).days.at(0);
  EXPECT_EQ(recorded.maximum->levelCm, 155);
  EXPECT_EQ(recorded.minimum->minuteOfDay, 430);
  const LevelTable table = Table(rows, ExtremeMode::Computed);
  const DayRecord computed = table.days.at(0);
  EXPECT_EQ(computed.maximum->levelCm, 150);
  EXPECT_EQ(computed.maximum->minuteOfDay, 360) << "the earliest of equals";
  EXPECT_EQ(computed.minimum->minuteOfDay, 420);
  ASSERT_EQ(table.records.size(), 2U);
  EXPECT_EQ(table.records[0].value.levelCm, 155) << "the hourly sheet always shows the records themselves";
  EXPECT_EQ(table.records[0].row, 7) << "beside the second-to-last reading";
  EXPECT_EQ(table.records[1].row, 8);
  EXPECT_EQ(ExtremeModeOf(QStringLiteral("FT")), ExtremeMode::Computed);
  EXPECT_EQ(ExtremeModeOf(QString()), ExtremeMode::Recorded);
}

TEST(LevelTable, ADayWithoutExtremesGetsANoteAndLeaksNothing) {
  const LevelTable table = Table({{"30/10/2010", "12:00", 100},
                                  {"31/10/2010", "06:00", 100},
                                  {"31/10/2010", "12:00", 100},
                                  {"01/11/2010", "12:00", 200},  // across the month's end
                                  {"01/11/2010", "12:00", 200, kMax},
                                  {"01/11/2010", "12:00", 200, kMin},
                                  {"02/11/2010", "12:00", 200}});
  EXPECT_EQ(table.missingExtremesRows, (std::vector{5, 7}))
      << "none before the first day, none at the open end";
  ASSERT_EQ(table.days.size(), 4U);
  EXPECT_FALSE(table.days[0].meanCm);
  EXPECT_FALSE(table.days[1].meanCm);
  EXPECT_EQ(table.days[1].readings, 2);
  EXPECT_EQ(table.days[2].meanCm, 200.0);
  EXPECT_EQ(table.days[2].weightedSum, 200 * 720);
  EXPECT_FALSE(table.days[3].meanCm);
}

TEST(LevelTable, OneRecordMissing) {
  const LevelTable table = Table({{"01/10/2010", "12:00", 100},
                                  {"01/10/2010", "12:00", 101, kMax},
                                  {"02/10/2010", "12:00", 200},
                                  {"02/10/2010", "12:00", 199, kMin}});
  EXPECT_TRUE(table.days[0].maximum && !table.days[0].minimum && !table.days[0].meanCm);
  EXPECT_TRUE(!table.days[1].maximum && table.days[1].minimum && table.days[1].meanCm);
  EXPECT_EQ(table.missingExtremesRows, std::vector{5});
}

TEST(LevelTable, RepeatedReadingsAddNothingAndARepeatedDayIsWrittenOver) {
  const LevelTable table = Table({{"01/10/2010", "12:00", 100},
                                  {"01/10/2010", "12:00", 100},
                                  {"01/10/2010", "12:00", 101, kMax},
                                  {"01/10/2010", "12:00", 99, kMin},
                                  {"02/10/2010", "12:00", 7},
                                  {"02/10/2010", "12:00", 7, kMax},
                                  {"02/10/2010", "12:00", 7, kMin},
                                  {"01/10/2010", "12:00", 300},
                                  {"01/10/2010", "12:00", 301, kMax},
                                  {"01/10/2010", "12:00", 299, kMin}});
  ASSERT_EQ(table.days.size(), 2U);
  EXPECT_EQ(table.days[0].meanCm, 300.0);
  EXPECT_EQ(table.days[0].maximum->levelCm, 301);
  EXPECT_EQ(table.hourly.size(), 4U);
}

TEST(LevelTable, ReadingsOfAnotherYearAreNoneOfThisTable) {
  const LevelTable table =
      Table({{"30/09/2010", "12:00", 1}, {"01/10/2010", "12:00", 2}, {"01/10/2011", "12:00", 3}});
  ASSERT_EQ(table.hourly.size(), 1U);
  EXPECT_EQ(table.hourly[0].value.levelCm, 2);
}

}  // namespace
}  // namespace vesk
