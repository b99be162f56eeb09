#include "ratings/rating_curve.h"

#include <algorithm>
#include <cmath>

namespace vesk {
namespace {

double SegmentDischarge(const PowerSegment& segment, double levelCm) {
  const double aboveC = levelCm - segment.cCm;
  return aboveC > 0 ? segment.a * std::pow(aboveC, segment.b) : 0;
}

double SegmentsDischarge(const std::vector<PowerSegment>& segments, double levelCm) {
  std::size_t place = segments.size() - 1;
  while (place > 0 && levelCm < segments[place].fromCm) --place;
  return SegmentDischarge(segments[place], levelCm);
}

/// Between two points, or on the line through them beyond.
double LineDischarge(const CurvePoint& one, const CurvePoint& other, double levelCm) {
  const double share = (levelCm - one.levelCm) / (other.levelCm - one.levelCm);
  return one.dischargeM3s + share * (other.dischargeM3s - one.dischargeM3s);
}

double PowerDischarge(const CurvePoint& one, const CurvePoint& other, double offsetCm, double levelCm) {
  if (levelCm <= offsetCm) return 0;
  const double lower = std::log(one.levelCm - offsetCm);
  const double share = (std::log(levelCm - offsetCm) - lower) / (std::log(other.levelCm - offsetCm) - lower);
  return one.dischargeM3s * std::pow(other.dischargeM3s / one.dischargeM3s, share);
}

double PointsDischarge(const CurvePeriod& period, double levelCm) {
  const std::vector<CurvePoint>& points = period.points;
  auto upper = std::lower_bound(points.begin(), points.end(), levelCm,
                                [](const CurvePoint& point, double cm) { return point.levelCm < cm; });
  if (upper != points.end() && upper->levelCm == levelCm) return upper->dischargeM3s;
  upper = std::clamp(upper, points.begin() + 1, points.end() - 1);
  const CurvePoint& lower = *(upper - 1);
  const bool power =
      period.between == Between::Logarithmic && lower.dischargeM3s > 0 && lower.levelCm > period.offsetCm;
  const double discharge =
      power ? PowerDischarge(lower, *upper, period.offsetCm, levelCm) : LineDischarge(lower, *upper, levelCm);
  return std::max(discharge, 0.0);
}

}  // namespace

const CurvePeriod* PeriodAt(const RatingCurve& curve, DateTime time) {
  for (const CurvePeriod& period : curve.periods) {
    if ((!period.from || *period.from <= time) && (!period.to || time <= *period.to)) return &period;
  }
  return nullptr;
}

double ShiftAt(const CurvePeriod& period, DateTime time) {
  const std::vector<CurveShift>& shifts = period.shifts;
  const auto next =
      std::upper_bound(shifts.begin(), shifts.end(), time,
                       [](DateTime moment, const CurveShift& shift) { return moment < shift.time; });
  if (next == shifts.begin()) return 0;
  const CurveShift& before = *(next - 1);
  if (next == shifts.end()) return before.shiftCm;
  const auto span = static_cast<double>((next->time - before.time).count());
  const auto passed = static_cast<double>((time - before.time).count());
  return before.shiftCm + (next->shiftCm - before.shiftCm) * passed / span;
}

double CurveDischarge(const CurvePeriod& period, double levelCm) {
  if (!period.segments.empty()) return SegmentsDischarge(period.segments, levelCm);
  return period.points.size() < 2 ? 0 : PointsDischarge(period, levelCm);
}

std::optional<double> DryLevel(const CurvePeriod& period) {
  if (!period.segments.empty()) return period.segments.front().cCm;
  // The highest of the points without flow.
  std::optional<double> dry;
  for (const CurvePoint& point : period.points) {
    if (point.dischargeM3s <= 0) dry = point.levelCm;
  }
  if (!dry && period.between == Between::Logarithmic && !period.points.empty()) dry = period.offsetCm;
  return dry;
}

DischargeValue DischargeAtLevel(const CurvePeriod& period, double levelCm) {
  const std::optional<double> dry = DryLevel(period);
  if (dry && levelCm <= *dry) return {0, DischargeFlag::Dry};
  if (levelCm < period.lowestCm - period.belowCm) return {0, DischargeFlag::TooLow};
  if (levelCm > period.highestCm + period.aboveCm) return {0, DischargeFlag::TooHigh};
  const double m3s = CurveDischarge(period, levelCm);
  if (levelCm < period.lowestCm) return {m3s, DischargeFlag::ExtrapolatedBelow};
  if (levelCm > period.highestCm) return {m3s, DischargeFlag::ExtrapolatedAbove};
  return {m3s, DischargeFlag::None};
}

DischargeValue DischargeAt(const RatingCurve& curve, DateTime time, double levelCm) {
  const CurvePeriod* period = PeriodAt(curve, time);
  if (period == nullptr) return {0, DischargeFlag::NoPeriod};
  return DischargeAtLevel(*period, levelCm + ShiftAt(*period, time));
}

}  // namespace vesk
