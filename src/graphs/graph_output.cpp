#include "graphs/graph_output.h"

#include <QBuffer>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <array>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "platform/csv.h"
#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr double kPointsPerUnit = 72.0 / kUnitsPerInch;
constexpr double kSvgColumnsPerUnit = 10;
constexpr int kPngQuality = 65;  // quick compression: a page is mostly paper and packs well anyway

Message SaveFailed() {
  return Wording{u"Grafik kaydedilemedi", u"The graph could not be saved"};
}

// Greys are the smooth edges of texts; 64 shades of them are as good as 256 and leave room for every other
// colour.
QRgb FewerGreys(QRgb colour) {
  const int grey = qRed(colour);
  if (grey != qGreen(colour) || grey != qBlue(colour)) return colour;
  const int shade = (grey & 0xFC) | (grey >> 6);
  return qRgb(shade, shade, shade);
}

// Numbers the colours of a picture as they turn up.
class Palette {
 public:
  /// -1 when the colour is one too many for one byte.
  int IndexOf(QRgb colour) {
    Recent& recent = recent_[(colour * kSpread) >> 24U];
    if (recent.colour != colour || recent.index < 0) recent = {colour, Find(colour)};
    return recent.index;
  }
  [[nodiscard]] const QList<QRgb>& Colours() const { return colours_; }

 private:
  static constexpr qsizetype kMostColours = 256;
  static constexpr QRgb kSpread = 2654435761U;  // mixes a colour's bits into the highest eight
  struct Recent {
    QRgb colour = 0;
    int index = -1;
  };

  int Find(QRgb colour) {
    const auto known = indexes_.constFind(colour);
    if (known != indexes_.constEnd()) return *known;
    const QRgb kept = FewerGreys(colour);
    auto index = colours_.indexOf(kept);
    if (index < 0 && colours_.size() == kMostColours) return -1;
    if (index < 0) {
      index = colours_.size();
      colours_.append(kept);
    }
    indexes_.insert(colour, static_cast<int>(index));
    return static_cast<int>(index);
  }

  std::array<Recent, 256> recent_;  // before the table: a page's lines and texts are full of edges
  QList<QRgb> colours_;
  QHash<QRgb, int> indexes_;
};

