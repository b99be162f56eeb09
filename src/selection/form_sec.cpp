#include "selection/form_sec.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTableWidget>

#include "review/review_grid_model.h"
#include "selection/review_grid_view.h"
#include "shell/folder_lists.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

/// The caption of the menu entry that opens the window for it.
QString TitleOf(WorkMode mode, const Language& language) {
  switch (mode) {
    case WorkMode::DataFile:
      return WithoutAccessKey(language.Text(Caption::OpenDataFile));
    case WorkMode::LevelTable:
      return WithoutAccessKey(language.Text(Caption::LevelTable));
    case WorkMode::DischargeTable:
      return WithoutAccessKey(language.Text(Caption::LevelAndDischargeTable));
    case WorkMode::MultipleGraph:
      return WithoutAccessKey(language.Text(Caption::MultipleGraph));
    case WorkMode::Other:
      break;
  }
  return language.Text(Caption::StationAndWaterYearSelection);
}

BrowserWords WordsOf(const Language& language) {
  return {language.convertedWord, language.addWord, language.Text(Caption::ReadDataFile)};
}

}  // namespace

FormSec::FormSec(MainFrame& frame, std::unique_ptr<ReviewQuestions> questions)
    : frame_(frame),
      run_(frame.Run()),
      questions_(std::move(questions)),
      workMode_(run_.workMode),
      c_(BuildFormSecControls(*this, run_.language)),
      browser_(workMode_, WordsOf(run_.language), run_.regional) {
  if (questions_ == nullptr) questions_ = std::make_unique<ReviewMessageBoxes>(run_.language);
  setObjectName(QStringLiteral("FormSec"));
  setWindowTitle(TitleOf(workMode_, run_.language));
  model_ = std::make_unique<ReviewGridModel>(session_);
  c_.VS1->SetGridModel(*model_);
  ConnectLists();
  ConnectGridCommands();
  ConnectSession();
  AddShortcuts();
  ArrangeForMode();
  RestoreLayout();
  ChooseFolder(run_.settings.ReadDataDirectory());
  c_.ListOrjDos->clear();  // the files show once a station or a folder has been clicked
}

FormSec::~FormSec() = default;

void FormSec::ConnectLists() {
  connect(c_.Drive1, &DriveList::VolumeChosen, this, &FormSec::ChooseFolder);
  connect(c_.Dir1, &DirList::FolderPressed, this, &FormSec::ChooseFolder);
  connect(c_.ListIst, &QListWidget::itemSelectionChanged, this, &FormSec::ChooseStation);
  connect(c_.ListIst, &QListWidget::itemDoubleClicked, this, &FormSec::ChooseStation);
  connect(c_.ListSuYili, &QListWidget::itemSelectionChanged, this, &FormSec::ChooseYears);
  connect(c_.ListSuYili, &QListWidget::itemDoubleClicked, this, &FormSec::Confirm);
  connect(c_.ListOrjDos, &QListWidget::itemSelectionChanged, this, &FormSec::ChooseFile);
  connect(c_.ListOrjDos, &QListWidget::itemDoubleClicked, this, &FormSec::LoadFileByDoubleClick);
  for (QWidget* keyed : std::initializer_list<QWidget*>{c_.ListIst, c_.ListSuYili, c_.ListOrjDos, c_.ListGraf,
                                                        c_.Text7, c_.Text6, c_.Text8}) {
    keyed->installEventFilter(this);
  }
  connect(c_.CmdTamam, &QPushButton::clicked, this, &FormSec::Confirm);
  connect(c_.CmdVazgec, &QPushButton::clicked, this, [this] {
    KeepDataDirectory();
    if (close()) static_cast<void>(frame_.CloseChild(QStringLiteral("FormGraf")));
  });
}

