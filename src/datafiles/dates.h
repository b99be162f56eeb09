// Dates and clock times as files and operators write them.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

#include "datafiles/reading.h"
#include "platform/regional.h"

namespace vesk {

/// A day/month/year text taken apart at its first two characters that are no digits.
struct DateTextParts {
  QString dayText, monthText;  ///< two digits each
  QString rest;                ///< the year and whatever follows it
};
DateTextParts SplitDateText(const QString& text);

/// dd, mm and yyyy of a day/month/year text (any separators) joined by the region's date separator;
/// what follows the year (a time) is kept as it is.
QString NormaliseDateText(const QString& text, const Regional& regional = {});
/// The month part of a day/month/year text, two digits.
QString MonthOfText(const QString& text);

/// Reads "dd/mm/yyyy" (any single non-digit separators); nothing when it is no day of the calendar.
std::optional<Day> ReadDate(QStringView text);

/// Reads "dd/mm/yyyy hh:mm"; 24:00 reads as 23:59 of that day. A missing time reads as 00:00.
std::optional<DateTime> ReadDateTime(QStringView text);

/// Reads "hh:mm", 00:00 to 24:00, as minutes of the day (0 to 1440).
std::optional<int> ReadClock(QStringView text);

QString DateText(Day day);            ///< "dd/mm/yyyy"
QString ClockText(int minuteOfDay);   ///< "hh:mm"; 0 to 1440
QString DateTimeText(DateTime time);  ///< "dd/mm/yyyy hh:mm"

/// yyyymmddhhmm, so that keys sort in time order as text.
QString DateKey(DateTime time);

int DayOf(Day day);    ///< day of the month, 1 to 31
int MonthOf(Day day);  ///< month, 1 to 12
int YearOf(Day day);

}  // namespace vesk
