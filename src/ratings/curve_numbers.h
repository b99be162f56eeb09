// Figures of curve files.
#pragma once

#include <QByteArray>
#include <QStringView>

#include <optional>

namespace vesk {

/// A whole text that is a number with a point, "1.5" or "8.1e-07"; nothing for anything else, infinite or not
/// a number.
std::optional<double> ReadCurveNumber(QStringView text);

/// Shortest text that reads back as the same number.
QByteArray CurveNumberText(double value);

}  // namespace vesk
