#include "datafiles/fallback_calendar.h"

#include <algorithm>
#include <array>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"

namespace vesk {
namespace {

/// A day of the fallback calendar, which no platform date type knows.
struct FallbackDay {
  int d = 1, m = 1, y = 1;
  bool operator==(const FallbackDay&) const = default;

  [[nodiscard]] int MonthLength() const {
    static constexpr std::array<int, 13> kDaysPerMonth = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (m == 12) return (y - 1379) % 4 == 0 ? 30 : 29;
    return kDaysPerMonth[static_cast<std::size_t>(std::clamp(m, 1, 12))];
  }

  void Step() {
    if (++d <= MonthLength()) return;
    d = 1;
    if (++m <= 12) return;
    m = 1;
    ++y;
  }
};

int FourDigits(const QString& text) {
  return static_cast<int>(std::clamp(ParseNumber(text.left(4)), 0.0, 9999.0));
}

FallbackDay ReadFallbackDay(const QString& text) {
  const DateTextParts parts = SplitDateText(text);
  return {FourDigits(parts.dayText), FourDigits(MonthOfText(text)), FourDigits(parts.rest)};
}

QString FallbackText(const FallbackDay& date, QChar separator) {
  return TwoDigits(date.d) + separator + TwoDigits(date.m) + separator + PaddedNumber(date.y, 4);
}

}  // namespace

QString AddDaysText(const QString& dateText, int count, const Regional& regional) {
  FallbackDay date = ReadFallbackDay(dateText);
  if (date.y > kLastFallbackYear) {
    const auto start = ReadDate(NormaliseDateText(dateText));
    if (!start) return {};
    return DateText(*start + std::chrono::days(count)).replace(QLatin1Char('/'), regional.dateSeparator);
  }
  for (int i = 0; i < count; ++i) date.Step();
  return FallbackText(date, regional.dateSeparator);
}

int DayCount(const QString& a, const QString& b) {
  if (a.isEmpty()) return 0;
  FallbackDay date = ReadFallbackDay(a);
  const FallbackDay target = ReadFallbackDay(b);
  if (target.y > kLastFallbackYear) {
    const auto first = ReadDate(NormaliseDateText(a));
    const auto last = ReadDate(NormaliseDateText(b));
    if (!first || !last) return 0;
    return static_cast<int>((*last - *first).count()) + 1;
  }
  int steps = 0;
  while (date != target) {
    if (date.y > target.y) return 0;  // the target lies before the start, or is no day of this calendar
    date.Step();
    ++steps;
  }
  return steps;
}

}  // namespace vesk
