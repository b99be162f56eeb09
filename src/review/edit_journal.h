// The edit journal: what the operator did since the last save, written down edit by edit, so that a crash or
// a power cut costs nothing. It stands beside the change log and is gone once the work is saved or discarded.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

#include <vector>

#include "datafiles/reading.h"
#include "platform/result.h"
#include "review/date_correction.h"
#include "review/review_grid.h"

namespace vesk {

/// One thing the operator did that a later run can do again. It names its reading by what it is, so that it
/// holds whatever the clock correction in force.
struct JournalRecord {
  enum class Kind { Edit, EditExtreme, CorrectDates };
  Kind kind = Kind::Edit;
  int row = 0;        ///< Edit: raw row at the time
  QString rawFile{};  ///< Edit: first 16 characters of its raw file's name
  DateTime time{};    ///< Edit: of the reading in its raw file; EditExtreme: as shown
  ReadingKind readingKind = ReadingKind::Ordinary;
  double fromCm = 0;   ///< edits: the level before, cm
  double levelCm = 0;  ///< edits: the level typed, cm
  TrueTimes target{};  ///< CorrectDates
  /// Edits of one operation, which come and go together, follow each other under one number; 0: alone.
  int step = 0;
  QString operation{};  ///< edits: what was done, as the review record has it
  QString reason{};     ///< edits: why, in the operator's words

  bool operator==(const JournalRecord&) const = default;
};

/// Adds records behind those that are there; their steps get numbers that nobody has.
void AppendRecords(std::vector<JournalRecord>& records, const std::vector<JournalRecord>& further);
/// End of the step that begins at `first`: one behind its last record.
std::size_t EndOfStep(const std::vector<JournalRecord>& records, std::size_t first);

/// What a journal offers: the work that was never saved, single-step undo already taken into account.
struct PendingEdits {
  std::vector<JournalRecord> records;
  bool torn = false;  ///< the last record was cut short and is left out
  [[nodiscard]] bool Empty() const { return records.empty(); }
};

/// changeLogPath + ".journal"; in single-file mode with the first 16 characters of the raw file's name
/// between, since all single files of a station share one change log.
QString JournalPath(const QString& changeLogPath, const QString& rawFileName = {});

/// What the journal's bytes hold, up to the first record that is not whole.
PendingEdits DecodeJournal(QByteArrayView content);

/// What a journal file holds; nothing when there is none.
Result<PendingEdits> JournalOf(const QString& journalPath);

/// Writes records, each forced to the disk before the call returns.
class EditJournal {
 public:
  EditJournal() = default;
  explicit EditJournal(QString path) : path_(std::move(path)) {}
  [[nodiscard]] const QString& Path() const { return path_; }

  /// What an earlier run left: the journal, or when there is none the work that waits behind it.
  [[nodiscard]] Result<PendingEdits> Pending() const;

  /// Takes up what is pending: starts over with these records and goes on behind them; no records remove it.
  /// The old journal is replaced whole or not at all, and kept under its name + ".old" (".old2", ...) when
  /// asked for. Without this call the first record starts a new journal, and one that is there waits under
  /// its name + ".later" until the new one is gone.
  Status Restart(const std::vector<JournalRecord>& records, bool keepOld);

  Status Append(const JournalRecord& record) { return Append(std::vector{record}); }
  /// The records of one step: after a crash all of them are there or none. One write to the disk.
  Status Append(const std::vector<JournalRecord>& step);
  /// The last step not yet undone no longer counts. Nothing to do where no record was written.
  Status AppendUndo();
  /// The work is saved or dropped: deletes what this object wrote, and brings back a journal that waits.
  Status Finish();
  /// Leaves what this object wrote as it is, for a later run to take up.
  void Leave() { file_.close(); }
  /// Deletes what is pending, whoever wrote it, and brings back a journal that waits; also right when there
  /// is none. On failure the journal goes on as before.
  Status Remove();

 private:
  Status AppendLines(const QByteArray& lines);
  Status OpenNew();
  Status SetAside();
  Status BringBack();
  [[nodiscard]] QString LaterPath() const;

  QString path_;
  QFile file_;
};

}  // namespace vesk
