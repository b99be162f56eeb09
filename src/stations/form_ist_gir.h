// The register window: station numbers and names, typed straight into the table.
#pragma once

#include <QWidget>

#include <optional>

#include "stations/station_register.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace vesk {

class MainFrame;
class StationFilterModel;
class StationTableModel;

class Form_IstGir : public QWidget {
  Q_OBJECT

 public:
  explicit Form_IstGir(MainFrame& frame, QWidget* parent = nullptr);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void CreateTable();
  void CreateControls();
  void LayOut();
  void OpenRegister();
  void ShowTable();
  void ShowFailure(const Error& error);
  void ClearMessage();

  void ExitClicked();
  void DeleteClicked();
  void Arm();
  void Disarm();
  [[nodiscard]] bool IsArmed() const { return armed_; }
  void DeleteCurrent();

  MainFrame& frame_;
  std::optional<StationRegister> register_;
  StationTableModel* table_ = nullptr;  ///< null while the register cannot be opened
  StationFilterModel* filter_ = nullptr;
  QLabel* searchLabel_ = nullptr;
  QLineEdit* search_ = nullptr;
  QTableView* grid_ = nullptr;
  QLabel* message_ = nullptr;
  QPushButton* exit_ = nullptr;
  QPushButton* delete_ = nullptr;
  bool armed_ = false;
};

}  // namespace vesk
