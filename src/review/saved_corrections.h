// Saved date corrections. A raw file is never changed, so what re-times its readings at the next load stands
// in a file beside the change log, an entry a raw file.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

#include "platform/result.h"
#include "review/date_correction.h"

namespace vesk {

/// The correction of one raw file. first and last: of its readings, in the logger's own times; a file that
/// has come again with others is not re-timed unasked.
struct SavedCorrection {
  QString rawFile;  ///< first 16 characters of its name
  DateTime first{};
  DateTime last{};
  std::optional<TrueTimes> target;  ///< nothing: not corrected

  bool operator==(const SavedCorrection&) const = default;
};

/// A correction that is about to be saved stands in the file ahead of its change log, and counts only once
/// that log has taken the place of the old one.
struct PlannedTarget {
  std::optional<TrueTimes> target;  ///< nothing: the correction is taken back
  QByteArray logHash;               ///< of the change log that goes with it
};

/// What the file says of one raw file.
struct CorrectionReading {
  SavedCorrection correction;  ///< of the readings as they are now; its target is what counts for them
  std::optional<SavedCorrection> misfit;  ///< made for other readings of that raw file, not applied
  int unreadable = 0;                     ///< lines of the file that could not be read, whosever they are
};

/// changeLogPath + ".dates". One line a raw file: name, first, last, target (TrueTimesText, "-" for none),
/// parted by tabs;
/// behind them "?" with the SHA-256 of a change log, and the target that counts with that one only.
QString SavedCorrectionPath(const QString& changeLogPath);

/// logHash: of the change log that it is read with. A missing file is no error.
Result<CorrectionReading> ReadSavedCorrection(const QString& changeLogPath, const QString& rawFile,
                                              const ReadingSpan& span, const QByteArray& logHash);

/// Every raw file's correction that counts with the log of that hash; one without file and target for each
/// line that could not be read.
Result<std::vector<SavedCorrection>> ReadSavedCorrections(const QString& changeLogPath,
                                                          const QByteArray& logHash);

/// Puts the entry in place of the one of the same raw file. Every other line stays, but a plan in it is
/// settled: kept or dropped as the present change log says, because the next one will not tell. Call it
/// before every save of the change log. Whole or not at all; writes nothing when nothing changes.
Status WriteSavedCorrection(const QString& changeLogPath, const SavedCorrection& correction,
                            const std::optional<PlannedTarget>& planned = {});

}  // namespace vesk
