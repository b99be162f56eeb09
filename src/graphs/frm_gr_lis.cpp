#include "graphs/frm_gr_lis.h"

#include <QBoxLayout>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

#include "datafiles/graph_file.h"

namespace vesk {
namespace {

QString StateTitle(const Language& language) {
  return language.Say(Wording{u"Durum", u"State"});
}

}  // namespace

FrmGrLis::FrmGrLis(const std::vector<GraphListEntry>& entries, QString dataDirectory,
                   const Language& language, QWidget* parent)
    : QDialog(parent), dataDirectory_(std::move(dataDirectory)), language_(language) {
  setObjectName(QStringLiteral("FrmGrLis"));
  setWindowTitle(language_.Text(Caption::List));
  CreateLists();
  ConnectLists();
  LayOut();
  FillLists(entries);
  resize(560, 320);
}

void FrmGrLis::CreateLists() {
  const auto list = [this](const char* name, const QString& accessible) {
    auto* widget = new QListWidget(this);
    widget->setObjectName(QString::fromLatin1(name));
    widget->setAccessibleName(accessible);
    return widget;
  };
  files_ = list("List1", language_.Text(Caption::List));
  states_ = list("List2", StateTitle(language_));
  stored_ = list("List3", language_.Text(Caption::Files));
  files_->setToolTip(language_.Say(
      Wording{u"Çift tıklama veya Delete çıkarır", u"A double click or Delete takes a file out"}));
  stored_->setToolTip(
      language_.Say(Wording{u"Çift tıklama veya Enter ekler", u"A double click or Enter adds a file"}));
  states_->setSelectionMode(QAbstractItemView::NoSelection);
  states_->setFocusPolicy(Qt::NoFocus);
}

void FrmGrLis::ConnectLists() {
  const auto take = [this] { RemoveRow(files_->currentRow()); };
  const auto add = [this] {
    if (stored_->currentItem() != nullptr) AddFile(stored_->currentItem()->text());
  };
  connect(files_, &QListWidget::itemDoubleClicked, this, take);
  connect(stored_, &QListWidget::itemDoubleClicked, this, add);
  // Keys of the list that has the focus; Return would press the default button otherwise.
  new QShortcut(Qt::Key_Delete, files_, this, take, Qt::WidgetShortcut);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
    new QShortcut(key, stored_, this, add, Qt::WidgetShortcut);
}

QLayout* FrmGrLis::MakeButtons() {
  const auto button = [this](const char* name, Caption caption) {
    auto* widget = new QPushButton(language_.Text(caption), this);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
  };
  clear_ = button("Command1", Caption::ClearList);
  draw_ = button("Command2", Caption::Draw);
  draw_->setDefault(true);
  QPushButton* leave = button("Command3", Caption::ExitList);
  connect(clear_, &QPushButton::clicked, this, &FrmGrLis::Clear);
  connect(draw_, &QPushButton::clicked, this, &FrmGrLis::Finish);
  connect(leave, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(clear_);
  buttons->addStretch(1);
  buttons->addWidget(draw_);
  buttons->addWidget(leave);
  return buttons;
}

void FrmGrLis::LayOut() {
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("LabelMessage"));
  message_->setWordWrap(true);
  auto* grid = new QGridLayout(this);
  grid->addWidget(new QLabel(language_.Text(Caption::List), this), 0, 0);
  grid->addWidget(new QLabel(StateTitle(language_), this), 0, 1);
  grid->addWidget(new QLabel(language_.Text(Caption::Files), this), 0, 2);
  grid->addWidget(files_, 1, 0);
  grid->addWidget(states_, 1, 1);
  grid->addWidget(stored_, 1, 2);
  grid->setColumnStretch(0, 3);
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(2, 3);
  grid->addWidget(message_, 2, 0, 1, 3);
  grid->addLayout(MakeButtons(), 3, 0, 1, 3);
}

void FrmGrLis::FillLists(const std::vector<GraphListEntry>& entries) {
  QStringList stored = QDir(dataDirectory_).entryList({QStringLiteral("Graf*.txt")}, QDir::Files, QDir::Name);
  stored.removeIf([](const QString& name) { return WaterYearOfGraphFile(name) == 0; });
  stored_->addItems(stored);
  for (const GraphListEntry& entry : entries) AddFile(FileNameOf(entry));
  if (entries.empty()) {
    for (const QString& name : stored.first(std::min<qsizetype>(stored.size(), kMostGraphStations)))
      AddFile(name);
  }
  ShowState();
}

QString FrmGrLis::StateOf(const QString& fileName) const {
  const QFileInfo file(dataDirectory_ + fileName);
  if (!file.exists()) return language_.Say(Wording{u"Dosya yok", u"Missing"});
  return language_.Say(Wording{u"%1 okuma", u"%1 readings"}, file.size() / kGraphRecordBytes);
}

void FrmGrLis::AddFile(const QString& fileName) {
  if (!files_->findItems(fileName, Qt::MatchFixedString | Qt::MatchCaseSensitive).isEmpty()) return;
  files_->addItem(fileName);
  states_->addItem(StateOf(fileName));
  ShowState();
}

void FrmGrLis::RemoveRow(int row) {
  delete files_->takeItem(row);
  delete states_->takeItem(row);
  ShowState();
}

void FrmGrLis::Clear() {
  files_->clear();
  states_->clear();
  stored_->clear();
  ShowState();
}

void FrmGrLis::ShowState() {
  const bool any = files_->count() > 0;
  clear_->setEnabled(any);
  draw_->setEnabled(any);
  message_->clear();
}

void FrmGrLis::Finish() {
  std::vector<GraphFileEntry> files;
  for (int row = 0; row < files_->count(); ++row) {
    const QString name = files_->item(row)->text();
    if (!QFileInfo::exists(dataDirectory_ + name)) {
      message_->setText(language_.Say(Wording{u"Dosya yok: %1", u"There is no file %1"}, name));
      return;
    }
    files.push_back({dataDirectory_ + name, name, StationOfGraphFile(name), WaterYearOfGraphFile(name)});
  }
  if (files.size() > kMostGraphStations) {
    message_->setText(language_.Say(
        Wording{u"En çok %1 istasyon birlikte çizilebilir", u"At most %1 stations can be drawn together"},
        kMostGraphStations));
    return;
  }
  chosen_ = std::move(files);
  accept();
}

}  // namespace vesk
