#include "review/editing.h"
#include "datafiles/dates.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "review/session_fixture.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::HourlyGrid;
using test::TextOf;

class Editing : public test::SessionTest {
 protected:
  void SetUp() override { LoadYear(); }
};

TEST_F(Editing, TakesTypedNumbersAndRefusesTheRest) {
  const struct {
    const char* typed;
    const char* stored;  ///< null: refused
  } kCases[] = {{"12,5", "12.5"},    {"12/5", "12.5"},   {"12ö5", "12.5"},   {" 12.50 ", "12.5"},
                {"-3", "-3"},        {"0", "0"},         {"", nullptr},      {"  ", nullptr},
                {"abc", nullptr},    {"1.2.3", nullptr}, {"1,2/3", nullptr}, {"12 cm", nullptr},
                {"1e5", nullptr},    {"nan", nullptr},   {".", nullptr},     {"1234567890123456", nullptr},
                {"0.00001", nullptr}};  // written as 1e-05, which no load reads
  for (const auto& c : kCases) {
    LoadYear();
    const auto edited = session_.EditLevel(2, QString::fromUtf8(c.typed));
    EXPECT_EQ(edited.Ok(), c.stored != nullptr) << c.typed;
    EXPECT_EQ(CellText(session_.Series(), 2, GridColumn::Level), QLatin1String(c.stored ? c.stored : "101"))
        << c.typed;
    EXPECT_EQ(session_.HasUnsavedChanges(), c.stored != nullptr) << c.typed;
  }
  EXPECT_FALSE(session_.EditLevel(49, QStringLiteral("1")));  // the empty row
}

TEST_F(Editing, AnEditIsCountedListedAndShaded) {
  for (const char* same : {"104", " 104 ", "104,00"}) {
    EXPECT_FALSE(*session_.EditLevel(5, QLatin1String(same))) << same;
  }
  EXPECT_EQ(Row(5), "104/");
  EXPECT_FALSE(session_.HasUnsavedChanges());
  Edit(5, "10");
  Edit(2, "11");
  Edit(5, "12");
  EXPECT_EQ(session_.ChangeCount(), 3);
  EXPECT_EQ(session_.ChangedRows(), std::vector<int>({2, 5, 5}));
  EXPECT_EQ(Row(5), "12/2*");
  EXPECT_EQ(session_.Series().Mark(5).baselineCm, 104);
  EXPECT_TRUE(session_.HasUnsavedChanges());
}

TEST_F(Editing, UndoAllTakesOneOffEveryCode) {
  std::vector<Reading> readings = TwoDays().Raw().Readings();
  readings[9].flag = 'a';
  readings[10].flag = '2';
  Load(test::GridOf(readings), {2011});
  Edit(1, "5");
  for (const char* typed : {"1", "2", "3"}) Edit(2, typed);
  Edit(4, "50");
  ASSERT_TRUE(session_.Save());
  for (const char* typed : {"1", "2", "3"}) Edit(3, typed);
  Edit(4, "60");
  session_.UndoAll();
  for (const auto& [row, text] :
       {std::pair(1, "5/998*"), std::pair(2, "3/998*"), std::pair(3, "102/2*"), std::pair(4, "50/999*"),
        std::pair(5, "104/0"), std::pair(10, "109/0"), std::pair(11, "110/998*")}) {
    EXPECT_EQ(Row(row), text) << row;
  }
  EXPECT_FALSE(session_.HasUnsavedChanges());
  ASSERT_TRUE(session_.Save());
  EXPECT_EQ(ContentOf(logPath_),
            "01/10/2010\t00:00\t5\t\r\n01/10/2010\t01:00\t3\t\r\n01/10/2010\t02:00\t102\t\r\n"
            "01/10/2010\t03:00\t50\t\r\n01/10/2010\t10:00\t110\t\r\n");
}

TEST_F(Editing, SingleStepsGoBackAndForth) {
  Edit(2, "10");
  Edit(2, "20");
  Edit(7, "30");
  EXPECT_EQ(session_.UndoStep(), 7);
  EXPECT_EQ(Row(7), "106/");
  EXPECT_EQ(session_.UndoStep(), 2);
  EXPECT_EQ(Row(2), "10/1*");
  EXPECT_EQ(session_.ChangedRows(), std::vector<int>({2}));
  EXPECT_EQ(session_.RedoStep(), 2);
  EXPECT_EQ(Row(2), "20/2*");
  EXPECT_EQ(session_.UndoStep(), 2);
  EXPECT_EQ(session_.UndoStep(), 2);
  EXPECT_EQ(session_.UndoStep(), std::nullopt);
  EXPECT_EQ(Row(2), "101/");
  EXPECT_FALSE(session_.HasUnsavedChanges());
  Edit(1, "1");  // a new edit ends what could be redone
  EXPECT_EQ(session_.RedoStep(), std::nullopt);
}

