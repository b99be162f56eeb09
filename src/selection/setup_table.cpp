#include "selection/setup_table.h"

#include <QHeaderView>
#include <QScrollBar>

namespace vesk {
namespace {

constexpr int kLeastValueWidth = 66;

}  // namespace

SetupTable::SetupTable(QWidget* parent) : QTableWidget(kSetupRows, 2, parent) {
  setObjectName(QStringLiteral("VS0"));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 3);
  horizontalHeader()->hide();
  for (int row = 0; row < kSetupRows; ++row) {
    auto* label = new QTableWidgetItem(SetupLabels()[static_cast<std::size_t>(row)]);
    label->setFlags(Qt::ItemIsEnabled);
    setItem(row, 0, label);
    auto* value = new QTableWidgetItem;
    value->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setItem(row, 1, value);
  }
  horizontalHeader()->setMinimumSectionSize(kLeastValueWidth);
  resizeColumnToContents(0);
  // Values share what the labels leave and carry a tool tip; no scroll bar may hide them.
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumWidth(columnWidth(0) + kLeastValueWidth + verticalScrollBar()->sizeHint().width());
  horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
}

void SetupTable::ShowCells(const SetupCells& cells) {
  for (int row = 0; row < kSetupRows; ++row) {
    QTableWidgetItem* value = item(row, 1);
    value->setText(cells[static_cast<std::size_t>(row)]);
    value->setToolTip(value->text());
  }
}

}  // namespace vesk
