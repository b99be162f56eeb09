#include "review/load_readings.h"
#include "datafiles/water_year.h"

#include <gtest/gtest.h>

#include "review/data_folder_fixture.h"
#include "review/not_whole_note.h"
#include "review/review_grid.h"
#include "review/setup_parameters.h"
#include "support/english.h"

namespace vesk {
namespace {

using test::RawFileSketch;

class LoadReadingsTest : public test::DataFolderTest {
 protected:
  /// years: none for the station's only file.
  LoadRequest Request(const std::vector<int>& years = {}) {
    LoadRequest request;
    request.dataDirectory = folder_;
    request.station = StationId(QStringLiteral("001-12345"));
    request.files = FilesInUse(ListRawFiles(folder_, request.station));
    WaterYears chosen;
    for (const int year : years) chosen.years.push_back({{year}});
    if (!years.empty()) request.choice = chosen;
    return request;
  }
  static LoadedReadings Load(const LoadRequest& request) {
    auto loaded = LoadReadings(request);
    EXPECT_TRUE(loaded.Ok()) << (loaded ? "" : loaded.Failure().English().toStdString());
    return loaded ? std::move(*loaded) : LoadedReadings{};
  }
  LoadedReadings LoadYear2009() { return Load(Request({2009})); }
};

TEST_F(LoadReadingsTest, ProgressRisesToTheWholeWithEveryFileOfEveryYear) {
  Write("080901", "29/09/2008 01:00", "02/10/2008 23:00");
  Write("090901", "29/09/2009 01:00", "02/10/2009 23:00");
  std::vector<int> told;
  LoadRequest request = Request({2009, 2010});
  request.progress = [&told](int percent) { told.push_back(percent); };
  Load(request);
  EXPECT_EQ(told, (std::vector{25, 50, 75, 100}));
}

TEST_F(LoadReadingsTest, AWaterYearTakesItsDaysFromEveryFileThatHoldsThem) {
  Write("080901", "29/09/2008 01:00", "02/10/2008 23:00");
  Write("090901", "29/09/2009 01:00", "02/10/2009 23:00");
  Write("120101", "01/01/2012 01:00", "02/01/2012 23:00");
  const LoadedReadings loaded = LoadYear2009();
  const StationSeries& grid = loaded.series;
  EXPECT_EQ(loaded.files.size(), 2U);
  EXPECT_EQ(loaded.lastYear, WaterYear{2009});
  ASSERT_GT(grid.ReadingCount(), 0);
  EXPECT_EQ(CellText(grid, 1, GridColumn::Date), QStringLiteral("01/10/2008"));
  EXPECT_EQ(CellText(grid, 1, GridColumn::Label), QStringLiteral("01-ort"));
  EXPECT_EQ(CellText(grid, grid.ReadingCount(), GridColumn::Label), QStringLiteral("02-Min"));
  EXPECT_EQ(CellText(grid, grid.ReadingCount(), GridColumn::Date), QStringLiteral("30/09/2009"));
  EXPECT_EQ(grid.RowCount(), grid.ReadingCount() + 2);
  EXPECT_EQ(CellText(grid, grid.RowCount() - 1, GridColumn::Date), QString())
      << "one empty row behind the last";
  EXPECT_EQ(loaded.setup[kSetupWaterYearsRow], QStringLiteral("--"));
  EXPECT_EQ(loaded.setup[5], QStringLiteral("12345"));
  EXPECT_EQ(loaded.setup[8], QStringLiteral("--")) << "first records differ";
}

TEST_F(LoadReadingsTest, LevelRangeAndBaselineComeAfterTheChangeLog) {
  Write("081001", "01/10/2008 01:00", "01/10/2008 10:00");
  // Saved while the year had a mark that it has no longer.
  Put(QStringLiteral("001-12345-Degisiklikler2009 Dönüşmüş.txt"),
      "01/10/2008\t02:00\t50.5\t\r\n01/10/2008\t03:00\t777\t\r\n01/10/2008\t03:30\t5\t\r\nrubbish\r\n");
  const LoadedReadings loaded = LoadYear2009();
  LevelExtent levels;
  LevelRange(loaded.series, levels);
  EXPECT_EQ(levels.highestCm, 777);
  EXPECT_EQ(levels.lowestCm, 50.5);
  EXPECT_EQ(CellText(loaded.series, 3, GridColumn::Baseline), QStringLiteral("777"));
  EXPECT_EQ(CellText(loaded.series, 3, GridColumn::Code), QStringLiteral("999"));
  EXPECT_EQ(CellText(loaded.series, 4, GridColumn::Level), QStringLiteral("103"));
  ASSERT_EQ(loaded.changeLogs.size(), 1U);
  EXPECT_EQ(loaded.changeLogs[0].overlay.applied, 2);
}

TEST_F(LoadReadingsTest, OfSeveralYearsEachHasItsOwnLogAndWhatTheOtherLogSaysOfItBesides) {
  Write("090901", "30/09/2009 01:00", "01/10/2009 23:00");
  Put(QStringLiteral("001-12345-Degisiklikler2009.txt"),
      "30/09/2009\t12:00\t7\t\r\n01/10/2009\t12:00\t8\t\r\n");
  Put(QStringLiteral("001-12345-Degisiklikler2010.txt"),
      "30/09/2009\t12:00\t9\t\r\n30/09/2009\t13:00\t10\t\r\n01/10/2009\t12:00\t11\t\r\n");
  const LoadedReadings loaded = Load(Request({2009, 2010}));
  ASSERT_EQ(loaded.changeLogs.size(), 2U);
  EXPECT_EQ(loaded.changeLogs[0].rows.last + 1, loaded.changeLogs[1].rows.first);
  EXPECT_EQ(loaded.series.At(12).levelCm, 7);
  EXPECT_EQ(loaded.series.At(13).levelCm, 10);
  int noon = 1;
  while (loaded.series.At(noon).Time() != DateTime(WaterYearFirstDay(2010)) + std::chrono::hours(12)) ++noon;
  EXPECT_EQ(loaded.series.At(noon).levelCm, 11);
  EXPECT_TRUE(loaded.changeLogs[0].overlay.orphans.empty());
  EXPECT_EQ(loaded.changeLogs[1].overlay.orphans,
            std::vector<RecordedLine>({{"30/09/2009\t12:00\t9\t", std::nullopt}}));
}

TEST_F(LoadReadingsTest, ARefusedFileEndsTheWholeLoadAndIsNamedOnce) {
  Write("081001", "01/10/2008 01:00", "01/10/2009 10:00");
  Write("081002", "02/10/2008 01:00", "02/10/2008 10:00", "99");
  Write("081003", "03/10/2008 01:00", "03/10/2008 10:00");
  const LoadedReadings loaded = Load(Request({2009, 2010}));
  EXPECT_EQ(loaded.files, std::vector{QStringLiteral("001-12345-081001=0365.txt")});
  EXPECT_EQ(loaded.lastYear, WaterYear{2009});
  EXPECT_TRUE(loaded.refusedFile.startsWith(QStringLiteral("001-12345-081002")));
  EXPECT_FALSE(loaded.whole);
  const auto missed =
      std::vector{QStringLiteral("001-12345-081002.txt"), QStringLiteral("001-12345-081001.txt"),
                  QStringLiteral("001-12345-081003.txt")};
  EXPECT_EQ(loaded.missedFiles, missed) << "the first one holds a day of 2010, too";
  ASSERT_EQ(loaded.messages.size(), 4U);
  EXPECT_EQ(loaded.messages[0].English(), QStringLiteral("Version Hatasi"));
  EXPECT_TRUE(
      loaded.messages[2].English().contains(QStringLiteral("081001.txt: not loaded for water year 2010")));
  EXPECT_TRUE(
      loaded.messages[3].English().contains(QStringLiteral("081003.txt: not loaded for water year 2009")));
  for (const QString& name : missed)
    EXPECT_TRUE(NotWholeNote(loaded).In(LanguageChoice::Turkish).contains(name));
  EXPECT_EQ(loaded.changeLogs.size(), 2U) << "the corrections of both years stay";
}

TEST_F(LoadReadingsTest, ARefusedFileOfCertainOtherYearsIsNamedAndLeftOut) {
  Write("080901", "01/09/2005 01:00", "02/09/2005 10:00", "99");
  Write("081001", "01/10/2008 01:00", "02/10/2008 10:00");
  const LoadedReadings loaded = LoadYear2009();
  EXPECT_TRUE(loaded.whole);
  EXPECT_EQ(loaded.files.size(), 1U);
  ASSERT_EQ(loaded.messages.size(), 1U);
  EXPECT_TRUE(loaded.messages[0].English().startsWith(QStringLiteral("001-12345-080901.txt, line 3")));
  // A line lost or won moves the dates to other lines: then no year is certain.
  QByteArray moved = SketchContent(Sketch("080901", "01/09/2005 01:00", "02/09/2005 10:00", "99"));
  Put(QStringLiteral("001-12345-080901.txt"), moved.replace("Unit", "Unit\r\nUnit"));
  EXPECT_FALSE(LoadYear2009().whole);
  EXPECT_EQ(LoadYear2009().missedFiles.size(), 2U);
}

TEST_F(LoadReadingsTest, WhatWasCutOrLeftUnreadIsToldWithWhatTheHeaderPromised) {
  const QByteArray good = SketchContent(Sketch("081001", "29/09/2008 01:00", "31/10/2008 23:00"));
  const QByteArray day(QByteArrayLiteral("15/10/2008  01:00"));
  const struct {
    const char* name;
    QByteArray content;
    const char* told;  ///< in the one message; none: the load is whole
  } rows[] = {
      {"whole", good, nullptr},
      {"no end mark", QByteArray(good).replace(QByteArray(20, '*') + "\r\n", ""), nullptr},
      {"slow clock", QByteArray(good).replace("31/10/2008 23:00\r\nSamples", "04/11/2008 23:00\r\nSamples"),
       nullptr},
      {"wrong later year", QByteArray(good).replace(day, "15/10/2080  01:00"),
       ": a reading behind the water year"},
      {"wrong earlier year", QByteArray(good).replace(day, "15/10/2001  01:00"),
       "dated before the water year"},
      {"end mark inside", QByteArray(good).replace(day, QByteArray(20, '*') + "\r\n" + day),
       ": the end mark; "},
      {"end mark before the last record",
       QByteArray(good).insert(good.lastIndexOf("Min "), QByteArray(20, '*') + "\r\n"), ": the end mark; "},
      {"cut at a line end", good.left(good.indexOf(day)),
       "the last reading read is that of 15/10/2008 23:59"},
      {"cut and ended", good.left(good.indexOf(day)) + QByteArray(20, '*') + "\r\n",
       "the last reading read is that of 15/10/2008 23:59"},
      {"no data", good.left(good.indexOf("29/09/2008  01:00")), "no reading up to the end"}};
  for (const auto& row : rows) {
    Put(QStringLiteral("001-12345-081001.txt"), row.content);
    const LoadedReadings loaded = LoadYear2009();
    const QString told = loaded.messages.empty() ? QString() : loaded.messages.front().English();
    EXPECT_EQ(loaded.whole, row.told == nullptr) << row.name << told.toStdString();
    EXPECT_EQ(loaded.partialFiles.size(), row.told ? 1U : 0U) << row.name;
    EXPECT_EQ(NotWholeNote(loaded).IsEmpty(), row.told == nullptr) << row.name;
    if (row.told == nullptr) continue;
    EXPECT_TRUE(told.startsWith(QStringLiteral("001-12345-081001.txt, line "))) << row.name;
    EXPECT_TRUE(told.contains(QLatin1String(row.told))) << row.name << ": " << told.toStdString();
    EXPECT_TRUE(told.endsWith(QStringLiteral("promises 791 samples up to 31/10/2008 23:00")))
        << told.toStdString();
  }
}

TEST_F(LoadReadingsTest, AtMostTwentyFilesAndTheRestIsTold) {
  for (int i = 0; i < 21; ++i) {
    RawFileSketch sketch = Sketch("0", "01/10/2008 01:00", "01/10/2008 02:00");
    sketch.stem = QStringLiteral("0810%1").arg(i, 2, 10, QLatin1Char('0'));
    WriteSketch(folder_, sketch);
  }
  const LoadedReadings loaded = LoadYear2009();
  EXPECT_EQ(loaded.files.size(), 20U);
  EXPECT_FALSE(loaded.whole);
  ASSERT_EQ(loaded.messages.size(), 1U);
  EXPECT_TRUE(loaded.messages[0].English().contains(QStringLiteral("001-12345-081020")))
      << "the one left out is named";
}

TEST_F(LoadReadingsTest, TheNoteIsThatOfTheFileReadLast) {
  RawFileSketch first = Sketch("081001", "01/10/2008 01:00", "01/10/2008 10:00");
  first.firstLine = "01";
  WriteSketch(folder_, first);
  RawFileSketch second = Sketch("081002", "02/10/2008 01:00", "02/10/2008 10:00");
  second.firstLine = "02";
  WriteSketch(folder_, second);
  EXPECT_EQ(InEnglish(LoadYear2009().messages),
            std::vector{QStringLiteral("-Su Yılını Oluşturan Dosyalarda zaman düzeltmesi yapılmış.")});
  Write("081003", "03/10/2008 01:00", "03/10/2008 10:00");
  EXPECT_TRUE(LoadYear2009().messages.empty());
}

TEST_F(LoadReadingsTest, AFileThatVanishesIsMissed) {
  Write("081001", "01/10/2008 01:00", "01/10/2008 10:00");
  Write("081002", "02/10/2008 01:00", "02/10/2008 10:00");
  const LoadRequest request = Request({2009});
  EXPECT_TRUE(Load(request).whole);
  ASSERT_TRUE(QFile::remove(folder_ + QStringLiteral("001-12345-081001.txt")));
  const LoadedReadings loaded = Load(request);
  EXPECT_FALSE(loaded.whole);
  EXPECT_EQ(loaded.files.size(), 1U);
  ASSERT_EQ(loaded.messages.size(), 1U);
  EXPECT_TRUE(loaded.messages[0].English().contains(QStringLiteral("081001")));
  EXPECT_EQ(loaded.setup[8], QStringLiteral("02/10/2008 01:00")) << "nothing to differ from";
  EXPECT_EQ(loaded.setup[kSetupWaterYearsRow], QStringLiteral("2009"));
  EXPECT_FALSE(LoadReadings(LoadRequest{})) << "no file at all";
}

TEST_F(LoadReadingsTest, UnreadableLinesAreNamedAndCounted) {
  QByteArray content = SketchContent(Sketch("081001", "01/10/2008 01:00", "03/10/2008 23:00"));
  Put(QStringLiteral("001-12345-081001.txt"), content.replace("01/10/2008  ", "31/09/2008  "));
  const LoadedReadings loaded = Load(Request());
  ASSERT_EQ(loaded.messages.size(), 21U);
  EXPECT_TRUE(loaded.messages[0].English().contains(QStringLiteral("line 16: not loaded; expected a date")));
  EXPECT_TRUE(loaded.messages[20].English().endsWith(QStringLiteral(": 23 lines were not loaded in all")));
  EXPECT_EQ(CellText(loaded.series, 1, GridColumn::Label), QStringLiteral("01-Max"));
  EXPECT_FALSE(loaded.lastYear) << "a single file has no water year";
  EXPECT_EQ(loaded.partialFiles, std::vector{QStringLiteral("001-12345-081001.txt")});
}

}  // namespace
}  // namespace vesk
