#include "platform/whole_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace vesk {
namespace {

/// A buffer that found only part of its place is an "Unknown error" to the library.
QString WhyNotWritten(const QSaveFile& file) {
  const QString told = file.errorString();
  if (told != QIODevice::tr("Unknown error")) return told;
  return QStringLiteral("only a part of it could be written; is the disk full?");
}

}  // namespace

Result<QByteArray> ReadWholeFile(const QString& path, const QString& what) {
  const QFileInfo info(path);
  if (!info.exists()) return QByteArray();
  if (!info.isFile()) return Error{what, path, QStringLiteral("it is no file")};
  if (info.size() > kLargestOwnFile) return Error{what, path, QStringLiteral("it is too large")};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return Error{what, path, file.errorString()};
  const QByteArray content = file.readAll();
  if (file.error() != QFileDevice::NoError) return Error{what, path, file.errorString()};
  return content;
}

Status WriteWholeFile(const QString& path, const QByteArray& content, const QString& what) {
  QSaveFile file(path);
  // commit() alone does not notice that the last buffer found no place on a full disk.
  const bool written =
      file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
  if (!written || !file.commit()) return Error{what, path, WhyNotWritten(file)};
  (void)SyncToDisk(QFileInfo(path).absolutePath(), what);  // its new name; not every file system can
  return {};
}

Status SyncToDisk(const QString& path, const QString& what) {
  const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
  const bool synced = handle >= 0 && (::fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP);
  const int problem = errno;  // EINVAL, ENOTSUP: this file system has nothing to wait for
  if (handle >= 0) ::close(handle);
  if (synced) return {};
  return Error{what, path, qt_error_string(problem)};
}

}  // namespace vesk