void FormSec::ConnectGridCommands() {
  connect(c_.Command4, &QPushButton::clicked, this, &FormSec::SaveChanges);
  connect(c_.CmdUndo, &QPushButton::clicked, this, &FormSec::UndoAll);
  connect(c_.Command6, &QPushButton::clicked, this, [this] { GoToChange(true); });
  connect(c_.Command7, &QPushButton::clicked, this, [this] { GoToChange(false); });
  connect(c_.Command8, &QPushButton::clicked, this, &FormSec::GoToDate);
  connect(c_.Command10, &QPushButton::clicked, this, &FormSec::CorrectDates);
  connect(c_.CmdSaatSil, &QPushButton::clicked, this, &FormSec::RemoveDateCorrection);
  connect(c_.VSsatir, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
    c_.VS1->GoTo(item->text().toInt(), GridColumn::Level, true);
  });
  connect(c_.Command3, &QPushButton::clicked, this, &FormSec::MakeTable);
  connect(c_.CmdGrf, &QPushButton::clicked, this, &FormSec::DrawGraph);
  connect(c_.Command2, &QPushButton::clicked, this, &FormSec::ChooseRatingCurve);
  connect(c_.Command1, &QPushButton::clicked, this, [this] {
    if (MayLeaveGrid()) c_.Frame3->hide();
  });
  connect(c_.CmdCiz, &QPushButton::clicked, this, &FormSec::DrawGraphList);
  connect(c_.CmdListe, &QPushButton::clicked, this, &FormSec::DrawStoredGraphs);
  connect(c_.CmdListSil, &QPushButton::clicked, this, [this] {
    graphList_.clear();
    UpdateGraphList();
  });
}

void FormSec::ConnectSession() {
  connect(&session_, &EditSession::StateChanged, this, &FormSec::ShowEditState);
  connect(&session_, &EditSession::JournalFailed, this, [this](const Error& error) {
    AddMessage({Wording{u"Değişiklikler yalnızca Kaydet ile saklanır; ara kayıt yazılamıyor: %1",
                        u"Changes are kept by Save only; the journal cannot be written: %1"},
                error.Said()});
  });
  ConnectGrid();
}

void FormSec::ConnectGrid() {
  connect(model_.get(), &ReviewGridModel::EditRefused, this, &FormSec::TellRefusal);
  // Behind the edit: its editor is closing and must not find itself below a question.
  connect(model_.get(), &ReviewGridModel::LevelTaken, this, &FormSec::OfferRecordCorrection,
          Qt::QueuedConnection);
  model_->SetRawLevelText([this](double rawCm) {
    return Say(
        Wording{u"Ham seviye: %1 cm (Ctrl+R ham seviyeye döner)", u"Raw level: %1 cm (Ctrl+R gives it back)"},
        NumberText(rawCm));
  });
  connect(c_.VS1, &ReviewGridView::RowEntered, this, &FormSec::ShowRowLabel);
  const auto showRow = [this] { ShowRowLabel(c_.VS1->CurrentRow()); };
  connect(&session_, &EditSession::StateChanged, this, showRow);
  connect(&session_, &EditSession::GridReplaced, this, showRow);
  auto* restore = new QAction(Say(Wording{u"Ham seviyeye dön", u"Back to the raw level"}), c_.VS1);
  restore->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
  restore->setShortcutContext(Qt::WidgetShortcut);
  connect(restore, &QAction::triggered, this, &FormSec::RestoreRawLevels);
  c_.VS1->addAction(restore);
  c_.VS1->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void FormSec::AddShortcuts() {
  const auto add = [this](const QKeySequence& keys, auto action) {
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
  };
  const auto toDate = [this] {
    if (!c_.Text6->isVisible()) return;
    c_.Text6->setFocus(Qt::ShortcutFocusReason);
    c_.Text6->selectAll();
  };
  add(QKeySequence(Qt::CTRL | Qt::Key_G), toDate);
  add(QKeySequence(Qt::CTRL | Qt::Key_F), toDate);
  add(QKeySequence(Qt::Key_F8), [this] { GoToChange(true); });
  add(QKeySequence(Qt::SHIFT | Qt::Key_F8), [this] { GoToChange(false); });
  add(QKeySequence(Qt::CTRL | Qt::Key_S), [this] {
    // The first change may still stand in the open cell and counts only when it is taken over.
    if (FinishEditing() && c_.Command4->isEnabled()) SaveChanges();
  });
  add(QKeySequence(Qt::CTRL | Qt::Key_Z), [this] { StepBack(); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Y), [this] { StepForward(); });
  add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), [this] { StepForward(); });
}

