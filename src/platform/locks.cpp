#include "platform/locks.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>
#include <QThread>
#include <QUuid>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/system_reason.h"

namespace vesk {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kBetweenTries(20);
/// A lock file without its whole text is being written; after this long its writer has died over it.
constexpr milliseconds kLongestWriting(1000);
constexpr qint64 kLongestText = 4096;  // bytes
constexpr int kTryCount = 16;          // of one attempt, while lock files come and go

Message CannotLock() {
  return Wording{u"Kilit alınamadı", u"The lock could not be taken"};
}

/// When a process of this machine was started, in the system's own count; empty when there is none of that
/// number, "ended" when only its exit code is left. Tells a holder from a later process that was given its
/// number.
QString ProcessStart(qint64 pid) {
  QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray text = file.readAll();
  // Counted behind the name in brackets, which may hold blanks.
  const QByteArrayList fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
  constexpr int kStateField = 0;
  constexpr int kStartField = 19;
  if (fields.value(kStateField) == "Z") return QStringLiteral("ended");
  return QString::fromLatin1(fields.value(kStartField));
}

/// What a lock file says, with what only this unit needs.
struct LockText {
  LockHolder holder;
  QString boot;
  QString processStart;
  bool whole = false;
};

QString BootId() {
  return QString::fromLatin1(QSysInfo::bootUniqueId());
}

QString MachineId() {
  return QString::fromLatin1(QSysInfo::machineUniqueId());
}

QByteArray TextOfThisProcess(const QString& owner, const QString& user, const QString& token) {
  const qint64 pid = ::getpid();
  const QJsonObject text{{QStringLiteral("owner"), owner},
                         {QStringLiteral("user"), user},
                         {QStringLiteral("host"), QSysInfo::machineHostName()},
                         {QStringLiteral("machine"), MachineId()},
                         {QStringLiteral("boot"), BootId()},
                         {QStringLiteral("pid"), pid},
                         {QStringLiteral("processStart"), ProcessStart(pid)},
                         {QStringLiteral("since"), QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
                         {QStringLiteral("token"), token}};
  return QJsonDocument(text).toJson(QJsonDocument::Indented);
}

LockText ParseLockText(const QByteArray& bytes) {
  const QJsonObject json = QJsonDocument::fromJson(bytes).object();
  const auto text = [&json](const char* key) { return json.value(QLatin1String(key)).toString(); };
  LockText lock;
  lock.whole = !text("token").isEmpty();
  lock.holder = {text("owner"), text("user"), text("host"), json.value(QStringLiteral("pid")).toInteger(), {},
                 text("token")};
  lock.holder.since = QDateTime::fromString(text("since"), Qt::ISODate);
  // Machines of one disk image share their number, so that the name has to agree, too.
  lock.holder.here =
      lock.whole && lock.holder.host == QSysInfo::machineHostName() && text("machine") == MachineId();
  lock.boot = text("boot");
  lock.processStart = text("processStart");
  return lock;
}

bool IsRunning(const LockText& lock) {
  if (lock.boot != BootId()) return false;
  const bool exists = ::kill(static_cast<pid_t>(lock.holder.pid), 0) == 0 || errno == EPERM;
  const QString start = ProcessStart(lock.holder.pid);  // empty, too, where others' processes are hidden
  return exists && (start.isEmpty() || start == lock.processStart);
}

enum class Hold { Taken, Refused, Unsupported };

/// The system's own lock on the file: it goes when its process does, whatever the way.
Hold TakeHold(int handle) {
  if (::flock(handle, LOCK_EX | LOCK_NB) == 0) return Hold::Taken;
  return errno == EWOULDBLOCK ? Hold::Refused : Hold::Unsupported;
}

bool SameFile(int handle, const QByteArray& path) {
  struct stat ours {};
  struct stat named {};
  return ::fstat(handle, &ours) == 0 && ::stat(path.constData(), &named) == 0 &&
         ours.st_ino == named.st_ino && ours.st_dev == named.st_dev;
}

/// An open file, closed when it goes.
class OpenFile {
 public:
  explicit OpenFile(int handle) : handle_(handle) {}
  ~OpenFile() {
    if (handle_ >= 0) ::close(handle_);
  }
  Q_DISABLE_COPY_MOVE(OpenFile)
  [[nodiscard]] int Get() const { return handle_; }
  [[nodiscard]] int Release() { return std::exchange(handle_, -1); }
  [[nodiscard]] bool IsOpen() const { return handle_ >= 0; }

 private:
  int handle_;
};

/// A network folder may grant the system's lock only to writers; another user's file can often only be read.
int OpenExisting(const QByteArray& path) {
  const int handle = ::open(path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  return handle >= 0 ? handle : ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
}

QByteArray ReadLockFile(int handle) {
  QByteArray bytes(kLongestText, '\0');
  const ssize_t count = ::pread(handle, bytes.data(), static_cast<size_t>(bytes.size()), 0);
  return bytes.first(std::max<ssize_t>(count, 0));
}

Message WhyNoLockFile(int problem) {
  if (problem == EACCES || problem == EPERM || problem == EROFS)
    return Wording{u"klasöre yazılamıyor", u"the folder cannot be written"};
  if (problem == ENOENT || problem == ENOTDIR) return Wording{u"böyle bir klasör yok", u"no such folder"};
  return SystemReason(problem);
}

}  // namespace

class FileLock::Handle {
 public:
  Handle(QString path, int handle) : path_(std::move(path)), handle_(handle) {}
  ~Handle() {
    // A lock file that cannot be removed is emptied, so that nobody takes this process for its holder.
    [[maybe_unused]] const bool gone =
        !IsCurrent() || ::unlink(QFile::encodeName(path_).constData()) == 0 || ::ftruncate(handle_, 0) == 0;
    ::close(handle_);
  }
  Q_DISABLE_COPY_MOVE(Handle)
  [[nodiscard]] const QString& Path() const { return path_; }
  [[nodiscard]] bool IsCurrent() const { return SameFile(handle_, QFile::encodeName(path_)); }

 private:
  QString path_;
  int handle_;
};

FileLock::FileLock(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {}
FileLock::FileLock(FileLock&&) noexcept = default;
FileLock& FileLock::operator=(FileLock&&) noexcept = default;
FileLock::~FileLock() = default;

const QString& FileLock::Path() const {
  return handle_->Path();
}

bool FileLock::StillOurs() const {
  return handle_->IsCurrent();
}

/// One attempt at one lock file. Every lock file is removed only by who has the system's lock on it and has
/// seen that the path still names it, so that two who clear the same remains cannot clear a living lock.
class LockMaker {
 public:
  LockMaker(const QString& path, QString owner)
      : path_(path), name_(QFile::encodeName(path)), owner_(std::move(owner)) {}

  /// gone: token of a holder on another machine that is known to be gone.
  Result<LockAttempt> Try(const QString& gone = {}) {
    for (int i = 0; i < kTryCount; ++i) {
      Result<std::optional<FileLock>> made = Make();
      if (!made) return made.Failure();
      if (*made) return LockAttempt(std::move(**made));
      OpenFile file(OpenExisting(name_));
      if (!file.IsOpen()) {
        if (errno == ENOENT) continue;  // released meanwhile
        return Error{CannotLock(), path_, SystemReason(errno)};
      }
      const LockText lock = WaitForWholeText(file);
      if (!IsGone(lock, gone) || TakeHold(file.Get()) == Hold::Refused) return LockAttempt(lock.holder);
      if (const Status cleared = Clear(file); !cleared) return cleared.Failure();
    }
    return LockAttempt(LockHolderOf(path_).value_or(LockHolder()));
  }

 private:
  /// Nothing when a lock file is there already.
  Result<std::optional<FileLock>> Make() {
    OpenFile file(::open(name_.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    if (!file.IsOpen()) {
      if (errno == EEXIST) return std::optional<FileLock>();
      return Error{CannotLock(), path_, WhyNoLockFile(errno)};
    }
    (void)TakeHold(file.Get());  // without it, the text alone has to do
    const QByteArray text = TextOfThisProcess(owner_, QFileInfo(path_).owner(),
                                              QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (::write(file.Get(), text.constData(), static_cast<size_t>(text.size())) != text.size()) {
      const Message reason = SystemReason(errno);
      ::unlink(name_.constData());
      return Error{CannotLock(), path_, reason};
    }
    if (!SameFile(file.Get(), name_)) return std::optional<FileLock>();  // taken for remains meanwhile
    return std::optional<FileLock>(FileLock(std::make_unique<FileLock::Handle>(path_, file.Release())));
  }

  static LockText WaitForWholeText(const OpenFile& file) {
    LockText lock = ParseLockText(ReadLockFile(file.Get()));
    for (auto waited = milliseconds(0); !lock.whole && waited < kLongestWriting; waited += kBetweenTries) {
      QThread::msleep(kBetweenTries.count());
      lock = ParseLockText(ReadLockFile(file.Get()));
    }
    return lock;
  }

  static bool IsGone(const LockText& lock, const QString& gone) {
    if (!lock.whole) return true;
    return lock.holder.here ? !IsRunning(lock) : lock.holder.token == gone;
  }

  Status Clear(const OpenFile& file) {
    if (!SameFile(file.Get(), name_) || ::unlink(name_.constData()) == 0 || errno == ENOENT) return {};
    return Error{CannotLock(), path_, WhyNoLockFile(errno)};
  }

  QString path_;
  QByteArray name_;
  QString owner_;
};

Result<LockAttempt> TryLock(const QString& path, const QString& owner, milliseconds wait) {
  const auto end = steady_clock::now() + wait;
  LockMaker maker(path, owner);
  for (;;) {
    Result<LockAttempt> attempt = maker.Try();
    if (!attempt || std::holds_alternative<FileLock>(*attempt) || steady_clock::now() >= end) return attempt;
    QThread::msleep(kBetweenTries.count());
  }
}

Result<LockAttempt> TakeOverLock(const QString& path, const QString& owner, const LockHolder& seen) {
  return LockMaker(path, owner).Try(seen.token);
}

std::optional<LockHolder> LockHolderOf(const QString& path) {
  const OpenFile file(OpenExisting(QFile::encodeName(path)));
  if (!file.IsOpen()) return std::nullopt;
  const LockText lock = ParseLockText(ReadLockFile(file.Get()));
  if (lock.holder.here && !IsRunning(lock)) return std::nullopt;
  return lock.holder;
}

}  // namespace vesk
