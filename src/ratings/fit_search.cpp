// The search for the best segments. For given c and breakpoints the rest is a linear problem; what is left
// has many local minima, since each gauging that a breakpoint passes bends the sum of squares. NLopt's
// multi-level single-linkage with a low-discrepancy sequence starts local searches all over the space and
// draws no random numbers, so that the same gaugings give the same digits.
#include <Eigen/Dense>
#include <nlopt.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "ratings/curve_check.h"
#include "ratings/fit_problem.h"

namespace vesk {
namespace {

constexpr double kNever = std::numeric_limits<double>::infinity();
constexpr int kMostColumns = kMostSegments + 1;
using Square = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, 0, kMostColumns, kMostColumns>;
using Column = Eigen::Matrix<double, Eigen::Dynamic, 1, 0, kMostColumns, 1>;

std::size_t Place(int place) {
  return static_cast<std::size_t>(place);
}

/// What belongs to ln a and to each b at a level.
struct Basis {
  double values[kMostColumns] = {1, 0, 0, 0};
};

/// The linear problem for given c and breaks.
class LinearProblem {
 public:
  LinearProblem(const std::vector<FitPoint>& points, const FitCurveParameters& parameters)
      : points_(points), parameters_(parameters), columns_(parameters.segments + 1) {}

  /// False when a c does not lie below its segment.
  bool Form() {
    normal_.setZero(columns_, columns_);
    right_.setZero(columns_);
    double lnAtBreak[kMostSegments][2] = {};
    for (int k = 1; k < parameters_.segments; ++k) {
      const double at = parameters_.breakCm[static_cast<std::size_t>(k - 1)];
      for (int side = 0; side < 2; ++side) {
        const double above = at - parameters_.cCm[Place(k - 1 + side)];
        if (above <= 0) return false;
        lnAtBreak[k][side] = std::log(above);
      }
    }
    bases_.resize(points_.size());
    int place = 0;
    for (std::size_t i = 0; i < points_.size(); ++i) {
      const FitPoint& point = points_[i];
      while (place + 1 < parameters_.segments &&
             point.levelCm >= parameters_.breakCm[static_cast<std::size_t>(place)])
        ++place;
      const double above = point.levelCm - parameters_.cCm[static_cast<std::size_t>(place)];
      if (above <= 0) return false;
      Basis& basis = bases_[i];
      basis = {};
      for (int k = 0; k < place; ++k)
        basis.values[k + 1] = lnAtBreak[k + 1][0] - (k > 0 ? lnAtBreak[k][1] : 0);
      basis.values[place + 1] = std::log(above) - (place > 0 ? lnAtBreak[place][1] : 0);
      Add(basis, point);
    }
    normal_.triangularView<Eigen::StrictlyUpper>() =
        normal_.transpose().triangularView<Eigen::StrictlyUpper>();
    return true;
  }

  /// The best solution with every b within its bounds, and its sum of squares. The problem is convex: a free
  /// solution within the bounds is the best one, else some b stand at a bound.
  std::pair<Column, double> Solve() const {
    int free[kMostSegments] = {};
    const Column open = SolveWith(free);
    if (Within(open)) return {open, Sse(open)};
    std::pair<Column, double> best{open, kNever};
    const int segments = columns_ - 1;
    const int ways = segments == 1 ? 3 : segments == 2 ? 9 : 27;
    for (int way = 1; way < ways; ++way) {
      int state[kMostSegments] = {};
      for (int k = 0, rest = way; k < segments; ++k, rest /= 3) state[k] = rest % 3;
      const Column tried = SolveWith(state);
      if (!Within(tried)) continue;
      if (const double sse = Sse(tried); sse < best.second) best = {tried, sse};
    }
    return best;
  }

 private:
  void Add(const Basis& basis, const FitPoint& point) {
    for (int row = 0; row < columns_; ++row) {
      const double weighted = point.weight * basis.values[row];
      right_(row) += weighted * point.lnDischarge;
      for (int column = 0; column <= row; ++column) normal_(row, column) += weighted * basis.values[column];
    }
  }

  /// state a segment: 0: its b is free, 1: at the lower bound, 2: at the upper one.
  [[nodiscard]] Column SolveWith(const int (&state)[kMostSegments]) const {
    Square normal = normal_;
    Column right = right_;
    for (int k = 0; k + 1 < columns_; ++k) {
      if (state[k] == 0) continue;
      const double fixed = state[k] == 1 ? kLeastExponent : kMostExponent;
      right -= normal_.col(k + 1) * fixed;
    }
    for (int k = 0; k + 1 < columns_; ++k) {
      if (state[k] == 0) continue;
      normal.row(k + 1).setZero();
      normal.col(k + 1).setZero();
      normal(k + 1, k + 1) = 1;
      right(k + 1) = state[k] == 1 ? kLeastExponent : kMostExponent;
    }
    return normal.ldlt().solve(right);
  }

