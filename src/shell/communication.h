// Starts the separate program that reads the loggers out in the field.
#pragma once

#include <QString>
#include <QStringList>

#include "platform/result.h"
#include "shell/run_values.h"

namespace vesk {

struct SplitPath {
  QString folder;    ///< empty when the path has none
  QString fileName;  ///< at most 80 characters
};

/// Splits at the last separator. A "\" counts from the fourth character on, so that of a drive root never
/// does; a "/" counts anywhere, and a file in the root folder has the folder "/".
SplitPath SplitProgramPath(const QString& path);

/// What to start, and where.
struct CommunicationProgram {
  QString program;        ///< full path
  QString workingFolder;  ///< with one trailing "/"
};

/// Where the settings of the current language say the program is. A path without a folder is looked up in the
/// program folder, then in searchFolders. Fails, naming the settings section and key, when nothing is set or
/// nothing is there.
Result<CommunicationProgram> FindCommunicationProgram(const RunValues& run, const QStringList& searchFolders);

/// Finds the program (on the PATH, too) and starts it without waiting.
Status StartCommunicationProgram(const RunValues& run);

}  // namespace vesk
