#include "ratings/discharge_days.h"

#include <gtest/gtest.h>

#include "datafiles/dates.h"

namespace vesk {
namespace {

DateTime At(const char* text) {
  return *ReadDateTime(QString::fromLatin1(text));
}

Day On(const char* text) {
  return *ReadDate(QString::fromLatin1(text));
}

TEST(DischargeDays, WeighsDischargesByTheTimeTheyStandFor) {
  // 2 m3/s for six hours, 8 for the eighteen that follow: the level of none of them comes in.
  DischargeDayMaker maker(1440);
  maker.Add(At("05/03/2020 06:00"), 360, 0, {2, DischargeFlag::None});
  maker.Add(At("05/03/2020 23:59"), 1439, 360, {8, DischargeFlag::None});
  maker.AddRecord(At("05/03/2020 09:17"), {9.5, DischargeFlag::ExtrapolatedAbove});
  const DischargeDay day = maker.Close(On("05/03/2020"));
  EXPECT_NEAR(*day.meanM3s, (2.0 * 360 + 8.0 * 1079) / 1439, 1e-12);
  EXPECT_FALSE(day.Partial());
  EXPECT_FALSE(day.extrapolated) << "the mean holds no extrapolated figure";
  EXPECT_EQ(day.highest->m3s, 9.5);
  EXPECT_TRUE(day.highest->flagged);
  EXPECT_EQ(day.highest->time, At("05/03/2020 09:17"));
  EXPECT_EQ(day.lowest->m3s, 2);
  EXPECT_FALSE(maker.Close(On("06/03/2020")).meanM3s.has_value()) << "nothing of a day leaks into the next";
}

TEST(DischargeDays, TellHowMuchOfThemIsCovered) {
  DischargeDayMaker maker(90);
  // Hourly until 06:00, then nothing until 18:00 (which covers an hour and a half of the pause), hourly to
  // the end; between 20:00 and 22:00 the level is above the curve.
  for (int hour = 1; hour <= 6; ++hour)
    maker.Add(At("05/03/2020 01:00"), 60 * hour, 60 * (hour - 1), {3, DischargeFlag::None});
  maker.Add(At("05/03/2020 18:00"), 1080, 360, {5, DischargeFlag::ExtrapolatedBelow});
  maker.Add(At("05/03/2020 19:00"), 1140, 1080, {5, DischargeFlag::None});
  maker.Add(At("05/03/2020 20:00"), 1200, 1140, {5, DischargeFlag::None});
  maker.Add(At("05/03/2020 21:00"), 1260, 1200, {0, DischargeFlag::TooHigh});
  maker.Add(At("05/03/2020 22:00"), 1320, 1260, {0, DischargeFlag::NoPeriod});
  maker.Add(At("05/03/2020 23:00"), 1380, 1320, {7, DischargeFlag::None});
  maker.Add(At("05/03/2020 23:59"), 1439, 1380, {7, DischargeFlag::None});
  const DischargeDay day = maker.Close(On("05/03/2020"));
  EXPECT_NEAR(*day.meanM3s, (3.0 * 360 + 5.0 * 840 + 7.0 * 119) / (360 + 840 + 119), 1e-12);
  EXPECT_NEAR(day.share, (360.0 + 90 + 120 + 119) / 1439, 1e-12);
  EXPECT_TRUE(day.Partial());
  EXPECT_TRUE(day.extrapolated);
  EXPECT_TRUE(day.tooHigh) << "the highest discharge of the day is not known";
  EXPECT_FALSE(day.tooLow);
  EXPECT_TRUE(SummariseDischarge({day}, 2020).year.tooHigh);
}

TEST(DischargeDays, AreSummedToMonthsAndTheYear) {
  std::vector<DischargeDay> days;
  const auto add = [&days](const char* date, double mean, double share) {
    DischargeDay day;
    day.day = On(date);
    day.meanM3s = mean;
    day.share = share;
    day.highest = DischargePeak{DateTime(day.day) + std::chrono::hours(5), mean * 2, false};
    day.lowest = DischargePeak{DateTime(day.day), mean / 2, false};
    days.push_back(day);
  };
  add("30/09/2019", 1000, 1);  // of the year before
  add("01/10/2019", 10, 1);
  add("31/10/2019", 30, 0.5);
  add("29/02/2020", 50, 1);
  add("30/09/2020", 2, 1);
  const DischargeYear made = SummariseDischarge(days, 2020, 100.0);
  ASSERT_EQ(made.months.size(), 12U);
  const DischargeSpan& october = made.months[0];
  EXPECT_EQ(october.days, 31);
  EXPECT_EQ(october.daysKept, 2);
  EXPECT_EQ(october.daysPartial, 1);
  EXPECT_NEAR(*october.meanM3s, 20, 1e-12);
  EXPECT_NEAR(*october.volumeHm3, 40 * 86400 / 1e6, 1e-12);
  EXPECT_NEAR(*october.runoffMm, 3.456 / 100 * 1000, 1e-9) << "3.456 million m3 over 100 km2";
  EXPECT_NEAR(*october.specificLsKm2, 200, 1e-9);
  EXPECT_EQ(october.highest->time, At("31/10/2019 05:00"));
  EXPECT_EQ(made.months[4].days, 29);
  EXPECT_FALSE(made.months[1].meanM3s.has_value());
  EXPECT_EQ(made.year.daysKept, 4);
  EXPECT_EQ(made.year.days, 366);
  EXPECT_NEAR(*made.year.meanM3s, 23, 1e-12);
  EXPECT_EQ(made.year.highest->m3s, 100);
  EXPECT_EQ(made.year.lowest->m3s, 1);
  EXPECT_FALSE(SummariseDischarge(days, 2020).year.runoffMm.has_value());
}

}  // namespace
}  // namespace vesk
