// What a day, a month and a water year come to in discharge.
#pragma once

#include <optional>
#include <vector>

#include "datafiles/discharge.h"
#include "datafiles/reading.h"

namespace vesk {

/// A highest or lowest discharge and when it was first reached.
struct DischargePeak {
  DateTime time{};
  double m3s = 0;
  bool flagged = false;  ///< extrapolated
};

struct DischargeDay {
  Day day{};
  std::optional<double> meanM3s = {};  ///< over what has a discharge; nothing when nothing has
  double share = 0;                    ///< 0 to 1: part of the day that readings with a discharge cover
  bool extrapolated = false;
  /// A level of the day lies beyond what the curve may be extrapolated to: its highest, or lowest, discharge
  /// is not known.
  bool tooHigh = false, tooLow = false;
  std::optional<DischargePeak> highest = {}, lowest = {};  ///< of the discharges there are

  /// Of less than the whole day.
  [[nodiscard]] bool Partial() const { return share < kWholeDay; }
  static constexpr double kWholeDay = 0.999;
};

/// Takes the readings of a day and makes its mean: of discharges, each standing for the time since the
/// reading before it, the first for the time from 00:00, as the mean level is formed. A reading without a
/// discharge leaves its time out of the mean.
class DischargeDayMaker {
 public:
  /// mostMinutes: a reading covers no more of the day than that, however long ago the one before it was; it
  /// counts in the mean with all of it.
  explicit DischargeDayMaker(int mostMinutes) : mostMinutes_(mostMinutes) {}

  /// An ordinary reading at a minute of the day (0 to 1439); previousMinute: of the one before it, 0 for the
  /// first.
  void Add(DateTime time, int minute, int previousMinute, const DischargeValue& value);
  /// The logger's own maximum or minimum: part of the extremes, not of the mean.
  void AddRecord(DateTime time, const DischargeValue& value) { Widen(time, value); }
  /// The day, and a fresh start.
  [[nodiscard]] DischargeDay Close(Day day);

 private:
  void Widen(DateTime time, const DischargeValue& value);

  int mostMinutes_;
  double weighted_ = 0;  ///< m3/s x minutes
  int minutes_ = 0;      ///< with a discharge
  int covered_ = 0;
  DischargeDay made_;
};

/// A month or a water year.
struct DischargeSpan {
  Day first{}, last{};
  int days = 0;         ///< that it has
  int daysKept = 0;     ///< that have a mean
  int daysPartial = 0;  ///< of those, the ones of less than a whole day
  bool extrapolated = false;
  bool tooHigh = false, tooLow = false;      ///< of any day, as above
  std::optional<double> meanM3s = {};        ///< of the daily means there are
  std::optional<double> volumeHm3 = {};      ///< 10^6 m3 that ran off on the days kept
  std::optional<double> runoffMm = {};       ///< the same over the catchment; nothing without its area
  std::optional<double> specificLsKm2 = {};  ///< l/s per km2
  std::optional<DischargePeak> highest = {}, lowest = {};
};

struct DischargeYear {
  std::vector<DischargeSpan> months;  ///< October to September
  DischargeSpan year;
};

/// days: of that water year, others are passed over; a day that comes twice counts once, as its last one.
/// catchmentKm2: above 0, when it is known.
DischargeYear SummariseDischarge(const std::vector<DischargeDay>& days, int waterYear,
                                 std::optional<double> catchmentKm2 = {});

class StationSeries;

/// The most common distance of ordinary readings that follow each other within a day, minutes; 60 when there
/// is none.
int CommonInterval(const StationSeries& series);

}  // namespace vesk
