#include "review/row_selection.h"

namespace vesk {

void RowSelection::SetCurrent(int row) {
  if (row == current_) return;
  current_ = row;
  Q_EMIT CurrentChanged(row);
}

void RowSelection::SetRange(int first, int last) {
  if (first == first_ && last == last_) return;
  first_ = first;
  last_ = last;
  Q_EMIT RangeChanged(first, last);
}

}  // namespace vesk
