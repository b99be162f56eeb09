// Unsaved work across crashes: at every point of a save, beside other raw files, behind other corrections.
#include <gtest/gtest.h>

#include "datafiles/dates.h"
#include "review/session_fixture.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::FolderInTheWay;
using test::HourlyGrid;
using test::ReadingAt;
using test::WriteContent;

class Recovery : public test::SessionTest {
 protected:
  /// Dates, times and levels: what a crash must not lose.
  QString Text() const { return test::TextOf(session_.Series(), GridColumn::Level); }
  static QString Raw() { return QStringLiteral("001-12345-010203"); }
};

// A clock corrected in pieces comes back as it was from the journal, and from the saved file.
TEST_F(Recovery, AClockCorrectedInPieces) {
  LoadFile();
  TrueTimes times(ReadDateTime(QStringLiteral("03/10/2010 01:00")).value());
  times.before = {{ReadDateTime(QStringLiteral("01/10/2010 12:00")).value(),
                   ReadDateTime(QStringLiteral("01/10/2010 12:30")).value()}};
  ASSERT_TRUE(*session_.CorrectDates(times));
  EXPECT_FALSE(*session_.CorrectDates(times)) << "they hold already";
  const QString shown = test::TextOf(session_.Series());
  EXPECT_TRUE(shown.contains(QStringLiteral("01/10/2010 12:30")));
  session_.KeepForLater();
  LoadFile();
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(test::TextOf(session_.Series()), shown);
  ASSERT_TRUE(session_.Save());
  LoadFile();
  EXPECT_EQ(session_.Series().Target(), times);
  EXPECT_EQ(test::TextOf(session_.Series()), shown);
  // The plain correction to the same last time is another one, and taking it back gives the raw times.
  ASSERT_TRUE(*session_.CorrectDates(QStringLiteral("03/10/2010 01:00")));
  EXPECT_EQ(session_.Series().Target(), TrueTimes(times.last));
  EXPECT_TRUE(session_.UndoStep().has_value());
  EXPECT_EQ(session_.Series().Target(), times);
  ASSERT_TRUE(*session_.RemoveDateCorrection());
  EXPECT_EQ(session_.Series().Target(), std::nullopt);
}

TEST_F(Recovery, UnsavedWorkComesBackAfterACrash) {
  LoadFile();
  Edit(2, "7");
  Edit(3, "8");
  session_.UndoStep();
  CorrectDates("03/10/2010 22:00");
  Edit(5, "9,25");
  const QString lost = test::TextOf(session_.Series());
  LoadFile();  // the next run
  EXPECT_EQ(Pending(), 3U);
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(test::TextOf(session_.Series()), lost);
  EXPECT_TRUE(session_.HasUnsavedChanges());
  session_.UndoStep();
  EXPECT_EQ(Pending(), 2U);  // the journal went on
  ASSERT_TRUE(session_.Save());
  EXPECT_TRUE(Journals().isEmpty());
}

TEST_F(Recovery, DiscardedAndUndoneWorkIsNotOfferedAgain) {
  LoadTwoYears();
  Edit(1, "7");
  ASSERT_TRUE(session_.Discard());
  EXPECT_FALSE(session_.HasUnsavedChanges());
  EXPECT_TRUE(Journals().isEmpty());
  Edit(1, "8");
  session_.UndoAll();
  EXPECT_TRUE(Journals().isEmpty());
  Edit(1, "1");
  Edit(4, "4");
  session_.UndoStep();
  session_.UndoStep();
  EXPECT_TRUE(Journals().isEmpty());
  session_.RedoStep();
  session_.RedoStep();
  const QString lost = Text();
  LoadTwoYears();
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(Text(), lost);
}

