#include "review/browser.h"

#include <algorithm>

#include "datafiles/archive.h"
#include "datafiles/header_checks.h"
#include "datafiles/raw_file_names.h"

namespace vesk {
namespace {

QString NothingChosen() {
  return QStringLiteral("...");
}

std::vector<QString> ListNames(const std::vector<RawFile>& files) {
  std::vector<QString> names;
  names.reserve(files.size());
  for (const RawFile& file : files) names.push_back(file.listName.left(kListNameLength));
  return names;
}

void AddHidden(const std::vector<RawFile>& files, BrowserReport& report) {
  for (Message& hidden : HiddenFiles(files)) report.failures.push_back(std::move(hidden));
}

void AddTidying(const TidyReport& tidy, BrowserReport& report) {
  report.archived.insert(report.archived.end(), tidy.replaced.begin(), tidy.replaced.end());
  report.failures.insert(report.failures.end(), tidy.failures.begin(), tidy.failures.end());
}

}  // namespace

LoadRequest WaterYearRequest(const QString& dataDirectory, const StationId& station, WaterYear year,
                             const QString& convertedWord) {
  LoadRequest request;
  request.dataDirectory = dataDirectory;
  request.station = station;
  request.files = FilesInUse(ListRawFiles(dataDirectory, station));
  ReadHeaders(dataDirectory, request.files);
  StationWaterYear wanted{year};
  for (const StationWaterYear& known : WaterYearsOf(request.files, dataDirectory, station, convertedWord)) {
    if (known.year == year) wanted = known;
  }
  request.choice = WaterYears{{wanted}};
  return request;
}

Browser::Browser(WorkMode mode, BrowserWords words, Regional regional)
    : workMode_(mode), words_(std::move(words)), regional_(regional) {
  confirm_.caption = NothingChosen();
}

void Browser::ForgetChoice() {
  chosenYears_.clear();
  chosenFile_.reset();
  marksShown_ = false;
  confirm_ = {NothingChosen(), false};
}

BrowserReport Browser::OpenFolder(const QString& dataDirectory) {
  ForgetChoice();
  dataDirectory_ = dataDirectory;
  station_ = {};
  waterYears_.clear();
  BrowserReport report;
  AddTidying(RenameRawFiles(dataDirectory_), report);
  stations_ = ListStations(dataDirectory_);
  files_ = ListRawFiles(dataDirectory_);
  AddHidden(files_, report);
  return report;
}

BrowserReport Browser::SelectStation(int index) {
  BrowserReport report;
  if (stations_.empty()) return report;
  ForgetChoice();
  const bool listed = index >= 0 && index < static_cast<int>(stations_.size());
  station_ = stations_[listed ? static_cast<std::size_t>(index) : 0];
  files_ = ListRawFiles(dataDirectory_, station_);
  const ArchiveReport archive = ArchiveDuplicateRawFiles(dataDirectory_, ListNames(files_));
  report.archived = archive.archived;
  for (const Error& failure : archive.failures) report.failures.push_back(failure.Said());
  if (archive.changed) {
    AddTidying(RenameRawFiles(dataDirectory_), report);
    files_ = ListRawFiles(dataDirectory_, station_);
  }
  AddHidden(files_, report);
  files_ = FilesInUse(files_);  // read-outs that could not be archived take no part either
  ReadHeaders(dataDirectory_, files_);
  for (const RawFile& file : files_) {
    if (!file.Usable()) report.refused.push_back(file.WhyRefused());
  }
  waterYears_ = WaterYearsOf(files_, dataDirectory_, station_, words_.converted);
  return report;
}

bool Browser::SelectRawFile(int index, const QString& stationName, SetupCells& cells,
                            std::vector<Message>& messages) {
  if (index < 0 || index >= static_cast<int>(files_.size())) return false;
  chosenYears_.clear();
  chosenFile_ = index;
  marksShown_ = false;
  RawFile& file = files_[static_cast<std::size_t>(index)];
  const HeaderReading reading = ReadHeaderOfFile(dataDirectory_, file.diskName, regional_);
  file.Take(reading);
  messages = HeaderNotes(reading, HeaderScope::SingleFile);
  if (!reading) messages.push_back(reading.Failure().detail);
  if (const auto shown = SetupCellsOf(reading, stationName)) cells = *shown;
  ApplyCaptionRule(BrowserList::ListOrjDos);
  confirm_ = {words_.readFile, true};
  return true;
}

void Browser::SelectWaterYears(const std::vector<int>& indexes) {
  chosenFile_.reset();
  chosenYears_.clear();
  for (const int index : indexes) {
    if (index >= 0 && index < static_cast<int>(waterYears_.size())) chosenYears_.push_back(index);
  }
  std::sort(chosenYears_.begin(), chosenYears_.end());
  if (chosenYears_.empty()) {
    ForgetChoice();
    return;
  }
  marksShown_ = true;
  ApplyCaptionRule(BrowserList::ListSuYili);
  confirm_.enabled = true;
}

std::vector<int> Browser::IndexesOf(const std::vector<WaterYear>& years) const {
  std::vector<int> indexes;
  for (std::size_t i = 0; i < waterYears_.size(); ++i) {
    if (std::find(years.begin(), years.end(), waterYears_[i].year) != years.end()) {
      indexes.push_back(static_cast<int>(i));
    }
  }
  return indexes;
}

bool Browser::HoldsChosenYear(const RawFile& file) const {
  if (!file.Usable()) return false;
  const RawHeader& header = file.header;
  return std::any_of(chosenYears_.begin(), chosenYears_.end(), [&](int index) {
    const int year = waterYears_[static_cast<std::size_t>(index)].year.number;
    return header.FirstWaterYear <= year && header.LastWaterYear >= year;
  });
}

std::vector<QString> Browser::FileEntries() const {
  std::vector<QString> entries = ListNames(files_);
  if (!marksShown_) return entries;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (HoldsChosenYear(files_[i])) entries[i] += QLatin1Char('<');
  }
  return entries;
}

void Browser::ApplyCaptionRule(BrowserList list) {
  if (workMode_ == WorkMode::DataFile) {
    if (list == BrowserList::ListOrjDos) confirm_ = {QStringLiteral("Dosyayı Oku"), true};
    if (list == BrowserList::ListSuYili) confirm_ = {QStringLiteral("Su Yılını Oku"), true};
  } else if (workMode_ == WorkMode::MultipleGraph) {
    confirm_ = {words_.add, !chosenYears_.empty()};  // an entry needs a water year
  }
}

std::optional<Choice> Browser::Chosen() const {
  if (chosenFile_) return SingleFile{};
  if (chosenYears_.empty()) return std::nullopt;
  WaterYears chosen;
  for (const int index : chosenYears_) chosen.years.push_back(waterYears_[static_cast<std::size_t>(index)]);
  return chosen;
}

std::optional<LoadRequest> Browser::Request() const {
  const std::optional<Choice> chosen = Chosen();
  if (!chosen) return std::nullopt;
  LoadRequest request{.dataDirectory = dataDirectory_,
                      .station = station_,
                      .stationName = {},
                      .files = files_,
                      .choice = *chosen,
                      .regional = regional_,
                      .progress = {}};
  if (chosenFile_) {
    const RawFile& file = files_[static_cast<std::size_t>(*chosenFile_)];
    if (station_.IsEmpty()) request.station = file.Station();
    request.files = {file};
  }
  return request;
}

}  // namespace vesk
