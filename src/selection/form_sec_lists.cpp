// Choosing in the selection window: folder, station, water years, raw file.
#include <QTableWidget>

#include <algorithm>
#include <utility>

#include "review/setup_parameters.h"
#include "selection/chooser_panel.h"
#include "selection/form_sec.h"
#include "selection/message_list.h"
#include "selection/setup_table.h"
#include "shell/busy_cursor.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "stations/station_register.h"

namespace vesk {
namespace {

constexpr int kListedFailures = 5;

}  // namespace

void FormSec::ChooseFolder(const QString& folder) {
  if (busy_ || !MayLeaveGrid()) {
    c_.chooser->ShowFolder(run_.dataDirectory);
    return;
  }
  const BusyCursor busy;
  run_.dataDirectory = NormaliseFolderPath(folder);
  frame_.ShowDataDirectory();
  const BrowserReport report = browser_.OpenFolder(run_.dataDirectory);
  c_.chooser->ShowFolder(run_.dataDirectory);
  c_.chooser->ShowStations(browser_.Stations());
  c_.chooser->ShowFiles(browser_.FileEntries());
  c_.chooser->ShowWaterYears(browser_.StationYears());
  c_.setup->ShowCells({});
  ShowReport(report);
  Refresh();
}

void FormSec::ShowFileMarks() {
  c_.chooser->ShowFileMarks(browser_.FileEntries(), browser_.MarksShown());
}

void FormSec::ChooseStation(int row) {
  if (busy_ || !MayLeaveGrid()) {
    RevertSelection();
    return;
  }
  SelectStationEntry(row);
}

void FormSec::SelectStationEntry(int row) {
  if (browser_.Stations().empty()) return;
  const BusyCursor busy;
  const BrowserReport report = browser_.SelectStation(row);
  c_.chooser->SelectStation(std::max(row, 0));
  c_.chooser->ShowFiles(browser_.FileEntries());
  c_.chooser->ShowWaterYears(browser_.StationYears());
  const QString name = WithoutDash(StationName(browser_.Station()));
  ShowReport(report);
  const QString& station = browser_.Station().Text();
  TellStatus(name.isEmpty() ? station : station + QStringLiteral("  ") + name);
  Refresh();
}

// Puts the lists back to what is chosen, after the operator decided to stay.
void FormSec::RevertSelection() {
  const auto& stations = browser_.Stations();
  const auto at = std::find(stations.begin(), stations.end(), browser_.Station());
  const auto row = static_cast<int>(at - stations.begin());
  c_.chooser->SelectStation(at == stations.end() ? std::nullopt : std::optional(row));
  c_.chooser->SelectWaterYears(browser_.ChosenYears());
  c_.chooser->SelectFile(browser_.ChosenFile());
}

void FormSec::ChooseYears(const std::vector<int>& rows) {
  if (busy_ || !MayLeaveGrid()) {
    RevertSelection();
    return;
  }
  browser_.SelectWaterYears(rows);
  c_.chooser->SelectFile({});
  ShowFileMarks();
  UseCurve({});
  Refresh();
}

void FormSec::ChooseWaterYears(const std::vector<WaterYear>& years) {
  const std::vector<int> rows = browser_.IndexesOf(years);
  c_.chooser->SelectWaterYears(rows);
  ChooseYears(rows);
}

void FormSec::ChooseFile(int row) {
  if (busy_ || !MayLeaveGrid()) {
    RevertSelection();
    return;
  }
  const StationId station = browser_.Files()[static_cast<std::size_t>(row)].Station();
  SetupCells cells;
  std::vector<Message> messages;
  if (!browser_.SelectRawFile(row, StationName(station), cells, messages)) return;
  filePressed_ = true;
  c_.chooser->SelectWaterYears({});
  ShowFileMarks();
  c_.loadedFiles->hide();
  c_.setup->ShowCells(cells);
  c_.messages->Show(messages);
  UseCurve({});
  c_.chooser->ShowRatingCurve(
      run_.settings.ReadSetting(QStringLiteral("Genel"), QStringLiteral("AnahtarDirectory")));
  Refresh();
}

void FormSec::LoadFileByDoubleClick() {
  if (busy_ || !browser_.ChosenFile() || !MayLeaveGrid()) return;
  const RawFile chosen = browser_.Files()[static_cast<std::size_t>(*browser_.ChosenFile())];
  const auto& stations = browser_.Stations();
  const auto station = std::find(stations.begin(), stations.end(), chosen.Station());
  if (station == stations.end()) {
    Confirm();
    return;
  }
  SelectStationEntry(static_cast<int>(station - stations.begin()));
  const auto& files = browser_.Files();
  const auto again = std::find_if(files.begin(), files.end(),
                                  [&](const RawFile& file) { return file.listName == chosen.listName; });
  if (again == files.end()) return;  // archived meanwhile: a later read-out has taken its place
  const auto row = static_cast<int>(again - files.begin());
  c_.chooser->SelectFile(row);
  ChooseFile(row);
  Confirm();
}

void FormSec::ShowReport(const BrowserReport& report) {
  std::vector<Message> lines = report.refused;
  for (const QString& name : report.archived)
    lines.emplace_back(Wording{u"Arşivlendi: %1", u"Archived: %1"}, name);
  if (!report.failures.empty()) {
    lines.emplace_back(Wording{u"%1 dosya düzenlenmedi veya atlandı (dizine yazılamıyor olabilir); "
                               u"düzenlenmeyenler olduğu gibi okunur:",
                               u"%1 file(s) were not tidied (the folder may be read-only), or left out; "
                               u"those not tidied are read as they are:"},
                       report.failures.size());
  }
  for (std::size_t i = 0; i < report.failures.size() && i < kListedFailures; ++i)
    lines.push_back(report.failures[i]);
  c_.messages->Show(lines);
}

QString FormSec::StationName(const StationId& station) {
  const Result<QString> name = LookupStationName(run_.stationDatabasePath, station.Number());
  if (name) return *name;
  if (!registerFailureTold_) c_.messages->AddToNext(name.Failure().Said());
  registerFailureTold_ = true;
  return {};
}

}  // namespace vesk
