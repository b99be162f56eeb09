// Moves superseded read-outs out of the way: of several files with one stem only the last in the list stays.
#pragma once

#include <QString>

#include <vector>

#include "platform/result.h"

namespace vesk {

inline constexpr char kArchiveFolder[] = "Arsiv";

struct ArchiveReport {
  bool changed = false;           ///< at least one file was archived: list the files again
  std::vector<QString> archived;  ///< names, now in the archive folder
  std::vector<Error> failures;    ///< files that stayed where they are
};

/// Puts a copy of a file into the archive folder (made when missing), replacing an older copy of that name.
Status CopyToArchive(const QString& dataDirectory, const QString& name);

/// The names of a list that a later entry supersedes, by their first 16 characters (case aside).
std::vector<QString> SupersededNames(const std::vector<QString>& listedNames);

/// Copies each superseded file of the list into the archive folder (made when missing, an older copy is
/// replaced) and then deletes it from the data directory. A file that cannot be copied whole is not deleted.
/// listedNames: names in list order; only their first 25 characters count.
ArchiveReport ArchiveDuplicateRawFiles(const QString& dataDirectory, const std::vector<QString>& listedNames);

}  // namespace vesk
