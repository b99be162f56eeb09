#include "datafiles/data_lines.h"

#include <gtest/gtest.h>

#include "datafiles/helpers.h"

namespace vesk {
namespace {

const QByteArray kHeader = QByteArray("h\r\n").repeated(kHeaderLines);

struct Decoded {
  std::vector<Reading> readings;
  DataLineTally tally;
  qint64 lines = 0;
  [[nodiscard]] bool Balanced() const {
    return tally.kept + tally.outsideWindow + tally.blank + tally.refused + tally.afterEnd == lines;
  }
};

Decoded Decode(const QByteArray& lines, const std::optional<DayWindow>& window = std::nullopt) {
  Decoded decoded;
  const QByteArray file = kHeader + lines;
  decoded.tally = DecodeDataLines(file, kHeader.size() + 1, 3, window, decoded.readings);
  decoded.lines = lines.count('\n') + (lines.isEmpty() || lines.endsWith('\n') ? 0 : 1);
  return decoded;
}

TEST(DataLines, FieldsOfBothKindsOfLine) {
  const Decoded decoded = Decode(
      "05/03/2009  07:15    *1.15 rest is not read\r\n"
      "Max 05/03/2009 08:00 x12,34\r\n"
      "Min 05/03/2009 24:00  -0.05\r\n");
  ASSERT_EQ(decoded.readings.size(), 3U);
  const Reading& first = decoded.readings[0];
  EXPECT_EQ(DateTimeText(first.Time()), QStringLiteral("05/03/2009 07:15"));
  EXPECT_EQ(first.kind, ReadingKind::Ordinary);
  EXPECT_EQ(first.flag, '*');
  EXPECT_EQ(first.levelCm, 115) << "exact, without the tail of 1.15 x 100";
  EXPECT_EQ(first.levelByte, kHeader.size() + 23);
  EXPECT_EQ(first.sourceFile, 3);
  EXPECT_EQ(decoded.readings[1].kind, ReadingKind::Maximum);
  EXPECT_EQ(decoded.readings[1].flag, 'x');
  EXPECT_EQ(decoded.readings[1].levelCm, 1234);
  EXPECT_EQ(decoded.readings[2].kind, ReadingKind::Minimum);
  EXPECT_EQ(decoded.readings[2].minuteOfDay, 1439);
  EXPECT_EQ(decoded.readings[2].levelCm, -5);
  EXPECT_TRUE(decoded.Balanced());
}

TEST(DataLines, LevelTexts) {
  const struct {
    const char* field;
    std::optional<double> cm;
  } rows[] = {{" 1.23", 123.0},        {"1,23 ", 123.0},        {" .29 ", 29.0},
              {"  -5.", -500.0},       {"1.234", 123.4},        {"10.01", 1001.0},
              {"  7  ", 700.0},        {"     ", std::nullopt}, {" 1.2x", std::nullopt},
              {"1.2.3", std::nullopt}, {"  -  ", std::nullopt}};
  for (const auto& row : rows) {
    const Decoded decoded = Decode(QByteArray("05/03/2009  07:15     ") + row.field + "\r\n");
    if (row.cm) {
      ASSERT_EQ(decoded.readings.size(), 1U) << row.field;
      EXPECT_EQ(decoded.readings[0].levelCm, *row.cm) << row.field;
    } else {
      EXPECT_TRUE(decoded.readings.empty()) << row.field;
      EXPECT_EQ(decoded.tally.refused, 1) << row.field;
    }
  }
}

TEST(DataLines, MidnightIsTheEndOfItsDay) {
  const Decoded decoded = Decode("05/03/2009  00:00      1.00\r\n05/03/2009  24:00      1.00\r\n");
  ASSERT_EQ(decoded.readings.size(), 2U);
  for (const Reading& reading : decoded.readings) EXPECT_EQ(reading.minuteOfDay, 1439);
}

TEST(DataLines, EveryLineIsAccountedFor) {
  const Decoded decoded = Decode(
      "05/03/2009  07:15      1.00\r\n"
      "\r\n"
      "   \r\n"
      "31/02/2009  07:15      1.00\r\n"  // line 19
      "05/03/2009  25:15      1.00\r\n"
      "05/03/2009  07:15      abcd\r\n"
      "too short\r\n"
      "  05/03/2009  07:30      1.10  \n"  // blanks around, LF only
      "********************\r\n"
      "05/03/2009  08:00      1.00\r\n");
  EXPECT_EQ(decoded.tally.kept, 2);
  EXPECT_EQ(decoded.tally.blank, 2);
  EXPECT_EQ(decoded.tally.refused, 4);
  EXPECT_EQ(decoded.tally.afterEnd, 2) << "the end mark and what follows it";
  EXPECT_TRUE(decoded.Balanced());
  ASSERT_EQ(decoded.tally.faults.size(), 4U);
  EXPECT_EQ(decoded.tally.faults[0].line, 19);
  EXPECT_TRUE(decoded.tally.faults[0].expected.contains(QStringLiteral("dd/mm/yyyy")));
  EXPECT_TRUE(decoded.tally.faults[1].expected.contains(QStringLiteral("hh:mm")));
  EXPECT_TRUE(decoded.tally.faults[2].expected.contains(QStringLiteral("level")));
}

TEST(DataLines, ACutLastLineGivesNoFigure) {
  EXPECT_EQ(Decode("05/03/2009  07:15     12.").tally.refused, 1) << "12. could have been 12.34";
  EXPECT_EQ(Decode("05/03/2009  07:15     12.34").readings.size(), 1U)
      << "whole, only its line end is missing";
  const Decoded tail = Decode("05/03/2009  07:15      1.00\r\n05/03");
  EXPECT_EQ(tail.readings.size(), 1U);
  EXPECT_TRUE(tail.Balanced());
}

TEST(DataLines, AnExtremeOfTheNextDayDoesNotOpenTheWindowForItsReadings) {
  const DayWindow window{WaterYearFirstDay(2009), WaterYearLastDay(2009)};
  const Decoded decoded = Decode(
      "30/09/2009  23:45      1.00\r\n"
      "Max 01/10/2009 00:00   5.00\r\n"
      "01/10/2009  00:15      1.03\r\n",
      window);
  EXPECT_EQ(decoded.readings.size(), 2U);
}

TEST(DataLines, WindowKeepsWholeDaysAndTheExtremesThatGoWithThem) {
  const DayWindow window{WaterYearFirstDay(2009), WaterYearLastDay(2009)};
  const Decoded decoded = Decode(
      "30/09/2008  24:00      1.00\r\n"
      "Max 30/09/2008 10:00   9.00\r\n"
      "Min 30/09/2008 11:00   0.10\r\n"
      "01/10/2008  00:15      1.01\r\n"
      "30/09/2009  24:00      1.02\r\n"
      "Max 30/09/2009 10:00   5.00\r\n"
      "01/10/2009  00:15      1.03\r\n"
      "30/09/2009  12:00      1.04\r\n",
      window);
  ASSERT_EQ(decoded.readings.size(), 3U);
  EXPECT_EQ(decoded.readings[0].levelCm, 101);
  EXPECT_EQ(decoded.readings[2].levelCm, 500);
  EXPECT_EQ(decoded.tally.outsideWindow, 5) << "the first reading behind the window ends the file";
  EXPECT_TRUE(decoded.Balanced());
}

}  // namespace
}  // namespace vesk