// The clock ran at half speed: corrected times are other readings' uncorrected ones, so a level that meets
// the wrong times is seen.
TEST_F(Recovery, ASaveWithADateCorrectionCanBeCutAnywhere) {
  LoadFile();
  Edit(5, "1");
  ASSERT_TRUE(session_.Save());
  const QString before = Text();
  const QByteArray oldLog = ContentOf(logPath_);
  Edit(9, "2");
  CorrectDates("04/10/2010 22:00");
  Edit(3, "3");
  const QString after = Text();
  const QByteArray journal = ContentOf(journalPath_);
  ASSERT_TRUE(session_.Save());
  const QByteArray newLog = ContentOf(logPath_);
  const QString datesPath = SavedCorrectionPath(logPath_);
  const QByteArray dates = ContentOf(datesPath);
  LoadFile();
  const StationSeries raw = TwoDays();
  const SavedCorrection none{
      .rawFile = Raw(), .first = raw.At(1).Time(), .last = raw.At(48).Time(), .target = {}};
  const DateTime target = ReadDateTime(QStringLiteral("04/10/2010 22:00")).value();
  const QByteArray record = ContentOf(ReviewRecordPath(logPath_));
  ASSERT_TRUE(WriteSavedCorrection(logPath_, none, PlannedTarget{target, HashOf(newLog)}));
  const QByteArray plan = ContentOf(datesPath);
  ASSERT_NE(plan, dates);

  const struct {
    const char* where;
    QByteArray dates;
    QByteArray log;
    QString loaded;
  } kCuts[] = {{"before the save", {}, oldLog, before},
               {"behind the plan", plan, oldLog, before},
               {"behind the change log", plan, newLog, after},
               {"before the journal goes", dates, newLog, after}};
  for (const auto& cut : kCuts) {
    ASSERT_TRUE(WriteContent(datesPath, cut.dates));
    ASSERT_TRUE(WriteContent(logPath_, cut.log));
    ASSERT_TRUE(WriteContent(ReviewRecordPath(logPath_), record));  // of both logs
    ASSERT_TRUE(WriteContent(journalPath_, journal));
    LoadFile();
    EXPECT_EQ(Text(), cut.loaded) << cut.where;
    EXPECT_EQ(RestorePending(), 0) << cut.where;
    EXPECT_EQ(Text(), after) << cut.where;
    ASSERT_TRUE(session_.Save());
    LoadFile();
    EXPECT_EQ(Text(), after) << cut.where;
    EXPECT_EQ(Pending(), 0U) << cut.where;
  }
  EXPECT_EQ(ContentOf(datesPath), dates);
}

TEST_F(Recovery, ADateCorrectionThatCannotBeSavedLeavesTheChangeLog) {
  LoadFile();
  Edit(5, "1");
  ASSERT_TRUE(session_.Save());
  const QByteArray log = ContentOf(logPath_);
  CorrectDates("04/10/2010 22:00");
  {
    const FolderInTheWay folder(SavedCorrectionPath(logPath_));
    EXPECT_FALSE(session_.Save());
  }
  EXPECT_TRUE(session_.HasUnsavedChanges());
  EXPECT_EQ(ContentOf(logPath_), log);
  ASSERT_TRUE(session_.Save());
}

TEST_F(Recovery, APlanOfAnotherFileIsSettledBeforeTheChangeLogGoes) {
  LoadFile();
  const StationSeries other = HourlyGrid("01/03/2011 00:00", 10);
  const SavedCorrection saved{.rawFile = QStringLiteral("001-12345-110301"),
                              .first = other.At(1).Time(),
                              .last = other.At(10).Time(),
                              .target = {}};
  const DateTime target = ReadDateTime(QStringLiteral("02/03/2011 00:00")).value();
  for (const bool counts : {true, false}) {
    const QByteArray log = counts ? ContentOf(logPath_) : QByteArray("never saved");
    ASSERT_TRUE(WriteSavedCorrection(logPath_, saved, PlannedTarget{target, HashOf(log)}));
    Edit(counts ? 5 : 6, "1");
    ASSERT_TRUE(session_.Save());
    const auto found = ReadSavedCorrection(logPath_, saved.rawFile, {saved.first, saved.last}, {});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->correction.target.has_value(), counts);
  }
}

TEST_F(Recovery, WorkMadeUnderOtherTimesFindsItsReading) {
  LoadFile();
  Edit(9, "2");  // 08:00, where the corrected times have another reading
  const QByteArray journal = ContentOf(journalPath_);
  session_.UndoAll();
  CorrectDates("04/10/2010 22:00");
  ASSERT_TRUE(session_.Save());
  ASSERT_TRUE(WriteContent(journalPath_, journal));  // put off, and brought back by the save
  LoadFile();
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(Row(session_.Series().ShownRowOf({.rawRow = 9})), "2/1*");
}

