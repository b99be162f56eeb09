// Moves superseded read-outs out of the way: of several files with one stem only the last good one in the
// list stays. Nothing in the archive folder is ever replaced.
#pragma once

#include <QString>

#include <vector>

#include "platform/result.h"

namespace vesk {

inline constexpr char kArchiveFolder[] = "Arsiv";

struct ArchiveReport {
  bool changed = false;           ///< at least one file was archived: list the files again
  std::vector<QString> archived;  ///< names in the archive folder
  std::vector<Error> failures;    ///< files that stay where they are
};

/// A read-out as far as the rule below looks at it.
struct ListedReadOut {
  QString name;         ///< only its first 16 characters count, case aside
  bool usable = true;   ///< its header can be used
  bool counted = true;  ///< it bears its day count
};

/// Which entries of a list a later one supersedes. An unreadable header supersedes nothing, and a fresh file
/// with such a header is not put away before somebody has seen it.
std::vector<bool> Superseded(const std::vector<ListedReadOut>& list);

/// Moves a file of the data directory into the archive folder (made when missing) and returns the name that
/// it has there: its own, or with " (2)", " (3)" ... when that is taken by another content. Links are
/// refused. A file that cannot be archived for good stays where it is.
Result<QString> MoveToArchive(const QString& dataDirectory, const QString& name);

/// True when both files can be read and hold the same bytes.
bool SameContent(const QString& pathA, const QString& pathB);

/// Moves each superseded file of the list into the archive folder. listedNames: names in list order; only
/// their first 25 characters count.
ArchiveReport ArchiveDuplicateRawFiles(const QString& dataDirectory, const std::vector<QString>& listedNames);

}  // namespace vesk
