// Rating curves on the command line: which one makes a station's discharges.
#pragma once

#include <QByteArray>
#include <QCommandLineOption>
#include <QString>

#include <memory>

#include "datafiles/station_id.h"
#include "platform/result.h"
#include "ratings/curve_source.h"

namespace vesk {

/// Option --curve: a file, or nothing.
QCommandLineOption CurveOption();

/// A figure as CSV files have it: six significant digits, as for discharges, unless more are asked for.
QByteArray FigureText(double value, int digits = 6);

/// The curve that makes a station's discharges; null without a file. Fails when it cannot be read and when it
/// is another station's.
Result<std::shared_ptr<const CurveSource>> CurveFor(const QString& file, const StationId& station);

}  // namespace vesk
