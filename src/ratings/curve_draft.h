// A rating curve while somebody works on it: every step can be taken back.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ratings/curve_check.h"
#include "ratings/fit_curve.h"
#include "ratings/rating_curve.h"

namespace vesk {

/// A point that a power-law period runs through: its lowest gauged level, each breakpoint, its highest one.
struct CurveNode {
  double levelCm = 0;
  double dischargeM3s = 0;
};

/// segments + 1 nodes, lowest first; none of a period of points, or one whose lowest level is not above c.
std::vector<CurveNode> NodesOf(const CurvePeriod& period);

/// The period with that node (its place, from 0) somewhere else: the exponents beside it follow, every c
/// stays. The first and the last node keep their levels. Nothing where no curve can run so: levels out of
/// order or not above c, a discharge that does not rise, an exponent outside 0.3 to 8.
std::optional<CurvePeriod> WithNodeMoved(const CurvePeriod& period, std::size_t node, const CurveNode& to);

/// A line of the curve's table.
struct CurveTableLine {
  double levelCm = 0;
  DischargeValue discharge;
  std::optional<BandAt> band = {};
};
/// Levels that have a discharge, at whole multiples of the step, cm, above 0.
std::vector<double> TableLevels(const CurvePeriod& period, double stepCm);
std::vector<CurveTableLine> CurveTableOf(const CurvePeriod& period, const std::vector<double>& levels);

/// What is worked on.
struct DraftState {
  RatingCurve curve;
  std::size_t period = 0;  ///< the one at hand
  int segments = 0;        ///< the fit that made it; 0: set by hand, or from a file
  bool operator==(const DraftState&) const = default;
};

class CurveDraft {
 public:
  /// A curve without a period gets an empty one.
  explicit CurveDraft(RatingCurve curve = {});

  [[nodiscard]] const DraftState& State() const { return steps_[at_]; }
  [[nodiscard]] const RatingCurve& Curve() const { return State().curve; }
  [[nodiscard]] const CurvePeriod& Period() const { return Curve().periods[State().period]; }

  /// Goes on with another state; one step to be taken back. Nothing happens when it is the same.
  void Change(const DraftState& next);
  /// The same, the period at hand replaced. segments: as in DraftState.
  void ChangePeriod(const CurvePeriod& period, int segments = 0);
  /// Goes on without a step of its own: what follows by itself from the last one.
  void Follow(const DraftState& next) { steps_[at_] = next; }
  /// The period with the segments of a fit and the levels that it was gauged over.
  [[nodiscard]] DraftState WithFit(const CurveFit& fit) const;

  [[nodiscard]] bool CanUndo() const { return at_ > 0; }
  [[nodiscard]] bool CanRedo() const { return at_ + 1 < steps_.size(); }
  void Undo() { at_ -= CanUndo() ? 1U : 0U; }
  void Redo() { at_ += CanRedo() ? 1U : 0U; }

  void MarkSaved() { saved_ = Curve(); }
  [[nodiscard]] bool IsSaved() const { return saved_ == Curve(); }

 private:
  std::vector<DraftState> steps_;
  std::size_t at_ = 0;
  RatingCurve saved_;
};

}  // namespace vesk
