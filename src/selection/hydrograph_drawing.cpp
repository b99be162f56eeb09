// How the hydrograph pane draws.
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
#include "graphs/graph_trace.h"
#include "selection/hydrograph_pane.h"

namespace vesk {
namespace {

constexpr double kTick = 4;
constexpr double kMarkHeight = 6;
constexpr int kNoteAlpha = 110;
constexpr int kBandAlpha = 50;
constexpr double kDot = 3.5;

/// Colours that stand out on light and on dark paper.
struct PaneColours {
  QColor paper, ink, grid, line, raw, corrected, doubt, note, gap, selection, preview;
};

PaneColours ColoursOf(const QPalette& palette) {
  const QColor paper = palette.color(QPalette::Base);
  const bool dark = paper.lightness() < 128;
  PaneColours colours{.paper = paper,
                      .ink = palette.color(QPalette::Text),
                      .grid = dark ? QColor(70, 70, 70) : QColor(222, 222, 222),
                      .line = dark ? QColor(110, 180, 255) : QColor(0, 70, 150),
                      .raw = dark ? QColor(150, 150, 150) : QColor(130, 130, 130),
                      .corrected = dark ? QColor(255, 190, 60) : QColor(190, 95, 0),
                      .doubt = dark ? QColor(255, 110, 110) : QColor(190, 0, 0),
                      .note = dark ? QColor(170, 170, 170) : QColor(110, 110, 110),
                      .gap = dark ? QColor(60, 48, 48) : QColor(248, 230, 230),
                      .selection = palette.color(QPalette::Highlight),
                      .preview = dark ? QColor(120, 230, 120) : QColor(0, 120, 40)};
  return colours;
}

QRectF PlotOf(const PageScale& scale) {
  return {QPointF(scale.PlotLeft(), scale.PlotTop()), QPointF(scale.PlotRight(), scale.PlotBottom())};
}

void DrawLines(QPainter& painter, const SeriesTrace& trace, const QPen& pen) {
  painter.setPen(pen);
  for (const std::vector<QPointF>& line : trace.lines)
    painter.drawPolyline(line.data(), static_cast<int>(line.size()));
  QPen dot = pen;
  dot.setWidthF(pen.widthF() + 2);
  dot.setCapStyle(Qt::RoundCap);
  painter.setPen(dot);
  painter.drawPoints(trace.dots.data(), static_cast<int>(trace.dots.size()));
}

void DrawLevelTicks(QPainter& painter, const PageScale& scale, const PaneColours& colours) {
  const QFontMetricsF letters(painter.font());
  for (const double level : LevelTicks(scale)) {
    const double y = std::round(YOfLevel(scale, level));
    painter.setPen(colours.grid);
    painter.drawLine(QPointF(scale.PlotLeft(), y), QPointF(scale.PlotRight(), y));
    painter.setPen(colours.ink);
    const QRectF room(0, y - letters.height() / 2, scale.PlotLeft() - kTick - 2, letters.height());
    painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter, QString::number(std::llround(level)));
    painter.drawLine(QPointF(scale.PlotLeft() - kTick, y), QPointF(scale.PlotLeft(), y));
  }
}

/// Labels of the time axis, from left to right; one that has no room is left out.
class TimeLabels {
 public:
  TimeLabels(QPainter& painter, const PageScale& scale, const PaneColours& colours)
      : painter_(painter), scale_(scale), colours_(colours), letters_(painter.font()) {}

  void Add(double x, const QString& text) {
    x = std::round(x);
    painter_.setPen(colours_.grid);
    painter_.drawLine(QPointF(x, scale_.PlotTop()), QPointF(x, scale_.PlotBottom()));
    painter_.setPen(colours_.ink);
    painter_.drawLine(QPointF(x, scale_.PlotBottom()), QPointF(x, scale_.PlotBottom() + kTick));
    const double width = letters_.horizontalAdvance(text);
    const double left = std::clamp(x - width / 2, 0.0, scale_.width - width);
    if (left < free_) return;
    painter_.drawText(QRectF(left, scale_.PlotBottom() + kTick, width + 1, letters_.height()), Qt::AlignLeft,
                      text);
    free_ = left + width + letters_.averageCharWidth() * 2;
  }

