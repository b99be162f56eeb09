// Which column of a table of gaugings holds what, and which decimal mark its figures have.
#pragma once

#include <QString>

#include <array>
#include <vector>

#include "datafiles/gauging_fields.h"
#include "platform/result.h"
#include "platform/separated_text.h"

namespace vesk {

/// Columns by their place; -1: there is none.
struct GaugingColumns {
  std::array<int, kGaugingFields.size()> of = {-1, -1, -1, -1, -1, -1, -1, -1};
  int clock = -1;  ///< clock time beside a date in a column of its own
  int count = 0;   ///< cells of a whole line
  bool header = false;
  std::vector<Message> unknown;  ///< names that are left out

  [[nodiscard]] int Of(GaugingField field) const { return of[static_cast<std::size_t>(field)]; }
};

/// By the header in the first line, or by their order when that is none. Fails, with the reason alone, when
/// one is named twice, one that must be there is not, or a name leaves its unit open.
Result<GaugingColumns, Message> FindGaugingColumns(const std::vector<CellLine>& lines);

/// True when a cell names a column and none holds a figure.
bool IsGaugingHeader(const QStringList& cells);

/// Tells decimal marks from marks of thousands by all figures of a table.
class DecimalMarks {
 public:
  DecimalMarks(const std::vector<CellLine>& lines, const GaugingColumns& columns, QChar separator);
  /// True when its mark may part thousands: "1.234" where others have decimal commas, or where nothing else
  /// shows which mark they have.
  [[nodiscard]] bool Ambiguous(const QString& figure) const;

 private:
  bool commasPartCells_;
  bool comma_ = false;  ///< some figure has a comma that can only be a decimal mark
  bool point_ = false;
};

/// A cell without the apostrophe that keeps spreadsheets from taking a text for a formula, and the other way
/// round for what that leaves open: a text that begins with an apostrophe itself.
QString WithoutGuard(const QString& cell);
QString WithGuard(const QString& text);

}  // namespace vesk
