#include "graphs/graph_sheet.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "datafiles/graph_file.h"
#include "graphs/graph_scales.h"

namespace vesk {
namespace {

using namespace std::chrono_literals;

Reading At(Day day, int minute, double levelCm, ReadingKind kind = ReadingKind::Ordinary) {
  Reading reading;
  reading.day = day;
  reading.minuteOfDay = static_cast<std::int16_t>(minute);
  reading.levelCm = levelCm;
  reading.kind = kind;
  return reading;
}

const std::vector<Reading> kReadings = {At(Day(2010y / 10 / 1), 60, 120.5), At(Day(2010y / 10 / 2), 0, 130),
                                        At(Day(2010y / 10 / 2), 700, 177, ReadingKind::Maximum),
                                        At(Day(2011y / 9 / 30), 1439, 90)};

ReviewGrid Grid() {
  ReviewGrid grid;
  grid.Assign(kReadings);
  return grid;
}

Options WithColours() {
  Options options;
  options.Slot(1) = QStringLiteral("1");
  const char* const colours[] = {"16777215", "255", "12632256", "65280", "16711680", "-2147483643"};
  for (int i = 0; i < 6; ++i) options.Slot(2 + i) = QString::fromLatin1(colours[i]);
  return options;
}

TEST(GraphStyles, ColoursAndExtremesComeFromTheOptions) {
  const GraphStyle style = StyleOf(WithColours());
  EXPECT_EQ(style.background, QColor(Qt::white));
  EXPECT_EQ(style.scale, QColor(192, 192, 192));
  EXPECT_EQ(style.stations[0], QColor(255, 0, 0)) << "stored colours hold red in their low byte";
  EXPECT_EQ(style.stations[1], QColor(0, 255, 0));
  EXPECT_EQ(style.stations[2], QColor(0, 0, 255));
  EXPECT_EQ(style.stations[3], QColor(Qt::white)) << "system colour 5 is paper";
  Options options;
  EXPECT_TRUE(StyleOf(options).withExtremes);
  options.Slot(1) = QStringLiteral("0");
  EXPECT_FALSE(StyleOf(options).withExtremes);
}

TEST(GraphSheets, ASingleStationsTitleIsWrittenInTheLanguage) {
  Language language;
  language.FillTurkish();
  const GraphStation station{QStringLiteral("12345"), QStringLiteral("Göksu"), 2011};
  GraphSheet sheet = MakeSingleSheet(Grid(), station, WithColours(), language);
  EXPECT_EQ(sheet.texts.title, QStringLiteral("12345 Göksu AGI  (Su Yili:2011)"));
  EXPECT_EQ(sheet.texts.timeCaption, QStringLiteral("Zaman"));
  EXPECT_EQ(sheet.texts.levelCaption, QStringLiteral("Seviye, cm."));
  EXPECT_TRUE(sheet.texts.legend.isEmpty());
  language.FillEnglish();
  sheet = MakeSingleSheet(Grid(), station, WithColours(), language);
  EXPECT_EQ(sheet.texts.title, QStringLiteral("12345 Göksu AGI  (Water Year:2011)"));
}

TEST(GraphSheets, ValuesOfTheSeriesAreThoseOfTheGrid) {
  Language language;
  const GraphSheet sheet = MakeSingleSheet(Grid(), {{}, {}, 2011}, WithColours(), language);
  ASSERT_EQ(sheet.series.size(), 1U);
  const auto& points = sheet.series[0].Points();
  ASSERT_EQ(points.size(), kReadings.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    EXPECT_EQ(TimeOfCoordinate(sheet.firstDay, points[i].minutes * kMinuteUnits), kReadings[i].Time());
    EXPECT_EQ(points[i].levelCm, kReadings[i].levelCm);
    EXPECT_EQ(points[i].kind, kReadings[i].kind);
  }
  EXPECT_EQ(sheet.HighestCm(), 177);
}

TEST(GraphSheets, WithoutAWaterYearTheReadingsDecide) {
  ReviewGrid grid;
  grid.Append(At(Day(2009y / 8 / 1), 0, 1));
  grid.Append(At(Day(2011y / 8 / 1), 0, 1));
  const GraphSheet sheet = MakeSingleSheet(grid, {}, WithColours(), Language());
  EXPECT_EQ(sheet.waterYear, 2009);
  EXPECT_EQ(sheet.end, Day(2011y / 9 / 30));
}

class GraphSheetFiles : public testing::Test {
 protected:
  GraphSheetFiles() { language_.FillEnglish(); }
  GraphFileEntry Write(const char* station, int waterYear, const std::vector<Reading>& readings) {
    const QString name = QString::fromLatin1(station);
    const auto written = WriteGraphFile(directory_, waterYear, name, readings);
    EXPECT_TRUE(written);
    return {directory_ + written->name, written->name, StationOfGraphFile(written->name), waterYear};
  }

