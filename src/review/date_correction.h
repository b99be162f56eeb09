// Date correction: a logger clock drifts, so the readings of one raw file are re-timed linearly between the
// first reading, which keeps its time, and the last one, whose true time the operator knows; or in pieces,
// between further times at which somebody compared the clock.
#pragma once

#include <QString>

#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "platform/result.h"
#include "review/raw_rows.h"

namespace vesk {

/// Times of the first and the last ordinary reading. The logger's extreme records do not count: those of the
/// last day stand behind its readings with earlier times.
struct ReadingSpan {
  DateTime first{};
  DateTime last{};
};

/// Nothing when there is no ordinary reading.
std::optional<ReadingSpan> SpanOf(const RawRows& raw);

/// What a logger's clock showed, and what it should have shown.
struct ClockPair {
  DateTime logger{}, truth{};

  bool operator==(const ClockPair&) const = default;
};

/// What is known of a clock that ran wrong: the true time of the last reading, and pairs before it,
/// ascending. The first reading keeps its time unless a pair says otherwise.
struct TrueTimes {
  DateTime last{};
  std::vector<ClockPair> before{};

  TrueTimes() = default;
  TrueTimes(DateTime ofLast) : last(ofLast) {}  // NOLINT: a single true time is the usual case
  bool operator==(const TrueTimes&) const = default;
};

/// "dd/mm/yyyy hh:mm" of the last reading, behind it a ";logger=true" for each pair before.
QString TrueTimesText(const TrueTimes& times);
/// Only as it is written; nothing for any other text.
std::optional<TrueTimes> ReadTrueTimes(const QString& text);

/// True when both clocks run forward from pair to pair, all of them within the readings.
bool FitTogether(const TrueTimes& times, const ReadingSpan& span);

/// Time of a reading after the correction, to the minute: straight between the pairs on both sides of it.
/// With none but the last one: first + (time - first) x (last true - first)/(last - first). last must differ
/// from first.
DateTime RetimedReading(DateTime time, const ReadingSpan& span, const TrueTimes& target);

/// Reads the operator's text (dd/mm/yyyy hh:mm) and checks it against the readings as the raw file has them.
/// Refused (the reason says why): a text that is no date-time, a time not after the first reading, readings
/// whose last one does not lie after the first.
Result<TrueTimes> ReadCorrectionTarget(const QString& text, const RawRows& raw);
/// The same for a time that is known already.
Result<TrueTimes> CheckCorrectionTarget(const TrueTimes& target, const RawRows& raw);

/// A daily extreme that a corrected clock has computed; it is told by its day and its kind.
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
  int minuteOfDay = 0;
  RowState state;
};

using ExtremeEdits = std::map<ExtremeKey, ExtremeEdit>;

/// A row as a corrected clock shows it: a raw reading at another time, or an extreme computed of a day.
struct RetimedRow {
  DateTime time{};
  double computedCm = 0;  ///< level of a computed extreme, cm
  int rawRow = 0;         ///< 0: a computed extreme
  ReadingKind kind = ReadingKind::Ordinary;
};

/// Re-times and re-orders the readings and puts computed extremes, of the levels as corrected, in the place
/// of the logger's records at every change of day. However often the clock was corrected, times are cut to
/// the minute once: target is the true time of the last raw reading, as ReadCorrectionTarget gives it.
/// Nothing when the readings have no span.
std::vector<RetimedRow> RetimeReadings(const RawRows& raw, const TrueTimes& target);

}  // namespace vesk
