// The table workbooks of a data directory: listing them, opening one in the office, taking one away.
#pragma once

#include <QString>

#include <functional>
#include <vector>

#include "platform/result.h"
#include "platform/spreadsheet.h"

namespace vesk {

/// Names of the files "*.xls" of a folder, matched without regard to case, in order of name.
/// A folder that is missing or cannot be read holds none.
std::vector<QString> ListStoredTables(const QString& directory);

enum class Removal { Trashed, Deleted };

/// Moves a file into the desktop's trash, whose folder is made where the home has none yet; false when there
/// is no trash for it.
using TrashFunction = std::function<bool(const QString& path)>;
bool MoveToDesktopTrash(const QString& path);

/// Takes a workbook away: into the trash, or for good where there is none. Fails with the reason when the
/// file is still there afterwards.
Result<Removal> RemoveStoredTable(const QString& path, const TrashFunction& trash = MoveToDesktopTrash);

/// Opens a workbook before the operator's eyes, on its daily sheet. Only a workbook that cannot be opened is
/// a failure: one without that sheet stays on the sheet it was saved on. Its macros run only where the
/// office's own settings let them: anybody can put a file into the folder.
Status OpenStoredTable(Spreadsheet& office, const QString& path);

}  // namespace vesk
