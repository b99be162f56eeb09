#include "review/load_readings.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "review/setup_parameters.h"
#include "support/raw_file_writer.h"

namespace vesk {
namespace {

using test::RawFileSketch;

DateTime T(const char* text) {
  return *ReadDateTime(QString::fromLatin1(text));
}

class LoadReadingsTest : public testing::Test {
 protected:
  RawFileSketch Sketch(const char* stem, const char* first, const char* last) {
    RawFileSketch sketch;
    sketch.stem = QString::fromLatin1(stem);
    sketch.first = T(first);
    sketch.last = T(last);
    return sketch;
  }
  LoadRequest Request(std::vector<QString> years = {}) {
    LoadRequest request;
    request.dataDirectory = folder;
    request.station = QStringLiteral("001-12345");
    request.files = FilesInUse(ListRawFiles(folder, request.station));
    request.waterYears = std::move(years);
    return request;
  }
  LoadedReadings Load(const LoadRequest& request) {
    auto loaded = LoadReadings(request);
    EXPECT_TRUE(loaded.Ok()) << (loaded ? "" : loaded.Failure().Text().toStdString());
    return loaded ? std::move(*loaded) : LoadedReadings{};
  }
  void Put(const QString& name, const QByteArray& content) {
    QFile file(folder + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QTemporaryDir temporary;
  QString folder = temporary.path() + QLatin1Char('/');
};

TEST_F(LoadReadingsTest, ProgressRisesToTheWholeWithEveryFileOfEveryYear) {
  test::WriteSketch(folder, Sketch("080901", "29/09/2008 01:00", "02/10/2008 23:00"));
  test::WriteSketch(folder, Sketch("090901", "29/09/2009 01:00", "02/10/2009 23:00"));
  std::vector<int> told;
  LoadRequest request = Request({QStringLiteral("2009 "), QStringLiteral("2010 ")});
  request.progress = [&told](int percent) { told.push_back(percent); };
  Load(request);
  EXPECT_EQ(told, (std::vector{25, 50, 75, 100}));
  told.clear();
  request.waterYears.clear();
  request.files.resize(1);
  Load(request);
  EXPECT_EQ(told, std::vector{100});
}

TEST_F(LoadReadingsTest, AWaterYearTakesItsDaysFromEveryFileThatHoldsThem) {
  test::WriteSketch(folder, Sketch("080901", "29/09/2008 01:00", "02/10/2008 23:00"));
  test::WriteSketch(folder, Sketch("090901", "29/09/2009 01:00", "02/10/2009 23:00"));
  test::WriteSketch(folder, Sketch("120101", "01/01/2012 01:00", "02/01/2012 23:00"));
  const LoadedReadings loaded = Load(Request({QStringLiteral("2009 ")}));
  const ReviewGrid& grid = loaded.grid;
  EXPECT_EQ(loaded.files.size(), 2U);
  EXPECT_EQ(loaded.waterYear, 2009);
  ASSERT_GT(grid.ReadingCount(), 0);
  EXPECT_EQ(grid.Text(1, GridColumn::Date), QStringLiteral("01/10/2008"));
  EXPECT_EQ(grid.Text(1, GridColumn::Label), QStringLiteral("01-ort"));
  EXPECT_EQ(grid.Text(grid.ReadingCount(), GridColumn::Label), QStringLiteral("02-Min"));
  EXPECT_EQ(grid.Text(grid.ReadingCount(), GridColumn::Date), QStringLiteral("30/09/2009"));
  EXPECT_EQ(grid.RowCount(), grid.ReadingCount() + 2);
  EXPECT_EQ(grid.Text(grid.RowCount() - 1, GridColumn::Date), QString()) << "one empty row behind the last";
  EXPECT_EQ(loaded.setup[kSetupWaterYearsRow], QStringLiteral("--"));
  EXPECT_EQ(loaded.setup[5], QStringLiteral("12345"));
  EXPECT_EQ(loaded.setup[8], QStringLiteral("--")) << "first records differ";
  for (const FileTally& tally : loaded.tallies) EXPECT_EQ(tally.refused, 0);
}

TEST_F(LoadReadingsTest, LevelRangeAndBaselineComeAfterTheChangeLog) {
  test::WriteSketch(folder, Sketch("081001", "01/10/2008 01:00", "01/10/2008 10:00"));
  Put(QStringLiteral("001-12345-Degisiklikler2009.txt"),
      "01/10/2008\t03:00\t777\t\r\n01/10/2008\t03:30\t5\t\r\n01/10/2008\t02:00\t50.5\t\r\nrubbish\r\n");
  const LoadedReadings loaded = Load(Request({QStringLiteral("2009 ")}));
  EXPECT_EQ(loaded.levels.highestCm, 777);
  EXPECT_EQ(loaded.levels.lowestCm, 50.5);
  EXPECT_EQ(loaded.grid.Text(3, GridColumn::Level), QStringLiteral("777"));
  EXPECT_EQ(loaded.grid.Text(3, GridColumn::Baseline), QStringLiteral("777"));
  EXPECT_EQ(loaded.grid.Text(3, GridColumn::Code), QStringLiteral("999"));
  EXPECT_EQ(loaded.grid.Mark(3).shade, RowShade::Changed);
  EXPECT_EQ(loaded.grid.Text(2, GridColumn::Level), QStringLiteral("50.5")) << "found again from row 1";
  ASSERT_EQ(loaded.changeLogs.size(), 1U);
  EXPECT_EQ(loaded.changeLogs[0].overlay.applied, 2);
  EXPECT_FALSE(loaded.changeLogs[0].overlay.orphans.empty()) << "03:30 is no reading";
  EXPECT_EQ(loaded.grid.Text(4, GridColumn::Level), QStringLiteral("103"))
      << "the row count is no row to write to";
}

TEST_F(LoadReadingsTest, ACorrectionSurvivesAChangedMarkOfItsYear) {
  test::WriteSketch(folder, Sketch("081001", "01/10/2008 01:00", "01/10/2008 10:00"));
  Put(QStringLiteral("001-12345-Degisiklikler2009.txt"), "01/10/2008\t03:00\t777\t\r\n");
  for (const QString& entry :
       {QStringLiteral("2009 Dönüşmüş"), QStringLiteral("2009 Ok."), QStringLiteral("2009 ")}) {
    EXPECT_EQ(Load(Request({entry})).grid.Text(3, GridColumn::Level), QStringLiteral("777"))
        << entry.toStdString();
  }
}

TEST_F(LoadReadingsTest, ARefusedFileEndsTheYearAndIsNamed) {
  test::WriteSketch(folder, Sketch("081001", "01/10/2008 01:00", "01/10/2008 10:00"));
  RawFileSketch refused = Sketch("081002", "02/10/2008 01:00", "02/10/2008 10:00");
  refused.version = "99";
  test::WriteSketch(folder, refused);
  test::WriteSketch(folder, Sketch("081003", "03/10/2008 01:00", "03/10/2008 10:00"));
  const LoadedReadings loaded = Load(Request({QStringLiteral("2009")}));
  EXPECT_EQ(loaded.files.size(), 1U);
  EXPECT_TRUE(loaded.refusedFile.startsWith(QStringLiteral("001-12345-081002")));
  EXPECT_TRUE(ListContains(loaded.messages, QStringLiteral("Version Hatasi")));
}

TEST_F(LoadReadingsTest, AtMostTwentyFilesAndTheRestIsTold) {
  for (int i = 0; i < 21; ++i) {
    RawFileSketch sketch = Sketch("0", "01/10/2008 01:00", "01/10/2008 02:00");
    sketch.stem = QStringLiteral("0810%1").arg(i, 2, 10, QLatin1Char('0'));
    test::WriteSketch(folder, sketch);
  }
  const LoadedReadings loaded = Load(Request({QStringLiteral("2009")}));
  EXPECT_EQ(loaded.files.size(), 20U);
  EXPECT_FALSE(loaded.whole);
  ASSERT_EQ(loaded.messages.size(), 1U);
  EXPECT_TRUE(loaded.messages[0].contains(QStringLiteral("001-12345-081020"))) << "the one left out is named";
}

TEST_F(LoadReadingsTest, TheNoteIsThatOfTheFileReadLast) {
  RawFileSketch first = Sketch("081001", "01/10/2008 01:00", "01/10/2008 10:00");
  first.firstLine = "01";
  test::WriteSketch(folder, first);
  RawFileSketch second = Sketch("081002", "02/10/2008 01:00", "02/10/2008 10:00");
  second.firstLine = "02";
  test::WriteSketch(folder, second);
  EXPECT_EQ(Load(Request({QStringLiteral("2009")})).messages,
            std::vector{QStringLiteral("-Su Yılını Oluşturan Dosyalarda zaman düzeltmesi yapılmış.")});
  test::WriteSketch(folder, Sketch("081003", "03/10/2008 01:00", "03/10/2008 10:00"));
  EXPECT_TRUE(Load(Request({QStringLiteral("2009")})).messages.empty());
}

TEST_F(LoadReadingsTest, AFileThatVanishesIsMissed) {
  test::WriteSketch(folder, Sketch("081001", "01/10/2008 01:00", "01/10/2008 10:00"));
  test::WriteSketch(folder, Sketch("081002", "02/10/2008 01:00", "02/10/2008 10:00"));
  const LoadRequest request = Request({QStringLiteral("2009")});
  EXPECT_TRUE(Load(request).whole);
  ASSERT_TRUE(QFile::remove(folder + QStringLiteral("001-12345-081001.txt")));
  const LoadedReadings loaded = Load(request);
  EXPECT_FALSE(loaded.whole);
  EXPECT_EQ(loaded.files.size(), 1U);
  ASSERT_EQ(loaded.messages.size(), 1U);
  EXPECT_TRUE(loaded.messages[0].contains(QStringLiteral("081001")));
}

TEST_F(LoadReadingsTest, UnreadableLinesAreNamedAndTheRestLoads) {
  QByteArray content = test::SketchContent(Sketch("081001", "01/10/2008 01:00", "01/10/2008 10:00"));
  content.replace("01/10/2008  03:00", "01/10/2008  0x:00");
  Put(QStringLiteral("001-12345-081001.txt"), content);
  LoadRequest request = Request();
  const LoadedReadings loaded = Load(request);
  ASSERT_EQ(loaded.messages.size(), 1U);
  EXPECT_TRUE(loaded.messages[0].contains(QStringLiteral("line 18"))) << loaded.messages[0].toStdString();
  EXPECT_EQ(loaded.tallies[0].refused, 1);
  EXPECT_EQ(loaded.grid.Text(1, GridColumn::Label), QStringLiteral("01-ort"));
  EXPECT_EQ(loaded.waterYear, 0) << "a single file has no water year";
}

TEST_F(LoadReadingsTest, NothingToLoadIsAnError) {
  EXPECT_FALSE(LoadReadings(Request({QStringLiteral("2009")})));
}

TEST(ReviewGrid, SearchesByDateAndTime) {
  ReviewGrid grid;
  for (const int minute : {60, 120, 180, 120}) {
    Reading reading;
    reading.day = WaterYearFirstDay(2009);
    reading.minuteOfDay = static_cast<std::int16_t>(minute);
    grid.Append(reading);
  }
  const Day day = WaterYearFirstDay(2009);
  EXPECT_EQ(grid.FindRow(day, 120, 1), 2);
  EXPECT_EQ(grid.FindRow(day, 120, 3), 4);
  EXPECT_EQ(grid.FindRow(day, 60, 2), grid.RowCount());
  EXPECT_EQ(grid.FindLastRowUpTo(DateTime(day) + std::chrono::minutes(130)), 4);
  EXPECT_EQ(grid.FindLastRowUpTo(DateTime(day)), 0);
}

}  // namespace
}  // namespace vesk
