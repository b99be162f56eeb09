// Writes the cells of a level table into a workbook made from the template.
#pragma once

#include <functional>
#include <vector>

#include "platform/result.h"
#include "platform/spreadsheet.h"
#include "tables/table_cells.h"

namespace vesk {

/// Called before a part is begun and as it goes on, with the share of all the work done, 0 to 100. False: to
/// write no further.
using WriteProgress = std::function<bool(TablePart part, int percent)>;

struct WriteReport {
  bool stopped = false;         ///< by the progress; the workbook is half filled
  int hourlyRowsLeftOut = 0;    ///< readings that the hourly sheet has no row for
  std::vector<Error> warnings;  ///< what is missing without harm to a figure: a sheet, a colour, a border
};

/// Fills the sheets of the table, the daily one last; the first one filled is selected for the operator to
/// watch. Fails when the daily sheet is missing or a cell cannot be written.
Result<WriteReport> WriteLevelTable(const LevelTable& table, Workbook& workbook,
                                    const WriteProgress& progress);

}  // namespace vesk
