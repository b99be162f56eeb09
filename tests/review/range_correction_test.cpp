// Corrections over ranges: what they propose, and what becomes of them in a session.
#include "review/range_correction.h"

#include <gtest/gtest.h>

#include <random>

#include "review/session_fixture.h"

namespace vesk {
namespace {

using test::GridOf;
using test::ReadingAt;
using Changes = std::vector<LevelChange>;
using enum RangeOperation;

/// 01:00 to 08:00, 101 to 108 cm, a record behind 04:00 (row 5).
StationSeries Night() {
  std::vector<Reading> readings;
  for (int hour = 1; hour <= 8; ++hour) {
    const QByteArray time = QStringLiteral("02/10/2010 0%1:00").arg(hour).toLatin1();
    readings.push_back(ReadingAt(time.constData(), 100 + hour));
    if (hour == 4) readings.push_back(ReadingAt("02/10/2010 03:30", 140, ReadingKind::Maximum));
  }
  return GridOf(readings);
}

std::string Proposed(const StationSeries& series, ShownRange range, const RangeCorrection& correction) {
  const auto changes = ProposeCorrection(series, range, correction);
  if (!changes) return changes.Failure().English().toStdString();
  QStringList text;
  for (const LevelChange& change : *changes)
    text += QStringLiteral("%1:%2").arg(change.row).arg(change.levelCm);
  return text.join(QLatin1Char(' ')).toStdString();
}

TEST(RangeCorrections, ChangeTheReadingsOfTheirRangeAndNoRecord) {
  const StationSeries night = Night();
  EXPECT_EQ(Proposed(night, {3, 6}, {.operation = Shift, .firstCm = -2.4}), "3:101 4:102 6:103")
      << "rounded to a centimetre";
  EXPECT_EQ(Proposed(night, {3, 6}, {.operation = Shift, .firstCm = -2.4, .exact = true}),
            "3:100.6 4:101.6 6:102.6");
  EXPECT_EQ(Proposed(night, {3, 6}, {.operation = Shift, .firstCm = 0.4}), "") << "nothing changes";
  EXPECT_EQ(Proposed(night, {6, 8}, {.operation = Set, .firstCm = 106}), "6:106 8:106");
  EXPECT_EQ(Proposed(night, {2, 8}, {.operation = Drift, .firstCm = 0, .lastCm = 10}),
            "3:105 4:108 6:111 7:114 8:117");
  EXPECT_EQ(Proposed(night, {2, 2}, {.operation = Drift, .firstCm = 3, .lastCm = 10}), "2:105")
      << "one reading";
  EXPECT_EQ(Proposed(night, {-3, 99}, {.operation = Set, .firstCm = 0}).substr(0, 8), "1:0 2:0 ")
      << "rows that are there";
}

TEST(RangeCorrections, AStraightLineRunsBetweenTheNeighbours) {
  StationSeries night = Night();
  test::Change(night, 2, 100);
  EXPECT_EQ(Proposed(night, {3, 6}, {.operation = Line}), "3:102 4:103")
      << "from 100 at 02:00 to 106 at 06:00, in time and not in rows; 05:00 has its 105 already";
  EXPECT_EQ(Proposed(night, {3, 6}, {.operation = Line, .exact = true}), "3:101.5 4:103 6:104.5");
  for (const ShownRange& range : {ShownRange{1, 3}, ShownRange{7, 9}, ShownRange{1, 9}})
    EXPECT_NE(Proposed(night, range, {.operation = Line}).find("a reading on either side"),
              std::string::npos);
}

TEST(RangeCorrections, BackToTheRawLevels) {
  StationSeries night = Night();
  test::Change(night, 2, 150);
  test::Change(night, 5, 150);  // the record
  EXPECT_EQ(Proposed(night, {1, 9}, {.operation = Raw}), "2:102") << "a record is a reading of its own";
}

TEST(RangeCorrections, RefusesWhatNoRangeCanBe) {
  const StationSeries night = Night();
  for (const ShownRange& range : {ShownRange{5, 5}, ShownRange{0, 0}, ShownRange{10, 12}, ShownRange{6, 3}})
    EXPECT_NE(Proposed(night, range, {.operation = Set}).find("holds no reading"), std::string::npos);
  EXPECT_NE(Proposed(night, {1, 3}, {.operation = Shift, .firstCm = 9897}).find("would be 10000 cm"),
            std::string::npos);
  EXPECT_NE(Proposed(night, {1, 3}, {.operation = Set, .firstCm = -999.5, .exact = true}).find("-999.5"),
            std::string::npos);
  EXPECT_EQ(Proposed(night, {1, 1}, {.operation = Set, .firstCm = 9999}), "1:9999");
}

TEST(RangeCorrections, TakesTheOtherReadOutsLevels) {
  std::vector<Reading> readings;
  for (const char* time : {"02/10/2010 01:00", "02/10/2010 02:00", "02/10/2010 03:00"})
    readings.push_back(ReadingAt(time, 50));
  for (const char* time : {"02/10/2010 02:00", "02/10/2010 03:00", "02/10/2010 04:00"})
    readings.push_back(ReadingAt(time, 60 + static_cast<double>(readings.size())));
  const StationSeries series = test::WithFiles(
      GridOf(readings),
      {{QStringLiteral("001-12345-010203"), 1, 3}, {QStringLiteral("001-12345-020203"), 4, 6}});
  EXPECT_EQ(Proposed(series, {1, 3}, {.operation = OtherReadOut}), "2:63 3:64") << "01:00 has no other";
  EXPECT_EQ(Proposed(series, {4, 4}, {.operation = OtherReadOut}), "4:50");
  EXPECT_NE(Proposed(series, {6, 6}, {.operation = OtherReadOut}).find("no other read-out"),
            std::string::npos);
  const StationSeries one = test::WithFiles(GridOf(readings), {{QStringLiteral("001-12345-010203"), 1, 6}});
  EXPECT_NE(Proposed(one, {1, 3}, {.operation = OtherReadOut}).find("no other read-out"), std::string::npos)
      << "the same time twice in one file";
}

TEST(RangeCorrections, OfferTheRecordsOfTheirDays) {
  std::vector<Reading> readings = {ReadingAt("02/10/2010 01:00", 100),
                                   ReadingAt("02/10/2010 02:00", 900),
                                   ReadingAt("02/10/2010 02:00", 900, ReadingKind::Maximum),
                                   ReadingAt("02/10/2010 01:00", 100, ReadingKind::Minimum),
                                   ReadingAt("03/10/2010 01:00", 101),
                                   ReadingAt("03/10/2010 01:00", 777, ReadingKind::Maximum)};
  StationSeries series = test::WithFiles(GridOf(readings), {{QStringLiteral("001-12345-010203"), 1, 6}});
  EXPECT_EQ(RecordsConcerned(series, {{2, 104}}), Changes({{3, 104}})) << "another day's is not concerned";
  EXPECT_EQ(RecordsConcerned(series, {{2, 90}}), Changes({{3, 100}, {4, 90}}));
  EXPECT_EQ(RecordsConcerned(series, {}), Changes());
  series.SetTarget(DateTime(readings.back().day) + std::chrono::hours(2));
  EXPECT_EQ(RecordsConcerned(series, {{2, 104}}), Changes()) << "a corrected clock computes them";
}

class RangeSession : public test::SessionTest {
 protected:
  void SetUp() override { LoadYear(); }
  int Correct(ShownRange range, const RangeCorrection& correction, const char* reason = "") {
    const auto changes = ProposeCorrection(session_.Series(), range, correction);
    EXPECT_TRUE(changes);
    const auto done =
        session_.Correct(*changes, {OperationWord(correction.operation), QString::fromUtf8(reason)});
    EXPECT_TRUE(done);
    return done ? *done : -1;
  }
  std::string Text() const { return test::TextOf(session_.Series()).toStdString(); }
};

TEST_F(RangeSession, IsOneStepForthAndBack) {
  const std::string before = Text();
  EXPECT_EQ(Correct({3, 20}, {.operation = Shift, .firstCm = 5}), 18);
  EXPECT_EQ(Row(3), "107/1*");
  EXPECT_EQ(session_.ChangeCount(), 18);
  const std::string shifted = Text();
  EXPECT_EQ(session_.UndoStep(), 3);
  EXPECT_EQ(Text(), before);
  EXPECT_FALSE(session_.HasUnsavedChanges());
  EXPECT_EQ(session_.ChangeCount(), 0);
  EXPECT_TRUE(Journals().isEmpty());
  EXPECT_EQ(session_.RedoStep(), 3);
  EXPECT_EQ(Text(), shifted);
  EXPECT_EQ(Correct({3, 20}, {.operation = Shift, .firstCm = -5}), 18);
  EXPECT_EQ(CellText(session_.Series(), 3, GridColumn::Level), QStringLiteral("102"));
  EXPECT_EQ(Correct({1, 48}, {.operation = Drift}), 0) << "nothing is no step";
  EXPECT_EQ(session_.UndoStep(), 3);
  EXPECT_EQ(Text(), shifted);
}

// Whatever was done in whatever order, taking it back gives every cell back, and saving gives the same file.
TEST_F(RangeSession, RandomOperationsTakenBackLeaveNothing) {
  std::mt19937 random(11);
  for (int round = 0; round < 30; ++round) {
    LoadYear();
    const std::string before = Text();
    int steps = 0;
    for (int i = 0; i < 12; ++i) {
      const int first = 2 + static_cast<int>(random() % 40);
      const ShownRange range{first, first + static_cast<int>(random() % 6)};
      const RangeCorrection correction{.operation = static_cast<RangeOperation>(random() % 5),
                                       .firstCm = static_cast<double>(random() % 9) - 4,
                                       .lastCm = static_cast<double>(random() % 9) - 4,
                                       .exact = random() % 2 == 0};
      steps += Correct(range, correction) > 0 ? 1 : 0;
    }
    for (int i = 0; i < steps; ++i) EXPECT_TRUE(session_.UndoStep().has_value());
    EXPECT_EQ(Text(), before) << round;
    EXPECT_FALSE(session_.UndoStep().has_value());
  }
}

// A kill at any byte of the journal's writing leaves an operation whole or not at all.
TEST_F(RangeSession, ACrashKeepsAnOperationWholeOrNotAtAll) {
  Edit(2, "11");
  const qsizetype edited = test::ContentOf(journalPath_).size();
  Correct({10, 14}, {.operation = Set, .firstCm = 7}, "şamandıra takıldı\n% 100\t!");
  const std::string done = Text();
  const QByteArray journal = test::ContentOf(journalPath_);
  session_.KeepForLater();
  std::vector<qsizetype> sizes{journal.size() - 1, journal.size()};
  for (qsizetype size = edited; size < journal.size() - 1; size += 7) sizes.insert(sizes.begin(), size);
  for (const qsizetype size : sizes) {
    ASSERT_TRUE(test::WriteContent(journalPath_, journal.left(size)));
    LoadYear();
    const auto pending = session_.Pending();
    ASSERT_TRUE(pending);
    const bool whole = size == journal.size();
    EXPECT_EQ(pending->records.size(), whole ? 6U : 1U) << size;
    EXPECT_EQ(pending->torn, !whole && size > edited) << size;
    EXPECT_EQ(session_.Restore(*pending), 0);
    EXPECT_EQ(Row(12), whole ? "7/1*" : "111/") << size;
    session_.KeepForLater();
  }
  EXPECT_EQ(Text(), done);
  // Taken up, it is one step again, with its reason.
  LoadYear();
  EXPECT_EQ(RestorePending(), 0);
  const auto again = session_.Pending();
  ASSERT_TRUE(again && again->records.size() == 6);
  EXPECT_EQ(again->records.back().reason, QStringLiteral("şamandıra takıldı\n% 100\t!"));
  EXPECT_EQ(again->records.back().operation, QStringLiteral("set"));
  EXPECT_EQ(session_.UndoStep(), 10);
  EXPECT_EQ(Row(12), "111/");
  EXPECT_EQ(Row(2), "11/1*");
}

// Two operations stay two, however often they go through a crash.
TEST_F(RangeSession, OperationsStayApartInTheJournal) {
  Correct({10, 12}, {.operation = Set, .firstCm = 7});
  Correct({13, 15}, {.operation = Set, .firstCm = 8});
  for (int crash = 0; crash < 3; ++crash) {
    session_.KeepForLater();
    LoadYear();
    EXPECT_EQ(RestorePending(), 0);
  }
  EXPECT_EQ(session_.UndoStep(), 13);
  EXPECT_EQ(Row(12), "7/1*");
  // Works that wait behind one another, each put off when the next began, are two operations as well.
  session_.KeepForLater();
  for (const int first : {20, 30}) {
    LoadYear();
    Correct({first, first + 2}, {.operation = Set, .firstCm = 9});
    session_.KeepForLater();
  }
  LoadYear();
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(session_.UndoStep(), 30);
  LoadYear();
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(session_.UndoStep(), 20);
  EXPECT_EQ(session_.UndoStep(), 10);
  EXPECT_EQ(session_.UndoStep(), std::nullopt);
}

// The journals of two water years each take their part of an operation.
TEST_F(RangeSession, OverTheEndOfAWaterYear) {
  LoadTwoYears();
  EXPECT_EQ(Correct({2, 5}, {.operation = Shift, .firstCm = 10}), 4);
  EXPECT_EQ(Journals().size(), 2);
  session_.KeepForLater();
  LoadTwoYears();
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(Row(5), "114/1*");
  EXPECT_TRUE(session_.Save());
  LoadTwoYears();
  EXPECT_EQ(Row(2), "111/999*");
  EXPECT_EQ(Row(5), "114/999*");
}

TEST_F(RangeSession, TheRecordTellsWhatWasDoneAndWhy) {
  Correct({3, 4}, {.operation = Shift, .firstCm = 5}, "sıfır noktası");
  session_.SetReason(QStringLiteral("okuma hatası"));
  Edit(6, "49");
  Correct({6, 6}, {.operation = Set, .firstCm = 51}, "yanlış");
  Edit(6, "50");  // the last one tells
  ASSERT_TRUE(session_.Save());
  LoadYear();
  Edit(4, "51");  // without a reason
  ASSERT_TRUE(session_.Save());
  const auto record = ReadReviewRecord(logPath_);
  ASSERT_TRUE(record);
  std::vector<Purpose> why;
  for (const RecordedLine& line : record->states.front().lines) why.push_back(line.correction->by.why);
  const QString shift = QStringLiteral("shift"), edit = QStringLiteral("edit");
  EXPECT_EQ(why, std::vector<Purpose>({{shift, QStringLiteral("sıfır noktası")},
                                       {edit, QStringLiteral("okuma hatası")},
                                       {edit, QStringLiteral("okuma hatası")}}));
}

}  // namespace
}  // namespace vesk
