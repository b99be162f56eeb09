// Unsaved work across crashes: at every point of a save, beside other raw files, behind other corrections.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "review/editing.h"
#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::HourlyGrid;
using test::LevelAndCode;
using test::ReadingAt;
using test::WriteContent;

/// A session whose load can be done anew, as after a crash.
class Recovery : public testing::Test {
 protected:
  void Load(ReviewGrid grid, const std::vector<int>& waterYears) {
    LoadedReadings loaded = test::LoadOf(std::move(grid), folder_.path() + QLatin1Char('/'), waterYears);
    logPath_ = loaded.changeLogs.front().saveTo;
    journalPath_ = JournalPath(logPath_, waterYears.empty() ? loaded.files.front() : QString());
    session_.Begin(loaded);
  }
  void LoadFile() { Load(HourlyGrid("01/10/2010 00:00", 48), {}); }
  void Edit(int row, const char* typed) { ASSERT_TRUE(session_.EditLevel(row, QLatin1String(typed))); }
  QString Level(int row) const { return session_.Grid().Text(row, GridColumn::Level); }
  int RestorePending() {
    const auto pending = session_.Pending();
    EXPECT_TRUE(pending);
    return session_.Restore(*pending);
  }
  QStringList Journals() const {
    return QDir(folder_.path()).entryList({QStringLiteral("*.journal*")}, QDir::Files, QDir::Name);
  }
  /// Date, time and level of every row.
  static QString TextOf(const ReviewGrid& grid) {
    QString text;
    for (int row = 1; row <= grid.ReadingCount(); ++row) {
      for (const GridColumn column : {GridColumn::Date, GridColumn::Time, GridColumn::Level})
        text += grid.Text(row, column) + QLatin1Char(' ');
      text += QLatin1Char('\n');
    }
    return text;
  }

  QTemporaryDir folder_;
  QString logPath_, journalPath_;
  EditSession session_;
};

// The clock ran at half speed: corrected times are other readings' uncorrected ones, so a level that meets
// the wrong times is seen.
TEST_F(Recovery, ASaveWithADateCorrectionCanBeCutAnywhere) {
  LoadFile();
  Edit(5, "1");
  ASSERT_TRUE(session_.Save());
  const QString before = TextOf(session_.Grid());
  const QByteArray oldLog = ContentOf(logPath_);
  Edit(9, "2");
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("04/10/2010 22:00")));
  Edit(3, "3");
  const QString after = TextOf(session_.Grid());
  const QByteArray journal = ContentOf(journalPath_);
  ASSERT_TRUE(session_.Save());
  const QByteArray newLog = ContentOf(logPath_);
  const QString datesPath = SavedCorrectionPath(logPath_);
  const QByteArray dates = ContentOf(datesPath);
  LoadFile();
  SavedCorrection none;
  const ReviewGrid raw = HourlyGrid("01/10/2010 00:00", 48);
  none.first = raw.At(1).Time();
  none.last = raw.At(48).Time();
  const DateTime target = ReadDateTime(QStringLiteral("04/10/2010 22:00")).value();
  ASSERT_TRUE(WriteSavedCorrection(logPath_, none, {.targets = {target}, .changeLog = newLog}));
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
    QFile::remove(datesPath);
    if (!cut.dates.isEmpty()) {
      ASSERT_TRUE(WriteContent(datesPath, cut.dates));
    }
    QFile::remove(logPath_);
    ASSERT_TRUE(WriteContent(logPath_, cut.log));
    QFile::remove(journalPath_);
    ASSERT_TRUE(WriteContent(journalPath_, journal));
    LoadFile();
    EXPECT_EQ(TextOf(session_.Grid()), cut.loaded) << cut.where;
    EXPECT_EQ(RestorePending(), 0) << cut.where;
    EXPECT_EQ(TextOf(session_.Grid()), after) << cut.where;
    ASSERT_TRUE(session_.Save());
    LoadFile();
    EXPECT_EQ(TextOf(session_.Grid()), after) << cut.where;
    EXPECT_TRUE(session_.Pending()->Empty()) << cut.where;
  }
  EXPECT_EQ(ContentOf(datesPath), dates);
}

TEST_F(Recovery, ADateCorrectionThatCannotBeSavedLeavesTheChangeLog) {
  LoadFile();
  Edit(5, "1");
  ASSERT_TRUE(session_.Save());
  const QByteArray log = ContentOf(logPath_);
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("04/10/2010 22:00")));
  const QString inTheWay = SavedCorrectionPath(logPath_);
  ASSERT_TRUE(QDir().mkpath(inTheWay));
  EXPECT_FALSE(session_.Save());
  EXPECT_TRUE(session_.HasUnsavedChanges());
  EXPECT_EQ(ContentOf(logPath_), log);
  ASSERT_TRUE(QDir().rmdir(inTheWay));
  ASSERT_TRUE(session_.Save());
}

TEST_F(Recovery, APlanOfAnotherFileIsSettledBeforeTheChangeLogGoes) {
  LoadFile();
  const ReviewGrid other = HourlyGrid("01/03/2011 00:00", 10);
  SavedCorrection saved{.first = other.At(1).Time(), .last = other.At(10).Time(), .targets = {}};
  const DateTime target = ReadDateTime(QStringLiteral("02/03/2011 00:00")).value();
  for (const bool counts : {true, false}) {
    const QByteArray log = counts ? ContentOf(logPath_) : QByteArray("never saved");
    ASSERT_TRUE(WriteSavedCorrection(logPath_, saved, {.targets = {target}, .changeLog = log}));
    Edit(counts ? 5 : 6, "1");
    ASSERT_TRUE(session_.Save());
    const auto found = ReadSavedCorrection(logPath_, other);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->targets.size(), counts ? 1U : 0U);
  }
}