  [[nodiscard]] bool Within(const Column& solution) const {
    constexpr double kSlack = 1e-12;
    for (int k = 1; k < columns_; ++k) {
      if (!(solution(k) >= kLeastExponent - kSlack && solution(k) <= kMostExponent + kSlack)) return false;
    }
    return std::isfinite(solution(0));
  }

  [[nodiscard]] double Sse(const Column& solution) const {
    double sum = 0;
    for (std::size_t i = 0; i < points_.size(); ++i) {
      double residual = points_[i].lnDischarge;
      for (int k = 0; k < columns_; ++k) residual -= bases_[i].values[k] * solution(k);
      sum += points_[i].weight * residual * residual;
    }
    return sum;
  }

  const std::vector<FitPoint>& points_;
  const FitCurveParameters& parameters_;
  int columns_;
  Square normal_;
  Column right_;
  std::vector<Basis> bases_;
};

/// c and breakpoints as a point of the unit cube: of each segment the distance of its c from its lower end
/// (on a logarithmic scale), of each breakpoint its place among the gaugings, so that every segment keeps its
/// share of them.
class Cube {
 public:
  Cube(const std::vector<FitPoint>& points, int segments) : points_(points), segments_(segments) {
    range_ = points.back().levelCm - points.front().levelCm;
  }

  [[nodiscard]] unsigned Dimensions() const { return static_cast<unsigned>(2 * segments_ - 1); }

  [[nodiscard]] FitCurveParameters At(const std::vector<double>& cube) const {
    FitCurveParameters parameters;
    parameters.segments = segments_;
    double lower = points_.front().levelCm;
    double place = 0;
    for (int k = 0; k < segments_; ++k) {
      const auto own = static_cast<std::size_t>(k);
      if (k > 0) {
        const double first = place + kLeastInSegment - (k == 1 ? 1 : 0);
        const double last = static_cast<double>(points_.size()) - kLeastInSegment * (segments_ - k);
        place = first + cube[2 * own - 1] * std::max(last - first, 0.0);
        lower = LevelAt(place);
        parameters.breakCm[own - 1] = lower;
      }
      parameters.cCm[own] = lower - range_ * kLeast * std::pow(kMost / kLeast, cube[2 * own]);
    }
    return parameters;
  }

  /// The inverse, as far as the cube reaches.
  [[nodiscard]] std::vector<double> Of(const FitCurveParameters& parameters) const {
    std::vector<double> cube(Dimensions(), 0);
    double lower = points_.front().levelCm;
    double place = 0;
    for (int k = 0; k < segments_; ++k) {
      const auto own = static_cast<std::size_t>(k);
      if (k > 0) {
        lower = parameters.breakCm[own - 1];
        const double first = place + kLeastInSegment - (k == 1 ? 1 : 0);
        const double last = static_cast<double>(points_.size()) - kLeastInSegment * (segments_ - k);
        place = PlaceOf(lower);
        cube[2 * own - 1] = last > first ? std::clamp((place - first) / (last - first), 0.0, 1.0) : 0;
        place = std::clamp(place, first, std::max(first, last));
      }
      const double share = std::max((lower - parameters.cCm[own]) / range_, kLeast);
      cube[2 * own] = std::clamp(std::log(share / kLeast) / std::log(kMost / kLeast), 0.0, 1.0);
    }
    return cube;
  }

 private:
  static constexpr double kLeast = 1e-4;  ///< of the range of levels, between a segment's lower end and its c
  static constexpr double kMost = 3;

  [[nodiscard]] double LevelAt(double place) const {
    const double most = static_cast<double>(points_.size() - 1);
    const double at = std::clamp(place, 0.0, most);
    const auto index = static_cast<std::size_t>(at);
    if (index + 1 >= points_.size()) return points_.back().levelCm;
    const double share = at - static_cast<double>(index);
    return points_[index].levelCm + share * (points_[index + 1].levelCm - points_[index].levelCm);
  }

  [[nodiscard]] double PlaceOf(double levelCm) const {
    const auto upper = std::ranges::upper_bound(points_, levelCm, {}, &FitPoint::levelCm);
    if (upper == points_.begin()) return 0;
    if (upper == points_.end()) return static_cast<double>(points_.size() - 1);
    const FitPoint& before = *(upper - 1);
    return static_cast<double>(upper - points_.begin() - 1) +
           (levelCm - before.levelCm) / (upper->levelCm - before.levelCm);
  }

  const std::vector<FitPoint>& points_;
  int segments_;
  double range_ = 1;
};

struct Search {
  const std::vector<FitPoint>& points;
  const Cube& cube;

