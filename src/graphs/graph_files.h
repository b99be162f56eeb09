// The multiple-station draw command: every entry of the graph list becomes a graph data file.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

#include "datafiles/station_id.h"
#include "platform/result.h"
#include "review/choice.h"
#include "review/load_readings.h"
#include "shell/language.h"

namespace vesk {

inline constexpr int kMostGraphStations = 4;  ///< one series colour each among the options

/// An entry of the graph list.
struct GraphListEntry {
  StationId station;
  WaterYear year;

  /// "station/year", as the list shows it.
  [[nodiscard]] QString Text() const;
  bool operator==(const GraphListEntry&) const = default;
};

/// Name of the entry's graph data file.
QString FileNameOf(const GraphListEntry& entry);

/// One written graph data file.
struct GraphFileEntry {
  QString path;      ///< data directory and file name
  QString fileName;  ///< "Graf2011--12345.txt"
  QString station;   ///< station number as the file name carries it
  int waterYear = 0;
};

struct GraphFilesBuilt {
  std::vector<GraphFileEntry> files;  ///< in list order
  QStringList messages;  ///< for the message list: "station/year: " and what its load or the writer has to
                         ///< tell; files of the pattern "Graf*.*" that the program did not write
  QStringList notes;  ///< for the picture: loads that are not whole, stations that are left out. Ask before
                      ///< drawing when there are any
};

/// Loads one station's water year, as the review window does.
using LoadWaterYear = std::function<Result<LoadedReadings>(const GraphListEntry& entry)>;

/// Loads each entry, takes every "Graf*.*" out of dataDirectory and writes the entries' graph data files.
/// What the program did not write goes to the archive folder, its own files are deleted; links, folders and
/// what cannot be archived stay and are named. An entry that cannot be loaded is named and left out. Fails
/// before anything is deleted: on an empty list, on more than kMostGraphStations entries, on two entries that
/// share a file name (001-12345 and 002-12345 of one year), when no entry can be loaded, when a link or
/// folder has the name of a file to write. language: of the messages and notes.
Result<GraphFilesBuilt> BuildGraphFiles(const QString& dataDirectory, const std::vector<GraphListEntry>& list,
                                        const LoadWaterYear& load, const Language& language = {});

}  // namespace vesk
