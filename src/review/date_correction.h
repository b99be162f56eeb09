// Date correction: a logger clock drifts, so the readings of one raw file are re-timed linearly between the
// first reading, which keeps its time, and the last one, whose true time the operator knows.
#pragma once

#include <QString>

#include <map>
#include <optional>
#include <tuple>
#include <vector>

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

/// Reads the operator's text (dd/mm/yyyy hh:mm) and checks it against the readings as the raw file has them.
/// Refused (the reason says why): a text that is no date-time, a time not after the first reading, readings
/// whose last one does not lie after the first.
Result<DateTime> ReadCorrectionTarget(const QString& text, const ReviewGrid& raw);

/// A daily extreme that a re-timed grid computes; it is told by its day and its kind.
struct ExtremeKey {
  Day day{};
  ReadingKind kind = ReadingKind::Maximum;

  bool operator==(const ExtremeKey&) const = default;
  bool operator<(const ExtremeKey& other) const {
    return std::tie(day, kind) < std::tie(other.day, other.kind);
  }
};

/// An operator's level in place of a computed extreme; it stays at the minute at which it was edited.
struct ExtremeEdit {
  double levelCm = 0;
  int minuteOfDay = 0;
  RowMark mark;
  QString discharge;
};

using ExtremeEdits = std::map<ExtremeKey, ExtremeEdit>;

/// A re-timed grid, and the raw row of each of its rows (0: a computed extreme).
struct RetimedView {
  ReviewGrid grid;
  std::vector<int> rawRows;
};

/// Re-times and re-orders the readings and replaces the logger's extreme records by computed ones at every
/// change of day. Levels, discharges and marks go along with their readings; rows that nobody edited are
/// shaded Corrected. However often the clock was corrected, times are cut to the minute once: target is the
/// true time of the last raw reading, as ReadCorrectionTarget gives it. edits: extremes that are not what is
/// computed.
RetimedView RetimeReadings(const ReviewGrid& raw, DateTime target, const ExtremeEdits& edits = {});

}  // namespace vesk
