// Finds the rows that the lines of a change log are about.
#pragma once

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "review/change_log.h"

namespace vesk {

/// Rows of a grid by time, so that a line is found at once wherever it stands.
class RowIndex {
 public:
  RowIndex(const ReviewGrid& grid, const RowRange& within);

  /// First row at or after startRow with that time; 0 when there is none.
  [[nodiscard]] int Find(DateTime time, int startRow) const;

 private:
  using Entry = std::pair<DateTime, int>;
  std::vector<Entry> entries_;
};

/// Levels that are written alike.
bool IsSameLevel(double aCm, double bCm);

/// The reading that a row stands for, with what corrects it, as the record keeps it.
Correction CorrectionOf(const StationSeries& series, const RowRef& row, const Authorship& author);

/// Rows of one series for the lines of one log. Every row is given out once.
class RowFinder {
 public:
  /// As ApplyChangeLog takes them. From the first TakeNext on the series stays as it is.
  RowFinder(const StationSeries& series, const RowRange& within);

  /// The raw row of a correction; nothing when it is not there or has been given out.
  std::optional<RowRef> Take(const Correction& correction);
  /// The only reading that equals the corrected one in time, kind and raw level, whatever its file.
  std::optional<RowRef> TakeEqual(const Correction& correction);
  /// The row of a line that says no more than its time: from the row of the line before on.
  std::optional<RowRef> TakeNext(DateTime time);

 private:
  struct Search {
    int from = 1;
  };
  std::optional<RowRef> TakeRaw(int rawRow);
  int NextFree(const RowIndex& index, Search& search, DateTime time) const;

  const StationSeries& series_;
  RowRange within_;
  RowIndex raw_;
  std::optional<RowIndex> shown_, all_;
  Search ownSearch_, allSearch_;
  std::set<RowRef> taken_;
};

}  // namespace vesk
