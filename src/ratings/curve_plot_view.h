// The plot of a rating curve on the screen: gaugings are clicked, nodes dragged, both walked by keyboard.
#pragma once

#include <QWidget>

#include <optional>

#include "ratings/curve_plot.h"

namespace vesk {

class CurvePlotView : public QWidget {
  Q_OBJECT

 public:
  explicit CurvePlotView(LanguageChoice language, QWidget* parent = nullptr);

  /// What is looked at stays when it is still there.
  void Show(CurvePlot plot);
  [[nodiscard]] const CurvePlot& Plot() const { return plot_; }
  void LookAtGauging(std::optional<std::size_t> gauging);
  [[nodiscard]] QSize sizeHint() const override { return {640, 520}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {320, 300}; }
  /// Where a level and discharge are drawn.
  [[nodiscard]] QPointF PlaceOf(double levelCm, double m3s) const;

 Q_SIGNALS:
  /// A gauging that is to be used, or no longer used.
  void GaugingToggled(std::size_t gauging);
  void GaugingLookedAt(std::size_t gauging);
  /// A node on its way, and where it is let go.
  void NodeDragged(std::size_t node, const vesk::CurveNode& to);
  void NodeDropped(std::size_t node, const vesk::CurveNode& to);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] CurveScales Scales() const;
  void ClickAt(const CurveScales& scales, const QPointF& place);
  [[nodiscard]] bool Moved(const QPointF& place) const;
  void WalkGaugings(int step);
  void WalkNodes();
  void MoveNode(double levelStepCm, double dischargeFactor);

  LanguageChoice language_;
  CurvePlot plot_;
  QPointF pressedAt_;
  std::optional<std::size_t> dragged_;       ///< node under the pressed mouse
  std::optional<CurveScales> whileDragged_;  ///< the picture's scales stay while a node moves in it
};

}  // namespace vesk
