// Form2: the table workbooks made earlier, to look at again or to take away.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

#include "tables/stored_tables.h"

class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace vesk {

class MainFrame;

class Form2 : public QWidget {
  Q_OBJECT

 public:
  explicit Form2(MainFrame& frame);

  TrashFunction trash = MoveToDesktopTrash;  ///< where a deleted workbook goes first

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CreateControls();
  void LayOut();
  void ConnectControls();
  void ListTables();
  void OpenSelected();
  void DeleteSelected();
  void Tell(const QString& text);
  [[nodiscard]] QString SelectedPath() const;

  MainFrame& frame_;
  QGroupBox* frameBox_ = nullptr;
  QLabel* Label1_ = nullptr;
  std::vector<QString> names_;  ///< what File3 lists
  QListWidget* File3_ = nullptr;
  QLabel* message_ = nullptr;
  QPushButton* Command1_ = nullptr;
  QPushButton* CmdVazgec_ = nullptr;
};

}  // namespace vesk
