// What makes a rating curve unusable.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/wording.h"
#include "ratings/rating_curve.h"

namespace vesk {

inline constexpr double kLeastExponent = 0.3;
inline constexpr double kMostExponent = 8;
/// Segments meet when their discharges at the breakpoint differ by no more than this share: what is written
/// with four digits still does.
inline constexpr double kMeetingTolerance = 0.005;

enum class CurvePart : std::uint8_t { Whole, Period, Gauged, Segment, Point, Shift, Gauging };

struct CurveFault {
  int period = -1;  ///< place among the periods, from 0; -1: of the whole curve
  CurvePart part = CurvePart::Whole;
  int place = 0;  ///< of the segment, point, shift or gauging, from 0
  Message what;   ///< what is wrong and what was expected
};

/// Everything that is wrong, in order of place. A curve with a fault gives no discharge to anybody.
std::vector<CurveFault> CheckCurve(const RatingCurve& curve);

}  // namespace vesk
