// Graphs of discharge: what is joined, what is left out, where values stand.
#include "graphs/flow_plot.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFontMetricsF>
#include <QImage>
#include <QTemporaryDir>

#include "datafiles/dates.h"
#include "ratings/curve_source.h"

namespace vesk {
namespace {

/// Q = 0.01 h^2, gauged to 100 cm, usable to 150.
std::shared_ptr<const CurveSource> Square() {
  RatingCurve curve;
  CurvePeriod period;
  period.segments = {{0, 0.01, 0, 2}};
  period.lowestCm = 10;
  period.highestCm = 100;
  period.aboveCm = 50;
  curve.periods = {period};
  return std::make_shared<CurveSource>(curve, QString(), QByteArray());
}

Reading ReadingAt(const char* time, double levelCm, ReadingKind kind = ReadingKind::Ordinary) {
  const DateTime at = *ReadDateTime(QString::fromLatin1(time));
  Reading reading;
  reading.day = std::chrono::floor<std::chrono::days>(at);
  reading.minuteOfDay = static_cast<std::int16_t>((at - reading.day).count());
  reading.levelCm = levelCm;
  reading.kind = kind;
  return reading;
}

FlowYear YearOf(int waterYear, const std::vector<Reading>& readings,
                const std::vector<DailyMean>& days = {}) {
  FlowYear year{waterYear, StationSeries(readings), days};
  year.series.SetCurve(Square());
  return year;
}

FlowPlot Make(FlowKind kind, const std::vector<FlowYear>& years, bool logarithmic = false) {
  Language language;
  language.FillEnglish();
  return MakeFlowPlot({kind, QStringLiteral("12001"), QStringLiteral("Irmak"), logarithmic}, years, language);
}

TEST(FlowPlot, ReadingsWithoutADischargeAndGapsBreakTheLine) {
  const FlowPlot plot =
      Make(FlowKind::Discharge,
           {YearOf(2024, {ReadingAt("30/09/2023 23:00", 50), ReadingAt("01/10/2023 01:00", 50),
                          ReadingAt("01/10/2023 02:00", 60),
                          ReadingAt("01/10/2023 02:10", 90, ReadingKind::Maximum),
                          ReadingAt("01/10/2023 03:00", 200), ReadingAt("01/10/2023 04:00", 120),
                          ReadingAt("01/10/2023 05:00", 130), ReadingAt("10/10/2023 05:00", 80)})});
  ASSERT_EQ(plot.lines.size(), 1U);
  const auto& points = plot.lines[0].points;
  ASSERT_EQ(points.size(), 5U) << "of this water year, with a discharge, no logger records";
  EXPECT_EQ(points[0].x, 60);
  EXPECT_NEAR(points[0].y, 25, 1e-9);
  EXPECT_FALSE(points[0].joined);
  EXPECT_TRUE(points[1].joined);
  EXPECT_FALSE(points[2].joined) << "a reading too high for the curve lies between";
  EXPECT_TRUE(points[2].flagged && points[3].flagged && points[3].joined);
  EXPECT_FALSE(points[4].joined) << "nine days without a reading";
  EXPECT_EQ(plot.notes.size(), 2);
  EXPECT_TRUE(plot.notes[0].contains(QStringLiteral("1 readings without a discharge")));
}

TEST(FlowPlot, YearsOverOneAnotherKeepTheirDatesAligned) {
  const FlowPlot plot =
      Make(FlowKind::Level,
           {YearOf(2023, {ReadingAt("01/03/2023 00:00", 10)}),
            YearOf(2024, {ReadingAt("29/02/2024 00:00", 10), ReadingAt("01/03/2024 00:00", 10)})});
  ASSERT_TRUE(plot.aligned);
  EXPECT_EQ(plot.lines[0].points[0].x, plot.lines[1].points[1].x) << "1 March under 1 March";
  EXPECT_EQ(plot.lines[1].points[1].x - plot.lines[1].points[0].x, kMinutesPerDay);
  for (const char* text : {"28/02/2023 23:59", "01/03/2023 00:00", "30/09/2023 23:59", "01/10/2022 00:00"}) {
    const DateTime time = *ReadDateTime(QString::fromLatin1(text));
    EXPECT_EQ(FlowTimeOf(plot, 2023, FlowXOf(plot, 2023, time)), time) << text;
  }
  EXPECT_NE(plot.lines[0].colour, plot.lines[1].colour);
  const FlowPlot single = Make(FlowKind::Level, {YearOf(2023, {ReadingAt("01/03/2023 00:00", 10)})});
  EXPECT_EQ(single.lines[0].points[0].x, 151 * kMinutesPerDay) << "no day of its own for a 29 February";
  EXPECT_EQ(single.high, 365 * kMinutesPerDay);
}

TEST(FlowPlot, ADurationCurveRanksTheDailyMeans) {
  const auto day = [](const char* date, double m3s, bool flagged = false) {
    return DailyMean{*ReadDate(QString::fromLatin1(date)), std::nullopt, m3s, flagged};
  };
  const FlowPlot plot = Make(FlowKind::Duration, {YearOf(2024, {},
                                                         {day("01/10/2023", 4), day("02/10/2023", 9, true),
                                                          day("03/10/2023", 1), day("30/09/2023", 99)})});
  const auto& points = plot.lines[0].points;
  ASSERT_EQ(points.size(), 3U) << "the day of another water year is none of it";
  EXPECT_EQ(points[0].y, 9);
  EXPECT_EQ(points[0].x, 25) << "rank 1 of 3: 100 / 4";
  EXPECT_TRUE(points[0].flagged);
  EXPECT_EQ(points[2].y, 1);
  EXPECT_EQ(points[2].x, 75);
  EXPECT_TRUE(plot.notes[0].contains(QStringLiteral("363 days"))) << plot.notes[0].toStdString();
  FlowYear levels{2024, {}, {{*ReadDate(u"01/10/2023"), 150.0, std::nullopt, false}}};
  EXPECT_TRUE(Make(FlowKind::Duration, {levels}).lines[0].isLevel);
}

TEST(FlowPlot, APlaceFindsItsPointAndLogarithmsHaveNoZero) {
  const FlowPlot plot = Make(
      FlowKind::Both, {YearOf(2024, {ReadingAt("05/12/2023 12:00", 50), ReadingAt("05/03/2024 12:00", 90)})});
  ASSERT_EQ(plot.lines.size(), 2U);
  EXPECT_TRUE(plot.lines[1].onRight);
  const FlowScales scales(plot, QRectF(0, 0, 900, 500), QFontMetricsF(QFont()));
  const QPointF at = *scales.Place(plot.lines[1], plot.lines[1].points[0]);
  const auto found = FlowPointNear(plot, scales, at + QPointF(3, 2));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->line, 1U);
  EXPECT_EQ(FlowPointText(plot, *found), QStringLiteral("2024 discharge:  05/12/2023 12:00  25.0 m³/s"));
  EXPECT_FALSE(FlowPointNear(plot, scales, at + QPointF(0, 80)));
  const FlowPlot logs = Make(FlowKind::Discharge, {YearOf(2024, {ReadingAt("05/12/2023 12:00", 0.0)})}, true);
  const FlowScales over(logs, QRectF(0, 0, 900, 500), QFontMetricsF(QFont()));
  ASSERT_EQ(logs.lines[0].points.size(), 1U) << "dry is a discharge";
  EXPECT_FALSE(over.Place(logs.lines[0], logs.lines[0].points[0]));
}

TEST(FlowPlot, FilesHoldThePictureAndThePoints) {
  std::vector<Reading> readings;
  for (int hour = 0; hour < 240; ++hour) {
    readings.push_back(ReadingAt("01/11/2023 00:00", 40 + hour % 90));
    readings.back().day += std::chrono::days(hour / 24);
    readings.back().minuteOfDay = static_cast<std::int16_t>(60 * (hour % 24));
  }
  const FlowPlot plot = Make(FlowKind::Discharge, {YearOf(2024, readings)});
  const QTemporaryDir folder;
  const auto path = [&folder](const char* name) { return folder.filePath(QString::fromLatin1(name)); };
  for (const char* name : {"a.png", "a.pdf", "a.svg", "a.csv"})
    ASSERT_TRUE(WriteFlowPlot(path(name), plot, {800, 500}));
  EXPECT_EQ(QImage(path("a.png")).size(), QSize(800, 500));
  QFile csv(path("a.csv"));
  ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
  const QByteArray text = csv.readAll();
  EXPECT_TRUE(
      text.startsWith("water_year,time,quantity,value,flagged\n2024,01/11/2023 00:00,discharge_m3s,16,0\n"))
      << text.left(90).toStdString();
  EXPECT_EQ(text.count('\n'), 241);
  QFile svg(path("a.svg"));
  ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
  EXPECT_TRUE(svg.readAll().contains("stroke-dasharray")) << "beyond the gauged levels";
  EXPECT_FALSE(WriteFlowPlot(path("a.gif"), plot, {800, 500}));
}

}  // namespace
}  // namespace vesk
