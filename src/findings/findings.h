// Findings: places in a station's readings that an operator should look at. Nothing here decides what is
// wrong; each finding says what it saw and what was expected. Definitions of the rules: docs/findings.md.
#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "datafiles/data_lines.h"
#include "datafiles/station_limits.h"
#include "platform/wording.h"
#include "review/load_readings.h"

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
  Range,
  Extreme,  ///< the logger's own record against its readings
  Joint,    ///< a jump of the level or of the clock between two read-outs
  Header,   ///< what the header promises against the readings
  Refused,  ///< lines, or whole files, that are not among the readings
  Sensor,   ///< levels that a failing sensor gives
  Curve     ///< no discharge, or one beyond the gauged levels; only with a rating curve
};
inline constexpr std::array kFindingRules = {
    FindingRule::Gap,   FindingRule::Overlap, FindingRule::Double,  FindingRule::Order,  FindingRule::Step,
    FindingRule::Spike, FindingRule::Rate,    FindingRule::Flat,    FindingRule::Range,  FindingRule::Extreme,
    FindingRule::Joint, FindingRule::Header,  FindingRule::Refused, FindingRule::Sensor, FindingRule::Curve};

/// "gap", "overlap" …, as the command line and files name a rule.
QString RuleWord(FindingRule rule);
std::optional<FindingRule> RuleOfWord(QStringView word);
/// As a list of findings names it.
Wording RuleName(FindingRule rule);

enum class FindingSeverity : std::uint8_t {
  Doubt,  ///< to be looked at: the figures may be wrong
  Note    ///< worth knowing, no figure depends on it
};
/// "doubt" or "note".
QString SeverityWord(FindingSeverity severity);

/// What a finding's value counts.
enum class FindingUnit : std::uint8_t { Readings, Minutes, Cm, CmPerHour, Hours, Percent, Lines, Files };

struct Finding {
  FindingRule rule = FindingRule::Gap;
  FindingSeverity severity = FindingSeverity::Doubt;
  /// Rows of the series as shown; of a gap, the readings on both sides of it; 0: no row.
  int firstRow = 0, lastRow = 0;
  DateTime from{}, to{};  ///< of these rows; of a gap, what lacks readings
  QString file;           ///< raw file of the first row, first 16 characters; empty when it is not known
  double value = 0;       ///< what was seen
  FindingUnit unit = FindingUnit::Readings;
  Message expected = {};  ///< what was expected instead

  bool operator==(const Finding&) const = default;
};

/// The value with its unit, for a list: "12.5 cm/h".
Message ValueText(const Finding& finding);

class Samples;

struct FindingInput {
  const StationSeries& series;           ///< levels as corrected, times as shown
  const std::vector<ReadOut>& readOuts;  ///< a file that is not among them has no known interval
  std::vector<DayWindow> windows = {};   ///< the water years asked for, ascending; none of a single file
  StationLimits limits = {};
  std::vector<QString> missedFiles = {};  ///< disk names of files that the load does without
  /// One finding for each flagged reading, where readings are flagged; else one for each run of them.
  bool each = false;
};

/// What a load asks of the rules. The series and the read-outs must outlive it.
FindingInput InputOf(const LoadedReadings& loaded, const StationLimits& limits);
FindingInput InputOf(const StationSeries& series, const std::vector<ReadOut>& readOuts,
                     const std::vector<QString>& missedFiles, const StationLimits& limits);

/// All findings, in the order of their times. Every reading is looked at; none is changed.
std::vector<Finding> FindAll(const FindingInput& input);
/// The same of samples that were made of that series already, for who has other questions to them, too.
std::vector<Finding> FindAll(const Samples& samples, const FindingInput& input);

}  // namespace vesk
