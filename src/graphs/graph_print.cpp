#include "graphs/graph_print.h"

#include <QFile>
#include <QPainter>
#include <QPrinter>

namespace vesk {
namespace {

// True for paper too: only a PDF is a file that can end too early.
bool EndsWhole(const QPrinter& printer) {
  if (printer.outputFormat() != QPrinter::PdfFormat || printer.outputFileName().isEmpty()) return true;
  QFile file(printer.outputFileName());
  return file.open(QIODevice::ReadOnly) && file.readAll().trimmed().endsWith("%%EOF");
}

}  // namespace

Status PrintGraphPage(QPrinter& printer, const GraphPage& page, const GraphSheet& sheet) {
  constexpr double kUnitsPerInch = 96;
  const QString target =
      printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
  const Error failure{QStringLiteral("The graph could not be printed"), target, {}};
  QPainter painter;
  if (!painter.begin(&printer)) return failure;
  const double unit = printer.resolution() / kUnitsPerInch;
  const QSizeF size = printer.pageRect(QPrinter::DevicePixel).size() / unit;
  painter.scale(unit, unit);
  DrawGraphPage(painter, size, page, sheet);
  // The printer does not tell that the disk got full while it wrote a PDF.
  if (!painter.end() || printer.printerState() == QPrinter::Error || !EndsWhole(printer)) return failure;
  return {};
}

}  // namespace vesk
