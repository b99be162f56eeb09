#include "graphs/graph_print.h"

#include <QPainter>
#include <QPrinter>

namespace vesk {

Status PrintGraphPage(QPrinter& printer, const GraphPage& page, const GraphSheet& sheet) {
  constexpr double kUnitsPerInch = 96;
  const Error failure{QStringLiteral("The graph could not be printed"), printer.printerName(), {}};
  QPainter painter;
  if (!painter.begin(&printer)) return failure;
  const double unit = printer.resolution() / kUnitsPerInch;
  const QSizeF size = printer.pageRect(QPrinter::DevicePixel).size() / unit;
  painter.scale(unit, unit);
  DrawGraphPage(painter, size, page, sheet);
  if (!painter.end() || printer.printerState() == QPrinter::Error) return failure;
  return {};
}

}  // namespace vesk
