// Graph data files: one station and water year as fixed-length records, so that a graph can seek to any
// point.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <span>
#include <vector>

#include "datafiles/reading.h"
#include "platform/result.h"

namespace vesk {

inline constexpr int kGraphRecordBytes = 32;  ///< "dd/mm/yyyy,hh:mm,llllll,nn-ort" and CR LF

/// "Graf" + water year + "-" + the last six characters of the station, blanks in front when it is shorter, +
/// ".txt".
QString GraphFileName(int waterYear, const QString& station);

/// Whether a file is one that WriteGraphFile makes: its name and every one of its lines have that shape. An
/// empty one is what a year without readings gives.
bool IsOwnGraphFile(const QString& fileName, QByteArrayView content);

/// The station number that a graph file's name carries, without blanks and hyphen; empty for any other name.
QString StationOfGraphFile(const QString& fileName);
/// The water year that a graph file's name carries; 0 for any other name.
int WaterYearOfGraphFile(const QString& fileName);

struct GraphFileWritten {
  QString name;                    ///< file name in the data directory
  qint64 records = 0;              ///< readings written
  std::vector<qint64> cutRecords;  ///< numbers (from 1) of records whose level has more than six characters
};

/// Writes one record a reading, in order, into dataDirectory (trailing separator), whole or not at all. A
/// reading without a level (not a number) ends the file. A level text longer than its field keeps its last
/// six characters.
Result<GraphFileWritten> WriteGraphFile(const QString& dataDirectory, int waterYear, const QString& station,
                                        std::span<const Reading> readings);

/// One record as it stands in a file; the views point into the file's bytes.
struct GraphRecord {
  QByteArrayView date;   ///< "dd/mm/yyyy"
  QByteArrayView clock;  ///< "hh:mm"
  QByteArrayView level;  ///< cm, point decimal, blanks in front
  QByteArrayView label;  ///< "01-ort"
};

/// Number of records that content holds; a last record of up to five bytes is none.
qint64 GraphRecordCount(QByteArrayView content);

/// Record number n, counted from 1. Nothing when n is below 1 or lies behind the end.
std::optional<GraphRecord> GraphRecordAt(QByteArrayView content, qint64 n);

/// All bytes of a graph data file.
Result<QByteArray> ReadGraphFile(const QString& path);

}  // namespace vesk
