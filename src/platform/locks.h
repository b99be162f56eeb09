// Who works on a file: a lock file beside it that says so, and that ends with its holder.
#pragma once

#include <QDateTime>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>
#include <variant>

#include "platform/result.h"

namespace vesk {

/// Who holds a lock, as its file says. Texts are empty (pid 0, since invalid) where the file does not say it.
struct LockHolder {
  QString owner;      ///< what the holder said it works on or is, e.g. "Vesk4"
  QString user;       ///< login name
  QString host;       ///< machine name
  qint64 pid = 0;     ///< on that machine
  QDateTime since;    ///< UTC
  QString token;      ///< tells this lock from every other one at the same path
  bool here = false;  ///< on this machine, as far as name and machine number tell
};

/// A lock that is held; released when it goes.
class FileLock {
 public:
  FileLock(FileLock&&) noexcept;
  FileLock& operator=(FileLock&&) noexcept;
  ~FileLock();

  [[nodiscard]] const QString& Path() const;
  /// False when the lock file has been removed or another one stands in its place (somebody on another
  /// machine took over, the folder is gone). Ask before every save that relies on the lock.
  [[nodiscard]] bool StillOurs() const;

 private:
  friend class LockMaker;
  class Handle;
  explicit FileLock(std::unique_ptr<Handle> handle);
  std::unique_ptr<Handle> handle_;
};

/// The lock, or the one who has it.
using LockAttempt = std::variant<FileLock, LockHolder>;

/// Tries to take the lock at a path; the folder must exist. A lock whose holder died on this machine is taken
/// over; one of another machine never is, since nothing here can tell whether it lives. A second lock of the
/// same process is refused like any other.
/// @param owner a short text for those who find the lock held
/// @param wait  how long to try while another holds it; 0: once
/// Fails, instead of naming a holder, where no lock file can be made: "the folder cannot be written", "no
/// such folder", a full disk.
Result<LockAttempt> TryLock(const QString& path, const QString& owner,
                            std::chrono::milliseconds wait = std::chrono::milliseconds(0));

/// Takes the lock away from a holder that TryLock named and that the operator knows to be gone. Only from
/// that very one: another holder that came meanwhile, or one that is alive on this machine, is named again.
Result<LockAttempt> TakeOverLock(const QString& path, const QString& owner, const LockHolder& seen);

/// Who holds the lock now; nothing when nobody does. Changes nothing, so it also serves in a folder that
/// cannot be written.
std::optional<LockHolder> LockHolderOf(const QString& path);

}  // namespace vesk
