#include "graphs/graph_sheet.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "datafiles/graph_file.h"
#include "graphs/graph_scales.h"

namespace vesk {
namespace {

using namespace std::chrono_literals;

const Day kFirst = Day(2010y / 10 / 1);
const std::vector<Reading> kReadings = {
    {.levelCm = 120.5, .day = kFirst, .minuteOfDay = 60},
    {.levelCm = 177, .day = kFirst, .minuteOfDay = 700, .kind = ReadingKind::Maximum},
    {.levelCm = 90, .day = Day(2011y / 9 / 30), .minuteOfDay = 1439}};

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

class GraphSheets : public testing::Test {
 protected:
  GraphSheets() { language_.FillEnglish(); }
  GraphSheet Single(std::vector<Reading> readings, std::optional<int> waterYear) const {
    return MakeSingleSheet(StationSeries(std::move(readings)),
                           {QStringLiteral("12345"), QStringLiteral("Göksu"), waterYear}, WithColours(),
                           language_);
  }
  GraphFileEntry Write(const char* station, int waterYear, const std::vector<Reading>& readings) const {
    const QString directory = folder_.path() + QLatin1Char('/');
    const auto written = WriteGraphFile(directory, waterYear, QString::fromLatin1(station), readings);
    EXPECT_TRUE(written);
    return {directory + written->name, written->name, StationOfGraphFile(written->name), waterYear};
  }
  GraphSheet Read(const std::vector<GraphFileEntry>& files) const {
    return ReadMultipleSheet(files, WithColours(), language_);
  }

  QTemporaryDir folder_;
  Language language_;
};

TEST_F(GraphSheets, ASingleStationHasItsTitleInTheLanguage) {
  EXPECT_EQ(Single(kReadings, 2011).texts.title, QStringLiteral("12345 Göksu AGI  (Water Year:2011)"));
  language_.FillTurkish();
  const GraphTexts texts = Single(kReadings, 2011).texts;
  EXPECT_EQ(texts.title, QStringLiteral("12345 Göksu AGI  (Su Yili:2011)"));
  EXPECT_EQ(texts.timeCaption, QStringLiteral("Zaman"));
  EXPECT_EQ(texts.levelCaption, QStringLiteral("Seviye, cm."));
}

TEST_F(GraphSheets, WithoutAWaterYearTheReadingsDecide) {
  const GraphSheet sheet = Single({{.levelCm = 50, .day = Day(2009y / 8 / 1)},
                                   {.levelCm = 90, .day = Day(2009y / 8 / 1), .kind = ReadingKind::Maximum},
                                   {.levelCm = 60, .day = Day(2011y / 8 / 1)}},
                                  std::nullopt);
  EXPECT_EQ(sheet.levels.highestCm, 90) << "the records count, drawn or not";
  EXPECT_EQ(sheet.waterYear, 2009);
  EXPECT_EQ(sheet.end, Day(2011y / 9 / 30));
}

TEST_F(GraphSheets, FilesOfDifferentYearsShareOneTimeAxisAndWhatIsMissingIsNamed) {
  const GraphFileEntry damaged = Write("001-12345", 2011, kReadings);
  QFile file(damaged.path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(64) && file.write("rubbish...") == 10);
  file.close();
  GraphFileEntry missing = damaged;
  missing.path += QStringLiteral(".gone");
  const GraphSheet sheet = Read({Write("001-54321", 2012, {}), missing, damaged});
  EXPECT_EQ(sheet.texts.title, QStringLiteral("Water Year:2012, 2011"));
  EXPECT_EQ(sheet.texts.legend,
            (QStringList{QStringLiteral("54321 SGS 2012"), QStringLiteral("12345 SGS 2011")}));
  EXPECT_EQ(sheet.start, kFirst);
  EXPECT_EQ(sheet.end, Day(2012y / 9 / 30));
  EXPECT_EQ(sheet.levels.highestCm, 177);
  ASSERT_EQ(sheet.series.at(1).Points().size(), 2U);
  for (std::size_t i = 0; i < 2; ++i) {
    const GraphPoint& point = sheet.series[1].Points()[i];
    EXPECT_EQ(TimeOfCoordinate(sheet.firstDay, point.minutes * kMinuteUnits), kReadings[i].Time());
    EXPECT_EQ(point.levelCm, kReadings[i].levelCm);
    EXPECT_EQ(point.Kind(), kReadings[i].kind);
  }
  ASSERT_EQ(sheet.notes.size(), 2);
  EXPECT_TRUE(sheet.notes[0].contains(missing.path));
  EXPECT_TRUE(sheet.notes[1].contains(QStringLiteral("record 3")));
}

}  // namespace
}  // namespace vesk
