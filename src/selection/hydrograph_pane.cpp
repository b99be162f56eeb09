#include "selection/hydrograph_pane.h"

#include <QEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "shell/language.h"

namespace vesk {
namespace {

constexpr double kZoomPerNotch = 0.8;
constexpr double kNotch = 120;
constexpr double kClickPixels = 3;
constexpr double kAround = 1;  // of what is brought into view, so much again on either side

}  // namespace

HydrographPane::HydrographPane(RowSelection& selection, const Language& language, QWidget* parent)
    : QWidget(parent), selection_(selection), language_(language) {
  setObjectName(QStringLiteral("Hidrograf"));
  setAccessibleName(language.Say(Wording{u"Hidrograf", u"Hydrograph"}));
  setStatusTip(language.Say(Wording{
      u"Tekerlek yakınlaştırır, sürükleme kaydırır, Shift ile sürükleme seçer, çift tıklama hepsini gösterir",
      u"Wheel zooms, drag pans, Shift and drag selects, double click shows all"}));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(false);
  setAttribute(Qt::WA_OpaquePaintEvent);
  connect(&selection, &RowSelection::CurrentChanged, this, &HydrographPane::FollowCurrent);
  connect(&selection, &RowSelection::RangeChanged, this, [this] { update(); });
}

QSize HydrographPane::minimumSizeHint() const {
  constexpr int kLines = 5;
  return {fontMetrics().averageCharWidth() * 30, fontMetrics().height() * kLines};
}

void HydrographPane::SetSeries(const StationSeries* series) {
  series_ = series;
  marks_.clear();
  preview_.clear();
  points_ = series_ == nullptr ? ReviewPoints() : ReviewPoints(*series_);
  ShowAll();
}

void HydrographPane::SeriesChanged() {
  if (series_ == nullptr) return;
  const DateTime start = points_.TimeOf(seen_.start);
  const DateTime end = points_.TimeOf(seen_.end);
  points_ = ReviewPoints(*series_);
  Look({points_.MinutesOf(start), points_.MinutesOf(end)});
}

void HydrographPane::SetMarks(std::vector<HydrographMark> marks) {
  marks_ = std::move(marks);
  Redraw();
}

void HydrographPane::SetPreview(const std::vector<LevelChange>& changes) {
  preview_.clear();
  for (const LevelChange& change : changes) {
    const Reading reading = series_->At(change.row);
    if (reading.kind != ReadingKind::Ordinary) continue;
    preview_.emplace_back(change.levelCm, static_cast<std::int32_t>(points_.MinutesOf(reading.Time())),
                          ReadingKind::Ordinary, change.row);
  }
  Redraw();
}

void HydrographPane::SetZeroBased(bool zeroBased) {
  zeroBased_ = zeroBased;
  Redraw();
}

void HydrographPane::ShowAll() {
  Look(points_.Whole());
}

void HydrographPane::ShowRows(int first, int last) {
  const std::vector<GraphPoint> rows = points_.OfRows(first, last);
  if (rows.empty()) return;
  const double start = rows.front().minutes;
  const double end = rows.back().minutes;
  if (start >= seen_.start && end <= seen_.end) return update();
  const double length = std::max(seen_.Length(), (end - start) * (1 + 2 * kAround));
  const double middle = (start + end) / 2;
  Look({middle - length / 2, middle + length / 2});
}

void HydrographPane::Look(const MinuteSpan& span) {
  seen_ = Within(span, points_.Whole());
  Redraw();
}

void HydrographPane::Redraw() {
  scale_ = Scale();
  baseIsOld_ = true;
  update();
}

QPointF HydrographPane::PointOf(double minutes, double levelCm) const {
  return {XOfTime(scale_, minutes * kMinuteUnits), YOfLevel(scale_, levelCm)};
}

double HydrographPane::MinutesAt(double x) const {
  return TimeOfX(scale_, x) / kMinuteUnits;
}

void HydrographPane::FollowCurrent(int row) {
  if (row > 0 && !points_.Empty()) {
    const double minutes = points_.All()[points_.PlaceOfRow(row)].minutes;
    if (minutes < seen_.start || minutes > seen_.end)
      Look({minutes - seen_.Length() / 2, minutes + seen_.Length() / 2});
  }
  update();
}

void HydrographPane::GoTo(std::size_t place) {
  const int row = points_.All()[place].Row();
  selection_.SetCurrent(row);
  selection_.SetRange(row, row);
}

void HydrographPane::SelectBetween(double one, double other) {
  const auto [first, last] = points_.RowsIn({std::min(one, other), std::max(one, other)});
  if (first == 0) return;
  selection_.SetCurrent(one <= other ? last : first);
  selection_.SetRange(first, last);
}

void HydrographPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Redraw();
}

