#include "datafiles/file_bytes.h"

#include <QFile>

#include "platform/folder_entries.h"
#include "platform/system_reason.h"

namespace vesk {

Result<QByteArrayView> FileBytes::Read(const QString& path) {
  const Message what = Wording{u"Ham dosya okunamadı", u"The raw file could not be read"};
  QFile file;
  if (const Status opened = OpenToRead(file, path, what); !opened) return opened.Failure();
  const qint64 size = file.size();
  if (size > kLargestRawFile)
    return Error{
        what, path,
        Wording{u"1 GB'den büyük, bir cihazın dosyası olamaz", u"larger than 1 GB, so no logger wrote it"}};
  if (buffer_.size() < size) buffer_.resize(size);
  qint64 filled = 0;
  while (filled < size) {
    const qint64 got = file.read(buffer_.data() + filled, size - filled);
    if (got < 0) return Error{what, path, SystemReason(file.errorString())};
    if (got == 0) break;  // shortened meanwhile: what is there is read
    filled += got;
  }
  return QByteArrayView(buffer_.constData(), filled);
}

}  // namespace vesk
