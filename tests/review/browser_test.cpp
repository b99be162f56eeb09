// The browser's lists, marks and captions, on a folder of made-up raw files.
#include "review/browser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "review/data_folder_fixture.h"
#include "support/english.h"

namespace vesk {
namespace {

using testing::ElementsAre;

std::vector<std::string> Plain(const std::vector<QString>& texts) {
  std::vector<std::string> plain;
  for (const QString& text : texts) plain.push_back(text.toStdString());
  return plain;
}

class BrowserTest : public test::DataFolderTest {
 protected:
  Browser Open(WorkMode mode = WorkMode::DataFile, Regional regional = {}) {
    Browser browser(mode,
                    {QStringLiteral("Dönüşmüş"), QStringLiteral("Ekle"), QStringLiteral("Read Data File")},
                    regional);
    EXPECT_TRUE(browser.OpenFolder(folder_).failures.empty());
    return browser;
  }
};

TEST_F(BrowserTest, WaterYearsAreListedOnceAndMarkedWhereAConvertedFileStands) {
  Write("010203", "01/09/2008 00:00", "02/10/2008 00:00");
  Write("010204", "01/11/2008 00:00", "02/11/2009 00:00");
  Write("010205", "01/01/2012 00:00", "02/01/2012 00:00", "20");  // refused
  Put(QStringLiteral("s2009-001-12345.TXT"));                     // in whatever case
  Browser browser = Open();
  const BrowserReport report = browser.SelectStation(0);
  std::vector<QString> texts;
  for (const StationWaterYear& entry : browser.StationYears())
    texts.push_back(entry.year.Text() + QLatin1Char(' ') + entry.mark);
  EXPECT_THAT(Plain(texts), ElementsAre("2008 ", "2009 Dönüşmüş", "2010 "));
  ASSERT_EQ(report.refused.size(), 1U);
  EXPECT_TRUE(report.refused[0].English().startsWith(QStringLiteral("Version Hatasi")));
}

TEST_F(BrowserTest, FilesThatHoldAChosenYearAreMarkedAndLoadedUnderTheirName) {
  Write("010203", "01/09/2008 00:00", "30/09/2008 23:00");
  Write("010204", "30/09/2008 00:00", "01/10/2008 01:00");
  Write("010205", "30/09/2009 00:00", "01/10/2009 01:00");
  Browser browser = Open();
  browser.SelectStation(-1);
  browser.SelectWaterYears(browser.IndexesOf({{2009}}));
  EXPECT_TRUE(browser.MarksShown());
  EXPECT_THAT(
      Plain(browser.FileEntries()),
      ElementsAre("001-12345-010203=0029.txt", "001-12345-010204=0001.txt<", "001-12345-010205=0001.txt<"));
  browser.ClearMarks();
  for (const QString& entry : browser.FileEntries()) EXPECT_EQ(entry.size(), 25);
  const auto request = browser.Request();
  ASSERT_TRUE(request);
  EXPECT_EQ(request->station.Text(), QStringLiteral("001-12345"));
  EXPECT_EQ(request->choice, Choice(WaterYears{{{{2009}}}}));
  EXPECT_EQ(request->files.size(), 3U);
}

TEST_F(BrowserTest, SupersededReadOutsGoIntoTheArchiveWhenTheStationIsChosen) {
  Write("010203", "01/03/2010 00:00", "04/03/2010 00:00");
  Open();  // gives it its day count
  Write("010203", "01/03/2010 00:00", "09/03/2010 00:00");
  Browser browser = Open();
  EXPECT_EQ(browser.Files().size(), 2U);
  Put(QStringLiteral("Arsiv"));  // in the way of the folder
  EXPECT_EQ(browser.SelectStation(0).failures.size(), 1U);
  EXPECT_THAT(Plain(browser.FileEntries()), ElementsAre("001-12345-010203=0008.txt"));
  ASSERT_TRUE(QFile::remove(folder_ + QStringLiteral("Arsiv")));
  EXPECT_THAT(Plain(browser.SelectStation(0).archived), ElementsAre("001-12345-010203=0003.txt"));
  EXPECT_THAT(Plain(browser.FileEntries()), ElementsAre("001-12345-010203=0008.txt"));
  EXPECT_TRUE(Has("Arsiv/001-12345-010203=0003.txt"));
}

TEST_F(BrowserTest, ConfirmCaptionFollowsModeAndLastList) {
  Write("010203", "01/03/2010 00:00", "09/03/2010 00:00");
  const struct {
    WorkMode mode;
    const char* atStart;
    const char* year;
  } kCases[] = {{WorkMode::DataFile, "...", "Su Yılını Oku"},
                {WorkMode::MultipleGraph, "Ekle", "Ekle"},
                {WorkMode::LevelTable, "...", "..."}};  // none of its own for water years
  for (const auto& c : kCases) {
    Browser browser = Open(c.mode);
    const auto expect = [&browser](const char* caption, bool enabled) {
      EXPECT_EQ(browser.Confirm().caption.toStdString(), caption);
      EXPECT_EQ(browser.Confirm().enabled, enabled);
      EXPECT_EQ(browser.Request().has_value(), enabled);
    };
    browser.ApplyCaptionRule(BrowserList::FormActivate);
    expect(c.atStart, false);
    browser.SelectStation(0);
    expect("...", false);
    browser.SelectWaterYears({0});
    expect(c.year, true);
    SetupCells cells;
    std::vector<Message> messages;
    ASSERT_TRUE(browser.SelectRawFile(0, {}, cells, messages));
    expect("Read Data File", true);
    EXPECT_TRUE(browser.ChosenYears().empty());
    browser.SelectWaterYears({});
    expect("...", false);
  }
}

TEST_F(BrowserTest, ARawFileShowsItsHeaderWithNumbersAsTheRegionWritesThem) {
  test::RawFileSketch sketch = Sketch("010203", "01/03/2010 00:00", "09/03/2010 00:00");
  sketch.firstLine = "02";
  Put(sketch.DeliveredName(),
      SketchContent(sketch).replace("Sampling                  60", "Sampling                  2,5"));
  Browser browser = Open(WorkMode::DataFile, {.decimalSign = QLatin1Char(',')});
  SetupCells cells;
  std::vector<Message> messages;
  ASSERT_TRUE(browser.SelectRawFile(0, QStringLiteral("Kemer"), cells, messages));
  EXPECT_EQ(QStringList(cells.begin(), cells.end()).join(QLatin1Char('|')),
            QStringLiteral("10|Optical Encoder||26|7|12345|Kemer|01/03/2010 00:00|01/03/2010 00:00|"
                           "09/03/2010 00:00| 8 Gün|193 Adet|2.5 Dak.|60 Dak.| 2010"));
  EXPECT_THAT(Plain(InEnglish(messages)), ElementsAre("-Bu dosyada zaman düzeltmesi yapılmış."));
  const auto request = browser.Request();
  ASSERT_TRUE(request);
  EXPECT_TRUE(IsSingleFile(request->choice));
  EXPECT_EQ(request->station.Text(), QStringLiteral("001-12345"));
  EXPECT_EQ(LoadReadings(*request)->setup, [&] {
    cells[6].clear();  // the name is the window's
    return cells;
  }());
}

}  // namespace
}  // namespace vesk
