#include "tables/form2.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "shell/tab_order.h"

namespace vesk {

Form2::Form2(MainFrame& frame) : frame_(frame) {
  setObjectName(QStringLiteral("Form2"));
  setWindowTitle(frame_.Run().language.Text(Caption::OpenExcelReport));
  CreateControls();
  LayOut();
  ConnectControls();
}

void Form2::CreateControls() {
  const Language& language = frame_.Run().language;
  frameBox_ = new QGroupBox(language.Text(Caption::ExcelFile), this);
  Label1_ = new QLabel(frameBox_);
  Label1_->setObjectName(QStringLiteral("Label1"));
  Label1_->setWordWrap(true);
  Label1_->setTextFormat(Qt::PlainText);
  File3_ = new QListWidget(frameBox_);
  File3_->setObjectName(QStringLiteral("File3"));
  File3_->setUniformItemSizes(true);
  File3_->installEventFilter(this);
  message_ = new QLabel(frameBox_);
  message_->setObjectName(QStringLiteral("Message"));
  message_->setWordWrap(true);
  message_->setTextFormat(Qt::PlainText);
  message_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  Command1_ = new QPushButton(language.Text(Caption::ReadDataFile), this);
  Command1_->setObjectName(QStringLiteral("Command1"));
  CmdVazgec_ = new QPushButton(language.Text(Caption::ExitStoredTables), this);
  CmdVazgec_->setObjectName(QStringLiteral("CmdVazgec"));
}

void Form2::LayOut() {
  auto* inside = new QVBoxLayout(frameBox_);
  inside->addWidget(Label1_);
  inside->addWidget(File3_, 1);
  inside->addWidget(message_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(Command1_);
  buttons->addWidget(CmdVazgec_);
  auto* all = new QVBoxLayout(this);
  all->addWidget(frameBox_, 1);
  all->addLayout(buttons);
  ChainTabOrder({File3_, Command1_, CmdVazgec_});
  setFocusProxy(File3_);
  resize(460, 420);
}

void Form2::ConnectControls() {
  // Not itemActivated: on desktops set to open by a single click a mere choice would open the workbook.
  connect(File3_, &QListWidget::itemDoubleClicked, this, &Form2::OpenSelected);
  connect(Command1_, &QPushButton::clicked, this, &Form2::OpenSelected);
  connect(CmdVazgec_, &QPushButton::clicked, this, &QWidget::close);
  // Other windows change the data directory and make tables; a child window is not told that it becomes
  // active.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
    if (isAncestorOf(now) && !isAncestorOf(before)) ListTables();
  });
  auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  escape->setContext(Qt::WidgetWithChildrenShortcut);
  connect(escape, &QShortcut::activated, this, &QWidget::close);
}

void Form2::ListTables() {
  Label1_->setText(frame_.Run().dataDirectory);
  std::vector<QString> names = ListStoredTables(frame_.Run().dataDirectory);
  if (names == names_) return;  // the press that brings the window back meets the entry it was aimed at
  names_ = std::move(names);
  const QList<QListWidgetItem*> chosen = File3_->selectedItems();
  const QString chosenName = chosen.isEmpty() ? QString() : chosen.first()->text();
  File3_->clear();
  for (const QString& name : names_) {
    File3_->addItem(name);
    if (name == chosenName) File3_->setCurrentRow(File3_->count() - 1);
  }
}

void Form2::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  ListTables();
}

QString Form2::SelectedPath() const {
  const QList<QListWidgetItem*> chosen =
      File3_->selectedItems();  // the current entry need not be a chosen one
  return chosen.isEmpty() ? QString() : frame_.Run().dataDirectory + chosen.first()->text();
}

void Form2::OpenSelected() {
  const Language& language = frame_.Run().language;
  const QString path = SelectedPath();
  if (path.isEmpty()) {
    Tell(language.Say(
        Wording{u"Önce listeden bir dosya seçiniz.", u"Please choose a file in the list first."}));
    return;
  }
  Tell({});
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const Status opened = OpenStoredTable(frame_.Office(), path);
  QApplication::restoreOverrideCursor();
  if (opened) return;
  Tell(language.Say(opened.Failure()));
}

void Form2::DeleteSelected() {
  const QString path = SelectedPath();
  if (path.isEmpty()) return;
  QApplication::beep();
  const Language& language = frame_.Run().language;
  const QString name = File3_->selectedItems().first()->text();
  const Result<Removal> removed = RemoveStoredTable(path, trash);
  ListTables();
  if (!removed) {
    Tell(language.Say(removed.Failure()));
  } else if (*removed == Removal::Trashed) {
    Tell(language.Say(Wording{u"Çöp kutusuna taşındı: %1", u"Moved to the trash: %1"}, name));
  } else {
    Tell(language.Say(
        Wording{u"Çöp kutusu yok; kalıcı olarak silindi: %1", u"There is no trash; deleted for good: %1"},
        name));
  }
}

void Form2::Tell(const QString& text) {
  message_->setText(text);
}

bool Form2::eventFilter(QObject* watched, QEvent* event) {
  if (watched != File3_ || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Delete:
      DeleteSelected();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      OpenSelected();
      return true;
    default:
      return QWidget::eventFilter(watched, event);
  }
}

}  // namespace vesk
