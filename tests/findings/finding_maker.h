// Series made up for the rules, and what is found in them as a short text.
#pragma once

#include <gtest/gtest.h>

#include "findings/findings.h"
#include "review/grid_maker.h"

namespace vesk::test {

inline const Day kFirstDay = std::chrono::year(2010) / 10 / 1;

/// A reading so many minutes behind 01/10/2010 00:00, as a loader makes it: midnight ends the day before.
inline Reading At(int minute, double levelCm, std::uint8_t file = 1,
                  ReadingKind kind = ReadingKind::Ordinary) {
  const bool midnight = minute % kMinutesPerDay == 0;
  Reading reading;
  const int shown = midnight ? minute - 1 : minute;
  reading.day = kFirstDay + std::chrono::days(shown >= 0 ? shown / kMinutesPerDay : -1);
  reading.minuteOfDay = static_cast<std::int16_t>((shown + kMinutesPerDay) % kMinutesPerDay);
  reading.levelCm = levelCm;
  reading.sourceFile = file;
  reading.kind = kind;
  return reading;
}

/// Hourly readings of one file, the first at 01:00.
inline std::vector<Reading> Hourly(const std::vector<double>& levels) {
  std::vector<Reading> readings;
  for (std::size_t i = 0; i < levels.size(); ++i)
    readings.push_back(At(60 * (static_cast<int>(i) + 1), levels[i]));
  return readings;
}

inline std::vector<double> Ramp(int count) {
  std::vector<double> levels;
  for (int i = 0; i < count; ++i) levels.push_back(100 + i);
  return levels;
}

inline QString FileName(int number) {
  return QStringLiteral("001-12345-10100%1").arg(number);
}

/// A read-out of which nothing is known but its interval, minutes.
inline ReadOut Out(int number, double interval) {
  ReadOut readOut{.file = FileName(number), .diskName = FileName(number) + QStringLiteral(".txt")};
  readOut.header.RecordInterval = interval;
  readOut.tally.end = DataEnd::BehindWindow;
  return readOut;
}

struct Asked {
  StationLimits limits = {};
  std::vector<ReadOut> readOuts = {Out(1, 60), Out(2, 60)};
  std::vector<DayWindow> windows = {};
  std::vector<QString> missedFiles = {};
  bool each = false;
};

/// The readings as they came from files FileName(1), FileName(2) ...
inline StationSeries SeriesOf(const std::vector<Reading>& readings) {
  std::vector<RawFileRows> files;
  for (int row = 1; row <= static_cast<int>(readings.size()); ++row) {
    const QString name = FileName(readings[static_cast<std::size_t>(row - 1)].sourceFile);
    if (files.empty() || files.back().rawFile != name) files.push_back({name, row, row});
    files.back().last = row;
  }
  return WithFiles(GridOf(readings), std::move(files));
}

inline std::vector<Finding> AllOf(const std::vector<Reading>& readings, const Asked& asked = {}) {
  const StationSeries series = SeriesOf(readings);
  return FindAll({.series = series,
                  .readOuts = asked.readOuts,
                  .windows = asked.windows,
                  .limits = asked.limits,
                  .missedFiles = asked.missedFiles,
                  .each = asked.each});
}

/// "rule first-last value" of every finding; a note in brackets.
inline std::string TextOf(const std::vector<Finding>& findings) {
  QStringList found;
  for (const Finding& finding : findings) {
    const QString text = QStringLiteral("%1 %2-%3 %4")
                             .arg(RuleWord(finding.rule))
                             .arg(finding.firstRow)
                             .arg(finding.lastRow)
                             .arg(finding.value);
    found += finding.severity == FindingSeverity::Note ? QStringLiteral("(%1)").arg(text) : text;
    EXPECT_LE(finding.from, finding.to) << text.toStdString();
    EXPECT_FALSE(finding.expected.IsEmpty()) << text.toStdString();
  }
  return found.join(QStringLiteral(", ")).toStdString();
}

inline std::string Found(const std::vector<Reading>& readings, const Asked& asked = {}) {
  return TextOf(AllOf(readings, asked));
}

}  // namespace vesk::test
