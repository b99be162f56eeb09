// Raw logger files made by a formula: the same bytes every time, on every machine.
// The program make_sample_data writes them for a first look; tests and benchmarks make their own from plans.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

#include "datafiles/reading.h"
#include "platform/result.h"

namespace vesk::sample {

enum class Logger { OpticalEncoder, PressureSensor, Aquifer };

/// The logger type as header line 4 gives it, Windows-1254: "Optik Kodlu", "Basınç Sensörlü", "Akifer".
QByteArray LoggerText(Logger logger);

/// A point in time; hour 24 is midnight at the end of the day.
DateTime At(int year, int month, int day, int hour = 0, int minute = 0);

/// One raw file. The defaults give a good file of one day of hourly readings, 01:00 to 24:00.
struct RawFilePlan {
  QByteArray prefix = "101";          ///< characters 1 to 3 of the name; begins with a digit
  QByteArray station = "12001";       ///< five characters; name and header line 7
  QByteArray stem = "231002";         ///< six characters that the download software sets
  std::optional<int> dayCount;        ///< days in the name ("=0045"); none: the name as delivered
  QByteArray firstLine = "sefnor  ";  ///< header line 1: fresh marker, eight blanks, or a correction code
  QByteArray version = "11";
  Logger logger = Logger::OpticalEncoder;
  QByteArray region = "14";
  QByteArray basin = "15";
  DateTime first = At(2023, 10, 1, 1);   ///< first reading; midnight belongs to the day that ends with it
  int intervalMinutes = 60;              ///< between readings, more than 0
  int count = 24;                        ///< readings, gaps included
  std::function<int(DateTime)> levelCm;  ///< level at a reading, -999 to 9999 cm; 100 cm when empty
  std::function<bool(DateTime)> inGap;   ///< true: no reading at this time; none missing when empty
  std::function<bool(Day)> noExtremes;   ///< true: no Max/Min lines for this day; always written when empty
  std::optional<DateTime>
      lastInHeader;  ///< last-record time of the header when it differs from the last line
  char decimalSign = '.';
  char flag = ' ';  ///< column 22 of every data line
  QByteArray lineEnd = "\r\n";
  bool endMark = true;  ///< the closing line of 20 asterisks
};

/// "101-12001-231002.txt", or with its day count "101-12001-231002=0001.txt".
QString RawFileName(const RawFilePlan& plan);

/// The 15 header lines.
QByteArray RawHeaderBytes(const RawFilePlan& plan);

/// The whole file.
QByteArray RawFileBytes(const RawFilePlan& plan);

/// Writes the file into an existing folder under RawFileName; returns its path.
Result<QString> WriteRawFile(const QString& folder, const RawFilePlan& plan);

/// A river's level: a winter high, floods with a fast rise and a slow recession, and ripples of a centimetre.
struct River {
  int baseCm = 80;
  int seasonCm = 60;  ///< height of the winter high above the base
  int floodCm = 250;  ///< height of the greatest floods above the season's level; 0: no floods
  int rippleCm = 1;   ///< greatest departure up or down
  unsigned seed = 1;  ///< two rivers differ in their seed
};

/// Level in cm; depends on river and time only, so two read-outs of one recording agree.
int RiverLevelCm(const River& river, DateTime time);

/// A station of the sample data.
struct SampleStation {
  QString entry;  ///< "101-12001"
  QString name;   ///< for the station register
  std::vector<RawFilePlan> files;
};

/// Water years 2024 and 2025: an hourly optical encoder with a spike and an edited level, a 15-minute
/// pressure sensor with two read-outs of one recording, an aquifer well with a gap of nine days, a 15-minute
/// optical encoder with a slow clock and a day without extremes, and a file whose version is refused.
std::vector<SampleStation> SampleStations();

/// Writes every file of SampleStations; returns the names in writing order.
Result<QStringList> WriteSampleData(const QString& folder);

/// For benchmarks: that many files of one station each, 35,040 readings of water year 2025 at 15 minutes.
Result<QStringList> WriteBulkData(const QString& folder, int fileCount);

}  // namespace vesk::sample
