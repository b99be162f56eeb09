#include "datafiles/tidy_lock.h"

namespace vesk {
namespace {

constexpr int kLongestWaitMs = 10'000;
/// Of a holder on another machine nobody can tell whether it still runs; tidying takes seconds.
constexpr int kOldestLockMs = 10 * 60 * 1000;

}  // namespace

TidyLock::TidyLock(const QString& dataDirectory)
    : dataDirectory_(dataDirectory), file_(dataDirectory + QLatin1String(kTidyLockName)) {
  file_.setStaleLockTime(kOldestLockMs);
}

Status TidyLock::Take() {
  if (taken_ || file_.tryLock(kLongestWaitMs) || file_.error() != QLockFile::LockFailedError) {
    taken_ = true;
    return {};
  }
  qint64 process = 0;
  QString host;
  QString program;
  file_.getLockInfo(&process, &host, &program);
  return Error{QStringLiteral("The data directory is being tidied by another program"), dataDirectory_,
               QStringLiteral("%1, %2, %3").arg(program, host).arg(process)};
}

}  // namespace vesk
