// The browser's lists, marks, renaming and captions, on a folder of made-up raw files.
#include "review/browser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/raw_file_writer.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

DateTime At(int year, unsigned month, unsigned day, int hour = 0, int minute = 0) {
  return DateTime(std::chrono::sys_days(std::chrono::year(year) / static_cast<int>(month) /
                                        static_cast<int>(day))) +
         std::chrono::hours(hour) + std::chrono::minutes(minute);
}

std::vector<std::string> Plain(const std::vector<QString>& texts) {
  std::vector<std::string> plain;
  for (const QString& text : texts) plain.push_back(text.toStdString());
  return plain;
}

class BrowserTest : public testing::Test {
 protected:
  BrowserTest() { EXPECT_TRUE(folder_.isValid()); }

  [[nodiscard]] QString Path() const { return folder_.path() + QLatin1Char('/'); }
  [[nodiscard]] std::vector<std::string> Names() const {
    const QStringList names = QDir(Path()).entryList(QDir::Files, QDir::Name);
    return Plain({names.begin(), names.end()});
  }
  QString Write(const QString& stem, DateTime first, DateTime last, const QString& name = {},
                const QByteArray& version = "10") {
    test::RawFileSketch sketch;
    sketch.stem = stem;
    sketch.first = first;
    sketch.last = last;
    sketch.version = version;
    sketch.stepMinutes = 360;
    return test::WriteSketch(Path(), sketch, name);
  }
  void Touch(const QString& name) {
    QFile file(Path() + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  }
  Browser Open(WorkMode mode = WorkMode::DataFile) {
    Browser browser(mode,
                    {QStringLiteral("Dönüşmüş"), QStringLiteral("Ekle"), QStringLiteral("Read Data File")});
    report_ = browser.OpenFolder(Path());
    return browser;
  }
  static std::vector<std::string> YearTexts(const Browser& browser) {
    std::vector<QString> texts;
    for (const WaterYearEntry& entry : browser.WaterYears()) texts.push_back(entry.text);
    return Plain(texts);
  }

  QTemporaryDir folder_;
  BrowserReport report_;
};

TEST_F(BrowserTest, RawFilesGetTheirDayCountOnceAndReplaceAnOlderFileOfThatName) {
  Write(QStringLiteral("010203"), At(2010, 3, 1, 6), At(2010, 3, 1, 13));  // 0.3 days: count 0, see below
  Write(QStringLiteral("010204"), At(2010, 3, 1, 23), At(2010, 3, 13, 1));
  Write(QStringLiteral("010205"), At(2010, 3, 1), At(2010, 3, 2), QStringLiteral("001-12345-010205=12.txt"));
  Touch(QStringLiteral("001-12345-010204=0012.txt"));
  Touch(QStringLiteral("notes.txt"));

  const Browser browser = Open();

  EXPECT_THAT(Names(), ElementsAre("001-12345-010203=0000.txt", "001-12345-010204=0012.txt",
                                   "001-12345-010205=0012.txt", "notes.txt"));
  EXPECT_GT(QFileInfo(Path() + QStringLiteral("001-12345-010204=0012.txt")).size(), 0);
  EXPECT_THAT(report_.failures, IsEmpty());
  Browser again = Open();
  EXPECT_THAT(report_.renamed, IsEmpty());
}

TEST_F(BrowserTest, StationsAreFirstNineCharactersThatBeginWithANumberAboveZero) {
  for (const char* name :
       {"001-12345-Degisiklikler2011.txt", "ABC-12345-010203=0001.txt", "000-11111-010203=0001.txt",
        "002-20000-010203=0001.txt", "002-20000-010204=0001.TXT", "001-12345-010203.dat"}) {
    Touch(QLatin1String(name));
  }
  const Browser browser = Open();
  EXPECT_THAT(Plain(browser.Stations()), ElementsAre("001-12345", "002-20000"));
  EXPECT_FALSE(browser.Confirm().enabled);
  EXPECT_EQ(browser.Confirm().caption, QStringLiteral("..."));
}

TEST_F(BrowserTest, WaterYearsAreListedOnceAndMarkedWhereAConvertedFileStands) {
  Write(QStringLiteral("010203"), At(2008, 9, 1), At(2008, 10, 2));
  Write(QStringLiteral("010204"), At(2008, 11, 1), At(2009, 11, 2));
  Write(QStringLiteral("010205"), At(2012, 1, 1), At(2012, 1, 2), {}, "20");  // refused
  Touch(QStringLiteral("S2009-001-12345.txt"));
  Browser browser = Open();
  const BrowserReport report = browser.SelectStation(0);
  EXPECT_THAT(YearTexts(browser), ElementsAre("2008 ", "2009 Dönüşmüş", "2010 "));
  ASSERT_EQ(report.refused.size(), 1U);
  EXPECT_TRUE(report.refused[0].contains(QStringLiteral("Version Hatasi")));
}

TEST_F(BrowserTest, FilesThatHoldAChosenYearAreMarkedAndListNamesStay25Characters) {
  Write(QStringLiteral("010203"), At(2008, 9, 1), At(2008, 9, 30, 23));
  Write(QStringLiteral("010204"), At(2008, 9, 30), At(2008, 10, 1, 1));
  Write(QStringLiteral("010205"), At(2009, 9, 30), At(2009, 10, 1, 1));
  Browser browser = Open();
  browser.SelectStation(-1);
  browser.SelectWaterYears(browser.IndexesOf({2009}));
  EXPECT_TRUE(browser.MarksShown());
  EXPECT_THAT(
      Plain(browser.FileEntries()),
      ElementsAre("001-12345-010203=0029.txt", "001-12345-010204=0001.txt<", "001-12345-010205=0001.txt<"));
  browser.ClearMarks();
  for (const QString& entry : browser.FileEntries()) EXPECT_EQ(entry.size(), 25);

  const auto request = browser.Request(QStringLiteral("Kemer"), {});
  ASSERT_TRUE(request);
  EXPECT_EQ(request->station, QStringLiteral("001-12345"));
  EXPECT_THAT(Plain(request->waterYears), ElementsAre("2009 "));
  EXPECT_EQ(request->files.size(), 3U);
}

TEST_F(BrowserTest, SupersededReadOutsGoIntoTheArchiveWhenTheStationIsChosen) {
  Write(QStringLiteral("010203"), At(2010, 3, 1), At(2010, 3, 4),
        QStringLiteral("001-12345-010203=0003.txt"));
  Write(QStringLiteral("010203"), At(2010, 3, 1), At(2010, 3, 9),
        QStringLiteral("001-12345-010203=0008.txt"));
  Browser browser = Open();
  EXPECT_EQ(browser.Files().size(), 2U);
  const BrowserReport report = browser.SelectStation(0);
  EXPECT_THAT(Plain(report.archived), ElementsAre("001-12345-010203=0003.txt"));
  EXPECT_THAT(Plain(browser.FileEntries()), ElementsAre("001-12345-010203=0008.txt"));
  EXPECT_TRUE(QFile::exists(Path() + QStringLiteral("Arsiv/001-12345-010203=0003.txt")));
}

TEST_F(BrowserTest, AFileThatCannotBeRenamedIsListedUnderItsNewNameAndRead) {
  const QString delivered = Write(QStringLiteral("010203"), At(2010, 3, 1), At(2010, 3, 9));
  ASSERT_TRUE(QDir(Path()).mkpath(QStringLiteral("001-12345-010203=0008.txt/inside")));  // the name is taken
  Browser browser = Open();
  EXPECT_EQ(report_.failures.size(), 2U);  // and the folder in the way
  browser.SelectStation(0);
  ASSERT_THAT(Plain(browser.FileEntries()), ElementsAre("001-12345-010203=0008.txt"));
  EXPECT_EQ(browser.Files()[0].diskName, delivered);
  browser.SelectWaterYears({0});
  const auto loaded = LoadReadings(*browser.Request({}, {}));
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->tallies[0].kept, loaded->grid.ReadingCount());
  EXPECT_GT(loaded->grid.ReadingCount(), 30);
}

