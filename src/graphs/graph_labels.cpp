#include "graphs/graph_labels.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace vesk {

QFont PageFont(double size, bool bold) {
  QFont font(QStringLiteral("Arial"));
  font.setPixelSize(static_cast<int>(size));
  font.setBold(bold);
  return font;
}

QFont FittingFont(const QString& text, double size, double room, bool bold) {
  constexpr double kLeastSize = 6;
  const QFont font = PageFont(size, bold);
  const double width = QFontMetricsF(font).horizontalAdvance(text);
  return width <= room ? font : PageFont(std::max(kLeastSize, size * room / width), bold);
}

void DrawLabel(QPainter& painter, QPointF point, const QString& text, const QFont& font, LabelPlace place) {
  const QFontMetricsF plain(font);
  const double width = plain.horizontalAdvance(text);
  double x = point.x();
  if (place == LabelPlace::EndsAt) x -= width;
  if (place == LabelPlace::Centred) x -= width / 2;
  painter.setFont(font);
  painter.setPen(Qt::black);
  painter.drawText(QPointF(x, point.y() + plain.capHeight() / 2), text);
}

void DrawVerticalLabel(QPainter& painter, QPointF point, const QString& text, const QFont& font,
                       LabelPlace place) {
  painter.save();
  painter.translate(point);
  painter.rotate(-90);
  DrawLabel(painter, {0, 0}, text, font, place);
  painter.restore();
}

}  // namespace vesk
