#include "graphs/graph_page.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdlib>

#include "datafiles/helpers.h"
#include "graphs/graph_output.h"

namespace vesk {
namespace {

constexpr QSize kSize(1000, 600);
constexpr auto kOrdinary = ReadingKind::Ordinary;

// A sheet without texts on white paper with a grey scale, so that any blue ink is the first station's.
GraphSheet PlainSheet(std::vector<SeriesPoint> points) {
  GraphSheet sheet;
  sheet.waterYear = 2011;
  sheet.firstDay = WaterYearFirstDay(2011);
  sheet.start = sheet.firstDay;
  sheet.end = WaterYearLastDay(2011);
  sheet.style.background = Qt::white;
  sheet.style.scale = QColor(200, 200, 200);
  sheet.style.stations = {QColor(0, 160, 0), QColor(200, 0, 200), QColor(0, 200, 200), QColor(150, 150, 0)};
  sheet.series.emplace_back(std::move(points), true);
  return sheet;
}

QRect InkOf(const QImage& image, const QColor& colour) {
  QRect box;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) == colour) box = box.united(QRect(x, y, 1, 1));
    }
  }
  return box;
}

// Smooth lines blend with the paper: ink of a colour is what comes nearer to it than to the paper.
bool IsNearerTo(const QColor& colour, const QColor& pixel) {
  const auto distance = [&pixel](const QColor& other) {
    return std::abs(pixel.red() - other.red()) + std::abs(pixel.green() - other.green()) +
           std::abs(pixel.blue() - other.blue());
  };
  return distance(colour) < distance(Qt::white);
}

bool HasInkNear(const QImage& image, QPointF point, const QColor& colour) {
  const QPoint centre = point.toPoint();
  for (int y = -2; y <= 2; ++y) {
    for (int x = -2; x <= 2; ++x) {
      const QColor pixel = image.pixelColor(centre + QPoint(x, y));
      const bool grey = pixel.red() == pixel.green() && pixel.green() == pixel.blue();
      if (!grey && IsNearerTo(colour, pixel)) return true;
    }
  }
  return false;
}

TEST(GraphPageDrawing, InkLiesWhereReadingsLie) {
  const std::vector<SeriesPoint> points = {{30, 60000, kOrdinary},
                                           {80, 62000, kOrdinary},
                                           {55, 300000, kOrdinary},
                                           {95, 400000, ReadingKind::Maximum},
                                           {5, 401000, ReadingKind::Minimum}};
  const GraphSheet sheet = PlainSheet(points);
  const GraphPage page = WholePeriodPage(sheet);
  const PageScale scale = ScaleOfPage(page, sheet, kSize);
  const QImage image = GraphPageImage(page, sheet, kSize);
  const std::vector<QColor> colours = {sheet.style.stations[0], sheet.style.stations[0],
                                       sheet.style.stations[0], QColor(255, 0, 0), QColor(0, 0, 255)};
  for (std::size_t i = 0; i < points.size(); ++i) {
    const QPointF place(XOfTime(scale, points[i].minutes * 0.01), YOfLevel(scale, points[i].levelCm));
    EXPECT_TRUE(HasInkNear(image, place, colours[i])) << i;
  }
  const QPointF between(XOfTime(scale, 610.0), YOfLevel(scale, 55));
  EXPECT_TRUE(HasInkNear(image, between, sheet.style.stations[0])) << "the two readings are joined";
  const QPointF inGap(XOfTime(scale, 1810.0), YOfLevel(scale, 67.5));
  EXPECT_FALSE(HasInkNear(image, inGap, sheet.style.stations[0])) << "across the gap nothing is";
}

TEST(GraphPageDrawing, NoSeriesInkLiesOutsideTheFrame) {
  std::vector<SeriesPoint> points;
  for (int i = 0; i < 4000; ++i) points.push_back({i % 2 == 0 ? 0.0 : 400.0, 1440 + i * 130, kOrdinary});
  points.push_back({400, 200000, ReadingKind::Maximum});
  const GraphSheet sheet = PlainSheet(points);
  GraphPage page = WholePeriodPage(sheet);
  page.maximumCm = 99;
  for (const double ratio : {1.0, 1.5, 2.0}) {
    const QImage image = GraphPageImage(page, sheet, kSize, ratio);
    const QRectF ink = InkOf(image, sheet.style.stations[0]);
    EXPECT_GE(ink.left(), 45 * ratio - 1);
    EXPECT_GE(ink.top(), 20 * ratio - 1);
    EXPECT_LE(ink.right(), 980 * ratio + 1);
    EXPECT_LE(ink.bottom(), 505 * ratio + 1);
    EXPECT_GT(ink.width(), 900 * ratio) << "the series is there all the same";
  }
}

TEST(GraphPageDrawing, APeakOfOneReadingIsSeenAtEveryWidth) {
  std::vector<SeriesPoint> points;
  for (int minute = 1440; minute < 366 * 1440; minute += 15) points.push_back({50, minute, kOrdinary});
  points[20001].levelCm = 200;
  const GraphSheet sheet = PlainSheet(points);
  const GraphPage page = WholePeriodPage(sheet);
  for (const int width : {200, 333, 640, 1001, 1600, 2500}) {
    const QSize size(width, 500);
    const PageScale scale = ScaleOfPage(page, sheet, size);
    const QPointF peak(XOfTime(scale, points[20001].minutes * 0.01), YOfLevel(scale, 200));
    EXPECT_TRUE(HasInkNear(GraphPageImage(page, sheet, size), peak, sheet.style.stations[0])) << width;
  }
}

