#include "ratings/fit_curve.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>
#include <limits>

#include "ratings/fit_problem.h"

namespace vesk {
namespace {

constexpr Wording kFailed{u"Anahtar eğrisi bulunamadı", u"The rating curve could not be fitted"};
constexpr double kPercent = 100;

/// A value with its standard error and its interval, for a parameter that is not kept as a logarithm.
FittedParameter Linear(const QString& name, double value, double standardError, double student) {
  return {name, value, standardError, value - student * standardError, value + student * standardError};
}

FittedParameter FromLogarithm(const QString& name, double ln, double errorOfLn, double student) {
  return {name, std::exp(ln), std::exp(ln) * errorOfLn, std::exp(ln - student * errorOfLn),
          std::exp(ln + student * errorOfLn)};
}

std::vector<FittedParameter> ParametersWithErrors(const FitCurveParameters& parameters,
                                                  const std::vector<double>& covariance, double student) {
  const auto free = static_cast<std::size_t>(parameters.Free());
  const auto errorOf = [&](std::size_t place) {
    return std::sqrt(std::max(covariance[place * free + place], 0.0));
  };
  std::vector<FittedParameter> made;
  for (int k = 0; k < parameters.segments; ++k) {
    const auto own = static_cast<std::size_t>(k);
    const auto name = [k](const char* text) { return QString::fromLatin1(text).arg(k + 1); };
    const double errorOfLnA = std::sqrt(VarianceAlong(parameters.GradientOfLnA(k), covariance));
    made.push_back(FromLogarithm(name("a%1"), parameters.LnA(k), errorOfLnA, student));
    made.push_back(Linear(name("c%1_cm"), parameters.cCm[own], errorOf(3 * own + 1), student));
    made.push_back(Linear(name("b%1"), parameters.b[own], errorOf(3 * own + 2), student));
    if (k + 1 < parameters.segments)
      made.push_back(Linear(name("break%1_cm"), parameters.breakCm[own], errorOf(3 * own + 3), student));
  }
  return made;
}

/// Lower is better; the variance counts among the parameters. A perfect fit is as good as rounding lets it
/// be.
double Aicc(double sse, double count, double parameters) {
  constexpr double kRounding = 1e-24;
  const double k = parameters + 1;
  if (count - k - 1 <= 0) return std::numeric_limits<double>::infinity();
  return count * std::log(std::max(sse / count, kRounding)) + 2 * k + 2 * k * (k + 1) / (count - k - 1);
}

CurveFit Judge(const std::vector<FitPoint>& points, const FitCurveParameters& parameters) {
  CurveFit fit;
  fit.segments = parameters.Segments();
  fit.gaugings = static_cast<int>(points.size());
  for (const FitPoint& point : points) {
    const double residual = point.lnDischarge - parameters.LnDischarge(point.levelCm);
    fit.sseLn += residual * residual;
    fit.weightedSseLn += point.weight * residual * residual;
    fit.residuals.push_back({point.gauging, residual, kPercent * std::expm1(residual)});
  }
  const int freedom = fit.gaugings - parameters.Free();
  const double variance = fit.weightedSseLn / freedom;
  fit.standardErrorPercent = kPercent * std::sqrt(variance);
  fit.aicc = Aicc(fit.weightedSseLn, fit.gaugings, parameters.Free());
  fit.parameters =
      ParametersWithErrors(parameters, CovarianceOf(points, parameters, variance), Student95(freedom));
  fit.tests = TestResiduals(fit.residuals);
  return fit;
}

std::optional<Error> TooFew(std::size_t count, int segments) {
  static constexpr Wording kFew{u"%1 parça için en az %2 ölçüm beklenir; %3 var",
                                u"%2 gaugings or more are expected for %1 segment(s); there are %3"};
  static constexpr Wording kSegments{u"1 ile 3 arasında parça beklenir", u"1 to 3 segments are expected"};
  if (segments < 1 || segments > kMostSegments) return Error{kFailed, {}, kSegments};
  const std::size_t needed = 3 * static_cast<std::size_t>(segments) + 1;
  if (count >= needed) return std::nullopt;
  return Error{kFailed, {}, {kFew, segments, static_cast<int>(needed), static_cast<int>(count)}};
}

}  // namespace

std::vector<double> CovarianceOf(const std::vector<FitPoint>& points, const FitCurveParameters& parameters,
                                 double variance) {
  const Eigen::Index free = parameters.Free();
  Eigen::MatrixXd design(static_cast<Eigen::Index>(points.size()), free);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const std::vector<double> gradient = parameters.Gradient(points[i].levelCm);
    const double root = std::sqrt(points[i].weight);
    for (Eigen::Index k = 0; k < free; ++k)
      design(static_cast<Eigen::Index>(i), k) = root * gradient[static_cast<std::size_t>(k)];
  }
  // Columns of one size: levels above the sea and exponents differ by orders of magnitude.
  Eigen::VectorXd scale = design.colwise().norm();
  for (Eigen::Index k = 0; k < free; ++k) scale(k) = scale(k) > 0 ? scale(k) : 1;
  const Eigen::MatrixXd scaled = design * scale.cwiseInverse().asDiagonal();
  const Eigen::MatrixXd inverse = scaled.completeOrthogonalDecomposition().pseudoInverse();
  const Eigen::MatrixXd unscaled = scale.cwiseInverse().asDiagonal() * inverse;
  const Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor> covariance =
      variance * unscaled * unscaled.transpose();
  return {covariance.data(), covariance.data() + covariance.size()};
}

