#include "graphs/graph_page.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdlib>

#include "datafiles/helpers.h"
#include "graphs/graph_output.h"
#include "platform/whole_file.h"
#include "support/full_disk.h"

namespace vesk {
namespace {

constexpr QSize kSize(1000, 600);
constexpr auto kOrdinary = ReadingKind::Ordinary;

// Stations without texts on white paper with a grey scale, so that coloured ink is the stations'.
GraphSheet PlainSheet(const std::vector<std::vector<SeriesPoint>>& stations) {
  GraphSheet sheet;
  sheet.firstDay = WaterYearFirstDay(2011);
  sheet.start = sheet.firstDay;
  sheet.end = WaterYearLastDay(2011);
  sheet.style.background = Qt::white;
  sheet.style.scale = QColor(200, 200, 200);
  sheet.style.stations = {QColor(0, 160, 0), QColor(200, 0, 200), QColor(0, 200, 200), QColor(150, 150, 0)};
  for (const std::vector<SeriesPoint>& points : stations) sheet.series.emplace_back(points, true);
  return sheet;
}

// Smooth lines blend with the paper: ink of a colour is what comes nearer to it than to the paper.
bool HasInkNear(const QImage& image, QPointF point, const QColor& colour) {
  const auto distance = [](const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
  };
  for (int i = 0; i < 25; ++i) {
    const QColor pixel = image.pixelColor(point.toPoint() + QPoint(i % 5 - 2, i / 5 - 2));
    if (distance(colour, pixel) < distance(Qt::white, pixel)) return true;
  }
  return false;
}

TEST(GraphPageDrawing, EveryStationHasInkOfItsColourWhereItsReadingsLie) {
  std::vector<std::vector<SeriesPoint>> stations;
  for (const double level : {20, 40, 60, 80})
    stations.push_back({{level, 60000, kOrdinary}, {level, 63000, kOrdinary}, {level, 200000, kOrdinary}});
  stations[1].push_back({95, 201000, ReadingKind::Maximum});
  stations[1].push_back({5, 202000, ReadingKind::Minimum});
  GraphSheet sheet = PlainSheet(stations);
  sheet.texts.legend = QStringLiteral("11111 AGI,22222 AGI,33333 AGI,44444 AGI").split(QLatin1Char(','));
  const GraphPage page = WholePeriodPage(sheet);
  const PageScale scale = ScaleOfPage(page, sheet, kSize);
  const QImage image = GraphPageImage(page, sheet, kSize);
  const auto hasInk = [&](int minutes, double levelCm, const QColor& colour) {
    return HasInkNear(image, {XOfTime(scale, minutes * 0.01), YOfLevel(scale, levelCm)}, colour);
  };
  for (int s = 0; s < 4; ++s) {
    const QColor colour = sheet.style.stations[static_cast<std::size_t>(s)];
    for (const int minutes : {60000, 61500, 200000}) EXPECT_TRUE(hasInk(minutes, 20.0 + 20 * s, colour)) << s;
    EXPECT_FALSE(hasInk(100000, 20.0 + 20 * s, colour)) << "across a gap";
    EXPECT_EQ(image.pixelColor(685, 400 - 15 * (s + 1)), colour) << "line of the legend " << s;
  }
  EXPECT_TRUE(hasInk(201000, 95, QColor(255, 0, 0)));
  EXPECT_TRUE(hasInk(202000, 5, QColor(0, 0, 255)));
}

TEST(GraphPageDrawing, NoInkLiesOutsideTheFrameAndLinesLeaveItWhereTheyCrossIt) {
  const GraphSheet sheet = PlainSheet({{{0, 60000, kOrdinary},
                                        {200, 60060, kOrdinary},
                                        {200, 400000, ReadingKind::Maximum},
                                        {200, 400060, kOrdinary},
                                        {0, 403000, kOrdinary}}});
  GraphPage page = WholePeriodPage(sheet);
  page.maximumCm = 99;
  for (const double ratio : {1.0, 1.5, 2.0}) {
    QImage image = GraphPageImage(page, sheet, kSize, ratio);
    image.setDevicePixelRatio(1);
    const double crossing = XOfTime(ScaleOfPage(page, sheet, kSize), 4015.3);
    EXPECT_TRUE(HasInkNear(image, QPointF(crossing, 21) * ratio, sheet.style.stations[0])) << ratio;
    const QRectF plot(QPointF(44, 19) * ratio, QPointF(981, 506) * ratio);
    for (int i = 0; i < image.width() * image.height(); ++i) {
      const QPoint place(i % image.width(), i / image.width());
      const QColor pixel = image.pixelColor(place);
      const bool grey = pixel.red() == pixel.green() && pixel.green() == pixel.blue();
      ASSERT_TRUE(grey || plot.contains(place)) << place.x() << ',' << place.y();
    }
  }
}

class GraphOutput : public testing::Test {
 protected:
  GraphOutput() {
    sheet_.texts = {
        QStringLiteral("12345 Göksu AGI"), QStringLiteral("Zaman"), QStringLiteral("Seviye, cm."), {}};
  }
  QString Path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  Status SavePage(const char* name) const {
    return SaveGraphPage(Path(name), WholePeriodPage(sheet_), sheet_, kSize);
  }

  QTemporaryDir folder_;
  GraphSheet sheet_ = PlainSheet({{{100, 60000, kOrdinary}, {180, 63000, kOrdinary}}});
};

QByteArray OutputOf(const char* program, const QStringList& arguments) {
  QProcess process;
  process.start(QString::fromLatin1(program), arguments);
  EXPECT_TRUE(process.waitForFinished()) << program;
  return process.readAllStandardOutput();
}

TEST_F(GraphOutput, PdfAndSvgHoldTextsAndPathsAndNoPicture) {
  ASSERT_TRUE(SavePage("page.pdf"));
  ASSERT_TRUE(SavePage("page.SVG"));
  QFile svg(Path("page.SVG"));
  ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
  const QString svgText = QString::fromUtf8(svg.readAll());
  const QString pdfText = QString::fromUtf8(OutputOf("pdftotext", {Path("page.pdf"), QStringLiteral("-")}));
  for (const char* part : {"12345 Göksu AGI", "Zaman", "Seviye, cm.", "31/10/2010", "200"}) {
    EXPECT_TRUE(pdfText.contains(QString::fromUtf8(part))) << part;
    EXPECT_TRUE(svgText.contains(QString::fromUtf8(part))) << part;
  }
  EXPECT_TRUE(svgText.contains(QStringLiteral("<polyline")));
  EXPECT_FALSE(svgText.contains(QStringLiteral("<image")));
  const QByteArray pictures = OutputOf("pdfimages", {QStringLiteral("-list"), Path("page.pdf")});
  EXPECT_EQ(pictures.trimmed().count('\n'), 1) << "two heading lines and no picture";
}

TEST_F(GraphOutput, FailuresNameTheFileAndLeaveWhatWasThere) {
  for (const char* name : {"page.jpg", "missing/page.png", "page"}) {
    const Status status = SavePage(name);
    ASSERT_FALSE(status) << name;
    EXPECT_EQ(status.Failure().path, Path(name));
    EXPECT_FALSE(QFile::exists(Path(name)));
  }
  for (const char* name : {"page.png", "page.pdf", "page.svg", "page.csv"}) {
    ASSERT_TRUE(WriteWholeFile(Path(name), "older", {}));
    const test::FullDisk full(64);
    EXPECT_FALSE(SavePage(name)) << name;
    EXPECT_EQ(ReadWholeFile(Path(name), {}).Value(), "older") << name;
  }
}

}  // namespace
}  // namespace vesk