// The picture with a palette, if one byte a pixel does: it is then written in a fraction of the time, and
// smaller. The picture itself otherwise.
QImage WithPalette(const QImage& image) {
  QImage indexed(image.size(), QImage::Format_Indexed8);
  Palette palette;
  QRgb last = 0;  // no pixel of an opaque picture
  int index = 0;
  const int width = image.width();
  for (int y = 0; y < image.height(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    uchar* to = indexed.scanLine(y);
    for (int x = 0; x < width;) {
      while (x < width && from[x] == last) to[x++] = static_cast<uchar>(index);  // mostly paper
      if (x == width) break;
      last = from[x];
      index = palette.IndexOf(last);
      if (index < 0) return image;
    }
  }
  indexed.setColorTable(palette.Colours());
  return indexed;
}

struct PageSize {
  QSize units;
  int dotsPerInch = kUnitsPerInch;
};

Status PaintPng(QIODevice& device, const GraphPage& page, const GraphSheet& sheet, PageSize size) {
  constexpr double kInchesPerMetre = 1 / 0.0254;
  const double pixelRatio = static_cast<double>(size.dotsPerInch) / kUnitsPerInch;
  QImage image = WithPalette(GraphPageImage(page, sheet, size.units, pixelRatio));
  const auto dotsPerMetre = static_cast<int>(std::lround(size.dotsPerInch * kInchesPerMetre));
  image.setDotsPerMeterX(dotsPerMetre);
  image.setDotsPerMeterY(dotsPerMetre);
  if (image.save(&device, "PNG", kPngQuality)) return {};
  return Error{{}, {}, SystemReason(device.errorString())};
}

Status PaintPdf(QIODevice& device, const GraphPage& page, const GraphSheet& sheet, PageSize size) {
  QPdfWriter writer(&device);
  writer.setResolution(kPdfDotsPerInch);
  writer.setTitle(sheet.texts.title);
  writer.setPageSize(QPageSize(QSizeF(size.units) * kPointsPerUnit, QPageSize::Point));
  writer.setPageMargins(QMarginsF());
  QPainter painter;
  if (!painter.begin(&writer))
    return Error{{}, {}, Wording{u"sayfaya başlanamadı", u"the page could not be begun"}};
  painter.scale(double{kPdfDotsPerInch} / kUnitsPerInch, double{kPdfDotsPerInch} / kUnitsPerInch);
  DrawGraphPage(painter, size.units, page, sheet);
  if (!painter.end()) return Error{{}, {}, Wording{u"sayfa bitirilemedi", u"the page could not be finished"}};
  return {};
}

Status PaintSvg(QIODevice& device, const GraphPage& page, const GraphSheet& sheet, PageSize size) {
  QSvgGenerator generator;
  generator.setOutputDevice(&device);
  generator.setResolution(kUnitsPerInch);
  generator.setSize(size.units);
  generator.setViewBox(QRect(QPoint(0, 0), size.units));
  generator.setTitle(sheet.texts.title);
  QPainter painter;
  if (!painter.begin(&generator))
    return Error{{}, {}, Wording{u"sayfaya başlanamadı", u"the page could not be begun"}};
  DrawGraphPage(painter, size.units, page, sheet, kSvgColumnsPerUnit);
  painter.end();
  return {};
}

const char* KindName(ReadingKind kind) {
  switch (kind) {
    case ReadingKind::Maximum:
      return "Max";
    case ReadingKind::Minimum:
      return "Min";
    case ReadingKind::Ordinary:
      break;
  }
  return "Ort";
}

// The values behind the page: what is drawn, reading by reading.
Status WriteCsv(QIODevice& device, const GraphPage& page, const GraphSheet& sheet, PageSize /*size*/) {
  QByteArray text = "station,date,time,level_cm,kind\n";
  CsvLines csv(text);
  const int start = GraphMinutes(sheet.firstDay, page.start);
  const int end = GraphMinutes(sheet.firstDay, page.end);
  for (std::size_t i = 0; i < sheet.series.size(); ++i) {
    for (const GraphPoint& point : sheet.series[i].OnPage(start, end)) {
      if (point.minutes < start) continue;
      const QByteArray time =
          DateTimeText(TimeOfCoordinate(sheet.firstDay, point.minutes * kMinuteUnits)).toLatin1();
      csv.Cell(sheet.stationNames.value(static_cast<qsizetype>(i)));
      csv.Plain() += time.left(10);
      csv.Plain() += time.mid(11);
      csv.Plain() += NumberText(point.levelCm).toLatin1();
      csv.Plain() += KindName(point.Kind());
      csv.EndLine();
    }
  }
  if (device.write(text) == text.size()) return {};
  return Error{{}, {}, SystemReason(device.errorString())};
}

using PageWriter = Status (*)(QIODevice&, const GraphPage&, const GraphSheet&, PageSize);

// Null for an ending that is not known.
PageWriter WriterOf(const QString& ending) {
  if (ending == QLatin1String("png")) return &PaintPng;
  if (ending == QLatin1String("pdf")) return &PaintPdf;
  if (ending == QLatin1String("svg")) return &PaintSvg;
  if (ending == QLatin1String("csv")) return &WriteCsv;
  return nullptr;
}

}  // namespace

QImage GraphPageImage(const GraphPage& page, const GraphSheet& sheet, QSize size, double pixelRatio) {
  QImage image((QSizeF(size) * pixelRatio).toSize(), QImage::Format_RGB32);
  image.setDevicePixelRatio(pixelRatio);
  QPainter painter(&image);
  DrawGraphPage(painter, size, page, sheet);
  return image;
}

bool IsGraphFormat(const QString& ending) {
  return WriterOf(ending) != nullptr;
}

Status SaveGraphPage(const QString& path, const GraphPage& page, const GraphSheet& sheet, QSize size,
                     int dotsPerInch) {
  const auto write = WriterOf(QFileInfo(path).suffix().toLower());
  if (write == nullptr)
    return Error{SaveFailed(), path,
                 Wording{u"dosya adı .png, .pdf, .svg veya .csv ile bitmeli",
                         u"the name must end in .png, .pdf, .svg or .csv"}};
  // Painted in memory first: the writers of PDF and SVG do not tell when a disk is full.
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  const Status painted = write(buffer, page, sheet, {size, dotsPerInch});
  if (!painted) return Error{SaveFailed(), path, painted.Failure().reason};
  return WriteWholeFile(path, buffer.data(), SaveFailed());
}

}  // namespace vesk
