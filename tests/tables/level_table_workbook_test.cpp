#include "tables/level_table_workbook.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tables/recording_spreadsheet.h"

namespace vesk::test {
namespace {

Day DayOfText(const char* text) {
  return ReadDate(QString::fromLatin1(text)).value();
}

HourlyReading Hour(const char* day, int minute, double levelCm, const QString& discharge = {}) {
  return {DayOfText(day), {minute, levelCm, discharge}};
}

LevelTable TwoDays() {
  LevelTable table;
  table.waterYear = 2012;
  table.title = QStringLiteral("12345 - Ad");
  table.hourly = {Hour("01/10/2011", 360, 100, QStringLiteral("1,5")), Hour("01/10/2011", 1439, 101),
                  Hour("02/10/2011", 360, 102), Hour("02/10/2011", 1439, 103.5)};
  table.records = {{5, true, {60, 110, QStringLiteral("2.5")}}, {6, false, {120, 90, {}}}};
  table.missingExtremesRows = {8};
  DayRecord first;
  first.day = DayOfText("01/10/2011");
  first.sheetRow = 5;
  first.maximum = LevelAt{60, 110, QStringLiteral("2.5")};
  first.minimum = LevelAt{120, 90, QString()};
  first.meanCm = 100;
  DayRecord second;
  second.day = DayOfText("02/10/2011");
  second.sheetRow = 6;
  DayRecord third = first;
  third.day = DayOfText("03/10/2011");
  third.sheetRow = 7;
  third.maximum.reset();
  third.meanCm.reset();
  table.days = {first, second, third};
  return table;
}

Result<WriteReport> Write(const LevelTable& table, bool withHourly, RecordingSpreadsheet& office) {
  auto workbook = office.Open(QStringLiteral("/t.xls"));
  return WriteLevelTable(table, withHourly, **workbook, [](int) {});
}

struct Expected {
  const char* sheet;
  int row, column;
  CellValue value;
};

TEST(WriteLevelTable, PutsEachFigureIntoItsCell) {
  RecordingSpreadsheet office;
  ASSERT_TRUE(Write(TwoDays(), true, office).Ok());
  const CellValue none;
  const Expected cells[] = {
      {"Saatlik", 1, 3, QStringLiteral("12345 - Ad")},
      {"Saatlik", 2, 3, 2012.0},
      {"Saatlik", 5, 1, DayOfText("01/10/2011")},
      {"Saatlik", 5, 2, QStringLiteral("06:00")},
      {"Saatlik", 5, 3, 100.0},
      {"Saatlik", 5, 4, 1.5},
      {"Saatlik", 6, 2, QStringLiteral("23:59")},
      {"Saatlik", 6, 4, none},
      {"Saatlik", 8, 3, 103.5},
      {"Saatlik", 5, 6, QStringLiteral("Maksimum")},
      {"Saatlik", 5, 7, QStringLiteral("01:00")},
      {"Saatlik", 5, 8, 110.0},
      {"Saatlik", 5, 9, 2.5},
      {"Saatlik", 6, 6, QStringLiteral("Minimum")},
      {"Saatlik", 6, 9, none},
      {"Saatlik", 8, 6,
       QStringLiteral("Cihaz Bu Günün Sonunda Çalışır Durumda Olmadığı İçin EXTREMLER KAYDEDİLEMEMİŞTİR.")},
      {"Gunluk", 1, 4, QStringLiteral("12345 - Ad")},
      {"Gunluk", 1, 1, 2012.0},
      {"Gunluk", 5, 2, QStringLiteral("01/10/2011")},
      {"Gunluk", 5, 3, QStringLiteral("01:00")},
      {"Gunluk", 5, 4, 110.0},
      {"Gunluk", 5, 5, 2.5},
      {"Gunluk", 5, 6, QStringLiteral("02:00")},
      {"Gunluk", 5, 7, 90.0},
      {"Gunluk", 5, 8, none},
      {"Gunluk", 5, 9, 100.0},
      {"Gunluk", 5, 10, none},
      {"Gunluk", 6, 2, none},
      {"Gunluk", 7, 2, none},
      {"Gunluk", 7, 7, 90.0},
      {"Gunluk", 7, 9, none},
  };
  for (const Expected& cell : cells) {
    EXPECT_EQ(office.At(cell.sheet, cell.row, cell.column), cell.value)
        << cell.sheet << " " << cell.row << "," << cell.column;
  }
}

TEST(WriteLevelTable, ColoursRecordsAndUnderlinesDays) {
  RecordingSpreadsheet office;
  ASSERT_TRUE(Write(TwoDays(), true, office).Ok());
  const RecordedSheet& hourly = office.sheets[QStringLiteral("Saatlik")];
  for (int column = 1; column <= 9; ++column) {
    const bool coloured = column >= 6;
    EXPECT_EQ(hourly.colours.contains({5, column}), coloured) << column;
    if (!coloured) continue;
    EXPECT_EQ(hourly.colours.at({5, column}), 3);
    EXPECT_EQ(hourly.colours.at({6, column}), 41);
  }
  std::vector<int> underlined;
  for (const CellRange& range : hourly.underlined) {
    underlined.push_back(range.lastRow);
    EXPECT_EQ(range.firstRow, range.lastRow);
    EXPECT_EQ(range.firstColumn, 1);
    EXPECT_EQ(range.lastColumn, 9);
  }
  std::ranges::sort(underlined);
  EXPECT_EQ(underlined, (std::vector{6, 8}));
}

TEST(WriteLevelTable, RecordThatTakesAnothersPlaceHasItsOwnColour) {
  LevelTable table = TwoDays();
  table.records = {{5, false, {1, 90, {}}}, {5, true, {2, 99, {}}}, {4, true, {3, 98, {}}}};
  RecordingSpreadsheet office;
  ASSERT_TRUE(Write(table, true, office).Ok());
  EXPECT_EQ(office.At("Saatlik", 5, 6), CellValue(QStringLiteral("Maksimum")));
  EXPECT_EQ(office.sheets[QStringLiteral("Saatlik")].colours.at({5, 6}), 3);
  EXPECT_EQ(office.At("Saatlik", 4, 8), CellValue(98.0));
  EXPECT_EQ(office.At("Saatlik", 4, 1), CellValue());
}

TEST(WriteLevelTable, WithoutHourlyValuesOnlyTheDailySheetIsTouched) {
  RecordingSpreadsheet office;
  ASSERT_TRUE(Write(TwoDays(), false, office).Ok());
  EXPECT_EQ(office.sheets[QStringLiteral("Saatlik")].calls, 0);
  EXPECT_EQ(office.At("Gunluk", 5, 9), CellValue(100.0));
}

TEST(WriteLevelTable, ReadingsBeyondTheLastRowAreCountedAndTheDailySheetIsComplete) {
  RecordingSpreadsheet office;
  office.rowLimit = 7;
  const auto report = Write(TwoDays(), true, office);
  ASSERT_TRUE(report.Ok());
  EXPECT_EQ(report->hourlyRowsLeftOut, 1);
  EXPECT_EQ(office.At("Saatlik", 7, 3), CellValue(102.0));
  for (int column = 1; column <= 9; ++column) EXPECT_EQ(office.At("Saatlik", 8, column), CellValue());
  EXPECT_EQ(office.sheets[QStringLiteral("Saatlik")].underlined.size(), 1U);
  EXPECT_EQ(office.At("Gunluk", 7, 7), CellValue(90.0));
}

TEST(WriteLevelTable, WholeYearGoesOverInFewCalls) {
  LevelTable table = TwoDays();
  table.hourly.assign(35'040, Hour("01/10/2011", 60, 100));
  RecordingSpreadsheet office;
  ASSERT_TRUE(Write(table, true, office).Ok());
  EXPECT_EQ(office.At("Saatlik", 35'044, 3), CellValue(100.0));
  EXPECT_LT(office.sheets[QStringLiteral("Saatlik")].calls, 10);
}

struct Refusal {
  const char* sheetMissing;
  const char* stepFailing;
  bool ok;
  std::size_t warnings;
};

TEST(WriteLevelTable, WhatHarmsNoFigureIsAWarning) {
  const Refusal cases[] = {
      {"Saatlik", "", true, 1},      {"Gunluk", "", false, 0},     {"", "colour", true, 2},
      {"", "put Saatlik", false, 0}, {"", "put Gunluk", false, 0}, {"", "select", true, 1},
  };
  for (const Refusal& refusal : cases) {
    RecordingSpreadsheet office;
    office.sheets.erase(QString::fromLatin1(refusal.sheetMissing));
    if (*refusal.stepFailing != '\0') office.failing = {QString::fromLatin1(refusal.stepFailing)};
    const auto report = Write(TwoDays(), true, office);
    const auto where = testing::Message() << refusal.sheetMissing << refusal.stepFailing;
    ASSERT_EQ(report.Ok(), refusal.ok) << where;
    if (report) {
      EXPECT_EQ(report->warnings.size(), refusal.warnings) << where;
    }
  }
}

TEST(DischargeValue, NumbersAreNumbersAndOtherTextStays) {
  EXPECT_EQ(DischargeValue(QStringLiteral("12,75")), CellValue(12.75));
  EXPECT_EQ(DischargeValue(QStringLiteral(" 3 ")), CellValue(3.0));
  EXPECT_EQ(DischargeValue(QStringLiteral("3 m3/s")), CellValue(QStringLiteral("3 m3/s")));
  EXPECT_EQ(DischargeValue(QStringLiteral(" ")), CellValue());
}

}  // namespace
}  // namespace vesk::test
