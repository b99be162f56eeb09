// Rating curves on the command line: which one makes a station's discharges.
#pragma once

#include <QByteArray>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>

#include <memory>

#include "datafiles/station_id.h"
#include "platform/result.h"
#include "ratings/curve_source.h"
#include "stations/station_register.h"

namespace vesk {

/// Option --curve: a file; empty: none; not given: the one that the register keeps for the station.
QCommandLineOption CurveOption();

/// Which curve makes the discharges, as the options say.
struct CurveChoice {
  QString file;          ///< of --curve
  bool given = false;    ///< --curve was there, perhaps empty
  QString registerPath;  ///< of --register; empty: none

  /// False when no station can have a curve.
  [[nodiscard]] bool MayBe() const { return given ? !file.isEmpty() : !registerPath.isEmpty(); }
};
/// Of a verb that has both options.
CurveChoice CurveChoiceOf(const QCommandLineParser& parser);

/// What the register keeps of a station; empty without a register, for a station it does not know.
Result<StationFacts> FactsFor(const QString& registerPath, const StationId& station);

/// A figure as CSV files have it: six significant digits, as for discharges, unless more are asked for.
QByteArray FigureText(double value, int digits = 6);

/// The curve that makes a station's discharges; null when it has none. Fails when it cannot be read and when
/// it is another station's. A path in the register that is not absolute counts from the register's folder.
Result<std::shared_ptr<const CurveSource>> CurveFor(const CurveChoice& choice, const StationId& station);

}  // namespace vesk
