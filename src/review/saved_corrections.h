// Saved date corrections. The change log holds levels under their corrected times, so the next load of the
// same raw file has to re-time its readings first; what it needs for that stands in a file beside the change
// log.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

#include "platform/result.h"
#include "review/review_grid.h"

namespace vesk {

/// The corrections of one raw file, told from the station's other files by its first and last reading.
struct SavedCorrection {
  DateTime first{};
  DateTime last{};
  std::vector<DateTime> targets;  ///< true time of the last reading, one a correction, oldest first

  bool operator==(const SavedCorrection&) const = default;
};

/// Corrections about to be saved. They stand in their file ahead of the change log that holds their times,
/// and count only once that change log has taken the place of the old one: levels under corrected times must
/// never meet readings that are not re-timed, nor the other way round.
struct PlannedTargets {
  std::vector<DateTime> targets;
  QByteArray changeLog;  ///< content of the change log that goes with them
};

/// changeLogPath + ".dates". One line a raw file: first, last and targets, parted by tabs; behind them "?"
/// with the SHA-256 of a change log, and the targets that count with that one only.
QString SavedCorrectionPath(const QString& changeLogPath);

/// The entry of a freshly loaded grid, with the targets that count; one without targets when nothing was
/// saved. A missing file is no error.
Result<SavedCorrection> ReadSavedCorrection(const QString& changeLogPath, const ReviewGrid& grid);

/// Puts the entry in place of the one for the same readings. Every other line stays, but a plan in it is
/// settled: kept or dropped as the present change log says, because the next one will not tell. Call it
/// before every save of the change log. Whole or not at all; writes nothing when nothing changes.
Status WriteSavedCorrection(const QString& changeLogPath, const SavedCorrection& correction,
                            const PlannedTargets& planned = {});

/// Re-times the grid as saved. False when an entry does not fit the grid (then nothing behind it is done).
bool ApplySavedCorrection(const SavedCorrection& correction, ReviewGrid& grid);

/// Gives a grid that was not re-timed the levels that its ordinary readings have in the re-timed one.
void TakeLevels(const ReviewGrid& corrected, ReviewGrid& raw);

}  // namespace vesk