void HydrographPane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) Redraw();
}

void HydrographPane::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || points_.Empty()) return;
  drag_ = Drag{
      .from = event->position(), .seen = seen_, .selects = event->modifiers().testFlag(Qt::ShiftModifier)};
}

void HydrographPane::mouseMoveEvent(QMouseEvent* event) {
  if (!drag_) return;
  const double by = event->position().x() - drag_->from.x();
  drag_->moved = drag_->moved || std::abs(by) > kClickPixels;
  if (!drag_->moved) return;
  if (drag_->selects) {
    SelectBetween(MinutesAt(drag_->from.x()), MinutesAt(event->position().x()));
    return;
  }
  setCursor(Qt::ClosedHandCursor);
  const double plot = scale_.PlotRight() - scale_.PlotLeft();
  const double minutes = by / plot * drag_->seen.Length();
  Look({drag_->seen.start - minutes, drag_->seen.end - minutes});
}

void HydrographPane::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !drag_) return;
  const bool clicked = !drag_->moved;
  drag_.reset();
  unsetCursor();
  if (clicked) GoTo(points_.Nearest(MinutesAt(event->position().x())));
}

void HydrographPane::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) ShowAll();
}

void HydrographPane::wheelEvent(QWheelEvent* event) {
  if (points_.Empty()) return;
  const double notches = event->angleDelta().y() / kNotch;
  Look(Zoomed(seen_, MinutesAt(event->position().x()), std::pow(kZoomPerNotch, notches), points_.Whole()));
  event->accept();
}

void HydrographPane::keyPressEvent(QKeyEvent* event) {
  if (points_.Empty()) return QWidget::keyPressEvent(event);
  const std::size_t current = selection_.Current() > 0 ? points_.PlaceOfRow(selection_.Current()) : 0;
  const double middle = points_.All()[current].minutes;
  const bool seen = middle >= seen_.start && middle <= seen_.end;
  const double about = seen ? middle : (seen_.start + seen_.end) / 2;
  switch (event->key()) {
    case Qt::Key_Left:
      return GoTo(current > 0 ? current - 1 : 0);
    case Qt::Key_Right:
      return GoTo(std::min(current + 1, points_.All().size() - 1));
    case Qt::Key_Plus:
      return Look(Zoomed(seen_, about, kZoomPerNotch, points_.Whole()));
    case Qt::Key_Minus:
      return Look(Zoomed(seen_, about, 1 / kZoomPerNotch, points_.Whole()));
    case Qt::Key_Home:
      return ShowAll();
    default:
      QWidget::keyPressEvent(event);
  }
}

QString HydrographPane::TextOf(const GraphPoint& point) const {
  QString text = DateTimeText(series_->At(point.Row()).Time()) + QStringLiteral("   ") +
                 NumberText(point.levelCm) + QStringLiteral(" cm");
  if (!series_->IsCorrected(point.Row())) return text;
  return text + QStringLiteral("   ") +
         language_.Say(Wording{u"(ham: %1 cm)", u"(raw: %1 cm)"}, NumberText(series_->RawLevel(point.Row())));
}

bool HydrographPane::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || points_.Empty()) return QWidget::event(event);
  const auto* help = dynamic_cast<QHelpEvent*>(event);
  if (help == nullptr) return false;
  const GraphPoint& nearest = points_.All()[points_.Nearest(MinutesAt(help->pos().x()))];
  QToolTip::showText(help->globalPos(), TextOf(nearest), this);
  return true;
}

}  // namespace vesk
