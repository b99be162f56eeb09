#include "ratings/curve_check.h"

#include <cmath>
#include <utility>

#include "datafiles/dates.h"
#include "datafiles/gauging_fields.h"
#include "datafiles/numbers.h"

namespace vesk {
namespace {

constexpr double kMostLevelCm = 1e7;  // metres above the sea included
constexpr double kMostShiftCm = 2000;

bool IsLevel(double cm) {
  return std::isfinite(cm) && std::abs(cm) <= kMostLevelCm;
}

/// Faults of one period.
class PeriodCheck {
 public:
  PeriodCheck(const CurvePeriod& period, int place, std::vector<CurveFault>& faults)
      : period_(period), place_(place), faults_(faults) {}

  void Run() {
    CheckGauged();
    if (period_.segments.empty() == period_.points.empty()) {
      static constexpr Wording kOneOfTwo{u"ya parçalar ya da noktalar beklenir",
                                         u"either segments or points are expected"};
      Add(CurvePart::Period, 0, kOneOfTwo);
    }
    for (std::size_t i = 0; i < period_.segments.size(); ++i) CheckSegment(i);
    CheckPoints();
    CheckShifts();
    for (std::size_t i = 0; i < period_.gaugings.size(); ++i) CheckGauging(i);
  }

 private:
  void Add(CurvePart part, std::size_t place, Message what) {
    faults_.push_back({place_, part, static_cast<int>(place), std::move(what)});
  }

  void CheckGauged() {
    static constexpr Wording kLevels{
        u"ölçülen en düşük ve en yüksek seviye (cm) beklenir, düşük olan yüksekten büyük olamaz",
        u"a lowest and a highest gauged level (cm) are expected, the lowest not above the highest"};
    static constexpr Wording kBeyond{u"uzatma sıfır ya da büyük olmalıdır (cm)",
                                     u"an extrapolation of 0 or more is expected (cm)"};
    static constexpr Wording kUncertainty{u"belirsizlik sıfırdan büyük ve en çok 200 olmalıdır (%)",
                                          u"an uncertainty above 0 and up to 200 is expected (%)"};
    if (!IsLevel(period_.lowestCm) || !IsLevel(period_.highestCm) || period_.lowestCm > period_.highestCm)
      Add(CurvePart::Gauged, 0, kLevels);
    const auto allowed = [](double cm) { return IsLevel(cm) && cm >= 0; };
    if (!allowed(period_.belowCm) || !allowed(period_.aboveCm)) Add(CurvePart::Gauged, 0, kBeyond);
    const auto& percent = period_.uncertaintyPercent;
    constexpr double kMostPercent = 200;
    if (percent && !(*percent > 0 && *percent <= kMostPercent)) Add(CurvePart::Gauged, 0, kUncertainty);
  }

  void CheckSegment(std::size_t i) {
    static constexpr Wording kFactor{u"a sıfırdan büyük olmalıdır", u"an a above 0 is expected"};
    static constexpr Wording kExponent{u"b 0,3 ile 8 arasında olmalıdır", u"a b of 0.3 to 8 is expected"};
    static constexpr Wording kOffset{u"c bir seviye (cm) olmalı ve parçanın altında kalmalıdır",
                                     u"a c (cm) below its segment is expected"};
    const PowerSegment& segment = period_.segments[i];
    if (!std::isfinite(segment.a) || segment.a <= 0) return Add(CurvePart::Segment, i, kFactor);
    if (!(segment.b >= kLeastExponent && segment.b <= kMostExponent))
      return Add(CurvePart::Segment, i, kExponent);
    const double lower = i == 0 ? period_.highestCm : segment.fromCm;
    if (!IsLevel(segment.cCm) || !(segment.cCm < lower)) return Add(CurvePart::Segment, i, kOffset);
    if (i > 0) CheckBreak(i);
  }

  void CheckBreak(std::size_t i) {
    static constexpr Wording kOrder{u"kırılma noktaları artan sırada olmalıdır",
                                    u"breakpoints in rising order are expected"};
    static constexpr Wording kMeet{
        u"parçalar kırılma noktasında birleşmelidir; alttaki %1, üstteki %2 m3/s verir",
        u"segments that meet at the breakpoint are expected; the lower one gives %1, the upper one %2 m3/s"};
    const PowerSegment& lower = period_.segments[i - 1];
    const PowerSegment& upper = period_.segments[i];
    if (!IsLevel(upper.fromCm) || (i > 1 && upper.fromCm <= lower.fromCm) || upper.fromCm <= lower.cCm)
      return Add(CurvePart::Segment, i, kOrder);
    const double below = lower.a * std::pow(upper.fromCm - lower.cCm, lower.b);
    const double above = upper.a * std::pow(upper.fromCm - upper.cCm, upper.b);
    if (!std::isfinite(below) || !std::isfinite(above) || std::abs(above / below - 1) > kMeetingTolerance)
      Add(CurvePart::Segment, i, {kMeet, NumberText(below), NumberText(above)});
  }

