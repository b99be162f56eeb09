// Numbers as files and operators write them, whatever the machine's regional settings are.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

#include "platform/regional.h"

namespace vesk {

/// Leading number of a text; point, or a comma where the region writes one. Never fails: no number gives 0.
double ParseNumber(QStringView text, const Regional& regional = {});

/// Reads a number that fills the whole text (blanks around it allowed, point or comma). Nothing otherwise.
std::optional<double> ReadWholeNumber(QStringView text);

/// Shortest text of a number with at most 15 significant digits: 1.15 m x 100 gives "115".
QString NumberText(double value);

/// With zeros in front, at least two digits or that many.
QString TwoDigits(int value);
QString PaddedNumber(int value, int width);

}  // namespace vesk
