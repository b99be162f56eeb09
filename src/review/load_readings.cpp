#include "review/load_readings.h"

#include <QFile>

#include <algorithm>

#include "datafiles/data_lines.h"
#include "datafiles/dates.h"
#include "datafiles/file_bytes.h"
#include "datafiles/header_checks.h"
#include "datafiles/numbers.h"
#include "datafiles/raw_file_names.h"
#include "datafiles/record_label.h"
#include "platform/whole_file.h"
#include "review/contradictions.h"
#include "review/load_gaps.h"
#include "review/review_decisions.h"
#include "review/review_grid.h"
#include "review/setup_parameters.h"

namespace vesk {
namespace {

constexpr int kLargestFileNumber = 99;  // record labels have two digits for it

/// One load under way.
class Loader {
 public:
  explicit Loader(const LoadRequest& request) : request_(request), years_(YearsOf(request.choice)) {}

  void LoadChoice() {
    if (IsSingleFile(request_.choice)) LoadSingleFile();
    for (const StationWaterYear& year : years_) {
      if (!LoadWaterYear(year.year)) break;
    }
  }

  void LoadSingleFile() {
    const RawFile& file = request_.files.front();
    const HeaderReading reading = ReadHeader(file, HeaderScope::SingleFile);
    loaded_.header = reading ? *reading : reading.Failure().header;
    loaded_.setup = cells_;
    if (Refused(file, reading)) return;
    ReadLines(file, *reading, 1, std::nullopt);
    TellFileDone(1);
  }

  /// False when the load ends with this year.
  bool LoadWaterYear(WaterYear year) {
    const int first = RowCount() + 1;
    const bool goesOn = LoadFilesOf(year);
    ++yearsDone_;
    rowsOfYears_.push_back({first, RowCount()});
    return goesOn;
  }

  /// Lays the log of every chosen year over the rows that came in with it. An extreme record's own date may
  /// be the other side of a year's end, and another year's reading may have its minute.
  Status LayChangeLogs() {
    loaded_.series =
        StationSeries(std::move(readings_), std::move(rawFiles_), request_.station, request_.choice);
    if (IsSingleFile(request_.choice)) return LayChangeLog({}, {});
    rowsOfYears_.resize(years_.size(), {1, 0});  // years that the load did not get to have none
    for (std::size_t i = 0; i < rowsOfYears_.size(); ++i) {
      if (Status laid = LayChangeLog(years_[i], rowsOfYears_[i]); !laid) return laid;
    }
    return TellOwnClocks();
  }

  LoadedReadings Finish() {
    // The notes are those of the file read last; a further file's reading clears the list.
    loaded_.messages.insert(loaded_.messages.begin(), headerNotes_.begin(), headerNotes_.end());
    loaded_.series.TakeBaseline();
    TellContradictions();
    TellApproval();
    return std::move(loaded_);
  }

 private:
  /// year: none of a single file.
  Status LayChangeLog(const std::optional<StationWaterYear>& year, const RowRange& rows) {
    LoadedChangeLog log;
    log.rows = rows;
    log.saveTo = ChangeLogPath(request_.dataDirectory, request_.station, year);
    auto overlay = LoadChangeLog(ChangeLogToRead(request_.dataDirectory, request_.station, year),
                                 loaded_.series, !year, rows);
    if (!overlay) return overlay.Failure();
    log.overlay = std::move(*overlay);
    loaded_.messages.insert(loaded_.messages.end(), log.overlay.messages.begin(), log.overlay.messages.end());
    loaded_.changeLogs.push_back(std::move(log));
    return {};
  }

  void TellContradictions() {
    for (const RecordContradiction& found : FindContradictions(loaded_.series)) {
      Tell(Message(Wording{u"%1: cihazın %2 kaydı %3 cm, ancak düzeltilen kayıtlara göre %4 cm",
                           u"%1: the logger's %2 record is %3 cm, but by the corrected readings it is %4 cm"},
                   DateText(found.day), KindText(found.kind), NumberText(found.recordedCm),
                   NumberText(found.readingsCm)));
    }
  }

  void TellApproval() {
    if (years_.size() != 1 || loaded_.changeLogs.empty()) return;
    for (const Message& note : ApprovalNotes(request_.dataDirectory, loaded_.readOuts,
                                             loaded_.changeLogs.front().overlay.path, loaded_.series))
      Tell(note);
  }

