#include "programs/batch_curve.h"

#include <array>
#include <charconv>

#include "stations/station_curve.h"

namespace vesk {

QCommandLineOption CurveOption() {
  return {QStringLiteral("curve"),
          QStringLiteral("Rating curve that makes the discharges (that of the register; empty: none)."),
          QStringLiteral("FILE")};
}

QByteArray FigureText(double value, int digits) {
  std::array<char, 48> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits);
  return {text.data(), end.ptr - text.data()};
}

CurveChoice CurveChoiceOf(const QCommandLineParser& parser) {
  return {parser.value(QStringLiteral("curve")), parser.isSet(QStringLiteral("curve")),
          parser.value(QStringLiteral("register"))};
}

Result<StationFacts> FactsFor(const QString& registerPath, const StationId& station) {
  if (registerPath.isEmpty()) return StationFacts();
  return LookupStationFacts(registerPath, station.Number());
}

Result<std::shared_ptr<const CurveSource>> CurveFor(const CurveChoice& choice, const StationId& station) {
  QString file = choice.file;
  if (!choice.given) {
    const auto facts = FactsFor(choice.registerPath, station);
    if (!facts) return facts.Failure();
    file = StationCurvePath(choice.registerPath, facts->curve);
  }
  if (file.isEmpty()) return std::shared_ptr<const CurveSource>();
  return OpenCurve(file, station.Number());
}

}  // namespace vesk
