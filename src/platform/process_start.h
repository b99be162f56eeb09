// Starts other programs and lets them run on their own.
#pragma once

#include <QString>

#include "platform/result.h"

namespace vesk {

/// Starts an executable as a process of its own and does not wait for it.
/// @param program full path of the executable
/// @param workingFolder its current folder; this process keeps its own
/// Fails when the folder or the program is missing or the program cannot be started.
Status StartProgram(const QString& program, const QString& workingFolder);

}  // namespace vesk
