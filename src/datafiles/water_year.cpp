#include "datafiles/water_year.h"

#include "datafiles/numbers.h"

namespace vesk {

using std::chrono::day;
using std::chrono::month;
using std::chrono::year;
using std::chrono::year_month_day;

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
  return QStringLiteral("01/10/") + PaddedNumber(waterYear - 1, 4);
}

}  // namespace vesk
