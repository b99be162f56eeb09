#include "tables/level_table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/water_year.h"

namespace vesk {
namespace {

constexpr int kRowsPerMonth = 35;
constexpr int kFirstDailyRow = 5;
constexpr int kMonthsPerYear = 12;
constexpr int kDailyRows = kRowsPerMonth * kMonthsPerYear + kFirstDailyRow;

/// Walks the series once, in its order, and closes a day at its minimum record.
class TableBuilder {
 public:
  TableBuilder(const StationSeries& series, ExtremeMode mode, LevelTable& table)
      : series_(series),
        mode_(mode),
        withHourly_(table.withHourly),
        table_(table),
        discharge_(MakerFor(series)) {}

  void Build() {
    const int count = series_.ReadingCount();
    if (count == 0) return;
    if (withHourly_) table_.hourly.reserve(static_cast<std::size_t>(count));
    const Day first = WaterYearFirstDay(table_.waterYear);
    const Day last = WaterYearLastDay(table_.waterYear);
    for (int row = 1; row <= count; ++row) {
      const Reading reading = series_.At(row);
      if (reading.day < first || reading.day > last) continue;  // of another year loaded along with this one
      if (readings_ > 0 && reading.day != readingDay_) EndDayWithoutExtremes();
      switch (reading.kind) {
        case ReadingKind::Maximum:
          AddMaximum(row, reading);
          break;
        case ReadingKind::Minimum:
          AddMinimum(row, reading);
          break;
        case ReadingKind::Ordinary:
          AddReading(row, reading);
          break;
      }
    }
    if (readings_ > 0) CloseWithoutExtremes();
  }

 private:
  /// A reading covers one and a half intervals at most: a longer pause lacks readings.
  static std::optional<DischargeDayMaker> MakerFor(const StationSeries& series) {
    if (!series.Curve()) return std::nullopt;
    return DischargeDayMaker(CommonInterval(series) * 3 / 2);
  }

  [[nodiscard]] LevelAt ValueOf(int row) const {
    const Reading reading = series_.At(row);
    return {reading.minuteOfDay, reading.levelCm, series_.DischargeOf(row).text};
  }

  /// One record a day, also for a day that comes twice: its row on the daily sheet is written over.
  DayRecord& RecordOf(Day day) {
    if (!table_.days.empty() && table_.days.back().day == day) return table_.days.back();
    int& known = recordOfRow_[static_cast<std::size_t>(DailySheetRow(day))];
    if (known == 0) {
      DayRecord& record = table_.days.emplace_back();
      record.day = day;
      record.sheetRow = DailySheetRow(day);
      known = static_cast<int>(table_.days.size());
    }
    return table_.days[static_cast<std::size_t>(known - 1)];
  }

  void AddMaximum(int row, const Reading& reading) {
    if (mode_ == ExtremeMode::Recorded) maximumRow_ = row;
    if (withHourly_) table_.records.push_back({HourlyRow() - 1, true, ValueOf(row)});
    AddRecordDischarge(row, reading);
    DayRecord& record = RecordOf(reading.day);
    if (maximumRow_ > 0) record.maximum = ValueOf(maximumRow_);
  }

  void AddMinimum(int row, const Reading& reading) {
    if (mode_ == ExtremeMode::Recorded) minimumRow_ = row;
    if (withHourly_) table_.records.push_back({HourlyRow(), false, ValueOf(row)});
    AddRecordDischarge(row, reading);
    DayRecord& record = RecordOf(reading.day);
    if (minimumRow_ > 0) record.minimum = ValueOf(minimumRow_);
    if (lastMinute_ > 0) record.meanCm = std::floor(weightedSum_ / lastMinute_ + 0.5);
    CloseDay(record);
  }

  void AddReading(int row, const Reading& reading) {
    readingDay_ = reading.day;
    ++hourlyCount_;
    if (withHourly_) table_.hourly.push_back({reading.day, ValueOf(row)});
    const int minute = reading.minuteOfDay;
    weightedSum_ += reading.levelCm * (minute - previousMinute_);
    if (discharge_) discharge_->Add(reading.Time(), minute, previousMinute_, *series_.CurveDischargeOf(row));
    previousMinute_ = minute;
    lastMinute_ = minute;
    ++readings_;
    if (mode_ == ExtremeMode::Computed) KeepExtremes(row, reading.levelCm);
  }

