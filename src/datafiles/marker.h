// The marker that a read-out carries until this program has seen it.
#pragma once

#include <QByteArrayView>
#include <QString>

#include "platform/result.h"

namespace vesk {

/// What the first ten bytes of a file say of its marker.
enum class Marker {
  None,
  Fresh,   ///< a line of ten bytes, CR LF among them: it can be stamped
  OddLine  ///< the word in a line of another length: stamping would spoil the lines behind it
};

/// firstBytes: the file's beginning, ten bytes or more.
Marker MarkerOf(QByteArrayView firstBytes);
/// None for a file that cannot be read.
Marker MarkerOfFile(const QString& path);

/// Writes ten bytes of the same length over a fresh file's marker, the only change that is ever made to a raw
/// file's content; nothing happens to any other file, nor to what is only linked to. Fails when the marker is
/// still there afterwards.
Status StampMarker(const QString& path);

}  // namespace vesk
