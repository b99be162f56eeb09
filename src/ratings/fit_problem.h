// The least-squares problem behind a fit: gaugings in order of level, and what the breakpoints and the c of
// the segments leave to be solved linearly.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "ratings/fit_curve.h"

namespace vesk {

inline constexpr int kLeastInSegment = 3;  ///< gaugings: fewer tell nothing of a segment's own c and b

/// A gauging as the fit sees it.
struct FitPoint {
  double levelCm = 0;
  double lnDischarge = 0;
  double weight = 1;  ///< mean 1 over all
  int gauging = 0;    ///< place among those given
};

/// The gaugings that count, in order of level, then discharge, so that their order does not change the
/// digits. Fails as FitCurve says, but for what the number of segments asks.
Result<std::vector<FitPoint>> FitPointsOf(const std::vector<Gauging>& gaugings, FitWeights weights);

/// A curve of connected segments by its free parameters.
struct FitCurveParameters {
  int segments = 1;
  double lnA = 0;                           ///< of the lowest segment
  std::array<double, kMostSegments> cCm{};  ///< a segment each
  std::array<double, kMostSegments> b{};
  std::array<double, kMostSegments - 1> breakCm{};

  [[nodiscard]] int Free() const { return 3 * segments; }
  [[nodiscard]] int SegmentOf(double levelCm) const;
  [[nodiscard]] double LnDischarge(double levelCm) const;
  /// Derivatives of the above by lnA, c1, b1, then break, c and b of each further segment.
  [[nodiscard]] std::vector<double> Gradient(double levelCm) const;
  /// ln a of segment `place` (from 0) and its derivatives.
  [[nodiscard]] double LnA(int place) const;
  [[nodiscard]] std::vector<double> GradientOfLnA(int place) const;
  [[nodiscard]] std::vector<PowerSegment> Segments() const;
};

/// Parameters of segments that meet; their own a above the lowest one is left out.
FitCurveParameters ParametersOf(const std::vector<PowerSegment>& segments);

double WeightedSse(const std::vector<FitPoint>& points, const FitCurveParameters& parameters);

/// The best lnA and b (kLeastExponent to kMostExponent) for the c and breaks that `parameters` has; its
/// weighted sum of squares, infinite where a c does not lie below its segment.
double SolveLinear(const std::vector<FitPoint>& points, FitCurveParameters& parameters);

/// The best parameters found over all c and breaks. Deterministic.
FitCurveParameters SearchCurve(const std::vector<FitPoint>& points, int segments);

/// Covariance of the free parameters, row by row: pseudo-inverse of the weighted normal matrix times the
/// variance.
std::vector<double> CovarianceOf(const std::vector<FitPoint>& points, const FitCurveParameters& parameters,
                                 double variance);

/// g' C g.
double VarianceAlong(const std::vector<double>& gradient, const std::vector<double>& covariance);

/// Signs, runs and bias of residuals in order of level.
std::vector<ResidualTest> TestResiduals(const std::vector<GaugingResidual>& residuals);

/// Two-sided 95 % quantile of Student's t.
double Student95(int degreesOfFreedom);

}  // namespace vesk
