#include "datafiles/dates.h"

#include <gtest/gtest.h>

#include "datafiles/fallback_calendar.h"
#include "datafiles/numbers.h"
#include "datafiles/water_year.h"

namespace vesk {
namespace {

using namespace std::chrono_literals;

Day D(int y, int m, int d) {
  return Day(std::chrono::year(y) / m / d);
}

TEST(ParseNumber, LeadingNumberPointOrRegionalComma) {
  const Regional comma{.decimalSign = QLatin1Char(',')};
  const struct {
    const char* text;
    double withPoint, withComma;
  } rows[] = {
      {"12.5", 12.5, 12.5}, {"12,5", 12, 12.5},      {"  1.23", 1.23, 1.23}, {"", 0, 0},
      {"abc", 0, 0},        {"101-12345", 101, 101}, {"-3.5x", -3.5, -3.5},  {"1 2 3", 123, 123},
      {"1,2,3", 1, 1},      {"1.2,3", 1.2, 1.2},     {"1e400", 0, 0},        {"7 Adet", 7, 7},
      {"-", 0, 0},          {".5", 0.5, 0.5},        {"1,23abc", 1, 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ParseNumber(QString::fromLatin1(row.text)), row.withPoint) << row.text;
    EXPECT_EQ(ParseNumber(QString::fromLatin1(row.text), comma), row.withComma) << row.text;
  }
}

TEST(ReadWholeNumber, RefusesAnythingBesideTheNumber) {
  EXPECT_EQ(ReadWholeNumber(u" -12,5 "), -12.5);
  for (const char* text : {"", " ", "12 cm", "1.2.3", "nan", "1e3", "0x10", "--1"}) {
    EXPECT_FALSE(ReadWholeNumber(QString::fromLatin1(text))) << text;
  }
}

TEST(NumberText, ShortestWithoutBinaryTail) {
  const std::pair<double, const char*> rows[] = {
      {1.15 * 100, "115"}, {0.29 * 100, "29"}, {12.5, "12.5"}, {-0.0, "0"}, {123456789.25, "123456789.25"}};
  for (const auto& [value, text] : rows) EXPECT_EQ(NumberText(value).toStdString(), text);
}

TEST(NormaliseDateText, AnySeparatorBecomesTheRegions) {
  const Regional dots{.dateSeparator = QLatin1Char('.')};
  EXPECT_EQ(NormaliseDateText(QStringLiteral("1/10/2008"), dots), QStringLiteral("01.10.2008"));
  EXPECT_EQ(NormaliseDateText(QStringLiteral(" 5-3-2009 10:30 ")), QStringLiteral("05/03/2009 10:30"));
  EXPECT_EQ(NormaliseDateText(QStringLiteral("5.3.09")), QStringLiteral("05/03/0009"));
  EXPECT_EQ(MonthOfText(QStringLiteral("5/3/2009")), QStringLiteral("03"));
}

TEST(Dates, ReadAndWrite) {
  EXPECT_EQ(ReadDate(u"29/02/2012"), D(2012, 2, 29));
  for (const char* text : {"29/02/2011", "00/01/2011", "1/1", "01/13/2011", "01/01/2011 x", "", "a/b/c"}) {
    EXPECT_FALSE(ReadDate(QString::fromLatin1(text))) << text;
  }
  EXPECT_EQ(ReadDateTime(u"05/03/2009 24:00"), DateTime(D(2009, 3, 5)) + 23h + 59min);
  EXPECT_EQ(ReadDateTime(u"05/03/2009"), DateTime(D(2009, 3, 5)));
  for (const char* text : {"05/03/2009 25:00", "05/03/2009 10:60", "05/03/2009 24:01", "05/03/200910:00"}) {
    EXPECT_FALSE(ReadDateTime(QString::fromLatin1(text))) << text;
  }
  const DateTime time = *ReadDateTime(u"5.3.2009 7:04");
  EXPECT_EQ(DateTimeText(time), QStringLiteral("05/03/2009 07:04"));
  EXPECT_EQ(DateKey(time), QStringLiteral("200903050704"));
}

TEST(WaterYear, TurnsWithOctober) {
  EXPECT_EQ(WaterYearOf(D(2009, 9, 30)), 2009);
  EXPECT_EQ(WaterYearOf(D(2009, 10, 1)), 2010);
  EXPECT_EQ(WaterYearFirstDay(2009), D(2008, 10, 1));
  EXPECT_EQ(WaterYearLastDay(2009), D(2009, 9, 30));
}

TEST(DayArithmetic, GregorianAndFallbackCalendar) {
  // Month 12 of the fallback calendar has 30 days in 1383 (1383 - 1379 is divisible by 4), 29 in 1384.
  const struct {
    const char* from;
    const char* to;
    int count;
  } rows[] = {{"01/10/2008", "01/10/2008", 1}, {"01/10/2008", "30/09/2009", 365},
              {"", "30/09/2009", 0},           {"01/10/1384", "01/10/1384", 0},
              {"28/02/1384", "01/03/1384", 1}, {"29/12/1383", "01/01/1384", 2},
              {"02/03/1384", "01/03/1384", 0}};  // a target before the start ends, too
  for (const auto& row : rows) {
    EXPECT_EQ(DayCount(QString::fromLatin1(row.from), QString::fromLatin1(row.to)), row.count) << row.from;
  }
  EXPECT_EQ(AddDaysText(QStringLiteral("28/02/2012"), 2), QStringLiteral("01/03/2012"));
  EXPECT_EQ(AddDaysText(QStringLiteral("29/12/1383"), 1), QStringLiteral("30/12/1383"));
  EXPECT_EQ(AddDaysText(QStringLiteral("29/12/1384"), 1), QStringLiteral("01/01/1385"));
}

}  // namespace
}  // namespace vesk
