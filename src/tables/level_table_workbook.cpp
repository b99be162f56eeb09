#include "tables/level_table_workbook.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <utility>

namespace vesk {
namespace {

constexpr int kRed = 3;         // font colour of a maximum
constexpr int kLightBlue = 41;  // font colour of a minimum
constexpr int kHourlyColumns = 9;
constexpr int kRecordColumn = 6;
constexpr int kRowsAtOnce = 5'000;  // of the hourly sheet; keeps the progress moving and each call short
constexpr int kMaximumColumn = 2;
constexpr int kMinimumColumn = 6;
constexpr CellRange kNoteCells{1, 6, 1, 9};  // beside the title, on every printed page
constexpr double kNoteHeightCm = 0.95;       // two lines of title, three of note; two months still fit a page
constexpr double kNotePoints = 7;
constexpr double kTitlePoints = 11;
constexpr qsizetype kLongestNote = 8'000;  // letters; a cell holds 32,767
constexpr int kHourlyShare = 90;           // percent

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

Row RecordCells(const HourlyRecord& record) {
  Row cells = ValuesOf(record.value);
  cells.insert(cells.begin(), record.maximum ? QStringLiteral("Maksimum") : QStringLiteral("Minimum"));
  return cells;
}

CellRange RecordRange(int row) {
  return {row, kRecordColumn, row, kHourlyColumns};
}
CellRange WholeRow(int row) {
  return {row, 1, row, kHourlyColumns};
}

/// The note beside the title, which then has to do with the columns before it.
Status WriteNote(const QString& note, const CellRange& title, Worksheet& sheet, WriteReport& report) {
  if (note.isEmpty()) return {};
  const QString text = note.size() > kLongestNote ? note.left(kLongestNote) + QChar(0x2026) : note;
  if (Status done = sheet.PutValue(kNoteCells.firstRow, kNoteCells.firstColumn, text); !done) return done;
  for (const Status& step : {sheet.MakeTextBlock(kNoteCells, kNoteHeightCm, kNotePoints),
                             sheet.MakeTextBlock(title, kNoteHeightCm, kTitlePoints),
                             sheet.SetFontColourIndex({kNoteCells}, kRed)}) {
    if (!step) report.warnings.push_back(step.Failure());
  }
  return {};
}

/// Fills the hourly sheet.
class HourlyWriter {
 public:
  HourlyWriter(const LevelTable& table, Worksheet& sheet, WriteReport& report)
      : table_(table), sheet_(sheet), report_(report), lastRow_(LastRow()) {}

  Status Write(const WriteProgress& progress) {
    CollectBesideReadings();
    if (Status done = sheet_.PutValue(1, 3, table_.title); !done) return done;
    if (Status done = sheet_.PutValue(2, 3, static_cast<double>(table_.waterYear)); !done) return done;
    if (Status done = WriteNote(table_.note, {1, 3, 1, 5}, sheet_, report_); !done) return done;
    for (int first = kFirstHourlyRow; first <= lastRow_; first += kRowsAtOnce) {
      const int last = std::min(lastRow_, first + kRowsAtOnce - 1);
      if (Status done = sheet_.PutBlock(first, 1, Block(first, last)); !done) return done;
      Forgive(sheet_.SelectCell(last, 1));  // the sheet follows the writing
      const int rows = lastRow_ - kFirstHourlyRow + 1;
      const auto percent = static_cast<int>(1LL * kHourlyShare * (last - kFirstHourlyRow + 1) / rows);
      if (!progress(TablePart::Hourly, percent)) return {};
    }
    if (Status done = WriteAboveReadings(); !done) return done;
    Format();
    return {};
  }

 private:
  [[nodiscard]] int LastRow() {
    const int wanted = kFirstHourlyRow - 1 + static_cast<int>(table_.hourly.size());
    const int last = std::min(wanted, sheet_.RowLimit());
    report_.hourlyRowsLeftOut = wanted - last;
    return last;
  }

  [[nodiscard]] bool IsWritten(int row) const { return row >= 1 && row <= lastRow_; }

  /// What stands in columns 6 to 9. A later record takes the place of an earlier one, and of a note.
  void CollectBesideReadings() {
    for (const int row : table_.missingExtremesRows) {
      if (!IsWritten(row)) continue;
      beside_[row] = {NoExtremesNote()};
      underlined_.push_back(WholeRow(row));
    }
    for (const HourlyRecord& record : table_.records) {
      if (!IsWritten(record.row)) continue;
      beside_[record.row] = RecordCells(record);
      colourOf_[record.row] = record.maximum ? kRed : kLightBlue;
      if (!record.maximum) underlined_.push_back(WholeRow(record.row));
    }
  }

