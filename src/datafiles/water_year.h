// Water years: 1 October to 30 September, named by the calendar year in which they end.
#pragma once

#include <QString>

#include <compare>

#include "datafiles/reading.h"

namespace vesk {

inline constexpr int kLastWaterYearMonth = 9;  ///< September

/// The water year of a day.
int WaterYearOf(Day day);
Day WaterYearFirstDay(int waterYear);       ///< 1 October of waterYear - 1
Day WaterYearLastDay(int waterYear);        ///< 30 September of waterYear
QString WaterYearStartText(int waterYear);  ///< "01/10/" and waterYear - 1 in four digits

/// The twelve months from 1 October to 30 September; named by the year in which it ends.
struct WaterYear {
  int number = 0;

  [[nodiscard]] Day FirstDay() const { return WaterYearFirstDay(number); }
  [[nodiscard]] Day LastDay() const { return WaterYearLastDay(number); }
  [[nodiscard]] QString Text() const { return QString::number(number); }
  bool operator==(const WaterYear&) const = default;
  bool operator<(const WaterYear& other) const { return number < other.number; }
};

}  // namespace vesk
