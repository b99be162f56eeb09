#include "selection/review_grid_view.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>

#include <algorithm>
#include <array>

#include "review/review_grid_model.h"
#include "selection/review_grid_delegate.h"

namespace vesk {
namespace {

constexpr int kCellMargins = 12;  // pixels left and right of a cell's text together
constexpr const char* kWidestTexts[kGridColumns] = {"00/00/0000", "00:00", "-000.0", "000.00",
                                                    "00-Max",     "999",   "-000.0"};

}  // namespace

ReviewGridView::ReviewGridView(QWidget* parent) : QTableView(parent) {
  setItemDelegate(new ReviewGridDelegate(this));
  setSelectionMode(QAbstractItemView::ContiguousSelection);
  setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::DoubleClicked);
  setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setTabKeyNavigation(false);  // Tab goes on to the next control
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  horizontalHeader()->setMinimumSectionSize(20);
  horizontalHeader()->setHighlightSections(false);
  auto* copy = new QShortcut(QKeySequence::Copy, this);
  copy->setContext(Qt::WidgetShortcut);  // an open editor copies its own text
  connect(copy, &QShortcut::activated, this, &ReviewGridView::CopySelection);
}

void ReviewGridView::SetGridModel(ReviewGridModel& model, RowSelection& selection) {
  model_ = &model;
  selection_ = &selection;
  setModel(&model);
  connect(&selection, &RowSelection::CurrentChanged, this, [this](int row) {
    if (row == CurrentRow()) return;
    const int column = std::max(currentIndex().column(), 0);
    GoTo(row, static_cast<GridColumn>(column), false);
  });
  connect(&selection, &RowSelection::RangeChanged, this, [this](int first, int last) {
    const QItemSelection selected = selectionModel()->selection();
    const bool same =
        !selected.isEmpty() && selected.first().top() + 1 == first && selected.first().bottom() + 1 == last;
    if (!same) SelectRows(first, last);
  });
  int least = 0;
  for (int column = 0; column < kGridColumns; ++column) {
    least += ReviewGridModel::ColumnWidthPixels(static_cast<GridColumn>(column));
  }
  setMinimumWidth(least / 2);
  ShareWidth();
}

void ReviewGridView::GoTo(int gridRow, GridColumn column, bool atTop) {
  if (model_ == nullptr) return;
  const QModelIndex index = model_->IndexOf(gridRow, column);
  if (!index.isValid()) return;
  const bool inView = viewport()->rect().contains(visualRect(index).center());
  setCurrentIndex(index);
  // A row that is gone to from afar stands in the middle, with what is around it.
  const auto hint = inView ? QAbstractItemView::EnsureVisible : QAbstractItemView::PositionAtCenter;
  scrollTo(index, atTop ? QAbstractItemView::PositionAtTop : hint);
}

void ReviewGridView::SelectRows(int first, int last) {
  if (model_ == nullptr) return;
  const QModelIndex from = model_->IndexOf(first, GridColumn::Date);
  const QModelIndex to = model_->IndexOf(last, GridColumn::Baseline);
  if (from.isValid() && to.isValid())
    selectionModel()->select(QItemSelection(from, to), QItemSelectionModel::ClearAndSelect);
}

int ReviewGridView::CurrentRow() const {
  return currentIndex().isValid() ? ReviewGridModel::GridRow(currentIndex()) : 0;
}

void ReviewGridView::reset() {
  QTableView::reset();
  if (selection_.isNull()) return;
  selection_->SetCurrent(0);
  selection_->SetRange(0, 0);
}

void ReviewGridView::CopySelection() const {
  if (model_ == nullptr || selectionModel() == nullptr) return;
  QGuiApplication::clipboard()->setText(model_->SelectionText(selectionModel()->selection()));
}

void ReviewGridView::FinishEditing() {
  const QWidget* focus = QApplication::focusWidget();
  if (focus != nullptr && viewport()->isAncestorOf(focus))
    setFocus();  // an editor commits when it loses the focus
}

void ReviewGridView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  ShareWidth();
}

void ReviewGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!selection_.isNull()) selection_->SetCurrent(CurrentRow());
}

void ReviewGridView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  if (selection_.isNull()) return;
  const QItemSelection all = selectionModel()->selection();
  if (all.isEmpty()) return selection_->SetRange(0, 0);
  selection_->SetRange(all.first().top() + 1, all.first().bottom() + 1);  // the selection is contiguous
}

// Columns keep the proportions they are defined with; spare width is shared out, and too little is scrolled.
void ReviewGridView::ShareWidth() {
  if (model_ == nullptr) return;
  std::array<int, kGridColumns> least{};
  const QFontMetrics metrics(horizontalHeader()->font());
  QFont boldFont = font();  // of extreme records
  boldFont.setBold(true);
  const QFontMetrics bold(boldFont);
  int sum = 0;
  for (int column = 0; column < kGridColumns; ++column) {
    const QString title = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    int& width = least[static_cast<std::size_t>(column)];
    const QString widest = QLatin1String(kWidestTexts[column]);
    width = std::max({ReviewGridModel::ColumnWidthPixels(static_cast<GridColumn>(column)),
                      metrics.horizontalAdvance(title) + kCellMargins,
                      bold.horizontalAdvance(widest) + kCellMargins});
    sum += width;
  }
  const int room = std::max(viewport()->width(), sum);
  int left = room;
  for (int column = 0; column < kGridColumns; ++column) {
    const bool last = column == kGridColumns - 1;
    const int width = last ? left : least[static_cast<std::size_t>(column)] * room / sum;
    setColumnWidth(column, width);
    left -= width;
  }
}

}  // namespace vesk
