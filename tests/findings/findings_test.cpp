// Each rule with a finding, with the same series just under its limit, and at the edges of files and years.
#include "findings/findings.h"

#include <gtest/gtest.h>

#include <random>

#include "findings/finding_maker.h"

namespace vesk {
namespace {

using std::chrono::days;
using std::chrono::minutes;
using test::At;
using test::Found;
using test::Hourly;
using test::kFirstDay;
using test::Out;
using test::Ramp;

TEST(Findings, ASeriesInOrderHasNone) {
  EXPECT_EQ(Found({}), "");
  EXPECT_EQ(Found(Hourly({100})), "");
  // Over several midnights, which stand as 23:59 and are an hour from both neighbours all the same.
  EXPECT_EQ(Found(Hourly(Ramp(24 * 3)), {.limits = {.spikeCm = 0, .rateCmPerHour = 1, .flatHours = 1}}), "");
  std::vector<Reading> records = Hourly(Ramp(30));
  for (const ReadingKind kind : {ReadingKind::Maximum, ReadingKind::Minimum}) {
    const double level = kind == ReadingKind::Maximum ? 123 : 100;
    records.insert(records.begin() + 23, At(60 * (static_cast<int>(level) - 99), level, 1, kind));
  }
  records.resize(26);
  EXPECT_EQ(Found(records, {.limits = {.rateCmPerHour = 1}}), "") << "a record is no reading";
}

TEST(Findings, AGapIsMoreThanOneAndAHalfIntervals) {
  std::vector<Reading> readings = Hourly(Ramp(10));
  readings[5] = At(60 * 5 + 90, 105);
  EXPECT_EQ(Found(readings, {.readOuts = {Out(1, 60)}}), "(step 6-6 1)") << "an hour and a half is none";
  readings[5] = At(60 * 5 + 91, 105);
  EXPECT_EQ(Found(readings), "gap 5-6 1, (step 6-6 1)");
  readings = Hourly(Ramp(10));
  readings.erase(readings.begin() + 3, readings.begin() + 6);
  EXPECT_EQ(Found(readings), "gap 3-4 3");
  EXPECT_EQ(Found(readings, {.readOuts = {}}), "gap 3-4 3") << "the interval is learnt from the readings";
  // At a change of file the larger interval counts.
  std::vector<Reading> joint = {At(60, 100), At(120, 101), At(180, 102), At(330, 103, 2), At(360, 104, 2)};
  EXPECT_EQ(Found(joint, {.readOuts = {Out(1, 60), Out(2, 30)}}), "gap 3-4 2");
  EXPECT_EQ(Found(joint, {.readOuts = {Out(1, 120), Out(2, 30)}}), "header 1-3 60, (step 2-2 1)");
}

TEST(Findings, AWaterYearIsBegunAndEndedByReadings) {
  const DayWindow twoDays{kFirstDay, kFirstDay + days(1)};
  EXPECT_EQ(Found(Hourly(Ramp(48)), {.windows = {twoDays}}), "");
  std::vector<Reading> readings = Hourly(Ramp(48));
  readings.pop_back();
  EXPECT_EQ(Found(readings, {.windows = {twoDays}}), "")
      << "one reading later than the last is within 1.5 intervals";
  readings.erase(readings.end() - 2, readings.end());
  readings.erase(readings.begin(), readings.begin() + 5);
  EXPECT_EQ(Found(readings, {.windows = {twoDays}}), "gap 1-1 5, gap 40-40 3");
}

TEST(Findings, WaterYearsThatDoNotFollowEachOther) {
  const DayWindow one{kFirstDay, kFirstDay}, other{kFirstDay + days(3), kFirstDay + days(3)};
  std::vector<Reading> readings = Hourly(Ramp(24));
  EXPECT_EQ(Found(readings, {.windows = {one, other}}), "gap 0-0 0") << "a year without any reading";
  for (int i = 1; i <= 24; ++i) readings.push_back(At(3 * kMinutesPerDay + 60 * i, 200 + i));
  EXPECT_EQ(Found(readings, {.windows = {one, other}}), "") << "nobody asked for the days between them";
  EXPECT_EQ(Found(readings), "gap 24-25 48");
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
  const test::Asked ten{.limits = {.spikeCm = 10}};
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
  const std::vector<ReadOut> ten = {Out(1, 10)};
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
  const std::vector<Reading> readings = Hourly({100, 49, 47, 100, 250, 250.1});
  EXPECT_EQ(Found(readings, {.limits = {.lowestCm = 50, .highestCm = 250}}), "range 2-3 47, range 6-6 250.1");
  EXPECT_EQ(Found(readings, {.limits = {.lowestCm = 47}}), "");
}

// On an evenly spaced series the flagged points are those of the tests as they are published, which look at
// each point with the ones before and behind it.
TEST(Findings, FlagsThePointsOfThePublishedTests) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    std::vector<double> levels;
    for (int i = 0; i < 200; ++i) levels.push_back(static_cast<double>(random() % 8));
    const auto rows = [&](FindingRule rule, const StationLimits& limits) {
      std::vector<bool> flagged(levels.size());
      for (const Finding& finding : test::AllOf(Hourly(levels), {.limits = limits})) {
        if (finding.rule != rule) continue;
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
    ASSERT_EQ(rows(FindingRule::Spike, {.spikeCm = 3}), spikes) << round;
    ASSERT_EQ(rows(FindingRule::Rate, {.rateCmPerHour = 5}), rates) << round;
    ASSERT_EQ(rows(FindingRule::Flat, {.flatHours = 3, .flatCm = 2}), flats) << round;
  }
}

}  // namespace
}  // namespace vesk
