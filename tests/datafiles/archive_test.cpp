#include "datafiles/archive.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <cerrno>

#include "datafiles/dates.h"
#include "datafiles/raw_file_names.h"
#include "datafiles/tidy_lock.h"
#include "support/failing_sync.h"
#include "support/raw_file_writer.h"

namespace vesk {
namespace {

TEST(RawFileNames, PatternsAndCounts) {
  EXPECT_TRUE(IsDeliveredName(QStringLiteral("ABC-12345-010203.TXT")));
  EXPECT_TRUE(IsCountedName(QStringLiteral("ABC-12345-010203=12.txt")));
  for (const char* other :
       {"ABC_12345-010203.txt", "ABC-12345-010203=.txt", "001-12345-Degisiklikler2011.txt"}) {
    const QString name = QString::fromLatin1(other);
    EXPECT_FALSE(IsDeliveredName(name) || IsCountedName(name)) << other;
  }
  EXPECT_EQ(PaddedCountedName(QStringLiteral("ABC-12345-010203=12.txt")),
            QStringLiteral("ABC-12345-010203=0012.txt"));
  EXPECT_EQ(CountedName(QStringLiteral("ABC-12345-010203"), -7), QStringLiteral("ABC-12345-010203=0000.txt"))
      << "never a name that no list shows";
}

class ArchiveTest : public testing::Test {
 protected:
  /// A read-out with a header; word: what tells its content from another one's.
  QString Put(const char* name, const char* word) {
    QFile file(Folder() + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(Content(word));
    return QString::fromLatin1(name);
  }
  static QByteArray Content(const char* word) {
    test::RawFileSketch sketch;
    sketch.first = *ReadDateTime(u"01/10/2008 01:00");
    sketch.last = *ReadDateTime(u"01/10/2008 02:00");
    return SketchContent(sketch) + word;
  }
  [[nodiscard]] QString Folder() const { return folder_.path() + QLatin1Char('/'); }
  [[nodiscard]] QByteArray Archived(const QString& name) const {
    QFile file(Folder() + QStringLiteral("Arsiv/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder_;
  QString first_ = Put("101-12345-010203=0010.txt", "a");
  QString second_ = Put("101-12345-010203=0020.txt", "b");
};

TEST_F(ArchiveTest, KeepsTheLastOfEachStem) {
  const QString last = Put("101-12345-010203=0030.txt", "c");
  const QString other = Put("101-12345-010204=0001.txt", "d");
  const auto report = ArchiveDuplicateRawFiles(Folder(), {first_ + QLatin1Char('<'), second_, last, other});
  EXPECT_TRUE(report.changed);
  EXPECT_EQ(report.archived, (std::vector{first_, second_}));
  EXPECT_EQ(Archived(first_), Content("a"));
  EXPECT_EQ(Archived(second_), Content("b"));
  EXPECT_EQ(QDir(Folder()).entryList(QDir::Files), QStringList({last, other}));
  EXPECT_FALSE(ArchiveDuplicateRawFiles(Folder(), {last, other}).changed) << "nothing left to do";
}

TEST_F(ArchiveTest, AnUnreadableReadOutSupersedesNothing) {
  const auto last = QStringLiteral("101-12345-010203=0030.txt");
  EXPECT_EQ(Superseded({{first_}, {second_}, {.name = last, .usable = false}}),
            (std::vector{true, false, false}));
  EXPECT_EQ(Superseded({{.name = first_, .usable = false, .counted = false}, {second_}}),
            (std::vector{false, false}))
      << "nobody has seen it yet";
}

TEST_F(ArchiveTest, AFileThatCannotBeMovedStays) {
  Put("Arsiv", "in the way of the folder");
  const ArchiveReport report = ArchiveDuplicateRawFiles(Folder(), {first_, second_});
  EXPECT_FALSE(report.changed);
  ASSERT_EQ(report.failures.size(), 1U);
  EXPECT_TRUE(report.failures[0].path.endsWith(QStringLiteral("Arsiv")));
  EXPECT_TRUE(QFile::exists(Folder() + first_));
}

TEST_F(ArchiveTest, NothingInTheArchiveIsReplaced) {
  for (const char* word : {"first", "second", "first", "third", "second"}) {
    Put("101-12345-010203=0010.txt", word);
    EXPECT_TRUE(MoveToArchive(Folder(), first_).Ok());
    EXPECT_FALSE(QFile::exists(Folder() + first_));
  }
  EXPECT_EQ(Archived(first_), Content("first"));
  EXPECT_EQ(Archived(QStringLiteral("101-12345-010203=0010 (2).txt")), Content("second"));
  EXPECT_EQ(Archived(QStringLiteral("101-12345-010203=0010 (3).txt")), Content("third"));
  EXPECT_EQ(QDir(Folder() + QStringLiteral("Arsiv")).entryList(QDir::Files).size(), 3) << "each content once";
}

TEST_F(ArchiveTest, AFolderThatCannotBeSyncedKeepsTheOriginalInPlace) {
  for (const auto kind : {test::FailingSync::Of::Folders, test::FailingSync::Of::Files}) {
    const QString last = Put("101-12345-010203=0030.txt", "c");
    const test::FailingSync failing(kind, EIO);
    const ArchiveReport report = ArchiveDuplicateRawFiles(Folder(), {first_, last});
    const bool failed = kind == test::FailingSync::Of::Folders;  // a move writes no file
    EXPECT_EQ(report.failures.size(), failed ? 1U : 0U);
    EXPECT_EQ(QFile::exists(Folder() + first_), failed);
    EXPECT_EQ(Archived(first_).isEmpty(), failed);
  }
}

TEST_F(ArchiveTest, AnArchiveOnAnotherDiskGetsAWholeCopyFirst) {
  const QTemporaryDir other(QStringLiteral("/dev/shm/vesk-XXXXXX"));
  struct stat here {};
  struct stat there {};
  if (!other.isValid() || ::stat(QFile::encodeName(Folder()).constData(), &here) != 0 ||
      ::stat(QFile::encodeName(other.path()).constData(), &there) != 0 || here.st_dev == there.st_dev) {
    GTEST_SKIP() << "this machine has one disk";
  }
  ASSERT_TRUE(QFile::link(other.path(), Folder() + QStringLiteral("Arsiv")));
  {
    const test::FailingSync failing(test::FailingSync::Of::Files, ENOSPC);
    EXPECT_FALSE(MoveToArchive(Folder(), first_).Ok());
    EXPECT_TRUE(QFile::exists(Folder() + first_)) << "its copy may not be on the disk";
    EXPECT_TRUE(QDir(other.path()).isEmpty());
  }
  for (const char* word : {"a", "other"}) {
    Put("101-12345-010203=0010.txt", word);
    EXPECT_TRUE(MoveToArchive(Folder(), first_).Ok());
    EXPECT_FALSE(QFile::exists(Folder() + first_));
  }
  EXPECT_EQ(Archived(first_), Content("a"));
  EXPECT_EQ(Archived(QStringLiteral("101-12345-010203=0010 (2).txt")), Content("other"));
}

TEST_F(ArchiveTest, TidyingWaitsForNobodyWhoHasGone) {
  QFile left(Folder() + QLatin1String(kTidyLockName));  // of a process that was killed
  ASSERT_TRUE(left.open(QIODevice::WriteOnly));
  left.write("999999999\nvesk4\n" + QSysInfo::machineHostName().toUtf8() + "\n\n\n");
  left.close();
  TidyLock lock(Folder());
  EXPECT_TRUE(lock.Take().Ok());
}

}  // namespace
}  // namespace vesk
