#include "datafiles/helpers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vesk {
namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr int kMostRestCharacters = 80;  // what is looked at behind a separator
constexpr int kLastFallbackYear = 1900;  // years up to this one are counted in the fallback calendar

bool IsDigit(QChar c) {
  return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

QString Padded(int value, int width) {
  const QString digits = QString::number(std::abs(value));
  return (value < 0 ? QStringLiteral("-") : QString()) + digits.rightJustified(width, QLatin1Char('0'));
}

/// The leading number of a text, blanks skipped, in the shape that from_chars reads.
QByteArray LeadingNumber(QStringView text, QChar decimalSign) {
  QByteArray digits;
  bool point = false;
  bool exponent = false;
  for (const QChar c : text) {
    if (c.isSpace()) continue;
    const bool atStart = digits.isEmpty() || (exponent && (digits.back() == 'e'));
    if (IsDigit(c)) {
      digits += static_cast<char>(c.unicode());
    } else if (c == decimalSign && !point && !exponent) {
      point = true;
      digits += '.';
    } else if ((c == QLatin1Char('-') || c == QLatin1Char('+')) && atStart) {
      if (c == QLatin1Char('-'))
        digits += '-';
      else if (exponent)
        continue;
    } else if ((c == QLatin1Char('e') || c == QLatin1Char('E')) && !exponent && !digits.isEmpty()) {
      exponent = true;
      digits += 'e';
    } else {
      break;
    }
  }
  return digits;
}

double LeadingNumberValue(QStringView text, QChar decimalSign) {
  const QByteArray digits = LeadingNumber(text, decimalSign);
  double value = 0;
  const auto [end, problem] = std::from_chars(digits.constData(), digits.constData() + digits.size(), value);
  if (problem != std::errc{} || !std::isfinite(value)) return 0;
  return value;
}

/// Splits "day sep month sep rest" at the first two characters that are no digits.
struct DateParts {
  QString dayText, monthText, rest;
};

QString TwoDigits(QStringView digits) {
  bool ok = false;
  const int value = digits.toInt(&ok);
  return ok ? Padded(value, 2) : digits.toString();
}

DateParts SplitDateText(const QString& text) {
  DateParts parts;
  QString rest = text.trimmed();
  for (QString* part : {&parts.dayText, &parts.monthText}) {
    const auto separator = std::find_if(rest.cbegin(), rest.cend(), [](QChar c) { return !IsDigit(c); });
    if (separator == rest.cend()) break;
    const auto position = std::distance(rest.cbegin(), separator);
    *part = TwoDigits(QStringView(rest).left(position));
    rest = rest.mid(position + 1, kMostRestCharacters).trimmed();
  }
  parts.rest = rest;
  return parts;
}

bool IsPlainNumber(const QString& text) {
  return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), IsDigit);
}

/// Reads digits from the front of a view; nothing when there are none or too many.
std::optional<int> TakeNumber(QStringView& text, int mostDigits) {
  int value = 0;
  int count = 0;
  while (count < text.size() && IsDigit(text[count])) {
    if (count == mostDigits) return std::nullopt;
    value = value * 10 + (text[count].unicode() - u'0');
    ++count;
  }
  if (count == 0) return std::nullopt;
  text = text.mid(count);
  return value;
}

std::optional<Day> TakeDate(QStringView& text) {
  const auto d = TakeNumber(text, 2);
  if (!d || text.isEmpty()) return std::nullopt;
  text = text.mid(1);
  const auto m = TakeNumber(text, 2);
  if (!m || text.isEmpty()) return std::nullopt;
  text = text.mid(1);
  const auto y = TakeNumber(text, 4);
  if (!y) return std::nullopt;
  const year_month_day date(year(*y), month(static_cast<unsigned>(*m)), day(static_cast<unsigned>(*d)));
  if (!date.ok()) return std::nullopt;
  return Day(date);
}

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
  const DateParts parts = SplitDateText(text);
  return {FourDigits(parts.dayText), FourDigits(parts.monthText), FourDigits(parts.rest)};
}

QString FallbackText(const FallbackDay& date, QChar separator) {
  return Padded(date.d, 2) + separator + Padded(date.m, 2) + separator + Padded(date.y, 4);
}

}  // namespace

double ParseNumber(QStringView text, const Regional& regional) {
  const bool regionalComma = regional.decimalSign == QLatin1Char(',');
  if (text.contains(QLatin1Char(',')) && regionalComma) {
    // The region's own reading takes a whole text only; anything else falls back to the leading number.
    QString pointed = text.trimmed().toString();
    if (pointed.count(QLatin1Char(',')) == 1 && !pointed.contains(QLatin1Char('.'))) {
      pointed.replace(QLatin1Char(','), QLatin1Char('.'));
      bool ok = false;
      const double value = pointed.toDouble(&ok);
      if (ok && std::isfinite(value)) return value;
    }
  }
  return LeadingNumberValue(text, QLatin1Char('.'));
}