  /// A clock is corrected for a file on its own; a water year shows the logger's times.
  Status TellOwnClocks() {
    const QString path = ChangeLogPath(request_.dataDirectory, request_.station, {});
    const auto log =
        ReadWholeFile(path, Wording{u"Değişiklik dosyası okunamadı", u"The change log could not be read"});
    if (!log) return log.Failure();
    const auto corrections = ReadSavedCorrections(path, HashOf(*log));
    if (!corrections) return corrections.Failure();
    for (const SavedCorrection& clock : *corrections) {
      if (!clock.target) continue;
      for (const RawFileRows& rows : loaded_.series.Files()) {
        if (rows.rawFile.compare(clock.rawFile, Qt::CaseInsensitive) != 0) continue;
        Tell(Message(Wording{u"%1: kendi tarih düzeltmesi var (son kayıt %2); su yılı bunu almaz, zamanlar "
                             u"cihazınkilerdir",
                             u"%1: has a date correction of its own (last reading %2), which a water year "
                             u"does not take over; these are the logger's times"},
                     rows.rawFile, DateTimeText(clock.target->last)));
      }
    }
    return {};
  }

  bool LoadFilesOf(WaterYear waterYear) {
    const int year = waterYear.number;
    const DayWindow window{waterYear.FirstDay(), waterYear.LastDay()};
    loaded_.lastYear = waterYear;
    filesOfYear_ = 0;
    reference_.reset();
    for (std::size_t i = 0; i < request_.files.size(); ++i) {
      if (!TakeFile(i, year, window)) return false;
      TellFileDone(request_.files.size() * years_.size());
    }
    return true;
  }

  /// False when the load ends with this file.
  bool TakeFile(std::size_t i, int year, const DayWindow& window) {
    const RawFile& file = request_.files[i];
    const std::vector<Message> notesBefore = headerNotes_;
    const HeaderReading reading = ReadHeader(file, HeaderScope::WaterYear);
    if (NotOfYear(reading, year)) {
      headerNotes_ = notesBefore;
      Tell(reading.Failure().detail);
      return true;
    }
    if (IsGone(reading)) {
      Miss(file, Message(Wording{u"%1: yüklenmedi; dosya artık yerinde değil",
                                 u"%1: not loaded; the file is no longer there"},
                         file.diskName));
      return true;
    }
    if (Refused(file, reading)) {
      MissTheRest(i);
      return false;
    }
    loaded_.header = *reading;
    MergeCells(year);
    if (!Holds(*reading, year)) return true;
    if (filesOfYear_ == kMostFilesInLoad) {
      Miss(file, Message(Wording{u"%1: yüklenmedi; %2 su yılının %3 dosyadan fazlası var",
                                 u"%1: not loaded; water year %2 has more than %3 files"},
                         file.diskName, year, kMostFilesInLoad));
      return true;
    }
    ++filesOfYear_;
    const int number = std::min(static_cast<int>(i) + 1, kLargestFileNumber);
    ReadLines(file, *reading, static_cast<std::uint8_t>(number), window);
    return true;
  }

  [[nodiscard]] int RowCount() const { return static_cast<int>(readings_.size()); }

  void TellFileDone(std::size_t filesInAll) {
    ++filesDone_;
    if (request_.progress) request_.progress(static_cast<int>(filesDone_ * 100 / filesInAll));
  }

  HeaderReading ReadHeader(const RawFile& file, HeaderScope scope) {
    HeaderReading reading = ReadHeaderOfFile(request_.dataDirectory, file.diskName, request_.regional);
    headerNotes_ = HeaderNotes(reading, scope);
    if (const auto cells = SetupCellsOf(reading, request_.stationName)) cells_ = *cells;
    return reading;
  }

  static bool IsGone(const HeaderReading& reading) {
    return !reading && reading.Failure().fault == HeaderFault::Missing;
  }

  /// Once, though every further water year meets the same files.
  void Tell(const Message& message) {
    if (std::ranges::find(loaded_.messages, message) == loaded_.messages.end())
      loaded_.messages.push_back(message);
  }

  /// Tells of a file that the load has to do without.
  void Miss(const RawFile& file, const Message& message) {
    loaded_.whole = false;
    if (!ListContains(loaded_.missedFiles, file.diskName)) loaded_.missedFiles.push_back(file.diskName);
    Tell(message);
  }

  static bool Holds(const RawHeader& header, int year) {
    return header.FirstWaterYear <= year && header.LastWaterYear >= year;
  }

  /// A refused file whose water years are certain all the same, and the year is none of them.
  static bool NotOfYear(const HeaderReading& reading, int year) {
    return !reading && reading.Failure().yearsKnown && !Holds(reading.Failure().header, year);
  }