 private:
  QPainter& painter_;
  const PageScale& scale_;
  const PaneColours& colours_;
  QFontMetricsF letters_;
  double free_ = 0;
};

void DrawTimeTicks(QPainter& painter, const PageScale& scale, Day firstDay, const PaneColours& colours) {
  std::vector<std::pair<DateTime, QString>> ticks;
  for (const Day day : DayTicks(scale, firstDay)) ticks.emplace_back(DateTime(day), DateText(day));
  for (const DateTime time : ClockTicks(scale, firstDay)) {
    const Day day = std::chrono::floor<std::chrono::days>(time);
    const bool midnight = time == DateTime(day);
    ticks.emplace_back(
        time, midnight ? DateText(day) : ClockText(static_cast<int>((time - DateTime(day)).count())));
  }
  std::ranges::sort(ticks);
  TimeLabels labels(painter, scale, colours);
  for (const auto& [time, text] : ticks) labels.Add(XOfTime(scale, TimeCoordinate(firstDay, time)), text);
}

}  // namespace

PageScale HydrographPane::Scale() const {
  const QFontMetricsF letters(font());
  const PlotMargins margins{.left = letters.horizontalAdvance(QStringLiteral("-0000")) + kTick + 4,
                            .right = letters.averageCharWidth(),
                            .top = kMarkHeight + 4,
                            .bottom = letters.height() + kTick + 2};
  LevelExtent levels = points_.LevelsIn(seen_);
  for (const GraphPoint& point : preview_) {
    if (point.minutes >= seen_.start && point.minutes <= seen_.end) levels.Widen(point.levelCm);
  }
  if (levels.lowestCm > levels.highestCm) levels = {.highestCm = 1, .lowestCm = 0};
  if (zeroBased_) levels.lowestCm = std::min(levels.lowestCm, 0.0);
  return MakeFittedScale(size(), margins, seen_.start * kMinuteUnits, seen_.end * kMinuteUnits, levels,
                         letters.height() * 1.6);
}

void HydrographPane::DrawBase() {
  const double ratio = devicePixelRatioF();
  base_ = QPixmap(size() * ratio);
  base_.setDevicePixelRatio(ratio);
  const PaneColours colours = ColoursOf(palette());
  base_.fill(colours.paper);
  baseIsOld_ = false;
  QPainter painter(&base_);
  painter.setFont(font());
  if (points_.Empty()) return;
  painter.setClipRect(PlotOf(scale_));
  for (const HydrographMark& mark : marks_) {
    if (!mark.gap) continue;
    const double left = PointOf(points_.MinutesOf(mark.from), 0).x();
    const double right = PointOf(points_.MinutesOf(mark.to), 0).x();
    painter.fillRect(QRectF(left, scale_.PlotTop(), std::max(right - left, 1.0), scale_.height), colours.gap);
  }
  painter.setClipping(false);
  DrawLevelTicks(painter, scale_, colours);
  DrawTimeTicks(painter, scale_, points_.FirstDay(), colours);
  painter.setPen(colours.ink);
  painter.drawLine(QPointF(scale_.PlotLeft(), scale_.PlotTop()),
                   QPointF(scale_.PlotLeft(), scale_.PlotBottom()));
  painter.drawLine(QPointF(scale_.PlotLeft(), scale_.PlotBottom()),
                   QPointF(scale_.PlotRight(), scale_.PlotBottom()));

  painter.setClipRect(PlotOf(scale_).adjusted(0, -1, 1, 1));
  const auto seen = points_.In(seen_);
  const bool sparse = static_cast<double>(seen.size()) < width();
  painter.setRenderHint(QPainter::Antialiasing, sparse);
  for (const std::vector<GraphPoint>& raw : points_.RawLines()) {
    if (raw.back().minutes < seen_.start || raw.front().minutes > seen_.end) continue;
    DrawLines(painter, TracePoints(raw, scale_, ratio), QPen(colours.raw, 1));
  }
  DrawLines(painter, TracePoints(seen, scale_, ratio), QPen(colours.line, sparse ? 1.4 : 1));
  painter.setPen(QPen(colours.corrected, kDot, Qt::SolidLine, Qt::RoundCap));
  const SeriesTrace corrected = TracePoints(points_.Corrected(), scale_, ratio);
  for (const std::vector<QPointF>& points : corrected.lines)
    painter.drawPoints(points.data(), static_cast<int>(points.size()));
  painter.drawPoints(corrected.dots.data(), static_cast<int>(corrected.dots.size()));
  painter.setClipping(false);
  painter.setRenderHint(QPainter::Antialiasing, false);
  DrawMarks(painter, scale_);
}

