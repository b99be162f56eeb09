// Rating curves on the command line: which one makes a station's discharges.
#pragma once

#include <QCommandLineParser>
#include <QString>

#include <memory>

#include "datafiles/station_id.h"
#include "platform/result.h"
#include "ratings/curve_source.h"
#include "ratings/discharge_days.h"

namespace vesk {

/// Option --curve. The verb has --register already, or adds it.
QCommandLineOption CurveOption();

/// Option --register of a verb that asks it for rating curves only.
QCommandLineOption RegisterOption();

/// A discharge as CSV files have it: six significant digits.
QByteArray DischargeFigure(double m3s);

/// What the options say of rating curves.
struct CurveChoice {
  QString file;          ///< --curve; empty: that of the register
  QString registerPath;  ///< --register; may be empty

  explicit CurveChoice(const QCommandLineParser& parser);
  /// Whether any station can have a curve.
  [[nodiscard]] bool Asked() const { return !file.isEmpty() || !registerPath.isEmpty(); }
};

/// What a station's discharges are made with.
struct CurveInUse {
  std::shared_ptr<const CurveSource> curve = {};  ///< null: none is named
  std::optional<double> catchmentKm2 = {};        ///< as the register has it
};

/// The curve that the option names, else the one that the register has for the station. Fails when it cannot
/// be read or is another station's, and when the register cannot be read.
Result<CurveInUse> CurveFor(const CurveChoice& choice, const StationId& station);

}  // namespace vesk