  QTemporaryDir folder_;
  QString directory_ = folder_.path() + QLatin1Char('/');
  Language language_;
};

TEST_F(GraphSheetFiles, SeveralStationsGiveTheSamePointsFromFilesAndFromGrids) {
  const auto grid = std::make_shared<const ReviewGrid>(Grid());
  const GraphSheet fromFiles = ReadMultipleSheet(
      {Write("001-12345", 2011, kReadings), Write("001-54321", 2011, kReadings)}, WithColours(), language_);
  const GraphSheet fromGrids =
      MakeMultipleSheet({{QStringLiteral("12345"), 2011, grid}, {QStringLiteral("54321"), 2011, grid}},
                        WithColours(), language_);
  EXPECT_EQ(fromFiles.texts.title, QStringLiteral("Water Year:2011"));
  EXPECT_EQ(fromFiles.texts.legend, (QStringList{QStringLiteral("12345 SGS"), QStringLiteral("54321 SGS")}));
  EXPECT_EQ(fromGrids.texts.legend, fromFiles.texts.legend);
  ASSERT_EQ(fromFiles.series.size(), 2U);
  for (std::size_t i = 0; i < kReadings.size(); ++i) {
    EXPECT_EQ(fromFiles.series[1].Points()[i].minutes, fromGrids.series[1].Points()[i].minutes);
    EXPECT_EQ(fromFiles.series[1].Points()[i].levelCm, fromGrids.series[1].Points()[i].levelCm);
    EXPECT_EQ(fromFiles.series[1].Points()[i].kind, fromGrids.series[1].Points()[i].kind);
  }
}

TEST_F(GraphSheetFiles, DifferentWaterYearsShareOneTimeAxis) {
  const GraphSheet sheet = ReadMultipleSheet(
      {Write("001-12345", 2011, kReadings), Write("001-12345", 2009, {At(Day(2008y / 10 / 1), 5, 7)})},
      WithColours(), language_);
  EXPECT_EQ(sheet.waterYear, 2011) << "the first entry's";
  EXPECT_EQ(sheet.start, Day(2008y / 10 / 1));
  EXPECT_EQ(sheet.end, Day(2011y / 9 / 30));
  EXPECT_EQ(sheet.series[1].Points()[0].minutes, 1440 - 730 * 1440 + 5);
}

TEST_F(GraphSheetFiles, MissingAndDamagedFilesAreNamed) {
  GraphFileEntry damaged = Write("001-12345", 2011, kReadings);
  QFile file(damaged.path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(64) && file.write("rubbish...") == 10);
  file.close();
  GraphFileEntry missing = damaged;
  missing.path += QStringLiteral(".gone");
  const GraphSheet sheet = ReadMultipleSheet({missing, damaged}, WithColours(), language_);
  ASSERT_EQ(sheet.series.size(), 1U);
  EXPECT_EQ(sheet.series[0].Points().size(), 2U);
  ASSERT_EQ(sheet.messages.size(), 2);
  EXPECT_TRUE(sheet.messages[0].contains(missing.path));
  EXPECT_TRUE(sheet.messages[1].contains(QStringLiteral("record 3")));
}

TEST_F(GraphSheetFiles, TheReadingThatEndsALineIsNamed) {
  ReviewGrid grid;
  grid.Append(At(Day(2010y / 10 / 5), 600, -3));
  const GraphSheet sheet =
      MakeSingleSheet(grid, {QStringLiteral("12345"), {}, 2011}, WithColours(), language_);
  const QStringList messages = NegativeMessages(sheet, 14.4, 365 * 14.4, language_);
  ASSERT_EQ(messages.size(), 1);
  EXPECT_TRUE(messages[0].contains(QStringLiteral("05/10/2010 10:00")));
  EXPECT_TRUE(NegativeMessages(sheet, 14.4, 20, language_).isEmpty()) << "the page ends before it";
}

}  // namespace
}  // namespace vesk
