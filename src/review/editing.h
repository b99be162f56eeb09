// Editing of a loaded series: levels, undo, navigation, saving. One EditSession goes with one selection
// window.
#pragma once

#include <QObject>
#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "platform/locks.h"
#include "platform/regional.h"
#include "platform/result.h"
#include "review/load_readings.h"
#include "review/range_correction.h"
#include "review/review_grid.h"
#include "review/session_journals.h"
#include "review/station_series.h"

namespace vesk {

/// A typed level as it is taken: "ö" (code 246), "/" and "," stand for the decimal point.
QString NormaliseTypedLevel(const QString& typed);

/// Where to go for a date, and the date as it was understood.
struct DateJump {
  QString text;  ///< normalised, dd/mm/yyyy; empty when nothing was asked for
  int row = 0;   ///< first row of that date; 0 when the grid has none
};

/// The readings of one load with everything the operator does to them. Rows count from 1, as shown.
class EditSession : public QObject {
  Q_OBJECT

 public:
  explicit EditSession(QObject* parent = nullptr);

  /// Takes over the readings and the change logs of a load; everything of the load before is dropped, locks
  /// included. Each change log is locked for this session where nobody else has it.
  void Begin(LoadedReadings loaded);
  void Clear();
  /// Discharges follow the levels by that curve, until the next load; null: none.
  void UseCurve(std::shared_ptr<const DischargeSource> curve);

  [[nodiscard]] const StationSeries& Series() const { return series_; }

  /// Who works on these corrections; nothing when this session does. While somebody does, the readings are
  /// there to be looked at: every edit tries for the lock anew.
  [[nodiscard]] const std::optional<LockHolder>& Holder() const { return holder_; }
  /// The corrections are held by a session of another machine that will not come back, as the operator
  /// knows: takes its place. False while it (or another one) still holds them.
  Result<bool> TakeOver();
  /// True when the corrections have changed since they were read: to be loaded again before anything is
  /// edited. Also behind a save that was refused for that reason; unsaved work then stays in the journal.
  [[nodiscard]] bool IsOutdated() const { return outdated_; }
  /// Leaves unsaved edits in their journals, for the next load to offer.
  void KeepForLater();

  /// Work of an earlier run that was never saved, for the readings just loaded; ask for it after Begin. What
  /// has been saved all the same is not offered. An error, and the work stays where it is, when the load is
  /// not whole and readings of that work are missing from it.
  [[nodiscard]] Result<PendingEdits> Pending();
  /// Does the pending work again; returns how many records do not fit the readings: not there any more, or
  /// with a level that is neither the one before the edit nor the one after it, because somebody has saved
  /// another one since. Those are kept in a file of their own.
  int Restore(const PendingEdits& pending);
  /// Forgets the pending work, or this session's unsaved edits, for good (the grid is left as it is). On
  /// failure nothing is forgotten: the edits stay unsaved and in the journal.
  Status Discard();

  /// Edits since loading; the count of Text5.
  [[nodiscard]] int ChangeCount() const { return static_cast<int>(edited_.size()); }
  /// Row numbers of VSsatir: one an edit, ascending; edits of rows that are not on the screen left out.
  [[nodiscard]] std::vector<int> ChangedRows() const;
  /// True while there is a step to save or to take back.
  [[nodiscard]] bool HasUnsavedChanges() const { return !done_.empty(); }

  /// Only levels of reading rows can be edited.
  [[nodiscard]] bool IsEditable(int row, GridColumn column) const;
  /// Sets a level from a typed text. True when it changed the reading, false when it is the level already
  /// there.
  Result<bool> EditLevel(int row, const QString& typed);
  /// Gives the rows of a range, records too, the levels of their raw files back, as one step; how many
  /// changed.
  Result<int> RestoreRawLevels(const ShownRange& range);
  /// Gives several rows other levels as one step. Rows that have theirs already are passed over; how many
  /// changed. Refused as a whole when a row is no reading.
  Result<int> Correct(const std::vector<LevelChange>& changes, const Purpose& why);
  /// Why the edits from here on are made, in the operator's words; may be empty.
  void SetReason(const QString& reason) { reason_ = reason; }

  /// Re-times a single file's readings so that the last one stands at the typed date and time (dd/mm/yyyy
  /// hh:mm). False when that is its time already. The logger's own time takes a correction back.
  Result<bool> CorrectDates(const QString& targetText);
  /// The same in pieces: pairs of a logger's and a true time, the last reading's among them.
  Result<bool> CorrectDates(const TrueTimes& times);
  /// Gives every reading its raw time back; false when the readings are not re-timed.
  Result<bool> RemoveDateCorrection();
  /// True for a single-file load: only such a grid can be re-timed.
  [[nodiscard]] bool CanCorrectDates() const { return OfSingleFile() && series_.ReadingCount() > 0; }

