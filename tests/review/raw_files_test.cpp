#include "review/raw_files.h"

#include <gtest/gtest.h>

#include "review/data_folder_fixture.h"

namespace vesk {
namespace {

class RawFilesTest : public test::DataFolderTest {
 protected:
  [[nodiscard]] QString OnDisk() const {
    return QDir(folder_).entryList(QDir::Files, QDir::Name).join(QLatin1Char(' '));
  }
  [[nodiscard]] QString Listed() const {
    QStringList names;
    for (const RawFile& file : ListRawFiles(folder_))
      names << (file.superseded ? QStringLiteral("(%1)") : QStringLiteral("%1")).arg(file.listName);
    return names.join(QLatin1Char(' '));
  }
};

TEST_F(RawFilesTest, FilesGetTheirDayCountOnceAndAreListedByItBefore) {
  Write("010203", "01/10/2008 23:30", "03/10/2008 00:10");
  WriteSketch(folder_, Sketch("010203", "01/10/2008 01:00", "02/10/2008 12:00"),
              QStringLiteral("001-12345-010203=1.txt"));
  Write("010205", "01/10/2008 01:00", "03/10/2008 12:00", "99");  // refused
  Put(QStringLiteral("001-12345-010204=0012.TXT"));
  Put(QStringLiteral("notes.txt"));
  const QString before = OnDisk();
  const QString listed = Listed();
  EXPECT_EQ(listed, QStringLiteral("(001-12345-010203=0001.txt) 001-12345-010203=0002.txt "
                                   "001-12345-010204=0012.TXT 001-12345-010205=0000.txt"));
  EXPECT_EQ(OnDisk(), before);

  const TidyReport report = RenameRawFiles(folder_);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(Listed(), listed);
  EXPECT_EQ(OnDisk(), QStringLiteral("001-12345-010203=0001.txt 001-12345-010203=0002.txt "
                                     "001-12345-010204=0012.TXT 001-12345-010205=0000.txt notes.txt"));
  QFile stamped(folder_ + QStringLiteral("001-12345-010203=0002.txt"));
  ASSERT_TRUE(stamped.open(QIODevice::ReadOnly));
  EXPECT_EQ(stamped.readLine(), "        \r\n");
  EXPECT_TRUE(RenameRawFiles(folder_).done.empty());
}

TEST_F(RawFilesTest, ADeliveredFileReplacesAnOlderOneOfItsNewName) {
  WriteSketch(folder_, Sketch("010203", "01/10/2008 01:00", "02/10/2008 12:00"),
              QStringLiteral("001-12345-010203=0002.txt"));
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  ASSERT_EQ(ListRawFiles(folder_).size(), 1U);
  EXPECT_EQ(ListRawFiles(folder_)[0].diskName, QStringLiteral("001-12345-010203.txt"));
  const TidyReport report = RenameRawFiles(folder_);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(report.replaced, std::vector{QStringLiteral("001-12345-010203=0002.txt")});
  EXPECT_TRUE(Has("Arsiv/001-12345-010203=0002.txt")) << "the other recording is not thrown away";
  std::vector<RawFile> files = ListRawFiles(folder_);
  ReadHeaders(folder_, files);
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].reading.header.DaysCovered, 2);
}

TEST_F(RawFilesTest, ARenamingThatFailsIsToldAndTheFileStaysListed) {
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  ASSERT_TRUE(QDir(folder_).mkpath(QStringLiteral("001-12345-010203=0002.txt/in the way")));
  const TidyReport report = RenameRawFiles(folder_);
  ASSERT_EQ(report.failures.size(), 2U) << "the file, and the folder in its way";
  EXPECT_TRUE(report.failures[0].contains(QStringLiteral("001-12345-010203.txt")));
  EXPECT_TRUE(report.failures[1].contains(QStringLiteral("001-12345-010203=0002.txt is a folder")));
  const std::vector<RawFile> files = ListRawFiles(folder_);
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].diskName, QStringLiteral("001-12345-010203.txt"));
  EXPECT_EQ(files[0].listName, QStringLiteral("001-12345-010203=0002.txt"));
}

TEST_F(RawFilesTest, StationsAreNamesThatBeginWithANumberAboveZero) {
  for (const char* name : {"001-12345-010203.txt", "001-12345-Degisiklikler2009.txt", "ABC-12345-010203.txt",
                           "000-00000-010203.txt", "7.TXT", "001-20000.dat"}) {
    Put(QLatin1String(name));
  }
  EXPECT_EQ(ListStations(folder_), (std::vector{QStringLiteral("001-12345"), QStringLiteral("7.TXT")}));
}

}  // namespace
}  // namespace vesk
