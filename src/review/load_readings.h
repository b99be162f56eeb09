// Loading one raw file, or a station's water years, into the review grid.
#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

#include "datafiles/raw_header.h"
#include "review/change_log.h"
#include "review/raw_files.h"
#include "review/read_out.h"
#include "review/setup_parameters.h"

namespace vesk {

inline constexpr int kMostFilesInLoad = 20;

/// What is to be loaded. Files are the station's list, in list order, superseded read-outs left out.
struct LoadRequest {
  QString dataDirectory;  ///< with its trailing separator
  StationId station;
  QString stationName;         ///< as the register has it; shown among the setup parameters
  std::vector<RawFile> files;  ///< for water years: all files of the station; else the one
  Choice choice;
  Regional regional;
  std::function<void(int percent)> progress;  ///< 1 to 100, rising; called after each file; may be empty
};

/// A change log that was laid over the load, and where the next save goes.
struct LoadedChangeLog {
  RowRange rows;   ///< those that came in with its water year; the next save writes them here
  QString saveTo;  ///< path of the next save
  ChangeLogOverlay overlay;
};

struct LoadedReadings {
  StationSeries series;           ///< the readings, with the saved corrections laid over them
  SetupCells setup;               ///< "--" where the files of a water year differ
  std::vector<QString> files;     ///< names of the files used, in file-number order
  std::vector<ReadOut> readOuts;  ///< the same, each once a water year
  std::vector<Message> messages;  ///< for the message list
  RawHeader header;               ///< of the last file read
  /// False when a file or a part of one is missing from the load; NotWholeNote (not_whole_note.h) words it.
  bool whole = true;
  /// Disk names, those of good files behind a refused one that ended the load among them.
  std::vector<QString> missedFiles;
  std::vector<QString> partialFiles;  ///< disk names of files of which lines are missing
  QString refusedFile;  ///< file whose header ended the load, later years included; empty when none did
  std::vector<LoadedChangeLog> changeLogs;  ///< one a chosen water year, or the one of a single file
  qint64 refusedLines = 0;                  ///< lines of the files used that could not be read
  std::optional<WaterYear> lastYear;        ///< the last one that was loaded; none of a single file
};

/// Reads the readings, lays the change log over them, takes the baseline.
Result<LoadedReadings> LoadReadings(const LoadRequest& request);

}  // namespace vesk
