// The browser: a data directory's stations, a station's raw files and water years, and what is chosen of
// them. Lists, marks and the confirm button's caption are worked out here; a window only shows them.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "datafiles/raw_header.h"
#include "datafiles/work_mode.h"
#include "review/choice.h"
#include "review/load_readings.h"
#include "review/raw_files.h"
#include "review/setup_parameters.h"

namespace vesk {

/// The list that is used; it decides the confirm button's caption.
enum class BrowserList { FormActivate, ListOrjDos, ListSuYili };

/// Words of the current language.
struct BrowserWords {
  QString converted;  ///< mark of a water year whose converted file exists
  QString add;        ///< confirm caption while graph entries are collected
  QString readFile;   ///< confirm caption for a raw file
};

struct ConfirmButton {
  QString caption;
  bool enabled = false;
};

/// What tidying and archiving did to the folder, in words fit for the message list.
struct BrowserReport {
  std::vector<QString> archived;  ///< file names, now in the archive folder
  std::vector<Message> failures;  ///< files that stay as they are, and why
  std::vector<Message> refused;   ///< files whose header cannot be used, and why
};

/// The load of one station's water year in a folder, such as an entry of the graph list names it. Nothing on
/// disk changes.
LoadRequest WaterYearRequest(const QString& dataDirectory, const StationId& station, WaterYear year,
                             const QString& convertedWord);

class Browser {
 public:
  /// regional: how numbers of a header are read.
  Browser(WorkMode mode, BrowserWords words, Regional regional = {});

  /// Station-list build: stamps, renames and lists. dataDirectory ends with its separator. Nothing is chosen
  /// afterwards.
  BrowserReport OpenFolder(const QString& dataDirectory);
  [[nodiscard]] const QString& DataDirectory() const { return dataDirectory_; }
  [[nodiscard]] const std::vector<StationId>& Stations() const { return stations_; }

  /// Lists a station's raw files, archives superseded read-outs, collects the water years. An index outside
  /// the list means the first station; without stations nothing happens.
  BrowserReport SelectStation(int index);
  /// The chosen one; empty when there is none.
  [[nodiscard]] const StationId& Station() const { return station_; }

  [[nodiscard]] const std::vector<RawFile>& Files() const { return files_; }
  [[nodiscard]] const std::vector<StationWaterYear>& StationYears() const { return waterYears_; }

  /// Single-file mode: that file is chosen, water years are not. The header stands in the returned record;
  /// cells and messages are filled for the window. False when there is no such file.
  bool SelectRawFile(int index, const QString& stationName, SetupCells& cells,
                     std::vector<Message>& messages);
  /// Water-year mode: marks the files that hold one of the years. No index: nothing is chosen any more.
  void SelectWaterYears(const std::vector<int>& indexes);
  /// Water years by their number, such as another window handed over; those not listed are left out.
  [[nodiscard]] std::vector<int> IndexesOf(const std::vector<WaterYear>& years) const;

  /// Entries of ListOrjDos: 25 characters, and "<" behind a marked one.
  [[nodiscard]] std::vector<QString> FileEntries() const;
  /// True while the marks of a water-year choice are shown.
  [[nodiscard]] bool MarksShown() const { return marksShown_; }
  void ClearMarks() { marksShown_ = false; }

  /// What is chosen to be loaded; nothing as long as the operator has not said.
  [[nodiscard]] std::optional<Choice> Chosen() const;
  [[nodiscard]] const std::vector<int>& ChosenYears() const { return chosenYears_; }
  [[nodiscard]] std::optional<int> ChosenFile() const { return chosenFile_; }
  [[nodiscard]] ConfirmButton Confirm() const { return confirm_; }
  /// The caption rule for the list that is used; also run when the window becomes active.
  void ApplyCaptionRule(BrowserList list);

  /// What a load of the choice needs, but for the station's name; nothing when nothing is chosen.
  [[nodiscard]] std::optional<LoadRequest> Request() const;

 private:
  void ForgetChoice();
  [[nodiscard]] bool HoldsChosenYear(const RawFile& file) const;

  WorkMode workMode_;
  BrowserWords words_;
  Regional regional_;
  QString dataDirectory_;
  StationId station_;
  std::vector<StationId> stations_;
  std::vector<RawFile> files_;
  std::vector<StationWaterYear> waterYears_;
  std::vector<int> chosenYears_;  ///< indexes into waterYears_, in list order
  std::optional<int> chosenFile_;
  bool marksShown_ = false;
  ConfirmButton confirm_;
};

}  // namespace vesk
