#include "stations/form_ist_gir.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "stations/station_delegate.h"
#include "stations/station_table_model.h"

namespace vesk {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kNumberWidth = 1500 / kTwipsPerPixel;
constexpr int kNameWidth = 4500 / kTwipsPerPixel;
constexpr int kTryAgainMilliseconds = 1000;
constexpr int kLeastHeight = 360;

}  // namespace

Form_IstGir::Form_IstGir(MainFrame& frame, OpenGaugings openGaugings)
    : frame_(frame), openGaugings_(std::move(openGaugings)) {
  setObjectName(QStringLiteral("Form_IstGir"));
  CreateTable();
  CreateControls();
  LayOut();
  OpenRegister();
}

void Form_IstGir::CreateTable() {
  const Language& language = frame_.Run().language;
  setWindowTitle(language.Text(Caption::StationNoAndNameInput));

  search_ = new QLineEdit(this);
  search_->setObjectName(QStringLiteral("TextAra"));
  search_->setClearButtonEnabled(true);
  search_->setPlaceholderText(language.Say(Wording{u"No veya ad", u"Number or name"}));
  searchLabel_ = new QLabel(language.Say(Wording{u"&Ara:", u"&Search:"}), this);
  searchLabel_->setBuddy(search_);

  grid_ = new QTableView(this);
  grid_->setObjectName(QStringLiteral("DBGrid1"));
  grid_->setAccessibleName(windowTitle());
  grid_->setSelectionMode(QAbstractItemView::SingleSelection);
  grid_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                         QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
  grid_->setAlternatingRowColors(true);
}

void Form_IstGir::CreateControls() {
  const Language& language = frame_.Run().language;
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("LabelMesaj"));
  message_->setWordWrap(true);
  message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  message_->hide();

  delete_ = new QPushButton(language.Text(Caption::DeleteRecord), this);
  delete_->setObjectName(QStringLiteral("Command2"));
  exit_ = new QPushButton(language.Text(Caption::ExitRegister), this);
  exit_->setObjectName(QStringLiteral("Command1"));

  gaugings_ = new QPushButton(language.Say(Wording{u"D&ebi ölçümleri...", u"&Gaugings..."}), this);
  gaugings_->setObjectName(QStringLiteral("CmdOlcum"));
  gaugings_->setToolTip(language.Say(Wording{u"İstasyonun debi ölçümleri, havzası ve anahtar eğrisi (F9)",
                                             u"The station's gaugings, catchment and rating curve (F9)"}));
  gaugings_->setVisible(static_cast<bool>(openGaugings_));
  connect(gaugings_, &QPushButton::clicked, this, &Form_IstGir::GaugingsClicked);
  auto* open = new QShortcut(QKeySequence(Qt::Key_F9), this);
  open->setContext(Qt::WidgetWithChildrenShortcut);
  connect(open, &QShortcut::activated, this, &Form_IstGir::GaugingsClicked);
  connect(exit_, &QPushButton::clicked, this, &Form_IstGir::ExitClicked);
  connect(delete_, &QPushButton::clicked, this, &Form_IstGir::DeleteClicked);
  auto* find = new QShortcut(QKeySequence::Find, this);
  find->setContext(Qt::WidgetWithChildrenShortcut);
  connect(find, &QShortcut::activated, search_, qOverload<>(&QLineEdit::setFocus));
  auto* undo = new QShortcut(QKeySequence::Undo, this);
  undo->setContext(Qt::WidgetWithChildrenShortcut);
  connect(undo, &QShortcut::activated, this, &Form_IstGir::TakeDeletionBack);
  again_.setSingleShot(true);
  again_.setInterval(kTryAgainMilliseconds);
  connect(&again_, &QTimer::timeout, this, &Form_IstGir::SaveAgain);
}

