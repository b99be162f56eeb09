// The cells of a level table: what stands where on the sheets of its workbook, as plain data. The workbook is
// written from them, and what was written can be compared with them.
#pragma once

#include <QLatin1String>
#include <QString>

#include <map>
#include <vector>

#include "platform/spreadsheet.h"
#include "tables/level_table.h"

namespace vesk {

/// The sheets of a template.
inline constexpr QLatin1String kHourlySheet("Saatlik");
inline constexpr QLatin1String kDailySheet("Gunluk");
inline constexpr QLatin1String kMonthlySheet("Aylik");

enum class TablePart { Hourly, Daily };

/// Cells that lie together.
struct PlacedBlock {
  int row = 1, column = 1;  ///< of the upper left cell
  CellBlock cells;
};

/// Cells of one row that become one, for a text of several lines.
struct TextCell {
  CellRange cells;
  double heightCm = 0;  ///< of the row
  double points = 0;    ///< size of the letters
};

struct SheetCells {
  TablePart part{};
  QString sheet;  ///< its name
  std::vector<PlacedBlock> blocks =
      {};  ///< none lies over another; what stands between them is the template's
  std::map<FontColour, std::vector<CellRange>> colours = {};
  std::vector<CellRange> linesBelow = {};  ///< a line along their lower edge
  std::vector<TextCell> textCells = {};
};

/// The sheets in the order of their writing: the hourly one, where the table has it, then the daily one. The
/// monthly sheet shows what its own formulas make of the daily one; of a table that names its rating curve it
/// is told that, too.
std::vector<SheetCells> CellsOf(const LevelTable& table);

}  // namespace vesk
