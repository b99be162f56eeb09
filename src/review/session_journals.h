// The edit journals of one load: one beside each of its change logs, so that a load of several water years
// leaves behind what a later load of one of them can take up.
#pragma once

#include <memory>
#include <vector>

#include "review/edit_journal.h"
#include "review/load_readings.h"

namespace vesk {

class SessionJournals {
 public:
  /// Goes over to the journals of a load; those before stay on the disk as they are.
  void Use(const LoadedReadings& loaded);

  /// What earlier runs left beside any of the change logs.
  [[nodiscard]] Result<PendingEdits> Pending() const;

  /// Which change log of the load, and so which journal, a row's corrections go into: that of the water year
  /// that it came in with.
  [[nodiscard]] std::size_t IndexOf(int row) const;

  /// The records of one step, each into the journal of its water year.
  Status Append(const std::vector<JournalRecord>& step);
  /// That step no longer counts.
  Status AppendUndo(const std::vector<JournalRecord>& step);
  /// Starts every journal over with its share of the records.
  Status Restart(const std::vector<JournalRecord>& records, bool keepOld);
  Status Finish();
  Status Remove();
  void Leave();

 private:
  Status OnEach(Status (EditJournal::*action)());
  /// A date correction has no row; it belongs to a single file, which has one journal.
  [[nodiscard]] std::size_t IndexOf(const JournalRecord& record) const { return IndexOf(record.row); }
  [[nodiscard]] std::vector<std::vector<JournalRecord>> SharesOf(
      const std::vector<JournalRecord>& records) const;

  std::vector<std::unique_ptr<EditJournal>> journals_;  // never empty once in use
  std::vector<RowRange> rows_;
};

}  // namespace vesk
