#include "shell/folder_lists.h"

#include <QDir>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <QStyle>

#include <algorithm>
#include <array>

namespace vesk {
namespace {

bool HoldsFilesOfPeople(const QStorageInfo& volume) {
  if (!volume.isValid() || !volume.isReady() || volume.isRoot()) return false;
  static constexpr std::array kSystemRoots = {"/boot",     "/proc", "/sys", "/dev", "/run/lock",
                                              "/run/user", "/snap", "/var", "/etc"};
  const QString root = volume.rootPath();
  if (std::any_of(kSystemRoots.begin(), kSystemRoots.end(),
                  [&root](const char* system) { return root.startsWith(QLatin1String(system)); })) {
    return false;
  }
  const QByteArray device = volume.device();
  return device.startsWith("/dev/") || device.contains(":/") || device.startsWith("//");
}

}  // namespace

std::vector<Volume> MountedVolumes(const QString& homeName) {
  std::vector<Volume> volumes = {{homeName, QDir::homePath()}, {QStringLiteral("/"), QStringLiteral("/")}};
  for (const QStorageInfo& info : QStorageInfo::mountedVolumes()) {
    if (!HoldsFilesOfPeople(info) || !QFileInfo(info.rootPath()).isDir()) continue;
    const QString label = info.name();
    const QString root = info.rootPath();
    volumes.push_back(
        {label.isEmpty() ? root : label + QStringLiteral("  (") + root + QLatin1Char(')'), root});
  }
  return volumes;
}

DriveList::DriveList(QString homeName, QWidget* parent) : QComboBox(parent), homeName_(std::move(homeName)) {
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(12);
  ReadVolumes();
  connect(this, &QComboBox::activated, this,
          [this](int index) { Q_EMIT VolumeChosen(itemData(index).toString()); });
}

void DriveList::ReadVolumes() {
  const QSignalBlocker blocker(this);
  const QString current = currentData().toString();
  clear();
  for (const Volume& volume : MountedVolumes(homeName_)) {
    addItem(style()->standardIcon(QStyle::SP_DriveHDIcon), volume.name, volume.root);
    setItemData(count() - 1, volume.root, Qt::ToolTipRole);
  }
  setCurrentIndex(std::max(0, findData(current)));
}

void DriveList::ShowVolumeOf(const QString& folder) {
  const QSignalBlocker blocker(this);
  int best = 0;
  qsizetype bestLength = -1;
  for (int i = 0; i < count(); ++i) {
    const QString root = itemData(i).toString();
    const QString prefix = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
    const bool within = (folder + QLatin1Char('/')).startsWith(prefix);
    if (!within || root.size() <= bestLength) continue;
    best = i;
    bestLength = root.size();
  }
  setCurrentIndex(best);
}

void DriveList::showPopup() {
  ReadVolumes();
  QComboBox::showPopup();
}

DirList::DirList(QWidget* parent) : QListWidget(parent) {
  setUniformItemSizes(true);
  setIconSize(QSize(16, 16));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  connect(this, &QListWidget::itemPressed, this, [this] { Q_EMIT FolderPressed(SelectedPath()); });
  connect(this, &QListWidget::itemDoubleClicked, this, &DirList::OpenCurrent);
}

void DirList::AddFolder(const QString& folder, const QString& name, int depth, bool open) {
  const QIcon icon = style()->standardIcon(open ? QStyle::SP_DirOpenIcon : QStyle::SP_DirIcon);
  auto* item = new QListWidgetItem(icon, QString(2 * depth, QLatin1Char(' ')) + name, this);
  item->setData(Qt::UserRole, folder);
  item->setToolTip(folder);
}

void DirList::SetPath(const QString& folder) {
  const QSignalBlocker blocker(this);
  clear();
  path_ = QDir::cleanPath(folder);
  const QDir here(path_);
  if (folder.isEmpty() || !here.exists()) return;
  QStringList above;
  for (QDir up = here; up.cdUp();) above.prepend(up.path());
  int depth = 0;
  for (const QString& path : std::as_const(above)) {
    AddFolder(path, path == QLatin1String("/") ? path : QDir(path).dirName(), depth++, true);
  }
  AddFolder(path_, here.isRoot() ? path_ : here.dirName(), depth++, true);
  setCurrentRow(count() - 1);
  for (const QString& name :
       here.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase)) {
    AddFolder(here.filePath(name), name, depth, false);
  }
  scrollToItem(currentItem(), QAbstractItemView::PositionAtCenter);
}

QString DirList::SelectedPath() const {
  return currentItem() == nullptr ? path_ : currentItem()->data(Qt::UserRole).toString();
}

void DirList::OpenCurrent() {
  if (currentItem() == nullptr) return;
  SetPath(SelectedPath());
  Q_EMIT FolderOpened(path_);
}

void DirList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    OpenCurrent();
    Q_EMIT FolderPressed(SelectedPath());
    return;
  }
  QListWidget::keyPressEvent(event);
}

}  // namespace vesk
