#include "datafiles/tidy_lock.h"

#include <chrono>

namespace vesk {
namespace {

/// Of a holder on another machine nobody can tell whether it still runs; tidying takes seconds.
bool IsForgotten(const LockHolder& holder) {
  constexpr qint64 kOldestLockSeconds = 10 * 60;
  return !holder.here && holder.since.secsTo(QDateTime::currentDateTimeUtc()) > kOldestLockSeconds;
}

}  // namespace

Status TidyLock::Take() {
  if (taken_) return {};
  const QString path = dataDirectory_ + QLatin1String(kTidyLockName);
  const QString owner = QStringLiteral("tidy");
  const auto seen = LockHolderOf(path);
  Result<LockAttempt> attempt = seen && IsForgotten(*seen) ? TakeOverLock(path, owner, *seen)
                                                           : TryLock(path, owner, std::chrono::seconds(10));
  if (attempt && std::holds_alternative<LockHolder>(*attempt)) {
    const LockHolder& holder = std::get<LockHolder>(*attempt);
    return Error{Wording{u"Veri dizinini şu anda başka bir program düzenliyor",
                         u"The data directory is being tidied by another program"},
                 dataDirectory_,
                 Message(Wording{u"%1, %2, %3", u"%1, %2, %3"}, holder.user, holder.host, holder.pid)};
  }
  if (attempt) lock_ = std::move(std::get<FileLock>(*attempt));
  taken_ = true;
  return {};
}

}  // namespace vesk
