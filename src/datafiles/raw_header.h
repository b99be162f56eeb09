// The 15-line header of a raw logger file: record and reader.
#pragma once

#include <QByteArrayView>
#include <QString>

#include "datafiles/reading.h"
#include "platform/regional.h"
#include "platform/result.h"

namespace vesk {

struct RawHeader {
  QString CompanionName;  ///< data directory + name with its 9th character "_" + ".xxx"
  QString Version;
  QString LoggerType;
  QString RegionNo;
  QString BasinNo;
  QString StationNo;
  DateTime SetupTime{};
  int SetupDay = 0, SetupMonth = 0, SetupYear = 0, SetupHour = 0, SetupMinute = 0;
  DateTime FirstRecordTime{};
  int FirstDay = 0, FirstMonth = 0, FirstYear = 0, FirstHour = 0, FirstMinute = 0;
  QString FirstClock;  ///< hour:minute without padding
  DateTime LastRecordTime{};
  int LastHour = 0, LastMinute = 0;
  QString LastClock;
  int FirstWaterYear = 0, LastWaterYear = 0;
  QString WaterYearStart;  ///< first day of the first water year, dd/mm/yyyy
  QString WaterYearsText;  ///< " 2009" or " 2008 - 2009"
  double SampleCount = 0;
  double SampleInterval = 0;  ///< minutes
  double RecordInterval = 0;  ///< minutes
  int DaysCovered = 0;
  qint64 HeaderEnd = 0;    ///< 1-based byte offset of the first data line
  QString correctionCode;  ///< line 1, trimmed: "01", "02" and "03" tell of corrections at the office
};

/// Why a header cannot be used.
enum class HeaderFault {
  Missing,     ///< no such file
  Unreadable,  ///< something else than a file, or the system refuses it
  Version,     ///< of a version that is not read
  Damaged      ///< a line is missing or holds something else than it should
};

struct HeaderRefusal {
  HeaderFault fault = HeaderFault::Damaged;
  Message detail;           ///< file, line and what was expected
  RawHeader header;         ///< what could be read of it; the rest stays at its reset values
  bool yearsKnown = false;  ///< both water years can be relied on: all but the version is well
  bool damaged = false;     ///< a line could not be read, whatever the fault
};

using HeaderReading = Result<RawHeader, HeaderRefusal>;

/// Reads a header from the first bytes of a file. dataDirectory (with its trailing separator) and fileName
/// are only used for names and messages. regional: how the header's numbers are read.
HeaderReading ReadRawHeader(QByteArrayView bytes, const QString& dataDirectory, const QString& fileName,
                            const Regional& regional = {});

/// The same of the file dataDirectory + fileName, of which no more than the header is read.
HeaderReading ReadHeaderOfFile(const QString& dataDirectory, const QString& fileName,
                               const Regional& regional = {});

}  // namespace vesk
