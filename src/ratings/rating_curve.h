// A rating curve: which discharge belongs to a level, since when, how sure that is and how far beyond the
// gauged levels it may be used.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

#include "datafiles/discharge.h"
#include "datafiles/gauging.h"
#include "datafiles/reading.h"

namespace vesk {

/// Q = a (h - c)^b from its lower end up to the next segment's.
struct PowerSegment {
  double fromCm = 0;  ///< breakpoint to the segment below; of the lowest segment it says nothing
  double a = 0;       ///< m3/s at h - c = 1 cm; above 0
  double cCm = 0;     ///< level at which this segment would have no flow, cm
  double b = 0;       ///< 0.3 to 8

  bool operator==(const PowerSegment&) const = default;
};

struct CurvePoint {
  double levelCm = 0;
  double dischargeM3s = 0;  ///< 0 or above

  bool operator==(const CurvePoint&) const = default;
};

/// How the discharge runs between two points.
enum class Between : std::uint8_t {
  Linear,
  Logarithmic,  ///< ln Q over ln (h - c); next to a point without flow linearly
};

/// From `time` on, `shiftCm` is added to a level before the curve is read; linear in time up to the next
/// shift, constant behind the last, none before the first.
struct CurveShift {
  DateTime time{};
  double shiftCm = 0;

  bool operator==(const CurveShift&) const = default;
};

/// The curve of one time. Either segments or points.
struct CurvePeriod {
  std::optional<DateTime> from = {}, to = {};  ///< both minutes included; nothing: open
  std::vector<PowerSegment> segments = {};     ///< lowest first
  std::vector<CurvePoint> points = {};         ///< lowest first; two or more
  Between between = Between::Linear;
  double offsetCm = 0;                            ///< c of logarithmic points, cm
  double lowestCm = 0, highestCm = 0;             ///< gauged levels
  double belowCm = 0, aboveCm = 0;                ///< how far beyond them the curve may be used, 0 or above
  std::optional<double> uncertaintyPercent = {};  ///< at the 95 % level, where no gaugings tell it
  std::vector<CurveShift> shifts = {};            ///< in time order
  std::vector<Gauging> gaugings = {};             ///< that the curve came from

  bool operator==(const CurvePeriod&) const = default;
};

struct RatingCurve {
  QString station = {};  ///< its number
  QString name = {};
  QStringList remarks = {};
  std::vector<CurvePeriod> periods = {};  ///< in time order

  bool operator==(const RatingCurve&) const = default;
};

/// The period that holds at a time; null when there is none.
const CurvePeriod* PeriodAt(const RatingCurve& curve, DateTime time);

/// What is added to a level at that time, cm.
double ShiftAt(const CurvePeriod& period, DateTime time);

/// The curve at a level with its shift in it, cm, m3/s, without regard to how far it was gauged; 0 where
/// there is no flow.
double CurveDischarge(const CurvePeriod& period, double levelCm);

/// The level at which the flow ends, cm; nothing when the curve does not say.
std::optional<double> DryLevel(const CurvePeriod& period);

/// Discharge at a level with its shift in it, cm.
DischargeValue DischargeAtLevel(const CurvePeriod& period, double levelCm);

/// Discharge of a level, cm, as it was recorded at that time.
DischargeValue DischargeAt(const RatingCurve& curve, DateTime time, double levelCm);

}  // namespace vesk
