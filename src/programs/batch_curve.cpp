#include "programs/batch_curve.h"

#include <array>
#include <charconv>
#include <utility>

namespace vesk {

QCommandLineOption CurveOption() {
  return {QStringLiteral("curve"),
          QStringLiteral(
              "Rating curve that makes the discharges. Without it, the one that the register has for the "
              "station, or none."),
          QStringLiteral("FILE")};
}

QCommandLineOption RegisterOption() {
  return {QStringLiteral("register"),
          QStringLiteral("Station register with the stations' rating curves and catchment areas."),
          QStringLiteral("FILE")};
}

QByteArray DischargeFigure(double m3s) {
  constexpr int kDigits = 6;
  std::array<char, 32> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), m3s, std::chars_format::general, kDigits);
  return {digits.data(), end.ptr - digits.data()};
}

CurveChoice::CurveChoice(const QCommandLineParser& parser)
    : file(parser.value(QStringLiteral("curve"))), registerPath(parser.value(QStringLiteral("register"))) {}

Result<CurveInUse> CurveFor(const CurveChoice& choice, const StationId& station) {
  CurveInUse used;
  QString file = choice.file;
  if (!file.isEmpty()) {
    auto curve = OpenCurve(file, station.Number());
    if (!curve) return curve.Failure();
    used.curve = *std::move(curve);
  }
  return used;
}

}  // namespace vesk
