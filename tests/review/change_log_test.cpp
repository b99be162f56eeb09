#include "review/change_log.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::HourlyGrid;
using test::LevelAndCode;
using test::ReadingAt;
using test::WriteContent;

ReviewGrid TwoDays() {
  return HourlyGrid("01/10/2010 00:00", 48);
}

TEST(ChangeLog, NamesOneFileAStationAndWaterYearEntry) {
  const QString folder = QStringLiteral("/data/");
  const QString station = QStringLiteral("001-12345");
  EXPECT_EQ(ChangeLogPath(folder, station, QStringLiteral("2011 ")),
            QStringLiteral("/data/001-12345-Degisiklikler2011.txt"));
  EXPECT_EQ(ChangeLogPath(folder, station, QStringLiteral("2011 Dönüşmüş")),
            QStringLiteral("/data/001-12345-Degisiklikler2011 Dönüşmüş.txt"));
  EXPECT_EQ(ChangeLogPath(folder, station, {}), QStringLiteral("/data/001-12345-Degisiklikler.txt"));
}

TEST(ChangeLog, ReadsTheNewestNameThatAYearHasHad) {
  const QTemporaryDir folder;
  const QString path = folder.path() + QLatin1Char('/');
  const QString station = QStringLiteral("001-12345");
  const QString plain = ChangeLogPath(path, station, QStringLiteral("2011"));
  const QString converted = ChangeLogPath(path, station, QStringLiteral("2011 Ok."));
  const QString entry = QStringLiteral("2011 Dönüşmüş");
  EXPECT_EQ(ChangeLogToRead(path, station, entry), ChangeLogPath(path, station, entry));

  const QDateTime now = QDateTime::currentDateTime();
  for (const auto& [name, age] : {std::pair(plain, 60), std::pair(converted, 30)}) {
    ASSERT_TRUE(WriteContent(name, "x"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(now.addSecs(-age), QFileDevice::FileModificationTime));
  }
  EXPECT_EQ(ChangeLogToRead(path, station, entry), converted);
  EXPECT_EQ(ChangeLogToRead(path, station, {}), ChangeLogPath(path, station, {}));
}

TEST(ChangeLog, LaysLinesOverTheirRows) {
  ReviewGrid grid = TwoDays();
  const auto overlay = ApplyChangeLog("01/10/2010\t02:00\t55.5\t3.2\r\n01/10/2010\t05:00\t60,5\t\n",
                                      QStringLiteral("log"), grid);
  EXPECT_EQ(overlay.applied, 2);
  EXPECT_TRUE(overlay.orphans.empty());
  EXPECT_TRUE(overlay.messages.empty());
  EXPECT_EQ(LevelAndCode(grid, 3), QStringLiteral("55.5/999"));
  EXPECT_EQ(grid.Text(3, GridColumn::Discharge), QStringLiteral("3.2"));
  EXPECT_EQ(grid.Mark(3).shade, RowShade::Changed);
  EXPECT_EQ(LevelAndCode(grid, 6), QStringLiteral("60.5/999"));
  EXPECT_EQ(LevelAndCode(grid, 4), QStringLiteral("103/"));
  EXPECT_EQ(grid.Mark(4).shade, RowShade::None);
}

TEST(ChangeLog, LooksFromThePreviousHitOnThenFromTheFirstRow) {
  // The same stretch twice, as two overlapping files give it.
  std::vector<Reading> readings = TwoDays().Readings();
  const std::vector<Reading> again = readings;
  readings.insert(readings.end(), again.begin(), again.end());
  ReviewGrid grid = test::GridOf(readings);
  const auto overlay = ApplyChangeLog(
      "02/10/2010\t00:00\t1\t\n"   // row 25
      "01/10/2010\t03:00\t2\t\n"   // behind row 25: row 52
      "01/10/2010\t01:00\t3\t\n"   // behind row 52 there is none: row 2
      "09/10/2011\t00:00\t4\t\n"   // nowhere
      "01/10/2010\t04:00\t5\t\n",  // still from row 2 on: row 5
      QStringLiteral("log"), grid);
  EXPECT_EQ(overlay.applied, 4);
  ASSERT_EQ(overlay.orphans.size(), 1U);
  EXPECT_EQ(overlay.orphans[0], "09/10/2011\t00:00\t4\t");
  for (const auto& [row, level] : {std::pair(25, 1), std::pair(52, 2), std::pair(2, 3), std::pair(5, 5)}) {
    EXPECT_EQ(grid.At(row).levelCm, level) << row;
  }
  EXPECT_EQ(grid.At(4).levelCm, 103);
}

TEST(ChangeLog, AReadingAndItsExtremeRecordOfOneMinuteKeepTheirOwnLines) {
  const std::vector<Reading> rows = {ReadingAt("01/10/2010 12:00", 10),
                                     ReadingAt("01/10/2010 12:00", 10, ReadingKind::Maximum),
                                     ReadingAt("01/10/2010 13:00", 9)};
  ReviewGrid edited = test::GridOf(rows);
  edited.SetLevel(1, 20);
  edited.SetMark(1, {.baselineCm = 10, .editCode = 1});
  edited.SetLevel(2, 21);
  edited.SetMark(2, {.baselineCm = 10, .editCode = 1});
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("log.txt"));
  ASSERT_TRUE(SaveChangeLog(path, edited, {}));
  ReviewGrid grid = test::GridOf(rows);
  ASSERT_TRUE(LoadChangeLog(path, grid));
  EXPECT_EQ(grid.At(1).levelCm, 20);
  EXPECT_EQ(grid.At(2).levelCm, 21);
}

