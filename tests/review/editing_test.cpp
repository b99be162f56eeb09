#include "review/editing.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTemporaryDir>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::HourlyGrid;
using test::LevelAndCode;
using test::ReadingAt;

/// A session over 48 hourly readings from 01/10/2010 on, in a folder of its own.
class Editing : public testing::Test {
 protected:
  void Load(ReviewGrid grid, const std::vector<int>& waterYears = {2011}) {
    LoadedReadings loaded = test::LoadOf(std::move(grid), folder_.path() + QLatin1Char('/'), waterYears);
    logPath_ = loaded.changeLogs.front().saveTo;
    session_.Begin(loaded);
  }
  void SetUp() override { Load(HourlyGrid("01/10/2010 00:00", 48)); }

  void Edit(int row, const char* typed) {
    const auto edited = session_.EditLevel(row, QString::fromUtf8(typed));
    ASSERT_TRUE(edited) << typed;
    EXPECT_TRUE(*edited) << typed;
  }
  QString Row(int row) const { return LevelAndCode(session_.Grid(), row); }
  RowShade Shade(int row) const { return session_.Grid().Mark(row).shade; }

  void ExpectCommands(bool save, bool undoStep, bool redoStep) {
    const EditCommands commands = session_.Commands();
    EXPECT_EQ(commands.save, save);
    EXPECT_EQ(commands.undoAll, save);
    EXPECT_EQ(commands.undoStep, undoStep);
    EXPECT_EQ(commands.redoStep, redoStep);
    EXPECT_EQ(session_.HasUnsavedChanges(), save);
  }

  QTemporaryDir folder_;
  QString logPath_;
  EditSession session_;
};

TEST_F(Editing, TakesTypedNumbersAndRefusesTheRest) {
  const struct {
    const char* typed;
    const char* stored;  ///< null: refused
  } kCases[] = {{"12,5", "12.5"}, {"12/5", "12.5"},   {"12ö5", "12.5"},   {" 12.50 ", "12.5"},
                {"-3", "-3"},     {"0", "0"},         {"", nullptr},      {"  ", nullptr},
                {"abc", nullptr}, {"1.2.3", nullptr}, {"1,2/3", nullptr}, {"12 cm", nullptr},
                {"1e5", nullptr}, {"nan", nullptr},   {".", nullptr}};
  for (const auto& c : kCases) {
    Load(HourlyGrid("01/10/2010 00:00", 3));
    const auto edited = session_.EditLevel(2, QString::fromUtf8(c.typed));
    EXPECT_EQ(edited.Ok(), c.stored != nullptr) << c.typed;
    EXPECT_EQ(session_.Grid().Text(2, GridColumn::Level),
              c.stored ? QString::fromLatin1(c.stored) : QStringLiteral("101"))
        << c.typed;
    EXPECT_EQ(session_.HasUnsavedChanges(), c.stored != nullptr) << c.typed;
  }
}

TEST_F(Editing, OnlyLevelsOfReadingsCanBeEdited) {
  EXPECT_TRUE(session_.IsEditable(48, GridColumn::Level));
  EXPECT_FALSE(session_.IsEditable(49, GridColumn::Level));  // the empty row
  EXPECT_FALSE(session_.IsEditable(0, GridColumn::Level));
  EXPECT_FALSE(session_.IsEditable(1, GridColumn::Discharge));
  EXPECT_FALSE(session_.EditLevel(49, QStringLiteral("1")));
}

TEST_F(Editing, AnEditIsCountedListedAndShaded) {
  ExpectCommands(false, false, false);
  Edit(5, "10");
  Edit(2, "11");
  Edit(5, "12");
  EXPECT_EQ(session_.ChangeCount(), 3);
  EXPECT_EQ(session_.ChangedRows(), std::vector<int>({2, 5, 5}));
  EXPECT_EQ(Row(5), QStringLiteral("12/2"));
  EXPECT_EQ(Shade(5), RowShade::Changed);
  EXPECT_EQ(session_.Grid().Mark(5).baselineCm, 104);
  ExpectCommands(true, true, false);
}

TEST_F(Editing, TheSameLevelTypedAgainIsNoChange) {
  for (const char* typed : {"104", " 104 ", "104.0", "104,00"}) {
    const auto edited = session_.EditLevel(5, QString::fromLatin1(typed));
    ASSERT_TRUE(edited);
    EXPECT_FALSE(*edited) << typed;
  }
  EXPECT_EQ(session_.ChangeCount(), 0);
  EXPECT_EQ(Row(5), QStringLiteral("104/"));
  ExpectCommands(false, false, false);
}

