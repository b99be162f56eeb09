// Writes a level table into a workbook made from the template: cells in blocks, formats over collected
// ranges.
#pragma once

#include <QString>

#include <functional>
#include <vector>

#include "platform/result.h"
#include "platform/spreadsheet.h"
#include "tables/level_table.h"

namespace vesk {

enum class TablePart { Hourly, Daily };

/// Called before a part is begun and as it goes on, with the share of all the work done, 0 to 100. False: to
/// write no further.
using WriteProgress = std::function<bool(TablePart part, int percent)>;

struct WriteReport {
  bool stopped = false;         ///< by the progress; the workbook is half filled
  int hourlyRowsLeftOut = 0;    ///< readings that the hourly sheet has no row for
  std::vector<Error> warnings;  ///< what is missing without harm to a figure: a sheet, a colour, a border
};

/// Fills the sheets "Saatlik" (only withHourly) and "Gunluk"; the last one selected is the one filled for the
/// operator to watch. A note stands in row 1 of each, from column 6 on. Fails when the daily sheet is missing
/// or a cell cannot be written.
Result<WriteReport> WriteLevelTable(const LevelTable& table, bool withHourly, Workbook& workbook,
                                    const WriteProgress& progress);

}  // namespace vesk
