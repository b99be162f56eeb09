// A disk that reports at sync what it could not keep, as network and thin-provisioned disks do.
#pragma once

namespace vesk::test {

/// As long as it lives, every sync of a file, or of a folder, of this process fails.
class FailingSync {
 public:
  enum class Of { Files, Folders };
  /// problem: an error number such as EIO or ENOSPC.
  FailingSync(Of kind, int problem);
  ~FailingSync();
  FailingSync(const FailingSync&) = delete;
  FailingSync& operator=(const FailingSync&) = delete;
};

}  // namespace vesk::test
