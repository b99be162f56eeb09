// The raw logger files of a data directory: which there are, how they are named, which of them count.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "datafiles/raw_header.h"
#include "datafiles/station_id.h"
#include "review/choice.h"

namespace vesk {

/// One raw file. listName carries the day count ("???-?????-??????=????.txt") even where the file on disk
/// could not be renamed; a fresh file whose header cannot be used keeps its name. diskName is what to open.
struct RawFile {
  QString diskName;
  QString listName;
  bool superseded = false;                    ///< a later read-out of the same recording is there
  RawHeader header;                           ///< once read
  std::optional<HeaderRefusal> refusal = {};  ///< why the header cannot be used, once read
  std::vector<QString>
      hides;  ///< disk names of further files that go under this list name; nothing reads them

  [[nodiscard]] bool Usable() const { return !refusal; }
  void Take(const HeaderReading& reading) {
    header = reading ? *reading : reading.Failure().header;
    refusal = reading ? std::nullopt : std::optional(reading.Failure());
  }
  /// "Version Hatasi: file, line and what was expected"; empty for a usable one.
  [[nodiscard]] Message WhyRefused() const;

  [[nodiscard]] StationId Station() const { return StationId(listName); }
};

/// True when the first nine characters of a file name can name a station: they begin with a number above 0.
bool IsStation(const StationId& station);

/// The stations of these file names: their first nine characters where that can be a station entry, each once
/// without regard to case, as the first one spells it.
std::vector<StationId> StationsOf(const std::vector<QString>& fileNames);

/// The stations of every "*.txt" name of the folder, in list order.
std::vector<StationId> ListStations(const QString& dataDirectory);

/// Raw files of the folder in list order; station: none for all. Nothing on disk
/// changes: the day counts of files as delivered are worked out from their headers, superseded read-outs
/// marked. A file that still has to get a name hides an older one that bears it: tidying puts that one away,
/// so the same file is read before and after.
std::vector<RawFile> ListRawFiles(const QString& dataDirectory, const std::optional<StationId>& station = {});

/// Reads the header of every file of the list, the headers only.
void ReadHeaders(const QString& dataDirectory, std::vector<RawFile>& files);

/// Files that are in use: those not superseded.
std::vector<RawFile> FilesInUse(const std::vector<RawFile>& files);

/// A line for each entry of the data directory that looks like a raw file and cannot be one: folders, FIFOs,
/// links to nowhere, and text files whose name is no valid UTF-8.
std::vector<Message> SkippedEntries(const QString& dataDirectory);

/// A line for each file that another one of the list hides.
std::vector<Message> HiddenFiles(const std::vector<RawFile>& files);

/// What tidying a data directory did, in words fit for the message list.
struct TidyReport {
  std::vector<Message> done;  ///< "a renamed to b", "a stamped"
  std::vector<QString>
      replaced;  ///< files that gave way to another one, by their names in the archive folder
  std::vector<Message> failures;  ///< files that stay as they are, and why
};

/// Stamps fresh files, renames files as delivered and pads day counts to four digits. What bears the new name
/// goes to the archive folder first. Files with an unreadable header keep their names; links are left alone.
TidyReport RenameRawFiles(const QString& dataDirectory);

/// Water years of the usable files, each once, in the order met. convertedWord marks a year whose converted
/// file ("S" + year + "-" + station + ".txt", case aside) is in the folder.
std::vector<StationWaterYear> WaterYearsOf(const std::vector<RawFile>& files, const QString& dataDirectory,
                                           const StationId& station, const QString& convertedWord);

}  // namespace vesk
