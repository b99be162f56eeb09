// What the lines of a raw file did not give, in words: refused, left unread, cut off.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "datafiles/data_lines.h"
#include "datafiles/raw_header.h"

namespace vesk {

/// What the lines of one file gave.
struct FileGaps {
  std::vector<Message> messages;  ///< for the message list; each names the file and a line
  bool whole = true;              ///< false when readings that the load should have are not in it
};

/// name: of the file, for the messages. window: the days that were asked for; nothing in single-file mode.
FileGaps GapsOf(const QString& name, const RawHeader& header, const DataLineTally& tally,
                const std::optional<DayWindow>& window);

}  // namespace vesk
