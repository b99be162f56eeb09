// Files that the program owns, each read and written in one go, and moves that never replace anything.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/result.h"

namespace vesk {

/// No file that the program writes comes near this; a larger one is refused by name instead of filling the
/// memory.
inline constexpr qint64 kLargestOwnFile = qint64{256} << 20;

/// All bytes of a file; none when there is no such file. Fails where anything but a file has the name, where
/// the file is too large or cannot be read. what: first part of the error, what failed.
Result<QByteArray> ReadWholeFile(const QString& path, const Message& what);

/// Puts the content in place of the file's, whole or not at all, and makes it last: a disk that cannot keep
/// the bytes is a failure, and then the file is the one that was there. When only the folder could not be
/// made to last, the content is in place and a power cut may bring the older file back; that is a failure,
/// too. what: first part of the error, what failed.
Status WriteWholeFile(const QString& path, const QByteArray& content, const Message& what);

/// The same for a file that is not there yet. Fails, and changes nothing, when the name is taken, also when
/// it is taken at the last moment.
Status WriteNewFile(const QString& path, const QByteArray& content, const Message& what);

/// Makes the bytes of a file, or the entries of a folder, last through a power cut. Fails when the file
/// cannot be opened or the disk reports an error; what: first part of the error.
Status SyncToDisk(const QString& path, const Message& what);

enum class Move { Done, NameTaken, OtherDisk };

/// Gives a file another name. Never replaces anything, whoever else works in the folders. A name on another
/// disk needs a copy: nothing is done. Fails with the system's reason; what: first part of the error.
Result<Move> MoveToFreeName(const QString& from, const QString& to, const Message& what);

}  // namespace vesk
