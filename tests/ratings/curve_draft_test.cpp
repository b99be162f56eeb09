// A curve while it is worked on, and its pictures.
#include "ratings/curve_draft.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>

#include "ratings/curve_plot.h"

namespace vesk {
namespace {

/// Q = 0.01 (h - 20)^2 to 120 cm (100 m3/s), then 0.1 (h - c)^b through (120, 100) and on.
CurvePeriod TwoSegments() {
  CurvePeriod period;
  period.segments = {{0, 0.01, 20, 2}, {120, 1, 20, 1}};
  period.lowestCm = 30;
  period.highestCm = 220;
  return period;
}

TEST(CurveDraft, ANodeMovesBothSegmentsAndTheyStillMeet) {
  const CurvePeriod period = TwoSegments();
  const auto nodes = NodesOf(period);
  ASSERT_EQ(nodes.size(), 3U);
  EXPECT_NEAR(nodes[0].dischargeM3s, 1, 1e-12);
  EXPECT_NEAR(nodes[1].dischargeM3s, 100, 1e-9);
  EXPECT_NEAR(nodes[2].dischargeM3s, 200, 1e-9);
  const auto moved = WithNodeMoved(period, 1, {140, 150});
  ASSERT_TRUE(moved);
  const auto after = NodesOf(*moved);
  EXPECT_NEAR(after[0].dischargeM3s, 1, 1e-9) << "the other nodes stay";
  EXPECT_NEAR(after[1].levelCm, 140, 1e-12);
  EXPECT_NEAR(after[1].dischargeM3s, 150, 1e-9);
  EXPECT_NEAR(after[2].dischargeM3s, 200, 1e-9);
  EXPECT_NEAR(CurveDischarge(*moved, 139.999999), CurveDischarge(*moved, 140.000001), 1e-4);
  // Through (30, 1) and (140, 150) with c = 20: b = ln 150 / ln 12.
  EXPECT_NEAR(moved->segments[0].b, std::log(150.0) / std::log(12.0), 1e-12);
  const auto end = WithNodeMoved(period, 2, {500, 300});
  ASSERT_TRUE(end);
  EXPECT_EQ(end->highestCm, 220);
  EXPECT_NEAR(CurveDischarge(*end, 220), 300, 1e-9);
  EXPECT_EQ(end->segments[0], period.segments[0]);
}

TEST(CurveDraft, WhereNoCurveCanRunNothingMoves) {
  const CurvePeriod period = TwoSegments();
  EXPECT_FALSE(WithNodeMoved(period, 1, {140, 250})) << "more than the node above";
  EXPECT_FALSE(WithNodeMoved(period, 1, {25, 50})) << "below the node below";
  EXPECT_FALSE(WithNodeMoved(period, 1, {230, 150}));
  EXPECT_FALSE(WithNodeMoved(period, 1, {31, 199})) << "an exponent of 55";
  EXPECT_FALSE(WithNodeMoved(period, 0, {30, -1}));
  EXPECT_FALSE(WithNodeMoved(period, 3, {30, 1}));
  CurvePeriod points;
  points.points = {{10, 1}, {20, 2}};
  EXPECT_TRUE(NodesOf(points).empty());
}

TEST(CurveDraft, StepsAreTakenBackAndMadeAgainAndASavedOneIsKnown) {
  CurveDraft draft;
  EXPECT_TRUE(draft.IsSaved());
  EXPECT_FALSE(draft.CanUndo());
  draft.ChangePeriod(TwoSegments(), 2);
  draft.ChangePeriod(TwoSegments(), 2);
  EXPECT_TRUE(draft.CanUndo());
  EXPECT_FALSE(draft.IsSaved());
  draft.MarkSaved();
  CurvePeriod other = TwoSegments();
  other.aboveCm = 10;
  draft.ChangePeriod(other);
  EXPECT_FALSE(draft.IsSaved());
  draft.Undo();
  EXPECT_TRUE(draft.IsSaved()) << "what was saved, whichever step led there";
  EXPECT_EQ(draft.State().segments, 2);
  draft.Redo();
  EXPECT_EQ(draft.Period().aboveCm, 10);
  draft.Undo();
  draft.Undo();
  EXPECT_FALSE(draft.CanUndo()) << "a change that changes nothing was no step";
}

CurvePlot PlotOf(bool logarithmic) {
  CurvePlot plot;
  plot.curve.station = QStringLiteral("12001");
  plot.curve.periods = {TwoSegments()};
  for (const double level : {40.0, 60.0, 90.0, 130.0, 170.0, 210.0, 50.0, 80.0, 110.0, 150.0}) {
    Gauging gauging;
    gauging.levelCm = level;
    gauging.dischargeM3s = 1.03 * CurveDischarge(TwoSegments(), level);
    plot.curve.periods[0].gaugings.push_back(gauging);
  }
  plot.logarithmic = logarithmic;
  plot.handles = true;
  return plot;
}

TEST(CurvePlot, APlaceLeadsBackToItsLevelAndDischarge) {
  const QRectF all(0, 0, 800, 600);
  const QFontMetricsF letters{QFont()};
  for (const bool logarithmic : {false, true}) {
    const CurvePlot plot = PlotOf(logarithmic);
    const CurveScales scales(plot, all, letters);
    const auto place = scales.Place(90, 49);
    ASSERT_TRUE(place && scales.Field().contains(*place));
    EXPECT_NEAR(scales.At(*place).levelCm, 90, 1e-6);
    EXPECT_NEAR(scales.At(*place).dischargeM3s, 49, 1e-6);
    const Gauging& third = plot.Period().gaugings[2];
    const auto near = scales.Place(*third.levelCm, third.dischargeM3s);
    EXPECT_EQ(GaugingNear(plot, scales, *near + QPointF(2, 2)), std::size_t{2});
    EXPECT_EQ(GaugingNear(plot, scales, *near + QPointF(60, 0)), std::nullopt);
    EXPECT_EQ(NodeNear(plot, scales, *scales.Place(120, 100)), std::size_t{1});
  }
  const CurveScales logs(PlotOf(true), all, letters);
  EXPECT_FALSE(logs.Place(20, 1)) << "no flow has no place on logarithms";
  EXPECT_FALSE(logs.Place(50, 0));
  // On logarithms a power law is a straight line: the middle of two places of one segment lies on it.
  const QPointF low = *logs.Place(30, 1), high = *logs.Place(120, 100);
  const CurveNode middle = logs.At((low + high) / 2);
  EXPECT_NEAR(CurveDischarge(TwoSegments(), middle.levelCm), middle.dischargeM3s, 1e-6);
}

/// The share of pixels of about that colour.
int PixelsOf(const QImage& image, QRgb colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb one = image.pixel(x, y);
      const int away = std::abs(qRed(one) - qRed(colour)) + std::abs(qGreen(one) - qGreen(colour)) +
                       std::abs(qBlue(one) - qBlue(colour));
      count += away < 30 ? 1 : 0;
    }
  }
  return count;
}

