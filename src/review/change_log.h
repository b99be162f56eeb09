// The change log: the operator's corrections of one station and water year, kept apart from the raw files.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <limits>
#include <vector>

#include "platform/result.h"
#include "review/review_grid.h"
#include "review/saved_corrections.h"

namespace vesk {

/// One line: the texts of columns date, time, level and discharge.
struct ChangeLogLine {
  Day day{};
  int minuteOfDay = 0;
  double levelCm = 0;
  QString discharge;
};

/// Rows of a grid, both ends included; all of them when nothing else is said.
struct RowRange {
  int first = 1;
  int last = std::numeric_limits<int>::max();
  [[nodiscard]] bool Holds(int row) const { return row >= first && row <= last; }
};

/// What laying a change log over a grid did.
struct ChangeLogOverlay {
  int applied = 0;                  ///< rows changed
  int unreadable = 0;               ///< of the orphans: lines that could not be read
  std::vector<QByteArray> orphans;  ///< lines whose row is not in the grid; the next save writes them back
  std::vector<QString>
      messages;  ///< unreadable lines by number, how many lines found no reading, date correction
  SavedCorrection correction;  ///< the file's saved date correction, already applied
};

/// dataDirectory + station + "-Degisiklikler" + trimmed water-year entry + ".txt".
QString ChangeLogPath(const QString& dataDirectory, const QString& station, const QString& waterYearEntry);

/// The change log to read for a station and water year: the newest of the names that the year's entry can
/// have had (with no mark, or with the converted mark of either language), so that a correction is never lost
/// to a changed mark. The path for the entry as given when none exists. waterYearEntry empty: single-file
/// mode.
QString ChangeLogToRead(const QString& dataDirectory, const QString& station, const QString& waterYearEntry);

/// Lays the lines over the grid: each is looked for from the previous hit on, then from the first row.
/// within: the rows that the log is about; other rows take only lines that fit none of these.
ChangeLogOverlay ApplyChangeLog(QByteArrayView content, const QString& fileName, ReviewGrid& grid,
                                const RowRange& within = {});

/// Re-times the grid when a date correction was saved for it, then reads and applies the file; a missing file
/// is no error and changes nothing.
Result<ChangeLogOverlay> LoadChangeLog(const QString& path, ReviewGrid& grid, const RowRange& within = {});

/// Rows that carry a change, top to bottom.
std::vector<int> RowsToSave(const ReviewGrid& grid);

/// The bytes that SaveChangeLog would write.
QByteArray ChangeLogContent(const ReviewGrid& grid, const std::vector<int>& rows,
                            const std::vector<QByteArray>& orphans, const RowRange& within = {});

/// Writes these rows (of RowsToSave, and of those that the log is about), then the orphans of the load, whole
/// or not at all; on success the rows' baselines and codes are those of saved rows.
Status SaveChangeLog(const QString& path, ReviewGrid& grid, const std::vector<int>& rows,
                     const std::vector<QByteArray>& orphans, const RowRange& within = {});

}  // namespace vesk
