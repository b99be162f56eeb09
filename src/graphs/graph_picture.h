// Picture1: the drawn page with the zoom rectangle and the read-out's mark above it.
#pragma once

#include <QImage>
#include <QWidget>

#include <optional>

namespace vesk {

class GraphPicture : public QWidget {
  Q_OBJECT

 public:
  explicit GraphPicture(QWidget* parent);

  /// The page; its device pixel ratio is the widget's.
  void SetImage(const QImage& image);
  void SetRectangle(const std::optional<QRectF>& rectangle);
  void SetMark(const std::optional<QPointF>& mark);
  [[nodiscard]] QSize sizeHint() const override { return {1100, 520}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {320, 250}; }

 Q_SIGNALS:
  void Hovered(QPointF point);  ///< no button held
  void Pressed(QPointF point);  ///< left button
  void Dragged(QPointF point);  ///< left button held
  void Released(QPointF point);
  void DoubleClicked();
  void WheelTurned(QPointF point, double notches);  ///< positive: away from the operator
  void Resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void DrawMark(class QPainter& painter) const;

  QImage image_;
  std::optional<QRectF> rectangle_;
  std::optional<QPointF> mark_;
};

}  // namespace vesk
