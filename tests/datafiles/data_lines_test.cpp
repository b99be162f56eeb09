#include "datafiles/data_lines.h"
#include "datafiles/dates.h"
#include "datafiles/water_year.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

const QByteArray kHeader = QByteArray("h\r\n").repeated(kHeaderLines);

struct Decoded {
  std::vector<Reading> readings;
  DataLineTally tally;
};

/// Decodes the lines and sees that each is counted once.
Decoded Decode(const QByteArray& lines, const std::optional<DayWindow>& window = std::nullopt) {
  Decoded decoded;
  decoded.tally = DecodeDataLines(kHeader + lines, kHeader.size() + 1, 3, window, decoded.readings);
  const DataLineTally& tally = decoded.tally;
  EXPECT_EQ(tally.kept + tally.outsideWindow + tally.blank + tally.refused + tally.afterEnd,
            lines.count('\n') + (lines.isEmpty() || lines.endsWith('\n') ? 0 : 1));
  EXPECT_EQ(tally.kept, static_cast<qint64>(decoded.readings.size()));
  return decoded;
}

TEST(DataLines, FieldsOfBothKindsOfLine) {
  const Decoded decoded = Decode(
      "05/03/2009  07:15    *1.15 rest is not read\r\n"
      "05/03/2009  07:30    +21.07\r\n"
      "05/03/2009  00:00      1.00\r\n"
      "Max 05/03/2009 08:00 x12,34\r\n"
      "Min 05/03/2009 00:00  -0.05\r\n"
      "Min 05/03/2009 24:00  -0.06\r\n");
  const struct {
    const char* time;
    ReadingKind kind;
    char flag;
    double levelCm;
  } rows[] = {{"05/03/2009 07:15", ReadingKind::Ordinary, '*', 115},  // exact, no tail of 1.15 x 100
              {"05/03/2009 07:30", ReadingKind::Ordinary, '+', 2107},
              {"05/03/2009 23:59", ReadingKind::Ordinary, ' ', 100},
              {"05/03/2009 08:00", ReadingKind::Maximum, 'x', 1234},
              {"05/03/2009 23:59", ReadingKind::Minimum, ' ', -5},
              {"05/03/2009 23:59", ReadingKind::Minimum, ' ', -6}};
  ASSERT_EQ(decoded.readings.size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const Reading& reading = decoded.readings[i];
    EXPECT_EQ(DateTimeText(reading.Time()).toStdString(), rows[i].time);
    EXPECT_EQ(reading.kind, rows[i].kind) << i;
    EXPECT_EQ(reading.flag, rows[i].flag) << i;
    EXPECT_EQ(reading.levelCm, rows[i].levelCm) << i;
    EXPECT_EQ(reading.sourceFile, 3);
  }
  EXPECT_EQ(decoded.readings[0].levelByte, kHeader.size() + 23);
  EXPECT_EQ(decoded.readings[2].levelByte, kHeader.size() + 45 + 29 + 23);
}

TEST(DataLines, LevelTexts) {
  const struct {
    const char* field;
    std::optional<double> cm;
  } rows[] = {{" 1.23", 123.0},        {"1,23 ", 123.0},        {" .29 ", 29.0},
              {"  -5.", -500.0},       {"- 1.2", -120.0},       {"1.234", 123.4},
              {"10.01", 1001.0},       {"  7  ", 700.0},        {"     ", std::nullopt},
              {" 1.2x", std::nullopt}, {"1.2.3", std::nullopt}, {"  -  ", std::nullopt}};
  for (const auto& row : rows) {
    const Decoded decoded = Decode(QByteArray("05/03/2009  07:15     ") + row.field + "\r\n");
    ASSERT_EQ(decoded.readings.size(), row.cm ? 1U : 0U) << row.field;
    EXPECT_EQ(decoded.tally.refused, row.cm ? 0 : 1) << row.field;
    for (const Reading& reading : decoded.readings) EXPECT_EQ(reading.levelCm, *row.cm) << row.field;
  }
}

TEST(DataLines, EveryLineIsAccountedFor) {
  const Decoded decoded = Decode(
      "05/03/2009  07:15      1.00\r\n"
      "\r\n"
      "   \r\n"
      "31/02/2009  07:15      1.00\r\n"  // line 19
      "05/03/2009  07:60      1.00\r\n"
      "05/03/2009  07:15      abcd\r\n"
      "  05/03/2009  07:30      1.10  \n"  // blanks around, LF only
      "05/03/2009  07:45\r\nab  1.23\r\n"  // too short, and no part of the next line completes it
      "********************\r\n"
      "05/03/2009  08:00      1.00\r\n");
  EXPECT_EQ(decoded.tally.kept, 2);
  EXPECT_EQ(decoded.tally.blank, 2);
  EXPECT_EQ(decoded.tally.afterEnd, 2) << "the end mark and what follows it";
  ASSERT_EQ(decoded.tally.faults.size(), 5U);
  EXPECT_EQ(decoded.tally.faults[0].line, 19);
  EXPECT_TRUE(decoded.tally.faults[0].expected.English().contains(QStringLiteral("dd/mm/yyyy")));
  EXPECT_TRUE(decoded.tally.faults[1].expected.English().contains(QStringLiteral("hh:mm")));
  EXPECT_TRUE(decoded.tally.faults[2].expected.English().contains(QStringLiteral("level")));
}

