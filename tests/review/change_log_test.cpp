#include "review/change_log.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QTemporaryDir>

#include <algorithm>

#include "review/grid_maker.h"

#include "support/english.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::HourlyGrid;
using test::LevelAndCode;
using test::ReadingAt;
using test::TextOf;
using test::WriteContent;

const QString kFile = QStringLiteral("001-12345-010203");

class ChangeLog : public testing::Test {
 protected:
  static StationSeries TwoDays() { return HourlyGrid("01/10/2010 00:00", 48); }
  /// The readings as one raw file's, with the log laid over them.
  StationSeries Load(const StationSeries& raw, const QString& file = kFile) {
    StationSeries series(raw.Raw().Readings(), {{file, 1, raw.ReadingCount()}});
    auto overlay = LoadChangeLog(path_, series, singleFile_);
    EXPECT_TRUE(overlay);
    overlay_ = std::move(*overlay);
    series.TakeBaseline();
    return series;
  }
  static void Edit(StationSeries& series, int row, double levelCm, int editCode = 1) {
    RowState state = *series.StateOf(series.RefOf(row));
    state.levelCm = levelCm;
    state.mark.editCode = editCode;
    state.mark.shade = RowShade::Changed;
    series.SetState(series.RefOf(row), state);
  }
  void Save(StationSeries& series, const char* login = "ayse") {
    const auto log = FormChangeLog(series, overlay_, {QLatin1String(login), {}, QStringLiteral("now")});
    ASSERT_TRUE(SaveChangeLog(path_, log, overlay_));
    MarkSaved(series, log.authors);
  }
  bool Told(const char* part) const {
    return std::ranges::any_of(InEnglish(overlay_.messages),
                               [&](const QString& text) { return text.contains(QString::fromUtf8(part)); });
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("log.txt"));
  bool singleFile_ = false;
  ChangeLogOverlay overlay_;
};

