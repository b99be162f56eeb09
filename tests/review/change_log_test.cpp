#include "review/change_log.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QTemporaryDir>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::Change;
using test::ContentOf;
using test::HourlyGrid;
using test::LevelAndCode;
using test::ReadingAt;
using test::TextOf;
using test::WriteContent;

class ChangeLog : public testing::Test {
 protected:
  static ReviewGrid TwoDays() { return HourlyGrid("01/10/2010 00:00", 48); }
  Status Save(ReviewGrid& grid, const std::vector<QByteArray>& orphans = {}) const {
    return SaveChangeLog(path_, grid, RowsToSave(grid), orphans);
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("log.txt"));
};

TEST_F(ChangeLog, ReadsTheNewestNameThatAYearHasHad) {
  const QString path = folder_.path() + QLatin1Char('/');
  const QString station = QStringLiteral("001-12345");
  const QString entry = QStringLiteral("2011 Dönüşmüş");
  const QString given = ChangeLogPath(path, station, entry);
  EXPECT_EQ(given, path + QStringLiteral("001-12345-Degisiklikler2011 Dönüşmüş.txt"));
  EXPECT_EQ(ChangeLogToRead(path, station, entry), given);

  const QString plain = ChangeLogPath(path, station, QStringLiteral("2011 "));
  const QString converted = ChangeLogPath(path, station, QStringLiteral("2011 Ok."));
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

TEST_F(ChangeLog, ALineIsLookedForFromThePreviousHitOnThenFromTheFirstRow) {
  // The same stretch twice, as two overlapping files give it.
  std::vector<Reading> readings = TwoDays().Readings();
  const std::vector<Reading> again = readings;
  readings.insert(readings.end(), again.begin(), again.end());
  ReviewGrid grid = test::GridOf(readings);
  const auto overlay = ApplyChangeLog(
      "02/10/2010\t00:00\t1\t3.2\r\n"  // row 25
      "01/10/2010\t03:00\t2,5\t\n"     // behind row 25: row 52
      "01/10/2010\t01:00\t3\t\r\n"     // behind row 52 there is none: row 2
      "09/10/2011\t00:00\t4\t\r\n"     // nowhere
      "01/10/2010\t04:00\t5\t\r\n",    // still from row 2 on: row 5
      QStringLiteral("log"), grid);
  EXPECT_EQ(overlay.applied, 4);
  EXPECT_EQ(overlay.orphans, std::vector<QByteArray>{"09/10/2011\t00:00\t4\t"});
  for (const auto& [row, text] : {std::pair(25, "1/999*"), std::pair(52, "2.5/999*"), std::pair(2, "3/999*"),
                                  std::pair(5, "5/999*"), std::pair(4, "103/")}) {
    EXPECT_EQ(LevelAndCode(grid, row), text) << row;
  }
  EXPECT_EQ(grid.Text(25, GridColumn::Discharge), QStringLiteral("3.2"));
}

TEST_F(ChangeLog, AReadingAndTheExtremeRecordOfItsMinuteAreToldApart) {
  const auto load = [] {
    return test::GridOf({ReadingAt("01/10/2010 01:00", 10), ReadingAt("01/10/2010 02:00", 20),
                         ReadingAt("01/10/2010 02:00", 21, ReadingKind::Maximum),
                         ReadingAt("01/10/2010 01:00", 9, ReadingKind::Minimum)});
  };
  for (const std::vector<int>& changed :
       {std::vector{3}, std::vector{4}, std::vector{2, 3}, std::vector{3, 4}, std::vector{1, 3}}) {
    ReviewGrid grid = load();
    for (const int row : changed) Change(grid, row, 500 + row);
    ASSERT_TRUE(Save(grid));
    ReviewGrid again = load();
    ASSERT_TRUE(LoadChangeLog(path_, again));
    EXPECT_EQ(TextOf(again, GridColumn::Level), TextOf(grid, GridColumn::Level)) << changed.front();
  }
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
                 "log.txt: 1 line(s) belong to no reading of this load; they are kept for the next save"}};
  for (const auto& c : kCases) {
    ReviewGrid grid = TwoDays();
    ASSERT_TRUE(WriteContent(path_, QByteArray("01/10/2010\t00:00\t7\t\r\n\r\n") + c.line + "\r\n"));
    const auto overlay = LoadChangeLog(path_, grid);
    ASSERT_TRUE(overlay);
    EXPECT_EQ(overlay->applied, 1) << c.line;
    EXPECT_EQ(overlay->orphans, std::vector<QByteArray>{c.line});
    EXPECT_EQ(overlay->messages, std::vector{QLatin1String(c.message).toString()});
  }
  ReviewGrid grid = TwoDays();
  EXPECT_TRUE(LoadChangeLog(folder_.filePath(QStringLiteral("none.txt")), grid));
  EXPECT_FALSE(LoadChangeLog(folder_.path(), grid));
}

TEST_F(ChangeLog, SavesChangedRowsInGridOrderAndWhatItCouldNotPlace) {
  ReviewGrid grid = TwoDays();
  Change(grid, 30, 12.5, 2);
  Change(grid, 3, 102, 998);
  grid.SetDischarge(3, QStringLiteral("ğ\t1"));
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(Save(grid, {"orphan"}));
    EXPECT_EQ(ContentOf(path_), "01/10/2010\t02:00\t102\t\xF0 1\r\n02/10/2010\t05:00\t12.5\t\r\norphan\r\n");
  }
  EXPECT_EQ(LevelAndCode(grid, 30), "12.5/999*");
  EXPECT_EQ(grid.Mark(30).baselineCm, 12.5);
  EXPECT_EQ(LevelAndCode(grid, 3), "102/999*");
  EXPECT_EQ(LevelAndCode(grid, 4), "103/");
  ReviewGrid unchanged = TwoDays();
  ASSERT_TRUE(Save(unchanged));
  EXPECT_TRUE(QFile::exists(path_) && ContentOf(path_).isEmpty());
}

}  // namespace
}  // namespace vesk
