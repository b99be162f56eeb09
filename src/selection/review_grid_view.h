// The review grid on screen: fixed row heights, columns that share the width, copying as tab-separated text.
#pragma once

#include <QTableView>

#include "review/review_grid.h"

namespace vesk {

class ReviewGridModel;

class ReviewGridView : public QTableView {
  Q_OBJECT

 public:
  explicit ReviewGridView(QWidget* parent);
  void SetGridModel(ReviewGridModel& model);

  /// Makes a cell current; atTop scrolls its row to the top of the view. Rows that are not there are ignored.
  void GoTo(int gridRow, GridColumn column, bool atTop);
  /// Selects all cells of a row; the current cell stays where it is.
  void SelectWholeRow(int gridRow);
  /// Grid row of the current cell; 0 when there is none.
  [[nodiscard]] int CurrentRow() const;
  void CopySelection() const;
  /// Takes over what stands in an open editor and closes it.
  void FinishEditing();

 Q_SIGNALS:
  void RowEntered(int gridRow);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void ShareWidth();
  ReviewGridModel* model_ = nullptr;
};

}  // namespace vesk
