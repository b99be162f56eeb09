#include "platform/folder_entries.h"

#include <QStringDecoder>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string_view>

#include "platform/system_reason.h"

namespace vesk {
namespace {

EntryKind KindOfMode(mode_t mode, bool link) {
  if (S_ISREG(mode)) return link ? EntryKind::LinkToFile : EntryKind::File;
  return S_ISDIR(mode) ? EntryKind::Folder : EntryKind::Other;
}

EntryKind KindAt(int folder, const char* name) {
  struct stat info {};
  if (::fstatat(folder, name, &info, AT_SYMLINK_NOFOLLOW) != 0) return EntryKind::Other;
  if (!S_ISLNK(info.st_mode)) return KindOfMode(info.st_mode, false);
  return ::fstatat(folder, name, &info, 0) == 0 ? KindOfMode(info.st_mode, true) : EntryKind::Other;
}

EntryKind KindOfEntry(int folder, const dirent& entry) {
  if (entry.d_type == DT_REG) return EntryKind::File;
  if (entry.d_type == DT_DIR) return EntryKind::Folder;
  return KindAt(folder, entry.d_name);  // links, the rest, and file systems that do not say
}

/// A name that can be shown, whatever its bytes.
QString Shown(const QByteArray& name) {
  QString text;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    text += byte < 0x80
                ? QString(QLatin1Char(c))
                : QStringLiteral("\\x") + QString::number(byte, 16).rightJustified(2, QLatin1Char('0'));
  }
  return text;
}

FolderEntry EntryOf(int folder, const dirent& entry) {
  const QByteArray bytes(entry.d_name);
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString name = decoder(bytes);
  const bool isText = !decoder.hasError();
  return {isText ? name : Shown(bytes), KindOfEntry(folder, entry), isText};
}

Status Open(QFile& file, const QString& path, const Message& what, int flags, QFile::OpenMode mode) {
  // O_NONBLOCK: a FIFO that took the file's place must not keep the program waiting.
  const int handle = ::open(QFile::encodeName(path).constData(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (handle < 0) return Error{what, path, SystemReason(errno)};
  struct stat info {};
  if (::fstat(handle, &info) != 0 || !S_ISREG(info.st_mode)) {
    ::close(handle);
    return Error{what, path, Wording{u"bu bir dosya değil", u"not a file"}};
  }
  file.setFileName(path);
  if (file.open(handle, mode | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) return {};
  ::close(handle);
  return Error{what, path, SystemReason(file.errorString())};
}

}  // namespace

std::vector<FolderEntry> FolderEntries(const QString& folder) {
  std::vector<FolderEntry> entries;
  const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(QFile::encodeName(folder).constData()),
                                                 &::closedir);
  if (!open) return entries;
  while (const dirent* entry = ::readdir(open.get())) {
    const std::string_view name(entry->d_name);
    if (name != "." && name != "..") entries.push_back(EntryOf(::dirfd(open.get()), *entry));
  }
  return entries;
}

EntryKind KindOf(const QString& path) {
  return KindAt(AT_FDCWD, QFile::encodeName(path).constData());
}

Status OpenToRead(QFile& file, const QString& path, const Message& what) {
  return Open(file, path, what, O_RDONLY, QIODevice::ReadOnly);
}

Status OpenToChange(QFile& file, const QString& path, const Message& what) {
  return Open(file, path, what, O_RDWR | O_NOFOLLOW, QIODevice::ReadWrite);
}

}  // namespace vesk
