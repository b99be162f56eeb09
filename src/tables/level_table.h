// Everything a level table holds, computed from the review grid: hourly rows, day records, notes. Plain data;
// writing it into a workbook is somebody else's work.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "ratings/daily_mean.h"
#include "ratings/discharge_days.h"
#include "review/station_series.h"

namespace vesk {

enum class ExtremeMode {
  Recorded,  ///< "TF": the logger's own records
  Computed,  ///< "FT": from the readings
};

/// Reads "TF" or "FT"; nothing for any other text.
std::optional<ExtremeMode> ReadExtremeMode(QStringView text);
/// The mode that an option's text stands for: anything but "FT" counts as "TF".
ExtremeMode ExtremeModeOf(QStringView slotText);

/// Time, level and discharge of one grid row.
struct LevelAt {
  int minuteOfDay = 0;
  double levelCm = 0;
  QString discharge;
};

struct HourlyReading {
  Day day{};
  LevelAt value;
};

/// A maximum or minimum record on the hourly sheet.
struct HourlyRecord {
  int row = 0;  ///< sheet row it stands on
  bool maximum = false;
  LevelAt value;
};

struct DayRecord {
  Day day{};
  int sheetRow = 0;  ///< row on the daily sheet
  std::optional<LevelAt> maximum;
  std::optional<LevelAt> minimum;
  std::optional<double> meanCm;                ///< rounded to whole cm; only with a minimum record
  int readings = 0;                            ///< ordinary readings of the day
  double weightedSum = 0;                      ///< level x minutes
  int lastMinute = 0;                          ///< minute of the day's last reading
  std::optional<DischargeDay> discharge = {};  ///< of the same readings; only with a rating curve
};

struct LevelTable {
  int waterYear = 0;
  bool withHourly = true;             ///< the hourly sheet is to be filled, too
  QString title;                      ///< station number, " - ", name
  std::vector<HourlyReading> hourly;  ///< sheet rows 5, 6, 7 ...
  std::vector<HourlyRecord> records;
  std::vector<int> missingExtremesRows;     ///< hourly sheet rows under which a day ended without extremes
  std::vector<DayRecord> days;              ///< in grid order
  QString curveText;                        ///< which rating curve made the discharges; empty: none is named
  std::optional<double> catchmentKm2 = {};  ///< for what its own formulas make of the discharges
  QString note;  ///< what a reader must know of the readings; empty when there is nothing
};

inline constexpr int kFirstHourlyRow = 5;

/// October 1 ... September 12.
int WaterYearMonth(int month);
/// hour x 60 + minute of an "hh:mm" text.
int MinutesOfDay(QStringView clock);
/// Row of a date on the daily sheet: 35 rows a month, 1 October is row 5.
int DailySheetRow(Day day);

/// Daily means of the days that have one, in the table's order.
std::vector<DailyMean> DailyMeansOf(const LevelTable& table);

/// withHourly: else hourly rows and their records are left out; the days are the same.
LevelTable ComputeLevelTable(const StationSeries& series, int waterYear, ExtremeMode mode,
                             const QString& title, bool withHourly = true);

}  // namespace vesk
