#include "datafiles/helpers.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

using namespace std::chrono_literals;

Day D(int y, int m, int d) {
  return Day(std::chrono::year_month_day(std::chrono::year(y), std::chrono::month(static_cast<unsigned>(m)),
                                         std::chrono::day(static_cast<unsigned>(d))));
}

TEST(ParseNumber, LeadingNumberPointOrRegionalComma) {
  const Regional point;
  const Regional comma{.decimalSign = QLatin1Char(','), .dateSeparator = QLatin1Char('.')};
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
    EXPECT_EQ(ParseNumber(QString::fromLatin1(row.text), point), row.withPoint) << row.text;
    EXPECT_EQ(ParseNumber(QString::fromLatin1(row.text), comma), row.withComma) << row.text;
  }
}

TEST(ReadWholeNumber, RefusesAnythingBesideTheNumber) {
  EXPECT_EQ(ReadWholeNumber(u" 12,5 "), 12.5);
  EXPECT_EQ(ReadWholeNumber(u"-7"), -7.0);
  for (const char* text : {"", " ", "12 cm", "1.2.3", "nan", "1e3", "0x10", "--1"}) {
    EXPECT_FALSE(ReadWholeNumber(QString::fromLatin1(text))) << text;
  }
}

TEST(NumberText, ShortestWithoutBinaryTail) {
  EXPECT_EQ(NumberText(1.15 * 100), QStringLiteral("115"));
  EXPECT_EQ(NumberText(0.29 * 100), QStringLiteral("29"));
  EXPECT_EQ(NumberText(-5), QStringLiteral("-5"));
  EXPECT_EQ(NumberText(12.5), QStringLiteral("12.5"));
  EXPECT_EQ(NumberText(-0.0), QStringLiteral("0"));
  EXPECT_EQ(NumberText(123456789.25), QStringLiteral("123456789.25"));
}

TEST(NormaliseDateText, AnySeparatorBecomesTheRegions) {
  const Regional dots{.decimalSign = QLatin1Char(','), .dateSeparator = QLatin1Char('.')};
  EXPECT_EQ(NormaliseDateText(QStringLiteral("1/10/2008"), dots), QStringLiteral("01.10.2008"));
  EXPECT_EQ(NormaliseDateText(QStringLiteral("5.3.2009")), QStringLiteral("05/03/2009"));
  EXPECT_EQ(NormaliseDateText(QStringLiteral(" 5-3-2009 10:30 ")), QStringLiteral("05/03/2009 10:30"));
  EXPECT_EQ(NormaliseDateText(QStringLiteral("5/3/09")), QStringLiteral("05/03/0009"));
  EXPECT_EQ(MonthOfText(QStringLiteral("5/3/2009")), QStringLiteral("03"));
}

TEST(Dates, ReadAndWrite) {
  EXPECT_EQ(ReadDate(u"29/02/2012"), D(2012, 2, 29));
  for (const char* text :
       {"29/02/2011", "31/04/2011", "00/01/2011", "1/1", "01/13/2011", "01/01/2011 x", "", "a/b/c"}) {
    EXPECT_FALSE(ReadDate(QString::fromLatin1(text))) << text;
  }
  EXPECT_EQ(ReadDateTime(u"05/03/2009 24:00"), DateTime(D(2009, 3, 5)) + 23h + 59min);
  EXPECT_EQ(ReadDateTime(u"05/03/2009 07:04"), DateTime(D(2009, 3, 5)) + 7h + 4min);
  EXPECT_EQ(ReadDateTime(u"05/03/2009"), DateTime(D(2009, 3, 5)));
  for (const char* text :
       {"05/03/2009 25:00", "05/03/2009 10:60", "05/03/2009 24:01", "05/03/200910:00", "x"}) {
    EXPECT_FALSE(ReadDateTime(QString::fromLatin1(text))) << text;
  }
  EXPECT_EQ(DateTimeText(DateTime(D(2009, 3, 5)) + 7h + 4min), QStringLiteral("05/03/2009 07:04"));
  EXPECT_EQ(DateKey(DateTime(D(2009, 3, 5)) + 7h + 4min), QStringLiteral("200903050704"));
}

TEST(WaterYear, TurnsWithOctober) {
  EXPECT_EQ(WaterYearOf(D(2009, 9, 30)), 2009);
  EXPECT_EQ(WaterYearOf(D(2009, 10, 1)), 2010);
  EXPECT_EQ(WaterYearFirstDay(2009), D(2008, 10, 1));
  EXPECT_EQ(WaterYearLastDay(2009), D(2009, 9, 30));
  EXPECT_EQ(WaterYearStartText(2009), QStringLiteral("01/10/2008"));
}

TEST(DayArithmetic, GregorianAndFallbackCalendar) {
  EXPECT_EQ(DayCount(QStringLiteral("01/10/2008"), QStringLiteral("01/10/2008")), 1);
  EXPECT_EQ(DayCount(QStringLiteral("01/10/2008"), QStringLiteral("30/09/2009")), 365);
  EXPECT_EQ(DayCount(QString(), QStringLiteral("30/09/2009")), 0);
  EXPECT_EQ(AddDaysText(QStringLiteral("28/02/2012"), 2), QStringLiteral("01/03/2012"));
  // Month 12 of the fallback calendar has 30 days in 1383 (1383 - 1379 is divisible by 4), 29 in 1384.
  EXPECT_EQ(AddDaysText(QStringLiteral("29/12/1383"), 1), QStringLiteral("30/12/1383"));
  EXPECT_EQ(AddDaysText(QStringLiteral("29/12/1384"), 1), QStringLiteral("01/01/1385"));
  EXPECT_EQ(DayCount(QStringLiteral("01/10/1384"), QStringLiteral("01/10/1384")), 0);
  EXPECT_EQ(DayCount(QStringLiteral("28/02/1384"), QStringLiteral("01/03/1384")), 1);
  EXPECT_EQ(DayCount(QStringLiteral("02/03/1384"), QStringLiteral("01/03/1384")), 0)
      << "a target before the start ends";
}

}  // namespace
}  // namespace vesk
