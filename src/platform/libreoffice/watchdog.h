// A time limit for calls that cannot be given one: when it runs out, another thread takes action.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace vesk {

class Watchdog {
 public:
  /// onTimeout runs on the watchdog's thread, once for each limit that runs out.
  explicit Watchdog(std::function<void()> onTimeout);
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  /// Starts the time; a limit that is still running is replaced.
  void Arm(std::chrono::milliseconds limit);
  /// Stops the time; an onTimeout that has begun is waited for.
  void Disarm();
  /// True once any limit ran out.
  [[nodiscard]] bool TimedOut() const;

 private:
  void Run();

  std::function<void()> onTimeout_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<std::chrono::steady_clock::time_point> deadline_;  ///< of the call under way
  std::optional<std::chrono::steady_clock::time_point> waiting_;   ///< what the thread sleeps for
  bool timedOut_ = false;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace vesk
