#include "ratings/fit_curve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace vesk {
namespace {

std::vector<Gauging> GaugingsOf(const std::vector<std::pair<double, double>>& figures) {
  std::vector<Gauging> gaugings;
  for (const auto& [level, discharge] : figures) {
    Gauging gauging;
    gauging.levelCm = level;
    gauging.dischargeM3s = discharge;
    gaugings.push_back(gauging);
  }
  return gaugings;
}

/// A curve of two segments that meet at 160 cm.
std::vector<PowerSegment> TwoSegments() {
  PowerSegment upper{160, 0, 95, 1.3};
  upper.a = 0.002 * std::pow(160 - 40, 1.8) / std::pow(160 - 95, 1.3);
  return {{0, 0.002, 40, 1.8}, upper};
}

/// count gaugings between 60 and 400 cm, each off the curve by a normal deviate of that many percent.
std::vector<Gauging> AlongCurve(const std::vector<PowerSegment>& segments, int count, double percent,
                                unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> off(0, percent / 100);
  CurvePeriod period;
  period.segments = segments;
  std::vector<std::pair<double, double>> figures;
  for (int i = 0; i < count; ++i) {
    const double level = 60 + 340.0 * i / (count - 1);
    figures.emplace_back(level, CurveDischarge(period, level) * std::exp(off(random)));
  }
  return GaugingsOf(figures);
}

TEST(FitCurve, FindsTheCurveThatExactGaugingsLieOn) {
  const auto one = FitCurve(AlongCurve({{0, 0.01, 30, 2.1}}, 12, 0, 1), 1);
  ASSERT_TRUE(one);
  EXPECT_NEAR(one->segments[0].cCm, 30, 1e-3);
  EXPECT_NEAR(one->segments[0].b, 2.1, 1e-5);
  EXPECT_NEAR(one->segments[0].a, 0.01, 1e-6);
  EXPECT_LT(one->sseLn, 1e-12);

  const auto two = FitCurve(AlongCurve(TwoSegments(), 40, 0, 1), 2);
  ASSERT_TRUE(two);
  EXPECT_LT(two->sseLn, 1e-7);
  EXPECT_NEAR(two->segments[1].fromCm, 160, 1);
  EXPECT_NEAR(two->segments[0].cCm, 40, 0.5);
}

TEST(FitCurve, IsTheLeastSquaresOfAPlainGrid) {
  // What a slow search over c finds, the straight line solved by hand for each: the fit must not lose against
  // it.
  for (unsigned seed = 1; seed <= 8; ++seed) {
    const auto gaugings = AlongCurve({{0, 0.02, 50, 1.6}}, 9, 12, seed);
    double best = 1e9;
    for (double c = 60 - 3 * 340.0; c < 59.99; c += 0.05) {
      double sx = 0, sy = 0, sxx = 0, sxy = 0, syy = 0;
      for (const Gauging& gauging : gaugings) {
        const double x = std::log(*gauging.levelCm - c);
        const double y = std::log(gauging.dischargeM3s);
        sx += x, sy += y, sxx += x * x, sxy += x * y, syy += y * y;
      }
      const double n = 9;
      const double slope = (sxy - sx * sy / n) / (sxx - sx * sx / n);
      if (slope < 0.3 || slope > 8) continue;
      best = std::min(best, syy - sy * sy / n - slope * (sxy - sx * sy / n));
    }
    const auto fit = FitCurve(gaugings, 1);
    ASSERT_TRUE(fit);
    EXPECT_LE(fit->sseLn, best * (1 + 1e-6)) << "seed " << seed;
    EXPECT_GE(fit->sseLn, best * 0.99) << "seed " << seed;
  }
}

TEST(FitCurve, MeetsAtItsBreakpointsAndRises) {
  for (unsigned seed = 1; seed <= 2; ++seed) {
    const auto gaugings = AlongCurve(TwoSegments(), 24, 2, seed);
    const auto fits = CompareFits(gaugings);
    ASSERT_TRUE(fits);
    ASSERT_EQ(fits->fits.size(), 3U);
    for (std::size_t k = 0; k < 3; ++k) {
      const CurveFit& fit = fits->fits[k];
      EXPECT_EQ(fit.parameters.size(), 3 * (k + 1) + k) << "a, c, b each and the breaks";
      EXPECT_LE(fit.sseLn, fits->fits[k > 0 ? k - 1 : 0].sseLn * (1 + 1e-9)) << "seed " << seed;
      for (std::size_t s = 0; s < fit.segments.size(); ++s) {
        const PowerSegment& segment = fit.segments[s];
        EXPECT_GE(segment.b, 0.3);
        EXPECT_LE(segment.b, 8);
        EXPECT_LT(segment.cCm, s == 0 ? 60 : segment.fromCm);
        if (s == 0) continue;
        const PowerSegment& below = fit.segments[s - 1];
        const double lower = below.a * std::pow(segment.fromCm - below.cCm, below.b);
        const double upper = segment.a * std::pow(segment.fromCm - segment.cCm, segment.b);
        EXPECT_NEAR(upper / lower, 1, 1e-9);
      }
    }
    EXPECT_GE(fits->proposed, 2) << "one segment cannot follow two";
  }
}

TEST(FitCurve, GivesTheSameDigitsInAnyOrder) {
  auto gaugings = AlongCurve(TwoSegments(), 25, 6, 3);
  for (std::size_t i = 0; i < gaugings.size(); ++i)
    gaugings[i].uncertaintyPercent = 3.0 + static_cast<double>(i % 4);
  const auto first = FitCurve(gaugings, 2);
  ASSERT_TRUE(FitCurve(AlongCurve(TwoSegments(), 12, 20, 9), 2));  // whatever ran before
  std::ranges::reverse(gaugings);
  const auto again = FitCurve(gaugings, 2);
  ASSERT_TRUE(first && again);
  EXPECT_EQ(first->weightedSseLn, again->weightedSseLn);
  EXPECT_EQ(first->segments, again->segments);
  EXPECT_EQ(again->residuals.front().gauging, 24) << "the place among those given, lowest level first";
}

TEST(FitCurve, WeighsByUncertaintyAndLeavesOutWhatIsNotUsed) {
  auto gaugings = AlongCurve({{0, 0.01, 30, 2}}, 10, 0, 1);
  gaugings[5].dischargeM3s *= 1.5;
  const double equal = FitCurve(gaugings, 1, FitWeights::Equal)->residuals[5].percent;
  for (Gauging& gauging : gaugings) gauging.uncertaintyPercent = 2;
  gaugings[5].uncertaintyPercent = 60;
  const double weighted = FitCurve(gaugings, 1)->residuals[5].percent;
  EXPECT_LT(equal, 45);
  EXPECT_GT(weighted, 49) << "a gauging of 60 % moves the curve little";
  gaugings[5].used = false;
  EXPECT_LT(FitCurve(gaugings, 1)->sseLn, 1e-12);
}

TEST(FitCurve, RefusesWhatGivesNoCurve) {
  const auto good = AlongCurve({{0, 0.01, 30, 2}}, 7, 3, 1);
  EXPECT_TRUE(FitCurve(good, 2));
  EXPECT_FALSE(FitCurve(good, 3)) << "ten gaugings or more";
  EXPECT_FALSE(FitCurve(good, 0));
  EXPECT_FALSE(FitCurve(good, 4));
  EXPECT_FALSE(FitCurve({}, 1));
  EXPECT_FALSE(FitCurve(GaugingsOf({{50, 1}, {50, 2}, {50, 3}, {50, 4}, {50, 5}}), 1));
  auto bad = good;
  bad[2].dischargeM3s = 0;
  EXPECT_TRUE(FitCurve(bad, 1).Failure().English().contains(QStringLiteral("gauging 3")));
  bad = good;
  bad[4].uncertaintyPercent = -1;
  EXPECT_TRUE(FitCurve(bad, 1).Failure().English().contains(QStringLiteral("gauging 5")));
  EXPECT_FALSE(JudgeCurve(good, {{0, 0.01, 70, 2}})) << "a gauging below the level of no flow";
}

TEST(FitCurve, TestsItsResiduals) {
  // One segment through two: the ends lie on one side, the middle on the other, and few signs change.
  const auto fit = FitCurve(AlongCurve(TwoSegments(), 40, 0.5, 2), 1);
  ASSERT_TRUE(fit);
  ASSERT_EQ(fit->tests.size(), 3U);
  EXPECT_EQ(fit->tests[1].name, QStringLiteral("runs"));
  EXPECT_FALSE(fit->tests[1].Passed());
  EXPECT_TRUE(fit->tests[2].Passed());
}

TEST(CurveBand, CoversTheCurveThatGaugingsCameFrom) {
  // 95 of 100 bands hold the true discharge at a level; fewer than 86 of 100 random sets would be a wonder.
  const std::vector<PowerSegment> segments = {{0, 0.01, 30, 1.7}};
  CurvePeriod truth;
  truth.segments = segments;
  int held = 0;
  constexpr int kSets = 100;
  for (unsigned seed = 1; seed <= kSets; ++seed) {
    CurvePeriod period;
    period.gaugings = AlongCurve(segments, 15, 5, seed);
    period.segments = FitCurve(period.gaugings, 1)->segments;
    const auto band = CurveBand(period).At(200);
    ASSERT_TRUE(band.has_value());
    const double discharge = CurveDischarge(truth, 200);
    held += band->lowerM3s <= discharge && discharge <= band->upperM3s ? 1 : 0;
  }
  EXPECT_GE(held, 86);
  EXPECT_LE(held, 99);
}

TEST(CurveBand, TakesTheStatedUncertaintyWhereGaugingsAreFew) {
  CurvePeriod period;
  period.segments = {{0, 0.01, 0, 2}};
  EXPECT_FALSE(CurveBand(period).At(100).has_value());
  period.uncertaintyPercent = 20;
  const auto band = CurveBand(period).At(100);
  EXPECT_NEAR(band->lowerM3s, 80, 1e-9);
  EXPECT_NEAR(band->upperM3s, 120, 1e-9);
  EXPECT_FALSE(CurveBand(period).At(-5).has_value());
}

}  // namespace
}  // namespace vesk
