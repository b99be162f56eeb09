// The review grid on screen: fixed row heights, columns that share the width, copying as tab-separated text.
#pragma once

#include <QPointer>
#include <QTableView>

#include "review/review_grid.h"
#include "review/row_selection.h"

namespace vesk {

class ReviewGridModel;

class ReviewGridView : public QTableView {
  Q_OBJECT

 public:
  explicit ReviewGridView(QWidget* parent);
  /// selection follows the view and the view follows it; the model must outlive the view.
  void SetGridModel(ReviewGridModel& model, RowSelection& selection);

  /// Makes a cell current; atTop scrolls its row to the top of the view. Rows that are not there are ignored.
  void GoTo(int gridRow, GridColumn column, bool atTop);
  /// Selects all cells of rows, both ends included; the current cell stays where it is.
  void SelectRows(int first, int last);
  /// Grid row of the current cell; 0 when there is none.
  [[nodiscard]] int CurrentRow() const;
  void CopySelection() const;
  void reset() override;
  /// Takes over what stands in an open editor and closes it.
  void FinishEditing();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  void ShareWidth();
  ReviewGridModel* model_ = nullptr;
  QPointer<RowSelection> selection_;  ///< may go before the view does
};

}  // namespace vesk
