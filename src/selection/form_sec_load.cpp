// Confirming a choice, loading it, and what happens to unsaved work on the way.
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>

#include <algorithm>

#include "datafiles/dates.h"
#include "ratings/curve_source.h"
#include "review/load_summary.h"
#include "selection/changed_rows_list.h"
#include "selection/chooser_panel.h"
#include "selection/form_sec.h"
#include "selection/form_sec_state.h"
#include "selection/graph_list_panel.h"
#include "selection/message_list.h"
#include "selection/range_bar.h"
#include "selection/review_bench.h"
#include "selection/review_grid_view.h"
#include "selection/setup_table.h"
#include "shell/busy_cursor.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

constexpr int kMostLoads = 3;  // of files that somebody is saving at the same time

BenchLoad BenchLoadOf(const LoadRequest& request, const LoadedReadings& loaded) {
  BenchLoad load{.request = request,
                 .readOuts = loaded.readOuts,
                 .missedFiles = loaded.missedFiles,
                 .logs = {},
                 .whole = loaded.whole};
  for (const LoadedChangeLog& log : loaded.changeLogs) load.logs.push_back(log.saveTo);
  return load;
}

}  // namespace

void FormSec::Confirm() {
  if (busy_ || !browser_.Confirm().enabled) return;
  if (workMode_ == WorkMode::MultipleGraph) {
    AddGraphEntries();
    return;
  }
  std::optional<LoadRequest> request = browser_.Request();
  if (!request || !MayLeaveGrid()) return;
  request->stationName = StationName(request->station);
  Load(*request);
}

void FormSec::Load(const LoadRequest& request) {
  browser_.ClearMarks();
  ShowFileMarks();
  KeepDataDirectory();
  Result<LoadedReadings> loaded = LoadWithProgress(request);
  if (!loaded) {
    questions_->Warn(this, run_.language.attentionTitle,
                     Say(Wording{u"Hiçbir veri yüklenmedi; ekrandaki veriler öncekilerdir.",
                                 u"Nothing was loaded; the window shows what it showed before."}) +
                         QLatin1Char('\n') + run_.language.Say(loaded.Failure()));
    Refresh();
    return;
  }
  c_.date->clear();
  Take(request, std::move(*loaded));
  if (TellHolder()) return;
  if (!chooserStays_) ShowChooser(false);
  c_.grid->GoTo(1, GridColumn::Level, true);
  c_.grid->setFocus();
  OfferRecovery();
}

void FormSec::Take(const LoadRequest& request, LoadedReadings loaded) {
  DateTime lastRecord;
  for (int times = 1;; ++times) {
    ShowLoaded(request, loaded);
    lastRecord = loaded.header.LastRecordTime;
    BenchLoad bench = BenchLoadOf(request, loaded);
    session_.Begin(std::move(loaded));
    session_.UseCurve(curve_);
    bench_->Take(std::move(bench));
    if (!session_.IsOutdated() || times == kMostLoads) break;
    Result<LoadedReadings> again = LoadWithProgress(request);
    if (!again) {  // what was read first stays; saving it would be refused
      questions_->Warn(this, run_.language.attentionTitle,
                       Say(Wording{u"Okunurken başkası düzeltmeleri kaydetti ve veriler yeniden okunamadı; "
                                   u"ekrandakiler eski olabilir.",
                                   u"Somebody saved corrections while they were being read, and the readings "
                                   u"could not be read again; what the window shows may be out of date."}) +
                           QLatin1Char('\n') + run_.language.Say(again.Failure()));
      break;
    }
    loaded = std::move(*again);
  }
  request_ = request;
  ShowLastReading(lastRecord);
}

Result<LoadedReadings> FormSec::LoadWithProgress(LoadRequest request) {
  const BusyCursor busy;
  if (request.files.size() > 1) {
    ShowProgress(0);
    request.progress = [this](int percent) { ShowProgress(percent); };
  }
  Result<LoadedReadings> loaded = LoadReadings(request);
  c_.progress->hide();
  return loaded;
}

