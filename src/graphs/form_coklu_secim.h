// FormCokluSecim: a station's water years with check boxes, for choosing several at once.
#pragma once

#include <QDialog>
#include <QStringList>

#include "shell/language.h"

class QListWidget;

namespace vesk {

class FormCokluSecim : public QDialog {
  Q_OBJECT

 public:
  /// waterYears: entries as the station's list shows them; chosen: those of them that are chosen already.
  FormCokluSecim(const QStringList& waterYears, const QStringList& chosen, const Language& language,
                 QWidget* parent = nullptr);

  /// The checked entries, in list order.
  [[nodiscard]] QStringList Chosen() const;

 private:
  QListWidget* list_ = nullptr;
};

}  // namespace vesk
