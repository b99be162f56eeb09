#include "ratings/curve_plot_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace vesk {

CurvePlotView::CurvePlotView(LanguageChoice language, QWidget* parent)
    : QWidget(parent), language_(language) {
  setObjectName(QStringLiteral("CizimEgri"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  plot_.curve.periods.emplace_back();
}

CurveScales CurvePlotView::Scales() const {
  return whileDragged_ ? *whileDragged_ : CurveScales(plot_, rect(), fontMetrics());
}

QPointF CurvePlotView::PlaceOf(double levelCm, double m3s) const {
  return Scales().Place(levelCm, m3s).value_or(QPointF());
}

void CurvePlotView::Show(CurvePlot plot) {
  const auto gauging = plot_.gauging;
  const auto node = plot_.node;
  plot_ = std::move(plot);
  if (gauging && *gauging < plot_.Period().gaugings.size()) plot_.gauging = gauging;
  if (node && *node < NodesOf(plot_.Period()).size()) plot_.node = node;
  update();
}

void CurvePlotView::LookAtGauging(std::optional<std::size_t> gauging) {
  plot_.gauging = gauging;
  update();
}

void CurvePlotView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  painter.setFont(font());
  DrawCurvePlot(painter, rect(), plot_, language_);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void CurvePlotView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const CurveScales scales = Scales();
  pressedAt_ = event->position();
  dragged_ = NodeNear(plot_, scales, event->position());
  if (dragged_) {
    plot_.node = dragged_;
    whileDragged_ = scales;
    return update();
  }
  ClickAt(scales, event->position());
}

void CurvePlotView::ClickAt(const CurveScales& scales, const QPointF& place) {
  if (const auto gauging = GaugingNear(plot_, scales, place)) {
    plot_.gauging = gauging;
    Q_EMIT GaugingLookedAt(*gauging);
    Q_EMIT GaugingToggled(*gauging);
  }
  update();
}

void CurvePlotView::mouseMoveEvent(QMouseEvent* event) {
  if (dragged_) {
    if (!Moved(event->position())) return;
    Q_EMIT NodeDragged(*dragged_, Scales().At(event->position()));
    return;
  }
  const CurveScales scales = Scales();
  const bool node = NodeNear(plot_, scales, event->position()).has_value();
  const bool gauging = GaugingNear(plot_, scales, event->position()).has_value();
  setCursor(node ? Qt::SizeAllCursor : gauging ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void CurvePlotView::mouseReleaseEvent(QMouseEvent* event) {
  if (!dragged_) return;
  const std::size_t node = *dragged_;
  const CurveScales scales = Scales();
  const CurveNode to = scales.At(event->position());
  const bool moved = Moved(event->position());
  dragged_.reset();
  whileDragged_.reset();
  if (!moved) return ClickAt(scales, event->position());  // the lowest gauging lies under the first node
  Q_EMIT NodeDropped(node, to);
}

bool CurvePlotView::Moved(const QPointF& place) const {
  constexpr double kStill = 3;  // pixels that a hand trembles
  return (place - pressedAt_).manhattanLength() > kStill;
}

/// In order of level, which is how they lie on the picture.
void CurvePlotView::WalkGaugings(int step) {
  const std::vector<Gauging>& gaugings = plot_.Period().gaugings;
  std::vector<std::size_t> order(gaugings.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::erase_if(order, [&](std::size_t i) { return !gaugings[i].levelCm; });
  std::ranges::stable_sort(order, {}, [&](std::size_t i) { return *gaugings[i].levelCm; });
  if (order.empty()) return;
  const auto at = plot_.gauging ? std::ranges::find(order, *plot_.gauging) : order.end();
  const auto last = static_cast<std::ptrdiff_t>(order.size()) - 1;
  const std::ptrdiff_t from = at == order.end() ? (step > 0 ? -1 : last + 1) : at - order.begin();
  plot_.gauging = order[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from + step, 0, last))];
  update();
  Q_EMIT GaugingLookedAt(*plot_.gauging);
}

void CurvePlotView::WalkNodes() {
  const std::size_t count = NodesOf(plot_.Period()).size();
  if (count == 0 || !plot_.handles) return;
  plot_.node = plot_.node ? (*plot_.node + 1) % count : 0;
  update();
}

void CurvePlotView::MoveNode(double levelStepCm, double dischargeFactor) {
  const std::vector<CurveNode> nodes = NodesOf(plot_.Period());
  if (!plot_.node || *plot_.node >= nodes.size()) return;
  const CurveNode& node = nodes[*plot_.node];
  Q_EMIT NodeDropped(*plot_.node, {node.levelCm + levelStepCm, node.dischargeM3s * dischargeFactor});
}

void CurvePlotView::keyPressEvent(QKeyEvent* event) {
  constexpr double kMore = 1.01;
  const bool moves = event->modifiers().testFlag(Qt::ControlModifier);
  switch (event->key()) {
    case Qt::Key_Left:
      return moves ? MoveNode(0, 1 / kMore) : WalkGaugings(-1);
    case Qt::Key_Right:
      return moves ? MoveNode(0, kMore) : WalkGaugings(1);
    case Qt::Key_Up:
      return moves ? MoveNode(1, 1) : WalkGaugings(1);
    case Qt::Key_Down:
      return moves ? MoveNode(-1, 1) : WalkGaugings(-1);
    case Qt::Key_N:
      return WalkNodes();
    case Qt::Key_Space:
      if (plot_.gauging) Q_EMIT GaugingToggled(*plot_.gauging);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void CurvePlotView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void CurvePlotView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace vesk
