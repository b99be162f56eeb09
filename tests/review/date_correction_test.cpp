#include "review/date_correction.h"
#include "datafiles/dates.h"

#include <gtest/gtest.h>

#include <cmath>

#include "review/grid_maker.h"
#include "review/station_series.h"

namespace vesk {
namespace {

using test::ReadingAt;

DateTime At(const char* text) {
  return ReadDateTime(QString::fromLatin1(text)).value();
}

/// "dd/mm hh:mm level label" of every row, one after the other.
QString Rows(const StationSeries& grid) {
  QStringList rows;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    const auto cell = [&](GridColumn column) { return CellText(grid, row, column); };
    rows += QStringList({cell(GridColumn::Date).left(5), cell(GridColumn::Time), cell(GridColumn::Level),
                         cell(GridColumn::Label)})
                .join(QLatin1Char(' '));
  }
  return rows.join(QStringLiteral(", "));
}

// In pieces between pairs; with one pair at the last reading it is the plain correction, minute for minute.
TEST(DateCorrections, InPiecesBetweenPairs) {
  const ReadingSpan span{At("01/01/2010 00:00"), At("11/01/2010 00:00")};
  TrueTimes times(At("11/01/2010 02:00"));
  for (int minute = 0; minute <= 10 * kMinutesPerDay; minute += 7) {
    const DateTime time = span.first + std::chrono::minutes(minute);
    const double share = minute * 14520.0 / 14400;  // ten days take two hours more
    EXPECT_EQ(RetimedReading(time, span, times),
              span.first + std::chrono::minutes(static_cast<int>(std::floor(std::round(share * 60) / 60))));
  }
  times.before = {{At("03/01/2010 00:00"), At("03/01/2010 01:00")}};
  const auto at = [&](const char* time) {
    return DateTimeText(RetimedReading(At(time), span, times)).toStdString();
  };
  EXPECT_EQ(at("01/01/2010 00:00"), "01/01/2010 00:00") << "the first reading keeps its time";
  EXPECT_EQ(at("02/01/2010 00:00"), "02/01/2010 00:30");
  EXPECT_EQ(at("03/01/2010 00:00"), "03/01/2010 01:00");
  EXPECT_EQ(at("07/01/2010 00:00"), "07/01/2010 01:30");
  EXPECT_EQ(at("11/01/2010 00:00"), "11/01/2010 02:00");
  EXPECT_EQ(at("12/01/2010 00:00"), "12/01/2010 02:07") << "what lies behind goes on with the last piece";
  times.before.insert(times.before.begin(), {span.first, At("01/01/2010 00:20")});
  EXPECT_EQ(at("01/01/2010 00:00"), "01/01/2010 00:20") << "unless a pair says otherwise";
  EXPECT_EQ(at("02/01/2010 00:00"), "02/01/2010 00:40");
  EXPECT_EQ(ReadTrueTimes(TrueTimesText(times)), times);
}

TEST(DateCorrections, PairsThatCannotBeAreRefused) {
  const StationSeries grid = test::HourlyGrid("01/01/2010 00:00", 25);
  const auto fits = [&](std::vector<ClockPair> before, const char* last) {
    TrueTimes times(At(last));
    times.before = std::move(before);
    return CheckCorrectionTarget(times, grid.Raw()).Ok();
  };
  const DateTime noon = At("01/01/2010 12:00");
  EXPECT_TRUE(fits({{noon, At("01/01/2010 12:10")}}, "02/01/2010 00:20"));
  EXPECT_FALSE(fits({{noon, At("02/01/2010 00:20")}}, "02/01/2010 00:20")) << "the true clock stands still";
  EXPECT_FALSE(fits({{noon, noon}, {noon, At("01/01/2010 13:00")}}, "02/01/2010 00:20")) << "one time twice";
  EXPECT_FALSE(fits({{At("31/12/2009 12:00"), At("31/12/2009 12:00")}}, "02/01/2010 00:20"))
      << "before the readings";
  EXPECT_FALSE(fits({{At("02/01/2010 00:00"), At("02/01/2010 00:01")}}, "02/01/2010 00:20"))
      << "at the last one";
  EXPECT_FALSE(fits({{noon, At("31/12/2009 12:00")}}, "02/01/2010 00:20"))
      << "true time before the first reading";
  for (const char* text : {"", "02/01/2010 00:20;", "02/01/2010 00:20;01/01/2010 12:00", "02/01/2010 00:2",
                           "02/01/2010 00:20;01/01/2010 12:00=01/01/2010 12:1"})
    EXPECT_FALSE(ReadTrueTimes(QString::fromLatin1(text)).has_value()) << text;
}

TEST(DateCorrection, StretchesLinearlyAndCutsToTheMinute) {
  const struct {
    const char *time, *last, *target, *expected;
  } kCases[] = {
      {"06/01/2010 00:00", "11/01/2010 00:00", "12/01/2010 00:00", "06/01/2010 12:00"},  // factor 1.1
      {"01/01/2010 00:00", "11/01/2010 00:00", "12/01/2010 00:00",
       "01/01/2010 00:00"},  // the first never moves
      {"11/01/2010 00:00", "11/01/2010 00:00", "12/01/2010 00:00", "12/01/2010 00:00"},
      {"06/01/2010 00:00", "11/01/2010 00:00", "06/01/2010 00:00", "03/01/2010 12:00"},  // factor 0.5
      {"01/01/2010 02:00", "01/01/2010 03:00", "01/01/2010 03:01", "01/01/2010 02:00"},  // 40 s are cut
      {"01/01/2010 02:00", "01/01/2010 03:00", "01/01/2010 03:03", "01/01/2010 02:02"},
      {"01/01/2010 20:00", "01/01/2011 00:00", "01/01/2011 00:01", "01/01/2010 20:00"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(DateTimeText(RetimedReading(At(c.time), {At("01/01/2010 00:00"), At(c.last)}, At(c.target))),
              QLatin1String(c.expected))
        << c.time << " of " << c.last << " to " << c.target;
  }
}

TEST(DateCorrection, RebuildsTheGridWithDailyExtremes) {
  StationSeries grid =
      test::GridOf({ReadingAt("01/01/2010 00:00", 50), ReadingAt("01/01/2010 12:00", 70),
                    ReadingAt("02/01/2010 00:00", 60),
                    ReadingAt("01/01/2010 13:00", 75, ReadingKind::Maximum),  // the logger's own
                    ReadingAt("02/01/2010 12:00", 40), ReadingAt("03/01/2010 00:00", 45)});
  grid.SetTarget(At("05/01/2010 00:00"));  // factor 2
  EXPECT_EQ(Rows(grid), QStringLiteral("01/01 00:00 50 01-ort, 01/01 00:00 50 01-Max, 01/01 00:00 50 01-Min, "
                                       "02/01 00:00 70 01-ort, 02/01 02:00 75 01-Max, 02/01 00:00 70 01-Min, "
                                       "03/01 00:00 60 01-ort, 03/01 00:00 60 01-Max, 03/01 00:00 60 01-Min, "
                                       "04/01 00:00 40 01-ort, 04/01 00:00 40 01-Max, 04/01 00:00 40 01-Min, "
                                       "05/01 00:00 45 01-ort"));
  for (int row = 1; row <= grid.ReadingCount(); ++row) EXPECT_EQ(grid.Mark(row).shade, RowShade::Corrected);
}

TEST(DateCorrection, OfEqualLevelsTheFirstIsTheDaysExtreme) {
  StationSeries grid = test::GridOf({ReadingAt("01/01/2010 00:00", 50), ReadingAt("01/01/2010 06:00", 40),
                                     ReadingAt("01/01/2010 07:00", 60), ReadingAt("01/01/2010 08:00", 60),
                                     ReadingAt("01/01/2010 09:00", 40), ReadingAt("02/01/2010 06:00", 50)});
  grid.SetTarget(At("02/01/2010 05:00"));
  EXPECT_EQ(Rows(grid).section(QStringLiteral(", "), 5, 6),
            QStringLiteral("01/01 06:46 60 01-Max, 01/01 05:48 40 01-Min"));
}

TEST(DateCorrection, CarriesWhatTheOperatorAddedToAReading) {
  StationSeries grid =
      test::GridOf({ReadingAt("01/01/2010 00:00", 50), ReadingAt("01/01/2010 12:00", 70, {}, 'a'),
                    ReadingAt("03/01/2010 00:00", 60)});
  test::Change(grid, 3, 61, 2);
  test::SetDischarge(grid, 3, QStringLiteral("1.5"));
  grid.SetTarget(At("02/01/2010 00:00"));
  const int last = grid.ReadingCount();
  ASSERT_TRUE(Rows(grid).endsWith(QStringLiteral("02/01 00:00 61 01-ort")));
  EXPECT_EQ(CellText(grid, last, GridColumn::Code), QStringLiteral("2"));
  EXPECT_EQ(grid.Mark(last).baselineCm, 60);
  EXPECT_EQ(grid.DischargeOf(last).text, QStringLiteral("1.5"));
  EXPECT_EQ(CellText(grid, 2, GridColumn::Code), QStringLiteral("a"));
  EXPECT_EQ(CellText(grid, 3, GridColumn::Code), QString());  // the inserted maximum
  EXPECT_FALSE(grid.IsChanged(3));
}

TEST(DateCorrection, TheRecordsBehindTheLastReadingAreNotTheLastReading) {
  StationSeries series = test::GridOf({ReadingAt("01/01/2010 00:00", 50), ReadingAt("01/01/2010 20:00", 60),
                                       ReadingAt("01/01/2010 18:00", 70, ReadingKind::Maximum),
                                       ReadingAt("01/01/2010 05:00", 40, ReadingKind::Minimum)});
  series.SetTarget(At("01/01/2010 20:00"));  // its own time
  EXPECT_FALSE(series.Target());
  EXPECT_EQ(series.ReadingCount(), 4);
  series.SetTarget(At("01/01/2010 22:00"));
  EXPECT_EQ(Rows(series), QStringLiteral("01/01 00:00 50 01-ort, 01/01 22:00 60 01-ort"));
}

TEST(DateCorrection, RefusesWhatIsNoTimeBehindTheFirstReading) {
  const StationSeries grid = test::HourlyGrid("02/01/2010 00:00", 30);
  for (const char* text : {"", "x", "2010-01-05 10:00", "05/01/2010", "31/02/2010 10:00", "05/01/2010 10:61",
                           "01/01/2010 23:59", "02/01/2010 00:00"}) {
    const auto target = ReadCorrectionTarget(QString::fromLatin1(text), grid.Raw());
    ASSERT_FALSE(target) << text;
    EXPECT_TRUE(target.Failure().reason.English().contains(QStringLiteral("dd/mm/yyyy hh:mm"))) << text;
  }
  const auto target = ReadCorrectionTarget(QStringLiteral(" 2.1.2010 00:01 "), grid.Raw());
  ASSERT_TRUE(target);
  EXPECT_EQ(*target, At("02/01/2010 00:01"));
  EXPECT_FALSE(ReadCorrectionTarget(QStringLiteral("05/01/2010 10:00"), RawRows()));
  EXPECT_FALSE(ReadCorrectionTarget(QStringLiteral("05/01/2010 10:00"),
                                    test::HourlyGrid("02/01/2010 00:00", 1).Raw()));
}

}  // namespace
}  // namespace vesk
