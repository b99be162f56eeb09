#include "tables/level_table_workbook.h"

#include <gtest/gtest.h>

#include "tables/recording_spreadsheet.h"

namespace vesk::test {
namespace {

Result<WriteReport> Write(const LevelTable& table, RecordingSpreadsheet& office) {
  auto workbook = office.Open(QStringLiteral("/t.xls"), Macros::MayRun);
  return WriteLevelTable(table, **workbook, [](TablePart, int) { return true; });
}

LevelTable Readings(int count) {
  LevelTable table;
  for (int i = 0; i < count; ++i) table.hourly.push_back({WaterYearFirstDay(2012), {i % 1440, 1.0 * i, {}}});
  return table;
}

TEST(WriteLevelTable, RecordThatTakesAnothersPlaceHasItsOwnColour) {
  LevelTable table = Readings(1);
  table.missingExtremesRows = {5};
  table.records = {{5, false, {1, 90, {}}}, {5, true, {2, 99, {}}}, {4, true, {3, 98, {}}}};
  RecordingSpreadsheet office;
  ASSERT_TRUE(Write(table, office).Ok());
  EXPECT_EQ(office.At("Saatlik", 5, 6), CellValue(QStringLiteral("Maksimum")));
  EXPECT_EQ(office.sheets[QStringLiteral("Saatlik")].colours.at({5, 6}), FontColour::Red);
  EXPECT_EQ(office.At("Saatlik", 4, 8), CellValue(98.0)) << "beside the headings";
  EXPECT_EQ(office.At("Saatlik", 4, 1), CellValue());
}

TEST(WriteLevelTable, ReadingsBeyondTheLastRowAreCountedAndTheDailySheetIsComplete) {
  LevelTable table = Readings(35'040);
  table.records = {{30'004, false, {1, 90, {}}}, {30'005, true, {1, 99, {}}}};
  table.days = {{WaterYearFirstDay(2012), 7, {}, LevelAt{60, 90, {}}, {}}};
  RecordingSpreadsheet office;
  office.rowLimit = 30'004;
  const auto report = Write(table, office);
  ASSERT_TRUE(report.Ok());
  EXPECT_EQ(report->hourlyRowsLeftOut, 5'040);
  for (const int row : {5, 10'004, 10'005, 30'004}) {
    EXPECT_EQ(office.At("Saatlik", row, 3), CellValue(1.0 * (row - 5))) << row;
  }
  for (int column = 1; column <= 9; ++column) EXPECT_EQ(office.At("Saatlik", 30'005, column), CellValue());
  EXPECT_EQ(office.sheets[QStringLiteral("Saatlik")].underlined.size(), 1U);
  EXPECT_EQ(office.At("Gunluk", 7, 7), CellValue(90.0));
  EXPECT_EQ(office.At("Gunluk", 7, 9), CellValue()) << "no mean";
  EXPECT_LT(office.sheets[QStringLiteral("Saatlik")].calls, 10);
}

}  // namespace
}  // namespace vesk::test