// No events are let in: nothing of the window can be touched while a load or a drawing is under way.
void FormSec::ShowProgress(int value) {
  c_.progress->setValue(value);
  if (c_.progress->isVisible()) return;
  c_.progress->show();
  layout()->activate();
  c_.progress->repaint();
}

void FormSec::ShowLoaded(const LoadRequest& request, const LoadedReadings& loaded) {
  const bool single = IsSingleFile(loaded.series.Chosen());
  loaded_ = Loaded{.station = request.station,
                   .stationName = request.stationName,
                   .dataDirectory = request.dataDirectory,
                   .file = single ? request.files.front().listName : QString(),
                   .choice = loaded.series.Chosen(),
                   .year = loaded.lastYear,
                   .notWhole = NotWholeNote(loaded)};
  ShowLoadedLabel();
  ShowLoadedFiles(single ? std::vector<QString>() : loaded.files);
  c_.setup->ShowCells(loaded.setup);
  c_.messages->Show(loaded.messages);
  for (QWidget* part :
       std::initializer_list<QWidget*>{c_.reviewPanel, c_.rangeBar, c_.editBar, c_.dateBar, c_.clockBar})
    part->show();
  TellSummary(loaded);
}

void FormSec::TellSummary(const LoadedReadings& loaded) {
  const LoadSummary summary = SummaryOf(loaded);
  QStringList parts = {Say(Wording{u"%1 gün var, %2 gün eksik", u"%1 days present, %2 missing"},
                           summary.daysPresent, summary.daysMissing)};
  if (summary.corrections > 0)
    parts += Say(Wording{u"%1 düzeltme uygulandı", u"%1 corrections laid over"}, summary.corrections);
  if (summary.retimed) parts += Say(Wording{u"zamanlar düzeltilmiş", u"times corrected"});
  if (summary.refusedLines > 0)
    parts += Say(Wording{u"%1 satır okunamadı", u"%1 lines refused"}, summary.refusedLines);
  if (!loaded.whole) parts += Say(Wording{u"yükleme eksik", u"the load is not whole"});
  TellStatus(parts.join(QStringLiteral("  ·  ")));
}

void FormSec::ShowLoadedLabel() {
  QStringList years;
  for (const StationWaterYear& chosen : YearsOf(loaded_->choice)) years += chosen.year.Text();
  QStringList parts = {
      (loaded_->station.Text() + QLatin1Char(' ') + WithoutDash(loaded_->stationName)).trimmed()};
  if (years.size() > 1) {  // ahead of the list, which may be cut off in a narrow window
    parts += Say(Wording{u"tablo ve grafik: %1", u"table and graph: %1"}, loaded_->year->number);
  }
  parts += years.isEmpty() ? loaded_->file : years.join(QStringLiteral(", "));
  c_.loadedLabel->setText(parts.join(QStringLiteral("  ·  ")));
  c_.loadedLabel->setToolTip(c_.loadedLabel->text());
}

/// files: of a water-year load; a single file needs no list.
void FormSec::ShowLoadedFiles(const std::vector<QString>& files) {
  c_.loadedFiles->setRowCount(static_cast<int>(files.size()));
  for (int row = 0; row < c_.loadedFiles->rowCount(); ++row) {
    c_.loadedFiles->setItem(row, 0, new QTableWidgetItem(files[static_cast<std::size_t>(row)]));
  }
  c_.loadedFiles->setVisible(!files.empty());
}

// Where a date correction starts from. A file that was re-timed on load ends at its corrected time, while its
// header still has the logger's; of a water year, the last header read may be another year's.
void FormSec::ShowLastReading(DateTime headersLastRecord) {
  const std::optional<DateTime> last = session_.Series().LastReading();
  const bool fromGrid = session_.IsCorrected() || !IsSingleFile(loaded_->choice);
  c_.lastReading->setText(last ? DateTimeText(fromGrid ? *last : headersLastRecord) : QString());
}

