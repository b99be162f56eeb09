#include "graphs/graph_legend.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "graphs/graph_labels.h"

namespace vesk {
namespace {

constexpr double kLegendX = 45 + 650;  // where a line ends
constexpr double kLegendY = 400;
constexpr double kLegendStep = 15;
constexpr double kLegendLine = 20;
constexpr double kLegendGap = 5;  // between line and text
constexpr double kLegendRim = 5;
constexpr double kClearance = 4;  // between the legend and a reading
constexpr double kRowY = 19;      // of the row below the dates, from the page's lower edge
constexpr double kRowApart = 16;

// The levels that a trace covers, page unit by page unit across the plot.
class Skyline {
 public:
  Skyline(const SeriesTrace& trace, const PageScale& scale) : left_(scale.PlotLeft()) {
    const auto columns = static_cast<std::size_t>(std::ceil(scale.PlotRight() - left_)) + 1;
    spans_.resize(columns);
    for (const std::vector<QPointF>& line : trace.lines) {
      for (std::size_t i = 1; i < line.size(); ++i) Cover(line[i - 1], line[i]);
    }
    for (const auto* points : {&trace.dots, &trace.maxima, &trace.minima}) {
      for (const QPointF& point : *points) Cover(point, point);
    }
  }

  [[nodiscard]] bool Touches(const QRectF& box) const {
    const auto first = spans_.begin() + static_cast<std::ptrdiff_t>(ColumnOf(box.left()));
    const auto last = spans_.begin() + static_cast<std::ptrdiff_t>(ColumnOf(box.right())) + 1;
    return std::any_of(first, last, [&box](const Span& span) {
      return span.top <= box.bottom() && span.bottom >= box.top();
    });
  }

 private:
  struct Span {
    double top = 1e9, bottom = -1e9;
  };

  [[nodiscard]] std::size_t ColumnOf(double x) const {
    const double last = static_cast<double>(spans_.size()) - 1;
    return static_cast<std::size_t>(std::clamp(std::floor(x - left_), 0.0, last));
  }

  void Cover(QPointF from, QPointF to) {
    if (from.x() > to.x()) std::swap(from, to);
    const double slope = to.x() > from.x() ? (to.y() - from.y()) / (to.x() - from.x()) : 0;
    const std::size_t last = ColumnOf(to.x());
    for (std::size_t column = ColumnOf(from.x()); column <= last; ++column) {
      const double x = left_ + static_cast<double>(column);
      const double enter = x > from.x() ? from.y() + slope * (x - from.x()) : from.y();
      const double leave = x + 1 < to.x() ? from.y() + slope * (x + 1 - from.x()) : to.y();
      spans_[column].top = std::min({spans_[column].top, enter, leave});
      spans_[column].bottom = std::max({spans_[column].bottom, enter, leave});
    }
  }