TEST_F(Editing, NavigatesFromChangeToChangeAndToADate) {
  for (const int row : {5, 30}) Edit(row, "1");
  EXPECT_EQ(session_.NextChange(0), 5);
  EXPECT_EQ(session_.NextChange(5), 30);
  EXPECT_EQ(session_.NextChange(30), 0);
  EXPECT_EQ(session_.PreviousChange(49), 30);
  EXPECT_EQ(session_.PreviousChange(5), 0);

  const struct {
    const char* typed;
    const char* text;
    int row;
  } kDates[] = {{"02/10/2010", "02/10/2010", 25},
                {" 2.10.2010 ", "02/10/2010", 25},
                {"", "", 0},
                {"05/10/2010", "05/10/2010", 0},
                {"31/02/2010", "31/02/2010", 0}};
  for (const auto& d : kDates) {
    const DateJump jump = session_.GoToDate(QLatin1String(d.typed));
    EXPECT_EQ(jump.text, QLatin1String(d.text)) << d.typed;
    EXPECT_EQ(jump.row, d.row) << d.typed;
  }
}

// A record of the last day of 2010 came in behind the first reading of 2011, so it is a row of 2011's. A
// reading of 2010 has its minute.
TEST_F(Editing, EachYearOfALoadHasItsOwnLogAndJournal) {
  std::vector<Reading> readings = HourlyGrid("30/09/2010 22:00", 6).Raw().Readings();
  readings.insert(readings.begin() + 3, test::ReadingAt("30/09/2010 22:00", 9, ReadingKind::Minimum));
  const auto load = [&] { Load(test::GridOf(readings), {2010, 2011}); };
  load();
  Edit(2, "1");
  Edit(5, "4");
  session_.UndoStep();
  Edit(6, "5");
  Edit(4, "7");
  const QString log2010 = Path("001-12345-Degisiklikler2010.txt");
  const QString log2011 = Path("001-12345-Degisiklikler2011.txt");
  EXPECT_EQ(JournalOf(JournalPath(log2010))->records.size(), 1U);
  ASSERT_EQ(JournalOf(JournalPath(log2011))->records.size(), 2U);
  load();
  EXPECT_EQ(RestorePending(), 0);
  ASSERT_TRUE(session_.Save());
  EXPECT_EQ(ContentOf(log2010), "30/09/2010\t23:00\t1\t\r\n");
  EXPECT_EQ(ContentOf(log2011), "30/09/2010\t22:00\t7\t\r\n01/10/2010\t02:00\t5\t\r\n");
  load();
  for (const auto& [row, text] : {std::pair(1, "100/"), std::pair(2, "1/999*"), std::pair(4, "7/999*"),
                                  std::pair(5, "103/"), std::pair(6, "5/999*")}) {
    EXPECT_EQ(Row(row), text) << row;
  }
  readings.erase(readings.begin(), readings.begin() + 2);
  Load(test::GridOf(readings), {2011});
  EXPECT_EQ(Row(2), "7/999*");
}

TEST_F(Editing, ADateCorrectionIsAStepLikeAnother) {
  EXPECT_FALSE(session_.CorrectDates(QStringLiteral("05/10/2010 00:00")));  // several files may be loaded
  LoadFile();
  Edit(2, "7");
  const QString before = TextOf(session_.Series());
  CorrectDates("03/10/2010 22:00");
  Edit(3, "8");
  const QString after = TextOf(session_.Series());
  EXPECT_EQ(session_.UndoStep(), 3);
  EXPECT_EQ(session_.UndoStep(), 0);
  EXPECT_FALSE(session_.IsCorrected());
  EXPECT_EQ(TextOf(session_.Series()), before);
  EXPECT_EQ(session_.RedoStep(), 0);
  EXPECT_EQ(session_.RedoStep(), 3);
  EXPECT_TRUE(session_.HasUnsavedCorrection());
  EXPECT_EQ(TextOf(session_.Series()), after);
  session_.UndoAll();
  EXPECT_EQ(Row(2), "101/0");
  EXPECT_EQ(CellText(session_.Series(), 3, GridColumn::Time), QStringLiteral("02:00"));
}