QString FormSec::HolderText() const {
  const LockHolder& holder = *session_.Holder();
  return Say(Wording{u"Bu düzeltmeler üzerinde %1 çalışıyor (%2, %3 tarihinden beri).",
                     u"%1 is working on these corrections (%2, since %3)."},
             holder.user.isEmpty() ? QStringLiteral("?") : holder.user,
             holder.host.isEmpty() ? QStringLiteral("?") : holder.host,
             holder.since.toLocalTime().toString(QStringLiteral("dd/MM/yyyy HH:mm")));
}

// Two windows on one folder: the second one is for looking. A session on this machine that has ended is taken
// over unasked; of another machine only its operators know.
bool FormSec::TellHolder() {
  if (!session_.Holder()) return false;
  const QString who = HolderText();
  if (!session_.Holder()->here &&
      questions_->AskToTakeOver(this,
                                who + QLatin1Char('\n') +
                                    Say(Wording{u"Oradaki çalışma sona erdi mi? Ancak o zaman devralın.",
                                                u"Has that work ended? Take it over only then."}))) {
    if (const Result<bool> taken = session_.TakeOver(); taken && *taken) {
      if (!session_.IsOutdated()) return false;
      Load(LoadRequest(*request_));
      return true;
    }
  }
  const QString text =
      who + QLatin1Char(' ') +
      Say(Wording{u"Veriler yalnız bakmak için açıldı.", u"The readings are open for looking only."});
  c_.messages->Add(Message::Verbatim(text));
  TellStatus(text);
  return false;
}

/// Behind a save that was refused because somebody else has saved since. False: the operator stays.
bool FormSec::LoadAgain() {
  if (questions_->AskYesNo(
          this, run_.language.attentionTitle,
          Say(Wording{u"Bu düzeltmeler yüklendikten sonra başkası tarafından değiştirildi; üzerlerine "
                      u"yazılmadı. Yeniden yüklensin ve sizin değişiklikleriniz önerilsin mi?",
                      u"These corrections were changed by somebody else since they were loaded, and were not "
                      u"overwritten. Load them again and offer your changes anew?"}))) {
    session_.KeepForLater();
    Load(LoadRequest(*request_));
  }
  return false;
}

void FormSec::OfferRecovery() {
  const Result<PendingEdits> pending = session_.Pending();
  if (!pending) {
    c_.messages->Add(pending.Failure().Said());
    return;
  }
  if (pending->Empty()) return;
  const int edits = static_cast<int>(pending->records.size());
  switch (questions_->AskToRecover(this, edits)) {
    case RecoverAnswer::Restore:
      if (const int lost = session_.Restore(*pending); lost > 0) {
        c_.messages->Add(
            Message(Wording{u"%1 değişiklik yüklenen verilere uymuyor; geri yüklenmedi.",
                            u"%1 change(s) do not fit the loaded readings and were not restored."},
                    lost));
      }
      break;
    case RecoverAnswer::Discard:
      if (const Status gone = session_.Discard(); !gone) c_.messages->Add(gone.Failure().Said());
      break;
    case RecoverAnswer::Later:
      break;
  }
}

void FormSec::ClearGrid() {
  loaded_.reset();
  UseCurve({});
  c_.loadedLabel->clear();
  c_.rowLabel->clear();
  ShowLoadedFiles({});
  bench_->Clear();
  session_.Clear();
  ShowChooser(true);
}

bool FormSec::MayLeaveGrid() {
  if (!FinishEditing()) return false;
  if (!session_.HasUnsavedChanges()) return true;
  switch (questions_->AskAboutUnsavedChanges(this)) {
    case UnsavedAnswer::Save:
      return SaveChanges();
    case UnsavedAnswer::Discard:
      if (const Status gone = session_.Discard(); !gone) {
        questions_->Warn(this, run_.language.attentionTitle, run_.language.Say(gone.Failure()));
        return false;
      }
      ClearGrid();  // levels that were given up must not be taken for the readings
      return true;
    case UnsavedAnswer::Stay:
      break;
  }
  return false;
}

