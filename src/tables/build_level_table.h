// The whole making of a level table: template copy, questions, figures, macro, save. One operation for the
// selection window and for the command line.
#pragma once

#include <QString>

#include <vector>

#include "platform/result.h"
#include "platform/spreadsheet.h"
#include "review/station_series.h"
#include "tables/level_table.h"
#include "tables/table_record.h"

namespace vesk {

/// What becomes of the workbook once it is saved.
enum class AfterSave {
  LeaveOpen,  ///< stays open on the daily sheet, for the operator to look at
  Close,      ///< is closed; the application stays for the next table
  Quit        ///< is closed and the application is ended (option "09" is "1")
};

/// LeaveOpen or Quit, as option "09" says ("1": quit).
AfterSave AfterSaveOf(const QString& optionText);

struct BuildInput {
  const StationSeries& series;  ///< readings of one station and water year
  QString stationNumber;        ///< five characters
  QString stationName;          ///< from the station register; may be empty
  int waterYear = 0;            ///< calendar year in which the water year ends, four digits
  ExtremeMode extremeMode = ExtremeMode::Recorded;
  QString tableDirectory;  ///< where the table file goes: the data directory, unless another one is asked for
  QString templateDirectory;  ///< where the template lies: the program folder
  /// Of the current language: "Sablon.xls" or "Sablon_E.xls". With a rating curve its fellow for discharges
  /// is taken ("SablonDebi.xls"); where that is missing, this one, and a warning tells so.
  QString templateName;
  AfterSave afterSave = AfterSave::LeaveOpen;
  /// What a reader must know of the readings (a file is missing, a record contradicts a correction), each a
  /// short sentence in the table's language, the weightiest first. They are asked about before anything is
  /// written and stand on the sheets.
  std::vector<QString> notes = {};
  std::optional<double> catchmentKm2 =
      {};  ///< of the station, above 0; for runoff depth and specific discharge
  LanguageChoice language = LanguageChoice::Turkish;  ///< of what is said of the rating curve
};

/// A message box of the build. An empty title means the program's own.
struct BuildMessage {
  QString text;
  QString title;
};

enum class HourlyAnswer { Yes, No, BackOut };

/// What the build is at, in this order; without hourly values one is left out.
enum class BuildStep { Opening, HourlySheet, DailySheet, Calculating, Saving, Done };

/// What the build asks and tells on its way. A window answers with message boxes, the command line by its
/// options. Nothing is written before the last question is answered, and each can be answered with no table.
class BuildQuestions {
 public:
  virtual ~BuildQuestions() = default;
  /// Spreadsheet windows are open, so nothing is built: critical icon, OK button, a beep.
  virtual void TellWorkbooksAreOpen(const BuildMessage& message) = 0;
  /// True to make a table of such readings all the same. Asked only where there are notes.
  virtual bool AskDespiteNotes(const std::vector<QString>& notes) = 0;
  /// True to replace a table that is Changed or Unknown. Asked only about such a one.
  virtual bool AskToReplace(const QString& path, TableOrigin origin) = 0;
  /// Shall the hourly sheet be filled?
  virtual HourlyAnswer AskForHourlyValues(const BuildMessage& message) = 0;
  /// Not to switch sheets while the build runs: critical icon, OK button. False to back out.
  virtual bool WarnNotToSwitchSheets(const BuildMessage& message) = 0;
  /// Called before each step and as it goes on. percent: 0 to 100, never falling. False stops the build; the
  /// step Done cannot be stopped any more.
  virtual bool ShowProgress(BuildStep step, int percent) = 0;
};

enum class BuildEnd {
  Made,
  WorkbooksAreOpen,  ///< the operator was told; nothing was written
  BackedOut,         ///< at a question; nothing was written
  KeptOther,         ///< the same, at the one about replacing a table
  Stopped            ///< on the way; the table of before is there, unchanged
};

struct BuildReport {
  BuildEnd end = BuildEnd::Made;
  QString path;  ///< the finished table file
  bool withHourlyValues = false;
  int hourlyRowsLeftOut = 0;    ///< readings beyond the last row of the hourly sheet
  std::vector<Error> warnings;  ///< steps that failed without harming a figure
};

/// "Tablo-12345(2011).xls"
QString TableFileName(const QString& stationNumber, int waterYear);

/// What the build writes, with or without the hourly sheet.
LevelTable TableOf(const BuildInput& input, bool withHourly);

/// Runs the build from start to end. A table that somebody changes while the new one is made is never
/// replaced: that is a failure. On failure the table file of an earlier build is still there, unchanged,
/// and no half table is left; the error names the file and the reason.
Result<BuildReport> BuildLevelTable(const BuildInput& input, Spreadsheet& spreadsheet,
                                    BuildQuestions& questions);

}  // namespace vesk
