// Findings: places in a station's readings that an operator should look at. Nothing here decides what is
// wrong; each finding says what it saw and what was expected. Definitions of the rules: docs/findings.md.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

#include "datafiles/data_lines.h"
#include "datafiles/raw_header.h"
#include "platform/wording.h"
#include "review/station_series.h"

namespace vesk {

enum class FindingRule : std::uint8_t {
  Gap,      ///< readings are missing, or the water year is not begun or ended by readings
  Overlap,  ///< two read-outs cover the same time
  Double,   ///< the same time twice
  Order,    ///< time runs backwards
  Step,     ///< a time off the interval's step
  Spike,
  Rate,
  Flat,
  Range
};

/// "gap", "overlap" …, as the command line and files name a rule.
QString RuleWord(FindingRule rule);

enum class FindingSeverity : std::uint8_t {
  Doubt,  ///< to be looked at: the figures may be wrong
  Note    ///< worth knowing, no figure depends on it
};

struct Finding {
  FindingRule rule = FindingRule::Gap;
  FindingSeverity severity = FindingSeverity::Doubt;
  int firstRow = 0, lastRow = 0;  ///< rows of the series as shown; of a gap, the readings on both sides of it
  DateTime from{}, to{};          ///< of these rows; of a gap, what lacks readings
  QString file;           ///< raw file of the first row, first 16 characters; empty when it is not known
  double value = 0;       ///< what was seen: readings missing, cm, cm/h, minutes; as the rule has it
  Message expected = {};  ///< what was expected instead

  bool operator==(const Finding&) const = default;
};

/// Limits of a station. A limit that is not set turns its rule off.
struct StationLimits {
  std::optional<double> spikeCm = {};  ///< T: most that a reading may lie off the mean of its neighbours
  std::optional<double> rateCmPerHour = {};  ///< R: fastest change
  std::optional<double> flatHours = {};      ///< N: so long may the level stand still
  double flatCm = 0;                         ///< still: highest less lowest at most this
  std::optional<double> lowestCm = {}, highestCm = {};
};

/// A raw file whose readings are in the series.
struct ReadOut {
  std::uint8_t number = 1;  ///< Reading::sourceFile of its readings
  double intervalMinutes =
      0;  ///< its record interval; 0: not known, the most common step of its readings counts
};

struct FindingInput {
  const StationSeries& series;      ///< levels as corrected, times as shown
  std::vector<ReadOut> readOuts;    ///< a file that is not among them has no known interval
  std::optional<DayWindow> window;  ///< the water years asked for; nothing of a single file
  StationLimits limits;
};

/// All findings, in the order of their times. Every reading is looked at; none is changed.
std::vector<Finding> FindAll(const FindingInput& input);

}  // namespace vesk
