#include "graphs/graph_print.h"

#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>

#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

Message PrintFailed() {
  return Wording{u"Grafik yazdırılamadı", u"The graph could not be printed"};
}

Status Paint(QPrinter& printer, const GraphPage& page, const GraphSheet& sheet, const QString& target) {
  constexpr double kUnitsPerInch = 96;
  const Error failure{PrintFailed(), target, {}};
  QPainter painter;
  if (!painter.begin(&printer)) return failure;
  const double unit = printer.resolution() / kUnitsPerInch;
  const QSizeF size = printer.pageRect(QPrinter::DevicePixel).size() / unit;
  painter.scale(unit, unit);
  DrawGraphPage(painter, size, page, sheet);
  if (!painter.end() || printer.printerState() == QPrinter::Error) return failure;
  return {};
}

// The printer would cut an older file of that name first and does not tell when the disk gets full: it writes
// beside it, and what it wrote takes the name when it is whole.
Status PaintPdf(QPrinter& printer, const GraphPage& page, const GraphSheet& sheet, const QString& target) {
  const QTemporaryDir beside(target + QStringLiteral(".XXXXXX"));
  if (!beside.isValid()) return Error{PrintFailed(), target, SystemReason(beside.errorString())};
  const QString path = beside.filePath(QStringLiteral("page.pdf"));
  printer.setOutputFileName(path);
  const Status painted = Paint(printer, page, sheet, target);
  printer.setOutputFileName(target);
  if (!painted) return painted;
  const auto content = ReadWholeFile(path, PrintFailed());
  if (!content) return content.Failure();
  if (!content->trimmed().endsWith("%%EOF")) return Error{PrintFailed(), target, {}};
  return WriteWholeFile(target, *content, PrintFailed());
}

}  // namespace

Status PrintGraphPage(QPrinter& printer, const GraphPage& page, const GraphSheet& sheet) {
  const QString file = printer.outputFileName();
  if (file.isEmpty()) return Paint(printer, page, sheet, printer.printerName());
  if (printer.outputFormat() == QPrinter::PdfFormat) return PaintPdf(printer, page, sheet, file);
  return Paint(printer, page, sheet, file);
}

}  // namespace vesk