  /// The load ends with file `refused` of a year: the files behind it, and for the years still to come all
  /// others, are missed where they hold such a year or nobody can tell.
  void MissTheRest(std::size_t refused) {
    for (std::size_t i = 0; i < request_.files.size(); ++i) {
      const RawFile& file = request_.files[i];
      if (i == refused || !QFile::exists(request_.dataDirectory + file.diskName)) continue;
      const HeaderReading reading = ReadHeaderOfFile(request_.dataDirectory, file.diskName);
      const RawHeader& header = reading ? *reading : reading.Failure().header;
      const bool yearsKnown = reading || reading.Failure().yearsKnown;
      // This year's files before the refused one are in the load; of a later year none is.
      const std::size_t firstYear = yearsDone_ + (i < refused ? 1 : 0);
      for (std::size_t y = firstYear; y < years_.size(); ++y) {
        const int year = years_[y].year.number;
        if (yearsKnown && !Holds(header, year)) continue;
        Miss(file,
             Message(Wording{u"%1: %2 su yılı için yüklenmedi; kabul edilmeyen bir dosya yüklemeyi bitirdi",
                             u"%1: not loaded for water year %2; a refused file ended the load"},
                     file.diskName, year));
      }
    }
  }

  bool Refused(const RawFile& file, const HeaderReading& reading) {
    if (reading) return false;
    loaded_.refusedFile = file.diskName;
    Miss(file, reading.Failure().detail);
    return true;
  }

  /// The values of a year's first file are what its further files are compared with.
  void MergeCells(int year) {
    if (reference_) {
      MergeSetupCells(*reference_, cells_, loaded_.setup);
      return;
    }
    reference_ = cells_;
    loaded_.setup = cells_;
    loaded_.setup[kSetupWaterYearsRow] = QString::number(year);
  }

  void ReadLines(const RawFile& file, const RawHeader& header, std::uint8_t number,
                 const std::optional<DayWindow>& window) {
    const auto content = bytes_.Read(request_.dataDirectory + file.diskName);
    if (!content) {
      Miss(file, content.Failure().Said());
      return;
    }
    const int firstRow = RowCount() + 1;
    constexpr qsizetype kBytesPerLine = 29;
    readings_.reserve(readings_.size() + static_cast<std::size_t>(content->size() / kBytesPerLine));
    const DataLineTally tally = DecodeDataLines(*content, header.HeaderEnd, number, window, readings_);
    loaded_.files.push_back(file.listName);
    rawFiles_.push_back({file.listName.left(kStemLength), firstRow, RowCount()});
    loaded_.refusedLines += tally.refused;
    const FileGaps gaps = GapsOf(file.diskName, header, tally, window);
    for (const Message& message : gaps.messages) Tell(message);
    const std::optional<int> lost = ReadingInHeader(*content, header.HeaderEnd);
    loaded_.readOuts.push_back({.file = file.listName.left(kStemLength),
                                .diskName = file.diskName,
                                .header = header,
                                .tally = tally,
                                .readingsInHeader = lost.has_value()});
    if (lost) {
      Tell(Message(Wording{u"%1, %2. satır: başlık bozuk ve içinde kayıtlar var; bunlar okunmadı",
                           u"%1, line %2: the header is damaged and holds readings; they are not read"},
                   file.diskName, *lost));
    }
    if (gaps.whole && !lost) return;
    loaded_.whole = false;
    if (!ListContains(loaded_.partialFiles, file.diskName)) loaded_.partialFiles.push_back(file.diskName);
  }

  const LoadRequest& request_;
  std::vector<StationWaterYear> years_;  ///< none of a single file
  LoadedReadings loaded_;
  std::vector<Reading> readings_;      ///< until the change logs are laid
  std::vector<RawFileRows> rawFiles_;  ///< which raw file they came from
  FileBytes bytes_;
  SetupCells cells_;
  std::optional<SetupCells> reference_;
  std::vector<Message> headerNotes_;
  int filesOfYear_ = 0;
  std::size_t filesDone_ = 0;
  std::vector<RowRange> rowsOfYears_;
  std::size_t yearsDone_ = 0;  ///< chosen years before the one under way
};

}  // namespace

Result<LoadedReadings> LoadReadings(const LoadRequest& request) {
  if (request.files.empty()) {
    return Error{Wording{u"İstasyonun ham dosyası yok", u"No raw file of the station"},
                 request.dataDirectory + request.station.Text(),
                 {}};
  }
  Loader loader(request);
  loader.LoadChoice();
  if (const Status laid = loader.LayChangeLogs(); !laid) return laid.Failure();
  return loader.Finish();
}

}  // namespace vesk
