// Date, time and number helpers: everything that reads or writes a number or a date in a file goes through
// these, so no file ever depends on the machine's regional settings.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <span>
#include <vector>

#include "datafiles/reading.h"
#include "platform/regional.h"

namespace vesk {

inline constexpr int kLastWaterYearMonth = 9;  ///< a water year ends with September

/// Leading number of a text; point, or a comma where the region writes one. Never fails: no number gives 0.
double ParseNumber(QStringView text, const Regional& regional = {});

/// Reads a number that fills the whole text (blanks around it allowed, point or comma). Nothing otherwise.
std::optional<double> ReadWholeNumber(QStringView text);

/// Shortest text of a number with at most 15 significant digits: 1.15 m x 100 gives "115".
QString NumberText(double value);

/// dd, mm and yyyy of a day/month/year text (any separators) joined by the region's date separator;
/// what follows the year (a time) is kept as it is.
QString NormaliseDateText(const QString& text, const Regional& regional = {});

/// Reads "dd/mm/yyyy" (any single non-digit separators); nothing when it is no day of the calendar.
std::optional<Day> ReadDate(QStringView text);

/// Reads "dd/mm/yyyy hh:mm"; 24:00 reads as 23:59 of that day. A missing time reads as 00:00.
std::optional<DateTime> ReadDateTime(QStringView text);

/// Reads "hh:mm", 00:00 to 24:00, as minutes of the day (0 to 1440).
std::optional<int> ReadClock(QStringView text);

QString DateText(Day day);            ///< "dd/mm/yyyy"
QString ClockText(int minuteOfDay);   ///< "hh:mm"; 0 to 1440
QString DateTimeText(DateTime time);  ///< "dd/mm/yyyy hh:mm"

/// The calendar year in which the water year of a day ends (1 October to 30 September).
int WaterYearOf(Day day);
Day WaterYearFirstDay(int waterYear);       ///< 1 October of waterYear - 1
Day WaterYearLastDay(int waterYear);        ///< 30 September of waterYear
QString WaterYearStartText(int waterYear);  ///< "01/10/" and waterYear - 1 in four digits

/// yyyymmddhhmm, so that keys sort in time order as text.
QString DateKey(DateTime time);

int DayOf(Day day);    ///< day of the month, 1 to 31
int MonthOf(Day day);  ///< month, 1 to 12
int YearOf(Day day);
/// The month part of a day/month/year text, two digits.
QString MonthOfText(const QString& text);

/// The date n days after a date text. Years up to 1900 step through the fallback calendar, in which month 12
/// has 30 days when (year - 1379) is divisible by 4 and 29 otherwise, and February always 28.
QString AddDaysText(const QString& dateText, int days, const Regional& regional = {});

/// Days from A to B, both ends counted (A to A is 1); 0 when A is empty. For a B up to 1900 the steps through
/// the fallback calendar (A to A is 0).
int DayCount(const QString& a, const QString& b);

/// True when the list holds exactly that text.
bool ListContains(const std::vector<QString>& list, const QString& text);

/// Running level range of a grid: the least and greatest level, cm. The start values are those of an empty
/// range.
struct LevelExtent {
  double highestCm = 0;
  double lowestCm = 9999999;

  void Widen(double levelCm) {
    if (lowestCm > levelCm) lowestCm = levelCm;
    if (highestCm < levelCm) highestCm = levelCm;
  }
};

}  // namespace vesk
