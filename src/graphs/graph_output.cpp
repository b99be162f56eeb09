#include "graphs/graph_output.h"

#include <QFileInfo>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace vesk {
namespace {

constexpr int kUnitsPerInch = 96;
constexpr int kPdfDotsPerInch = 1200;
constexpr double kPointsPerUnit = 72.0 / kUnitsPerInch;
constexpr double kSvgColumnsPerUnit = 10;

Error SaveFailure(const QString& path, const QString& reason) {
  return {QStringLiteral("The graph could not be saved"), path, reason};
}

Status PaintPng(QIODevice& device, const GraphPage& page, const GraphSheet& sheet, QSize size) {
  if (GraphPageImage(page, sheet, size).save(&device, "PNG")) return {};
  return Error{{}, {}, device.errorString()};
}

Status PaintPdf(QIODevice& device, const GraphPage& page, const GraphSheet& sheet, QSize size) {
  QPdfWriter writer(&device);
  writer.setResolution(kPdfDotsPerInch);
  writer.setTitle(sheet.texts.title);
  writer.setPageSize(QPageSize(QSizeF(size) * kPointsPerUnit, QPageSize::Point));
  writer.setPageMargins(QMarginsF());
  QPainter painter;
  if (!painter.begin(&writer)) return Error{{}, {}, QStringLiteral("the page could not be begun")};
  painter.scale(double{kPdfDotsPerInch} / kUnitsPerInch, double{kPdfDotsPerInch} / kUnitsPerInch);
  DrawGraphPage(painter, size, page, sheet);
  if (!painter.end()) return Error{{}, {}, QStringLiteral("the page could not be finished")};
  return {};
}

Status PaintSvg(QIODevice& device, const GraphPage& page, const GraphSheet& sheet, QSize size) {
  QSvgGenerator generator;
  generator.setOutputDevice(&device);
  generator.setResolution(kUnitsPerInch);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setTitle(sheet.texts.title);
  QPainter painter;
  if (!painter.begin(&generator)) return Error{{}, {}, QStringLiteral("the page could not be begun")};
  DrawGraphPage(painter, size, page, sheet, kSvgColumnsPerUnit);
  painter.end();
  return {};
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
  return ending == QLatin1String("png") || ending == QLatin1String("pdf") || ending == QLatin1String("svg");
}

Status SaveGraphPage(const QString& path, const GraphPage& page, const GraphSheet& sheet, QSize size) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (!IsGraphFormat(ending))
    return SaveFailure(path, QStringLiteral("the name must end in .png, .pdf or .svg"));
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return SaveFailure(path, file.errorString());
  const auto paint = ending == QLatin1String("png")   ? &PaintPng
                     : ending == QLatin1String("pdf") ? &PaintPdf
                                                      : &PaintSvg;
  const Status painted = paint(file, page, sheet, size);
  if (!painted) return SaveFailure(path, painted.Failure().reason);
  if (!file.commit()) return SaveFailure(path, file.errorString());
  return {};
}

}  // namespace vesk
