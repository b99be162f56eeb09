#include "programs/batch_curve.h"

#include <array>
#include <charconv>

namespace vesk {

QCommandLineOption CurveOption() {
  return {QStringLiteral("curve"), QStringLiteral("Rating curve that makes the discharges."),
          QStringLiteral("FILE")};
}

QByteArray DischargeFigure(double m3s) {
  constexpr int kDigits = 6;
  std::array<char, 32> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), m3s, std::chars_format::general, kDigits);
  return {digits.data(), end.ptr - digits.data()};
}

CurveChoice::CurveChoice(const QCommandLineParser& parser) : file(parser.value(QStringLiteral("curve"))) {}

Result<std::shared_ptr<const CurveSource>> CurveFor(const CurveChoice& choice, const StationId& station) {
  if (!choice.Asked()) return std::shared_ptr<const CurveSource>();
  return OpenCurve(choice.file, station.Number());
}

}  // namespace vesk