  /// True while the grid's readings are re-timed, by this session or as saved.
  [[nodiscard]] bool IsCorrected() const { return series_.Target().has_value(); }
  /// True while a date correction, or the removal of one, waits to be saved or taken back.
  [[nodiscard]] bool HasUnsavedCorrection() const { return series_.Target() != SavedTarget(); }

  /// Steps back and forth through single edits (and date corrections). The row concerned; 0 when it was the
  /// whole grid; nothing when there was no step to take.
  std::optional<int> UndoStep();
  std::optional<int> RedoStep();
  /// CmdUndo: every level back to its baseline, every edit code one down.
  void UndoAll();
  /// Command4: writes the change log(s), and ahead of them what re-times their readings at the next load. On
  /// failure, or a crash on the way, nothing is lost and the files fit each other; the changes stay unsaved.
  /// Refused when somebody else holds or has changed the corrections (IsOutdated).
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
  /// A row's state before and after a step.
  struct RowStep {
    RowRef row{};
    RowState before{}, after{};
  };
  /// One step that can be taken back: of rows, or of the clock.
  struct Step {
    std::vector<RowStep> rows{};  ///< none: of the clock
    Purpose why{};
    TrueTimes target{};
    std::optional<TrueTimes> targetBefore{}, targetAfter{};

    [[nodiscard]] bool IsCorrection() const { return rows.empty(); }
  };

  [[nodiscard]] bool OfSingleFile() const { return IsSingleFile(series_.Chosen()); }
  Status MayEdit();
  void TryLocks();
  void CheckWhetherOutdated();
  using Levels = std::map<RowRef, double>;
  [[nodiscard]] Levels FinalLevels(const std::vector<JournalRecord>& records) const;
  [[nodiscard]] bool HasLevel(const RowRef& row, double levelCm) const;
  int Repeat(const std::vector<JournalRecord>& records, const Levels& saved);
  bool RepeatEdit(const JournalRecord& record, const Levels& saved, Step& step);
  [[nodiscard]] std::optional<RowStep> StepOf(const RowRef& row, double levelCm) const;
  Result<bool> Edit(int row, double levelCm);
  bool ApplyCorrection(const TrueTimes& target);
  Result<bool> CorrectDates(const Result<TrueTimes>& target);
  [[nodiscard]] std::optional<TrueTimes> PresentTimes() const;
  void TakeStep(const Step& step, bool forward);
  void Do(Step step);
  void ForgetEdits(const Step& step);
  void ShowChanged(const Step& step);
  void RetimeTo(const std::optional<TrueTimes>& target);
  [[nodiscard]] JournalRecord RecordOf(const RowStep& change) const;
  [[nodiscard]] std::vector<JournalRecord> RecordsOf(const Step& step) const;
  [[nodiscard]] std::vector<JournalRecord> DoneRecords() const;
  [[nodiscard]] std::map<RowRef, Purpose> Purposes() const;
  [[nodiscard]] int FirstShownRow(const Step& step) const;
  [[nodiscard]] std::optional<RowRef> Resolve(const JournalRecord& record) const;
  [[nodiscard]] int ResolveRawRow(const JournalRecord& record) const;
  [[nodiscard]] bool IsSaved(const std::vector<JournalRecord>& records) const;
  Status CheckBeforeSave();
  Status SaveLog(LoadedChangeLog& log);
  void JournalLastStep();
  void Journal(const Status& status);
  void FinishJournals();
  [[nodiscard]] std::optional<TrueTimes> SavedTarget() const;
  void ResetSteps();

  StationSeries series_;
  std::vector<LoadedChangeLog> logs_;
  SessionJournals journals_;
  std::vector<FileLock> locks_;  ///< one a log once held
  std::vector<QString> lockPaths_;
  std::optional<LockHolder> holder_;
  bool locksFailed_ = false;  ///< no lock file can be made there: nobody's work is to be protected
  bool outdated_ = false;
  bool journalFailed_ = false;
  bool whole_ = true;  ///< nothing is missing from the load
  QString reason_;
  std::vector<RowRef> edited_;  ///< one an edit, in the order made
  std::set<RowRef> touched_;    ///< while work is done again: rows that it changed
  std::vector<Step> done_, undone_;
};

}  // namespace vesk
