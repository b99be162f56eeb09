// Tests of the residuals of a curve, and Student's quantile.
#include <gsl/gsl_cdf.h>

#include <algorithm>
#include <cmath>

#include "ratings/fit_problem.h"

namespace vesk {
namespace {

/// Gaugings above and below the curve: as many of each, or the curve lies to one side.
ResidualTest SignTest(const std::vector<GaugingResidual>& residuals) {
  unsigned above = 0;
  unsigned count = 0;
  for (const GaugingResidual& one : residuals) {
    if (one.lnResidual == 0) continue;
    ++count;
    above += one.lnResidual > 0 ? 1 : 0;
  }
  ResidualTest test{QStringLiteral("signs"), 0, 1};
  if (count == 0) return test;
  const double off = std::max(std::abs(above - count / 2.0) - 0.5, 0.0);
  test.statistic = off / (0.5 * std::sqrt(count));
  test.probability = std::min(1.0, 2 * gsl_cdf_binomial_P(std::min(above, count - above), 0.5, count));
  return test;
}

/// Changes of sign in order of level: half the neighbours, or the curve has another shape than the gaugings.
ResidualTest RunTest(const std::vector<GaugingResidual>& residuals) {
  ResidualTest test{QStringLiteral("runs"), 0, 1};
  int changes = 0;
  for (std::size_t i = 1; i < residuals.size(); ++i)
    changes += (residuals[i].lnResidual > 0) != (residuals[i - 1].lnResidual > 0) ? 1 : 0;
  const auto pairs = static_cast<double>(residuals.size()) - 1;
  if (pairs < 1) return test;
  const double off = std::max(std::abs(changes - pairs / 2) - 0.5, 0.0);
  test.statistic = off / (0.5 * std::sqrt(pairs));
  test.probability = 2 * gsl_cdf_ugaussian_Q(test.statistic);
  return test;
}

/// The mean deviation against its own standard error.
ResidualTest BiasTest(const std::vector<GaugingResidual>& residuals) {
  ResidualTest test{QStringLiteral("bias"), 0, 1};
  const auto count = static_cast<double>(residuals.size());
  if (count < 2) return test;
  double mean = 0;
  for (const GaugingResidual& one : residuals) mean += one.percent / count;
  double squares = 0;
  for (const GaugingResidual& one : residuals) squares += (one.percent - mean) * (one.percent - mean);
  const double error = std::sqrt(squares / (count - 1) / count);
  constexpr double kNothing = 1e-9;  // percent: gaugings that lie on the curve
  if (error < kNothing) return test;
  test.statistic = std::abs(mean) / error;
  test.probability = 2 * gsl_cdf_tdist_Q(test.statistic, count - 1);
  return test;
}

}  // namespace

std::vector<ResidualTest> TestResiduals(const std::vector<GaugingResidual>& residuals) {
  return {SignTest(residuals), RunTest(residuals), BiasTest(residuals)};
}

double Student95(int degreesOfFreedom) {
  constexpr double kUpper = 0.975;
  return gsl_cdf_tdist_Pinv(kUpper, degreesOfFreedom);
}

}  // namespace vesk
