// Form5: choosing the rating-curve file of a level-and-discharge table.
#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QListWidget;
class QPushButton;

namespace vesk {

class DirList;
class DriveList;
class MainFrame;

class Form5 : public QWidget {
  Q_OBJECT

 public:
  explicit Form5(MainFrame& frame);

 Q_SIGNALS:
  /// Ok: the full path of the file. Cancel: an empty text.
  void CurveChosen(const QString& path);

 private:
  void CreateControls();
  void ConnectControls();
  void ShowFolder(const QString& folder);
  void Accept();
  void Cancel();

  MainFrame& frame_;
  QString folder_;  ///< whose files File1 shows
  DriveList* Drive1_ = nullptr;
  DirList* Dir1_ = nullptr;
  QListWidget* File1_ = nullptr;
  QLabel* noFiles_ = nullptr;
  QPushButton* Command1_ = nullptr;
  QPushButton* Command2_ = nullptr;
};

}  // namespace vesk