TEST_F(Editing, ASavedDateCorrectionComesBackWithItsEdits) {
  LoadFile();
  Edit(2, "7");
  ASSERT_TRUE(session_.Save());
  Edit(3, "8");
  CorrectDates("03/10/2010 22:00");
  ASSERT_TRUE(session_.Save());
  const QString saved = TextOf(session_.Series());
  LoadFile();
  EXPECT_FALSE(session_.HasUnsavedChanges());
  EXPECT_EQ(TextOf(session_.Series()), saved);

  Edit(5, "9");  // 04:04 by now
  CorrectDates("03/10/2010 20:30");
  ASSERT_TRUE(session_.Save());
  LoadFile();
  EXPECT_EQ(DateTimeText(session_.Series().ReadingsAsShown().back().Time()),
            QStringLiteral("03/10/2010 20:30"));
  for (const auto& [row, text] : {std::pair(2, "7/999*"), std::pair(3, "8/999*"), std::pair(5, "9/999*")}) {
    EXPECT_EQ(Row(row), text);
  }

  // Another raw file of the station has its own clock, and none of these corrections.
  const QString before = TextOf(HourlyGrid("01/10/2010 00:00", 48));
  Load(TwoDays(), {}, {{QStringLiteral("001-12345-020304"), 1, 48}});
  EXPECT_EQ(TextOf(session_.Series()), before);
  EXPECT_FALSE(session_.Series().Target());
}

// Corrections compose from the raw times, with one cut to the minute in all.
TEST_F(Editing, ADateCorrectionWhoseLineWasCutIsToldAndNotApplied) {
  LoadFile();
  const QString raw = TextOf(session_.Series());
  CorrectDates("05/10/2010 08:01");
  ASSERT_TRUE(session_.Save());
  const QByteArray line = ContentOf(SavedCorrectionPath(logPath_)).trimmed();
  for (qsizetype length = 1; length < line.size(); ++length) {
    ASSERT_TRUE(test::WriteContent(SavedCorrectionPath(logPath_), line.first(length)));
    const LoadedReadings loaded = test::LoadOf(TwoDays(), folder_.path() + QLatin1Char('/'), {});
    EXPECT_EQ(TextOf(loaded.series), raw) << length;
    EXPECT_EQ(loaded.changeLogs.front().overlay.messages.size(), 1U) << length;
  }
}

TEST_F(Editing, ACorrectionThatIsTakenBackGivesTheRawTimesBack) {
  LoadFile();
  const QString raw = TextOf(session_.Series());
  for (const char* target : {"03/10/2010 22:17", "01/10/2010 23:11", "05/10/2010 08:01"})
    CorrectDates(target);
  ASSERT_TRUE(session_.Save());
  LoadFile();
  CorrectDates("02/10/2010 23:00");  // the last reading's own time
  EXPECT_EQ(TextOf(session_.Series()), raw);
  session_.UndoStep();
  EXPECT_TRUE(session_.IsCorrected());
  EXPECT_TRUE(*session_.RemoveDateCorrection());
  ASSERT_TRUE(session_.Save());
  LoadFile();
  EXPECT_EQ(TextOf(session_.Series()), raw);
  EXPECT_FALSE(*session_.RemoveDateCorrection());
}