TEST_F(BrowserTest, ConfirmCaptionFollowsModeAndLastList) {
  Write(QStringLiteral("010203"), At(2010, 3, 1), At(2010, 3, 9));
  struct Case {
    WorkMode mode;
    const char* atStart;
    const char* station;
    const char* year;
    const char* file;
  };
  // Table modes have no caption of their own for water years.
  for (const Case& c : {Case{WorkMode::DataFile, "...", "...", "Su Yılını Oku", "Read Data File"},
                        Case{WorkMode::MultipleGraph, "Ekle", "...", "Ekle", "Read Data File"},
                        Case{WorkMode::LevelTable, "...", "...", "...", "Read Data File"}}) {
    Browser browser = Open(c.mode);
    browser.ApplyCaptionRule(BrowserList::FormActivate);
    EXPECT_EQ(browser.Confirm().caption.toStdString(), c.atStart);
    EXPECT_FALSE(browser.Confirm().enabled);
    browser.SelectStation(0);
    EXPECT_EQ(browser.Confirm().caption.toStdString(), c.station);
    EXPECT_FALSE(browser.Confirm().enabled);
    browser.SelectWaterYears({0});
    EXPECT_EQ(browser.Confirm().caption.toStdString(), c.year);
    EXPECT_TRUE(browser.Confirm().enabled);
    SetupCells cells;
    std::vector<QString> messages;
    ASSERT_TRUE(browser.SelectRawFile(0, {}, cells, messages));
    EXPECT_EQ(browser.Confirm().caption.toStdString(), c.file);
    EXPECT_EQ(browser.Mode(), SelectionMode::SingleFile);
    EXPECT_TRUE(browser.ChosenYears().empty());
    browser.SelectWaterYears({});
    EXPECT_FALSE(browser.Confirm().enabled);
    EXPECT_FALSE(browser.Request({}, {}).has_value());
  }
}

