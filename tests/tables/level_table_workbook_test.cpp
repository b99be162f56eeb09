// What stands where on the sheets, and how it goes into a workbook.
#include "tables/level_table_workbook.h"

#include <gtest/gtest.h>

#include "tables/recording_spreadsheet.h"
#include "tables/written_cells.h"

namespace vesk::test {
namespace {

const Day kFirst = WaterYearFirstDay(2012);

/// One line a block, colour and line: "row,column: cell|cell ...", rows parted by "/".
std::string Listed(const SheetCells& sheet) {
  QString text;
  for (const PlacedBlock& block : sheet.blocks) {
    text += QStringLiteral("%1,%2: ").arg(block.row).arg(block.column);
    for (const auto& row : block.cells) {
      for (const CellValue& cell : row) {
        if (const auto* number = std::get_if<double>(&cell)) text += NumberText(*number);
        if (const auto* words = std::get_if<QString>(&cell)) text += QLatin1Char('\'') + *words;
        if (const auto* day = std::get_if<Day>(&cell)) text += QLatin1Char('=') + DateText(*day);
        text += QLatin1Char(&cell == &row.back() ? '/' : '|');
      }
    }
    text.back() = QLatin1Char('\n');
  }
  const auto add = [&text](const char* what, const std::vector<CellRange>& ranges) {
    for (const CellRange& at : ranges) {
      text += QStringLiteral("%1 %2,%3-%4,%5\n")
                  .arg(QLatin1String(what))
                  .arg(at.firstRow)
                  .arg(at.firstColumn)
                  .arg(at.lastRow)
                  .arg(at.lastColumn);
    }
  };
  for (const auto& [colour, ranges] : sheet.colours) add(colour == FontColour::Red ? "red" : "blue", ranges);
  add("line", sheet.linesBelow);
  for (const TextCell& cell : sheet.textCells) add("text", {cell.cells});
  return text.toStdString();
}

LevelTable Sketch() {
  LevelTable table;
  table.waterYear = 2012;
  table.title = QStringLiteral("12345 - Ad");
  table.hourly = {{kFirst, {360, 100, QStringLiteral("12,5")}},
                  {kFirst, {1439, 110.5, QStringLiteral("yok")}},
                  {kFirst + std::chrono::days(1), {0, 120, QStringLiteral(" ")}}};
  return table;
}

TEST(CellsOf, HourlySheetHasRecordsBesideTheReadingsAndALaterOneTakesTheOthersPlace) {
  LevelTable table = Sketch();
  table.missingExtremesRows = {6, 7};
  table.records = {{4, true, {3, 98, {}}},
                   {5, true, {1, 90, QStringLiteral("7")}},
                   {6, true, {60, 130, {}}},
                   {6, false, {61, -2.5, QStringLiteral("1.5")}}};
  EXPECT_EQ(Listed(CellsOf(table).at(0)),
            "1,3: '12345 - Ad/2012\n"
            "4,6: 'Maksimum|'00:03|98|\n"
            "5,1: =01/10/2011|'06:00|100|12.5||'Maksimum|'00:01|90|7/"
            "=01/10/2011|'23:59|110.5|'yok||'Minimum|'01:01|-2.5|1.5/"
            "=02/10/2011|'00:00|120|||'Cihaz Bu Günün Sonunda Çalışır Durumda Olmadığı İçin EXTREMLER "
            "KAYDEDİLEMEMİŞTİR.|||\n"
            "red 4,6-4,9\nred 5,6-5,9\nblue 6,6-6,9\nline 6,1-6,9\nline 7,1-7,9\nline 6,1-6,9\n");
}

TEST(CellsOf, DailySheetHasTheDaysInTheirRowsAndTheNoteBesideTheTitle) {
  LevelTable table = Sketch();
  table.withHourly = false;
  table.note = QString(9000, QLatin1Char('n'));
  const LevelAt high{1110, 131.5, QStringLiteral("20")};
  const LevelAt low{195, 90, {}};
  table.days = {{kFirst, 5, high, low, 112},
                {kFirst + std::chrono::days(1), 6, high, low, {}},
                {kFirst + std::chrono::days(3), 8, {}, low, 7}};
  ASSERT_EQ(CellsOf(table).size(), 1U);
  EXPECT_EQ(Listed(CellsOf(table).front()),
            "1,4: '12345 - Ad\n1,1: 2012\n1,6: '" + std::string(8000, 'n') +
                "…\n"
                "5,2: '01/10/2011|'18:30|131.5|20/'02/10/2011|'18:30|131.5|20\n"
                "5,6: '03:15|90||112/'03:15|90||\n8,6: '03:15|90||7\n"
                "red 1,6-1,9\ntext 1,6-1,9\ntext 1,4-1,5\n");
  table.withHourly = true;
  EXPECT_EQ(CellsOf(table).front().textCells.back().cells.firstColumn, 3)
      << "the title's on the hourly sheet";
}

TEST(WriteLevelTable, ReadingsBeyondTheLastRowAreCountedAndTheRestIsComplete) {
  LevelTable table = Sketch();
  table.hourly.clear();
  for (int i = 0; i < 12'040; ++i) table.hourly.push_back({kFirst, {i % 1440, 1.0 * i, {}}});
  table.records = {{10'004, false, {1, 90, {}}}, {10'005, true, {1, 99, {}}}, {10'006, false, {1, 9, {}}}};
  table.days = {{kFirst + std::chrono::days(2), 7, {}, LevelAt{60, 90, {}}, {}}};
  RecordingSpreadsheet office;
  office.rowLimit = 10'004;
  auto workbook = office.Open(QStringLiteral("/t.xls"), Macros::MayRun);
  std::vector<int> told;
  const auto report = WriteLevelTable(table, **workbook, [&told](TablePart part, int percent) {
    told.push_back(part == TablePart::Hourly ? percent : 1000 + percent);
    return true;
  });
  ASSERT_TRUE(report.Ok());
  EXPECT_EQ(report->hourlyRowsLeftOut, 2'040);
  ExpectHolds(**workbook, CellsOf(table), office.rowLimit);
  RecordedSheet& hourly = office.sheets[QStringLiteral("Saatlik")];
  EXPECT_EQ(hourly.cells.rbegin()->first.first, 10'004);
  EXPECT_EQ(hourly.formatted.size(), 2U) << "colour and line of one record";
  EXPECT_LT(hourly.calls, 10);
  EXPECT_EQ(told.front(), 0);
  EXPECT_EQ(told.back(), 1100);
  EXPECT_TRUE(std::ranges::is_sorted(told));
}

}  // namespace
}  // namespace vesk::test
