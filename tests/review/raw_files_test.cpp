#include "review/raw_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/raw_file_writer.h"

namespace vesk {
namespace {

class RawFilesTest : public testing::Test {
 protected:
  void Write(const char* stem, const char* first, const char* last, const char* name = "",
             const QByteArray& version = "10") {
    test::RawFileSketch sketch;
    sketch.stem = QString::fromLatin1(stem);
    sketch.first = ReadDateTime(QString::fromLatin1(first)).value();
    sketch.last = ReadDateTime(QString::fromLatin1(last)).value();
    sketch.version = version;
    sketch.firstLine = "sefnor  ";
    test::WriteSketch(folder, sketch, QLatin1String(name));
  }
  void Touch(const char* name) {
    QFile file(folder + QLatin1String(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  [[nodiscard]] QString OnDisk() const {
    return QDir(folder).entryList(QDir::Files, QDir::Name).join(QLatin1Char(' '));
  }
  [[nodiscard]] QString Listed() const {
    QStringList names;
    for (const RawFile& file : ListRawFiles(folder))
      names << (file.superseded ? QStringLiteral("(%1)") : QStringLiteral("%1")).arg(file.listName);
    return names.join(QLatin1Char(' '));
  }

  QTemporaryDir temporary;
  QString folder = temporary.path() + QLatin1Char('/');
};

TEST_F(RawFilesTest, FilesGetTheirDayCountOnceAndAreListedByItBefore) {
  Write("010203", "01/10/2008 23:30", "03/10/2008 00:10");
  Write("010203", "01/10/2008 01:00", "02/10/2008 12:00", "001-12345-010203=1.txt");
  Write("010205", "01/10/2008 01:00", "03/10/2008 12:00", "", "99");  // refused
  Touch("001-12345-010204=0012.TXT");
  Touch("notes.txt");
  const QString before = OnDisk();
  const QString listed = Listed();
  EXPECT_EQ(listed, QStringLiteral("(001-12345-010203=0001.txt) 001-12345-010203=0002.txt "
                                   "001-12345-010204=0012.TXT 001-12345-010205=0000.txt"));
  EXPECT_EQ(OnDisk(), before);

  const TidyReport report = RenameRawFiles(folder);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(Listed(), listed);
  EXPECT_EQ(OnDisk(), QStringLiteral("001-12345-010203=0001.txt 001-12345-010203=0002.txt "
                                     "001-12345-010204=0012.TXT 001-12345-010205=0000.txt notes.txt"));
  QFile stamped(folder + QStringLiteral("001-12345-010203=0002.txt"));
  ASSERT_TRUE(stamped.open(QIODevice::ReadOnly));
  EXPECT_EQ(stamped.readLine(), "        \r\n");
  EXPECT_TRUE(RenameRawFiles(folder).done.empty());
}

TEST_F(RawFilesTest, ADeliveredFileReplacesAnOlderOneOfItsNewName) {
  Write("010203", "01/10/2008 01:00", "02/10/2008 12:00", "001-12345-010203=0002.txt");
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  ASSERT_EQ(ListRawFiles(folder).size(), 1U);
  EXPECT_EQ(ListRawFiles(folder)[0].diskName, QStringLiteral("001-12345-010203.txt"));
  const TidyReport report = RenameRawFiles(folder);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(report.replaced, std::vector{QStringLiteral("001-12345-010203=0002.txt")});
  EXPECT_TRUE(QFile::exists(folder + QStringLiteral("Arsiv/001-12345-010203=0002.txt")))
      << "the other recording is not thrown away";
  std::vector<RawFile> files = ListRawFiles(folder);
  ReadHeaders(folder, files);
  ASSERT_EQ(files.size(), 1U);
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

TEST_F(RawFilesTest, StationsAreNamesThatBeginWithANumberAboveZero) {
  for (const char* name : {"001-12345-010203.txt", "001-12345-Degisiklikler2009.txt", "ABC-12345-010203.txt",
                           "000-00000-010203.txt", "7.TXT", "001-20000.dat"}) {
    Touch(name);
  }
  EXPECT_EQ(ListStations(folder), (std::vector{QStringLiteral("001-12345"), QStringLiteral("7.TXT")}));
}

}  // namespace
}  // namespace vesk
