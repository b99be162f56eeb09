// VSsatir: the rows that were edited since loading; one that is clicked is gone to.
#pragma once

#include <QListWidget>

#include <vector>

namespace vesk {

class ChangedRowsList : public QListWidget {
  Q_OBJECT

 public:
  explicit ChangedRowsList(QWidget* parent);

  /// rows: of the grid, from 1. Only what differs is touched, so an edit costs little however many there
  /// were.
  void ShowRows(const std::vector<int>& rows);

 Q_SIGNALS:
  void RowChosen(int row);

 private:
  std::vector<int> rows_;
};

}  // namespace vesk
