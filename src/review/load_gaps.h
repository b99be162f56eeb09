// What a load does without, in words: lines of a file that were left unread, files that are missing.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "datafiles/data_lines.h"
#include "datafiles/raw_header.h"

namespace vesk {

struct LoadedReadings;

/// What the lines of one file gave.
struct FileGaps {
  std::vector<QString> messages;  ///< for the message list; each names the file and a line
  bool whole = true;              ///< false when readings that the load should have are not in it
};

/// name: of the file, for the messages. window: the days that were asked for; nothing in single-file mode.
FileGaps GapsOf(const QString& name, const RawHeader& header, const DataLineTally& tally,
                const std::optional<DayWindow>& window);

/// The same text in both languages.
struct TwoTexts {
  QString turkish, english;
};

/// What a load does without, files named: for the question before a table or graph of it, and for the note on
/// these. Empty texts for a whole load.
TwoTexts NotWholeNote(const LoadedReadings& loaded);

}  // namespace vesk