// True when the choice in the lists is what the grid holds: a table must not bear another year's name, nor
// lie in another folder.
bool FormSec::ChoiceIsLoaded() const {
  if (!loaded_ || loaded_->dataDirectory != browser_.DataDirectory()) return false;
  // By their numbers: a converted file that turns up behind the load marks the year, and it is the same year.
  const auto same = [](const StationWaterYear& a, const StationWaterYear& b) { return a.year == b.year; };
  if (const std::optional<int> file = browser_.ChosenFile()) {
    return browser_.Files()[static_cast<std::size_t>(*file)].listName == loaded_->file;
  }
  return StationIsLoaded() && !browser_.ChosenYears().empty() &&
         std::ranges::equal(YearsOf(*browser_.Chosen()), YearsOf(loaded_->choice), same);
}

bool FormSec::StationIsLoaded() const {
  return loaded_ && loaded_->dataDirectory == browser_.DataDirectory() &&
         loaded_->station == browser_.Station();
}

SelectionFacts FormSec::Facts() const {
  return {.confirm = browser_.Confirm(),
          .curvesAreOffered = run_.language.Choice() != LanguageChoice::English,
          .busy = busy_,
          .fileChosen = browser_.ChosenFile().has_value(),
          .filePressed = filePressed_,
          .yearsChosen = !browser_.ChosenYears().empty(),
          .choiceIsLoaded = ChoiceIsLoaded(),
          .stationIsLoaded = StationIsLoaded(),
          .yearIsLoaded = loaded_ && loaded_->year,
          .readings = session_.Series().ReadingCount(),
          .changes = session_.ChangeCount(),
          .unsaved = session_.HasUnsavedChanges(),
          .canCorrectDates = session_.CanCorrectDates(),
          .isCorrected = session_.IsCorrected(),
          .correctionWaits = session_.HasUnsavedCorrection(),
          .changedRows = c_.changedRows->count(),
          .loadedFiles = c_.loadedFiles->rowCount(),
          .graphEntries = static_cast<int>(c_.graphList->Entries().size())};
}

void FormSec::Refresh() {
  Apply(StateOf(Facts()));
}

void FormSec::Apply(const SelectionState& state) {
  c_.confirm->setText(state.confirmCaption);
  c_.confirm->setEnabled(state.confirm);
  c_.cancel->setEnabled(state.cancel);
  c_.curve->setEnabled(state.chooseRating);
  c_.chooser->SetRatingState(state.chooseRating, state.ratingPathShown);
  c_.makeTable->setEnabled(state.makeTable);
  c_.drawGraph->setEnabled(state.drawGraph);
  c_.nextChange->setEnabled(state.goToChange);
  c_.previousChange->setEnabled(state.goToChange);
  c_.changeCount->setText(state.changes ? Say(Wording{u"Toplam %1 adet", u"Total: %1"}, *state.changes)
                                        : QString());
  c_.save->setEnabled(state.save);
  c_.undoAll->setEnabled(state.undoAll);
  c_.goToDate->setEnabled(state.goToDate);
  c_.correctDates->setVisible(state.correctDatesShown);
  c_.correctDates->setEnabled(state.correctDates);
  c_.clockPairs->setVisible(state.correctDatesShown);
  c_.clockPairs->setEnabled(state.correctDates);
  c_.removeCorrection->setVisible(state.removeCorrectionShown);
  c_.lastReading->setEnabled(state.lastReading);
  c_.changedPart->setVisible(state.changedRowsShown);
  c_.loadedPart->setVisible(state.loadedPartShown);
  c_.graphList->SetCommandsEnabled(state.graphListCommands);
}

}  // namespace vesk
