// What the sheets of a table show of a grid, and how it goes into a workbook.
#include <gtest/gtest.h>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/water_year.h"
#include "tables/grid_rows.h"
#include "tables/level_table_workbook.h"
#include "tables/recording_spreadsheet.h"
#include "tables/table_notes.h"
#include "tables/written_cells.h"

namespace vesk::test {
namespace {

LevelTable Table(const char* days, const char* mode = "TF") {
  return ComputeLevelTable(GridOf(days), 2011, ExtremeModeOf(QString::fromLatin1(mode)), QStringLiteral("S"));
}

void Add(const PlacedBlock& block, QString& text) {
  text += QStringLiteral("%1,%2: ").arg(block.row).arg(block.column);
  for (const auto& row : block.cells) {
    for (const CellValue& cell : row) {
      if (const auto* number = std::get_if<double>(&cell)) text += NumberText(*number);
      if (const auto* words = std::get_if<QString>(&cell)) text += QLatin1Char('\'') + words->left(99);
      if (const auto* day = std::get_if<Day>(&cell)) text += QLatin1Char('=') + DateText(*day).left(5);
      text += QLatin1Char(' ');
    }
    text = text.trimmed() + QLatin1Char('/');
  }
  text.back() = QLatin1Char('\n');
}

void Add(const char* what, const std::vector<CellRange>& ranges, QString& text) {
  for (const auto& [row, first, lastRow, last] : ranges) {
    EXPECT_EQ(row, lastRow);
    text += QStringLiteral("%1 %2,%3-%4\n").arg(QLatin1String(what)).arg(row).arg(first).arg(last);
  }
}

/// A block a line, its rows parted by "/", texts behind ', days behind =; then colours and lines.
std::string Listed(const SheetCells& sheet) {
  QString text;
  for (const PlacedBlock& block : sheet.blocks) Add(block, text);
  for (const auto& [colour, ranges] : sheet.colours)
    Add(colour == FontColour::Red ? "red" : "blue", ranges, text);
  Add("line", sheet.linesBelow, text);
  for (const TextCell& cell : sheet.textCells) Add("text", {cell.cells}, text);
  return text.toStdString();
}

std::string Hourly(const LevelTable& table) {
  return Listed(CellsOf(table).front());
}
std::string Daily(const LevelTable& table) {
  return Listed(CellsOf(table).back());
}

/// "row: readings, level x minutes, last minute" of each day.
std::string Figures(const LevelTable& table) {
  std::string text;
  for (const DayRecord& day : table.days) {
    text += std::to_string(day.sheetRow) + ": " + std::to_string(day.readings) + ", " +
            NumberText(day.weightedSum).toStdString() + ", " + std::to_string(day.lastMinute) + "\n";
  }
  return text;
}

TEST(LevelTable, MeanIsWeightedByTheTimeUpToEachReading) {
  const LevelTable table = Table(
      "01/10/2010 06:00 100; 23:59 200; 07:00 300 Max; 08:00 50 Min\n"
      "02/10/2010 12:00 123.5; 12:00 123 Min\n"
      "30/09/2011 12:00 123.49; 12:00 123 Min");
  // (100 x 360 + 200 x 1079) / 1439 = 174.98; a half is rounded up; divided by the last reading's minute
  EXPECT_EQ(Figures(table), "5: 2, 251800, 1439\n6: 1, 88920, 720\n419: 1, 88912.8, 720\n");
  EXPECT_EQ(Daily(table),
            "1,4: 'S\n1,1: 2011\n5,2: '01/10/2010 '07:00 300\n5,6: '08:00 50  175/'12:00 123  124\n"
            "419,6: '12:00 123  123\n");
}

TEST(LevelTable, ExtremesAsRecordedOrComputedAndRecordsAlwaysBesideTheReadings) {
  const char* rows =
      "01/10/2010 06:00 150; 07:00 90 12,5; 08:00 150 yok; 09:00 90; 06:10 155 Max 7; 07:10 85.5 Min";
  for (const char* mode : {"TF", "FT"}) {
    EXPECT_EQ(Hourly(Table(rows, mode)),
              "1,3: 'S/2011\n5,1: =01/10 '06:00 150/=01/10 '07:00 90 12.5/"
              "=01/10 '08:00 150 'yok  'Maksimum '06:10 155 7/=01/10 '09:00 90   'Minimum '07:10 85.5\n"
              "red 7,6-9\nblue 8,6-9\nline 8,1-9\n");
  }
  EXPECT_EQ(Daily(Table(rows, "")),
            "1,4: 'S\n1,1: 2011\n5,2: '01/10/2010 '06:10 155 7\n5,6: '07:10 85.5  137\n");
  EXPECT_EQ(Daily(Table(rows, "FT")),
            "1,4: 'S\n1,1: 2011\n5,2: '01/10/2010 '06:00 150\n5,6: '07:00 90 12.5 137\n")
      << "the earliest of equals";
  EXPECT_FALSE(ReadExtremeMode(u"ft"));
}

TEST(LevelTable, ADayWithoutExtremesGetsANoteAndLeaksNothing) {
  const LevelTable table = Table(
      "30/10/2010 12:00 100\n31/10/2010 06:00 100; 12:00 100; 12:00 101 Max\n"
      "01/11/2010 12:00 200; 12:00 200 Min\n02/11/2010 12:00 200\n"
      "03/11/2010 12:00 250 Min\n04/11/2010 12:00 200");
  EXPECT_EQ(Figures(table),
            "34: 1, 72000, 720\n35: 2, 72000, 720\n40: 1, 144000, 720\n41: 1, 144000, 720\n42: 0, 0, 0\n"
            "43: 1, 144000, 720\n");
  EXPECT_EQ(Daily(table),
            "1,4: 'S\n1,1: 2011\n35,2: '31/10/2010 '12:00 101\n40,6: '12:00 200  200\n"
            "42,6: '12:00 250\n");
  // None before the first day, none at the open end; a record has the place of a note.
  const std::string note =
      "'Cihaz Bu Günün Sonunda Çalışır Durumda Olmadığı İçin EXTREMLER KAYDEDİLEMEMİŞTİR.";
  EXPECT_EQ(Hourly(table),
            "1,3: 'S/2011\n5,1: =30/10 '12:00 100   " + note +
                "/=31/10 '06:00 100   'Maksimum '12:00 101/=31/10 '12:00 100   " + note +
                "/=01/11 '12:00 200   'Minimum '12:00 200/=02/11 '12:00 200   'Minimum '12:00 250"
                "/=04/11 '12:00 200\nred 6,6-9\nblue 8,6-9\nblue 9,6-9\n"
                "line 5,1-9\nline 7,1-9\nline 9,1-9\nline 8,1-9\nline 9,1-9\n");
}

TEST(LevelTable, ComputedExtremesAreOfTheirOwnDayAndRecordsBeforeAnyReadingStandAbove) {
  const LevelTable table = Table(
      "01/10/2010 12:00 99 Max; 12:00 98 Min\n02/10/2010 12:00 500\n03/10/2010 12:00 501 Max; 12:00 50 Min\n"
      "04/10/2010 12:00 200; 12:00 201 Max; 12:00 199 Min",
      "FT");
  EXPECT_EQ(Daily(table), "1,4: 'S\n1,1: 2011\n8,2: '04/10/2010 '12:00 200\n8,6: '12:00 200  200\n");
  EXPECT_TRUE(
      Hourly(table).starts_with("1,3: 'S/2011\n3,6: 'Maksimum '12:00 99\n4,6: 'Maksimum '12:00 501\n"));
}

TEST(LevelTable, RepeatedReadingsAddNothingAndARepeatedDayIsWrittenOver) {
  LevelTable table = Table(
      "30/09/2010 12:00 1\n01/10/2010 12:00 100; 12:00 100; 12:00 99 Min\n02/10/2010 12:00 7; 12:00 7 Min\n"
      "01/10/2010 12:00 300; 12:00 299 Min\n01/10/2011 12:00 3");
  EXPECT_EQ(Figures(table), "5: 1, 216000, 720\n6: 1, 5040, 720\n");
  EXPECT_EQ(table.hourly.size(), 4U);
  table.note = QString(9000, QLatin1Char('n'));
  EXPECT_EQ(std::get<QString>(CellsOf(table).back().blocks[2].cells[0][0]).size(), 8001) << "fits a cell";
  EXPECT_EQ(Daily(table), "1,4: 'S\n1,1: 2011\n1,6: '" + std::string(99, 'n') +
                              "\n5,6: '12:00 299  300/'12:00 7  7\nred 1,6-9\ntext 1,6-9\ntext 1,4-5\n");
  EXPECT_TRUE(Hourly(table).ends_with("text 1,6-9\ntext 1,3-5\n"));
}

/// Q is a tenth of the level, none above 150 cm.
class Tenth : public DischargeSource {
 public:
  [[nodiscard]] DischargeValue At(DateTime /*time*/, double levelCm) const override {
    if (levelCm > 150) return {0, DischargeFlag::TooHigh};
    return {levelCm / 10, levelCm > 120 ? DischargeFlag::ExtrapolatedAbove : DischargeFlag::None};
  }
  [[nodiscard]] Message Explain(DateTime /*time*/, DischargeFlag /*flag*/) const override { return {}; }
};

TEST(LevelTable, ARatingCurveAddsDischargesAndChangesNothingElse) {
  std::vector<Reading> readings(49);
  for (std::size_t i = 0; i < readings.size(); ++i) {
    const auto hour = static_cast<int>(i) + 1;  // the 24th ends its day
    readings[i].day = WaterYearFirstDay(2011) + std::chrono::days(static_cast<int>(i) / 24);
    readings[i].minuteOfDay = static_cast<std::int16_t>(hour % 24 == 0 ? 1439 : hour % 24 * 60);
    readings[i].levelCm = i < 24 ? 100 : i < 36 ? 130 : 160;
  }
  Reading record = readings[23];
  record.kind = ReadingKind::Maximum;
  readings.insert(readings.begin() + 24, record);
  record.kind = ReadingKind::Minimum;
  readings.insert(readings.begin() + 25, record);
  record = readings[49];
  record.kind = ReadingKind::Maximum;
  readings.insert(readings.begin() + 50, record);
  record.kind = ReadingKind::Minimum;
  readings.insert(readings.begin() + 51, record);
  StationSeries series(readings);
  const auto plain = CellsOf(ComputeLevelTable(series, 2011, ExtremeMode::Computed, {}, false));
  series.SetCurve(std::make_shared<Tenth>());
  const LevelTable table = ComputeLevelTable(series, 2011, ExtremeMode::Computed, {}, false);
  ASSERT_GE(table.days.size(), 2U);
  EXPECT_NEAR(*table.days[0].discharge->meanM3s, 10, 1e-12);
  const DischargeDay& second = *table.days[1].discharge;
  EXPECT_NEAR(*second.meanM3s, 13, 1e-12) << "of the discharges there are, not of the mean level";
  EXPECT_TRUE(second.Partial());
  EXPECT_TRUE(second.tooHigh);
  const auto cells = CellsOf(table);
  ASSERT_EQ(cells.size(), plain.size());
  const std::size_t more = cells[0].blocks.size() - plain[0].blocks.size();
  EXPECT_EQ(more, 2U) << "a heading and a run of days in columns 10 and 11";
  const PlacedBlock& days = cells[0].blocks.back();
  EXPECT_EQ(days.column, 10);
  EXPECT_EQ(days.row, 5);
  EXPECT_EQ(std::get<double>(days.cells[0][0]), 10);
  EXPECT_TRUE(std::get<QString>(days.cells[1][1]).startsWith(QStringLiteral("* %")));
}

TEST(NotesOfTable, RecordsThatContradictCorrectionsMatterOnlyWhereTheyAreTaken) {
  StationSeries grid = GridOf("12/01/2011 06:00 100; 12:00 110; 12:00 110 Max; 06:00 100 Min");
  RowState corrected = grid.Raw().StateOf(2);
  corrected.levelCm = 572;
  grid.SetState({.rawRow = 2}, corrected);
  const Message missing = Wording{u"yok", u"missing"};
  EXPECT_EQ(NotesOfTable(missing, grid, ExtremeMode::Computed, LanguageChoice::English, 2011),
            std::vector{QStringLiteral("missing")});
  const auto notes = NotesOfTable(missing, grid, ExtremeMode::Recorded, LanguageChoice::Turkish, 2011);
  ASSERT_EQ(notes.size(), 2U);
  EXPECT_EQ(notes[0], QStringLiteral("yok"));
  EXPECT_TRUE(notes[1].endsWith(QStringLiteral(": 12/01/2011 Max 110 → 572"))) << notes[1].toStdString();
}

TEST(WriteLevelTable, ReadingsBeyondTheLastRowAreCountedAndTheRestIsComplete) {
  LevelTable table;
  for (int i = 0; i < 12'040; ++i) table.hourly.push_back({WaterYearFirstDay(2011), {i % 1440, 1.0 * i, {}}});
  table.records = {{10'004, false, {1, 90, {}}}, {10'005, true, {1, 99, {}}}, {10'006, false, {1, 9, {}}}};
  table.days = {{WaterYearFirstDay(2011), 5, {}, LevelAt{60, 90, {}}, {}}};
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
  RecordedSheet& hourly = office.sheets[kHourlySheet];
  EXPECT_EQ(hourly.cells.rbegin()->first.first, 10'004);
  EXPECT_EQ(hourly.formatted.size(), 2U) << "colour and line of one record";
  EXPECT_LT(hourly.calls, 10);
  EXPECT_TRUE(std::ranges::is_sorted(told) && told.front() == 0 && told.back() == 1100);
}

}  // namespace
}  // namespace vesk::test
