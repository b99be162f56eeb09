#include "graphs/graph_notes.h"
#include "datafiles/water_year.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "graphs/graph_labels.h"
#include "graphs/graph_scales.h"

namespace vesk {
namespace {

constexpr auto kOrdinary = ReadingKind::Ordinary;

class GraphNotes : public testing::Test {
 protected:
  GraphNotes() {
    sheet_.firstDay = WaterYearFirstDay(2011);
    sheet_.start = sheet_.firstDay;
    sheet_.end = WaterYearLastDay(2011);
    sheet_.years = QStringLiteral("2011");
    sheet_.language.FillEnglish();
  }
  void Add(const char* station, std::vector<GraphPoint> points) {
    sheet_.series.emplace_back(std::move(points), true);
    sheet_.stationNames.append(QString::fromUtf8(station));
  }
  GraphPage Page(int startMinutes, int endMinutes, double maximumCm) const {
    return {TimeOfCoordinate(sheet_.firstDay, startMinutes * 0.01),
            TimeOfCoordinate(sheet_.firstDay, endMinutes * 0.01), maximumCm};
  }
  PageNotes Notes(int startMinutes, int endMinutes, double maximumCm = 200) const {
    return NotesOfPage(Page(startMinutes, endMinutes, maximumCm), sheet_);
  }

  GraphSheet sheet_;
};

TEST_F(GraphNotes, ABlankPageSaysWhyAndAFullOneNothing) {
  EXPECT_TRUE(Notes(1440, 5000).blank.contains(QStringLiteral("no readings"))) << "no station at all";
  Add("11111", {{100, 2000, kOrdinary}, {110, 3000, kOrdinary}, {120, 9000, kOrdinary}});
  EXPECT_TRUE(AllNotes(Notes(1440, 5000)).isEmpty());
  struct Case {
    int start, end;
    double maximumCm;
    const char* part;
  };
  for (const Case& one : {Case{3001, 5000, 200, "nearest reading is of 02/10/2010 02:00"},
                          Case{8000, 8999, 200, "nearest reading is of 06/10/2010 06:00"},
                          Case{1440, 5000, 50, "the least is 100 cm"}}) {
    const PageNotes notes = Notes(one.start, one.end, one.maximumCm);
    EXPECT_TRUE(notes.blank.contains(QString::fromLatin1(one.part))) << notes.blank.toStdString();
    EXPECT_TRUE(notes.lines.isEmpty());
  }
}

TEST_F(GraphNotes, WhatOneStationLacksIsSaidBesideTheOthersLines) {
  sheet_.notes = {QStringLiteral("a file is missing")};
  Add("11111", {{100, 2000, kOrdinary}, {-3, 3000, kOrdinary}, {120, 4000, kOrdinary}});
  Add("22222", {});
  const PageNotes notes = Notes(1440, 5000);
  EXPECT_TRUE(notes.blank.isEmpty());
  EXPECT_EQ(notes.lines.join(QLatin1Char('\n')),
            QStringLiteral("a file is missing\n"
                           "11111: the line ends at a negative level: 02/10/2010 02:00  -3 cm\n"
                           "22222: There are no readings to draw"));
  const PageNotes ended = Notes(2500, 5000);
  EXPECT_TRUE(ended.lines.value(1).contains(QStringLiteral("negative"))) << "of a page that it blanks";
  EXPECT_TRUE(ended.blank.contains(QStringLiteral("11111")) && ended.blank.contains(QStringLiteral("22222")));
}

TEST_F(GraphNotes, LongNotesAreBrokenBetweenWordsAndNeverWiderThanThePage) {
  const QString text =
      QStringLiteral("the load of 001-12345 is not whole ").repeated(6) + QString(300, QLatin1Char('x'));
  for (const double width : {60.0, 200.0, 900.0}) {
    const QStringList lines = WrappedNotes({text}, width, 100);
    EXPECT_EQ(lines.join(QString()).remove(QLatin1Char(' ')), QString(text).remove(QLatin1Char(' ')));
    const QStringList few = WrappedNotes({text, text}, width, 2);
    EXPECT_EQ(few.size(), 2);
    EXPECT_TRUE(few.back().endsWith(QStringLiteral("…")));
    const QFontMetricsF letters(PageFont(kLabelSize));
    for (const QString& line : lines + few) EXPECT_LE(letters.horizontalAdvance(line), width);
  }
  EXPECT_TRUE(WrappedNotes({text}, 100, 0).isEmpty());
}

TEST_F(GraphNotes, ALoadThatIsNotWholeSaysSo) {
  LoadedReadings loaded;
  EXPECT_TRUE(NotesOfLoad(loaded, QStringLiteral("001-12345/2011"), sheet_.language).isEmpty());
  loaded.whole = false;
  EXPECT_TRUE(NotesOfLoad(loaded, QStringLiteral("001-12345/2011"), sheet_.language)
                  .value(0)
                  .startsWith(QStringLiteral("001-12345/2011: The load is not whole")));
  loaded.missedFiles = {QStringLiteral("001-12345-110101.txt")};
  EXPECT_TRUE(NotesOfLoad(loaded, {}, sheet_.language).value(0).contains(loaded.missedFiles.front()));
}

TEST_F(GraphNotes, TheProposedNameIsAFileNameEverywhere) {
  Add("12345", {});
  EXPECT_EQ(ProposedFileName(WholePeriodPage(sheet_), sheet_), QStringLiteral("Level-12345(2011)"));
  EXPECT_EQ(ProposedFileName(Page(2890, 2950, 100), sheet_),
            QStringLiteral("Level-12345(2011) 02.10.2010 0010 - 02.10.2010 0110"));
  sheet_.stationNames = {QStringLiteral("a:b/c\\d*\"<>|?"), QString(500, QLatin1Char('z'))};
  const QString name = ProposedFileName(WholePeriodPage(sheet_), sheet_);
  for (const QChar letter : QStringLiteral(":/\\*\"<>|?")) EXPECT_FALSE(name.contains(letter));
  EXPECT_LE(name.toUtf8().size(), 250);
}

}  // namespace
}  // namespace vesk
