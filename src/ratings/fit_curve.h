// Fitting power-law segments to gaugings, and what the gaugings say of a curve.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "platform/result.h"
#include "ratings/rating_curve.h"

namespace vesk {

inline constexpr int kMostSegments = 3;

enum class FitWeights {
  FromUncertainties,  ///< one over the square of a gauging's; one without gets the median of the others
  Equal,
};

/// A parameter as it was fitted. Its name: "a1", "c1_cm", "b1", "break1_cm", "a2" and so on. The break is the
/// level that parts segments 1 and 2.
struct FittedParameter {
  QString name;
  double value = 0;
  double standardError = 0;  ///< same unit; nothing free (a of an upper segment) by propagation
  double low95 = 0, high95 = 0;
};

/// How a gauging lies to the curve.
struct GaugingResidual {
  int gauging = 0;        ///< place among the gaugings given, from 0
  double lnResidual = 0;  ///< ln of measured over curve
  double percent = 0;     ///< 100 (measured / curve - 1)
};

/// Tests of the residuals in order of level, two-sided: statistic and the probability of one as large by
/// chance. Doubtful below 0.05.
struct ResidualTest {
  QString name;  ///< "signs", "runs", "bias"
  double statistic = 0;
  double probability = 1;
  [[nodiscard]] bool Passed() const { return probability >= 0.05; }
};

struct CurveFit {
  std::vector<PowerSegment> segments;
  int gaugings = 0;                 ///< n that were taken
  double sseLn = 0;                 ///< sum of squared ln residuals
  double weightedSseLn = 0;         ///< the same with weights of mean 1: what was made least
  double standardErrorPercent = 0;  ///< of the curve: 100 sqrt(weightedSseLn / (n - parameters))
  double aicc = 0;                  ///< the lower, the better
  std::vector<FittedParameter> parameters;
  std::vector<GaugingResidual> residuals;  ///< in order of level
  std::vector<ResidualTest> tests;
};

/// Least squares over the gaugings that are used and have a level. The same input gives the same digits.
/// Fails, naming the gauging, for a discharge that is not above 0; for fewer than parameters + 1 gaugings (a,
/// c and b of the lowest segment, then a breakpoint, c and b of each further one: 3, 6, 9); for levels that
/// are all equal; when no curve with b in 0.3 to 8 exists. segments: 1 to kMostSegments.
Result<CurveFit> FitCurve(const std::vector<Gauging>& gaugings, int segments,
                          FitWeights weights = FitWeights::FromUncertainties);

/// Fits of 1 to most segments as far as the gaugings suffice; the place of the lowest AICc is the proposal.
struct FitComparison {
  std::vector<CurveFit> fits;  ///< fits[i] has i + 1 segments
  int proposed = 0;            ///< segments, from 1; 0 without fits
};
Result<FitComparison> CompareFits(const std::vector<Gauging>& gaugings, int most = kMostSegments,
                                  FitWeights weights = FitWeights::FromUncertainties);

/// The same figures for segments that somebody set by hand: nothing is searched.
Result<CurveFit> JudgeCurve(const std::vector<Gauging>& gaugings, const std::vector<PowerSegment>& segments,
                            FitWeights weights = FitWeights::FromUncertainties);

/// Lower and upper end of the 95 % band of the mean curve.
struct BandAt {
  double lowerM3s = 0, upperM3s = 0;
};

/// The band of a period's curve: from its gaugings (linearised, Student's t), else from its stated
/// uncertainty; nothing of both: no band.
class CurveBand {
 public:
  explicit CurveBand(const CurvePeriod& period);
  /// levelCm: with its shift. Nothing without a band or without flow.
  [[nodiscard]] std::optional<BandAt> At(double levelCm) const;

 private:
  CurvePeriod period_;
  std::vector<double> covariance_;  ///< of the free parameters of ln Q, row by row; empty: none
  double student_ = 0;              ///< quantile
};

}  // namespace vesk