// What the screen shows at a save is what the next load shows, computed extremes and logger's records
// included.
TEST_F(Editing, ExtremesOfARetimedFileComeBackAsTheyStood) {
  std::vector<Reading> readings = TwoDays().Raw().Readings();
  readings[9].levelCm = 9999;
  readings.insert(readings.begin() + 24, test::ReadingAt("01/10/2010 09:00", 300, ReadingKind::Maximum));
  const auto load = [&] { Load(test::GridOf(readings), {}); };
  load();
  Edit(25, "1018");  // the logger's record, which the correction takes off the screen
  CorrectDates("03/10/2010 00:00");
  const auto rowOf = [this](ReadingKind kind) {
    int row = 1;
    while (session_.Series().At(row).kind != kind) ++row;
    return row;
  };
  EXPECT_EQ(session_.Series().At(rowOf(ReadingKind::Maximum)).levelCm, 9999);
  QSignalSpy whole(&session_, &EditSession::AllRowsChanged);
  Edit(10, "1017");
  EXPECT_EQ(whole.count(), 1) << "the extreme's row is shown anew, too";
  EXPECT_EQ(session_.Series().At(rowOf(ReadingKind::Maximum)).levelCm, 1018) << "follows the readings";
  Edit(rowOf(ReadingKind::Minimum), "55");
  for (const char* level : {"20", "30"}) {
    ASSERT_TRUE(session_.Save());
    const QString saved = TextOf(session_.Series());
    load();
    EXPECT_EQ(TextOf(session_.Series()), saved);
    Edit(3, level);
    session_.UndoStep();
    session_.RedoStep();
  }
  ASSERT_TRUE(session_.RemoveDateCorrection());
  EXPECT_EQ(Row(25), "1018/999*");
  ASSERT_TRUE(session_.Save());
  load();
  EXPECT_EQ(Row(25), "1018/999*");
  CorrectDates("03/10/2010 00:00");
  EXPECT_EQ(session_.Series().At(rowOf(ReadingKind::Minimum)).levelCm, 55) << "kept while it had no row";
}

TEST_F(Editing, AnExtremeWhoseEditsAreUndoneIsComputedAgain) {
  LoadFile();
  CorrectDates("03/10/2010 22:00");
  ASSERT_TRUE(session_.Save());
  int row = 1;
  while (session_.Series().At(row).kind != ReadingKind::Maximum) ++row;
  for (const char* level : {"500", "600", "700"}) Edit(row, level);
  session_.UndoAll();
  EXPECT_TRUE(session_.Series().EditedExtremes().empty());
  CorrectDates("03/10/2010 23:00");
  const QString shown = TextOf(session_.Series(), GridColumn::Level);
  LoadFile();  // after a crash
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(TextOf(session_.Series(), GridColumn::Level), shown);
}

TEST_F(Editing, TheSecondSessionOnOneLogOnlyLooks) {
  Edit(2, "7");
  EditSession other;
  LoadedReadings loaded = test::LoadOf(TwoDays(), folder_.path() + QLatin1Char('/'), {2011});
  LoadedReadings again = loaded;
  other.Begin(std::move(loaded));
  ASSERT_TRUE(other.Holder());
  EXPECT_TRUE(other.Pending()->Empty()) << "the journal is the other one's";
  EXPECT_FALSE(other.EditLevel(2, QStringLiteral("8")));
  EXPECT_EQ(other.Series().At(2).levelCm, 101);
  ASSERT_TRUE(session_.Save());
  session_.Clear();
  EXPECT_FALSE(other.EditLevel(2, QStringLiteral("8")));
  EXPECT_TRUE(other.IsOutdated()) << "free by now, but no longer what was loaded";
  again = test::LoadOf(TwoDays(), folder_.path() + QLatin1Char('/'), {2011});
  other.Begin(std::move(again));
  EXPECT_FALSE(other.Holder() || other.IsOutdated());
  ASSERT_TRUE(other.EditLevel(3, QStringLiteral("8")));
  ASSERT_TRUE(other.EditLevel(4, QStringLiteral("9")));
  other.UndoStep();
  // Someone without locks writes: nothing is overwritten, and the work waits in the journal.
  ASSERT_TRUE(test::WriteContent(logPath_, "01/10/2010\t05:00\t3\t\r\n"));
  EXPECT_FALSE(other.Save());
  EXPECT_TRUE(other.IsOutdated());
  EXPECT_EQ(other.RedoStep(), std::nullopt) << "as an edit would be refused";
  other.KeepForLater();
  other.Clear();
  LoadYear();
  EXPECT_EQ(Pending(), 1U);
  EXPECT_EQ(RestorePending(), 0);
  ASSERT_TRUE(session_.Save());
  EXPECT_EQ(ContentOf(logPath_), "01/10/2010\t02:00\t8\t\r\n01/10/2010\t05:00\t3\t\r\n");
}

TEST_F(Editing, GoesOnWhereNoJournalCanBeWritten) {
  const test::FolderInTheWay folder(journalPath_);
  QSignalSpy failed(&session_, &EditSession::JournalFailed);
  Edit(2, "7");
  Edit(2, "8");
  EXPECT_EQ(failed.count(), 1);
  EXPECT_EQ(Row(2), "8/2*");
}

}  // namespace
}  // namespace vesk