  void CheckPoints() {
    static constexpr Wording kTwo{u"en az iki nokta beklenir", u"two points or more are expected"};
    if (period_.points.size() == 1) Add(CurvePart::Point, 0, kTwo);
    for (std::size_t i = 0; i < period_.points.size(); ++i) CheckPoint(i);
  }

  void CheckPoint(std::size_t i) {
    static constexpr Wording kNegative{u"sıfır ya da sıfırdan büyük bir debi beklenir (m3/s)",
                                       u"a discharge of 0 or more is expected (m3/s)"};
    static constexpr Wording kLevels{u"artan seviyeler beklenir (cm)", u"rising levels are expected (cm)"};
    static constexpr Wording kFalling{u"seviye yükselirken debi azalamaz",
                                      u"a discharge that does not fall while the level rises is expected"};
    static constexpr Wording kOffset{u"c (%1 cm), debisi olan her noktanın altında olmalıdır",
                                     u"a c (%1 cm) below every point with a discharge is expected"};
    const CurvePoint& point = period_.points[i];
    if (!std::isfinite(point.dischargeM3s) || point.dischargeM3s < 0)
      return Add(CurvePart::Point, i, kNegative);
    if (!IsLevel(point.levelCm) || (i > 0 && point.levelCm <= period_.points[i - 1].levelCm))
      return Add(CurvePart::Point, i, kLevels);
    if (i > 0 && point.dischargeM3s < period_.points[i - 1].dischargeM3s)
      return Add(CurvePart::Point, i, kFalling);
    if (period_.between == Between::Logarithmic && point.dischargeM3s > 0 &&
        !(point.levelCm > period_.offsetCm))
      Add(CurvePart::Point, i, {kOffset, NumberText(period_.offsetCm)});
  }

  void CheckShifts() {
    static constexpr Wording kSize{u"en çok 2000 cm'lik bir kayma beklenir",
                                   u"a shift of at most 2000 cm is expected"};
    static constexpr Wording kOrder{u"kaymalar artan zaman sırasında olmalıdır",
                                    u"shifts in rising order of time are expected"};
    for (std::size_t i = 0; i < period_.shifts.size(); ++i) {
      const CurveShift& shift = period_.shifts[i];
      if (!(std::abs(shift.shiftCm) <= kMostShiftCm)) Add(CurvePart::Shift, i, kSize);
      if (i > 0 && shift.time <= period_.shifts[i - 1].time) Add(CurvePart::Shift, i, kOrder);
    }
  }

  void CheckGauging(std::size_t i) {
    if (Message fault = GaugingFault(period_.gaugings[i]); !fault.IsEmpty())
      Add(CurvePart::Gauging, i, std::move(fault));
  }

  const CurvePeriod& period_;
  int place_;
  std::vector<CurveFault>& faults_;
};

/// Periods that end before they begin, and those that do not stand in order of time or overlap.
void CheckTimes(const RatingCurve& curve, std::vector<CurveFault>& faults) {
  static constexpr Wording kEnds{u"dönemin bitişi başlangıcından önce olamaz",
                                 u"a period that does not end before it begins is expected"};
  static constexpr Wording kTwice{
      u"dönemler zaman sırasında olmalı ve örtüşmemelidir; bir önceki dönem %1 tarihine kadar geçerli",
      u"periods in order of time that do not overlap are expected; the one before holds until %1"};
  static constexpr Wording kOpen{u"süresiz", u"further notice"};
  for (std::size_t i = 0; i < curve.periods.size(); ++i) {
    const CurvePeriod& period = curve.periods[i];
    const int place = static_cast<int>(i);
    if (period.from && period.to && *period.to < *period.from)
      faults.push_back({place, CurvePart::Period, 0, kEnds});
    if (i == 0) continue;
    const auto& before = curve.periods[i - 1].to;
    if (before && period.from && *before < *period.from) continue;
    const Message until = before ? Message::Verbatim(DateTimeText(*before)) : Message(kOpen);
    faults.push_back({place, CurvePart::Period, 0, {kTwice, until}});
  }
}

}  // namespace

std::vector<CurveFault> CheckCurve(const RatingCurve& curve) {
  static constexpr Wording kNone{u"en az bir dönem beklenir", u"at least one period is expected"};
  std::vector<CurveFault> faults;
  if (curve.periods.empty()) faults.push_back({-1, CurvePart::Whole, 0, kNone});
  CheckTimes(curve, faults);
  for (std::size_t i = 0; i < curve.periods.size(); ++i)
    PeriodCheck(curve.periods[i], static_cast<int>(i), faults).Run();
  return faults;
}

}  // namespace vesk
