// Date correction: a logger clock drifts, so the readings of one raw file are re-timed linearly between the
// first reading, which keeps its time, and the last one, whose true time the operator knows.
#pragma once

#include <QString>

#include <optional>

#include "platform/result.h"
#include "review/review_grid.h"

namespace vesk {

/// Times of the first and the last ordinary reading. The logger's extreme records do not count: those of the
/// last day stand behind its readings with earlier times.
struct ReadingSpan {
  DateTime first{};
  DateTime last{};
};

/// Nothing when the grid has no ordinary reading.
std::optional<ReadingSpan> SpanOf(const ReviewGrid& grid);

/// Time of a reading after the correction, to the minute: first + (time - first) x (target - first)/(last -
/// first). last must differ from first.
DateTime RetimedReading(DateTime time, const ReadingSpan& span, DateTime target);

/// Reads the operator's text (dd/mm/yyyy hh:mm) and checks it against the grid. Refused (the reason says
/// why): a text that is no date-time, a time not after the first reading, a grid whose last reading does not
/// lie after its first.
Result<DateTime> ReadCorrectionTarget(const QString& text, const ReviewGrid& grid);

/// Re-times and re-orders the readings, replaces the logger's extreme records by computed ones at every
/// change of day, and marks every row Corrected; levels, discharges, edit codes and baselines go along with
/// their readings. False when the target is the last reading's own time: nothing changes. target as
/// ReadCorrectionTarget gives it.
bool CorrectDates(ReviewGrid& grid, DateTime target);

}  // namespace vesk
