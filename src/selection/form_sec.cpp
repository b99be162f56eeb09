#include "selection/form_sec.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTableWidget>
#include <QToolButton>

#include "datafiles/numbers.h"
#include "review/review_grid_model.h"
#include "selection/changed_rows_list.h"
#include "selection/chooser_panel.h"
#include "selection/form_sec_state.h"
#include "selection/graph_list_panel.h"
#include "selection/hydrograph_pane.h"
#include "selection/message_list.h"
#include "selection/range_bar.h"
#include "selection/review_bench.h"
#include "selection/review_grid_view.h"
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
      c_(BuildFormSecControls(*this, run_.language, selection_)),
      browser_(workMode_, WordsOf(run_.language), run_.regional) {
  if (questions_ == nullptr) questions_ = std::make_unique<ReviewMessageBoxes>(run_.language);
  setObjectName(QStringLiteral("FormSec"));
  setWindowTitle(TitleOf(workMode_, run_.language));
  model_ = std::make_unique<ReviewGridModel>(session_);
  c_.grid->SetGridModel(*model_, selection_);
  ConnectChooser();
  ConnectGraphList();
  ConnectGridCommands();
  ConnectSession();
  ConnectBench();
  AddShortcuts();
  ArrangeForMode();
  RestoreLayout();
  ChooseFolder(run_.settings.ReadDataDirectory());
  c_.chooser->ShowFiles({});  // the files show once a station or a folder has been clicked
}

FormSec::~FormSec() = default;

void FormSec::ConnectChooser() {
  connect(c_.chooser, &ChooserPanel::FolderChosen, this, &FormSec::ChooseFolder);
  connect(c_.chooser, &ChooserPanel::StationChosen, this, &FormSec::ChooseStation);
  connect(c_.chooser, &ChooserPanel::WaterYearsChosen, this, &FormSec::ChooseYears);
  connect(c_.chooser, &ChooserPanel::FileChosen, this, &FormSec::ChooseFile);
  connect(c_.chooser, &ChooserPanel::FileOpened, this, &FormSec::LoadFileByDoubleClick);
  connect(c_.chooser, &ChooserPanel::Confirmed, this, &FormSec::Confirm);
  connect(c_.chooser, &ChooserPanel::YearPickerAsked, this, &FormSec::ShowYearPicker);
  ConnectCurve();
  connect(c_.chooser, &ChooserPanel::RatingCurveAsked, this, &FormSec::ChooseRatingCurve);
  connect(c_.confirm, &QPushButton::clicked, this, &FormSec::Confirm);
  connect(c_.cancel, &QPushButton::clicked, this, [this] {
    KeepDataDirectory();
    if (close()) static_cast<void>(frame_.CloseChild(QStringLiteral("FormGraf")));
  });
}

void FormSec::ConnectGraphList() {
  connect(c_.graphList, &GraphListPanel::EntriesChanged, this, &FormSec::Refresh);
  connect(c_.graphList, &GraphListPanel::DrawAsked, this, &FormSec::DrawGraphList);
  connect(c_.graphList, &GraphListPanel::StoredGraphsAsked, this, &FormSec::DrawStoredGraphs);
}

void FormSec::ConnectGridCommands() {
  connect(c_.save, &QPushButton::clicked, this, &FormSec::SaveChanges);
  connect(c_.undoAll, &QPushButton::clicked, this, &FormSec::UndoAll);
  connect(c_.nextChange, &QPushButton::clicked, this, [this] { GoToChange(true); });
  connect(c_.previousChange, &QPushButton::clicked, this, [this] { GoToChange(false); });
  connect(c_.goToDate, &QPushButton::clicked, this, &FormSec::GoToDate);
  connect(c_.date, &QLineEdit::returnPressed, this, &FormSec::GoToDate);
  connect(c_.correctDates, &QPushButton::clicked, this, &FormSec::CorrectDates);
  connect(c_.clockPairs, &QPushButton::clicked, this, &FormSec::CorrectDatesInPieces);
  connect(c_.removeCorrection, &QPushButton::clicked, this, &FormSec::RemoveDateCorrection);
  connect(c_.changedRows, &ChangedRowsList::RowChosen, this,
          [this](int row) { c_.grid->GoTo(row, GridColumn::Level, true); });
  connect(c_.makeTable, &QPushButton::clicked, this, &FormSec::MakeTable);
  connect(c_.drawGraph, &QPushButton::clicked, this, &FormSec::DrawGraph);
  connect(c_.closePanel, &QPushButton::clicked, this, [this] {
    if (MayLeaveGrid()) c_.reviewPanel->hide();
  });
}

