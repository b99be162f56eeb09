// FormSec: the window that operators live in. They choose a folder, a station, water years or one raw file,
// see the readings, correct them, and make tables and graphs from them.
#pragma once

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

#include "graphs/form_debi.h"
#include "graphs/graph_files.h"
#include "review/browser.h"
#include "review/editing.h"
#include "review/not_whole_note.h"
#include "review/review_decisions.h"
#include "review/row_selection.h"
#include "selection/form_sec_controls.h"
#include "selection/review_questions.h"
#include "shell/run_values.h"

class QAction;

namespace vesk {

struct BuildReport;
struct SelectionFacts;
struct SelectionState;

class CurveSource;
class MainFrame;
class ReviewBench;
class ReviewGridModel;

class FormSec : public QWidget {
  Q_OBJECT

 public:
  /// Opens in the mode that the run's work mode names. Without questions it asks in message boxes.
  explicit FormSec(MainFrame& frame, std::unique_ptr<ReviewQuestions> questions = nullptr);
  ~FormSec() override;

  [[nodiscard]] QSize sizeHint() const override;

 public Q_SLOTS:
  /// Chooses water years by their number, as if the operator had clicked them.
  void ChooseWaterYears(const std::vector<WaterYear>& years);

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  /// What the review grid holds.
  struct Loaded {
    StationId station;
    QString stationName;
    QString dataDirectory;  ///< with its trailing separator; tables of the readings go there
    QString file;           ///< of a single file: the raw file's name in the list
    Choice choice;
    std::optional<WaterYear> year;  ///< the one that a table and a graph are made for; none of a single file
    Message notWhole;               ///< what the load does without; empty when nothing
  };

  // Opening and closing.
  void ConnectChooser();
  void ConnectGraphList();
  void ConnectGridCommands();
  void ConnectSession();
  void ConnectBench();
  void AddShortcuts();
  void ShowChooser(bool shown);
  void ShowHydrograph(bool shown);
  void ArrangeForMode();
  void RestoreLayout();
  void FitColumns();
  void KeepLayout() const;
  void KeepDataDirectory();
  void ConnectGrid();
  /// In the operator's language, places filled.
  template <class... Places>
  [[nodiscard]] QString Say(const Wording& wording, Places&&... places) const {
    return run_.language.Say(wording, std::forward<Places>(places)...);
  }

  // Choosing.
  void ChooseFolder(const QString& folder);
  // Rows of the lists, from 0.
  void ChooseStation(int row);
  void SelectStationEntry(int row);
  void ChooseYears(const std::vector<int>& rows);
  void ChooseFile(int row);
  void LoadFileByDoubleClick();
  void ShowYearPicker();
  void ShowFileMarks();
  void RevertSelection();
  void ShowReport(const BrowserReport& report);
  [[nodiscard]] QString StationName(const StationId& station);

  // Loading.
  void Confirm();
  void Load(const LoadRequest& request);
  /// Shows the readings and edits them from here on. Those that somebody saved over meanwhile are read again.
  void Take(const LoadRequest& request, LoadedReadings loaded);
  Result<LoadedReadings> LoadWithProgress(LoadRequest request);
  void ShowProgress(int value);
  void ShowLoaded(const LoadRequest& request, const LoadedReadings& loaded);
  void ShowLoadedLabel();
  void ShowLoadedFiles(const std::vector<QString>& files);
  void ShowLastReading(DateTime headersLastRecord);
  /// True when the work was taken over and the readings were loaded anew for it.
  bool TellHolder();
  void TellSummary(const LoadedReadings& loaded);
  [[nodiscard]] QString HolderText() const;
  bool LoadAgain();
  void OfferRecovery();
  void ClearGrid();
  /// True when nothing unsaved is in the way any more. False: the operator stays.
  bool MayLeaveGrid();
  [[nodiscard]] SelectionFacts Facts() const;
  /// Behind every change of what the window knows.
  void Refresh();
  void Apply(const SelectionState& state);
  [[nodiscard]] bool StationIsLoaded() const;
  [[nodiscard]] bool ChoiceIsLoaded() const;

  // Editing.
  /// Takes over a level that is being typed; false when it was refused.
  bool FinishEditing();
  void TellRefusal(const Error& error);
  bool SaveChanges();
  void UndoAll();
  void OfferRecordCorrection(int row);
  void RestoreRawLevels();
  void ShowRowLabel(int row);
  void StepBack();
  void StepForward();
  void GoToChange(bool next);
  void GoToDate();
  void CorrectDates();
  void CorrectDatesInPieces();
  void TellCorrected(const Result<bool>& corrected);
  void RemoveDateCorrection();
  void ShowEditState();
  void TellStatus(const QString& text);

  // Tables and graphs.
  void MakeTable();
  void TellTableMade(const BuildReport& report);
  void DrawGraph();
  FlowInput MakeFlowInput();
  void AddGraphEntries();
  void DrawGraphList();
  void DrawStoredGraphs();
  void OpenGraphs(const std::vector<GraphFileEntry>& files, const QStringList& notes = {});
  bool MayDraw(const QStringList& notes);

  // The rating curve.
  void ConnectCurve();
  void ChooseRatingCurve();
  [[nodiscard]] QString StationCurve() const;
  [[nodiscard]] QStringList LogsOfCurve() const;
  [[nodiscard]] UsedCurve LastCurve() const;
  void RememberCurve();
  void ShowStationCurve();
  void UseStationCurve();
  void KeepStationCurve();
  void OpenGaugings();
  void OpenCurveWindow();
  [[nodiscard]] StationId StationOfCurve() const;
  void UseCurve(const QString& path);
  void ShowCurve();

  MainFrame& frame_;
  RunValues& run_;
  std::unique_ptr<ReviewQuestions> questions_;
  WorkMode workMode_;
  RowSelection selection_;  ///< of the rows that the grid shows
  FormSecControls c_;
  Browser browser_;
  EditSession session_;
  std::unique_ptr<ReviewBench> bench_;
  std::unique_ptr<ReviewGridModel> model_;
  std::optional<Loaded> loaded_;
  std::optional<LoadRequest> request_;        ///< of what is loaded
  std::shared_ptr<const CurveSource> curve_;  ///< of the discharges; null: none
  QAction* dropCurve_ = nullptr;
  QAction* lastCurve_ = nullptr;
  QAction* stationCurve_ = nullptr;
  QAction* keepCurve_ = nullptr;
  QAction* gaugings_ = nullptr;
  QAction* curveWindow_ = nullptr;
  bool busy_ = false;  ///< a table or a graph is being made: choices wait
  bool opened_ = false;
  bool chooserStays_ = false;    ///< the operator has opened it behind a load: it does not fold away
  bool columnsAreKept_ = false;  ///< the columns' widths are the operator's own
  bool registerFailureTold_ = false;
  bool refused_ = false;      ///< the level typed last was not taken
  bool filePressed_ = false;  ///< since the last load or edit
};

/// A station's name as titles show it: a register without names gives "-", which says nothing there.
inline QString WithoutDash(const QString& name) {
  return name == QLatin1String("-") ? QString() : name;
}

}  // namespace vesk