  void AddRecordDischarge(int row, const Reading& reading) {
    if (discharge_ && mode_ == ExtremeMode::Recorded)
      discharge_->AddRecord(reading.Time(), *series_.CurveDischargeOf(row));
  }

  /// The earliest of equal readings wins.
  void KeepExtremes(int row, double levelCm) {
    if (maximumRow_ == 0 || levelCm > highestCm_) {
      highestCm_ = levelCm;
      maximumRow_ = row;
    }
    if (minimumRow_ == 0 || levelCm < lowestCm_) {
      lowestCm_ = levelCm;
      minimumRow_ = row;
    }
  }

  /// The next day begins, and the one before it had no minimum record.
  void EndDayWithoutExtremes() {
    if (withHourly_) table_.missingExtremesRows.push_back(HourlyRow());
    CloseWithoutExtremes();
  }

  /// The day gets no mean, and nothing of it may leak into the next.
  void CloseWithoutExtremes() {
    DayRecord& record = RecordOf(readingDay_);
    if (record.meanCm) {
      StartAfresh();  // the figures beside a mean are those that it was formed from
    } else {
      CloseDay(record);
    }
  }

  void CloseDay(DayRecord& record) {
    record.readings = readings_;
    record.weightedSum = weightedSum_;
    record.lastMinute = lastMinute_;
    if (discharge_) record.discharge = discharge_->Close(record.day);
    StartAfresh();
  }

  void StartAfresh() {
    if (discharge_) static_cast<void>(discharge_->Close({}));
    weightedSum_ = 0;
    previousMinute_ = 0;
    lastMinute_ = 0;
    readings_ = 0;
    maximumRow_ = 0;
    minimumRow_ = 0;
  }

  [[nodiscard]] int HourlyRow() const { return kFirstHourlyRow - 1 + hourlyCount_; }

  const StationSeries& series_;
  const ExtremeMode mode_;
  const bool withHourly_;
  LevelTable& table_;

  std::optional<DischargeDayMaker> discharge_;
  std::array<int, kDailyRows> recordOfRow_{};  ///< 1-based index of a row's record; 0: none yet
  Day readingDay_{};
  int hourlyCount_ = 0;
  double weightedSum_ = 0;
  int previousMinute_ = 0;
  int lastMinute_ = 0;
  int readings_ = 0;
  int maximumRow_ = 0;
  int minimumRow_ = 0;
  double highestCm_ = 0;
  double lowestCm_ = 0;
};

}  // namespace

std::optional<ExtremeMode> ReadExtremeMode(QStringView text) {
  if (text == QLatin1String("TF")) return ExtremeMode::Recorded;
  if (text == QLatin1String("FT")) return ExtremeMode::Computed;
  return std::nullopt;
}

ExtremeMode ExtremeModeOf(QStringView slotText) {
  return ReadExtremeMode(slotText).value_or(ExtremeMode::Recorded);
}

int WaterYearMonth(int month) {
  const int shifted = month - kLastWaterYearMonth;
  return shifted > 0 ? shifted : shifted + kMonthsPerYear;
}

int MinutesOfDay(QStringView clock) {
  return ReadClock(clock).value_or(0);
}

int DailySheetRow(Day day) {
  return kRowsPerMonth * (WaterYearMonth(MonthOf(day)) - 1) + DayOf(day) + kFirstDailyRow - 1;
}

std::vector<DailyMean> DailyMeansOf(const LevelTable& table) {
  std::vector<DailyMean> means;
  for (const DayRecord& day : table.days) {
    DailyMean mean{day.day, day.meanCm, {}, false};
    if (day.discharge) {
      mean.m3s = day.discharge->meanM3s;
      mean.flagged = day.discharge->Partial() || day.discharge->extrapolated;
    }
    if (mean.levelCm || mean.m3s) means.push_back(mean);
  }
  return means;
}

LevelTable ComputeLevelTable(const StationSeries& series, int waterYear, ExtremeMode mode,
                             const QString& title, bool withHourly) {
  LevelTable table;
  table.waterYear = waterYear;
  table.withHourly = withHourly;
  table.title = title;
  TableBuilder(series, mode, table).Build();
  return table;
}

}  // namespace vesk
