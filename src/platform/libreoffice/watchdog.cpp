#include "platform/libreoffice/watchdog.h"

#include <utility>

namespace vesk {

Watchdog::Watchdog(std::function<void()> onTimeout)
    : onTimeout_(std::move(onTimeout)), thread_([this] { Run(); }) {}

Watchdog::~Watchdog() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void Watchdog::Arm(std::chrono::milliseconds limit) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  bool wake = false;
  {
    const std::lock_guard lock(mutex_);
    // A thread that already waits for an earlier time finds the later one by itself when it wakes.
    wake = !waiting_ || deadline < *waiting_;
    deadline_ = deadline;
  }
  if (wake) changed_.notify_one();
}

void Watchdog::Disarm() {
  const std::lock_guard lock(mutex_);
  deadline_.reset();
}

bool Watchdog::TimedOut() const {
  const std::lock_guard lock(mutex_);
  return timedOut_;
}

void Watchdog::Run() {
  std::unique_lock lock(mutex_);
  while (!ending_) {
    waiting_ = deadline_;
    if (!waiting_) {
      changed_.wait(lock);
      continue;
    }
    changed_.wait_until(lock, *waiting_);
    if (ending_ || !deadline_ || std::chrono::steady_clock::now() < *deadline_) continue;
    deadline_.reset();
    timedOut_ = true;
    onTimeout_();  // under the lock, so that Disarm waits for its end
  }
}

}  // namespace vesk
