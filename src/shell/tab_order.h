// The order in which Tab walks through the controls of a window.
#pragma once

#include <QWidget>

#include <vector>

namespace vesk {

inline void ChainTabOrder(const std::vector<QWidget*>& controls) {
  QWidget* previous = nullptr;
  for (QWidget* control : controls) {
    if (previous != nullptr) QWidget::setTabOrder(previous, control);
    previous = control;
  }
}

}  // namespace vesk
