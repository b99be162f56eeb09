// The row of controls that corrects the selected readings: what to do, by how much, why.
#pragma once

#include <QWidget>

#include <vector>

#include "review/range_correction.h"

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;

namespace vesk {

class Language;

class RangeBar : public QWidget {
  Q_OBJECT

 public:
  RangeBar(const Language& language, QWidget* parent);

  [[nodiscard]] RangeCorrection Correction() const;
  [[nodiscard]] QString Reason() const;
  /// Reasons given before, the last one first; what is typed stays.
  void OfferReasons(const QStringList& reasons);
  /// readings: how many are selected; 0 turns the bar off.
  void SetSelected(int readings);
  /// True while the preview is wanted.
  [[nodiscard]] bool Previews() const;
  void EndPreview();
  [[nodiscard]] std::vector<QWidget*> TabStops() const;

 Q_SIGNALS:
  void PreviewChanged();  ///< what is to be shown is another, or none
  void ApplyAsked();
  void ReasonChanged(const QString& reason);

 private:
  void Arrange();
  [[nodiscard]] RangeOperation Operation() const;
  QDoubleSpinBox* Amount(const char* name, const QString& title);

  QComboBox* operation_ = nullptr;
  QDoubleSpinBox* first_ = nullptr;
  QLabel* arrow_ = nullptr;
  QDoubleSpinBox* last_ = nullptr;
  QCheckBox* exact_ = nullptr;
  QPushButton* preview_ = nullptr;
  QPushButton* apply_ = nullptr;
  QComboBox* reason_ = nullptr;
};

}  // namespace vesk
