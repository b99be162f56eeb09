// The processes of an office: a private one that belongs to us, and the operator's own.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <memory>

#include "platform/result.h"

namespace vesk {

/// A headless office in a process group of its own, with a temporary profile. Nothing of it outlives the
/// object; its process also ends when ours is killed, and what a killed program left behind is swept by the
/// next start.
class PrivateOffice {
 public:
  /// Starts the process. It accepts connections on its pipe some time later.
  static Result<std::unique_ptr<PrivateOffice>> Start();
  ~PrivateOffice();
  PrivateOffice(const PrivateOffice&) = delete;
  PrivateOffice& operator=(const PrivateOffice&) = delete;

  [[nodiscard]] QString PipeName() const;
  /// False once it has ended. An office that asks to be started anew, as on a new profile, is.
  [[nodiscard]] bool IsRunning();
  /// Gives the office that long to end by itself, then kills it. Returns true when it ended by itself.
  bool End(std::chrono::milliseconds limit);
  /// Ends the whole process group at once; may be called from any thread.
  void Kill();

 private:
  PrivateOffice();
  Status Launch();

  QTemporaryDir profile_;
  QProcess process_;
  std::atomic<int> group_ = 0;  ///< process group; 0 when there is none
};

/// True when an office with the operator's profile runs. Only knocks at its socket: nothing is started.
bool OperatorOfficeRuns();

/// Makes the operator's office listen on a pipe: the running one, or one started for it. Does not wait for
/// it.
Status LetOperatorOfficeListen(const QString& pipeName);

}  // namespace vesk