void FormSec::ConnectSession() {
  connect(&session_, &EditSession::StateChanged, this, &FormSec::ShowEditState);
  connect(&session_, &EditSession::JournalFailed, this, [this](const Error& error) {
    c_.messages->Add({Wording{u"Değişiklikler yalnızca Kaydet ile saklanır; ara kayıt yazılamıyor: %1",
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
  connect(&selection_, &RowSelection::CurrentChanged, this, &FormSec::ShowRowLabel);
  const auto showRow = [this] { ShowRowLabel(selection_.Current()); };
  connect(&session_, &EditSession::StateChanged, this, showRow);
  connect(&session_, &EditSession::GridReplaced, this, showRow);
  auto* restore = new QAction(Say(Wording{u"Ham seviyeye dön", u"Back to the raw level"}), c_.grid);
  restore->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
  restore->setShortcutContext(Qt::WidgetShortcut);
  connect(restore, &QAction::triggered, this, &FormSec::RestoreRawLevels);
  c_.grid->addAction(restore);
  c_.grid->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void FormSec::ConnectBench() {
  bench_ = std::make_unique<ReviewBench>(
      session_, selection_,
      ReviewBench::Parts{.findings = c_.findings, .hydrograph = c_.hydrograph, .range = c_.rangeBar},
      run_.language, run_.stationDatabasePath, *questions_, *this);
  connect(bench_.get(), &ReviewBench::Told, this, &FormSec::TellStatus);
  connect(c_.foldChooser, &QToolButton::clicked, this, [this](bool shown) {
    chooserStays_ = shown;
    ShowChooser(shown);
  });
  connect(c_.foldHydrograph, &QToolButton::clicked, this, &FormSec::ShowHydrograph);
  connect(c_.zeroBased, &QToolButton::toggled, c_.hydrograph, &HydrographPane::SetZeroBased);
}

/// What is chosen once need not stand beside the readings all day.
void FormSec::ShowChooser(bool shown) {
  c_.chooser->setVisible(shown);
  c_.foldChooser->setChecked(shown);
  if (shown) c_.chooser->FocusStations();
}

void FormSec::ShowHydrograph(bool shown) {
  c_.hydrograph->setVisible(shown);
  c_.zeroBased->setVisible(shown);
  c_.foldHydrograph->setChecked(shown);
}

void FormSec::AddShortcuts() {
  const auto add = [this](const QKeySequence& keys, auto action) {
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
  };
  const auto toDate = [this] {
    if (!c_.date->isVisible()) return;
    c_.date->setFocus(Qt::ShortcutFocusReason);
    c_.date->selectAll();
  };
  add(QKeySequence(Qt::CTRL | Qt::Key_G), toDate);
  add(QKeySequence(Qt::CTRL | Qt::Key_F), toDate);
  add(QKeySequence(Qt::Key_F4), [this] { static_cast<void>(FinishEditing() && bench_->GoToFinding(true)); });
  add(QKeySequence(Qt::SHIFT | Qt::Key_F4),
      [this] { static_cast<void>(FinishEditing() && bench_->GoToFinding(false)); });
  add(QKeySequence(Qt::Key_F6), [this] { ShowHydrograph(!c_.foldHydrograph->isChecked()); });
  add(QKeySequence(Qt::Key_F7), [this] { c_.foldChooser->click(); });
  add(QKeySequence(Qt::Key_F8), [this] { GoToChange(true); });
  add(QKeySequence(Qt::SHIFT | Qt::Key_F8), [this] { GoToChange(false); });
  add(QKeySequence(Qt::Key_F9), [this] {
    if (c_.curve->isEnabled() && FinishEditing()) c_.curve->showMenu();
  });
  add(QKeySequence(Qt::CTRL | Qt::Key_S), [this] {
    // The first change may still stand in the open cell and counts only when it is taken over.
    if (FinishEditing() && c_.save->isEnabled()) SaveChanges();
  });
  add(QKeySequence(Qt::CTRL | Qt::Key_Z), [this] { StepBack(); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Y), [this] { StepForward(); });
  add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), [this] { StepForward(); });
}

void FormSec::ArrangeForMode() {
  const bool collecting = workMode_ == WorkMode::MultipleGraph;
  c_.reviewPanel->setVisible(!collecting);
  c_.parameters->setVisible(!collecting);
  c_.graphList->setVisible(collecting);
  c_.chooser->SetFilesEnabled(!collecting);
  const bool curves = run_.language.Choice() != LanguageChoice::English && !collecting;
  c_.chooser->SetRatingShown(curves);
  c_.progress->hide();
  c_.progress2->hide();
  c_.rangeBar->hide();
  c_.foldChooser->setChecked(true);
  c_.editBar->hide();
  c_.dateBar->hide();
  c_.clockBar->hide();
  c_.loadedFiles->hide();
  ShowEditState();
}

void FormSec::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (opened_) return;
  opened_ = true;
  FitColumns();
  frame_.SetMenusEnabled(false);
  if (!QDir(run_.dataDirectory).exists()) ChooseFolder(NormaliseFolderPath({}));
  browser_.ApplyCaptionRule(BrowserList::FormActivate);
  Refresh();
  c_.chooser->FocusStations();
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

}  // namespace vesk
