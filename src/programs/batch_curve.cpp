#include "programs/batch_curve.h"

#include <array>
#include <charconv>

namespace vesk {

QCommandLineOption CurveOption() {
  return {QStringLiteral("curve"), QStringLiteral("Rating curve that makes the discharges."),
          QStringLiteral("FILE")};
}

QByteArray FigureText(double value, int digits) {
  std::array<char, 48> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits);
  return {text.data(), end.ptr - text.data()};
}

Result<std::shared_ptr<const CurveSource>> CurveFor(const QString& file, const StationId& station) {
  if (file.isEmpty()) return std::shared_ptr<const CurveSource>();
  return OpenCurve(file, station.Number());
}

}  // namespace vesk
