// Rating curves on the command line: which one makes a station's discharges.
#pragma once

#include <QCommandLineParser>
#include <QString>

#include <memory>

#include "datafiles/station_id.h"
#include "platform/result.h"
#include "ratings/curve_source.h"

namespace vesk {

/// Option --curve.
QCommandLineOption CurveOption();

/// A discharge as CSV files have it: six significant digits.
QByteArray DischargeFigure(double m3s);

/// What the options say of rating curves.
struct CurveChoice {
  QString file;  ///< --curve; empty: none

  explicit CurveChoice(const QCommandLineParser& parser);
  /// Whether any station can have a curve.
  [[nodiscard]] bool Asked() const { return !file.isEmpty(); }
};

/// The curve that makes a station's discharges; null when none is asked for. Fails when it cannot be read and
/// when it is another station's.
Result<std::shared_ptr<const CurveSource>> CurveFor(const CurveChoice& choice, const StationId& station);

}  // namespace vesk
