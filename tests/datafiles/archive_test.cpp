#include "datafiles/archive.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "datafiles/raw_file_names.h"

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
  QString Put(const char* name, const char* content) {
    QFile file(Folder() + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return QString::fromLatin1(name);
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
  EXPECT_EQ(Archived(first_) + Archived(second_), "ab");
  EXPECT_EQ(QDir(Folder()).entryList(QDir::Files), QStringList({last, other}));
  EXPECT_FALSE(ArchiveDuplicateRawFiles(Folder(), {last, other}).changed) << "nothing left to do";
}

TEST_F(ArchiveTest, AFileThatCannotBeCopiedStays) {
  ASSERT_TRUE(QDir(Folder()).mkpath(QStringLiteral("Arsiv/") + first_)) << "a folder is in the way";
  const ArchiveReport report = ArchiveDuplicateRawFiles(Folder(), {first_, second_});
  EXPECT_FALSE(report.changed);
  ASSERT_EQ(report.failures.size(), 1U);
  EXPECT_TRUE(report.failures[0].path.contains(first_));
  EXPECT_TRUE(QFile::exists(Folder() + first_));
}

}  // namespace
}  // namespace vesk