TEST(CurvePlot, PicturesAndReportShowCurveAndFigures) {
  CurvePlot plot = PlotOf(false);
  const auto fit = JudgeCurve(plot.Period().gaugings, plot.Period().segments, FitWeights::Equal);
  ASSERT_TRUE(fit);
  plot.fit = *fit;
  const QTemporaryDir folder;
  const QString png = folder.filePath(QStringLiteral("c.png")),
                pdf = folder.filePath(QStringLiteral("c.pdf"));
  ASSERT_TRUE(WriteCurvePicture(png, plot, LanguageChoice::English));
  EXPECT_GT(PixelsOf(QImage(png), 0xB02020), 500) << "the curve";
  EXPECT_GT(PixelsOf(QImage(png), 0x1F4E9E), 100) << "the gaugings";
  ASSERT_TRUE(WriteCurvePicture(folder.filePath(QStringLiteral("c.svg")), plot, LanguageChoice::Turkish));
  QFile svg(folder.filePath(QStringLiteral("c.svg")));
  ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
  EXPECT_TRUE(svg.readAll().contains("Seviye (cm)"));
  EXPECT_FALSE(WriteCurvePicture(folder.filePath(QStringLiteral("c.gif")), plot, LanguageChoice::English));
  ASSERT_TRUE(WriteCurveReport(pdf, plot, LanguageChoice::English));
  QProcess text;
  text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
  ASSERT_TRUE(text.waitForFinished());
  const QString words = QString::fromUtf8(text.readAllStandardOutput());
  EXPECT_TRUE(words.contains(QStringLiteral("Rating curve: station 12001"))) << words.toStdString();
  EXPECT_TRUE(words.contains(QStringLiteral("break1_cm")));
  EXPECT_TRUE(words.contains(QStringLiteral("3.0"))) << "residual of 1.03 times the curve";
}

}  // namespace
}  // namespace vesk
