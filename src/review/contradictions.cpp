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

bool IsCorrected(const ReviewGrid& grid, int row) {
  return !IsSameLevel(grid.At(row).levelCm, grid.RawLevel(row));
}

/// Only days on which a reading was corrected.
Days CorrectedDays(const ReviewGrid& grid) {
  Days days;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    const Reading& reading = grid.At(row);
    if (reading.kind == ReadingKind::Ordinary && IsCorrected(grid, row)) {
      days[KeyOf(reading)].corrected.push_back(row);
    }
  }
  if (days.empty()) return days;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    const Reading& reading = grid.At(row);
    const auto day = reading.kind == ReadingKind::Ordinary ? days.find(KeyOf(reading)) : days.end();
    if (day == days.end()) continue;
    int& highest = day->second.highestRow;
    int& lowest = day->second.lowestRow;
    if (highest == 0 || reading.levelCm > grid.At(highest).levelCm) highest = row;
    if (lowest == 0 || reading.levelCm < grid.At(lowest).levelCm) lowest = row;
  }
  return days;
}

/// The row of the reading that contradicts the record; nothing when none does.
std::optional<int> ContradictingRow(const ReviewGrid& grid, int record, const DayOfFile& day) {
  const Reading& extreme = grid.At(record);
  const bool isMaximum = extreme.kind == ReadingKind::Maximum;
  const int row = isMaximum ? day.highestRow : day.lowestRow;
  const double beyondCm = (extreme.levelCm - grid.At(row).levelCm) * (isMaximum ? 1 : -1);
  if (IsSameLevel(beyondCm, 0)) return std::nullopt;
  if (beyondCm < 0) return IsCorrected(grid, row) ? std::optional(row) : std::nullopt;
  for (const int corrected : day.corrected) {
    const bool sameMinute = grid.At(corrected).minuteOfDay == extreme.minuteOfDay;
    if (sameMinute || IsSameLevel(grid.RawLevel(corrected), extreme.levelCm)) return row;
  }
  return std::nullopt;
}

}  // namespace

std::vector<RecordContradiction> FindContradictions(const ReviewGrid& grid) {
  std::vector<RecordContradiction> found;
  const Days days = CorrectedDays(grid);
  if (days.empty()) return found;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    const Reading& record = grid.At(row);
    if (record.kind == ReadingKind::Ordinary || IsCorrected(grid, row)) continue;
    const auto day = days.find(KeyOf(record));
    if (day == days.end()) continue;
    const auto reading = ContradictingRow(grid, row, day->second);
    if (!reading) continue;
    found.push_back({.row = row,
                     .day = record.day,
                     .kind = record.kind,
                     .recordedCm = record.levelCm,
                     .readingsCm = grid.At(*reading).levelCm,
                     .minuteOfDay = grid.At(*reading).minuteOfDay});
  }
  return found;
}

}  // namespace vesk
