#include "graphs/graph_page.h"
#include "datafiles/water_year.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>

#include "graphs/graph_output.h"
#include "platform/whole_file.h"
#include "support/full_disk.h"

namespace vesk {
namespace {

constexpr QSize kSize(1000, 600);
constexpr auto kOrdinary = ReadingKind::Ordinary;

// Stations without texts on white paper with a grey scale, so that coloured ink is the stations'.
GraphSheet PlainSheet(const std::vector<std::vector<GraphPoint>>& stations) {
  GraphSheet sheet;
  sheet.firstDay = WaterYearFirstDay(2011);
  sheet.start = sheet.firstDay;
  sheet.end = WaterYearLastDay(2011);
  sheet.style.background = Qt::white;
  sheet.style.scale = QColor(200, 200, 200);
  sheet.style.stations = {QColor(0, 160, 0), QColor(200, 0, 200), QColor(0, 200, 200), QColor(150, 150, 0)};
  for (const std::vector<GraphPoint>& points : stations) {
    for (const GraphPoint& point : points) sheet.levels.Widen(point.levelCm);
    sheet.series.emplace_back(points, true);
  }
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
  std::vector<std::vector<GraphPoint>> stations;
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

// A picture with a legend has every coloured pixel that the picture without it has.
TEST(GraphPageDrawing, TheLegendCoversNoReadingWhereverTheyRun) {
  std::uint32_t random = 7;
  const auto next = [&random](std::uint32_t below) {
    random = random * 1664525U + 1013904223U;
    return static_cast<int>((random >> 8U) % below);
  };
  for (int round = 0; round < 24; ++round) {
    std::vector<std::vector<GraphPoint>> stations(1 + static_cast<std::size_t>(round) % 4);
    for (auto& points : stations) {
      double level = 20 + next(180);
      for (int minute = 1440; minute < 366 * 1440; minute += 360 + next(3000)) {
        level = std::clamp(level + next(61) - 30, 0.0, 230.0);
        points.push_back({level, minute, next(20) == 0 ? ReadingKind::Maximum : kOrdinary});
      }
    }
    GraphSheet sheet = PlainSheet(stations);
    const QSize size = round % 2 == 0 ? QSize(640, 480) : QSize(1366, 700);
    const QImage bare = GraphPageImage(WholePeriodPage(sheet), sheet, size);
    for (std::size_t i = 0; i < stations.size(); ++i)
      sheet.texts.legend.append(QStringLiteral("12345 AGI 2011"));
    const QImage page = GraphPageImage(WholePeriodPage(sheet), sheet, size);
    bool legend = false;
    for (int i = 0; i < size.width() * size.height(); ++i) {
      const QPoint place(i % size.width(), i / size.width());
      const QColor before = bare.pixelColor(place);
      const bool coloured = before.saturation() > 30;
      ASSERT_TRUE(!coloured || page.pixelColor(place) == before) << round << ": " << place.x();
      legend = legend || (!coloured && page.pixelColor(place) == sheet.style.stations[0]);
    }
    EXPECT_TRUE(legend) << round;
  }
}

TEST(GraphPageDrawing, AReadingThatJoinsNothingIsSeenOnEveryDevice) {
  const GraphSheet sheet = PlainSheet({{{100, 60000, kOrdinary}, {180, 163000, kOrdinary}}});
  const GraphPage page = WholePeriodPage(sheet);
  const PageScale scale = ScaleOfPage(page, sheet, kSize);
  for (const double ratio : {1.0, 3.0}) {
    QImage image = GraphPageImage(page, sheet, kSize, ratio);
    image.setDevicePixelRatio(1);
    int inked = 0;
    for (int i = 0; i < 225; ++i) {
      const QPoint at = (QPointF(XOfTime(scale, 600), YOfLevel(scale, 100)) * ratio).toPoint();
      inked += image.pixelColor(at + QPoint(i % 15 - 7, i / 15 - 7)) == sheet.style.stations[0] ? 1 : 0;
    }
    EXPECT_GE(inked, 4 * ratio * ratio) << ratio;
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

TEST_F(GraphOutput, EveryDeviceBearsTheNotesTheReasonOfABlankPageAndItsDates) {
  sheet_.notes = {QStringLiteral("a file is missing")};
  sheet_.language.FillEnglish();
  GraphPage hour = WholePeriodPage(sheet_);
  hour.start = DateTime(Day(std::chrono::year(2011) / 3 / 15)) + std::chrono::minutes(370);
  hour.end = hour.start + std::chrono::minutes(60);
  const auto textOf = [&](const char* name) {
    EXPECT_TRUE(SaveGraphPage(Path(name), hour, sheet_, kSize));
    if (QString::fromLatin1(name).endsWith(QStringLiteral("svg")))
      return QString::fromUtf8(ReadWholeFile(Path(name), {}).Value());
    return QString::fromUtf8(
        OutputOf("pdftotext", {QStringLiteral("-layout"), Path(name), QStringLiteral("-")}));
  };
  for (const char* name : {"hour.svg", "hour.pdf"}) {
    const QString text = textOf(name);
    for (const char* part :
         {"a file is missing", "no readings to draw on this page", "15/03/2011 06:10", "15/03/2011 07:10"}) {
      EXPECT_TRUE(text.contains(QString::fromLatin1(part))) << name << ": " << part;
    }
  }
  const QImage image = GraphPageImage(hour, sheet_, kSize);
  sheet_.notes.clear();
  EXPECT_NE(GraphPageImage(hour, sheet_, kSize), image);
}

TEST_F(GraphOutput, APngHasTheDotsThatItIsAskedFor) {
  ASSERT_TRUE(SaveGraphPage(Path("fine.png"), WholePeriodPage(sheet_), sheet_, kSize, 192));
  const QImage image(Path("fine.png"));
  EXPECT_EQ(image.size(), kSize * 2);
  EXPECT_NEAR(image.dotsPerMeterX() * 0.0254, 192, 0.1);
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
