#include "ratings/curve_source.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "datafiles/dates.h"
#include "ratings/curve_file.h"
#include "review/station_series.h"

namespace vesk {
namespace {

/// Q = 0.01 h^2 from 10 to 100 cm.
RatingCurve Square(const char* station) {
  RatingCurve curve;
  curve.station = QString::fromLatin1(station);
  CurvePeriod period;
  period.segments = {{0, 0.01, 0, 2}};
  period.lowestCm = 10;
  period.highestCm = 100;
  period.aboveCm = 50;
  curve.periods = {period};
  return curve;
}

StationSeries ThreeReadings() {
  std::vector<Reading> readings(3);
  for (std::size_t i = 0; i < 3; ++i) {
    readings[i].day = *ReadDate(u"05/03/2020");
    readings[i].minuteOfDay = static_cast<std::int16_t>(60 * (i + 1));
    readings[i].levelCm = 50 + 40.0 * static_cast<double>(i);  // 50, 90, 130
  }
  return StationSeries(readings);
}

TEST(CurveSource, FollowsEveryCorrectionAtOnce) {
  StationSeries series = ThreeReadings();
  EXPECT_FALSE(series.CurveDischargeOf(1).has_value());
  series.SetCurve(std::make_shared<CurveSource>(Square("12345"), QStringLiteral("E1.dat"), QByteArray("00")));
  EXPECT_EQ(series.DischargeOf(1).text, QStringLiteral("25.0"));
  EXPECT_EQ(series.DischargeOf(3).text, QStringLiteral("169*"));
  EXPECT_EQ(series.DischargeOf(3).origin, DischargeOrigin::Curve);

  RowState state = *series.StateOf({.rawRow = 1});
  state.levelCm = 60;
  state.discharge = {QStringLiteral("99"), DischargeOrigin::ChangeLog};
  series.SetState({.rawRow = 1}, state);
  EXPECT_EQ(series.DischargeOf(1).text, QStringLiteral("36.0")) << "not what a line of the log once said";
  EXPECT_NEAR(series.CurveDischargeOf(1)->m3s, 36, 1e-12);
  EXPECT_EQ(series.LoggedDischargeOf(1).text, QStringLiteral("99")) << "the next save writes it back";
  series.SetCurve(nullptr);
  EXPECT_EQ(series.DischargeOf(1).text, QStringLiteral("99"));
  EXPECT_EQ(series.DischargeOf(2).text, QString());
}

TEST(CurveSource, SaysWhatAFlagMeansWithItsLimit) {
  const CurveSource source(Square("12345"), {}, {});
  const DateTime time = *ReadDateTime(u"05/03/2020 10:00");
  EXPECT_TRUE(source.Explain(time, DischargeFlag::None).IsEmpty());
  EXPECT_TRUE(source.Explain(time, DischargeFlag::ExtrapolatedAbove).English().contains(u"100 cm"));
  EXPECT_TRUE(source.Explain(time, DischargeFlag::TooHigh).English().contains(u"150 cm"));
  EXPECT_TRUE(source.Explain(time, DischargeFlag::TooLow).English().contains(u"10 cm"));
}

TEST(CurveSource, RefusesACurveOfAnotherStation) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("E1.dat"));
  ASSERT_TRUE(WriteCurveFile(path, Square("ab001")));
  const auto own = OpenCurve(path, QStringLiteral("AB001"));
  ASSERT_TRUE(own) << "names that differ in case are one station";
  EXPECT_EQ((*own)->Sha256().size(), 64);
  const auto other = OpenCurve(path, QStringLiteral("AB002"));
  ASSERT_FALSE(other);
  EXPECT_TRUE(other.Failure().English().contains(QStringLiteral("ab001")));
  QFile table(path);
  ASSERT_TRUE(table.open(QIODevice::WriteOnly));
  table.write("10,1\n20,2\n");
  table.close();
  EXPECT_TRUE(OpenCurve(path, QStringLiteral("AB002"))) << "a table names no station";
}

}  // namespace
}  // namespace vesk
