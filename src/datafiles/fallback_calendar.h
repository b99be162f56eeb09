// Day arithmetic on date texts. Years up to 1900, which no date type of the platforms knows, are counted in a
// calendar of their own: month 12 has 30 days when (year - 1379) is divisible by 4 and 29 otherwise, and
// February always 28.
#pragma once

#include <QString>

#include "platform/regional.h"

namespace vesk {

inline constexpr int kLastFallbackYear = 1900;

/// The date n days after a date text; empty for a text that is no date.
QString AddDaysText(const QString& dateText, int days, const Regional& regional = {});

/// Days from A to B, both ends counted (A to A is 1); 0 when A is empty. For a B up to 1900 the steps through
/// the fallback calendar (A to A is 0).
int DayCount(const QString& a, const QString& b);

}  // namespace vesk
