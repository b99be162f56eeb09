// The drive list and the directory list that the selection windows share.
#pragma once

#include <QComboBox>
#include <QListWidget>
#include <QString>

#include <vector>

namespace vesk {

struct Volume {
  QString name;  ///< as shown
  QString root;  ///< folder where it begins
};

/// The operator's home, the file system's root and every mounted volume that holds files of people:
/// disks, sticks and shared folders, but none of the system's own.
std::vector<Volume> MountedVolumes(const QString& homeName);

/// Drives to choose from; read again each time the list drops down, so a stick that was put in shows up.
class DriveList : public QComboBox {
  Q_OBJECT

 public:
  DriveList(QString homeName, QWidget* parent);
  /// Shows the volume that holds a folder, without a signal.
  void ShowVolumeOf(const QString& folder);
  void showPopup() override;

 Q_SIGNALS:
  void VolumeChosen(const QString& root);

 private:
  void ReadVolumes();
  QString homeName_;
};

/// The folders above a folder, the folder itself and those within it. A press chooses an entry; a double
/// click or Enter also opens it, so that its own folders are listed.
class DirList : public QListWidget {
  Q_OBJECT

 public:
  explicit DirList(QWidget* parent);
  /// Lists around a folder and makes it the current entry. A folder that is missing gives an empty list.
  void SetPath(const QString& folder);
  [[nodiscard]] const QString& Path() const { return path_; }
  /// The folder of the current entry; Path() when there is none. Without a trailing "/", except for the root.
  [[nodiscard]] QString SelectedPath() const;

 Q_SIGNALS:
  void FolderPressed(const QString& folder);
  void FolderOpened(const QString& folder);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddFolder(const QString& folder, const QString& name, int depth, bool open);
  void OpenCurrent();
  QString path_;
};

}  // namespace vesk