TEST_F(ChangeLog, ReadsTheNewestNameThatAYearHasHad) {
  const QString path = folder_.path() + QLatin1Char('/');
  const StationId station(QStringLiteral("001-12345"));
  const StationWaterYear entry{{2011}, QStringLiteral("Dönüşmüş")};
  const QString given = ChangeLogPath(path, station, entry);
  EXPECT_EQ(given, path + QStringLiteral("001-12345-Degisiklikler2011 Dönüşmüş.txt"));
  EXPECT_EQ(ChangeLogToRead(path, station, entry), given);

  const QString plain = ChangeLogPath(path, station, StationWaterYear{{2011}});
  const QString converted = ChangeLogPath(path, station, StationWaterYear{{2011}, QStringLiteral("Ok.")});
  const QDateTime now = QDateTime::currentDateTime();
  for (const auto& [name, age] : {std::pair(plain, 60), std::pair(converted, 30)}) {
    ASSERT_TRUE(WriteContent(name, "x"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(now.addSecs(-age), QFileDevice::FileModificationTime));
  }
  EXPECT_EQ(ChangeLogToRead(path, station, entry), converted);
  EXPECT_EQ(ChangeLogToRead(path, station, {}), path + QStringLiteral("001-12345-Degisiklikler.txt"));
}

TEST_F(ChangeLog, ALineWithoutARecordGoesToTheNextFreeRowOfItsTime) {
  // The same stretch twice, as two overlapping files give it.
  std::vector<Reading> readings = TwoDays().Raw().Readings();
  const std::vector<Reading> again = readings;
  readings.insert(readings.end(), again.begin(), again.end());
  ASSERT_TRUE(WriteContent(path_,
                           "02/10/2010\t00:00\t1\t3.2\r\n"  // row 25
                           "01/10/2010\t03:00\t2,5\t\n"     // behind row 25: row 52
                           "01/10/2010\t03:00\t6\t\n"       // row 52 is taken, and behind it there is none
                           "01/10/2010\t01:00\t3\t\r\n"     // row 2 lies before: an extreme of old, perhaps
                           "09/10/2011\t00:00\t4\t\r\n"     // nowhere
                           "01/10/2010\t04:00\t5\t\r\n"));  // still from row 52 on: row 53
  const StationSeries grid = Load(test::GridOf(readings));
  EXPECT_EQ(overlay_.applied, 3);
  EXPECT_EQ(overlay_.orphans.size(), 3U);
  for (const auto& [row, text] : {std::pair(25, "1/999*"), std::pair(52, "2.5/999*"), std::pair(53, "5/999*"),
                                  std::pair(2, "101/"), std::pair(4, "103/")}) {
    EXPECT_EQ(LevelAndCode(grid, row), text) << row;
  }
  EXPECT_EQ(CellText(grid, 25, GridColumn::Discharge), QStringLiteral("3.2"));
}

/// Two readings with the records of their minutes.
std::vector<Reading> WithRecords() {
  return {ReadingAt("01/10/2010 01:00", 10), ReadingAt("01/10/2010 02:00", 20),
          ReadingAt("01/10/2010 02:00", 21, ReadingKind::Maximum),
          ReadingAt("01/10/2010 01:00", 9, ReadingKind::Minimum)};
}

TEST_F(ChangeLog, EveryRowComesBackAsItWasAndNoOtherIsMarked) {
  for (const std::vector<int>& changed :
       {std::vector{3}, std::vector{4}, std::vector{2, 3}, std::vector{3, 4}, std::vector{1, 3}}) {
    ASSERT_TRUE(!QFile::exists(path_) || QFile::remove(path_));
    StationSeries series = Load(test::GridOf(WithRecords()));
    for (const int row : changed) Edit(series, row, 500 + row);
    Save(series);
    EXPECT_EQ(ContentOf(path_).count('\n'), static_cast<qsizetype>(changed.size()));
    EXPECT_EQ(TextOf(Load(test::GridOf(WithRecords()))), TextOf(series)) << changed.front();
  }
}

TEST_F(ChangeLog, ARecordThatHasMovedDoesNotLeaveItsCorrectionToAReading) {
  StationSeries series = Load(test::GridOf(WithRecords()));
  Edit(series, 3, 999);
  Save(series);
  std::vector<Reading> readings = WithRecords();
  readings[2].minuteOfDay = 90;  // the raw file has come again
  EXPECT_EQ(TextOf(Load(test::GridOf(readings))), TextOf(test::GridOf(readings)));
  EXPECT_TRUE(Told("log.txt, line 1: 01/10/2010 02:00 999 belongs to no reading"));
  readings = WithRecords();
  readings[2].levelCm = 25;
  EXPECT_EQ(LevelAndCode(Load(test::GridOf(readings)), 3), "999/999*");
  EXPECT_TRUE(Told("line 1: the raw level is 25 cm now; it was 21 cm when it was corrected"));
}

TEST_F(ChangeLog, ACorrectionStaysWithItsRawFile) {
  StationSeries series = Load(test::GridOf(WithRecords()));
  Edit(series, 2, 7);
  Save(series);
  // Of a file that is gone, the only equal reading takes it, and that is said; not where two could be meant.
  EXPECT_EQ(LevelAndCode(Load(test::GridOf(WithRecords()), QStringLiteral("001-12345-020304")), 2), "7/999*");
  EXPECT_TRUE(Told("of 001-12345-010203, which is not loaded"));
  std::vector<Reading> twice = WithRecords();
  twice.push_back(twice[1]);
  EXPECT_EQ(TextOf(Load(test::GridOf(twice), QStringLiteral("001-12345-020304"))),
            TextOf(test::GridOf(twice)));
  // Single files of a station share one log.
  singleFile_ = true;
  series = Load(test::GridOf(WithRecords()), QStringLiteral("001-12345-020304"));
  EXPECT_EQ(TextOf(series), TextOf(test::GridOf(WithRecords())));
  EXPECT_TRUE(overlay_.messages.empty());
  Edit(series, 1, 3);
  Save(series);
  EXPECT_EQ(ContentOf(path_), "01/10/2010\t01:00\t3\t\r\n01/10/2010\t02:00\t7\t\r\n");
  EXPECT_EQ(LevelAndCode(Load(test::GridOf(WithRecords())), 2), "7/999*");
  EXPECT_EQ(LevelAndCode(Load(test::GridOf(WithRecords())), 1), "10/");
}

TEST_F(ChangeLog, TheRecordFitsTheLogThatIsThereWhereverASaveIsCut) {
  StationSeries series = Load(test::GridOf(WithRecords()));
  Edit(series, 3, 999);
  Save(series);
  const QByteArray oldLog = ContentOf(path_);
  const QString before = TextOf(series);
  Edit(series, 2, 998);
  Save(series, "mehmet");
  ASSERT_TRUE(WriteContent(path_, oldLog));  // killed behind the record
  EXPECT_EQ(TextOf(Load(test::GridOf(WithRecords()))), before);
  EXPECT_TRUE(overlay_.messages.empty());
  EXPECT_EQ(overlay_.authors.at({.rawRow = 3}).login, QStringLiteral("ayse"));
}

TEST_F(ChangeLog, ALogThatAnOlderHandHasChangedKeepsWhatTheRecordKnows) {
  std::vector<Reading> readings = WithRecords();
  readings.insert(readings.begin() + 1, ReadingAt("01/10/2010 01:30", 15));
  StationSeries series = Load(test::GridOf(readings));
  Edit(series, 4, 999);
  Save(series);
  ASSERT_TRUE(WriteContent(path_, "01/10/2010\t01:30\t5\t\r\n01/10/2010\t02:00\t30\t\r\n"));
  const StationSeries grid = Load(test::GridOf(readings));
  for (const auto& [row, text] :
       {std::pair(1, "10/"), std::pair(2, "5/999*"), std::pair(3, "20/"), std::pair(4, "30/999*")}) {
    EXPECT_EQ(LevelAndCode(grid, row), text) << row;
  }
  EXPECT_TRUE(Told("changed by another program"));
  // What the record knows is no candidate for a line that it does not know.
  ASSERT_TRUE(WriteContent(path_, "01/10/2010\t02:00\t22\t\r\n01/10/2010\t02:00\t999\t\r\n"));
  const StationSeries both = Load(test::GridOf(readings));
  EXPECT_EQ(LevelAndCode(both, 3), "22/999*");
  EXPECT_EQ(LevelAndCode(both, 4), "999/999*");
}

TEST_F(ChangeLog, TheOrderOfALogTellsAReadingFromARecordWhereItCan) {
  const struct {
    const char* log;
    std::vector<const char*> rows;  ///< level and code of each
  } kCases[] = {{"01/10/2010\t02:00\t7\t\r\n01/10/2010\t02:00\t8\t\r\n", {"10/", "7/999*", "8/999*", "9/"}},
                {"01/10/2010\t02:00\t8\t\r\n01/10/2010\t01:00\t6\t\r\n", {"10/", "20/", "21/", "6/999*"}},
                {"01/10/2010\t01:00\t5\t\r\n01/10/2010\t02:00\t7\t\r\n01/10/2010\t02:00\t8\t\r\n",
                 {"5/999*", "7/999*", "8/999*", "9/"}},
                {"01/10/2010\t01:00\t6\t\r\n", {"10/", "20/", "21/", "9/"}}};
  for (const auto& c : kCases) {
    ASSERT_TRUE(WriteContent(path_, c.log));
    const StationSeries grid = Load(test::GridOf(WithRecords()));
    for (int row = 1; row <= 4; ++row) {
      EXPECT_EQ(LevelAndCode(grid, row), c.rows[static_cast<std::size_t>(row - 1)]) << c.log << row;
    }
    EXPECT_EQ(overlay_.applied + static_cast<int>(overlay_.orphans.size()), QByteArray(c.log).count('\n'));
  }
}

TEST_F(ChangeLog, ADamagedRecordIsToldAndKept) {
  StationSeries series = Load(test::GridOf(WithRecords()));
  Edit(series, 2, 999);
  Save(series);
  const QString path = ReviewRecordPath(path_);
  const QByteArray whole = ContentOf(path);
  for (const QByteArray& damaged : {whole.first(whole.size() / 2), QByteArray("x"), QByteArray("{}")}) {
    ASSERT_TRUE(WriteContent(path, damaged));
    series = Load(test::GridOf(WithRecords()));
    EXPECT_EQ(TextOf(series), TextOf(test::GridOf(WithRecords())));
    EXPECT_TRUE(Told("The review record could not be read"));
    EXPECT_TRUE(Told("line 1: 01/10/2010 02:00 999 can be meant for the reading or for the extreme record"));
    Save(series);
    EXPECT_TRUE(ReadReviewRecord(path_));
  }
  EXPECT_EQ(ContentOf(path + QStringLiteral(".damaged")), whole.first(whole.size() / 2));
  EXPECT_EQ(ContentOf(path + QStringLiteral(".damaged3")), "{}");
}

TEST_F(ChangeLog, LinesThatFitNoReadingAreToldAndKept) {
  const struct {
    const char* line;
    const char* message;
  } kCases[] = {{"no date at all", "log.txt, line 3: expected a date dd/mm/yyyy"},
                {"31/02/2010\t00:00\t1\t", "log.txt, line 3: expected a date dd/mm/yyyy"},
                {"01/10/2010\t25:00\t1\t", "log.txt, line 3: expected a time hh:mm"},
                {"01/10/2010", "log.txt, line 3: expected a time hh:mm"},
                {"01/10/2010\t01:00\t\t", "log.txt, line 3: expected a level in cm"},
                {"01/10/2010\t01:00\t1.2.3\t", "log.txt, line 3: expected a level in cm"},
                {"01/01/1999\t00:00\t7\t",
                 "log.txt, line 3: 01/01/1999 00:00 7 belongs to no reading of this load; it is kept for the "
                 "next save"}};
  for (const auto& c : kCases) {
    ASSERT_TRUE(WriteContent(path_, QByteArray("01/10/2010\t00:00\t7\t\r\n\r\n") + c.line + "\r\n"));
    Load(TwoDays());
    EXPECT_EQ(overlay_.applied, 1) << c.line;
    EXPECT_EQ(overlay_.orphans, std::vector<RecordedLine>({{c.line, std::nullopt}}));
    EXPECT_EQ(InEnglish(overlay_.messages), std::vector{QLatin1String(c.message).toString()});
  }
  StationSeries series(TwoDays());
  EXPECT_TRUE(LoadChangeLog(folder_.filePath(QStringLiteral("none.txt")), series, false));
  EXPECT_FALSE(LoadChangeLog(folder_.path(), series, false));
}

TEST_F(ChangeLog, SavesChangedRowsInGridOrderAndWhatItCouldNotPlace) {
  ASSERT_TRUE(WriteContent(path_, "orphan\r\n"));
  StationSeries series = Load(TwoDays());
  Edit(series, 30, 12.5, 2);
  RowState state = *series.StateOf({.rawRow = 3});
  state.discharge = DischargeOfLog(QStringLiteral("ğ\t1"));
  series.SetState({.rawRow = 3}, state);
  Edit(series, 3, 102, 998);
  for (int round = 0; round < 2; ++round) {
    Save(series);
    EXPECT_EQ(ContentOf(path_), "01/10/2010\t02:00\t102\t\xF0 1\r\n02/10/2010\t05:00\t12.5\t\r\norphan\r\n");
  }
  const StationSeries& grid = series;
  EXPECT_EQ(LevelAndCode(grid, 30), "12.5/999*");
  EXPECT_EQ(grid.Mark(30).baselineCm, 12.5);
  EXPECT_EQ(LevelAndCode(grid, 3), "102/999*");
  EXPECT_EQ(LevelAndCode(grid, 4), "103/");
  ASSERT_TRUE(WriteContent(path_, ""));
  StationSeries unchanged = Load(TwoDays());
  Save(unchanged);
  EXPECT_TRUE(QFile::exists(path_) && ContentOf(path_).isEmpty());
}

}  // namespace
}  // namespace vesk
