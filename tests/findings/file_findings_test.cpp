// Rules on what the logger and its files say beside the readings: records, joints, headers, lines, sensor.
#include <gtest/gtest.h>

#include <random>

#include "findings/finding_maker.h"
#include "findings/proposed_limits.h"
#include "review/change_log.h"

namespace vesk {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using test::AllOf;
using test::At;
using test::Found;
using test::Hourly;
using test::kFirstDay;
using test::Out;
using test::Ramp;

constexpr ReadingKind kMax = ReadingKind::Maximum;
constexpr ReadingKind kMin = ReadingKind::Minimum;

/// Two days of hourly readings, 101 to 124 and 125 to 148 cm, each closed by its records (rows 25, 26, 51,
/// 52).
struct TwoDays {
  std::vector<Reading> readings;
  TwoDays() {
    for (int day = 0; day < 2; ++day) {
      const int start = day * kMinutesPerDay;
      for (int hour = 1; hour <= 24; ++hour) readings.push_back(At(start + 60 * hour, 100 + 24 * day + hour));
      readings.push_back(At(start + 60 * 23, 124 + 24 * day, 1, kMax));
      readings.push_back(At(start + 60, 101 + 24 * day, 1, kMin));
    }
    readings[24].levelCm = 123;  // that of its own minute, 23:00
    readings[22].levelCm = 123;
    readings[23].levelCm = 122;
    readings[50].levelCm = 147;
    readings[48].levelCm = 147;
    readings[49].levelCm = 146;
  }
  Reading& Maximum() { return readings[24]; }
  Reading& Minimum() { return readings[25]; }
};

TEST(FindingsInRecords, RecordsThatFitTheirDay) {
  EXPECT_EQ(Found(TwoDays().readings), "");
  TwoDays beyond;
  beyond.Maximum() = At(60 * 22 + 30, 128, 1, kMax);
  EXPECT_EQ(Found(beyond.readings), "") << "between two readings a level may be higher than both";
  EXPECT_EQ(Found(beyond.readings, {.limits = {.spikeCm = 100}}), "");
}

TEST(FindingsInRecords, RecordsThatContradictTheirDay) {
  TwoDays low;
  low.Maximum().levelCm = 122.9;
  EXPECT_EQ(Found(low.readings), "extreme 25-25 122.9") << "lower than the highest reading";
  TwoDays high;
  high.Minimum().levelCm = 102;
  EXPECT_EQ(Found(high.readings), "extreme 26-26 102") << "higher than the lowest reading";
  TwoDays surge;
  surge.Maximum() = At(60 * 22 + 30, 128, 1, kMax);
  EXPECT_EQ(Found(surge.readings, {.limits = {.spikeCm = 5}}), "") << "the limit itself is allowed";
  surge.Maximum().levelCm = 128.1;
  EXPECT_EQ(Found(surge.readings, {.limits = {.spikeCm = 5}}), "extreme 25-25 128.1");
  TwoDays minute;
  minute.Maximum() = At(60 * 22, 125, 1, kMax);
  EXPECT_EQ(Found(minute.readings), "extreme 25-25 125") << "another level than the reading of its minute";
  TwoDays elsewhere;
  elsewhere.Minimum().day += days(1);
  EXPECT_EQ(Found(elsewhere.readings), "extreme 26-26 1440") << "dated outside its day";
}

TEST(FindingsInRecords, MissingAndDoubledRecords) {
  TwoDays missing;
  missing.readings.erase(missing.readings.begin() + 25);
  EXPECT_EQ(Found(missing.readings), "extreme 1-24 0");
  TwoDays twice;
  twice.readings.insert(twice.readings.begin() + 25, twice.readings[24]);
  EXPECT_EQ(Found(twice.readings), "extreme 25-26 2");
  TwoDays none;
  std::erase_if(none.readings, [](const Reading& reading) { return reading.kind != ReadingKind::Ordinary; });
  EXPECT_EQ(Found(none.readings), "") << "a logger that keeps no records misses none";
}

// Another file's readings say nothing of a record, be they of the same day.
TEST(FindingsInRecords, EachFileHasItsOwn) {
  TwoDays both;
  for (int hour = 1; hour <= 5; ++hour) both.readings.push_back(At(2 * kMinutesPerDay + 60 * hour, 150, 2));
  both.readings.push_back(At(2 * kMinutesPerDay + 60, 150, 2, kMax));
  both.readings.push_back(At(2 * kMinutesPerDay + 60, 150, 2, kMin));
  for (int hour = 6; hour <= 9; ++hour) both.readings.push_back(At(2 * kMinutesPerDay + 60 * hour, 160, 3));
  both.readings.push_back(At(2 * kMinutesPerDay + 360, 160, 3, kMax));
  both.readings.push_back(At(2 * kMinutesPerDay + 360, 160, 3, kMin));
  EXPECT_EQ(Found(both.readings, {.readOuts = {Out(1, 60), Out(2, 60), Out(3, 60)}}), "joint 57-60 10");
}

TEST(FindingsAtJoints, TheLevelGoesOnFromFileToFile) {
  std::vector<double> levels(20, 100);
  const auto jump = [&](double cm, int pauseHours, const test::Asked& asked = {}) {
    std::vector<Reading> readings = Hourly(levels);
    for (int i = 0; i < 20; ++i) readings.push_back(At(60 * (20 + pauseHours + i), 100 + cm, 2));
    return Found(readings, asked);
  };
  EXPECT_EQ(jump(3, 1), "") << "3 cm are allowed in any case";
  EXPECT_EQ(jump(3.1, 1), "joint 20-21 3.1");
  EXPECT_EQ(jump(-5, 1), "joint 20-21 -5");
  EXPECT_EQ(jump(40, 2), "gap 20-21 1") << "without a limit a pause may bring any level";
  EXPECT_EQ(jump(3, 1, {.limits = {.rateCmPerHour = 1}}), "rate 21-21 3") << "in a slow river, too";
  const test::Asked five{.limits = {.rateCmPerHour = 5}};
  EXPECT_EQ(jump(10, 2, five), "gap 20-21 1");
  EXPECT_EQ(jump(10.1, 2, five), "gap 20-21 1, joint 20-21 10.1");
}

// In a river that changes by leaps a leap at the joint is nothing, on a steady rise it is not the rise.
TEST(FindingsAtJoints, WhatTheRiverDoesAnyhowIsNoJump) {
  std::vector<Reading> rising, restless;
  for (int i = 1; i <= 40; ++i) {
    rising.push_back(At(60 * i, 100 + 8 * i, i <= 20 ? 1 : 2));
    restless.push_back(At(60 * i, i % 2 == 0 ? 100 : 108, i <= 20 ? 1 : 2));
  }
  EXPECT_EQ(Found(rising), "");
  EXPECT_EQ(Found(restless), "");
  for (std::size_t i = 20; i < rising.size(); ++i) rising[i].levelCm += 5;
  EXPECT_EQ(Found(rising), "joint 20-21 13");
}

// Where read-outs overlap, one ends within the other: there is no place where one goes on for the other.
TEST(FindingsAtJoints, ReadOutsThatOverlapHaveNone) {
  std::vector<Reading> readings = Hourly(std::vector<double>(10, 100));
  for (int i = 8; i <= 20; ++i) readings.push_back(At(60 * i, 120, 2));
  EXPECT_EQ(Found(readings), "overlap 10-11 120, double 8-13 20");
}

TEST(FindingsAtJoints, TheClockGoesOnInStep) {
  std::vector<Reading> readings = Hourly(Ramp(5));
  for (int i = 0; i < 5; ++i) readings.push_back(At(60 * (6 + i) - 7, 105 + i, 2));
  EXPECT_EQ(Found(readings), "(joint 5-6 -7)");
}

constexpr Wording kALevel{u"bir seviye", u"a level"};

/// A day of hourly readings of a file with a header that fits them.
ReadOut Whole(int number = 1) {
  ReadOut readOut = Out(number, 60);
  RawHeader& header = readOut.header;
  header.SampleCount = 24;
  header.SetupTime = DateTime(kFirstDay);
  header.FirstRecordTime = DateTime(kFirstDay) + hours(1);
  header.LastRecordTime = DateTime(kFirstDay) + minutes(kLastMinuteOfDay);
  readOut.tally.end = DataEnd::EndMark;
  readOut.tally.ordinary = 24;
  readOut.tally.firstReading = header.FirstRecordTime;
  readOut.tally.lastReading = header.LastRecordTime;
  return readOut;
}

TEST(FindingsInFiles, WhatAHeaderPromises) {
  const std::vector<Reading> day = Hourly(Ramp(24));
  const auto with = [&](auto change) {
    ReadOut readOut = Whole();
    change(readOut);
    return Found(day, {.readOuts = {readOut}});
  };
  EXPECT_EQ(with([](ReadOut&) {}), "");
  EXPECT_EQ(with([](ReadOut& out) { out.header.SampleCount = 25; }), "header 1-24 24");
  EXPECT_EQ(with([](ReadOut& out) { out.header.FirstRecordTime += minutes(30); }), "header 1-24 -30");
  EXPECT_EQ(with([](ReadOut& out) { out.header.LastRecordTime += minutes(61); }), "(header 1-24 -60)")
      << "behind an end mark the header may have the true time; 24:00 is no minute before 00:00";
  EXPECT_EQ(with([](ReadOut& out) {
              out.header.LastRecordTime += minutes(61);
              out.tally.end = DataEnd::EndOfFile;
            }),
            "header 1-24 -60");
  EXPECT_EQ(with([](ReadOut& out) {
              out.tally.end = DataEnd::BehindWindow;
              out.header.SampleCount = 900;
              out.header.LastRecordTime += days(30);
            }),
            "")
      << "the rest of the file is another year's";
  EXPECT_NE(with([](ReadOut& out) { out.header.RecordInterval = 50; }).find("header 1-24 60"),
            std::string::npos);
  EXPECT_EQ(with([](ReadOut& out) { out.header.SetupTime = DateTime(kFirstDay) + minutes(61); }),
            "header 1-24 1");
}

TEST(FindingsInFiles, LinesAndFilesThatAreNotAmongTheReadings) {
  const std::vector<Reading> day = Hourly(Ramp(24));
  const auto with = [&](auto change) {
    ReadOut readOut = Whole();
    change(readOut.tally);
    return Found(day, {.readOuts = {readOut}});
  };
  EXPECT_EQ(with([](DataLineTally& tally) {
              tally.refused = 3;
              tally.faults = {{20, kALevel}};
            }),
            "refused 1-24 3");
  EXPECT_EQ(with([](DataLineTally& tally) { tally.unread = 7; }), "refused 1-24 7") << "behind the end mark";
  EXPECT_EQ(with([](DataLineTally& tally) {
              tally.end = DataEnd::BehindWindow;
              tally.unread = 900;
              tally.unreadInside = 2;
            }),
            "refused 1-24 2");
  EXPECT_EQ(with([](DataLineTally& tally) { tally.stray = 1; }), "refused 1-24 1");
  EXPECT_EQ(with([](DataLineTally& tally) { tally.joined = 4; }), "refused 1-24 4");
  EXPECT_EQ(with([](DataLineTally& tally) {
              tally.end = DataEnd::EndOfFile;
              tally.lacksLastRecords = true;
              tally.endLine = 39;
            }),
            "refused 1-24 39");
  EXPECT_EQ(Found(day, {.readOuts = {Whole()}, .missedFiles = {QStringLiteral("001-12345-101002.txt")}}),
            "refused 0-0 1");
  // A file that is read for two water years is told of once.
  ReadOut damaged = Whole();
  damaged.tally.refused = 3;
  damaged.tally.faults = {{20, kALevel}};
  EXPECT_EQ(Found(day, {.readOuts = {damaged, damaged}}), "refused 1-24 3");
}

TEST(FindingsOfTheSensor, LevelsThatNoRiverHas) {
  EXPECT_EQ(Found(Hourly({100, 0, -1, -5, 0, 9999, 100, -999, 9998})),
            "sensor 3-4 -5, sensor 6-6 9999, sensor 8-8 -999");
  std::vector<double> levels;
  for (int i = 0; i < 400; ++i) levels.push_back(i % 20 == 0 ? 55 : 100 + i);
  EXPECT_EQ(Found(Hourly(levels)), "") << "a twentieth is allowed";
  levels[3] = 55;
  EXPECT_EQ(Found(Hourly(levels)), "(sensor 1-381 5.25)");
  // What stands in a flat line is told as that.
  for (std::size_t i = 100; i < 200; ++i) levels[i] = 300;
  EXPECT_EQ(Found(Hourly(levels), {.limits = {.flatHours = 48}}), "flat 101-200 99");
  EXPECT_EQ(Found(Hourly(levels)), "(sensor 101-200 25)");
}

TEST(Findings, EachFlaggedReadingOnItsOwn) {
  const std::vector<Reading> readings = Hourly({100, 100, 130, 100, 100, 100, -2, -3, 50, 50, 50});
  const test::Asked limits{.limits = {.spikeCm = 10, .flatHours = 2}};
  EXPECT_EQ(Found(readings, limits), "spike 2-4 30, flat 4-6 2, spike 6-9 51, sensor 7-8 -3, flat 9-11 2");
  test::Asked each = limits;
  each.each = true;
  EXPECT_EQ(Found(readings, each),
            "spike 2-2 -15, spike 3-3 30, spike 4-4 -15, flat 4-4 2, flat 5-5 2, spike 6-6 51, flat 6-6 2, "
            "spike 7-7 "
            "-50.5, sensor 7-7 -2, spike 8-8 -27, sensor 8-8 -3, spike 9-9 26.5, flat 9-9 2, flat 10-10 2, "
            "flat 11-11 2");
}

// What is looked at are the levels as corrected at the times as shown.
TEST(Findings, OfACorrectedSeries) {
  StationSeries series = test::SeriesOf(Hourly({100, 101, 160, 103, 104, 105}));
  const std::vector<ReadOut> outs{Out(1, 60)};
  const auto found = [&] {
    return test::TextOf(FindAll({.series = series, .readOuts = outs, .limits = {.spikeCm = 20}}));
  };
  EXPECT_EQ(found(), "spike 2-4 58");
  test::Change(series, 3, 102);
  EXPECT_EQ(found(), "");
}

// A series with the noise of a real one, and planted faults that must not widen the limits.
TEST(ProposedLimits, AreThoseOfTheSoundReadings) {
  std::mt19937 random(3);
  std::vector<double> sound;
  double level = 300;
  for (int i = 0; i < 8000; ++i) {
    level += static_cast<double>(random() % 5) - 2 + (300 - level) / 200;
    sound.push_back(std::round(level));
  }
  const auto proposed = [](const std::vector<double>& levels) {
    return ProposeLimits(test::SeriesOf(Hourly(levels)), {Out(1, 60)});
  };
  const StationLimits limits = proposed(sound);
  std::vector<double> faulty = sound;
  std::vector<int> spikes;
  for (int at = 100; at < 1100; at += 97) {
    faulty[static_cast<std::size_t>(at)] += 10 + *limits.spikeCm;
    spikes.push_back(at + 1);
  }
  for (std::size_t i = 3000; i < 3073; ++i) faulty[i] = faulty[2999];
  const StationLimits all = proposed(faulty);
  EXPECT_NEAR(*all.spikeCm, *limits.spikeCm, 2);
  EXPECT_NEAR(*all.rateCmPerHour, *limits.rateCmPerHour, 2);
  EXPECT_LE(*all.flatHours, 48);
  const auto alarms = AllOf(Hourly(sound), {.limits = limits, .readOuts = {Out(1, 60)}});
  EXPECT_LE(alarms.size(), sound.size() / 2000) << test::TextOf(alarms);
  const auto found = AllOf(Hourly(faulty), {.limits = all, .readOuts = {Out(1, 60)}});
  for (const int row : spikes) {
    EXPECT_TRUE(std::ranges::any_of(found, [row](const Finding& finding) {
      return finding.rule == FindingRule::Spike && finding.firstRow <= row && row <= finding.lastRow;
    })) << row;
  }
  EXPECT_TRUE(std::ranges::any_of(found, [](const Finding& finding) {
    return finding.rule == FindingRule::Flat && finding.firstRow == 3000 && finding.lastRow == 3073;
  }));
  EXPECT_EQ(proposed(std::vector<double>(99, 100)), StationLimits()) << "too few readings to tell";
  std::vector<double> slow;
  for (int i = 0; i < 4000; ++i) slow.push_back(100 + i / 40 % 50);
  EXPECT_EQ(proposed(slow).flatHours, 48) << "three days of a stuck sensor are found in every river";
}

}  // namespace
}  // namespace vesk
