// Choosing in the selection window: folder, station, water years, raw file.
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>
#include <utility>

#include "review/setup_parameters.h"
#include "selection/form_sec.h"
#include "selection/message_list.h"
#include "selection/setup_table.h"
#include "shell/busy_cursor.h"
#include "shell/folder_lists.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "stations/station_register.h"

namespace vesk {
namespace {

constexpr int kListedFailures = 5;

void Fill(QListWidget& list, const std::vector<QString>& entries) {
  const QSignalBlocker blocker(&list);
  list.clear();
  for (const QString& entry : entries) list.addItem(entry);
}

std::vector<int> SelectedRows(const QListWidget& list) {
  std::vector<int> rows;
  for (int row = 0; row < list.count(); ++row) {
    if (list.item(row)->isSelected()) rows.push_back(row);
  }
  return rows;
}

void Select(QListWidget& list, const std::vector<int>& rows) {
  const QSignalBlocker blocker(&list);
  list.clearSelection();
  list.setCurrentRow(rows.empty() ? -1 : rows.front(), QItemSelectionModel::NoUpdate);
  for (const int row : rows) {
    if (QListWidgetItem* item = list.item(row)) item->setSelected(true);
  }
}

}  // namespace

QString EntryText(const StationWaterYear& year) {
  return year.year.Text() + QLatin1Char(' ') + year.mark;
}

void FormSec::ChooseFolder(const QString& folder) {
  if (busy_ || !MayLeaveGrid()) {
    c_.volumes->ShowVolumeOf(run_.dataDirectory);
    c_.folders->SetPath(run_.dataDirectory);
    return;
  }
  const BusyCursor busy;
  run_.dataDirectory = NormaliseFolderPath(folder);
  frame_.ShowDataDirectory();
  const BrowserReport report = browser_.OpenFolder(run_.dataDirectory);
  c_.volumes->ShowVolumeOf(run_.dataDirectory);
  // The list stays as it is while the chosen folder is an entry of it, so a press does not move the entries.
  if (QDir::cleanPath(c_.folders->SelectedPath()) != QDir::cleanPath(run_.dataDirectory)) {
    c_.folders->SetPath(run_.dataDirectory);
  }
  ShowStations();
  ShowFiles();
  ShowWaterYears();
  c_.setup->ShowCells({});
  ShowReport(report);
  Refresh();
}

void FormSec::ShowStations() {
  std::vector<QString> entries;
  for (const StationId& station : browser_.Stations()) entries.push_back(station.Text());
  Fill(*c_.stations, entries);
  c_.stationCount->setText(QString::number(browser_.Stations().size()));
}

void FormSec::ShowFiles() {
  c_.filesTitle->setText(run_.language.Text(Caption::Files));
  Fill(*c_.rawFiles, browser_.FileEntries());
}

// Changes the entries in place: the list may be in the middle of a press.
void FormSec::ShowFileMarks() {
  const QString title = run_.language.Text(Caption::Files);
  c_.filesTitle->setText(browser_.MarksShown() ? title + QLatin1Char(':') : title);
  const QSignalBlocker blocker(c_.rawFiles);
  const std::vector<QString> entries = browser_.FileEntries();
  for (int row = 0; row < c_.rawFiles->count() && row < static_cast<int>(entries.size()); ++row) {
    c_.rawFiles->item(row)->setText(entries[static_cast<std::size_t>(row)]);
  }
}

void FormSec::ShowWaterYears() {
  std::vector<QString> texts;
  for (const StationWaterYear& year : browser_.StationYears()) texts.push_back(EntryText(year));
  Fill(*c_.waterYears, texts);
}

void FormSec::ChooseStation() {
  const std::vector<int> rows = SelectedRows(*c_.stations);
  if (busy_ || !MayLeaveGrid()) {
    RevertSelection();
    return;
  }
  SelectStationEntry(rows.empty() ? -1 : rows.front());
}

void FormSec::SelectStationEntry(int index) {
  if (browser_.Stations().empty()) return;
  const BusyCursor busy;
  const BrowserReport report = browser_.SelectStation(index);
  Select(*c_.stations, {std::max(index, 0)});
  ShowFiles();
  ShowWaterYears();
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
  Select(*c_.stations,
         at == stations.end() ? std::vector<int>{} : std::vector{static_cast<int>(at - stations.begin())});
  Select(*c_.waterYears, browser_.ChosenYears());
  Select(*c_.rawFiles, browser_.ChosenFile() ? std::vector{*browser_.ChosenFile()} : std::vector<int>{});
}

void FormSec::ChooseYears() {
  const std::vector<int> rows = SelectedRows(*c_.waterYears);
  if (busy_ || !MayLeaveGrid()) {
    RevertSelection();
    return;
  }
  browser_.SelectWaterYears(rows);
  Select(*c_.rawFiles, {});
  ShowFileMarks();
  ShowRatingCurve({});
  Refresh();
}

void FormSec::ChooseWaterYears(const std::vector<WaterYear>& years) {
  Select(*c_.waterYears, browser_.IndexesOf(years));
  ChooseYears();
}

void FormSec::ChooseFile() {
  const std::vector<int> rows = SelectedRows(*c_.rawFiles);
  if (rows.empty() || busy_) return;
  if (!MayLeaveGrid()) {
    RevertSelection();
    return;
  }
  const StationId station = browser_.Files()[static_cast<std::size_t>(rows.front())].Station();
  SetupCells cells;
  std::vector<Message> messages;
  if (!browser_.SelectRawFile(rows.front(), StationName(station), cells, messages)) return;
  filePressed_ = true;
  Select(*c_.waterYears, {});
  ShowFileMarks();
  c_.loadedFiles->hide();
  c_.setup->ShowCells(cells);
  c_.messages->Show(messages);
  ShowRatingCurve({});
  c_.ratingPath->setText(
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
  Select(*c_.rawFiles, {static_cast<int>(again - files.begin())});
  ChooseFile();
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
