#include "platform/whole_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/folder_entries.h"
#include "platform/system_reason.h"

namespace vesk {
namespace {

/// A buffer that found only part of its place is an "Unknown error" to the library.
Message WhyNotWritten(const QFileDevice& file) {
  const QString told = file.errorString();
  if (told != QIODevice::tr("Unknown error")) return SystemReason(told);
  return Wording{u"yalnız bir bölümü yazılabildi; disk dolu mu?",
                 u"only a part of it could be written; is the disk full?"};
}

/// Empty: the disk has the bytes, or the file system has nothing to wait for (EINVAL, ENOTSUP). Else why not.
Message SyncHandle(int handle) {
  int result = ::fsync(handle);
  while (result != 0 && errno == EINTR) result = ::fsync(handle);
  return result == 0 || errno == EINVAL || errno == ENOTSUP ? Message() : SystemReason(errno);
}

/// Writes into a file that is open under a name of its own and waits for the disk. Neither the library's
/// commit nor its flush tells when the disk could not keep the bytes.
Status FillAndSync(QFileDevice& file, const QByteArray& content, const QString& path, const Message& what) {
  if (file.write(content) != content.size() || !file.flush()) return Error{what, path, WhyNotWritten(file)};
  const Message problem = SyncHandle(file.handle());
  return problem.IsEmpty() ? Status() : Error{what, path, problem};
}

bool LacksExclusiveRename(int problem) {
  return problem == EINVAL || problem == ENOSYS || problem == ENOTSUP;
}

/// For file systems whose rename cannot be told to spare a file: a second name, which is refused when it is
/// taken, and then the first one goes. 0, or the error number.
int LinkAndUnlink(const char* from, const char* to) {
  if (::link(from, to) != 0) return errno;
  return ::unlink(from) == 0 ? 0 : errno;
}

/// For file systems without second names either: an empty file holds the name, and only it is replaced.
int ReserveAndRename(const char* from, const char* to) {
  const int handle = ::open(to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (handle < 0) return errno;
  ::close(handle);
  if (::rename(from, to) == 0) return 0;
  const int problem = errno;
  ::unlink(to);
  return problem;
}

int RenameSparing(const char* from, const char* to) {
  if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return 0;
  if (!LacksExclusiveRename(errno)) return errno;
  const int linked = LinkAndUnlink(from, to);
  return linked == EPERM || LacksExclusiveRename(linked) ? ReserveAndRename(from, to) : linked;
}

Status NameForGood(const QString& temporary, const QString& path, const Message& what) {
  const auto moved = MoveToFreeName(temporary, path, what);
  if (!moved) return moved.Failure();
  return *moved == Move::Done ? Status() : Error{what, path, Wording{u"zaten var", u"it exists already"}};
}

}  // namespace

Result<QByteArray> ReadWholeFile(const QString& path, const Message& what) {
  const QFileInfo info(path);
  if (!info.exists()) return QByteArray();
  if (!info.isFile()) return Error{what, path, Wording{u"bu bir dosya değil", u"it is no file"}};
  if (info.size() > kLargestOwnFile) return Error{what, path, Wording{u"çok büyük", u"it is too large"}};
  QFile file;
  if (const Status opened = OpenToRead(file, path, what); !opened) return opened.Failure();
  const QByteArray content = file.readAll();
  if (file.error() != QFileDevice::NoError) return Error{what, path, SystemReason(file.errorString())};
  return content;
}

Status WriteWholeFile(const QString& path, const QByteArray& content, const Message& what) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return Error{what, path, WhyNotWritten(file)};
  if (Status filled = FillAndSync(file, content, path, what); !filled) return filled;
  if (!file.commit()) return Error{what, path, WhyNotWritten(file)};
  return SyncToDisk(QFileInfo(path).absolutePath(), what);
}

Status WriteNewFile(const QString& path, const QByteArray& content, const Message& what) {
  const QString number = QString::number(QRandomGenerator::global()->generate(), 16);
  QFile file(path + QLatin1Char('.') + number);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
    return Error{what, path, SystemReason(file.errorString())};
  Status done = FillAndSync(file, content, path, what);
  file.close();
  if (done) done = NameForGood(file.fileName(), path, what);
  if (!done) file.remove();
  return done ? SyncToDisk(QFileInfo(path).absolutePath(), what) : done;
}

Status SyncToDisk(const QString& path, const Message& what) {
  const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (handle < 0) return Error{what, path, SystemReason(errno)};
  const Message problem = SyncHandle(handle);
  ::close(handle);
  return problem.IsEmpty() ? Status() : Error{what, path, problem};
}

Result<Move> MoveToFreeName(const QString& from, const QString& to, const Message& what) {
  const int problem = RenameSparing(QFile::encodeName(from).constData(), QFile::encodeName(to).constData());
  if (problem == 0) return Move::Done;
  if (problem == EEXIST) return Move::NameTaken;
  if (problem == EXDEV) return Move::OtherDisk;
  return Error{what, from, SystemReason(problem)};
}

}  // namespace vesk
