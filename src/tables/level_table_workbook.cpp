#include "tables/level_table_workbook.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace vesk {
namespace {

constexpr std::ptrdiff_t kRowsAtOnce = 5'000;  // keeps the progress moving and each call short

int RowsOf(const SheetCells& sheet) {
  std::size_t rows = 0;
  for (const PlacedBlock& block : sheet.blocks) rows += block.cells.size();
  return static_cast<int>(rows);
}

/// Fills one sheet after another; the progress counts rows over all of them.
class TableWriter {
 public:
  TableWriter(Workbook& workbook, const WriteProgress& progress, WriteReport& report)
      : workbook_(workbook), progress_(progress), report_(report) {}

  Status Write(std::vector<SheetCells> sheets) {
    for (const SheetCells& cells : sheets) rows_ += RowsOf(cells);
    if (Status selected = SelectFirst(sheets); !selected) return selected;
    for (SheetCells& cells : sheets) {
      auto sheet = workbook_.Sheet(cells.sheet);
      if (!sheet) continue;  // told already
      if (!GoesOn(cells.part, 0)) return {};
      if (Status done = Fill(cells, **sheet); !done) return done;
      if (report_.stopped) return {};
      Format(cells, **sheet);
    }
    return {};
  }

 private:
  /// Selects the daily sheet, then the one that is filled first.
  Status SelectFirst(const std::vector<SheetCells>& sheets) {
    auto daily = workbook_.Sheet(kDailySheet);
    if (!daily) return daily.Failure();
    Status selected = (*daily)->Select();
    if (sheets.front().part == TablePart::Hourly) {
      auto hourly = workbook_.Sheet(kHourlySheet);
      if (hourly) {
        selected = (*hourly)->Select();
      } else {
        Forgive(hourly.Failure());
        rows_ -= RowsOf(sheets.front());
      }
    }
    Forgive(selected);
    return {};
  }

  /// Without the rows that the sheet does not have.
  Status Fill(SheetCells& cells, Worksheet& sheet) {
    for (PlacedBlock& block : cells.blocks) {
      const auto rows = static_cast<int>(block.cells.size());
      const int room = std::clamp(sheet.RowLimit() - block.row + 1, 0, rows);
      if (cells.part == TablePart::Hourly) report_.hourlyRowsLeftOut += rows - room;
      rows_ -= rows - room;
      block.cells.resize(static_cast<std::size_t>(room));
      if (Status done = PutInParts(block, cells.part, sheet); !done) return done;
      if (report_.stopped) return {};
    }
    return {};
  }

  Status PutInParts(PlacedBlock& block, TablePart part, Worksheet& sheet) {
    int row = block.row;
    for (auto at = block.cells.begin(); at != block.cells.end();) {
      const auto end = at + std::min(kRowsAtOnce, block.cells.end() - at);
      const CellBlock rows(std::make_move_iterator(at), std::make_move_iterator(end));
      if (Status done = sheet.PutBlock(row, block.column, rows); !done) return done;
      row += static_cast<int>(rows.size());
      at = end;
      if (part == TablePart::Hourly) Forgive(sheet.SelectCell(row - 1, 1));  // the sheet follows the writing
      if (!GoesOn(part, static_cast<int>(rows.size()))) return {};
    }
    return {};
  }

  void Format(SheetCells& cells, Worksheet& sheet) {
    const auto beyond = [limit = sheet.RowLimit()](const CellRange& range) { return range.lastRow > limit; };
    for (auto& [colour, ranges] : cells.colours) {
      std::erase_if(ranges, beyond);
      Forgive(sheet.SetFontColour(ranges, colour));
    }
    std::erase_if(cells.linesBelow, beyond);
    Forgive(sheet.SetLineBelow(cells.linesBelow));
    for (const TextCell& text : cells.textCells)
      Forgive(sheet.MakeTextBlock(text.cells, text.heightCm, text.points));
  }

  bool GoesOn(TablePart part, int rows) {
    written_ += rows;
    report_.stopped = !progress_(part, rows_ > 0 ? static_cast<int>(100LL * written_ / rows_) : 0);
    return !report_.stopped;
  }

  /// For steps that change no figure.
  void Forgive(const Status& step) {
    if (!step) report_.warnings.push_back(step.Failure());
  }

  Workbook& workbook_;
  const WriteProgress& progress_;
  WriteReport& report_;
  int rows_ = 0;
  int written_ = 0;
};

}  // namespace

Result<WriteReport> WriteLevelTable(const LevelTable& table, Workbook& workbook,
                                    const WriteProgress& progress) {
  WriteReport report;
  if (Status done = TableWriter(workbook, progress, report).Write(CellsOf(table)); !done)
    return done.Failure();
  return report;
}

}  // namespace vesk