void FormSec::ArrangeForMode() {
  const bool collecting = workMode_ == WorkMode::MultipleGraph;
  c_.Frame3->setVisible(!collecting);
  c_.Parameters->setVisible(!collecting);
  c_.GraphPanel->setVisible(collecting);
  c_.ListOrjDos->setEnabled(!collecting);
  const bool curves = run_.language.Choice() != LanguageChoice::English && !collecting;
  c_.RatingFrame->setVisible(curves);
  c_.Text7->setVisible(false);
  c_.Command2->setEnabled(false);
  c_.ProgressBar1->hide();
  c_.ProgressBar2->hide();
  c_.Frame4->hide();
  c_.Frame9->hide();
  c_.Frame10->hide();
  c_.VS_Dosyalar->hide();
  ShowEditState();
  UpdateGraphList();
  UpdateCommands();
}

/// Enter on a station goes on to its years; where there is but one, it is the one.
void FormSec::GoToYears() {
  if (c_.ListIst->selectedItems().isEmpty()) ChooseStation();
  if (c_.ListSuYili->count() == 0) return;
  c_.ListSuYili->setFocus(Qt::OtherFocusReason);
  if (c_.ListSuYili->count() == 1) c_.ListSuYili->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
}

/// The first arrow in a list in which nothing is chosen yet chooses its first entry.
bool FormSec::IsFirstArrow(int key) const {
  return (key == Qt::Key_Down || key == Qt::Key_Up) && c_.ListSuYili->count() > 0 &&
         c_.ListSuYili->selectedItems().isEmpty();
}

void FormSec::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (opened_) return;
  opened_ = true;
  FitColumns();
  frame_.SetMenusEnabled(false);
  if (!QDir(run_.dataDirectory).exists()) ChooseFolder(NormaliseFolderPath({}));
  browser_.ApplyCaptionRule(BrowserList::FormActivate);
  UpdateCommands();
  c_.ListIst->setFocus();
}

void FormSec::closeEvent(QCloseEvent* event) {
  if (busy_ || !MayLeaveGrid()) {
    event->ignore();
    return;
  }
  KeepLayout();
  KeepDataDirectory();
  if (opened_) frame_.SetMenusEnabled(true);
  opened_ = false;
  event->accept();
}

void FormSec::KeepDataDirectory() {
  const Status kept = run_.settings.WriteSetting(QStringLiteral("Genel"), QStringLiteral("DataDirectory"),
                                                 run_.dataDirectory);
  if (!kept) TellStatus(run_.language.Say(kept.Failure()));
}

bool FormSec::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  if (watched == c_.Text8) UpdateCommands();  // single-file mode only, whatever was loaded meanwhile
  return HandleListKey(watched, key->key()) || QWidget::eventFilter(watched, event);
}

bool FormSec::HandleListKey(QObject* watched, int key) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (watched == c_.ListIst && enter) {
    GoToYears();
  } else if (watched == c_.ListSuYili && IsFirstArrow(key)) {
    c_.ListSuYili->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
  } else if (watched == c_.ListSuYili && key == Qt::Key_Q) {
    ShowYearPicker();
  } else if (watched == c_.ListSuYili && key == Qt::Key_Delete) {
    const int row = c_.ListSuYili->currentRow();
    ChooseStation();
    c_.ListSuYili->setCurrentRow(row, QItemSelectionModel::NoUpdate);
  } else if (watched == c_.Text7 && key == Qt::Key_Delete) {
    ShowRatingCurve({});
  } else if (watched == c_.ListGraf && key == Qt::Key_Delete) {
    const auto row = static_cast<std::size_t>(c_.ListGraf->currentRow());  // none: behind the end
    if (row < graphList_.size()) graphList_.erase(graphList_.begin() + c_.ListGraf->currentRow());
    UpdateGraphList();
  } else if ((watched == c_.ListSuYili || watched == c_.ListOrjDos) && enter) {
    if (browser_.Confirm().enabled) Confirm();
  } else if (watched == c_.Text6 && enter) {
    GoToDate();
  } else {
    return false;
  }
  return true;
}

}  // namespace vesk
