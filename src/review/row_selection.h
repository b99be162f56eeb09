// Which row of a series is looked at, and which rows are selected: one object that the review grid writes and
// that whatever shows the same series watches and may write as well.
#pragma once

#include <QObject>

namespace vesk {

/// Rows count from 1, as shown; 0: none.
class RowSelection : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  [[nodiscard]] int Current() const { return current_; }
  /// Both ends included; 0 and 0 when nothing is selected.
  [[nodiscard]] int First() const { return first_; }
  [[nodiscard]] int Last() const { return last_; }

  void SetCurrent(int row);
  /// first: not above last.
  void SetRange(int first, int last);

 Q_SIGNALS:
  void CurrentChanged(int row);
  void RangeChanged(int first, int last);

 private:
  int current_ = 0;
  int first_ = 0, last_ = 0;
};

}  // namespace vesk
