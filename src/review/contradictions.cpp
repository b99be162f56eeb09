#include "review/contradictions.h"

#include <map>
#include <optional>
#include <utility>

#include "review/change_log_rows.h"

namespace vesk {
namespace {

/// Readings of one file and day as they are now.
struct DayOfFile {
  int highestRow = 0;
  int lowestRow = 0;
  std::vector<int> corrected;  ///< rows
};

using Days = std::map<std::pair<std::uint8_t, Day>, DayOfFile>;

std::pair<std::uint8_t, Day> KeyOf(const Reading& reading) {
  return {reading.sourceFile, reading.day};
}

bool IsCorrected(const StationSeries& series, int row) {
  return !IsSameLevel(series.At(row).levelCm, series.RawLevel(row));
}

/// Only days on which a reading was corrected.
Days CorrectedDays(const StationSeries& series) {
  Days days;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    if (reading.kind == ReadingKind::Ordinary && IsCorrected(series, row)) {
      days[KeyOf(reading)].corrected.push_back(row);
    }
  }
  if (days.empty()) return days;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    const auto day = reading.kind == ReadingKind::Ordinary ? days.find(KeyOf(reading)) : days.end();
    if (day == days.end()) continue;
    int& highest = day->second.highestRow;
    int& lowest = day->second.lowestRow;
    if (highest == 0 || reading.levelCm > series.At(highest).levelCm) highest = row;
    if (lowest == 0 || reading.levelCm < series.At(lowest).levelCm) lowest = row;
  }
  return days;
}

/// The row of the reading that contradicts the record; nothing when none does.
std::optional<int> ContradictingRow(const StationSeries& series, int record, const DayOfFile& day) {
  const Reading extreme = series.At(record);
  const bool isMaximum = extreme.kind == ReadingKind::Maximum;
  const int row = isMaximum ? day.highestRow : day.lowestRow;
  const double beyondCm = (extreme.levelCm - series.At(row).levelCm) * (isMaximum ? 1 : -1);
  if (IsSameLevel(beyondCm, 0)) return std::nullopt;
  if (beyondCm < 0) return IsCorrected(series, row) ? std::optional(row) : std::nullopt;
  for (const int corrected : day.corrected) {
    const bool sameMinute = series.At(corrected).minuteOfDay == extreme.minuteOfDay;
    if (sameMinute || IsSameLevel(series.RawLevel(corrected), extreme.levelCm)) return row;
  }
  return std::nullopt;
}

}  // namespace

std::vector<RecordContradiction> FindContradictions(const StationSeries& series) {
  std::vector<RecordContradiction> found;
  if (!series.HasCorrections()) return found;
  const Days days = CorrectedDays(series);
  if (days.empty()) return found;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading record = series.At(row);
    if (record.kind == ReadingKind::Ordinary || IsCorrected(series, row)) continue;
    const auto day = days.find(KeyOf(record));
    if (day == days.end()) continue;
    const auto reading = ContradictingRow(series, row, day->second);
    if (!reading) continue;
    found.push_back({.row = row,
                     .day = record.day,
                     .kind = record.kind,
                     .recordedCm = record.levelCm,
                     .readingsCm = series.At(*reading).levelCm,
                     .minuteOfDay = series.At(*reading).minuteOfDay});
  }
  return found;
}

}  // namespace vesk