TEST_F(BrowserTest, ARawFileShowsItsHeaderAndItsCorrectionNote) {
  test::RawFileSketch sketch;
  sketch.first = At(2010, 3, 1);
  sketch.last = At(2010, 3, 9);
  sketch.firstLine = "02";
  test::WriteSketch(Path(), sketch);
  Browser browser = Open();
  SetupCells cells;
  std::vector<QString> messages;
  ASSERT_TRUE(browser.SelectRawFile(0, QStringLiteral("Kemer"), cells, messages));
  EXPECT_EQ(cells[0], QStringLiteral("10"));
  EXPECT_EQ(cells[6], QStringLiteral("Kemer"));
  EXPECT_EQ(cells[10], QStringLiteral(" 8 Gün"));
  EXPECT_THAT(Plain(messages), ElementsAre("-Bu dosyada zaman düzeltmesi yapılmış."));
  EXPECT_FALSE(browser.SelectRawFile(7, {}, cells, messages));
  const auto request = browser.Request({}, {});
  ASSERT_TRUE(request);
  EXPECT_TRUE(request->waterYears.empty());
  EXPECT_EQ(request->station, QStringLiteral("001-12345"));
}

TEST_F(BrowserTest, AnEmptyOrMissingFolderHasNothingToChoose) {
  Browser browser = Open();
  EXPECT_THAT(browser.Stations(), IsEmpty());
  EXPECT_THAT(browser.SelectStation(0).refused, IsEmpty());
  EXPECT_TRUE(browser.Station().isEmpty());
  browser.OpenFolder(Path() + QStringLiteral("nowhere/"));
  EXPECT_THAT(browser.Files(), IsEmpty());
}

TEST(WaterYearRequestTest, CarriesTheMarkOfAConvertedYear) {
  const QTemporaryDir folder;
  const QString path = folder.path() + QLatin1Char('/');
  test::RawFileSketch sketch;
  sketch.first = At(2010, 3, 1);
  sketch.last = At(2010, 11, 9);
  sketch.stepMinutes = 1440;
  test::WriteSketch(path, sketch);
  QFile converted(path + QStringLiteral("S2011-001-12345.txt"));
  ASSERT_TRUE(converted.open(QIODevice::WriteOnly));
  const LoadRequest request =
      WaterYearRequest(path, QStringLiteral("001-12345"), 2011, QStringLiteral("Dönüşmüş"));
  EXPECT_THAT(Plain(request.waterYears), ElementsAre("2011 Dönüşmüş"));
  const auto loaded = LoadReadings(request);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->waterYear, 2011);
}

}  // namespace
}  // namespace vesk
