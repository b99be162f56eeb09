#include "selection/changed_rows_list.h"

#include <QSignalBlocker>

namespace vesk {

ChangedRowsList::ChangedRowsList(QWidget* parent) : QListWidget(parent) {
  setObjectName(QStringLiteral("VSsatir"));
  setUniformItemSizes(true);
  setMinimumHeight(2 * fontMetrics().height());
  connect(this, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
    Q_EMIT RowChosen(rows_[static_cast<std::size_t>(row(item))]);
  });
}

void ChangedRowsList::ShowRows(const std::vector<int>& rows) {
  const QSignalBlocker blocker(this);
  while (count() > static_cast<int>(rows.size())) delete takeItem(count() - 1);
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (i == count()) {
      addItem(QString::number(rows[at]));
    } else if (rows_[at] != rows[at]) {
      item(i)->setText(QString::number(rows[at]));
    }
  }
  rows_ = rows;
}

}  // namespace vesk
