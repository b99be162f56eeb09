// FormCokluSecim: a station's water years with check boxes, for choosing several at once.
#pragma once

#include <QDialog>
#include <QStringList>

#include <vector>

#include "shell/language.h"

class QListWidget;

namespace vesk {

class FormCokluSecim : public QDialog {
  Q_OBJECT

 public:
  /// waterYears: entries as the station's list shows them; chosen: places of those that are chosen already.
  FormCokluSecim(const QStringList& waterYears, const std::vector<int>& chosen, const Language& language,
                 QWidget* parent = nullptr);

  /// Places of the checked entries, from 0, in list order.
  [[nodiscard]] std::vector<int> Chosen() const;

 private:
  QListWidget* list_ = nullptr;
};

}  // namespace vesk
