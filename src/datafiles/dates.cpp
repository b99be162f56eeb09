#include "datafiles/dates.h"

#include <algorithm>

#include "datafiles/numbers.h"

namespace vesk {
namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr int kMostRestCharacters = 80;  // what is looked at behind a separator

bool IsDigit(QChar c) {
  return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

QString WithTwoDigits(QStringView digits) {
  bool ok = false;
  const int value = digits.toInt(&ok);
  return ok ? TwoDigits(value) : digits.toString();
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

}  // namespace

DateTextParts SplitDateText(const QString& text) {
  DateTextParts parts;
  QString rest = text.trimmed();
  for (QString* part : {&parts.dayText, &parts.monthText}) {
    const auto separator = std::find_if(rest.cbegin(), rest.cend(), [](QChar c) { return !IsDigit(c); });
    if (separator == rest.cend()) break;
    const auto position = std::distance(rest.cbegin(), separator);
    *part = WithTwoDigits(QStringView(rest).left(position));
    rest = rest.mid(position + 1, kMostRestCharacters).trimmed();
  }
  parts.rest = rest;
  return parts;
}

QString NormaliseDateText(const QString& text, const Regional& regional) {
  const DateTextParts parts = SplitDateText(text);
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
  return DateTime(*date) + std::chrono::minutes(WithinDay(*minute));
}

std::optional<int> ReadClock(QStringView text) {
  QStringView rest = text.trimmed();
  const auto hour = TakeNumber(rest, 2);
  if (!hour || rest.isEmpty() || IsDigit(rest.front())) return std::nullopt;
  rest = rest.mid(1);
  const auto minute = TakeNumber(rest, 2);
  if (!minute || !rest.isEmpty() || *minute > 59) return std::nullopt;
  const int total = *hour * 60 + *minute;
  if (total > kMinutesPerDay) return std::nullopt;
  return total;
}

QString DateText(Day date) {
  const year_month_day ymd(date);
  return TwoDigits(static_cast<int>(static_cast<unsigned>(ymd.day()))) + QLatin1Char('/') +
         TwoDigits(static_cast<int>(static_cast<unsigned>(ymd.month()))) + QLatin1Char('/') +
         PaddedNumber(static_cast<int>(ymd.year()), 4);
}

QString ClockText(int minuteOfDay) {
  return TwoDigits(minuteOfDay / 60) + QLatin1Char(':') + TwoDigits(minuteOfDay % 60);
}

QString DateTimeText(DateTime time) {
  const Day date = std::chrono::floor<days>(time);
  return DateText(date) + QLatin1Char(' ') + ClockText(static_cast<int>((time - date).count()));
}

QString DateKey(DateTime time) {
  const Day date = std::chrono::floor<days>(time);
  const int minute = static_cast<int>((time - date).count());
  return PaddedNumber(YearOf(date), 4) + TwoDigits(MonthOf(date)) + TwoDigits(DayOf(date)) +
         TwoDigits(minute / 60) + TwoDigits(minute % 60);
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

}  // namespace vesk
