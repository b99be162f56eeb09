// The change log: the operator's corrections of one station and water year, kept apart from the raw files.
// Beside it stands the review record, which says which reading each of its lines corrects.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <limits>
#include <map>
#include <optional>
#include <vector>

#include "datafiles/station_id.h"
#include "platform/result.h"
#include "review/choice.h"
#include "review/review_record.h"
#include "review/saved_corrections.h"
#include "review/station_series.h"

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

/// What laying a change log over a load did, and what the next save needs to know of it.
struct ChangeLogOverlay {
  int applied = 0;                    ///< rows changed
  int unreadable = 0;                 ///< of the orphans: lines that could not be read
  std::vector<RecordedLine> orphans;  ///< lines whose row is not in the load; the next save writes them back
  std::vector<RecordedLine> others;   ///< lines of the station's other single files; written back as well
  std::vector<Correction> othersHidden;  ///< of the other single files, not in the log
  std::map<RowRef, Authorship> authors;  ///< who corrected what was laid
  std::vector<Message> messages;         ///< lines by number, and why; date correction
  SavedCorrection correction;            ///< the file's saved date correction, already applied
  QString path;                          ///< of the log that was read
  QByteArray tried;                      ///< hash of a log whose save failed; it may be in place all the same
  QByteArray hash;                       ///< of its bytes
  QByteArray triedHash;                  ///< of a save that failed: its log may be in place all the same
};

/// dataDirectory + station + "-Degisiklikler" + year and mark + ".txt". year: none of a single file.
QString ChangeLogPath(const QString& dataDirectory, const StationId& station,
                      const std::optional<StationWaterYear>& year);

/// The change log to read for a station and water year: the newest of the names that the year can have had
/// (with no mark, or with the converted mark of either language), so that a correction is never lost to a
/// changed mark. The path for the year as given when none exists.
QString ChangeLogToRead(const QString& dataDirectory, const StationId& station,
                        const std::optional<StationWaterYear>& year);

/// Reads a log's line; on failure `expected` says what a field should have held.
std::optional<ChangeLogLine> ReadChangeLogLine(QByteArrayView bytes, Message& expected);

/// Lays a log's lines over the series. A line whose reading the record tells goes to that reading and to no
/// other. Any other line (an older hand's, or the record is not that log's) goes to the next row of its date
/// and time behind the line before, so that an extreme record is told from the reading of its minute. A row
/// takes one line; what fits nowhere is kept and named.
/// within: the rows that the log is about; others take only lines without a known reading that fit none of
/// these. singleFile: the lines of other raw files are another load's. timesAreKnown: false where a date
/// correction that the log's times may go with cannot be read; a line that says no more than its time is then
/// kept and not laid.
ChangeLogOverlay ApplyChangeLog(QByteArrayView content, const QString& fileName, const ReviewRecord& record,
                                StationSeries& series, bool singleFile, const RowRange& within = {},
                                bool timesAreKnown = true);

/// Re-times the series when a date correction was saved for it, then reads and applies the file; a missing
/// file is no error and changes nothing. Log, record and date correction are read as of one moment, whoever
/// saves meanwhile.
Result<ChangeLogOverlay> LoadChangeLog(const QString& path, StationSeries& series, bool singleFile,
                                       const RowRange& within = {});

/// A log as it is to be saved.
struct ChangeLogToSave {
  QByteArray content;
  RecordState state;
  std::map<RowRef, Authorship> authors;  ///< the rows that content and state hold, and who corrected each
};

/// The rows that carry a change and lie within, in grid order, then what a load could not place.
/// author: of rows changed since the last save; purposes: what each of them was changed for.
ChangeLogToSave FormChangeLog(const StationSeries& series, const ChangeLogOverlay& overlay,
                              const Authorship& author, const RowRange& within = {},
                              const std::map<RowRef, Purpose>& purposes = {});

/// Writes record and log, each whole or not at all, the record first; wherever that is cut, the record fits
/// the log that is there. On success the overlay is that of the saved log; marks are the caller's to update
/// (MarkSaved).
Status SaveChangeLog(const QString& path, const ChangeLogToSave& log, ChangeLogOverlay& overlay);

/// True when the log is no longer what the overlay was read from: someone else has saved since.
Result<bool> HasChangedSince(const ChangeLogOverlay& overlay);

/// Baselines, codes and shades of rows that have been saved.
void MarkSaved(StationSeries& series, const std::map<RowRef, Authorship>& rows);

}  // namespace vesk
