// Each rule with a finding, with the same series just under its limit, and at the edges of files and years.
#include "findings/findings.h"

#include <gtest/gtest.h>

#include <random>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using std::chrono::days;
using std::chrono::minutes;

const Day kFirstDay = std::chrono::year(2010) / 10 / 1;

/// A reading so many minutes behind 01/10/2010 00:00, as a loader makes it: midnight ends the day before.
Reading At(int minute, double levelCm, std::uint8_t file = 1) {
  const bool midnight = minute % kMinutesPerDay == 0;
  Reading reading;
  const int shown = midnight ? minute - 1 : minute;
  reading.day = kFirstDay + days(shown >= 0 ? shown / kMinutesPerDay : -1);
  reading.minuteOfDay = static_cast<std::int16_t>((shown + kMinutesPerDay) % kMinutesPerDay);
  reading.levelCm = levelCm;
  reading.sourceFile = file;
  return reading;
}

/// Hourly readings of one file, the first at 01:00.
std::vector<Reading> Hourly(const std::vector<double>& levels) {
  std::vector<Reading> readings;
  for (std::size_t i = 0; i < levels.size(); ++i)
    readings.push_back(At(60 * (static_cast<int>(i) + 1), levels[i]));
  return readings;
}

std::vector<double> Ramp(int count) {
  std::vector<double> levels;
  for (int i = 0; i < count; ++i) levels.push_back(100 + i);
  return levels;
}

struct Asked {
  StationLimits limits = {};
  std::vector<ReadOut> readOuts = {{1, 60}, {2, 60}};
  std::optional<DayWindow> window = {};
};

