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
  EXPECT_FALSE(IsDeliveredName(QStringLiteral("ABC-12345-010203=0001.txt")));
  EXPECT_FALSE(IsDeliveredName(QStringLiteral("ABC_12345-010203.txt")));
  EXPECT_TRUE(IsCountedName(QStringLiteral("ABC-12345-010203=12.txt")));
  EXPECT_FALSE(IsCountedName(QStringLiteral("ABC-12345-010203=.txt")));
  EXPECT_FALSE(IsCountedName(QStringLiteral("001-12345-Degisiklikler2011.txt")));
  EXPECT_EQ(PaddedCountedName(QStringLiteral("ABC-12345-010203=12.txt")),
            QStringLiteral("ABC-12345-010203=0012.txt"));
  EXPECT_EQ(CountedName(QStringLiteral("ABC-12345-010203"), 1), QStringLiteral("ABC-12345-010203=0001.txt"));
  EXPECT_TRUE(IsCountedName(CountedName(QStringLiteral("ABC-12345-010203"), -7)))
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
};

TEST_F(ArchiveTest, KeepsTheLastOfEachStem) {
  const QString a = Put("101-12345-010203=0010.txt", "a");
  const QString b = Put("101-12345-010203=0020.txt", "b");
  const QString c = Put("101-12345-010203=0030.txt", "c");
  const QString other = Put("101-12345-010204=0001.txt", "d");
  const ArchiveReport report = ArchiveDuplicateRawFiles(Folder(), {a + QLatin1Char('<'), b, c, other});
  EXPECT_TRUE(report.changed);
  EXPECT_EQ(report.archived, (std::vector{a, b}));
  EXPECT_EQ(Archived(a), "a");
  EXPECT_EQ(Archived(b), "b");
  EXPECT_FALSE(QFile::exists(Folder() + a));
  EXPECT_TRUE(QFile::exists(Folder() + c));
  EXPECT_TRUE(QFile::exists(Folder() + other));
  EXPECT_FALSE(ArchiveDuplicateRawFiles(Folder(), {c, other}).changed) << "nothing left to do";
}

TEST_F(ArchiveTest, AFileThatCannotBeCopiedStays) {
  const QString a = Put("101-12345-010203=0010.txt", "a");
  const QString b = Put("101-12345-010203=0020.txt", "b");
  ASSERT_TRUE(QDir(Folder()).mkpath(QStringLiteral("Arsiv/") + a)) << "a folder of that name is in the way";
  const ArchiveReport report = ArchiveDuplicateRawFiles(Folder(), {a, b});
  EXPECT_FALSE(report.changed);
  ASSERT_EQ(report.failures.size(), 1U);
  EXPECT_TRUE(report.failures[0].path.contains(a));
  EXPECT_TRUE(QFile::exists(Folder() + a));
}

}  // namespace
}  // namespace vesk
