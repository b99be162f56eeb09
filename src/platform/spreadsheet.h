// What the table build expects of a spreadsheet application, whichever one it is.
// Cells are (row, column), counted from 1, as the tables are described to the operators.
#pragma once

#include <QString>

#include <chrono>
#include <memory>
#include <variant>
#include <vector>

#include "platform/result.h"

namespace vesk {

/// One cell's value. std::monostate leaves a cell empty; sys_days becomes a real date value of the sheet.
using CellValue = std::variant<std::monostate, double, QString, std::chrono::sys_days>;

/// A block of cells, rows first. All rows have the same length.
using CellBlock = std::vector<std::vector<CellValue>>;

/// Rectangle of cells, both corners included, counted from 1.
struct CellRange {
  int firstRow = 1;
  int firstColumn = 1;
  int lastRow = 1;
  int lastColumn = 1;
};

/// What a date is where a cell is read: days since 30 December 1899.
constexpr double SerialOf(std::chrono::sys_days day) {
  return static_cast<double>((day - std::chrono::sys_days{std::chrono::year{1899} / 12 / 30}).count());
}

/// Font colours, by their index in the classic palette of 56.
enum class FontColour : int { Red = 3, LightBlue = 41 };

/// A worksheet of an open workbook. Valid as long as its workbook.
class Worksheet {
 public:
  virtual ~Worksheet() = default;
  /// Makes this the sheet that the operator sees.
  virtual Status Select() = 0;
  virtual Status SelectCell(int row, int column) = 0;
  /// Writes a whole block in one call; (row, column) is its upper left cell.
  virtual Status PutBlock(int row, int column, const CellBlock& block) = 0;
  /// What a range shows, in one call: a number, a text, or nothing for an empty cell and for an empty text. A
  /// date comes back as a number (see SerialOf), a formula as its result, one in error as the text "#".
  virtual Result<CellBlock> ReadBlock(const CellRange& range) = 0;
  virtual Status SetFontColour(const std::vector<CellRange>& ranges, FontColour colour) = 0;
  /// Draws a line of medium weight (3) along the lower edge (border 4) of each range.
  virtual Status SetLineBelow(const std::vector<CellRange>& ranges) = 0;
  /// Joins a range of one row to one cell whose text runs on in further lines, and gives the row its height.
  /// heightCm: of the row; points: size of the letters.
  virtual Status MakeTextBlock(const CellRange& range, double heightCm, double points) = 0;
  /// Gives a cell the empty text for its formula: it shows nothing then.
  virtual Status EmptyFormula(int row, int column) = 0;
  /// Enters every formula of the sheet again as it stands. A formula that came out of a .xls file is saved
  /// with a number for its result even where the result is a text or empty; a formula entered anew keeps what
  /// it shows, so that programs which read a workbook without recalculating see no 0 where the sheet shows
  /// nothing.
  virtual Status ReenterFormulas() = 0;
  /// Rows of a sheet of this workbook's file format (65,536 for .xls).
  [[nodiscard]] virtual int RowLimit() const = 0;
};

/// An open workbook.
class Workbook {
 public:
  virtual ~Workbook() = default;
  /// Fails when the workbook has no sheet of that name.
  virtual Result<std::unique_ptr<Worksheet>> Sheet(const QString& name) = 0;
  /// Makes the workbook's first window visible.
  virtual Status ShowWindow() = 0;
  virtual Status RunMacro(const QString& name) = 0;
  virtual Status Save() = 0;
  /// Closes without saving and without a question.
  virtual Status Close() = 0;
};

/// Whether a workbook's own macros may run.
enum class Macros {
  AsTheOfficeSays,  ///< as the settings of the application's user say, and without asking anybody
  MayRun            ///< only for a workbook that this program has just made of its own template
};

/// A spreadsheet application: the operator's own, or a private one without a window.
class Spreadsheet {
 public:
  virtual ~Spreadsheet() = default;
  /// True when the operator has a spreadsheet window open. Always false for the private one.
  virtual bool HasOpenWindow() = 0;
  /// Opens a workbook, binding to the running application or starting one; one that is open there already is
  /// handed out as it stands.
  virtual Result<std::unique_ptr<Workbook>> Open(const QString& path, Macros macros) = 0;
  /// Makes the application visible; nothing to do for the private one.
  virtual Status Show() = 0;
  /// Recalculates all open workbooks.
  virtual Status Recalculate() = 0;
  /// Ends the application. The private one is ended for sure, also after a hang.
  virtual Status Quit() = 0;
};

}  // namespace vesk
