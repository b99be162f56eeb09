// Editing of a loaded review grid: levels, undo, navigation, saving. One EditSession goes with one selection
// window.
#pragma once

#include <QObject>
#include <QString>

#include <optional>
#include <vector>

#include "platform/regional.h"
#include "platform/result.h"
#include "review/date_correction.h"
#include "review/load_readings.h"
#include "review/review_grid.h"
#include "review/session_journals.h"

namespace vesk {

/// A typed level as it is taken: "ö" (code 246), "/" and "," stand for the decimal point.
QString NormaliseTypedLevel(const QString& typed);

/// Where to go for a date, and the date as it was understood.
struct DateJump {
  QString text;  ///< normalised, dd/mm/yyyy; empty when nothing was asked for
  int row = 0;   ///< first row of that date; 0 when the grid has none
};

/// The grid of one load with everything the operator does to it. Rows count from 1.
class EditSession : public QObject {
  Q_OBJECT

 public:
  explicit EditSession(QObject* parent = nullptr);

  /// Takes over the grid and the change logs of a load; everything of the load before is dropped.
  void Begin(LoadedReadings& loaded);
  void Clear();

  [[nodiscard]] const ReviewGrid& Grid() const { return grid_; }
  /// Work of an earlier run that was never saved, for the grid just loaded; ask for it after Begin.
  [[nodiscard]] Result<PendingEdits> Pending() const;
  /// Does the pending work again, less what was saved before the crash; returns how many records do not fit
  /// the grid. Those are kept in a file of their own.
  int Restore(const PendingEdits& pending);
  /// Forgets the pending work, or this session's unsaved edits, for good (the grid is left as it is). On
  /// failure nothing is forgotten: the edits stay unsaved and in the journal.
  Status Discard();

  /// Edits since loading; the count of Text5.
  [[nodiscard]] int ChangeCount() const { return static_cast<int>(changedRows_.size()); }
  /// Row numbers of VSsatir: one an edit, ascending.
  [[nodiscard]] const std::vector<int>& ChangedRows() const { return changedRows_; }
  /// True while there is a step to save or to take back.
  [[nodiscard]] bool HasUnsavedChanges() const { return !done_.empty(); }

  /// Only levels of reading rows can be edited.
  [[nodiscard]] bool IsEditable(int row, GridColumn column) const;
  /// Sets a level from a typed text. True when it changed the reading, false when it is the level already
  /// there.
  Result<bool> EditLevel(int row, const QString& typed);
  /// Re-times a single file's readings so that the last one stands at the typed date and time (dd/mm/yyyy
  /// hh:mm). False when that is its time already.
  Result<bool> CorrectDates(const QString& targetText);
  /// True for a single-file load: only such a grid can be re-timed.
  [[nodiscard]] bool CanCorrectDates() const { return singleFile_ && grid_.ReadingCount() > 0; }

  /// True while the grid's readings are re-timed, by this session or as saved.
  [[nodiscard]] bool IsCorrected() const { return Corrections() > 0; }
  /// True while a date correction waits to be saved or taken back.
  [[nodiscard]] bool HasUnsavedCorrection() const { return Corrections() > SavedCorrections(); }

  /// Steps back and forth through single edits (and date corrections). The row concerned; 0 when it was the
  /// whole grid; nothing when there was no step to take.
  std::optional<int> UndoStep();
  std::optional<int> RedoStep();
  /// CmdUndo: every level back to its baseline, every edit code one down.
  void UndoAll();
  /// Command4: writes the change log(s), and ahead of them what re-times their readings at the next load. On
  /// failure, or a crash on the way, nothing is lost and the files fit each other; the changes stay unsaved.
  Status Save();

  /// Next row below, or row above, that carries a change; 0 when there is none.
  [[nodiscard]] int NextChange(int fromRow) const;
  [[nodiscard]] int PreviousChange(int fromRow) const;
  [[nodiscard]] DateJump GoToDate(const QString& typed) const;

 Q_SIGNALS:
  void RowChanged(int row);      ///< one row's cells
  void GridAboutToBeReplaced();  ///< before rows come or go
  void GridReplaced();
  void AllRowsChanged();  ///< cells anywhere, same rows
  void StateChanged();    ///< count, or whether there is something unsaved
  /// Once between saves: edits go on, but do not survive a crash.
  void JournalFailed(const vesk::Error& error);

 private:
  /// One step that can be taken back: a level with its mark before and after, or a whole grid.
  struct Step {
    JournalRecord record;
    double oldLevelCm = 0;
    RowMark oldMark, newMark;
    std::optional<ReviewGrid> gridBefore;  ///< of a date correction
  };

  bool Repeat(const JournalRecord& record);
  bool ApplyEdit(int row, double levelCm);
  bool ApplyCorrection(DateTime target);
  void Redo(const Step& step);
  Status SaveLogsOfYears();
  Status SaveLogOfFile(LoadedChangeLog& log);
  void ReplaceGrid(ReviewGrid grid);
  void JournalLastStep();
  void Journal(const Status& status);
  void FinishJournals();
  int ResolveRow(const JournalRecord& record) const;
  std::size_t CountSaved(const std::vector<JournalRecord>& records) const;
  int Corrections() const;
  int SavedCorrections() const;
  void ResetSteps();

  ReviewGrid grid_;
  std::vector<LoadedChangeLog> logs_;
  SessionJournals journals_;
  bool journalFailed_ = false;
  bool singleFile_ = false;
  std::vector<int> changedRows_;
  std::vector<Step> done_, undone_;
};

}  // namespace vesk