void Form_IstGir::LayOut() {
  auto* searchRow = new QHBoxLayout;
  searchRow->addWidget(searchLabel_);
  searchRow->addWidget(search_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(delete_);
  buttons->addStretch(1);
  buttons->addWidget(gaugings_);
  buttons->addWidget(exit_);
  auto* all = new QVBoxLayout(this);
  all->addLayout(searchRow);
  all->addWidget(grid_, 1);
  all->addWidget(message_);
  all->addLayout(buttons);

  grid_->horizontalHeader()->setStretchLastSection(true);
  grid_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  const int frame = 2 * grid_->frameWidth() + grid_->verticalScrollBar()->sizeHint().width();
  const int rowNumbers = fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 8;
  grid_->setMinimumWidth(kNumberWidth + kNameWidth + rowNumbers + frame);
  grid_->setMinimumHeight(kLeastHeight / 2);
  resize(minimumSizeHint().expandedTo({0, kLeastHeight}));
  QWidget::setTabOrder(search_, grid_);
  QWidget::setTabOrder(grid_, delete_);
  QWidget::setTabOrder(delete_, gaugings_);
  QWidget::setTabOrder(gaugings_, exit_);
}

void Form_IstGir::OpenRegister() {
  Result<StationRegister> opened = OpenStationDatabase(frame_.Run().stationDatabasePath);
  if (opened) {
    register_.emplace(std::move(*opened));
    const Language& language = frame_.Run().language;
    table_ = new StationTableModel(*register_, {language.Text(Caption::Number), language.Text(Caption::Name)},
                                   this);
    table_->setObjectName(QStringLiteral("Data1"));
    const Status read = table_->Load();
    if (read) return ShowTable();
    opened = read.Failure();
  }
  for (QWidget* control : std::initializer_list<QWidget*>{search_, grid_, delete_, gaugings_})
    control->setEnabled(false);
  ShowFailure(opened.Failure());
}

void Form_IstGir::ShowTable() {
  filter_ = new StationFilterModel(*table_, this);
  grid_->setModel(filter_);
  grid_->setSortingEnabled(true);
  QHeaderView* header = grid_->horizontalHeader();
  header->setSortIndicatorClearable(true);  // a third click gives the stored order back
  grid_->sortByColumn(-1, Qt::AscendingOrder);
  header->resizeSection(
      StationTableModel::Number,
      std::max(kNumberWidth, fontMetrics().horizontalAdvance(QStringLiteral("0000000000"))));
  header->setMinimumSectionSize(kNumberWidth);

  ConnectTable();
  grid_->setCurrentIndex(filter_->index(0, StationTableModel::Number));
  grid_->setFocus();
}

void Form_IstGir::ConnectTable() {
  auto* delegate = new StationDelegate(this);
  grid_->setItemDelegate(delegate);
  connect(delegate, &StationDelegate::NumberDoubted, this, &Form_IstGir::HoldNumberBack);
  // Behind the view, which still has to store the text and to close its editor.
  connect(delegate, &StationDelegate::EndedByEnter, this, &Form_IstGir::GoOnAfterEnter, Qt::QueuedConnection);

  connect(search_, &QLineEdit::textChanged, filter_, &StationFilterModel::SetSearchText);
  connect(search_, &QLineEdit::textChanged, this, &Form_IstGir::KeepCurrentInView);
  connect(filter_, &QAbstractItemModel::layoutChanged, this, &Form_IstGir::KeepCurrentInView);
  connect(grid_->selectionModel(), &QItemSelectionModel::currentChanged, this, &Form_IstGir::Disarm);
  connect(grid_, &QAbstractItemView::pressed, this, &Form_IstGir::Disarm);
  connect(table_, &StationTableModel::SaveFailed, this, &Form_IstGir::ShowRefusedChange);
  connect(table_, &StationTableModel::Saved, this, &Form_IstGir::ClearMessage);
  connect(table_, &StationTableModel::Overtaken, this, &Form_IstGir::ShowOvertaken, Qt::QueuedConnection);
}

}  // namespace vesk