double VarianceAlong(const std::vector<double>& gradient, const std::vector<double>& covariance) {
  const std::size_t free = gradient.size();
  double sum = 0;
  for (std::size_t row = 0; row < free; ++row) {
    for (std::size_t column = 0; column < free; ++column)
      sum += gradient[row] * covariance[row * free + column] * gradient[column];
  }
  return std::max(sum, 0.0);
}

Result<CurveFit> FitCurve(const std::vector<Gauging>& gaugings, int segments, FitWeights weights) {
  const auto points = FitPointsOf(gaugings, weights);
  if (!points) return points.Failure();
  if (auto error = TooFew(points->size(), segments)) return *std::move(error);
  return Judge(*points, SearchCurve(*points, segments));
}

Result<FitComparison> CompareFits(const std::vector<Gauging>& gaugings, int most, FitWeights weights) {
  FitComparison comparison;
  for (int segments = 1; segments <= std::min(most, kMostSegments); ++segments) {
    auto fit = FitCurve(gaugings, segments, weights);
    if (!fit && segments == 1) return fit.Failure();
    if (!fit) break;  // too few gaugings for more
    comparison.fits.push_back(*std::move(fit));
  }
  const auto best = std::ranges::min_element(comparison.fits, {}, &CurveFit::aicc);
  comparison.proposed = static_cast<int>(best - comparison.fits.begin()) + 1;
  return comparison;
}

Result<CurveFit> JudgeCurve(const std::vector<Gauging>& gaugings, const std::vector<PowerSegment>& segments,
                            FitWeights weights) {
  static constexpr Wording kBelow{u"%1. ölçüm eğrinin sıfır akım seviyesinin altında",
                                  u"gauging %1 lies at or below the curve's level of no flow"};
  const auto points = FitPointsOf(gaugings, weights);
  if (!points) return points.Failure();
  if (auto error = TooFew(points->size(), static_cast<int>(segments.size()))) return *std::move(error);
  const FitCurveParameters parameters = ParametersOf(segments);
  for (const FitPoint& point : *points) {
    if (!std::isfinite(parameters.LnDischarge(point.levelCm)))
      return Error{kFailed, {}, {kBelow, point.gauging + 1}};
  }
  return Judge(*points, parameters);
}

CurveBand::CurveBand(const CurvePeriod& period) : period_(period) {
  if (period.segments.empty() || std::ssize(period.segments) > kMostSegments) return;
  const auto points = FitPointsOf(period.gaugings, FitWeights::FromUncertainties);
  if (!points || TooFew(points->size(), static_cast<int>(period.segments.size()))) return;
  const FitCurveParameters parameters = ParametersOf(period.segments);
  const int freedom = static_cast<int>(points->size()) - parameters.Free();
  const double sse = WeightedSse(*points, parameters);
  if (!std::isfinite(sse)) return;  // a gauging at or below the level of no flow
  covariance_ = CovarianceOf(*points, parameters, sse / freedom);
  student_ = Student95(freedom);
}

std::optional<BandAt> CurveBand::At(double levelCm) const {
  const double m3s = CurveDischarge(period_, levelCm);
  if (m3s <= 0) return std::nullopt;
  if (!covariance_.empty()) {
    const double error =
        std::sqrt(VarianceAlong(ParametersOf(period_.segments).Gradient(levelCm), covariance_));
    if (!std::isfinite(error)) return std::nullopt;
    return BandAt{m3s * std::exp(-student_ * error), m3s * std::exp(student_ * error)};
  }
  if (!period_.uncertaintyPercent) return std::nullopt;
  const double share = *period_.uncertaintyPercent / kPercent;
  return BandAt{std::max(m3s * (1 - share), 0.0), m3s * (1 + share)};
}

}  // namespace vesk