TEST_F(Recovery, OfTwoUnsavedWorksTheLaterLevelStandsAndNeitherGoesOverASavedOne) {
  LoadYear();
  Edit(2, "7");
  Edit(4, "8");
  LoadYear();    // the next run puts that work off
  Edit(2, "9");  // and does not know its levels
  const QByteArray earlier = ContentOf(journalPath_ + QStringLiteral(".later"));
  ASSERT_FALSE(earlier.isEmpty());
  LoadYear();
  Edit(3, "1");  // both wait now
  ASSERT_TRUE(session_.Discard());
  LoadYear();
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(Row(2), "9/2*");
  EXPECT_EQ(Row(4), "8/1*");
  session_.UndoAll();
  Edit(2, "50");
  ASSERT_TRUE(session_.Save());
  ASSERT_TRUE(WriteContent(journalPath_, earlier));
  LoadYear();
  EXPECT_EQ(RestorePending(), 1) << "somebody has saved another level since";
  EXPECT_EQ(Row(2), "50/999*");
  EXPECT_EQ(Row(4), "8/1*");
}

TEST_F(Recovery, SavedWorkIsNotOfferedWhereItsJournalOutlivedTheSave) {
  LoadFile();
  Edit(2, "7");
  CorrectDates("04/10/2010 22:00");
  Edit(5, "9");
  const QByteArray journal = ContentOf(journalPath_);
  ASSERT_TRUE(session_.Save());
  ASSERT_TRUE(WriteContent(journalPath_, journal));
  LoadFile();
  EXPECT_EQ(Pending(), 0U);
  EXPECT_TRUE(Journals().isEmpty());
}

/// Two files of a water year, the second with an extreme record at its third reading's minute.
std::vector<Reading> TwoFiles() {
  std::vector<Reading> readings = HourlyGrid("01/10/2010 00:00", 6).Raw().Readings();
  readings.push_back(ReadingAt("01/10/2010 05:00", 200, ReadingKind::Maximum));
  for (std::size_t i = 0; i < readings.size(); ++i) readings[i].sourceFile = i < 3 ? 1 : 2;
  return readings;
}

/// The same behind others: their file numbers are one up.
std::vector<Reading> BehindOthers(std::vector<Reading> others) {
  for (Reading reading : TwoFiles()) {
    ++reading.sourceFile;
    others.push_back(reading);
  }
  return others;
}

TEST_F(Recovery, AFileThatComesInBetweenDoesNotKeepTheWorkFromItsReadings) {
  const QString a = QStringLiteral("001-12345-010101"), b = QStringLiteral("001-12345-010202"),
                c = QStringLiteral("001-12345-000000");
  Load(test::GridOf(TwoFiles()), {2011}, {{a, 1, 3}, {b, 4, 7}});
  Edit(2, "11");
  Edit(6, "12");
  Edit(7, "13");
  Load(test::GridOf(BehindOthers(HourlyGrid("30/09/2010 20:00", 4).Raw().Readings())), {2011},
       {{c, 1, 4}, {a, 5, 7}, {b, 8, 11}});
  EXPECT_EQ(RestorePending(), 0);
  for (const auto& [row, text] : {std::pair(6, "11/1*"), std::pair(10, "12/1*"), std::pair(11, "13/1*")}) {
    EXPECT_EQ(Row(row), text);
  }
  session_.UndoAll();
  Edit(9, "14");
  // Where it overlaps, the reading of the same file is meant.
  Load(test::GridOf(BehindOthers({TwoFiles()[4]})), {2011}, {{c, 1, 1}, {a, 2, 4}, {b, 5, 8}});
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(Row(1), "104/");
  EXPECT_EQ(Row(6), "14/1*");
  // Without that file the work has no reading, and is kept.
  Load(test::GridOf(BehindOthers({TwoFiles()[4]})), {2011}, {{c, 1, 1}, {a, 2, 8}});
  EXPECT_EQ(RestorePending(), 1);
  EXPECT_EQ(JournalOf(journalPath_ + QStringLiteral(".old"))->records.size(), 1U);
}

TEST_F(Recovery, ADiscardThatFailsLeavesTheWorkUnsaved) {
  LoadTwoYears();
  Edit(1, "1");
  Edit(4, "4");
  {
    const FolderInTheWay folder(JournalPath(Path("001-12345-Degisiklikler2011.txt")));
    EXPECT_FALSE(session_.Discard());  // the journal of 2010 is gone by now
    EXPECT_TRUE(session_.HasUnsavedChanges());
  }
  EXPECT_EQ(session_.UndoStep(), 4);
  EXPECT_EQ(session_.UndoStep(), 1);
  Edit(2, "2");
  EXPECT_EQ(Pending(), 1U);
  ASSERT_TRUE(session_.Discard());
  EXPECT_FALSE(session_.HasUnsavedChanges());
  EXPECT_TRUE(Journals().isEmpty());
}

}  // namespace
}  // namespace vesk
