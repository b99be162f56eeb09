#include "graphs/graph_picture.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace vesk {
namespace {

constexpr double kMarkRadius = 5;
constexpr double kAnglePerNotch = 120;
constexpr int kRectangleAlpha = 40;

}  // namespace

GraphPicture::GraphPicture(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("Picture1"));
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::CrossCursor);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void GraphPicture::SetImage(const QImage& image) {
  image_ = image;
  update();
}

void GraphPicture::SetRectangle(const std::optional<QRectF>& rectangle) {
  rectangle_ = rectangle;
  update();
}

void GraphPicture::SetMark(const std::optional<QPointF>& mark) {
  if (mark_ == mark) return;
  mark_ = mark;
  update();
}

void GraphPicture::DrawMark(QPainter& painter) const {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::white, 3));
  painter.drawEllipse(*mark_, kMarkRadius, kMarkRadius);
  painter.setPen(QPen(Qt::black, 1));
  painter.drawEllipse(*mark_, kMarkRadius, kMarkRadius);
}

void GraphPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.drawImage(QPoint(0, 0), image_);
  if (rectangle_) {
    QColor fill = palette().color(QPalette::Highlight);
    painter.setPen(QPen(fill, 1));
    fill.setAlpha(kRectangleAlpha);
    painter.setBrush(fill);
    painter.drawRect(*rectangle_);
  }
  if (mark_) DrawMark(painter);
}

void GraphPicture::resizeEvent(QResizeEvent* /*event*/) {
  Q_EMIT Resized();
}

void GraphPicture::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT Pressed(event->position());
}

void GraphPicture::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) Q_EMIT Hovered(event->position());
  if (event->buttons().testFlag(Qt::LeftButton)) Q_EMIT Dragged(event->position());
}

void GraphPicture::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT Released(event->position());
}

void GraphPicture::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT DoubleClicked();
}

void GraphPicture::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / kAnglePerNotch;
  if (notches != 0) Q_EMIT WheelTurned(event->position(), notches);
  event->accept();
}

}  // namespace vesk
