#include "shell/flow_layout.h"

#include <algorithm>

namespace vesk {

FlowLayout::FlowLayout(int gap) : gap_(gap) {
  setContentsMargins(0, 0, 0, 0);
}

void FlowLayout::addItem(QLayoutItem* item) {
  items_.emplace_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
  if (index < 0 || index >= count()) return nullptr;
  QLayoutItem* item = items_[static_cast<std::size_t>(index)].release();
  items_.erase(items_.begin() + index);
  return item;
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const auto& item : items_) {
    if (!item->isEmpty()) size = size.expandedTo(item->minimumSize());
  }
  return width_ > 0 ? size.expandedTo({0, heightForWidth(width_)}) : size;
}

// The rows that a width takes are the least height from then on, so that what lies around can make room.
void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  const int heightBefore = minimumSize().height();
  width_ = rect.width();
  if (minimumSize().height() != heightBefore) update();
  Arrange(rect, true);
}

int FlowLayout::Arrange(const QRect& rect, bool place) const {
  std::vector<QLayoutItem*> row;
  int rowWidth = 0;
  int rowHeight = 0;
  int y = rect.y();
  const auto endRow = [&] {
    int x = rect.x();
    for (QLayoutItem* item : row) {
      const QSize size = item->sizeHint();  // standing on the row's lower edge
      if (place) item->setGeometry({QPoint(x, y + rowHeight - size.height()), size});
      x += size.width() + gap_;
    }
    y += rowHeight + gap_;
    row.clear();
    rowWidth = rowHeight = 0;
  };
  for (const auto& item : items_) {
    if (item->isEmpty()) continue;
    const QSize size = item->sizeHint();
    if (!row.empty() && rowWidth + size.width() > rect.width()) endRow();
    row.push_back(item.get());
    rowWidth += size.width() + gap_;
    rowHeight = std::max(rowHeight, size.height());
  }
  if (!row.empty()) endRow();
  return std::max(0, y - gap_ - rect.y());
}

}  // namespace vesk
