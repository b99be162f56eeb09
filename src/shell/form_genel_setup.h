// FormGenelSetup: the options that the operator sets. Opens with what the settings hold.
#pragma once

#include <QWidget>

#include <array>

#include "shell/options_form.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QTabWidget;

namespace vesk {

class ColourCell;
class ColourPalette;
class MainFrame;

class FormGenelSetup : public QWidget {
  Q_OBJECT

 public:
  explicit FormGenelSetup(MainFrame& frame);

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* CreateGraphicTab();
  QWidget* CreateSwatches();
  QWidget* CreateAdjustment();
  QWidget* CreateExtremeModes();
  QWidget* CreateStationsTab();
  QWidget* CreateButtons();
  /// The English meaning of a caption that is Turkish in both languages; nothing in Turkish.
  QLabel* CreateHint(const QString& english);
  void ShowForm(const OptionsForm& form);
  [[nodiscard]] OptionsForm EditedForm() const;
  void SetSwatch(int index, qint32 number);
  void Confirm();

  MainFrame& frame_;
  QTabWidget* SSTab1_ = nullptr;
  QCheckBox* Check1_ = nullptr;
  QCheckBox* Check2_ = nullptr;
  std::array<QRadioButton*, 2> OptionExt_{};
  QLineEdit* Text1_ = nullptr;
  std::array<ColourCell*, kSwatchCount> Label3_{};
  ColourPalette* Frame3_ = nullptr;
};

}  // namespace vesk
