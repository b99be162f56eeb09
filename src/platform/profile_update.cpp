// Profile files on the disk: read, changed under a lock, written back.
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/locks.h"
#include "platform/profile_file.h"
#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

/// Longer than any change takes; a window must not stand still over a settings file.
constexpr std::chrono::milliseconds kPatience(2000);
constexpr std::chrono::milliseconds kBetweenTries(20);

Message NotWritten() {
  return Wording{u"Ayar dosyası yazılamadı", u"The settings file could not be written"};
}

Error HeldBy(const QString& path, const LockHolder& holder) {
  return {NotWritten(), path + QStringLiteral(" (%1@%2, %3)").arg(holder.user, holder.host).arg(holder.pid),
          Wording{u"başka bir program onu yazıyor", u"another program is writing it"}};
}

/// The system's lock on the file itself, where no lock file can be made beside it.
bool LockInPlace(int handle) {
  for (auto waited = std::chrono::milliseconds(0);; waited += kBetweenTries) {
    if (::flock(handle, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
    if (waited >= kPatience) return false;
    QThread::msleep(kBetweenTries.count());
  }
}

/// Room is made before the first byte is changed, so that a full disk leaves the file as it was.
Status ReplaceInPlace(QFile& file, const QByteArray& content) {
  const bool roomy = ::posix_fallocate(file.handle(), 0, content.size()) == 0;
  const bool written = roomy && file.seek(0) && file.write(content) == content.size() && file.flush() &&
                       file.resize(content.size()) && ::fsync(file.handle()) == 0;
  if (written) return {};
  return Error{NotWritten(), file.fileName(),
               roomy ? SystemReason(file.errorString()) : SystemReason(ENOSPC)};
}

Status UpdateInPlace(const QString& path, const std::function<void(ProfileText&)>& change) {
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
    return Error{NotWritten(), path, SystemReason(file.errorString())};
  if (!LockInPlace(file.handle()))
    return Error{NotWritten(), path,
                 Wording{u"başka bir program onu yazıyor", u"another program is writing it"}};
  ProfileText profile(file.readAll());
  if (file.error() != QFileDevice::NoError)
    return Error{NotWritten(), path, SystemReason(file.errorString())};
  const QByteArray before = profile.Content();
  change(profile);
  if (profile.Content() == before) return {};
  return ReplaceInPlace(file, profile.Content());
}

}  // namespace

Result<ProfileText> ProfileText::Load(const QString& path) {
  Result<QByteArray> content =
      ReadWholeFile(path, Wording{u"Ayar dosyası okunamadı", u"The settings file could not be read"});
  if (!content) return content.Failure();
  return ProfileText(std::move(*content));
}

Status ProfileText::Save(const QString& path) const {
  return WriteWholeFile(path, content_, NotWritten());
}

bool IsWrittenInPlace(const QString& path) {
  const QFileInfo info(path);
  return info.isFile() && info.isWritable() && !QFileInfo(info.absolutePath()).isWritable();
}

Status UpdateProfile(const QString& path, const std::function<void(ProfileText&)>& change) {
  Result<ProfileText> now = ProfileText::Load(path);
  if (!now) return now.Failure();
  const QByteArray stored = now->Content();
  change(*now);
  if (now->Content() == stored) return {};  // as most times: nothing to lock, nothing to write
  if (IsWrittenInPlace(path)) return UpdateInPlace(path, change);

  const Result<LockAttempt> lock =
      TryLock(path + QStringLiteral(".lock"), QStringLiteral("settings"), kPatience);
  if (!lock) return Error{NotWritten(), path, lock.Failure().reason};
  if (const auto* holder = std::get_if<LockHolder>(&*lock)) return HeldBy(path, *holder);
  Result<ProfileText> profile = ProfileText::Load(path);
  if (!profile) return profile.Failure();
  const QByteArray before = profile->Content();
  change(*profile);
  if (profile->Content() == before) return {};
  return profile->Save(path);
}

Status WriteProfileValues(const QString& path, const QString& section,
                          const std::vector<ProfileEntry>& entries) {
  return UpdateProfile(path, [&](ProfileText& profile) {
    for (const auto& [key, value] : entries) profile.SetValue(section, key, value);
  });
}

}  // namespace vesk
