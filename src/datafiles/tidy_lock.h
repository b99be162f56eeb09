// One program at a time tidies a data directory. The moves are safe without this; with it, nobody sees a
// folder that is half tidied.
#pragma once

#include <QString>

#include <optional>

#include "platform/locks.h"
#include "platform/result.h"

namespace vesk {

inline constexpr char kTidyLockName[] = ".vesk4-tidy.lock";

class TidyLock {
 public:
  /// dataDirectory: with its trailing separator.
  explicit TidyLock(QString dataDirectory) : dataDirectory_(std::move(dataDirectory)) {}

  /// Waits some seconds for another holder, then fails and names it. Once held, further calls do nothing. A
  /// folder that cannot be written needs no lock: nobody can tidy it.
  Status Take();

 private:
  QString dataDirectory_;
  std::optional<FileLock> lock_;
  bool taken_ = false;
};

}  // namespace vesk
