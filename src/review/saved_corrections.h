// Saved date corrections. The change log holds levels under their corrected times, so the next load of the
// same raw file has to re-time its readings first; what it needs for that stands in a file beside the change
// log.
#pragma once

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

/// changeLogPath + ".dates". One line a raw file: first, last and targets, parted by tabs.
QString SavedCorrectionPath(const QString& changeLogPath);

/// The entry of a freshly loaded grid; one without targets when nothing was saved. A missing file is no
/// error.
Result<SavedCorrection> ReadSavedCorrection(const QString& changeLogPath, const ReviewGrid& grid);

/// Puts the entry in place of the one for the same readings. Every other line stays. Whole or not at all.
Status WriteSavedCorrection(const QString& changeLogPath, const SavedCorrection& correction);

/// Re-times the grid as saved. False when an entry does not fit the grid (then nothing behind it is done).
bool ApplySavedCorrection(const SavedCorrection& correction, ReviewGrid& grid);

/// Gives a grid that was not re-timed the levels that its ordinary readings have in the re-timed one.
void TakeLevels(const ReviewGrid& corrected, ReviewGrid& raw);

}  // namespace vesk
