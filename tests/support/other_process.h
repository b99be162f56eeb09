// A second process beside the test's own: another window of the program on the same files.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>

namespace vesk::test {

/// Runs a piece of the test in a process of its own. It ends by itself, or is killed with its object.
class OtherProcess {
 public:
  /// The two words that the processes say to each other.
  class Signals {
   public:
    Signals() { EXPECT_EQ(::pipe(told_.data()) + ::pipe(asked_.data()), 0); }
    ~Signals() {
      for (const int handle : {told_[0], told_[1], asked_[0], asked_[1]}) ::close(handle);
    }
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;
    void Tell() { Send(told_[1]); }
    void WaitUntilAsked() { Receive(asked_[0]); }

   private:
    friend class OtherProcess;
    static void Send(int handle) { EXPECT_EQ(::write(handle, "x", 1), 1); }
    static void Receive(int handle) {
      char byte = 0;
      EXPECT_EQ(::read(handle, &byte, 1), 1);
    }
    std::array<int, 2> told_{};
    std::array<int, 2> asked_{};
  };

  explicit OtherProcess(const std::function<void(Signals&)>& work) : pid_(::fork()) {
    EXPECT_GE(pid_, 0);
    if (pid_ != 0) return;
    work(signals_);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
  }
  ~OtherProcess() { Kill(); }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  [[nodiscard]] pid_t Pid() const { return pid_; }
  void WaitUntilTold() { Signals::Receive(signals_.told_[0]); }
  void Ask() { Signals::Send(signals_.asked_[1]); }
  /// Its exit code; -1 when a signal ended it.
  int WaitForEnd() {
    int status = 0;
    EXPECT_EQ(::waitpid(pid_, &status, 0), pid_);
    ended_ = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void Kill() {
    if (ended_) return;
    ::kill(pid_, SIGKILL);
    (void)WaitForEnd();
  }

 private:
  Signals signals_;
  pid_t pid_;
  bool ended_ = false;
};

}  // namespace vesk::test
