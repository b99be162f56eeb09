#include "tables/level_table.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

struct Row {
  const char* time;
  double levelCm;
  ReadingKind kind = ReadingKind::Ordinary;
};

constexpr auto kMax = ReadingKind::Maximum;
constexpr auto kMin = ReadingKind::Minimum;

LevelTable Table(const std::vector<Row>& rows, ExtremeMode mode = ExtremeMode::Recorded) {
  std::vector<Reading> readings;
  for (const Row& row : rows) {
    const DateTime at = *ReadDateTime(QString::fromLatin1(row.time));
    Reading reading;
    reading.day = std::chrono::floor<std::chrono::days>(at);
    reading.minuteOfDay = static_cast<std::int16_t>((at - reading.day).count());
    reading.levelCm = row.levelCm;
    reading.kind = row.kind;
    readings.push_back(reading);
  }
  return ComputeLevelTable(StationSeries(readings), 2011, mode, QStringLiteral("12345 - Ad"));
}

TEST(LevelTable, MeanIsWeightedByTheTimeUpToEachReading) {
  const LevelTable table = Table({{"01/10/2010 06:00", 100},
                                  {"01/10/2010 23:59", 200},
                                  {"01/10/2010 07:00", 300, kMax},
                                  {"01/10/2010 08:00", 50, kMin},
                                  {"02/10/2010 12:00", 123.5},
                                  {"02/10/2010 12:00", 123, kMin},
                                  {"30/09/2011 12:00", 123.49},
                                  {"30/09/2011 12:00", 123, kMin}});
  ASSERT_EQ(table.days.size(), 3U);
  const DayRecord& first = table.days[0];
  EXPECT_EQ(first.sheetRow, 5);
  EXPECT_EQ(first.weightedSum, 100 * 360 + 200 * (1439 - 360));
  EXPECT_EQ(first.lastMinute, 1439);
  EXPECT_EQ(first.meanCm, 175.0) << "(36000 + 215800) / 1439 = 174.98";
  EXPECT_EQ(first.readings, 2);
  EXPECT_FALSE(table.days[1].maximum) << "none was recorded";
  EXPECT_EQ(table.days[1].meanCm, 124.0) << "a half is rounded up";
  EXPECT_EQ(table.days[1].lastMinute, 720) << "divided by the minutes of the day's last reading";
  EXPECT_EQ(table.days[2].meanCm, 123.0);
  EXPECT_EQ(table.days[2].sheetRow, 419);
}

TEST(LevelTable, ExtremesAsRecordedOrComputed) {
  const std::vector<Row> rows = {{"01/10/2010 06:00", 150},       {"01/10/2010 07:00", 90},
                                 {"01/10/2010 08:00", 150},       {"01/10/2010 09:00", 90},
                                 {"01/10/2010 06:10", 155, kMax}, {"01/10/2010 07:10", 85, kMin}};
  const DayRecord recorded = Table(rows).days.at(0);
  EXPECT_EQ(recorded.maximum->levelCm, 155);
  EXPECT_EQ(recorded.minimum->minuteOfDay, 430);
  const LevelTable table = Table(rows, ExtremeModeOf(QStringLiteral("FT")));
  const DayRecord computed = table.days.at(0);
  EXPECT_EQ(computed.maximum->levelCm, 150);
  EXPECT_EQ(computed.maximum->minuteOfDay, 360) << "the earliest of equals";
  EXPECT_EQ(computed.minimum->minuteOfDay, 420);
  ASSERT_EQ(table.records.size(), 2U);
  EXPECT_EQ(table.records[0].value.levelCm, 155) << "the hourly sheet always shows the records themselves";
  EXPECT_EQ(table.records[0].row, 7) << "beside the second-to-last reading";
  EXPECT_EQ(table.records[1].row, 8);
}

TEST(LevelTable, ADayWithoutExtremesGetsANoteAndLeaksNothing) {
  const LevelTable table = Table({{"30/10/2010 12:00", 100},
                                  {"31/10/2010 06:00", 100},
                                  {"31/10/2010 12:00", 100},
                                  {"31/10/2010 12:00", 101, kMax},
                                  {"01/11/2010 12:00", 200},  // across the month's end
                                  {"01/11/2010 12:00", 200, kMin},
                                  {"02/11/2010 12:00", 200},
                                  {"03/11/2010 12:00", 250, kMin},  // of a day without readings
                                  {"04/11/2010 12:00", 200}});
  EXPECT_EQ(table.missingExtremesRows, (std::vector{5, 7, 9}))
      << "none before the first day, none at the open end";
  const struct {
    int sheetRow, readings;
    std::optional<double> meanCm;
  } kDays[] = {{34, 1, {}}, {35, 2, {}}, {40, 1, 200.0}, {41, 1, {}}, {42, 0, {}}, {43, 1, {}}};
  ASSERT_EQ(table.days.size(), std::size(kDays));
  for (std::size_t i = 0; i < std::size(kDays); ++i) {
    EXPECT_EQ(table.days[i].sheetRow, kDays[i].sheetRow);
    EXPECT_EQ(table.days[i].readings, kDays[i].readings) << i;
    EXPECT_EQ(table.days[i].meanCm, kDays[i].meanCm) << i;
  }
  EXPECT_EQ(table.days[1].maximum->levelCm, 101);
}

TEST(LevelTable, ComputedExtremesAreOfTheirOwnDay) {
  const LevelTable table = Table({{"01/10/2010 12:00", 500},
                                  {"02/10/2010 12:00", 501, kMax},  // of a day without readings
                                  {"02/10/2010 12:00", 50, kMin},
                                  {"03/10/2010 12:00", 200},
                                  {"03/10/2010 12:00", 201, kMax},
                                  {"03/10/2010 12:00", 199, kMin}},
                                 ExtremeMode::Computed);
  ASSERT_EQ(table.days.size(), 3U);
  EXPECT_FALSE(table.days[1].maximum || table.days[1].minimum || table.days[1].meanCm);
  EXPECT_EQ(table.days[2].maximum->levelCm, 200);
  EXPECT_EQ(table.days[2].minimum->levelCm, 200);
}

TEST(LevelTable, RepeatedReadingsAddNothingAndARepeatedDayIsWrittenOver) {
  const LevelTable table = Table({{"30/09/2010 12:00", 1},  // of the years around
                                  {"01/10/2010 12:00", 100},
                                  {"01/10/2010 12:00", 100},
                                  {"01/10/2010 12:00", 99, kMin},
                                  {"02/10/2010 12:00", 7},
                                  {"02/10/2010 12:00", 7, kMin},
                                  {"01/10/2010 12:00", 300},
                                  {"01/10/2010 12:00", 299, kMin},
                                  {"01/10/2011 12:00", 3}});
  ASSERT_EQ(table.days.size(), 2U);
  EXPECT_EQ(table.days[0].meanCm, 300.0);
  EXPECT_EQ(table.days[0].minimum->levelCm, 299);
  EXPECT_EQ(table.hourly.size(), 4U);
}

}  // namespace
}  // namespace vesk
