// Files that the program owns, each read and written in one go.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/result.h"

namespace vesk {

/// No file that the program writes comes near this; a larger one is refused by name instead of filling the
/// memory.
inline constexpr qint64 kLargestOwnFile = qint64{256} << 20;

/// All bytes of a file; none when there is no such file. Fails where a folder has the name, where the file is
/// too large or cannot be read. what: first part of the error, what failed.
Result<QByteArray> ReadWholeFile(const QString& path, const QString& what);

/// Puts the content in place of the file's, whole or not at all. what: first part of the error, what failed.
Status WriteWholeFile(const QString& path, const QByteArray& content, const QString& what);

/// Makes the bytes of a file, or the entries of a folder, last through a power cut. Fails when the file
/// cannot be opened or the disk reports an error; what: first part of the error.
Status SyncToDisk(const QString& path, const QString& what);

}  // namespace vesk
