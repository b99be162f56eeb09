#include "review/raw_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/raw_file_writer.h"

namespace vesk {
namespace {

using test::RawFileSketch;

DateTime T(const char* text) {
  return *ReadDateTime(QString::fromLatin1(text));
}

QStringList ListNames(const std::vector<RawFile>& files) {
  QStringList names;
  for (const RawFile& file : files)
    names << file.listName + (file.superseded ? QStringLiteral(" superseded") : QString());
  return names;
}

class RawFilesTest : public testing::Test {
 protected:
  void Write(const char* stem, const char* first, const char* last, const QString& name = {},
             const QByteArray& version = "10") {
    RawFileSketch sketch;
    sketch.stem = QString::fromLatin1(stem);
    sketch.first = T(first);
    sketch.last = T(last);
    sketch.version = version;
    sketch.firstLine = "sefnor  ";
    test::WriteSketch(folder, sketch, name);
  }
  [[nodiscard]] QStringList OnDisk() const { return QDir(folder).entryList(QDir::Files, QDir::Name); }

  QTemporaryDir temporary;
  QString folder = temporary.path() + QLatin1Char('/');
};

TEST_F(RawFilesTest, ListsInMemoryWithoutTouchingTheFolder) {
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  Write("010203", "01/10/2008 01:00", "02/10/2008 12:00", QStringLiteral("001-12345-010203=1.txt"));
  Write("020203", "30/09/2008 01:00", "01/10/2008 12:00");
  const QStringList before = OnDisk();
  std::vector<RawFile> files = ListRawFiles(folder);
  EXPECT_EQ(ListNames(files), (QStringList{QStringLiteral("001-12345-010203=0001.txt superseded"),
                                           QStringLiteral("001-12345-010203=0002.txt"),
                                           QStringLiteral("001-12345-020203=0001.txt")}));
  EXPECT_EQ(files[1].diskName, QStringLiteral("001-12345-010203.txt"));
  EXPECT_EQ(OnDisk(), before);
  files = FilesInUse(files);
  ReadHeaders(folder, files);
  ASSERT_EQ(files.size(), 2U);
  const auto years = WaterYearsOf(files, folder, QStringLiteral("001-12345"), QStringLiteral("Dönüşmüş"));
  ASSERT_EQ(years.size(), 2U) << "2009 is in both files and listed once";
  EXPECT_EQ(years[0].text, QStringLiteral("2009 "));
  EXPECT_EQ(years[1].waterYear, 2008);
}

TEST_F(RawFilesTest, RenamingGivesTheSameListAsMemory) {
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  Write("010203", "01/10/2008 01:00", "02/10/2008 12:00", QStringLiteral("001-12345-010203=1.txt"));
  Write("010205", "01/10/2008 01:00", "03/10/2008 12:00", {}, "99");
  const QStringList listed = ListNames(ListRawFiles(folder));
  const TidyReport report = RenameRawFiles(folder);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(ListNames(ListRawFiles(folder)), listed);
  EXPECT_EQ(OnDisk(), (QStringList{QStringLiteral("001-12345-010203=0001.txt"),
                                   QStringLiteral("001-12345-010203=0002.txt"),
                                   QStringLiteral("001-12345-010205=0000.txt")}));
  EXPECT_TRUE(RenameRawFiles(folder).done.empty()) << "once is enough";
}

TEST_F(RawFilesTest, ADeliveredFileReplacesAnOlderOneOfItsNewName) {
  Write("010203", "01/10/2008 01:00", "02/10/2008 12:00", QStringLiteral("001-12345-010203=0002.txt"));
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  ASSERT_EQ(ListRawFiles(folder).size(), 1U);
  EXPECT_EQ(ListRawFiles(folder)[0].diskName, QStringLiteral("001-12345-010203.txt"));
  EXPECT_TRUE(RenameRawFiles(folder).failures.empty());
  EXPECT_TRUE(QFile::exists(folder + QStringLiteral("Arsiv/001-12345-010203=0002.txt")))
      << "the other recording is not thrown away";
  std::vector<RawFile> files = ListRawFiles(folder);
  ReadHeaders(folder, files);
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].reading.header.LastClock, QStringLiteral("12:0"));
  EXPECT_EQ(files[0].reading.header.DaysCovered, 2);
}

TEST_F(RawFilesTest, ARenamingThatFailsIsToldAndTheFileStaysListed) {
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  ASSERT_TRUE(QDir(folder).mkpath(QStringLiteral("001-12345-010203=0002.txt/in the way")));
  const TidyReport report = RenameRawFiles(folder);
  ASSERT_EQ(report.failures.size(), 2U) << "the file, and the folder in its way";
  EXPECT_TRUE(report.failures[0].contains(QStringLiteral("001-12345-010203.txt")));
  EXPECT_TRUE(report.failures[1].contains(QStringLiteral("001-12345-010203=0002.txt is a folder")));
  const std::vector<RawFile> files = ListRawFiles(folder);
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].diskName, QStringLiteral("001-12345-010203.txt"));
  EXPECT_EQ(files[0].listName, QStringLiteral("001-12345-010203=0002.txt"));
}

TEST_F(RawFilesTest, StationsAreNamesThatBeginWithANumber) {
  for (const char* name : {"001-12345-010203.txt", "001-12345-Degisiklikler2009.txt", "ABC-12345-010203.txt",
                           "000-00000-010203.txt", "7.TXT", "notes.doc"}) {
    QFile file(folder + QLatin1String(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  EXPECT_EQ(ListStations(folder), (std::vector{QStringLiteral("001-12345"), QStringLiteral("7.TXT")}));
}

TEST_F(RawFilesTest, AConvertedYearIsMarked) {
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  QFile converted(folder + QStringLiteral("S2009-001-12345.txt"));
  ASSERT_TRUE(converted.open(QIODevice::WriteOnly));
  std::vector<RawFile> files = ListRawFiles(folder, QStringLiteral("001-12345"));
  ReadHeaders(folder, files);
  const auto years = WaterYearsOf(files, folder, QStringLiteral("001-12345"), QStringLiteral("Ok."));
  ASSERT_EQ(years.size(), 1U);
  EXPECT_EQ(years[0].text, QStringLiteral("2009 Ok."));
}

}  // namespace
}  // namespace vesk
