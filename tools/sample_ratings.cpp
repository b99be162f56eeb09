#include "tools/sample_ratings.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/whole_file.h"
#include "ratings/curve_file.h"
#include "ratings/gaugings_csv.h"
#include "tools/sample_data.h"

namespace vesk::sample {
namespace {

constexpr double kBreakCm = 260;

/// Two segments that meet at kBreakCm.
std::vector<PowerSegment> Segments() {
  PowerSegment lower{0, 0.0021, 118, 1.86};
  PowerSegment upper{kBreakCm, 0, 160, 1.52};
  upper.a = lower.a * std::pow(kBreakCm - lower.cCm, lower.b) / std::pow(kBreakCm - upper.cCm, upper.b);
  return {lower, upper};
}

/// Three significant digits, as a party notes them.
double AsNoted(double value) {
  const double scale = std::pow(10.0, 2 - std::floor(std::log10(value)));
  return std::round(value * scale) / scale;
}

}  // namespace

std::vector<Gauging> SampleGaugings() {
  constexpr std::array kLevelsCm = {152, 161, 141, 178, 186, 171, 203, 219, 158, 238, 251, 196,
                                    264, 282, 166, 305, 331, 212, 352, 378, 245, 404, 431, 462};
  constexpr std::array kOffPercent = {2.1,  -3.4, 4.0, -1.2, 2.8, 0.6, -2.2, 3.1,  -4.4, 1.5, -0.7, 2.0,
                                      -1.9, 0.9,  3.7, -2.6, 1.1, 0.4, 2.3,  -1.4, -0.3, 1.8, -2.9, 0.5};
  CurvePeriod period;
  period.segments = Segments();
  std::vector<Gauging> gaugings;
  for (std::size_t i = 0; i < kLevelsCm.size(); ++i) {
    Gauging gauging;
    gauging.time = At(2022, 10, 12, 10) + std::chrono::days(29 * static_cast<int>(i)) +
                   std::chrono::minutes(35 * static_cast<int>(i % 7));
    gauging.levelCm = kLevelsCm[i];
    gauging.dischargeM3s = AsNoted(CurveDischarge(period, kLevelsCm[i]) * (1 + kOffPercent[i] / 100));
    gauging.uncertaintyPercent = kLevelsCm[i] < 300 ? 5 : 8;
    gauging.method = kLevelsCm[i] < 200 ? QStringLiteral("wading") : QStringLiteral("ADCP");
    gauging.party = i % 2 == 0 ? QStringLiteral("A. Yılmaz") : QStringLiteral("M. Kaya");
    gaugings.push_back(gauging);
  }
  return gaugings;
}

RatingCurve SampleCurve() {
  RatingCurve curve;
  curve.station = QStringLiteral("12002");
  curve.name = QStringLiteral("Büyükçay - Göktepe Köprüsü");
  CurvePeriod period;
  period.from = At(2022, 10, 1);
  period.segments = Segments();
  period.gaugings = SampleGaugings();
  const auto [lowest, highest] =
      std::ranges::minmax(period.gaugings, {}, [](const Gauging& gauging) { return *gauging.levelCm; });
  period.lowestCm = *lowest.levelCm;
  period.highestCm = *highest.levelCm;
  period.belowCm = 10;
  period.aboveCm = 60;
  curve.periods = {period};
  return curve;
}

Result<QStringList> WriteSampleRatings(const QString& folder) {
  const QStringList names = {QStringLiteral("E12002.dat"), QStringLiteral("gaugings-12002.csv")};
  const QDir directory(folder);
  if (const Status written = WriteCurveFile(directory.filePath(names[0]), SampleCurve()); !written)
    return written.Failure();
  const Wording failed{u"Örnek ölçümler yazılamadı", u"The sample gaugings could not be written"};
  if (const Status written =
          WriteWholeFile(directory.filePath(names[1]), GaugingsCsv(SampleGaugings()), failed);
      !written)
    return written.Failure();
  return names;
}

}  // namespace vesk::sample
