#include "review/raw_files.h"
#include "datafiles/dates.h"

#include <gtest/gtest.h>

#include <QDirIterator>

#include <sys/stat.h>

#include <set>
#include <thread>

#include "datafiles/archive.h"
#include "review/data_folder_fixture.h"
#include "support/english.h"
#include "support/invalid_name.h"

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
                                   "001-12345-010204=0012.TXT 001-12345-010205.txt"))
      << "a header that cannot be used gives no day count";
  EXPECT_EQ(OnDisk(), before);

  const TidyReport report = RenameRawFiles(folder_);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(Listed(), listed);
  EXPECT_EQ(OnDisk(), QStringLiteral("001-12345-010203=0001.txt 001-12345-010203=0002.txt "
                                     "001-12345-010204=0012.TXT 001-12345-010205.txt notes.txt"));
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
  EXPECT_EQ(files[0].header.DaysCovered, 2);
}

TEST_F(RawFilesTest, ARenamingThatFailsIsToldAndTheFileStaysListed) {
  Write("010203", "01/10/2008 01:00", "03/10/2008 12:00");
  ASSERT_TRUE(QDir(folder_).mkpath(QStringLiteral("001-12345-010203=0002.txt/in the way")));
  const TidyReport report = RenameRawFiles(folder_);
  ASSERT_EQ(report.failures.size(), 2U) << "the file, and the folder in its way";
  EXPECT_TRUE(report.failures[0].English().contains(QStringLiteral("001-12345-010203.txt")));
  EXPECT_TRUE(report.failures[1].English().contains(QStringLiteral("001-12345-010203=0002.txt is a folder")));
  const std::vector<RawFile> files = ListRawFiles(folder_);
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].diskName, QStringLiteral("001-12345-010203.txt"));
  EXPECT_EQ(files[0].listName, QStringLiteral("001-12345-010203=0002.txt"));
}

TEST_F(RawFilesTest, ListingAndTidyingTakeTheSameFileOfThoseThatClaimOneName) {
  const auto sketch = [](const char* last) { return Sketch("010203", "01/10/2008 01:00", last); };
  // Of the same day count, told apart by their last record: "=2" and the delivered one want the name of
  // "=0002".
  WriteSketch(folder_, sketch("03/10/2008 01:00"), QStringLiteral("001-12345-010203=0002.txt"));
  WriteSketch(folder_, sketch("03/10/2008 02:00"), QStringLiteral("001-12345-010203=2.txt"));
  WriteSketch(folder_, sketch("03/10/2008 03:00"), QStringLiteral("001-12345-010203.txt"));
  WriteSketch(folder_, sketch("03/10/2008 04:00"), QStringLiteral("001-12345-010203=0002.TXT"));
  const auto listed = [this] {
    std::vector<RawFile> files = ListRawFiles(folder_);
    ReadHeaders(folder_, files);
    EXPECT_EQ(files.size(), 1U);
    return DateTimeText(files.front().header.LastRecordTime);
  };
  EXPECT_EQ(HiddenFiles(ListRawFiles(folder_)).size(), 3U);
  const QString before = listed();
  const TidyReport report = RenameRawFiles(folder_);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(listed(), before);
  EXPECT_EQ(OnDisk(), QStringLiteral("001-12345-010203=0002.txt"));
  EXPECT_EQ(QDir(folder_ + QStringLiteral("Arsiv")).entryList(QDir::Files).size(), 3) << "nothing is lost";
  EXPECT_TRUE(HiddenFiles(ListRawFiles(folder_)).empty());
}

TEST_F(RawFilesTest, NamesThatDifferInCaseOnlyAreNamed) {
  WriteSketch(folder_, Sketch("010203", "01/10/2008 01:00", "03/10/2008 01:00"),
              QStringLiteral("001-12345-010203=0002.txt"));
  WriteSketch(folder_, Sketch("010203", "01/10/2008 01:00", "03/10/2008 02:00"),
              QStringLiteral("001-12345-010203=0002.TXT"));
  const QString before = OnDisk();
  EXPECT_EQ(
      InEnglish(HiddenFiles(ListRawFiles(folder_))),
      std::vector{QStringLiteral("001-12345-010203=0002.txt is not read; 001-12345-010203=0002.TXT goes "
                                 "under the same name")});
  RenameRawFiles(folder_);
  EXPECT_EQ(OnDisk(), before) << "which of them is the right one, nobody here can tell";
}

TEST_F(RawFilesTest, AnUnreadableHeaderSupersedesNothing) {
  WriteSketch(folder_, Sketch("010203", "01/10/2008 01:00", "03/10/2008 01:00"),
              QStringLiteral("001-12345-010203=0002.txt"));
  Put(QStringLiteral("001-12345-010203=9999.txt"), QByteArray(3000, '\0'));
  QByteArray noFirstRecord = SketchContent(Sketch("010203", "01/10/2008 01:00", "03/10/2008 01:00"));
  Put(QStringLiteral("001-12345-010203.txt"), noFirstRecord.replace("01:00\r\nLast", "xx:00\r\nLast"));
  const QString listed = Listed();
  EXPECT_EQ(listed,
            QStringLiteral("001-12345-010203.txt 001-12345-010203=0002.txt 001-12345-010203=9999.txt"));
  RenameRawFiles(folder_);
  EXPECT_EQ(Listed(), listed);
  std::vector<QString> names;
  for (const RawFile& file : ListRawFiles(folder_)) names.push_back(file.listName);
  EXPECT_FALSE(ArchiveDuplicateRawFiles(folder_, names).changed);
  EXPECT_EQ(OnDisk(), listed);
  Put(QStringLiteral("001-12345-010203=9999.txt"), noFirstRecord.replace("xx:00\r\nLast", "01:00\r\nLast"));
  EXPECT_EQ(Listed(), QStringLiteral("001-12345-010203.txt (001-12345-010203=0002.txt) "
                                     "001-12345-010203=9999.txt"));
}