TEST(DataLines, ACutLastLineGivesNoFigure) {
  EXPECT_EQ(Decode("05/03/2009  07:15     12.").tally.refused, 1) << "12. could have been 12.34";
  EXPECT_EQ(Decode("05/03/2009  07:15     12.34").tally.kept, 1) << "whole, only its line end is missing";
  const DataLineTally tail = Decode("05/03/2009  07:15      1.00\r\n05/03").tally;
  EXPECT_EQ(tail.kept, 1);
  EXPECT_EQ(tail.refused, 0) << "a short tail is never read";
  const DataLineTally joined = Decode("05/03/2009  07:15      1.0005/03/2009  07:30      2.00\r\n").tally;
  EXPECT_EQ(joined.joined, 1);
  EXPECT_EQ(joined.firstJoinedLine, 16);
}

TEST(DataLines, AReadingThatStandsInTheHeaderIsTold) {
  EXPECT_EQ(ReadingInHeader(kHeader, kHeader.size() + 1), std::nullopt);
  for (const QByteArray& line : {QByteArray("05/03/2009  07:15      1.00\r\n"),
                                 QByteArray("Max 05/03/2009 08:00   1.00\r\n"), QByteArray("h\0\r\n", 4)}) {
    const QByteArray header = kHeader.first(3 * 13) + line + "h\r\n";
    EXPECT_EQ(ReadingInHeader(header, header.size() + 1), 14) << line.toStdString();
  }
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
      "Min 01/10/2009 00:00   0.90\r\n"
      "30/09/2009  23:15      1.05\r\n"
      "01/10/2009  99:15      1.06\r\n"  // unreadable, and no way past the end of the window
      "01/10/2009  00:15      1.03\r\n"
      "30/09/2009  12:00      1.04\r\n",
      window);
  std::vector<double> levels;
  for (const Reading& reading : decoded.readings) levels.push_back(reading.levelCm);
  EXPECT_EQ(levels, (std::vector<double>{101, 102, 500, 90, 105}));
  EXPECT_EQ(decoded.tally.outsideWindow, 6) << "the first reading behind the window ends the file";
  EXPECT_EQ(decoded.tally.refused, 0) << "the unreadable line is none of that year";
  EXPECT_EQ(decoded.tally.end, DataEnd::BehindWindow);
  EXPECT_EQ(decoded.tally.endLine, kHeaderLines + 10);
  EXPECT_EQ(decoded.tally.unread, 1);
  EXPECT_EQ(decoded.tally.unreadInside, 1) << "30/09/2009 12:00";
}

TEST(DataLines, WhatIsLeftUnreadIsCounted) {
  const QByteArray day1 = "01/10/2008  01:00      1.00\r\n01/10/2008  02:00      1.00\r\n";
  const QByteArray day2 = "02/10/2008  01:00      1.00\r\nMax 02/10/2008 01:00   1.00\r\n";
  const QByteArray end = "********************\r\n";
  const QByteArray next = "01/10/2009  01:00      1.00\r\n";
  const QByteArray early = "01/10/1998  01:00      1.00\r\n";
  const DayWindow year{WaterYearFirstDay(2009), WaterYearLastDay(2009)};
  const struct {
    const char* name;
    QByteArray lines;
    bool windowed;
    DataEnd end;
    qint64 endLine, unread, unreadInside, stray, ordinary;
    const char* last;
  } rows[] = {
      {"whole", day1 + day2 + end, false, DataEnd::EndMark, 20, 0, 0, 0, 3, "02/10/2008 01:00"},
      {"stray end mark", day1 + end + day2 + end, false, DataEnd::EndMark, 18, 3, 2, 0, 2,
       "01/10/2008 02:00"},
      {"cut at a line end", day1, true, DataEnd::EndOfFile, 17, 0, 0, 0, 2, "01/10/2008 02:00"},
      {"next year", day1 + next + next, true, DataEnd::BehindWindow, 18, 1, 0, 0, 3, "01/10/2009 01:00"},
      {"wrong year", next + day1 + day2 + end, true, DataEnd::BehindWindow, 16, 5, 3, 0, 1,
       "01/10/2009 01:00"},
      {"wrong earlier year", early + day1 + early + early + day2, true, DataEnd::EndOfFile, 22, 0, 0, 2, 6,
       "02/10/2008 01:00"},
      {"year before", early + early, true, DataEnd::EndOfFile, 17, 0, 0, 0, 2, "01/10/1998 01:00"},
      {"nothing", "", true, DataEnd::EndOfFile, 15, 0, 0, 0, 0, ""}};
  for (const auto& row : rows) {
    const DataLineTally tally = Decode(row.lines, row.windowed ? std::optional(year) : std::nullopt).tally;
    EXPECT_EQ(tally.end, row.end) << row.name;
    EXPECT_EQ(tally.endLine, row.endLine) << row.name;
    EXPECT_EQ(tally.unread, row.unread) << row.name;
    EXPECT_EQ(tally.unreadInside, row.unreadInside) << row.name;
    EXPECT_EQ(tally.stray, row.stray) << row.name;
    EXPECT_EQ(tally.firstStrayLine, row.stray > 0 ? 19 : 0) << row.name;
    EXPECT_EQ(tally.ordinary, row.ordinary) << row.name;
    EXPECT_EQ(tally.lastReading ? DateTimeText(*tally.lastReading).toStdString() : "", row.last) << row.name;
  }
}

}  // namespace
}  // namespace vesk
