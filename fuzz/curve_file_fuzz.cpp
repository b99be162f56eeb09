// Any bytes as a rating-curve file: either faults are named, or the curve is one that writes and reads back
// equal and whose discharge never falls while the level rises.
#include <QByteArray>

#include <cstdint>
#include <cstdlib>

#include "ratings/curve_check.h"
#include "ratings/curve_file.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  vesk::CurveText read = vesk::ReadCurveText(content);
  if (!read.faults.empty()) return 0;
  Expect(vesk::CheckCurve(read.curve).empty());
  for (const vesk::CurvePeriod& period : read.curve.periods) {
    constexpr int kSteps = 64;
    const double lowest = period.lowestCm - period.belowCm;
    const double step = (period.highestCm + period.aboveCm - lowest) / kSteps;
    double before = 0;
    for (int i = 0; i <= kSteps; ++i) {
      const double discharge = vesk::CurveDischarge(period, lowest + i * step);
      // Segments meet within a tolerance, and figures are binary.
      Expect(discharge >= before * (1 - 2 * vesk::kMeetingTolerance));
      before = discharge;
    }
  }
  if (read.curve.station.isEmpty()) read.curve.station = QStringLiteral("12345");
  const vesk::CurveText again = vesk::ReadCurveText(vesk::CurveFileText(read.curve));
  Expect(again.faults.empty() && again.curve == read.curve);
  return 0;
}