  static double Value(const std::vector<double>& at, std::vector<double>& /*gradient*/, void* data) {
    const auto* search = static_cast<const Search*>(data);
    FitCurveParameters parameters = search->cube.At(at);
    const double sse = SolveLinear(search->points, parameters);
    constexpr double kHuge = 1e30;  // the search wants a figure, however bad
    return std::isfinite(sse) ? sse : kHuge;
  }
};

nlopt::opt Optimiser(nlopt::algorithm algorithm, Search& search, int mostEvaluations, double tolerance) {
  nlopt::opt optimiser(algorithm, search.cube.Dimensions());
  optimiser.set_lower_bounds(0);
  optimiser.set_upper_bounds(1);
  optimiser.set_min_objective(&Search::Value, &search);
  optimiser.set_maxeval(mostEvaluations);
  optimiser.set_xtol_abs(tolerance);
  return optimiser;
}

/// Runs it from there; keeps the better of both ends. The library says "rounding limits it" by an exception.
void Run(nlopt::opt& optimiser, Search& search, std::vector<double>& best, double& bestValue) {
  std::vector<double> at = best;
  double value = bestValue;
  try {
    optimiser.optimize(at, value);
  } catch (const std::exception&) {
    std::vector<double> none;
    value = Search::Value(at, none, &search);
  }
  if (value < bestValue) {
    bestValue = value;
    best = at;
  }
}

void Polish(Search& search, std::vector<double>& best, double& bestValue) {
  constexpr int kRounds = 6;
  constexpr int kEvaluations = 4000;
  for (int round = 0; round < kRounds; ++round) {
    const double before = bestValue;
    nlopt::opt local =
        Optimiser(round % 2 == 0 ? nlopt::LN_SBPLX : nlopt::LN_NELDERMEAD, search, kEvaluations, 1e-13);
    local.set_initial_step(round < 2 ? 0.02 : 0.001);
    Run(local, search, best, bestValue);
    if (before - bestValue <= 1e-12 * before) break;
  }
}

/// The curve with one segment less, a segment parted in two: as good as it was, to begin with.
std::vector<FitCurveParameters> Parted(const FitCurveParameters& fewer, const std::vector<FitPoint>& points) {
  std::vector<FitCurveParameters> made;
  const std::size_t count = points.size();
  for (std::size_t eighth = 1; eighth < 8; ++eighth) {
    const double at = points[count * eighth / 8].levelCm;
    const int place = fewer.SegmentOf(at);
    FitCurveParameters parted = fewer;
    ++parted.segments;
    const auto own = static_cast<std::size_t>(place);
    for (std::size_t k = static_cast<std::size_t>(fewer.segments); k > own; --k) {
      parted.cCm[k] = parted.cCm[k - 1];
      parted.b[k] = parted.b[k - 1];
      if (k >= 2) parted.breakCm[k - 1] = parted.breakCm[k - 2];
    }
    parted.breakCm[own] = at;
    made.push_back(parted);
  }
  return made;
}

}  // namespace

double SolveLinear(const std::vector<FitPoint>& points, FitCurveParameters& parameters) {
  LinearProblem problem(points, parameters);
  if (!problem.Form()) return kNever;
  const auto [solution, sse] = problem.Solve();
  parameters.lnA = solution(0);
  for (int k = 0; k < parameters.segments; ++k)
    parameters.b[static_cast<std::size_t>(k)] = std::clamp(solution(k + 1), kLeastExponent, kMostExponent);
  return sse;
}

FitCurveParameters SearchCurve(const std::vector<FitPoint>& points, int segments) {
  constexpr int kEvaluations[kMostSegments] = {1000, 24'000, 90'000};
  const Cube cube(points, segments);
  Search search{points, cube};
  std::vector<double> none;
  std::vector<double> best(cube.Dimensions(), 0.5);
  double bestValue = Search::Value(best, none, &search);
  if (segments > 1) {
    for (const FitCurveParameters& start : Parted(SearchCurve(points, segments - 1), points)) {
      std::vector<double> at = cube.Of(start);
      double value = Search::Value(at, none, &search);
      nlopt::opt local = Optimiser(nlopt::LN_SBPLX, search, 1500, 1e-9);
      Run(local, search, at, value);
      if (value < bestValue) std::tie(best, bestValue) = std::pair(at, value);
    }
  }
  nlopt::opt global =
      Optimiser(nlopt::G_MLSL_LDS, search, kEvaluations[static_cast<std::size_t>(segments - 1)], 0);
  nlopt::opt local(nlopt::LN_SBPLX, cube.Dimensions());
  local.set_xtol_abs(1e-5);
  local.set_maxeval(400);
  global.set_local_optimizer(local);
  Run(global, search, best, bestValue);
  Polish(search, best, bestValue);
  FitCurveParameters parameters = cube.At(best);
  SolveLinear(points, parameters);
  return parameters;
}

}  // namespace vesk
