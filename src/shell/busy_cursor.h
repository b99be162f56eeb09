// The wait cursor, for as long as the object lives.
#pragma once

#include <QApplication>

namespace vesk {

class BusyCursor {
 public:
  BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyCursor() { QApplication::restoreOverrideCursor(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace vesk
