#include "datafiles/marker.h"

#include <QFile>

#include <algorithm>

#include "platform/folder_entries.h"
#include "platform/system_reason.h"

namespace vesk {
namespace {

constexpr qsizetype kMarkerBytes = 10;
constexpr char kMarker[] = "sefnor";
constexpr char kStamp[] = "        \r\n";
static_assert(sizeof(kStamp) - 1 == kMarkerBytes);

}  // namespace

Marker MarkerOf(QByteArrayView firstBytes) {
  const QByteArrayView start = firstBytes.first(std::min(firstBytes.size(), kMarkerBytes));
  if (!start.contains(kMarker)) return Marker::None;
  const qsizetype lineEnd = start.indexOf("\r\n");
  const bool wholeLine = lineEnd == kMarkerBytes - 2 && !start.first(lineEnd).contains('\n');
  return wholeLine ? Marker::Fresh : Marker::OddLine;
}

Marker MarkerOfFile(const QString& path) {
  QFile file;
  return OpenToRead(file, path, {}) ? MarkerOf(file.read(kMarkerBytes)) : Marker::None;
}

Status StampMarker(const QString& path) {
  const Message what = Wording{u"Okunma işareti silinemedi", u"The file could not be stamped"};
  QFile file;
  if (Status opened = OpenToChange(file, path, what); !opened) return opened;
  if (MarkerOf(file.read(kMarkerBytes)) != Marker::Fresh) return {};
  if (!file.seek(0) || file.write(kStamp, kMarkerBytes) != kMarkerBytes || !file.flush()) {
    return Error{what, path, SystemReason(file.errorString())};
  }
  return {};
}

}  // namespace vesk