/// Above the plot, so that no mark hides a reading: notes first, doubts over them.
void HydrographPane::DrawMarks(QPainter& painter, const PageScale& scale) const {
  const PaneColours colours = ColoursOf(palette());
  QColor note = colours.note;
  note.setAlpha(kNoteAlpha);
  for (const bool doubts : {false, true}) {
    for (const HydrographMark& mark : marks_) {
      if (mark.doubt != doubts) continue;
      const double left = std::max(PointOf(points_.MinutesOf(mark.from), 0).x(), scale.PlotLeft());
      const double right = std::min(PointOf(points_.MinutesOf(mark.to), 0).x(), scale.PlotRight());
      if (right < scale.PlotLeft() || left > scale.PlotRight()) continue;
      painter.fillRect(QRectF(left - 1, 1, std::max(right - left, 1.0) + 2, kMarkHeight),
                       doubts ? colours.doubt : note);
    }
  }
}

void HydrographPane::DrawSelection(QPainter& painter) const {
  if (selection_.First() <= 0 || selection_.Last() <= selection_.First()) return;
  const std::vector<GraphPoint> selected = points_.OfRows(selection_.First(), selection_.Last());
  if (selected.empty()) return;
  const PaneColours colours = ColoursOf(palette());
  const double left = PointOf(selected.front().minutes, 0).x();
  const double right = PointOf(selected.back().minutes, 0).x();
  QColor band = colours.selection;
  band.setAlpha(kBandAlpha);
  painter.fillRect(
      QRectF(left, scale_.PlotTop(), std::max(right - left, 2.0), scale_.PlotBottom() - scale_.PlotTop()),
      band);
  DrawLines(painter, TracePoints(selected, scale_, devicePixelRatioF()), QPen(colours.selection, 2.2));
}

void HydrographPane::DrawPreview(QPainter& painter) const {
  if (preview_.empty()) return;
  DrawLines(painter, TracePoints(preview_, scale_, devicePixelRatioF()),
            QPen(ColoursOf(palette()).preview, 1.8, Qt::DashLine));
}

void HydrographPane::DrawCurrent(QPainter& painter) const {
  if (selection_.Current() <= 0) return;
  const GraphPoint& current = points_.All()[points_.PlaceOfRow(selection_.Current())];
  const QPointF at = PointOf(current.minutes, current.levelCm);
  const PaneColours colours = ColoursOf(palette());
  painter.setPen(QPen(colours.selection, 1));
  painter.drawLine(QPointF(at.x(), scale_.PlotTop()), QPointF(at.x(), scale_.PlotBottom()));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colours.selection, 2));
  painter.drawEllipse(at, 4.5, 4.5);
}

void HydrographPane::paintEvent(QPaintEvent* /*event*/) {
  if (baseIsOld_ || base_.deviceIndependentSize().toSize() != size()) DrawBase();
  QPainter painter(this);
  painter.drawPixmap(0, 0, base_);
  if (points_.Empty()) return;
  painter.setClipRect(PlotOf(scale_).adjusted(0, -1, 1, 1));
  DrawSelection(painter);
  DrawPreview(painter);
  DrawCurrent(painter);
  painter.setClipping(false);
  if (!hasFocus()) return;
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace vesk
