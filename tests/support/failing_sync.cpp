#include "support/failing_sync.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace vesk::test {
namespace {

std::atomic<int> fileProblem = 0;
std::atomic<int> folderProblem = 0;

std::atomic<int>& ProblemOf(FailingSync::Of kind) {
  return kind == FailingSync::Of::Files ? fileProblem : folderProblem;
}

int Sync(long call, int handle) {
  struct stat info {};
  const bool folder = ::fstat(handle, &info) == 0 && S_ISDIR(info.st_mode);
  const int problem = folder ? folderProblem : fileProblem;
  if (problem == 0) return static_cast<int>(::syscall(call, handle));
  errno = problem;
  return -1;
}

}  // namespace

FailingSync::FailingSync(Of kind, int problem) {
  ProblemOf(kind) = problem;
}
FailingSync::~FailingSync() {
  fileProblem = 0;
  folderProblem = 0;
}

}  // namespace vesk::test

// The program's own definitions go before those of the C library, for Qt's calls, too.
extern "C" int fsync(int handle) {
  return vesk::test::Sync(SYS_fsync, handle);
}
extern "C" int fdatasync(int handle) {
  return vesk::test::Sync(SYS_fdatasync, handle);
}