  double left_;
  std::vector<Span> spans_;
};

double WidestOf(const QStringList& texts, const QFontMetricsF& letters) {
  double widest = 0;
  for (const QString& text : texts) widest = std::max(widest, letters.horizontalAdvance(text));
  return widest;
}

// The usual place; on a page too small for it, as near to it as the plot allows.
QRectF UsualBox(const PageScale& scale, double textWidth, qsizetype stations) {
  const double width = kLegendLine + kLegendGap + textWidth;
  const double endX =
      std::max(scale.PlotLeft() + kLegendLine + 2, std::min(kLegendX, scale.PlotRight() - textWidth - 10));
  const double baseY = std::min(kLegendY, scale.PlotBottom());
  const double top = baseY - kLegendStep * static_cast<double>(stations) - kLegendStep / 2;
  return QRectF(endX - kLegendLine, top, width, kLegendStep * static_cast<double>(stations));
}

void DrawEntry(QPainter& painter, QPointF lineStart, const QString& text, const QFont& font,
               const QColor& colour) {
  const QLineF line(lineStart, lineStart + QPointF(kLegendLine, 0));
  painter.setPen(QPen(colour, 2));
  painter.drawLine(line);
  DrawLabel(painter, line.p2() + QPointF(kLegendGap, 0), text, font, LabelPlace::StartsAt);
}

// A rim of the paper's colour keeps the legend readable where grid lines run through it.
void DrawRim(QPainter& painter, QPointF lineStart, const QString& text, const QFont& font,
             const QColor& paper) {
  const QPointF lineEnd = lineStart + QPointF(kLegendLine, 0);
  QPainterPath letters;
  letters.addText(lineEnd + QPointF(kLegendGap, QFontMetricsF(font).capHeight() / 2), font, text);
  const QPen rim(paper, kLegendRim, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(rim);
  painter.drawLine(lineStart, lineEnd);
  painter.strokePath(letters, rim);
}

const QColor& ColourOf(const GraphSheet& sheet, qsizetype station) {
  return sheet.style.stations[static_cast<std::size_t>(station) % sheet.style.stations.size()];
}

void DrawInPlot(QPainter& painter, const GraphSheet& sheet, const QRectF& box, const QFont& font) {
  // The first station stands lowest.
  for (qsizetype i = 0; i < sheet.texts.legend.size(); ++i) {
    const QPointF start(box.left(), box.bottom() - kLegendStep * static_cast<double>(i) - kLegendStep / 2);
    DrawRim(painter, start, sheet.texts.legend[i], font, sheet.style.background);
    DrawEntry(painter, start, sheet.texts.legend[i], font, ColourOf(sheet, i));
  }
}

void DrawInRow(QPainter& painter, const PageScale& scale, const GraphSheet& sheet) {
  const QStringList& texts = sheet.texts.legend;
  const auto count = static_cast<double>(texts.size());
  const double lines = count * (kLegendLine + kLegendGap) + (count - 1) * kRowApart;
  const double room = scale.width - 4 - lines;
  const QFont font = FittingFont(texts.join(QString()), kLabelSize, room);
  const QFontMetricsF letters(font);
  double x = std::max(2.0, (scale.width - lines - letters.horizontalAdvance(texts.join(QString()))) / 2);
  for (qsizetype i = 0; i < texts.size(); ++i) {
    DrawEntry(painter, {x, scale.height - kRowY}, texts[i], font, ColourOf(sheet, i));
    x += kLegendLine + kLegendGap + letters.horizontalAdvance(texts[i]) + kRowApart;
  }
}

}  // namespace

std::optional<QRectF> FreeBox(const std::vector<SeriesTrace>& traces, const PageScale& scale,
                              const QRectF& wanted) {
  constexpr double kStepX = 20;
  constexpr double kStepY = 10;
  const QRectF plot(QPointF(scale.PlotLeft(), scale.PlotTop()),
                    QPointF(scale.PlotRight(), scale.PlotBottom()));
  std::vector<Skyline> skylines;
  for (const SeriesTrace& trace : traces) skylines.emplace_back(trace, scale);
  const auto free = [&](const QRectF& box) {
    return std::none_of(skylines.begin(), skylines.end(),
                        [&box](const Skyline& skyline) { return skyline.Touches(box); });
  };
  if (plot.contains(wanted) && free(wanted)) return wanted;
  std::optional<QRectF> nearest;
  double nearestAway = 0;
  for (double y = plot.top() + 1; y + wanted.height() < plot.bottom(); y += kStepY) {
    for (double x = plot.left() + 1; x + wanted.width() < plot.right(); x += kStepX) {
      const QRectF box(QPointF(x, y), wanted.size());
      const double away = std::hypot(x - wanted.left(), y - wanted.top());
      if ((nearest && away >= nearestAway) || !free(box)) continue;
      nearest = box;
      nearestAway = away;
    }
  }
  return nearest;
}

void DrawLegend(QPainter& painter, const PageScale& scale, const GraphSheet& sheet,
                const std::vector<SeriesTrace>& traces) {
  const QFont font = PageFont(kLabelSize + 1);
  const QRectF usual =
      UsualBox(scale, WidestOf(sheet.texts.legend, QFontMetricsF(font)), sheet.texts.legend.size());
  const QMarginsF around(kClearance, kClearance, kClearance, kClearance);
  const auto box = FreeBox(traces, scale, usual.marginsAdded(around));
  if (box) return DrawInPlot(painter, sheet, box->marginsRemoved(around), font);
  DrawInRow(painter, scale, sheet);
}

}  // namespace vesk
