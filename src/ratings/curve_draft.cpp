#include "ratings/curve_draft.h"

#include <algorithm>
#include <cmath>

namespace vesk {
namespace {

/// The segment through both nodes with that c; nothing when its exponent may not be.
std::optional<PowerSegment> SegmentThrough(const CurveNode& low, const CurveNode& high, double cCm) {
  const bool rises = low.levelCm > cCm && high.levelCm > low.levelCm && low.dischargeM3s > 0 &&
                     high.dischargeM3s > low.dischargeM3s;
  if (!rises) return std::nullopt;
  PowerSegment segment;
  segment.fromCm = low.levelCm;
  segment.cCm = cCm;
  segment.b =
      std::log(high.dischargeM3s / low.dischargeM3s) / std::log((high.levelCm - cCm) / (low.levelCm - cCm));
  segment.a = low.dischargeM3s / std::pow(low.levelCm - cCm, segment.b);
  const bool usable =
      segment.b >= kLeastExponent && segment.b <= kMostExponent && segment.a > 0 && std::isfinite(segment.a);
  return usable ? std::optional(segment) : std::nullopt;
}

}  // namespace

std::vector<CurveNode> NodesOf(const CurvePeriod& period) {
  std::vector<CurveNode> nodes;
  if (period.segments.empty() || period.lowestCm <= period.segments.front().cCm) return nodes;
  nodes.push_back({period.lowestCm, CurveDischarge(period, period.lowestCm)});
  for (std::size_t i = 1; i < period.segments.size(); ++i) {
    const double level = period.segments[i].fromCm;
    nodes.push_back({level, CurveDischarge(period, level)});
  }
  nodes.push_back({period.highestCm, CurveDischarge(period, period.highestCm)});
  const bool rising = std::ranges::is_sorted(
      nodes, [](const CurveNode& a, const CurveNode& b) { return a.levelCm < b.levelCm; });
  return rising ? nodes : std::vector<CurveNode>();
}

std::optional<CurvePeriod> WithNodeMoved(const CurvePeriod& period, std::size_t node, const CurveNode& to) {
  std::vector<CurveNode> nodes = NodesOf(period);
  if (node >= nodes.size()) return std::nullopt;
  const bool end = node == 0 || node + 1 == nodes.size();
  nodes[node] = {end ? nodes[node].levelCm : to.levelCm, to.dischargeM3s};
  CurvePeriod moved = period;
  for (std::size_t i = node == 0 ? 0 : node - 1; i <= node && i < moved.segments.size(); ++i) {
    const auto segment = SegmentThrough(nodes[i], nodes[i + 1], period.segments[i].cCm);
    if (!segment) return std::nullopt;
    const double from = i == 0 ? period.segments[0].fromCm : segment->fromCm;
    moved.segments[i] = *segment;
    moved.segments[i].fromCm = from;
  }
  return moved;
}

std::vector<double> TableLevels(const CurvePeriod& period, double stepCm) {
  std::vector<double> levels;
  const double first = std::ceil((period.lowestCm - period.belowCm) / stepCm - 1e-9);
  const double last = std::floor((period.highestCm + period.aboveCm) / stepCm + 1e-9);
  for (double at = first; at <= last; ++at) levels.push_back(at * stepCm);
  return levels;
}

std::vector<CurveTableLine> CurveTableOf(const CurvePeriod& period, const std::vector<double>& levels) {
  const CurveBand band(period);
  std::vector<CurveTableLine> lines;
  lines.reserve(levels.size());
  for (const double level : levels) {
    CurveTableLine line{level, DischargeAtLevel(period, level), {}};
    if (HasDischarge(line.discharge.flag)) line.band = band.At(level);
    lines.push_back(line);
  }
  return lines;
}

CurveDraft::CurveDraft(RatingCurve curve) : saved_(std::move(curve)) {
  DraftState first{saved_, 0, 0};
  if (first.curve.periods.empty()) first.curve.periods.emplace_back();
  saved_ = first.curve;
  steps_.push_back(std::move(first));
}

void CurveDraft::Change(const DraftState& next) {
  if (next == State()) return;
  steps_.resize(at_ + 1);
  steps_.push_back(next);
  ++at_;
}

void CurveDraft::ChangePeriod(const CurvePeriod& period, int segments) {
  DraftState next = State();
  next.curve.periods[next.period] = period;
  next.segments = segments;
  Change(next);
}

DraftState CurveDraft::WithFit(const CurveFit& fit) const {
  DraftState next = State();
  CurvePeriod& period = next.curve.periods[next.period];
  period.segments = fit.segments;
  period.points.clear();
  next.segments = static_cast<int>(fit.segments.size());
  const auto levelOf = [&period](const GaugingResidual& residual) {
    return *period.gaugings[static_cast<std::size_t>(residual.gauging)].levelCm;
  };
  if (!fit.residuals.empty()) {
    period.lowestCm = levelOf(fit.residuals.front());
    period.highestCm = levelOf(fit.residuals.back());
  }
  return next;
}

}  // namespace vesk
