// VS0: the setup parameters of the chosen file or of the load, labels beside values.
#pragma once

#include <QTableWidget>

#include "review/setup_parameters.h"

namespace vesk {

class SetupTable : public QTableWidget {
  Q_OBJECT

 public:
  explicit SetupTable(QWidget* parent);

  /// A value that is cut off by the window stands in its tool tip.
  void ShowCells(const SetupCells& cells);
};

}  // namespace vesk
