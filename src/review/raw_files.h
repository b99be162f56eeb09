// The raw logger files of a data directory: which there are, how they are named, which of them count.
#pragma once

#include <QString>

#include <vector>

#include "datafiles/raw_header.h"

namespace vesk {

/// One raw file. listName carries the day count ("???-?????-??????=????.txt") even where the file on disk
/// could not be renamed; diskName is what to open.
struct RawFile {
  QString diskName;
  QString listName;
  bool superseded = false;   ///< a later read-out of the same recording is there
  RawHeaderReading reading;  ///< header, once read

  [[nodiscard]] QString Station() const { return listName.left(9); }
};

/// A water year of a station, as its list shows it.
struct WaterYearEntry {
  int waterYear = 0;
  QString text;  ///< year, blank, mark
};

/// True when the first nine characters of a file name can be a station entry: they begin with a number above
/// 0.
bool IsStationEntry(const QString& entry);

/// First nine characters of every "*.txt" name of the folder that can be a station entry, each once, in list
/// order.
std::vector<QString> ListStations(const QString& dataDirectory);

/// Raw files of the folder in list order; station: a nine-character entry, or empty for all. Nothing on disk
/// changes: the day counts of files as delivered are worked out from their headers, superseded read-outs
/// marked. A delivered file hides an older file of the name it would get.
std::vector<RawFile> ListRawFiles(const QString& dataDirectory, const QString& station = {});

/// Reads the header of every file of the list, the headers only.
void ReadHeaders(const QString& dataDirectory, std::vector<RawFile>& files);

/// Files that are in use: those not superseded.
std::vector<RawFile> FilesInUse(const std::vector<RawFile>& files);

/// Folders of the data directory that bear a raw file's name; nothing reads them.
std::vector<QString> FoldersNamedLikeRawFiles(const QString& dataDirectory);

/// What tidying a data directory did, in words fit for the message list.
struct TidyReport {
  std::vector<QString> done;      ///< "a renamed to b", "a stamped"
  std::vector<QString> replaced;  ///< names of files that gave way to another one; now in the archive folder
  std::vector<QString> failures;  ///< files that stay as they are, and why
};

/// Stamps fresh files, renames files as delivered and pads day counts to four digits. A different file that
/// bears the new name goes to the archive folder first.
TidyReport RenameRawFiles(const QString& dataDirectory);

/// Water years of the usable files, each once, in the order met. convertedWord marks a year whose converted
/// file ("S" + year + "-" + station + ".txt") is in the folder.
std::vector<WaterYearEntry> WaterYearsOf(const std::vector<RawFile>& files, const QString& dataDirectory,
                                         const QString& station, const QString& convertedWord);

}  // namespace vesk