TEST_F(Editing, UndoAllTakesOneOffEveryCode) {
  std::vector<Reading> readings = HourlyGrid("01/10/2010 00:00", 48).Readings();
  readings[9].flag = 'a';
  readings[10].flag = '2';
  Load(test::GridOf(readings));
  Edit(1, "5");
  for (const char* typed : {"1", "2", "3"}) Edit(2, typed);
  session_.UndoAll();
  const struct {
    int row;
    const char* levelAndCode;
    RowShade shade;
  } kRows[] = {{1, "100/0", RowShade::None},
               {2, "101/2", RowShade::Changed},
               {3, "102/0", RowShade::None},
               {10, "109/0", RowShade::None},
               {11, "110/1", RowShade::Changed}};
  for (const auto& r : kRows) {
    EXPECT_EQ(Row(r.row), QLatin1String(r.levelAndCode)) << r.row;
    EXPECT_EQ(Shade(r.row), r.shade) << r.row;
  }
  ExpectCommands(false, false, false);
  ASSERT_TRUE(session_.Save());
  EXPECT_EQ(ContentOf(logPath_), "01/10/2010\t01:00\t101\t\r\n01/10/2010\t10:00\t110\t\r\n");
}

TEST_F(Editing, ASavedRowKeepsItsChangeThroughUndo) {
  Edit(3, "50");
  ASSERT_TRUE(session_.Save());
  EXPECT_EQ(Row(3), QStringLiteral("50/999"));
  ExpectCommands(false, false, false);
  Edit(3, "60");
  EXPECT_EQ(Row(3), QStringLiteral("60/1000"));
  session_.UndoAll();
  EXPECT_EQ(Row(3), QStringLiteral("50/999"));
  session_.UndoAll();
  EXPECT_EQ(Row(3), QStringLiteral("50/998"));
  EXPECT_EQ(Shade(3), RowShade::Changed);
  ASSERT_TRUE(session_.Save());
  EXPECT_EQ(ContentOf(logPath_), "01/10/2010\t02:00\t50\t\r\n");
}

TEST_F(Editing, SingleStepsGoBackAndForth) {
  Edit(2, "10");
  Edit(2, "20");
  Edit(7, "30");
  EXPECT_EQ(session_.UndoStep(), 7);
  EXPECT_EQ(Row(7), QStringLiteral("106/"));
  EXPECT_EQ(session_.UndoStep(), 2);
  EXPECT_EQ(Row(2), QStringLiteral("10/1"));
  EXPECT_EQ(session_.ChangedRows(), std::vector<int>({2}));
  ExpectCommands(true, true, true);
  EXPECT_EQ(session_.RedoStep(), 2);
  EXPECT_EQ(Row(2), QStringLiteral("20/2"));
  EXPECT_EQ(session_.UndoStep(), 2);
  EXPECT_EQ(session_.UndoStep(), 2);
  EXPECT_EQ(session_.UndoStep(), std::nullopt);
  EXPECT_EQ(Row(2), QStringLiteral("101/"));
  EXPECT_EQ(Shade(2), RowShade::None);
  ExpectCommands(false, false, true);
  Edit(1, "1");  // a new edit ends what could be redone
  EXPECT_EQ(session_.RedoStep(), std::nullopt);
}

TEST_F(Editing, NavigatesFromChangeToChangeAndToADate) {
  for (const int row : {5, 30}) Edit(row, "1");
  EXPECT_EQ(session_.NextChange(0), 5);
  EXPECT_EQ(session_.NextChange(5), 30);
  EXPECT_EQ(session_.NextChange(30), 0);
  EXPECT_EQ(session_.PreviousChange(49), 30);
  EXPECT_EQ(session_.PreviousChange(30), 5);
  EXPECT_EQ(session_.PreviousChange(5), 0);

  const struct {
    const char* typed;
    const char* text;
    int row;
  } kDates[] = {{"02/10/2010", "02/10/2010", 25},
                {" 2.10.2010 ", "02/10/2010", 25},
                {"1-10-2010", "01/10/2010", 1},
                {"05/10/2010", "05/10/2010", 0},
                {"", "", 0},
                {"31/02/2010", "31/02/2010", 0}};
  for (const auto& d : kDates) {
    const DateJump jump = session_.GoToDate(QString::fromLatin1(d.typed));
    EXPECT_EQ(jump.text, QLatin1String(d.text)) << d.typed;
    EXPECT_EQ(jump.row, d.row) << d.typed;
  }
}