std::optional<double> ReadWholeNumber(QStringView text) {
  QString pointed = text.trimmed().toString();
  pointed.replace(QLatin1Char(','), QLatin1Char('.'));
  if (pointed.isEmpty()) return std::nullopt;
  const bool plain = std::all_of(pointed.cbegin(), pointed.cend(), [](QChar c) {
    return IsDigit(c) || c == QLatin1Char('.') || c == QLatin1Char('-') || c == QLatin1Char('+');
  });
  bool ok = false;
  const double value = pointed.toDouble(&ok);  // always the C locale
  if (!plain || !ok || !std::isfinite(value)) return std::nullopt;
  return value;
}

QString NumberText(double value) {
  if (value == 0) return QStringLiteral("0");  // also -0
  std::array<char, 64> buffer{};
  // 15 significant digits hide the binary tail of a decimal figure; %g drops trailing zeros.
  const auto [end, problem] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15);
  if (problem != std::errc{}) return QString::number(value, 'g', 15);
  return QString::fromLatin1(buffer.data(), end - buffer.data());
}

QString NormaliseDateText(const QString& text, const Regional& regional) {
  const DateParts parts = SplitDateText(text);
  const QString yearText =
      IsPlainNumber(parts.rest) ? parts.rest.rightJustified(4, QLatin1Char('0')) : parts.rest;
  return parts.dayText + regional.dateSeparator + parts.monthText + regional.dateSeparator + yearText;
}

std::optional<Day> ReadDate(QStringView text) {
  QStringView rest = text.trimmed();
  const auto date = TakeDate(rest);
  if (!rest.isEmpty()) return std::nullopt;
  return date;
}

std::optional<DateTime> ReadDateTime(QStringView text) {
  QStringView rest = text.trimmed();
  const auto date = TakeDate(rest);
  if (!date) return std::nullopt;
  if (rest.isEmpty()) return DateTime(*date);
  if (!rest.front().isSpace()) return std::nullopt;
  const auto minute = ReadClock(rest.trimmed());
  if (!minute) return std::nullopt;
  return DateTime(*date) + std::chrono::minutes(std::min(*minute, 1439));
}

std::optional<int> ReadClock(QStringView text) {
  QStringView rest = text.trimmed();
  const auto hour = TakeNumber(rest, 2);
  if (!hour || rest.isEmpty() || IsDigit(rest.front())) return std::nullopt;
  rest = rest.mid(1);
  const auto minute = TakeNumber(rest, 2);
  if (!minute || !rest.isEmpty() || *minute > 59) return std::nullopt;
  const int total = *hour * 60 + *minute;
  if (total > 1440) return std::nullopt;
  return total;
}

QString DateText(Day date) {
  const year_month_day ymd(date);
  return Padded(static_cast<int>(static_cast<unsigned>(ymd.day())), 2) + QLatin1Char('/') +
         Padded(static_cast<int>(static_cast<unsigned>(ymd.month())), 2) + QLatin1Char('/') +
         Padded(static_cast<int>(ymd.year()), 4);
}

QString ClockText(int minuteOfDay) {
  return Padded(minuteOfDay / 60, 2) + QLatin1Char(':') + Padded(minuteOfDay % 60, 2);
}

QString DateTimeText(DateTime time) {
  const Day date = std::chrono::floor<days>(time);
  return DateText(date) + QLatin1Char(' ') + ClockText(static_cast<int>((time - date).count()));
}

int WaterYearOf(Day date) {
  const year_month_day ymd(date);
  const bool next = static_cast<unsigned>(ymd.month()) > unsigned{kLastWaterYearMonth};
  return static_cast<int>(ymd.year()) + (next ? 1 : 0);
}

Day WaterYearFirstDay(int waterYear) {
  return Day(year_month_day(year(waterYear - 1), month(kLastWaterYearMonth + 1), day(1)));
}

Day WaterYearLastDay(int waterYear) {
  return Day(year_month_day(year(waterYear), month(kLastWaterYearMonth), day(30)));
}

QString WaterYearStartText(int waterYear) {
  return QStringLiteral("01/10/") + Padded(waterYear - 1, 4);
}

QString DateKey(DateTime time) {
  const Day date = std::chrono::floor<days>(time);
  const int minute = static_cast<int>((time - date).count());
  return Padded(YearOf(date), 4) + Padded(MonthOf(date), 2) + Padded(DayOf(date), 2) +
         Padded(minute / 60, 2) + Padded(minute % 60, 2);
}

int DayOf(Day date) {
  return static_cast<int>(static_cast<unsigned>(year_month_day(date).day()));
}
int MonthOf(Day date) {
  return static_cast<int>(static_cast<unsigned>(year_month_day(date).month()));
}
int YearOf(Day date) {
  return static_cast<int>(year_month_day(date).year());
}

QString MonthOfText(const QString& text) {
  return SplitDateText(text).monthText;
}

QString AddDaysText(const QString& dateText, int count, const Regional& regional) {
  FallbackDay date = ReadFallbackDay(dateText);
  if (date.y > kLastFallbackYear) {
    const auto start = ReadDate(NormaliseDateText(dateText));
    if (!start) return {};
    return DateText(*start + days(count)).replace(QLatin1Char('/'), regional.dateSeparator);
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

bool ListContains(const std::vector<QString>& list, const QString& text) {
  return std::find(list.cbegin(), list.cend(), text) != list.cend();
}

}  // namespace vesk
