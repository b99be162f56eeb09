#include "platform/whole_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QTemporaryDir>

#include <csignal>

namespace vesk {
namespace {

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

TEST(WholeFile, AFullDiskLeavesTheFileThatWasThere) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("changes.txt"));
  const QString what = QStringLiteral("The change log could not be saved");
  ASSERT_TRUE(WriteWholeFile(path, "old", what).Ok());
  for (const int bytes : {5000, 100'000}) {  // refused when the last buffer goes out, and before
    Status written;
    {
      const FullDisk full(4096);
      written = WriteWholeFile(path, QByteArray(bytes, 'x'), what);
    }
    ASSERT_FALSE(written.Ok()) << bytes;
    EXPECT_EQ(written.Failure().what, what);
    EXPECT_EQ(written.Failure().path, path);
    EXPECT_EQ(ReadWholeFile(path, what).Value(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "nothing half-written is left";
  }
}

}  // namespace
}  // namespace vesk