TEST(ChangeLog, AnExtremeRecordChangedAloneIsFoundAgain) {
  const auto load = [] {
    ReviewGrid grid = test::GridOf({ReadingAt("01/10/2010 01:00", 10), ReadingAt("01/10/2010 02:00", 20),
                                    ReadingAt("01/10/2010 02:00", 21, ReadingKind::Maximum),
                                    ReadingAt("01/10/2010 01:00", 9, ReadingKind::Minimum)});
    return grid;
  };
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("log.txt"));
  for (const std::vector<int>& changed :
       {std::vector{3}, std::vector{4}, std::vector{3, 4}, std::vector{1, 3}, std::vector{2, 4}}) {
    ReviewGrid grid = load();
    for (const int row : changed) {
      grid.SetLevel(row, 500 + row);
      grid.SetMark(row, {.baselineCm = 0, .editCode = 1, .shade = RowShade::Changed});
    }
    ASSERT_TRUE(SaveChangeLog(path, grid, {}));
    ReviewGrid again = load();
    ASSERT_TRUE(LoadChangeLog(path, again));
    for (int row = 1; row <= 4; ++row) {
      EXPECT_EQ(again.Text(row, GridColumn::Level), grid.Text(row, GridColumn::Level)) << "row " << row;
    }
  }
}

TEST(ChangeLog, UnreadableLinesAreReportedAndKept) {
  const struct {
    const char* line;
    const char* expected;
  } kCases[] = {{"no date at all", "a date dd/mm/yyyy"},    {"31/02/2010\t00:00\t1\t", "a date dd/mm/yyyy"},
                {"01/10/2010\t25:00\t1\t", "a time hh:mm"}, {"01/10/2010", "a time hh:mm"},
                {"01/10/2010\t01:00\t\t", "a level in cm"}, {"01/10/2010\t01:00\t1.2.3\t", "a level in cm"}};
  for (const auto& c : kCases) {
    ReviewGrid grid = TwoDays();
    const QByteArray content = QByteArray("01/10/2010\t00:00\t7\t\r\n\r\n") + c.line + "\r\n";
    const auto overlay = ApplyChangeLog(content, QStringLiteral("log.txt"), grid);
    EXPECT_EQ(overlay.applied, 1) << c.line;
    EXPECT_EQ(overlay.orphans, std::vector<QByteArray>{c.line});
    ASSERT_EQ(overlay.messages.size(), 1U) << c.line;
    EXPECT_EQ(overlay.messages[0],
              QStringLiteral("log.txt, line 3: expected %1").arg(QLatin1String(c.expected)));
  }
}