  [[nodiscard]] CellBlock Block(int firstRow, int lastRow) const {
    CellBlock block;
    block.reserve(static_cast<std::size_t>(lastRow) - static_cast<std::size_t>(firstRow) + 1);
    auto beside = beside_.lower_bound(firstRow);
    for (int row = firstRow; row <= lastRow; ++row) {
      const HourlyReading& reading = table_.hourly[static_cast<std::size_t>(row - kFirstHourlyRow)];
      Row& cells = block.emplace_back(kHourlyColumns);
      cells[0] = reading.day;
      std::ranges::move(ValuesOf(reading.value), cells.begin() + 1);
      if (beside == beside_.end() || beside->first != row) continue;
      std::ranges::copy(beside->second, cells.begin() + kRecordColumn - 1);
      ++beside;
    }
    return block;
  }

  /// Records of a first day with no or one reading stand in the heading rows.
  Status WriteAboveReadings() {
    for (const auto& [row, cells] : beside_) {
      if (row >= kFirstHourlyRow) break;
      if (Status done = sheet_.PutBlock(row, kRecordColumn, {cells}); !done) return done;
    }
    return {};
  }

  void Format() {
    std::array<std::vector<CellRange>, 2> coloured;
    for (const auto& [row, colour] : colourOf_) coloured[colour == kRed ? 0 : 1].push_back(RecordRange(row));
    Forgive(sheet_.SetFontColourIndex(coloured[0], kRed));
    Forgive(sheet_.SetFontColourIndex(coloured[1], kLightBlue));
    Forgive(sheet_.SetBorder(underlined_, Border::Bottom, BorderWeight::Medium));
  }

  /// For steps that change no figure.
  void Forgive(const Status& step) {
    if (!step) report_.warnings.push_back(step.Failure());
  }

  const LevelTable& table_;
  Worksheet& sheet_;
  WriteReport& report_;
  const int lastRow_;
  std::map<int, Row> beside_;
  std::map<int, int> colourOf_;
  std::vector<CellRange> underlined_;
};

/// Writes rows that follow one another in one block each; what stands between them is the template's.
Status PutRuns(Worksheet& sheet, int column, const std::map<int, Row>& rows) {
  auto first = rows.begin();
  while (first != rows.end()) {
    CellBlock block;
    auto next = first;
    for (; next != rows.end() && next->first == first->first + static_cast<int>(block.size()); ++next) {
      block.push_back(next->second);
    }
    if (Status done = sheet.PutBlock(first->first, column, block); !done) return done;
    first = next;
  }
  return {};
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

Status WriteDaily(const LevelTable& table, Worksheet& sheet, WriteReport& report) {
  std::map<int, Row> maxima;
  std::map<int, Row> minima;
  for (const DayRecord& day : table.days) {
    if (day.maximum) maxima[day.sheetRow] = MaximumCells(day);
    if (day.minimum) minima[day.sheetRow] = MinimumCells(day);
  }
  if (Status done = sheet.PutValue(1, 4, table.title); !done) return done;
  if (Status done = sheet.PutValue(1, 1, static_cast<double>(table.waterYear)); !done) return done;
  if (Status done = WriteNote(table.note, {1, 4, 1, 5}, sheet, report); !done) return done;
  if (Status done = PutRuns(sheet, kMaximumColumn, maxima); !done) return done;
  return PutRuns(sheet, kMinimumColumn, minima);
}

}  // namespace

Result<WriteReport> WriteLevelTable(const LevelTable& table, bool withHourly, Workbook& workbook,
                                    const WriteProgress& progress) {
  WriteReport report;
  const auto goesOn = [&](TablePart part, int percent) {
    report.stopped = report.stopped || !progress(part, percent);
    return !report.stopped;
  };
  auto daily = workbook.Sheet(QStringLiteral("Gunluk"));
  if (!daily) return daily.Failure();
  Status selected = (*daily)->Select();
  if (withHourly) {
    auto hourly = workbook.Sheet(QStringLiteral("Saatlik"));
    if (hourly) {
      selected = (*hourly)->Select();
      if (!goesOn(TablePart::Hourly, 0)) return report;
      if (Status done = HourlyWriter(table, **hourly, report).Write(goesOn); !done) return done.Failure();
    } else {
      report.warnings.push_back(hourly.Failure());
    }
  }
  if (!selected) report.warnings.push_back(selected.Failure());
  if (report.stopped || !goesOn(TablePart::Daily, withHourly ? kHourlyShare : 0)) return report;
  if (Status done = WriteDaily(table, **daily, report); !done) return done.Failure();
  goesOn(TablePart::Daily, 100);
  return report;
}

}  // namespace vesk
