#include "ratings/rating_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "datafiles/dates.h"
#include "ratings/curve_check.h"

namespace vesk {
namespace {

DateTime At(const char* text) {
  return *ReadDateTime(QString::fromLatin1(text));
}

/// Q = 0.01 (h - 10)^2 up to 60 cm (25 m3/s), above it 1.25 (h - 40) (25 at 60): gauged from 20 to 100 cm.
CurvePeriod TwoSegments() {
  CurvePeriod period;
  period.segments = {{0, 0.01, 10, 2}, {60, 1.25, 40, 1}};
  period.lowestCm = 20;
  period.highestCm = 100;
  period.belowCm = 5;
  period.aboveCm = 20;
  return period;
}

RatingCurve CurveOf(std::vector<CurvePeriod> periods) {
  RatingCurve curve;
  curve.station = QStringLiteral("12345");
  curve.periods = std::move(periods);
  return curve;
}

struct LevelCase {
  double levelCm, m3s;
  DischargeFlag flag;
};

TEST(RatingCurve, GivesEachLevelItsDischargeAndFlag) {
  const CurvePeriod period = TwoSegments();
  const std::vector<LevelCase> cases = {
      {9, 0, DischargeFlag::Dry},
      {10, 0, DischargeFlag::Dry},
      {10.5, 0, DischargeFlag::TooLow},
      {14.99, 0, DischargeFlag::TooLow},
      {15, 0.25, DischargeFlag::ExtrapolatedBelow},
      {19.9, 0.9801, DischargeFlag::ExtrapolatedBelow},
      {20, 1, DischargeFlag::None},
      {50, 16, DischargeFlag::None},
      {60, 25, DischargeFlag::None},
      {61, 26.25, DischargeFlag::None},
      {100, 75, DischargeFlag::None},
      {100.01, 75.0125, DischargeFlag::ExtrapolatedAbove},
      {120, 100, DischargeFlag::ExtrapolatedAbove},
      {120.01, 0, DischargeFlag::TooHigh},
  };
  for (const LevelCase& one : cases) {
    const DischargeValue value = DischargeAtLevel(period, one.levelCm);
    EXPECT_EQ(value.flag, one.flag) << one.levelCm;
    EXPECT_NEAR(HasDischarge(value.flag) ? value.m3s : 0, one.m3s, 1e-9) << one.levelCm;
  }
}

TEST(RatingCurve, RunsBetweenPointsLinearlyOrLogarithmically) {
  CurvePeriod period;
  period.points = {{10, 0}, {20, 1}, {40, 9}};
  period.lowestCm = 10;
  period.highestCm = 40;
  period.aboveCm = 20;
  EXPECT_NEAR(CurveDischarge(period, 15), 0.5, 1e-12);
  EXPECT_NEAR(CurveDischarge(period, 25), 3, 1e-12);
  EXPECT_NEAR(CurveDischarge(period, 45), 11, 1e-12) << "on the last line, beyond it";
  EXPECT_EQ(DischargeAtLevel(period, 10).flag, DischargeFlag::Dry);
  EXPECT_EQ(DischargeAtLevel(period, 20).m3s, 1);

  // Q = 0.01 (h - 10)^2 through its points, so every level between them lies on the same curve.
  period.between = Between::Logarithmic;
  period.offsetCm = 10;
  for (const double level : {22.0, 25.0, 33.3, 39.0})
    EXPECT_NEAR(CurveDischarge(period, level), 0.01 * (level - 10) * (level - 10), 1e-9) << level;
  EXPECT_NEAR(CurveDischarge(period, 50), 16, 1e-9) << "beyond the last point";
  EXPECT_NEAR(CurveDischarge(period, 15), 0.5, 1e-12) << "next to a point without flow";
}

TEST(RatingCurve, ShiftsTheLevelLinearlyInTime) {
  CurvePeriod period = TwoSegments();
  period.shifts = {{At("10/01/2020 00:00"), -4}, {At("20/01/2020 00:00"), 6}};
  const RatingCurve curve = CurveOf({period});
  EXPECT_EQ(ShiftAt(period, At("09/01/2020 23:59")), 0);
  EXPECT_EQ(ShiftAt(period, At("10/01/2020 00:00")), -4);
  EXPECT_NEAR(ShiftAt(period, At("15/01/2020 00:00")), 1, 1e-12);
  EXPECT_EQ(ShiftAt(period, At("20/01/2020 00:00")), 6);
  EXPECT_EQ(ShiftAt(period, At("01/06/2021 00:00")), 6);
  EXPECT_NEAR(DischargeAt(curve, At("10/01/2020 00:00"), 34).m3s, 4, 1e-12) << "level 30 on the curve";
  EXPECT_EQ(DischargeAt(curve, At("10/01/2020 00:00"), 22).flag, DischargeFlag::ExtrapolatedBelow)
      << "the shifted level counts";
}

TEST(RatingCurve, HoldsInItsPeriodsOnly) {
  CurvePeriod first = TwoSegments();
  first.from = At("01/10/2018 00:00");
  first.to = At("30/09/2019 23:59");
  CurvePeriod second = TwoSegments();
  second.segments[0].a = 0.02;
  second.segments.resize(1);
  second.from = At("01/10/2019 00:00");
  const RatingCurve curve = CurveOf({first, second});
  EXPECT_TRUE(CheckCurve(curve).empty());
  EXPECT_EQ(DischargeAt(curve, At("30/09/2018 23:59"), 30).flag, DischargeFlag::NoPeriod);
  EXPECT_NEAR(DischargeAt(curve, At("01/10/2018 00:00"), 30).m3s, 4, 1e-12);
  EXPECT_NEAR(DischargeAt(curve, At("30/09/2019 23:59"), 30).m3s, 4, 1e-12);
  EXPECT_NEAR(DischargeAt(curve, At("01/10/2019 00:00"), 30).m3s, 8, 1e-12);
  EXPECT_NEAR(DischargeAt(curve, At("01/10/2040 00:00"), 30).m3s, 8, 1e-12);
}

TEST(RatingCurve, IsRefusedWhereItIsWrong) {
  struct Case {
    const char* name;
    CurvePart part;
    void (*spoil)(CurvePeriod& period);
  };
  const std::vector<Case> cases = {
      {"b too small", CurvePart::Segment, [](CurvePeriod& p) { p.segments[0].b = 0.29; }},
      {"b too large", CurvePart::Segment, [](CurvePeriod& p) { p.segments[1].b = 8.01; }},
      {"b is no number", CurvePart::Segment, [](CurvePeriod& p) { p.segments[1].b = std::nan(""); }},
      {"a not above 0", CurvePart::Segment, [](CurvePeriod& p) { p.segments[0].a = -0.01; }},
      {"c above the segment", CurvePart::Segment, [](CurvePeriod& p) { p.segments[1].cCm = 60; }},
      {"segments that do not meet", CurvePart::Segment, [](CurvePeriod& p) { p.segments[1].a = 1.26; }},
      {"breakpoint out of order", CurvePart::Segment,
       [](CurvePeriod& p) {
         p.segments.push_back({50, 2.5, 40, 1});
       }},
      {"levels that fall", CurvePart::Gauged, [](CurvePeriod& p) { p.lowestCm = 101; }},
      {"a negative extrapolation", CurvePart::Gauged, [](CurvePeriod& p) { p.aboveCm = -1; }},
      {"both shapes", CurvePart::Period,
       [](CurvePeriod& p) {
         p.points = {{1, 1}, {2, 2}};
       }},
      {"no shape", CurvePart::Period, [](CurvePeriod& p) { p.segments.clear(); }},
      {"one point", CurvePart::Point,
       [](CurvePeriod& p) {
         p.segments.clear();
         p.points = {{20, 1}};
       }},
      {"a discharge that falls", CurvePart::Point,
       [](CurvePeriod& p) {
         p.segments.clear();
         p.points = {{20, 1}, {30, 0.9}};
       }},
      {"a negative discharge", CurvePart::Point,
       [](CurvePeriod& p) {
         p.segments.clear();
         p.points = {{20, -1}, {30, 0.9}};
       }},
      {"equal levels", CurvePart::Point,
       [](CurvePeriod& p) {
         p.segments.clear();
         p.points = {{20, 1}, {20, 2}};
       }},
      {"an offset above a point", CurvePart::Point,
       [](CurvePeriod& p) {
         p.segments.clear();
         p.between = Between::Logarithmic;
         p.offsetCm = 20;
         p.points = {{20, 1}, {30, 2}};
       }},
      {"shifts out of order", CurvePart::Shift,
       [](CurvePeriod& p) {
         p.shifts = {{At("02/01/2020 00:00"), 1}, {At("01/01/2020 00:00"), 1}};
       }},
      {"a gauging without discharge", CurvePart::Gauging, [](CurvePeriod& p) { p.gaugings.resize(1); }},
      {"an end before the start", CurvePart::Period,
       [](CurvePeriod& p) {
         p.from = At("02/01/2020 00:00");
         p.to = At("01/01/2020 00:00");
       }},
  };
  EXPECT_TRUE(CheckCurve(CurveOf({TwoSegments()})).empty());
  for (const Case& one : cases) {
    CurvePeriod period = TwoSegments();
    one.spoil(period);
    const auto faults = CheckCurve(CurveOf({period}));
    ASSERT_FALSE(faults.empty()) << one.name;
    EXPECT_EQ(faults[0].part, one.part) << one.name;
    EXPECT_FALSE(faults[0].what.In(LanguageChoice::Turkish).isEmpty());
  }
  CurvePeriod open = TwoSegments();
  open.to = At("31/12/2020 23:59");
  CurvePeriod next = TwoSegments();
  next.from = At("31/12/2020 23:59");
  EXPECT_EQ(CheckCurve(CurveOf({open, next})).size(), 1U) << "one minute has two curves";
  EXPECT_EQ(CheckCurve(CurveOf({TwoSegments(), next})).size(), 1U) << "the first never ends";
  EXPECT_EQ(CheckCurve(CurveOf({})).size(), 1U);
}

TEST(DischargeText, HasThreeSignificantDigitsAndTellsOfFlags) {
  const std::vector<std::pair<double, const char*>> digits = {
      {0, "0"},           {0.000123456, "0.000123"}, {0.09994, "0.0999"},
      {0.09996, "0.100"}, {0.9994, "0.999"},         {0.9996, "1.00"},
      {1, "1.00"},        {9.996, "10.0"},           {12.34, "12.3"},
      {99.96, "100"},     {123.456, "123"},          {999.6, "1000"},
      {1234.5, "1230"},   {98765, "98800"},          {1e6, "1000000"},
  };
  for (const auto& [value, text] : digits) {
    EXPECT_EQ(DischargeDigits(value), QString::fromLatin1(text)) << value;
  }
  EXPECT_EQ(DischargeText({12.34, DischargeFlag::None}), QStringLiteral("12.3"));
  EXPECT_EQ(DischargeText({12.34, DischargeFlag::ExtrapolatedAbove}), QStringLiteral("12.3*"));
  EXPECT_EQ(DischargeText({0, DischargeFlag::Dry}), QStringLiteral("0*"));
  EXPECT_EQ(DischargeText({12.34, DischargeFlag::TooHigh}), QStringLiteral("*"));
}

}  // namespace
}  // namespace vesk
