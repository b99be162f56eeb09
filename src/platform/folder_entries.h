// What a folder holds, told apart before anything is opened: a FIFO or a link is not met by surprise.
#pragma once

#include <QFile>
#include <QString>

#include <vector>

#include "platform/result.h"

namespace vesk {

enum class EntryKind {
  File,        ///< a regular file of the folder itself
  LinkToFile,  ///< a symbolic link to a regular file; to be read at most
  Folder,      ///< a folder, or a link to one
  Other        ///< a FIFO, socket, device, or a link to one of these or to nothing
};

struct FolderEntry {
  QString
      name;  ///< as the program can open it; bytes that are no UTF-8 stand as \xNN, and nothing opens that
  EntryKind kind = EntryKind::Other;
  bool nameIsText = true;  ///< the name is valid UTF-8
};

/// Entries of a folder but "." and "..", in no order. A folder that cannot be read has none.
std::vector<FolderEntry> FolderEntries(const QString& folder);

/// What a path itself is, links not followed for regular files; Other when there is nothing.
EntryKind KindOf(const QString& path);

/// Opens a regular file, or a link to one, for reading. Never waits for a FIFO. what: first part of the
/// error.
Status OpenToRead(QFile& file, const QString& path, const Message& what);

/// Opens a regular file for reading and writing in place; a link is refused.
Status OpenToChange(QFile& file, const QString& path, const Message& what);

}  // namespace vesk