TEST_F(Editing, AFailedSaveKeepsEverythingUnsaved) {
  Load(HourlyGrid("01/10/2010 00:00", 48));
  Edit(3, "50");
  ASSERT_TRUE(QDir().mkpath(logPath_));  // a folder stands where the file should go
  EXPECT_FALSE(session_.Save());
  EXPECT_EQ(Row(3), QStringLiteral("50/1"));
  ExpectCommands(true, true, false);
  EXPECT_EQ(session_.Pending()->records.size(), 1U);
}

TEST_F(Editing, EachYearOfALoadHasItsOwnLogAndJournal) {
  Load(HourlyGrid("30/09/2010 22:00", 6), {2010, 2011});
  Edit(1, "1");
  Edit(4, "4");
  session_.UndoStep();
  Edit(5, "5");
  const QString base = folder_.path() + QStringLiteral("/001-12345-Degisiklikler");
  EXPECT_EQ(JournalOf(JournalPath(base + QStringLiteral("2010.txt")))->records.size(), 1U);
  ASSERT_EQ(JournalOf(JournalPath(base + QStringLiteral("2011.txt")))->records.size(), 1U);
  Load(HourlyGrid("30/09/2010 22:00", 6), {2010, 2011});
  EXPECT_EQ(session_.Restore(*session_.Pending()), 0);
  EXPECT_EQ(Row(1), QStringLiteral("1/1"));
  EXPECT_EQ(Row(4), QStringLiteral("103/"));
  ASSERT_TRUE(session_.Save());
  EXPECT_EQ(ContentOf(base + QStringLiteral("2010.txt")), "30/09/2010\t22:00\t1\t\r\n");
  EXPECT_EQ(ContentOf(base + QStringLiteral("2011.txt")), "01/10/2010\t02:00\t5\t\r\n");
}

TEST_F(Editing, ADateCorrectionIsAStepLikeAnother) {
  EXPECT_FALSE(
      session_.CorrectDates(QStringLiteral("05/10/2010 00:00")));  // several files may be in the grid
  Load(HourlyGrid("01/10/2010 00:00", 48), {});
  Edit(2, "7");
  const auto own = session_.CorrectDates(QStringLiteral("02/10/2010 23:00"));
  ASSERT_TRUE(own);
  EXPECT_FALSE(*own);
  EXPECT_FALSE(session_.CorrectDates(QStringLiteral("soon")));
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("03/10/2010 22:00")));
  EXPECT_EQ(session_.Grid().ReadingCount(), 52);
  EXPECT_EQ(Row(2), QStringLiteral("7/1"));
  EXPECT_EQ(session_.ChangeCount(), 1);
  Edit(3, "8");

  EXPECT_EQ(session_.UndoStep(), 3);
  EXPECT_EQ(session_.UndoStep(), 0);
  EXPECT_EQ(session_.Grid().ReadingCount(), 48);
  EXPECT_EQ(Row(2), QStringLiteral("7/1"));
  EXPECT_EQ(session_.RedoStep(), 0);
  EXPECT_EQ(session_.RedoStep(), 3);
  EXPECT_EQ(session_.Grid().ReadingCount(), 52);
  EXPECT_EQ(Row(3), QStringLiteral("8/1"));

  session_.UndoAll();
  EXPECT_EQ(session_.Grid().ReadingCount(), 48);
  EXPECT_EQ(Row(2), QStringLiteral("101/0"));
  EXPECT_EQ(session_.Grid().Text(3, GridColumn::Time), QStringLiteral("02:00"));
}

