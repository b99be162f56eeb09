// The 15-line header of a raw logger file: reader, record and the notes that go with it.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>
#include <functional>
#include <vector>

#include "datafiles/helpers.h"
#include "datafiles/reading.h"
#include "platform/regional.h"
#include "platform/result.h"

namespace vesk {

/// Versions of the raw format that are read, as one text: a version v is accepted when "V" + v occurs in it.
inline constexpr char kAcceptedVersions[] = "V10V11V21";

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
  qint64 HeaderEnd = 0;  ///< 1-based byte offset of the first data line
};

/// The 15 values beside the setup-parameter labels, top to bottom.
using SetupCells = std::array<QString, 15>;

enum class HeaderScope { SingleFile, WaterYear };  ///< which correction-note prefix applies
enum class HeaderMode { Full, HeaderOnly };        ///< Full also fills the setup cells

/// What the first ten bytes of a file say of its marker.
enum class Marker {
  None,
  Fresh,   ///< a line of ten bytes, CR LF among them: it can be stamped
  OddLine  ///< the word in a line of another length: stamping would spoil the lines behind it
};

/// firstBytes: the file's beginning, ten bytes or more.
Marker MarkerOf(QByteArrayView firstBytes);

/// What the reader needs from outside. Null members are left out.
struct HeaderSinks {
  QString dataDirectory;                     ///< folder of the file, with its trailing separator
  std::vector<Message>* messages = nullptr;  ///< message list; cleared by every call
  SetupCells* cells = nullptr;               ///< written in full mode
  Regional regional;                         ///< how the header's numbers are read
  QString stationName;                       ///< name shown in the setup cells
  bool stampMarker = false;  ///< replace a fresh file's marker; the only change ever made, and none to a link
};

/// errorText is empty for a usable file, else "Version Hatasi" or "Data'da Bilinmeyen Bir Hata Var";
/// fields behind a failure stay at their reset values.
struct RawHeaderReading {
  RawHeader header;
  QString errorText;
  Message detail;  ///< file, line and what was expected, for the message list; empty when fine
  bool yearsKnown =
      false;  ///< both water years can be relied on: of a refused header, all but the version is well
  [[nodiscard]] bool Usable() const { return errorText.isEmpty(); }
};

/// Decodes a header from the first bytes of a file. fileName is only used for names and messages.
RawHeaderReading DecodeRawHeader(QByteArrayView bytes, const QString& fileName, HeaderScope scope,
                                 HeaderMode mode, const HeaderSinks& sinks);

/// Reads dataDirectory + fileName: header only, never the data lines. A missing file gives an untouched
/// record and no error text.
RawHeaderReading ReadRawHeader(const QString& fileName, HeaderScope scope, HeaderMode mode,
                               const HeaderSinks& sinks);

}  // namespace vesk
