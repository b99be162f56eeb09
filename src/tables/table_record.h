// What the program remembers of the tables it wrote, so that a table somebody worked on is not replaced
// unasked. The record lies beside its table and goes where the folder goes.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/result.h"

namespace vesk {

enum class TableOrigin {
  None,     ///< there is no such file
  Own,      ///< as the program wrote it
  Changed,  ///< the program wrote a table there, and this one is another
  Unknown   ///< nothing tells where it comes from
};

/// A table file as it lies there.
struct TableFound {
  TableOrigin origin = TableOrigin::None;
  QByteArray digest;  ///< SHA-256 in lower hexadecimal; empty when there is no file or it cannot be read
};

/// Path of the record of a table: hidden, in the table's folder; each line is a digest as sha256sum prints
/// it.
QString TableRecordPath(const QString& tablePath);

/// A file or record that cannot be read is Unknown.
TableFound LookAtTable(const QString& tablePath);

/// Remembers the finished copy of a table before it takes the table's place: a kill between the two leaves a
/// table that is known, whichever of both it is. copyPath: the finished copy. Fails when the copy cannot be
/// read or the record cannot be written; the next build then asks.
Status RememberTable(const QString& copyPath, const QString& tablePath);

}  // namespace vesk
