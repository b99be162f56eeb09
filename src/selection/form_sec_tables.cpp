// Tables and graphs made from the selection window.
#include <QFileInfo>
#include <QProgressBar>
#include <QPushButton>

#include <map>
#include <set>

#include "datafiles/water_year.h"
#include "graphs/form_coklu_secim.h"
#include "graphs/frm_gr_lis.h"
#include "graphs/open_graph.h"
#include "selection/chooser_panel.h"
#include "selection/form_sec.h"
#include "selection/graph_list_panel.h"
#include "selection/message_list.h"
#include "selection/review_grid_view.h"
#include "selection/window_build_questions.h"
#include "shell/busy_cursor.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "stations/station_register.h"
#include "tables/build_level_table.h"
#include "tables/level_table.h"
#include "tables/table_notes.h"

namespace vesk {
namespace {

/// What a table takes while the option is empty, to be said where it is made.
QString UnchosenExtremes(const RunValues& run) {
  if (!run.options.Slot(8).isEmpty()) return {};
  return run.language.Say(Wording{
      u"Ayarlarda günlük uç değerler seçilmemiş: cihazın kaydettiği en yüksek ve en düşük seviyeler (TF) "
      u"kullanılır.",
      u"The options do not say which daily extremes to use: those that the logger recorded (TF) are taken."});
}

}  // namespace

void FormSec::MakeTable() {
  if (busy_ || !loaded_ || !loaded_->year) return;
  busy_ = true;
  Refresh();
  const ExtremeMode mode = ExtremeModeOf(run_.options.Slot(8));
  const auto facts = LookupStationFacts(run_.stationDatabasePath, loaded_->station.Number());
  const BuildInput input{.series = session_.Series(),
                         .stationNumber = loaded_->station.Number(),
                         .stationName = loaded_->stationName,
                         .waterYear = loaded_->year->number,
                         .extremeMode = mode,
                         .tableDirectory = loaded_->dataDirectory,
                         .templateDirectory = run_.programFolder,
                         .templateName = run_.language.templateName,
                         .afterSave = AfterSaveOf(run_.options.Slot(9)),
                         .notes = NotesOfTable(loaded_->notWhole, session_.Series(), mode,
                                               run_.language.Choice(), loaded_->year->number),
                         .catchmentKm2 = facts ? facts->catchmentKm2 : std::nullopt,
                         .language = run_.language.Choice()};
  const Result<BuildReport> report = [&] {
    WindowBuildQuestions asking(*this, *questions_, run_.language, UnchosenExtremes(run_));
    return BuildLevelTable(input, frame_.Office(), asking);
  }();
  busy_ = false;
  Refresh();
  c_.grid->setFocus();  // the button that was pressed was off meanwhile, and the focus went on from it
  if (!report) {
    questions_->Warn(this, run_.language.attentionTitle, run_.language.Say(report.Failure()));
    return;
  }
  if (report->end == BuildEnd::Made) {
    TellTableMade(*report);
  } else if (report->end != BuildEnd::WorkbooksAreOpen) {
    TellStatus(report->end == BuildEnd::Stopped
                   ? Say(Wording{u"Durduruldu; tablo yazılmadı, öncekine dokunulmadı.",
                                 u"Stopped; no table was written, an earlier one is as it was."})
                   : Say(Wording{u"Vazgeçildi; tablo yazılmadı.", u"Cancelled; no table was written."}));
  }
}

void FormSec::TellTableMade(const BuildReport& report) {
  for (const Error& warning : report.warnings) c_.messages->Add(warning.Said());
  if (report.hourlyRowsLeftOut > 0) {
    c_.messages->Add(Message(
        Wording{u"%1 kayıt saatlik sayfaya sığmadı ve orada yok; günlük sayfa eksiksizdir.",
                u"%1 readings did not fit the hourly sheet and are not on it; the daily sheet is complete."},
        report.hourlyRowsLeftOut));
  }
  TellStatus(Say(Wording{u"Tablo kaydedildi: %1", u"The table is saved: %1"}, report.path));
}

/// True when nothing stands against a picture of these readings, or the operator wants it all the same.
bool FormSec::MayDraw(const QStringList& notes) {
  return notes.isEmpty() || questions_->AskToGoOn(this, run_.language.attentionTitle,
                                                  Say(Wording{u"Grafik çizilmeden önce bilinmesi gerekenler:",
                                                              u"Before the graph is drawn, please note:"}) +
                                                      QLatin1Char('\n') + notes.join(QLatin1Char('\n')),
                                                  Say(Wording{u"Yine de çiz", u"Draw it anyway"}));
}

void FormSec::DrawGraph() {
  if (busy_ || !loaded_) return;
  const QString note = run_.language.Say(loaded_->notWhole);
  const QStringList notes = note.isEmpty() ? QStringList() : QStringList(note);
  if (!MayDraw(notes)) return;
  run_.stationMode = StationMode::Single;
  // The graph window reads the grid before the call returns, so the session's own one will do.
  OpenSingleGraph(
      frame_, session_.Series(),
      GraphStation{.number = loaded_->station.Number(),
                   .name = WithoutDash(loaded_->stationName),
                   .waterYear = loaded_->year ? std::optional(loaded_->year->number) : std::nullopt},
      notes, MakeFlowInput());
}

/// The water years on the screen as they are now, and a way to the station's other ones.
FlowInput FormSec::MakeFlowInput() {
  const auto yearOf = [mode = ExtremeModeOf(run_.options.Slot(8))](StationSeries series, int year) {
    std::vector<DailyMean> days = DailyMeansOf(ComputeLevelTable(series, year, mode, {}, false));
    return FlowYear{year, std::move(series), std::move(days)};
  };
  const StationSeries& shown = session_.Series();
  FlowInput input{loaded_->station.Number(), WithoutDash(loaded_->stationName), {}, {},
                  run_.dataDirectory,        shown.Curve() != nullptr};
  std::set<int> years;
  for (int row = 1; row <= shown.ReadingCount(); ++row) years.insert(WaterYearOf(shown.At(row).day));
  for (const int year : years) input.years.push_back(yearOf(shown, year));
  // What is on the screen, unsaved corrections among it, goes before what lies on the disk.
  input.allYears = [yearOf, present = input.years, folder = run_.dataDirectory, station = loaded_->station,
                    curve = shown.Curve(), word = run_.language.convertedWord, regional = run_.regional] {
    std::map<int, FlowYear> all;
    for (const FlowYear& year : present) all.emplace(year.waterYear, year);
    std::vector<RawFile> files = FilesInUse(ListRawFiles(folder, station));
    ReadHeaders(folder, files);
    for (const StationWaterYear& known : WaterYearsOf(files, folder, station, word)) {
      if (all.contains(known.year.number)) continue;
      LoadRequest request = WaterYearRequest(folder, station, known.year, word);
      request.regional = regional;
      auto read = LoadReadings(request);
      if (!read) continue;
      read->series.SetCurve(curve);
      all.emplace(known.year.number, yearOf(std::move(read->series), known.year.number));
    }
    std::vector<FlowYear> list;
    for (auto& [number, year] : all) list.push_back(std::move(year));
    return list;
  };
  return input;
}

void FormSec::AddGraphEntries() {
  for (const StationWaterYear& chosen : YearsOf(browser_.Chosen().value_or(SingleFile{}))) {
    if (c_.graphList->Add({browser_.Station(), chosen.year})) continue;
    questions_->Tell(
        this, run_.language.attentionTitle,
        Say(Wording{u"En çok %1 grafik birlikte çizilebilir.", u"At most %1 graphs are drawn together."},
            kMostGraphStations));
    break;
  }
}

void FormSec::DrawGraphList() {
  const std::vector<GraphListEntry>& entries = c_.graphList->Entries();
  c_.progress->setRange(0, static_cast<int>(entries.size()) * 100);
  ShowProgress(0);
  const Result<GraphFilesBuilt> built = [&] {
    const BusyCursor busy;
    return BuildGraphFiles(
        run_.dataDirectory, entries,
        [this, done = 0](const GraphListEntry& entry) mutable {
          const int before = 100 * done++;
          LoadRequest request =
              WaterYearRequest(run_.dataDirectory, entry.station, entry.year, run_.language.convertedWord);
          request.regional = run_.regional;
          request.progress = [this, before](int percent) { ShowProgress(before + percent); };
          return LoadReadings(request);
        },
        run_.language);
  }();
  c_.progress->hide();
  c_.progress->setRange(0, 100);
  if (!built) {
    questions_->Warn(this, run_.language.attentionTitle, run_.language.Say(built.Failure()));
    return;
  }
  if (!built->messages.isEmpty() && built->notes.isEmpty()) {
    questions_->Tell(this, run_.language.attentionTitle, built->messages.join(QLatin1Char('\n')));
  }
  if (built->notes.isEmpty() || MayDraw(built->messages + built->notes))
    OpenGraphs(built->files, built->notes);
}

// Nothing is loaded or deleted: the files of an earlier drawing are drawn as they lie in the folder.
void FormSec::DrawStoredGraphs() {
  if (busy_) return;
  const std::vector<GraphFileEntry> chosen = [this] {
    FrmGrLis list({}, run_.dataDirectory, run_.language, this);
    list.exec();
    return list.Chosen();
  }();  // the dialog is gone before this window, which owns it, closes
  if (!chosen.empty()) OpenGraphs(chosen);
}

// The graph window takes its level range from the files that it is given, so none is left over from before.
void FormSec::OpenGraphs(const std::vector<GraphFileEntry>& files, const QStringList& notes) {
  run_.stationMode = StationMode::Multiple;
  MainFrame& frame = frame_;
  if (close()) OpenMultipleGraph(frame, files, notes);
}

void FormSec::ShowYearPicker() {
  QStringList all;
  for (const StationWaterYear& year : browser_.StationYears()) all += EntryText(year);
  FormCokluSecim picker(all, browser_.ChosenYears(), run_.language, this);
  if (picker.exec() != QDialog::Accepted) return;
  std::vector<WaterYear> years;
  for (const int place : picker.Chosen()) {
    years.push_back(browser_.StationYears()[static_cast<std::size_t>(place)].year);
  }
  ChooseWaterYears(years);
}

}  // namespace vesk
