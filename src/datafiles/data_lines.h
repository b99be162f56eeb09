// Decodes the data lines of a raw logger file straight from its bytes.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

#include "datafiles/reading.h"
#include "platform/wording.h"

namespace vesk {

/// Days to be loaded, both included.
struct DayWindow {
  Day first{};
  Day last{};
};

/// A line that could not be read as a reading.
struct LineFault {
  qint64 line = 0;   ///< 1-based line number in the file
  Message expected;  ///< which field, and what it should have held
};

inline constexpr int kHeaderLines = 15;
inline constexpr std::size_t kMostFaultsKept = 20;  ///< faults named one by one; all are counted

/// What made the reading of a file end.
enum class DataEnd : std::uint8_t { EndOfFile, EndMark, BehindWindow };

/// kept + outsideWindow + blank + refused + afterEnd are all lines behind the header.
struct DataLineTally {
  qint64 kept = 0;
  qint64 outsideWindow = 0;  ///< unreadable ones with a date outside the window, too
  qint64 blank = 0;
  qint64 refused = 0;
  qint64 afterEnd = 0;            ///< the line of 20 asterisks and whatever follows it
  std::vector<LineFault> faults;  ///< the first kMostFaultsKept refused lines

  DataEnd end = DataEnd::EndOfFile;
  qint64 endLine =
      kHeaderLines;         ///< 1-based: the end mark, the first reading behind the window, or the last line
  qint64 unread = 0;        ///< lines with text behind endLine
  qint64 unreadInside = 0;  ///< readings among these that belong into the window
  qint64 stray = 0;         ///< readings dated before the window that stand behind a reading of it
  qint64 firstStrayLine = 0;
  bool lacksLastRecords = false;  ///< ends with an ordinary reading, though other days have their records
  qint64 joined = 0;              ///< lines that hold another reading behind the one that was read
  qint64 firstJoinedLine = 0;
  qint64 ordinary = 0;                   ///< ordinary readings up to endLine, outside the window too
  std::optional<DateTime> firstReading;  ///< the first one that was read, outside the window too
  std::optional<DateTime> lastReading;   ///< the last one of these
};

/// Appends the readings of a file to `out`. file: the whole file; headerEnd: 1-based byte offset of its first
/// data line; sourceFile: 1 to 99. Readings before the window are passed over, the first one behind it ends
/// the file; an extreme record goes with the ordinary reading before it.
DataLineTally DecodeDataLines(QByteArrayView file, qint64 headerEnd, std::uint8_t sourceFile,
                              const std::optional<DayWindow>& window, std::vector<Reading>& out);

/// Number (1 to 15) of a header line that is a reading, because a line of the header is missing, or that has
/// zero bytes and may have swallowed readings; nothing when there is none. headerEnd: as above.
std::optional<int> ReadingInHeader(QByteArrayView file, qint64 headerEnd);

}  // namespace vesk