TEST_F(RawFilesTest, LinksAreReadAndNeverChangedAndOtherThingsNeverOpened) {
  const QTemporaryDir elsewhere;
  const QString target = elsewhere.path() + QLatin1Char('/');
  WriteSketch(target, Sketch("010203", "01/10/2008 01:00", "03/10/2008 01:00"));
  const QString name = QStringLiteral("001-12345-010203.txt");
  ASSERT_TRUE(QFile::link(target + name, folder_ + name));
  ASSERT_EQ(::mkfifo(QFile::encodeName(folder_ + QStringLiteral("001-12345-010204.txt")).constData(), 0600),
            0);
  ASSERT_TRUE(QFile::link(folder_ + QStringLiteral("001-12345-010204.txt"),
                          folder_ + QStringLiteral("001-12345-010205=0001.txt")));
  const test::InvalidName invalid(folder_, "001-12345-01020\xfc.txt");
  const TidyReport report = RenameRawFiles(folder_);
  ASSERT_EQ(report.failures.size(), 4U);
  EXPECT_TRUE(report.failures[0].English().contains(QStringLiteral("is a link")));
  EXPECT_TRUE(report.failures[1].English().contains(QStringLiteral("010204.txt is no file")));
  EXPECT_TRUE(report.failures[2].English().contains(QStringLiteral("010205=0001.txt is no file")));
  EXPECT_TRUE(report.failures[3].English().contains(QStringLiteral("01020\\xfc.txt is skipped")));
  EXPECT_EQ(Listed(), QStringLiteral("001-12345-010203=0002.txt")) << "it is read all the same";
  QFile linked(target + name);
  ASSERT_TRUE(linked.open(QIODevice::ReadOnly));
  EXPECT_TRUE(linked.readLine().startsWith("sefnor"));
  EXPECT_TRUE(QFileInfo(folder_ + name).isSymLink());
}

TEST_F(RawFilesTest, AMarkerInALineOfAnotherLengthIsLeftAndNamed) {
  for (const char* line : {"sefnor", "sefnor   ", "xsefnor\nx"}) {
    test::RawFileSketch sketch = Sketch("010203", "01/10/2008 01:00", "03/10/2008 01:00");
    sketch.firstLine = line;
    WriteSketch(folder_, sketch, QStringLiteral("001-12345-010203=0002.txt"));
    const TidyReport report = RenameRawFiles(folder_);
    ASSERT_EQ(report.failures.size(), 1U) << line;
    EXPECT_TRUE(report.failures[0].English().startsWith(
        QStringLiteral("001-12345-010203=0002.txt, line 1: the marker")));
    QFile file(folder_ + QStringLiteral("001-12345-010203=0002.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), SketchContent(sketch)) << line;
  }
}

TEST_F(RawFilesTest, SeveralThatTidyAtOnceLoseNothing) {
  const auto contents = [this] {
    std::set<QByteArray> all;
    QDirIterator walk(folder_, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
      QFile file(walk.next());
      if (file.open(QIODevice::ReadOnly)) all.insert(file.readAll().mid(10));
    }
    return all;
  };
  for (int round = 0; round < 12; ++round) {
    const QString hour = QStringLiteral("%1").arg(round + 1, 2, 10, QLatin1Char('0'));
    const auto write = [&](const char* name, const QString& last) {
      WriteSketch(folder_, Sketch("010203", "01/10/2008 01:00", last.toLatin1().constData()),
                  QLatin1String(name));
    };
    write("001-12345-010203.txt", QStringLiteral("03/10/2008 ") + hour + QStringLiteral(":00"));
    write("001-12345-010203=2.txt", QStringLiteral("04/10/2008 ") + hour + QStringLiteral(":00"));
    write("001-12345-010203=1.txt", QStringLiteral("05/10/2008 ") + hour + QStringLiteral(":00"));
    const std::set<QByteArray> before = contents();
    std::vector<std::thread> tidiers;
    for (int i = 0; i < 3; ++i) {
      tidiers.emplace_back([this] {
        RenameRawFiles(folder_);
        std::vector<QString> names;
        for (const RawFile& file : ListRawFiles(folder_)) names.push_back(file.listName);
        ArchiveDuplicateRawFiles(folder_, names);
      });
    }
    for (std::thread& tidier : tidiers) tidier.join();
    ASSERT_EQ(contents(), before) << "round " << round;
  }
}

TEST_F(RawFilesTest, StationsAreNamesThatBeginWithANumberAboveZero) {
  for (const char* name :
       {"001-12345-010203.txt", "001-12345-Degisiklikler2009.txt", "ABC-12345-010203.txt",
        "000-00000-010203.txt", "7.TXT", "001-20000.dat", "002-ab001-010203.txt", "002-AB001-010204.txt"}) {
    Put(QLatin1String(name));
  }
  QStringList stations;
  for (const StationId& station : ListStations(folder_)) stations += station.Text();
  EXPECT_EQ(stations.join(QLatin1Char(' ')), QStringLiteral("001-12345 002-ab001 7.TXT"))
      << "case does not make another station";
}

}  // namespace
}  // namespace vesk
