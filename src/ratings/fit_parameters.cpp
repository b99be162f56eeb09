// A curve of connected segments and its derivatives.
#include <cmath>

#include "ratings/fit_problem.h"

namespace vesk {
namespace {

std::size_t At(int place) {
  return static_cast<std::size_t>(place);
}

/// Places of a segment's own parameters among the free ones.
struct Places {
  std::size_t breakCm, cCm, b;
};
Places PlacesOf(int segment) {
  const std::size_t first = 3 * At(segment);
  return {first, first + 1, first + 2};
}

}  // namespace

int FitCurveParameters::SegmentOf(double levelCm) const {
  int place = segments - 1;
  while (place > 0 && levelCm < breakCm[At(place - 1)]) --place;
  return place;
}

double FitCurveParameters::LnA(int place) const {
  double value = lnA;
  for (int k = 1; k <= place; ++k) {
    const double at = breakCm[At(k - 1)];
    value += b[At(k - 1)] * std::log(at - cCm[At(k - 1)]) - b[At(k)] * std::log(at - cCm[At(k)]);
  }
  return value;
}

std::vector<double> FitCurveParameters::GradientOfLnA(int place) const {
  std::vector<double> gradient(At(Free()), 0);
  gradient[0] = 1;
  for (int k = 1; k <= place; ++k) {
    const double lower = breakCm[At(k - 1)] - cCm[At(k - 1)];
    const double upper = breakCm[At(k - 1)] - cCm[At(k)];
    const Places below = PlacesOf(k - 1);
    const Places own = PlacesOf(k);
    gradient[below.b] += std::log(lower);
    gradient[below.cCm] -= b[At(k - 1)] / lower;
    gradient[own.breakCm] += b[At(k - 1)] / lower - b[At(k)] / upper;
    gradient[own.cCm] += b[At(k)] / upper;
    gradient[own.b] -= std::log(upper);
  }
  return gradient;
}

double FitCurveParameters::LnDischarge(double levelCm) const {
  const int place = SegmentOf(levelCm);
  return LnA(place) + b[At(place)] * std::log(levelCm - cCm[At(place)]);
}

std::vector<double> FitCurveParameters::Gradient(double levelCm) const {
  const int place = SegmentOf(levelCm);
  std::vector<double> gradient = GradientOfLnA(place);
  const Places own = PlacesOf(place);
  gradient[own.b] += std::log(levelCm - cCm[At(place)]);
  gradient[own.cCm] -= b[At(place)] / (levelCm - cCm[At(place)]);
  return gradient;
}

std::vector<PowerSegment> FitCurveParameters::Segments() const {
  std::vector<PowerSegment> made;
  for (int k = 0; k < segments; ++k) {
    made.push_back({k == 0 ? 0 : breakCm[At(k - 1)], std::exp(LnA(k)), cCm[At(k)], b[At(k)]});
  }
  return made;
}

FitCurveParameters ParametersOf(const std::vector<PowerSegment>& segments) {
  FitCurveParameters parameters;
  parameters.segments = static_cast<int>(segments.size());
  parameters.lnA = std::log(segments.front().a);
  for (std::size_t k = 0; k < segments.size(); ++k) {
    parameters.cCm[k] = segments[k].cCm;
    parameters.b[k] = segments[k].b;
    if (k > 0) parameters.breakCm[k - 1] = segments[k].fromCm;
  }
  return parameters;
}

double WeightedSse(const std::vector<FitPoint>& points, const FitCurveParameters& parameters) {
  double sum = 0;
  for (const FitPoint& point : points) {
    const double residual = point.lnDischarge - parameters.LnDischarge(point.levelCm);
    sum += point.weight * residual * residual;
  }
  return sum;
}

}  // namespace vesk
