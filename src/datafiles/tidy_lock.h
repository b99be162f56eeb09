// One program at a time tidies a data directory. The moves are safe without this; with it, nobody sees a
// folder that is half tidied.
#pragma once

#include <QLockFile>
#include <QString>

#include "platform/result.h"

namespace vesk {

inline constexpr char kTidyLockName[] = ".vesk4-tidy.lock";

class TidyLock {
 public:
  /// dataDirectory: with its trailing separator.
  explicit TidyLock(const QString& dataDirectory);

  /// Waits some seconds for another holder, then fails and names it. Once held, further calls do nothing. A
  /// folder that cannot be written needs no lock: nobody can tidy it.
  Status Take();

 private:
  QString dataDirectory_;
  QLockFile file_;
  bool taken_ = false;
};

}  // namespace vesk
