// A disk that fills up under the program's hands.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace vesk::test {

/// As long as it lives, no file of this process grows beyond a size: a full disk, as far as a writer can
/// tell.
class FullDisk {
 public:
  explicit FullDisk(rlim_t mostBytes) {
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &before_), 0);
    const rlimit limit{mostBytes, before_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, signalBefore_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
  void (*signalBefore_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

}  // namespace vesk::test
