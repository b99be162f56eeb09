// Rating curves that others write: tables of two columns, expanded rating tables.
#pragma once

#include <QStringList>

#include <optional>

#include "ratings/curve_file.h"

namespace vesk {

inline constexpr double kCmOfAFoot = 30.48;
inline constexpr double kM3OfACubicFoot = 0.028316846592;

/// lines: of the file, without their ends. Nothing when they are neither kind of table. The curve holds at
/// any time; its lowest and highest level are the table's, it may not be extrapolated, and it names no
/// station.
std::optional<CurveText> ReadCurveTable(const QStringList& lines);

}  // namespace vesk