TEST(ChangeLog, SavesChangedRowsInGridOrderAndWhatItCouldNotPlace) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("log.txt"));
  ReviewGrid grid = TwoDays();
  grid.SetLevel(30, 12.5);
  grid.SetMark(30, {.baselineCm = 129, .editCode = 2, .shade = RowShade::Changed});
  grid.SetMark(3, {.baselineCm = 102, .editCode = 998});
  grid.SetDischarge(3, QStringLiteral("ğ\t1"));
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(SaveChangeLog(path, grid, {"orphan"}));
    EXPECT_EQ(ContentOf(path), "01/10/2010\t02:00\t102\t\xF0 1\r\n02/10/2010\t05:00\t12.5\t\r\norphan\r\n");
  }
  EXPECT_EQ(LevelAndCode(grid, 30), QStringLiteral("12.5/999"));
  EXPECT_EQ(grid.Mark(30).baselineCm, 12.5);
  EXPECT_EQ(LevelAndCode(grid, 3), QStringLiteral("102/999"));
  EXPECT_EQ(LevelAndCode(grid, 4), QStringLiteral("103/"));
}

TEST(ChangeLog, AnUneditedGridSavesAnEmptyFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("log.txt"));
  ASSERT_TRUE(WriteContent(path, "01/10/2010\t00:00\t7\t\r\n"));
  ReviewGrid grid = TwoDays();
  ASSERT_TRUE(SaveChangeLog(path, grid, {}));
  EXPECT_TRUE(QFileInfo::exists(path));
  EXPECT_TRUE(ContentOf(path).isEmpty());
}

TEST(ChangeLog, AWaterYearSavesOnlyItsOwnRows) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("log.txt"));
  ReviewGrid grid = HourlyGrid("30/09/2010 23:00", 3);
  for (const int row : {1, 2}) grid.SetMark(row, {.baselineCm = 1, .editCode = 1});
  ASSERT_TRUE(SaveChangeLog(path, grid, {}, 2011));
  EXPECT_EQ(ContentOf(path), "01/10/2010\t00:00\t101\t\r\n");
  EXPECT_EQ(grid.Mark(1).editCode, 1);
  EXPECT_EQ(grid.Mark(2).editCode, kSavedCode);
}

TEST(ChangeLog, AFailedSaveLeavesTheGridAndTheOldFileAlone) {
  ReviewGrid grid = TwoDays();
  grid.SetMark(1, {.baselineCm = 1, .editCode = 1});
  const QString path = QStringLiteral("/nonexistent/folder/log.txt");
  const Status saved = SaveChangeLog(path, grid, {});
  ASSERT_FALSE(saved);
  EXPECT_EQ(saved.Failure().path, path);
  EXPECT_FALSE(saved.Failure().reason.isEmpty());
  EXPECT_EQ(grid.Mark(1).editCode, 1);
  EXPECT_EQ(grid.Mark(1).baselineCm, 1);
}

TEST(ChangeLog, ALoadTellsHowManyLinesFoundNoReading) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("log.txt"));
  ASSERT_TRUE(WriteContent(path, "01/01/1999\t00:00\t7\t\r\nrubbish\r\n01/01/1999\t01:00\t7\t\r\n"));
  ReviewGrid grid = TwoDays();
  const auto overlay = LoadChangeLog(path, grid);
  ASSERT_TRUE(overlay);
  EXPECT_EQ(overlay->orphans.size(), 3U);
  ASSERT_EQ(overlay->messages.size(), 2U);
  EXPECT_TRUE(overlay->messages[1].contains(QStringLiteral("log.txt: 2 line(s)")));
}

TEST(ChangeLog, AMissingFileIsNoErrorAndAFolderOfThatNameIs) {
  const QTemporaryDir folder;
  ReviewGrid grid = TwoDays();
  const auto missing = LoadChangeLog(folder.filePath(QStringLiteral("none.txt")), grid);
  ASSERT_TRUE(missing);
  EXPECT_EQ(missing->applied, 0);
  EXPECT_FALSE(LoadChangeLog(folder.path(), grid));
}

}  // namespace
}  // namespace vesk
