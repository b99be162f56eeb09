// The order in which Tab walks through the controls of a window.
#pragma once

#include <QWidget>

#include <initializer_list>

namespace vesk {

inline void ChainTabOrder(std::initializer_list<QWidget*> controls) {
  QWidget* previous = nullptr;
  for (QWidget* control : controls) {
    if (previous != nullptr) QWidget::setTabOrder(previous, control);
    previous = control;
  }
}

}  // namespace vesk
