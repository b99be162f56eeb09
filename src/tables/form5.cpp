#include "tables/form5.h"

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

#include "ratings/curve_folder.h"
#include "shell/folder_lists.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "shell/tab_order.h"

namespace vesk {
namespace {

const QString kSection = QStringLiteral("Genel");
const QString kFolderKey = QStringLiteral("AnahtarDirectory");

QString WithoutTrailingSlash(QString folder) {
  if (folder.size() > 1 && folder.endsWith(QLatin1Char('/'))) folder.chop(1);
  return folder;
}

}  // namespace

Form5::Form5(MainFrame& frame) : frame_(frame) {
  setObjectName(QStringLiteral("Form5"));
  setWindowTitle(frame_.Run().language.Text(Caption::RatingCurveSelection));
  CreateControls();
  ConnectControls();
  const QString stored = frame_.Run().settings.ReadSetting(kSection, kFolderKey);
  const QString folder = WithoutTrailingSlash(NormaliseFolderPath(stored));
  Drive1_->ShowVolumeOf(folder);
  Dir1_->SetPath(folder);
  ShowFolder(folder);
}

void Form5::CreateControls() {
  const Language& language = frame_.Run().language;
  Drive1_ = new DriveList(language.Say(Wording{u"Ev dizini", u"Home"}), this);
  Drive1_->setObjectName(QStringLiteral("Drive1"));
  Dir1_ = new DirList(this);
  Dir1_->setObjectName(QStringLiteral("Dir1"));
  File1_ = new QListWidget(this);
  File1_->setObjectName(QStringLiteral("File1"));
  File1_->setUniformItemSizes(true);
  noFiles_ = new QLabel(this);
  Command1_ = new QPushButton(language.Text(Caption::Cancel), this);
  Command1_->setObjectName(QStringLiteral("Command1"));
  Command2_ = new QPushButton(language.Text(Caption::OkRatingCurve), this);
  Command2_->setObjectName(QStringLiteral("Command2"));
  Command2_->setEnabled(false);

  auto* grid = new QGridLayout(this);
  grid->addWidget(Drive1_, 0, 0);
  grid->addWidget(noFiles_, 0, 1);
  grid->addWidget(Dir1_, 1, 0);
  grid->addWidget(File1_, 1, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(Command2_);
  buttons->addWidget(Command1_);
  grid->addLayout(buttons, 2, 0, 1, 2);
  grid->setRowStretch(1, 1);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  ChainTabOrder({Drive1_, Dir1_, File1_, Command2_, Command1_});
  resize(560, 380);
}

void Form5::ConnectControls() {
  connect(Drive1_, &DriveList::VolumeChosen, this, [this](const QString& root) {
    Dir1_->SetPath(root);
    ShowFolder(root);
  });
  connect(Dir1_, &DirList::FolderPressed, this, &Form5::ShowFolder);
  connect(Dir1_, &DirList::FolderOpened, this, &Form5::ShowFolder);
  connect(File1_, &QListWidget::itemSelectionChanged, this,
          [this] { Command2_->setEnabled(!File1_->selectedItems().isEmpty()); });
  // Not itemActivated: on desktops set to open by a single click a mere choice would close the window.
  connect(File1_, &QListWidget::itemDoubleClicked, this, &Form5::Accept);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(QKeySequence(key), File1_);
    enter->setContext(Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, &Form5::Accept);
  }
  connect(Command1_, &QPushButton::clicked, this, &Form5::Cancel);
  connect(Command2_, &QPushButton::clicked, this, &Form5::Accept);
  auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  escape->setContext(Qt::WidgetWithChildrenShortcut);
  connect(escape, &QShortcut::activated, this, &Form5::Cancel);
}

void Form5::ShowFolder(const QString& folder) {
  folder_ = folder;
  File1_->clear();
  for (const QString& name : ListRatingCurves(folder_)) File1_->addItem(name);
  Command2_->setEnabled(false);
  const Language& language = frame_.Run().language;
  noFiles_->setText(File1_->count() > 0 ? language.Text(Caption::Files)
                                        : language.Say(Wording{u"Bu dizinde anahtar eğrisi yok (E*.dat)",
                                                               u"No rating curve here (E*.dat)"}));
}

void Form5::Accept() {
  const QList<QListWidgetItem*> chosen = File1_->selectedItems();
  if (chosen.isEmpty()) return;
  const QString path = QDir(folder_).filePath(chosen.first()->text());  // one "/", also at the root
  // A folder that cannot be stored is asked for again next time; the choice itself stands.
  static_cast<void>(frame_.Run().settings.WriteSetting(kSection, kFolderKey, Dir1_->Path()));
  Q_EMIT CurveChosen(path);
  close();
}

void Form5::Cancel() {
  Q_EMIT CurveChosen({});
  close();
}

}  // namespace vesk
