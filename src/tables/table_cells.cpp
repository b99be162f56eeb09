#include "tables/table_cells.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"

namespace vesk {
namespace {

constexpr int kHourlyColumns = 9;
constexpr int kRecordColumn = 6;
constexpr int kMaximumColumn = 2;
constexpr int kMinimumColumn = 6;
constexpr int kDischargeColumn = 10;
constexpr CellRange kNoteCells{1, 6, 1, 9};  // beside the title, on every printed page
constexpr double kNoteHeightCm = 0.95;       // two lines of title, three of note; two months still fit a page
constexpr double kNotePoints = 7;
constexpr double kTitlePoints = 11;
constexpr qsizetype kLongestNote = 8'000;  // letters; a cell holds 32,767

QString NoExtremesNote() {
  return QStringLiteral("Cihaz Bu Günün Sonunda Çalışır Durumda Olmadığı İçin EXTREMLER KAYDEDİLEMEMİŞTİR.");
}

using Row = std::vector<CellValue>;

/// A number where the text reads as one, nothing when it is empty.
CellValue DischargeValue(const QString& discharge) {
  if (discharge.trimmed().isEmpty()) return {};
  if (const std::optional<double> number = ReadWholeNumber(discharge)) return *number;
  return discharge;
}

Row ValuesOf(const LevelAt& value) {
  return {ClockText(value.minuteOfDay), value.levelCm, DischargeValue(value.discharge)};
}

CellRange WholeRow(int row) {
  return {row, 1, row, kHourlyColumns};
}

/// The note beside the title, which then has to do with the columns before it.
void AddNote(const QString& note, const CellRange& title, SheetCells& sheet) {
  if (note.isEmpty()) return;
  const QString text = note.size() > kLongestNote ? note.left(kLongestNote) + QChar(0x2026) : note;
  sheet.blocks.push_back({kNoteCells.firstRow, kNoteCells.firstColumn, {Row{text}}});
  sheet.textCells = {{kNoteCells, kNoteHeightCm, kNotePoints}, {title, kNoteHeightCm, kTitlePoints}};
  sheet.colours[FontColour::Red].push_back(kNoteCells);
}

/// What stands in columns 6 to 9 of a row of the hourly sheet.
struct Beside {
  Row cells;
  std::optional<FontColour> colour;
};

Beside BesideOf(const HourlyRecord& record) {
  Beside beside{ValuesOf(record.value), record.maximum ? FontColour::Red : FontColour::LightBlue};
  beside.cells.insert(beside.cells.begin(),
                      record.maximum ? QStringLiteral("Maksimum") : QStringLiteral("Minimum"));
  return beside;
}

/// A later record takes the place of an earlier one, and of a note.
std::map<int, Beside> BesideReadings(const LevelTable& table) {
  std::map<int, Beside> rows;
  for (const int row : table.missingExtremesRows) rows[row] = {{NoExtremesNote()}, {}};
  for (const HourlyRecord& record : table.records) rows[record.row] = BesideOf(record);
  return rows;
}

CellBlock ReadingRows(const LevelTable& table) {
  CellBlock rows;
  rows.reserve(table.hourly.size());
  for (const HourlyReading& reading : table.hourly) {
    Row& cells = rows.emplace_back(kHourlyColumns);
    cells[0] = reading.day;
    std::ranges::move(ValuesOf(reading.value), cells.begin() + 1);
  }
  return rows;
}

/// Beside its reading; records of a first day with no or one reading stand in the heading rows.
void PlaceBeside(int row, Row cells, CellBlock& readings, SheetCells& sheet) {
  const int index = row - kFirstHourlyRow;
  if (index >= 0 && index < static_cast<int>(readings.size())) {
    std::ranges::move(cells, readings[static_cast<std::size_t>(index)].begin() + kRecordColumn - 1);
  } else {
    sheet.blocks.push_back({row, kRecordColumn, {std::move(cells)}});
  }
}

SheetCells HourlyCells(const LevelTable& table) {
  SheetCells sheet{.part = TablePart::Hourly, .sheet = kHourlySheet};
  sheet.blocks.push_back({1, 3, {Row{table.title}, Row{static_cast<double>(table.waterYear)}}});
  AddNote(table.note, {1, 3, 1, 5}, sheet);
  for (const int row : table.missingExtremesRows) sheet.linesBelow.push_back(WholeRow(row));
  for (const HourlyRecord& record : table.records) {
    if (!record.maximum) sheet.linesBelow.push_back(WholeRow(record.row));
  }
  CellBlock readings = ReadingRows(table);
  for (auto& [row, beside] : BesideReadings(table)) {
    if (beside.colour) sheet.colours[*beside.colour].push_back({row, kRecordColumn, row, kHourlyColumns});
    PlaceBeside(row, beside.cells, readings, sheet);
  }
  if (!readings.empty()) sheet.blocks.push_back({kFirstHourlyRow, 1, std::move(readings)});
  return sheet;
}

/// Rows that follow one another in one block each.
void AddRuns(int column, const std::map<int, Row>& rows, SheetCells& sheet) {
  int next = 0;
  for (const auto& [row, cells] : rows) {
    if (row != next) sheet.blocks.push_back({row, column, {}});
    sheet.blocks.back().cells.push_back(cells);
    next = row + 1;
  }
}

Row MaximumCells(const DayRecord& day) {
  Row cells = ValuesOf(*day.maximum);
  cells.insert(cells.begin(), DateText(day.day));
  return cells;
}

Row MinimumCells(const DayRecord& day) {
  Row cells = ValuesOf(*day.minimum);
  cells.push_back(day.meanCm ? CellValue(*day.meanCm) : CellValue());
  return cells;
}

/// Column 10: the mean discharge as its figure has it, a number; column 11: what is to be known of it.
Row DischargeCells(const DischargeDay& day) {
  constexpr double kPercent = 100;
  QStringList marks;
  if (day.extrapolated) marks += QString(QChar(kFlaggedSign));
  if (day.Partial()) marks += QStringLiteral("%%1").arg(std::floor(day.share * kPercent));
  return {ReadWholeNumber(DischargeDigits(*day.meanM3s)).value_or(*day.meanM3s),
          marks.join(QLatin1Char(' '))};
}

/// Only a table with a rating curve has them.
void AddDischarges(const LevelTable& table, SheetCells& sheet) {
  std::map<int, Row> means;
  for (const DayRecord& day : table.days) {
    if (day.minimum && day.meanCm && day.discharge && day.discharge->meanM3s)
      means[day.sheetRow] = DischargeCells(*day.discharge);
  }
  if (means.empty()) return;
  sheet.blocks.push_back({2, kDischargeColumn, {Row{QStringLiteral("Q")}, Row{QStringLiteral("m3/s")}}});
  AddRuns(kDischargeColumn, means, sheet);
}

SheetCells DailyCells(const LevelTable& table) {
  SheetCells sheet{.part = TablePart::Daily, .sheet = kDailySheet};
  sheet.blocks.push_back({1, 4, {Row{table.title}}});
  sheet.blocks.push_back({1, 1, {Row{static_cast<double>(table.waterYear)}}});
  AddNote(table.note, {1, 4, 1, 5}, sheet);
  std::map<int, Row> maxima;
  std::map<int, Row> minima;
  for (const DayRecord& day : table.days) {
    if (day.maximum) maxima[day.sheetRow] = MaximumCells(day);
    if (day.minimum) minima[day.sheetRow] = MinimumCells(day);
  }
  AddRuns(kMaximumColumn, maxima, sheet);
  AddRuns(kMinimumColumn, minima, sheet);
  AddDischarges(table, sheet);
  return sheet;
}

/// The places that a template for discharges keeps for them.
SheetCells MonthlyCells(const LevelTable& table) {
  constexpr int kCatchmentRow = 55, kCatchmentColumn = 12, kCurveRow = 56;
  SheetCells sheet{.part = TablePart::Daily, .sheet = kMonthlySheet};
  if (table.catchmentKm2)
    sheet.blocks.push_back({kCatchmentRow, kCatchmentColumn, {Row{*table.catchmentKm2}}});
  sheet.blocks.push_back({kCurveRow, 1, {Row{table.curveText}}});
  return sheet;
}

}  // namespace

std::vector<SheetCells> CellsOf(const LevelTable& table) {
  std::vector<SheetCells> sheets;
  if (table.withHourly) sheets.push_back(HourlyCells(table));
  sheets.push_back(DailyCells(table));
  if (!table.curveText.isEmpty()) sheets.push_back(MonthlyCells(table));
  return sheets;
}

}  // namespace vesk
