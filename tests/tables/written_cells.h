// Reads back what a table was to leave in its workbook.
#pragma once

#include <gtest/gtest.h>

#include "tables/table_cells.h"

namespace vesk::test {

inline CellValue AsRead(const CellValue& value) {
  const auto* day = std::get_if<std::chrono::sys_days>(&value);
  return day == nullptr ? value : SerialOf(*day);
}

inline void ExpectHolds(Workbook& workbook, const std::vector<SheetCells>& sheets, int lastRow = 65'536) {
  for (const SheetCells& cells : sheets) {
    const auto sheet = workbook.Sheet(cells.sheet);
    ASSERT_TRUE(sheet) << sheet.Failure().English().toStdString();
    for (const PlacedBlock& block : cells.blocks) {
      const int last = std::min(block.row + static_cast<int>(block.cells.size()) - 1, lastRow);
      const int width = static_cast<int>(block.cells.front().size());
      const auto read = (*sheet)->ReadBlock({block.row, block.column, last, block.column + width - 1});
      ASSERT_TRUE(read) << read.Failure().English().toStdString();
      ASSERT_EQ(static_cast<int>(read->size()), last - block.row + 1);
      for (std::size_t i = 0; i < read->size(); ++i) {
        std::vector<CellValue> wanted;
        std::ranges::transform(block.cells[i], std::back_inserter(wanted), AsRead);
        EXPECT_TRUE(read->at(i) == wanted)
            << cells.sheet.toStdString() << " row " << block.row + static_cast<int>(i);
      }
    }
  }
}

}  // namespace vesk::test
