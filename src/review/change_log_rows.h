// Finds the rows that the lines of a change log are about.
#pragma once

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "review/change_log.h"

namespace vesk {

/// Rows by time, so that a line is found at once wherever it stands.
class RowIndex {
 public:
  /// rows: the raw ones, or a series as shown.
  template <class Rows>
  RowIndex(const Rows& rows, const RowRange& within);

  /// First row at or after startRow with that time; 0 when there is none.
  [[nodiscard]] int Find(DateTime time, int startRow) const;
  /// Last row before endRow with that time; 0 when there is none.
  [[nodiscard]] int FindBefore(DateTime time, int endRow) const;

 private:
  using Entry = std::pair<DateTime, int>;
  std::vector<Entry> entries_;
};

/// Levels that are written alike.
bool IsSameLevel(double aCm, double bCm);

/// The reading that a row stands for, with what corrects it, as the record keeps it.
Correction CorrectionOf(const StationSeries& series, const RowRef& row, const Authorship& author);

/// What a line that says no more than its time found.
struct RowByTime {
  std::optional<RowRef> row;
  bool open = false;  ///< no row: the reading of the minute or an extreme record could be meant
};

/// Rows of one series for the lines of one log. Every row is given out once.
class RowFinder {
 public:
  /// As ApplyChangeLog takes them. From TakeByTime on the series stays as it is.
  RowFinder(const StationSeries& series, const RowRange& within);

  /// The raw row of a correction; nothing when it is not there or has been given out.
  std::optional<RowRef> Take(const Correction& correction);
  /// The only reading that equals the corrected one in time, kind and raw level, whatever its file.
  std::optional<RowRef> TakeEqual(const Correction& correction);
  /// The rows of lines that say no more than their times, in the order of the log.
  std::vector<RowByTime> TakeByTime(const std::vector<DateTime>& times);

 private:
  std::optional<RowRef> TakeRaw(int rawRow);
  [[nodiscard]] bool IsFree(int shownRow) const;
  [[nodiscard]] std::vector<int> EarliestRows(const std::vector<DateTime>& times) const;
  [[nodiscard]] std::vector<int> LatestRows(const std::vector<DateTime>& times) const;
  [[nodiscard]] bool AreOfOneKind(DateTime time, int first, int last) const;
  int RowOfOtherYears(DateTime time);
  const RowIndex& RawIndex();

  const StationSeries& series_;
  RowRange within_;
  /// Made when a line asks for one: most loads have no line.
  std::optional<RowIndex> raw_, shown_, all_;
  std::set<RowRef> taken_;
};

}  // namespace vesk
