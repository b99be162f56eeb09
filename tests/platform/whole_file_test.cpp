#include "platform/whole_file.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTranslator>

#include <cerrno>

#include "platform/system_reason.h"
#include "support/failing_sync.h"
#include "support/full_disk.h"

namespace vesk {
namespace {

/// The library's texts in another language.
class Translated : public QTranslator {
 public:
  Translated() { EXPECT_TRUE(QCoreApplication::installTranslator(this)); }
  ~Translated() override { QCoreApplication::removeTranslator(this); }
  [[nodiscard]] bool isEmpty() const override { return false; }
  QString translate(const char* /*context*/, const char* text, const char* /*disambiguation*/,
                    int /*n*/) const override {
    return QLatin1Char('~') + QLatin1String(text);
  }
};

TEST(WholeFile, AFullDiskLeavesTheFileThatWasThere) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("changes.txt"));
  const Message what = Message::Verbatim(QStringLiteral("The change log could not be saved"));
  ASSERT_TRUE(WriteWholeFile(path, "old", what).Ok());
  for (const int bytes : {5000, 100'000}) {  // refused when the last buffer goes out, and before
    Status written;
    {
      const Translated other;
      const test::FullDisk full(4096);
      written = WriteWholeFile(path, QByteArray(bytes, 'x'), what);
    }
    ASSERT_FALSE(written.Ok()) << bytes;
    EXPECT_EQ(written.Failure().what, what);
    EXPECT_EQ(written.Failure().path, path);
    EXPECT_FALSE(written.Failure().reason.English().endsWith(QStringLiteral("Unknown error")));
    EXPECT_EQ(ReadWholeFile(path, what).Value(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "nothing half-written is left";
  }
}

TEST(WholeFile, ASyncThatFailsIsAWriteThatFailed) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("changes.txt"));
  const QString copy = folder.filePath(QStringLiteral("copy.txt"));
  const Message what = Message::Verbatim(QStringLiteral("The change log could not be saved"));
  ASSERT_TRUE(WriteWholeFile(path, "old", what).Ok());
  for (const int problem : {ENOSPC, EIO}) {
    const test::FailingSync failing(test::FailingSync::Of::Files, problem);
    const Status written = WriteWholeFile(path, "new", what);
    ASSERT_FALSE(written.Ok());
    EXPECT_EQ(written.Failure().reason, SystemReason(problem));
    EXPECT_FALSE(WriteNewFile(copy, "new", what).Ok());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList(QStringLiteral("changes.txt")));
    EXPECT_EQ(ReadWholeFile(path, what).Value(), "old") << "what the disk has is still in place";
  }
  {
    const test::FailingSync failing(test::FailingSync::Of::Folders, EIO);
    EXPECT_FALSE(WriteWholeFile(path, "new", what).Ok());
  }
  const test::FailingSync nothingToWaitFor(test::FailingSync::Of::Files, EINVAL);
  EXPECT_TRUE(WriteWholeFile(path, "newer", what).Ok()) << "the file system cannot sync, and says so";
}

TEST(WholeFile, WhatIsNewReplacesNothing) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("a.txt"));
  const QString other = folder.filePath(QStringLiteral("b.txt"));
  ASSERT_TRUE(WriteNewFile(path, "a", {}).Ok());
  EXPECT_FALSE(WriteNewFile(path, "other", {}).Ok());
  ASSERT_TRUE(WriteNewFile(other, "b", {}).Ok());
  EXPECT_EQ(MoveToFreeName(other, path, {}).Value(), Move::NameTaken);
  EXPECT_EQ(ReadWholeFile(path, {}).Value() + ReadWholeFile(other, {}).Value(), "ab");
  EXPECT_EQ(MoveToFreeName(other, folder.filePath(QStringLiteral("c.txt")), {}).Value(), Move::Done);
  EXPECT_FALSE(MoveToFreeName(other, path + QLatin1Char('d'), {}).Ok()) << "it is gone";
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).join(QLatin1Char(' ')), QStringLiteral("a.txt c.txt"));
}

}  // namespace
}  // namespace vesk