TEST_F(Editing, ASavedDateCorrectionComesBackWithItsEdits) {
  const ReviewGrid raw = HourlyGrid("01/10/2010 00:00", 48);
  Load(raw, {});
  Edit(2, "7");
  ASSERT_TRUE(session_.Save());
  Edit(3, "8");
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("03/10/2010 22:00")));
  ASSERT_TRUE(session_.Save());
  const ReviewGrid saved = session_.Grid();
  Load(raw, {});
  EXPECT_FALSE(session_.HasUnsavedChanges());
  ASSERT_EQ(session_.Grid().ReadingCount(), saved.ReadingCount());
  for (int row = 1; row <= saved.ReadingCount(); ++row) {
    for (int column = 0; column < kGridColumns; ++column) {
      EXPECT_EQ(session_.Grid().Text(row, GridColumn(column)), saved.Text(row, GridColumn(column)))
          << row << ' ' << column;
    }
  }

  Edit(5, "9");  // 04:04 by now
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("03/10/2010 20:30")));
  ASSERT_TRUE(session_.Save());
  Load(raw, {});
  const ReviewGrid& again = session_.Grid();
  EXPECT_EQ(DateTimeText(again.At(again.ReadingCount()).Time()), QStringLiteral("03/10/2010 20:30"));
  for (const auto& [row, level] : {std::pair(2, "7/999"), std::pair(3, "8/999"), std::pair(5, "9/999")}) {
    EXPECT_EQ(Row(row), QLatin1String(level));
  }

  ReviewGrid other = HourlyGrid("01/10/2010 00:00", 40);  // another raw file of the station
  const auto overlay = LoadChangeLog(logPath_, other);
  ASSERT_TRUE(overlay);
  EXPECT_TRUE(overlay->correction.targets.empty());
  EXPECT_EQ(other.ReadingCount(), 40);
}

TEST_F(Editing, UnsavedWorkComesBackAfterACrash) {
  Load(HourlyGrid("01/10/2010 00:00", 48), {});
  Edit(2, "7");
  Edit(3, "8");
  session_.UndoStep();
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("03/10/2010 22:00")));
  Edit(5, "9,25");
  const ReviewGrid lost = session_.Grid();

  Load(HourlyGrid("01/10/2010 00:00", 48), {});  // the next run
  const auto pending = session_.Pending();
  ASSERT_TRUE(pending);
  ASSERT_EQ(pending->records.size(), 3U);
  EXPECT_EQ(session_.Restore(*pending), 0);
  ASSERT_EQ(session_.Grid().ReadingCount(), lost.ReadingCount());
  for (int row = 1; row <= lost.ReadingCount(); ++row) {
    for (int column = 0; column < kGridColumns; ++column) {
      EXPECT_EQ(session_.Grid().Text(row, GridColumn(column)), lost.Text(row, GridColumn(column))) << row;
    }
  }
  ExpectCommands(true, true, false);
  session_.UndoStep();
  EXPECT_EQ(session_.Pending()->records.size(), 2U);  // the journal went on
  ASSERT_TRUE(session_.Save());
  EXPECT_TRUE(session_.Pending()->Empty());
  EXPECT_EQ(QDir(folder_.path()).entryList({QStringLiteral("*.journal*")}, QDir::Files), QStringList());
}

TEST_F(Editing, WorkThatNoLongerFitsIsCountedAndKeptAside) {
  Edit(2, "7");
  Edit(40, "8");
  Load(HourlyGrid("01/10/2010 00:00", 30));
  EXPECT_EQ(session_.Restore(*session_.Pending()), 1);
  EXPECT_EQ(Row(2), QStringLiteral("7/1"));
  const auto old = JournalOf(JournalPath(logPath_) + QStringLiteral(".old"));
  ASSERT_TRUE(old);
  EXPECT_EQ(old->records.size(), 2U);
}

TEST_F(Editing, DiscardedAndUndoneWorkIsNotOfferedAgain) {
  Edit(2, "7");
  ASSERT_TRUE(session_.Discard());
  EXPECT_TRUE(session_.Pending()->Empty());
  EXPECT_FALSE(session_.HasUnsavedChanges());
  Edit(2, "8");
  session_.UndoAll();
  EXPECT_TRUE(session_.Pending()->Empty());
}

TEST_F(Editing, EditingGoesOnWhereNoJournalCanBeWritten) {
  LoadedReadings loaded =
      test::LoadOf(HourlyGrid("01/10/2010 00:00", 48), QStringLiteral("/proc/nowhere/"), {2011});
  session_.Begin(loaded);
  QSignalSpy failed(&session_, &EditSession::JournalFailed);
  Edit(2, "7");
  Edit(2, "8");
  EXPECT_EQ(failed.count(), 1);
  EXPECT_EQ(Row(2), QStringLiteral("8/2"));
  EXPECT_FALSE(session_.Save());
  ExpectCommands(true, true, false);
}

}  // namespace
}  // namespace vesk