/// "rule first-last value" of every finding; a note in brackets.
std::string Found(const std::vector<Reading>& readings, const Asked& asked = {}) {
  const StationSeries series = test::GridOf(readings);
  QStringList found;
  for (const Finding& finding : FindAll({series, asked.readOuts, asked.window, asked.limits})) {
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

TEST(Findings, ASeriesInOrderHasNone) {
  EXPECT_EQ(Found({}), "");
  EXPECT_EQ(Found(Hourly({100})), "");
  // Over several midnights, which stand as 23:59 and are an hour from both neighbours all the same.
  EXPECT_EQ(Found(Hourly(Ramp(24 * 3)), {.limits = {.spikeCm = 0, .rateCmPerHour = 1, .flatHours = 1}}), "");
  std::vector<Reading> records = Hourly(Ramp(30));
  Reading record = At(90, 900);
  record.kind = ReadingKind::Maximum;
  records.insert(records.begin() + 2, record);
  EXPECT_EQ(Found(records, {.limits = {.rateCmPerHour = 1}}), "") << "a record is no reading";
}

TEST(Findings, AGapIsMoreThanOneAndAHalfIntervals) {
  std::vector<Reading> readings = Hourly(Ramp(10));
  readings[5] = At(60 * 5 + 90, 105);
  EXPECT_EQ(Found(readings, {.readOuts = {{1, 60}}}), "(step 6-6 1)") << "an hour and a half is none";
  readings[5] = At(60 * 5 + 91, 105);
  EXPECT_EQ(Found(readings), "gap 5-6 1, (step 6-6 1)");
  readings = Hourly(Ramp(10));
  readings.erase(readings.begin() + 3, readings.begin() + 6);
  EXPECT_EQ(Found(readings), "gap 3-4 3");
  EXPECT_EQ(Found(readings, {.readOuts = {}}), "gap 3-4 3") << "the interval is learnt from the readings";
  // At a change of file the larger interval counts.
  std::vector<Reading> joint = {At(60, 100), At(120, 101), At(180, 102), At(330, 103, 2), At(360, 104, 2)};
  EXPECT_EQ(Found(joint, {.readOuts = {{1, 60}, {2, 30}}}), "gap 3-4 2");
  EXPECT_EQ(Found(joint, {.readOuts = {{1, 120}, {2, 30}}}), "(step 2-2 1)");
}

TEST(Findings, AWaterYearIsBegunAndEndedByReadings) {
  const DayWindow twoDays{kFirstDay, kFirstDay + days(1)};
  EXPECT_EQ(Found(Hourly(Ramp(48)), {.window = twoDays}), "");
  std::vector<Reading> readings = Hourly(Ramp(48));
  readings.pop_back();
  EXPECT_EQ(Found(readings, {.window = twoDays}), "")
      << "one reading later than the last is within 1.5 intervals";
  readings.erase(readings.end() - 2, readings.end());
  readings.erase(readings.begin(), readings.begin() + 5);
  EXPECT_EQ(Found(readings, {.window = twoDays}), "gap 1-1 5, gap 40-40 2");
}

TEST(Findings, ReadOutsThatCoverTheSameTime) {
  std::vector<Reading> readings = Hourly(Ramp(5));
  for (int i = 4; i <= 8; ++i) readings.push_back(At(60 * i, 99 + i, 2));
  EXPECT_EQ(Found(readings), "overlap 5-6 60, (double 4-7 0)");
  readings[6].levelCm += 3;
  EXPECT_EQ(Found(readings), "overlap 5-6 60, double 4-7 3") << "different levels are a doubt";
  readings.erase(readings.begin() + 5, readings.begin() + 7);
  EXPECT_EQ(Found(readings), "") << "one goes on where the other ends";
}

TEST(Findings, ADoubledHourAndTimeThatRunsBackwards) {
  std::vector<Reading> readings = Hourly(Ramp(6));
  readings.insert(readings.begin() + 3, At(180, 102));
  EXPECT_EQ(Found(readings), "(double 3-4 0)");
  readings[3].levelCm = 110;
  EXPECT_EQ(Found(readings), "double 3-4 8");
  readings = Hourly(Ramp(6));
  std::swap(readings[2], readings[3]);
  EXPECT_EQ(Found(readings), "order 3-4 60");
}

TEST(Findings, ASpikeLiesOffTheMeanOfItsNeighbours) {
  std::vector<Reading> readings = Hourly({100, 100, 100, 110, 100, 100});
  const Asked ten{.limits = {.spikeCm = 10}};
  EXPECT_EQ(Found(readings, ten), "") << "the limit itself is allowed";
  readings[3].levelCm = 110.1;
  EXPECT_EQ(Found(readings, ten), "spike 4-4 10.1");
  readings[3].levelCm = 89.9;
  EXPECT_EQ(Found(readings, ten), "spike 4-4 -10.1");
  readings[3].levelCm = 130;
  EXPECT_EQ(Found(readings, ten), "spike 3-5 30") << "one run with the neighbours that it pulls";
  readings.erase(readings.begin() + 4);
  EXPECT_EQ(Found(readings, ten), "spike 3-3 -15, gap 4-5 1") << "beside a gap there is no mean";
}

TEST(Findings, AFastChangeIsPerHourAndNotAcrossGaps) {
  std::vector<Reading> readings = {At(60, 100), At(70, 101), At(80, 103), At(90, 103)};
  const std::vector<ReadOut> ten = {{1, 10}};
  EXPECT_EQ(Found(readings, {.limits = {.rateCmPerHour = 12}, .readOuts = ten}), "");
  EXPECT_EQ(Found(readings, {.limits = {.rateCmPerHour = 11.9}, .readOuts = ten}), "rate 3-3 12");
  readings[2].levelCm = 99;
  EXPECT_EQ(Found(readings, {.limits = {.rateCmPerHour = 6}, .readOuts = ten}), "rate 3-4 24");
  readings = {At(60, 100), At(70, 100), At(90, 300), At(100, 300)};
  EXPECT_EQ(Found(readings, {.limits = {.rateCmPerHour = 6}, .readOuts = ten}), "gap 2-3 1");
}

TEST(Findings, AFlatLineIsAsLongAsTheLevelStandsStill) {
  std::vector<double> levels = {100, 102, 105, 105, 105.4, 105, 107, 109};
  const auto flat = [&](double hours, double cm) {
    return Found(Hourly(levels), {.limits = {.flatHours = hours, .flatCm = cm}});
  };
  EXPECT_EQ(flat(3, 0.4), "flat 3-6 3");
  EXPECT_EQ(flat(3.1, 0.4), "");
  EXPECT_EQ(flat(3, 0.3), "");
  EXPECT_EQ(flat(1, 0), "flat 3-4 1");
  std::vector<Reading> readings = Hourly(std::vector<double>(10, 50));
  readings.erase(readings.begin() + 5);
  EXPECT_EQ(Found(readings, {.limits = {.flatHours = 4}}), "flat 1-5 4, gap 5-6 1")
      << "nobody saw it stand still in the gap";
}

TEST(Findings, LevelsOutOfTheStationsRange) {
  const std::vector<Reading> readings = Hourly({100, -1, -3, 100, 250, 250.1});
  EXPECT_EQ(Found(readings, {.limits = {.lowestCm = 0, .highestCm = 250}}), "range 2-3 -3, range 6-6 250.1");
  EXPECT_EQ(Found(readings, {.limits = {.lowestCm = -3}}), "");
}

// On an evenly spaced series the flagged points are those of the tests as they are published, which look at
// each point with the ones before and behind it.
TEST(Findings, FlagsThePointsOfThePublishedTests) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    std::vector<double> levels;
    for (int i = 0; i < 200; ++i) levels.push_back(static_cast<double>(random() % 8));
    const auto rows = [&](const StationLimits& limits) {
      std::vector<bool> flagged(levels.size());
      const StationSeries series = test::GridOf(Hourly(levels));
      for (const Finding& finding : FindAll({series, {{1, 60}}, {}, limits})) {
        for (int row = finding.firstRow; row <= finding.lastRow; ++row)
          flagged[static_cast<std::size_t>(row - 1)] = true;
      }
      return flagged;
    };
    std::vector<bool> spikes(levels.size()), rates(levels.size()), flats(levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
      if (i > 0 && i + 1 < levels.size())
        spikes[i] = std::abs(levels[i] - (levels[i - 1] + levels[i + 1]) / 2) > 3;
      if (i > 0) rates[i] = std::abs(levels[i] - levels[i - 1]) > 5;
      if (i < 3) continue;
      const auto [low, high] = std::minmax_element(levels.begin() + static_cast<std::ptrdiff_t>(i) - 3,
                                                   levels.begin() + static_cast<std::ptrdiff_t>(i) + 1);
      if (*high - *low > 2) continue;
      for (std::size_t k = i - 3; k <= i; ++k) flats[k] = true;
    }
    ASSERT_EQ(rows({.spikeCm = 3}), spikes) << round;
    ASSERT_EQ(rows({.rateCmPerHour = 5}), rates) << round;
    ASSERT_EQ(rows({.flatHours = 3, .flatCm = 2}), flats) << round;
  }
}

}  // namespace
}  // namespace vesk