TEST(GraphPageDrawing, ASingleReadingAndALevelOnAGridLineAreSeen) {
  const GraphSheet sheet =
      PlainSheet({{50, 100000, kOrdinary}, {50, 200000, kOrdinary}, {50, 200001, kOrdinary}});
  GraphPage page = WholePeriodPage(sheet);
  page.maximumCm = 99;
  const PageScale scale = ScaleOfPage(page, sheet, kSize);
  const QImage image = GraphPageImage(page, sheet, kSize);
  for (const int minutes : {100000, 200000}) {
    const QPointF place(XOfTime(scale, minutes * 0.01), YOfLevel(scale, 50));
    EXPECT_TRUE(HasInkNear(image, place, sheet.style.stations[0])) << minutes;
  }
}

TEST(GraphPageDrawing, EveryStationHasItsColour) {
  GraphSheet sheet = PlainSheet({});
  sheet.series.clear();
  for (int s = 0; s < 4; ++s) {
    const double level = 20.0 + 20 * s;
    sheet.series.emplace_back(
        std::vector<SeriesPoint>{{level, 100000, kOrdinary}, {level, 103000, kOrdinary}}, true);
    sheet.texts.legend.append(QStringLiteral("1234%1 AGI").arg(s));
  }
  const GraphPage page = WholePeriodPage(sheet);
  const PageScale scale = ScaleOfPage(page, sheet, kSize);
  const QImage image = GraphPageImage(page, sheet, kSize);
  for (int s = 0; s < 4; ++s) {
    const QColor colour = sheet.style.stations[static_cast<std::size_t>(s)];
    EXPECT_TRUE(HasInkNear(image, {XOfTime(scale, 1015), YOfLevel(scale, 20.0 + 20 * s)}, colour)) << s;
    EXPECT_EQ(image.pixelColor(685, 400 - 15 * (s + 1)), colour) << "line of the legend " << s;
  }
}

class GraphOutput : public testing::Test {
 protected:
  GraphOutput() {
    std::vector<SeriesPoint> points;
    for (int minute = 1440; minute < 366 * 1440; minute += 60)
      points.push_back({100.0 + minute % 97, minute, kOrdinary});
    sheet_ = PlainSheet(points);
    sheet_.texts = {QStringLiteral("12345 Göksu AGI  (Su Yili:2011)"),
                    QStringLiteral("Zaman"),
                    QStringLiteral("Seviye, cm."),
                    {}};
    page_ = WholePeriodPage(sheet_);
  }
  QString Path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

  QTemporaryDir folder_;
  GraphSheet sheet_;
  GraphPage page_;
};

QByteArray Contents(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return file.readAll();
}

QByteArray OutputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
  return process.readAllStandardOutput();
}

TEST_F(GraphOutput, PdfHoldsTextAndPaths) {
  ASSERT_TRUE(SaveGraphPage(Path("page.pdf"), page_, sheet_, kSize));
  const QByteArray text = OutputOf(QStringLiteral("pdftotext"), {Path("page.pdf"), QStringLiteral("-")});
  for (const QString& part : {QStringLiteral("12345 Göksu AGI"), QStringLiteral("Zaman"),
                              QStringLiteral("Seviye, cm."), QStringLiteral("31/10/2010")}) {
    EXPECT_TRUE(QString::fromUtf8(text).contains(part)) << part.toStdString();
  }
  const QByteArray images =
      OutputOf(QStringLiteral("pdfimages"), {QStringLiteral("-list"), Path("page.pdf")});
  EXPECT_EQ(images.trimmed().count('\n'), 1) << "two heading lines and no picture: the series is a path";
}

TEST_F(GraphOutput, SvgHoldsTextAndPathsInsideTheFrame) {
  page_.maximumCm = 99;
  ASSERT_TRUE(SaveGraphPage(Path("page.svg"), page_, sheet_, kSize));
  const QByteArray svg = Contents(Path("page.svg"));
  EXPECT_TRUE(svg.contains("Göksu AGI"));
  EXPECT_TRUE(svg.contains("<polyline"));
  EXPECT_FALSE(svg.contains("<image"));
}

TEST_F(GraphOutput, PngHasTheSizeAskedFor) {
  ASSERT_TRUE(SaveGraphPage(Path("page.PNG"), page_, sheet_, kSize));
  EXPECT_EQ(QImage(Path("page.PNG")).size(), kSize);
}

TEST_F(GraphOutput, FailuresNameTheFileAndLeaveWhatWasThere) {
  for (const char* name : {"page.jpg", "missing/page.png", "page"}) {
    const Status status = SaveGraphPage(Path(name), page_, sheet_, kSize);
    ASSERT_FALSE(status) << name;
    EXPECT_EQ(status.Failure().path, Path(name));
    EXPECT_FALSE(QFile::exists(Path(name)));
  }
}

}  // namespace
}  // namespace vesk