TEST_F(Recovery, WorkMadeUnderOtherTimesIsKeptAsideNotLaidOver) {
  LoadFile();
  Edit(9, "2");  // 08:00, where the corrected times have another reading
  const QByteArray journal = ContentOf(journalPath_);
  session_.UndoAll();
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("04/10/2010 22:00")));
  ASSERT_TRUE(session_.Save());
  ASSERT_TRUE(WriteContent(journalPath_, journal));  // put off, and brought back by the save
  LoadFile();
  const QString loaded = TextOf(session_.Grid());
  EXPECT_EQ(RestorePending(), 1);
  EXPECT_EQ(TextOf(session_.Grid()), loaded);
  EXPECT_EQ(ContentOf(journalPath_ + QStringLiteral(".old")), journal);
}

/// Two files of a water year, the second with an extreme record at its third reading's minute.
std::vector<Reading> TwoFiles() {
  std::vector<Reading> readings = HourlyGrid("01/10/2010 00:00", 6).Readings();
  readings.push_back(ReadingAt("01/10/2010 05:00", 200, ReadingKind::Maximum));
  for (std::size_t i = 0; i < readings.size(); ++i) readings[i].sourceFile = i < 3 ? 1 : 2;
  return readings;
}

TEST_F(Recovery, AFileThatSortsEarlierDoesNotKeepTheWorkFromItsReadings) {
  Load(test::GridOf(TwoFiles()), {2011});
  Edit(2, "11");
  Edit(6, "12");
  Edit(7, "13");
  std::vector<Reading> readings = HourlyGrid("30/09/2010 20:00", 4).Readings();
  for (Reading reading : TwoFiles()) {
    ++reading.sourceFile;
    readings.push_back(reading);
  }
  Load(test::GridOf(readings), {2011});
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(Level(6), QStringLiteral("11"));
  EXPECT_EQ(Level(10), QStringLiteral("12"));
  EXPECT_EQ(Level(11), QStringLiteral("13"));
}

TEST_F(Recovery, OfSeveralReadingsThatCouldBeMeantNoneIsTaken) {
  Load(test::GridOf(TwoFiles()), {2011});
  Edit(5, "11");
  std::vector<Reading> readings = TwoFiles();
  readings.insert(readings.begin(), readings[4]);  // a file that overlaps came in between
  for (std::size_t i = 1; i < readings.size(); ++i) ++readings[i].sourceFile;
  Load(test::GridOf(readings), {2011});
  EXPECT_EQ(RestorePending(), 1);
  EXPECT_EQ(Level(1), QStringLiteral("104"));
  EXPECT_EQ(Level(6), QStringLiteral("104"));
}

TEST_F(Recovery, ADiscardThatFailsLeavesTheWorkUnsaved) {
  LoadFile();
  Edit(2, "7");
  const QString away = journalPath_ + QStringLiteral(".away");
  ASSERT_TRUE(QFile::rename(journalPath_, away));
  ASSERT_TRUE(QDir().mkpath(journalPath_));  // a folder cannot be removed as a file
  EXPECT_FALSE(session_.Discard());
  EXPECT_TRUE(session_.HasUnsavedChanges());
  EXPECT_EQ(session_.UndoStep(), 2);
  EXPECT_EQ(session_.RedoStep(), 2);
  ASSERT_TRUE(QDir().rmdir(journalPath_));
  ASSERT_TRUE(QFile::rename(away, journalPath_));
  ASSERT_TRUE(session_.Discard());
  EXPECT_FALSE(session_.HasUnsavedChanges());
  EXPECT_TRUE(Journals().isEmpty());
}

TEST_F(Recovery, UndoOfWorkWithoutAJournalHidesNothingBehindIt) {
  Load(HourlyGrid("30/09/2010 22:00", 6), {2010, 2011});
  Edit(1, "1");
  Edit(4, "4");
  const QString of2011 = JournalPath(folder_.filePath(QStringLiteral("001-12345-Degisiklikler2011.txt")));
  const QString away = of2011 + QStringLiteral(".away");
  ASSERT_TRUE(QFile::rename(of2011, away));
  ASSERT_TRUE(QDir().mkpath(of2011));
  EXPECT_FALSE(session_.Discard());  // the journal of 2010 is gone by now
  ASSERT_TRUE(QDir().rmdir(of2011));
  ASSERT_TRUE(QFile::rename(away, of2011));
  session_.UndoStep();
  session_.UndoStep();
  Edit(2, "2");
  EXPECT_EQ(session_.Pending()->records.size(), 1U);
}

TEST_F(Recovery, NoJournalStaysWhenEveryStepWasTakenBack) {
  Load(HourlyGrid("30/09/2010 22:00", 6), {2010, 2011});
  Edit(1, "1");
  Edit(4, "4");
  session_.UndoStep();
  session_.UndoStep();
  EXPECT_TRUE(Journals().isEmpty());
  session_.RedoStep();
  session_.RedoStep();
  const ReviewGrid lost = session_.Grid();
  Load(HourlyGrid("30/09/2010 22:00", 6), {2010, 2011});
  EXPECT_EQ(RestorePending(), 0);
  EXPECT_EQ(TextOf(session_.Grid()), TextOf(lost));
  session_.UndoStep();
  session_.UndoStep();
  EXPECT_TRUE(Journals().isEmpty());
}

}  // namespace
}  // namespace vesk
