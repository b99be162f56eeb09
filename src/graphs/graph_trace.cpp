#include "graphs/graph_trace.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace vesk {
namespace {

// Collects joined stretches and cuts off what rises above the plot: not every device clips.
class LineBuilder {
 public:
  LineBuilder(SeriesTrace& trace, double top, double pixel) : trace_(trace), top_(top), pixel_(pixel) {}

  void Add(QPointF point) {
    const bool inside = point.y() >= top_;
    if (hasLast_ && inside != lastInside_) current_.push_back(Crossing(point));
    if (inside) current_.push_back(point);
    if (hasLast_ && lastInside_ && !inside) Finish();
    last_ = point;
    lastInside_ = inside;
    hasLast_ = true;
  }

  void Break() {
    Finish();
    hasLast_ = false;
  }

 private:
  [[nodiscard]] QPointF Crossing(QPointF to) const {
    const double part = (top_ - last_.y()) / (to.y() - last_.y());
    return {last_.x() + part * (to.x() - last_.x()), top_};
  }

  [[nodiscard]] bool WithinPixel() const {
    const QPointF first = current_.front();
    return std::all_of(current_.begin(), current_.end(), [this, first](QPointF point) {
      return std::abs(point.x() - first.x()) < pixel_ && std::abs(point.y() - first.y()) < pixel_;
    });
  }

  void Finish() {
    if (!current_.empty() && WithinPixel()) {
      trace_.dots.push_back(current_.front());  // a line without length leaves no ink
    } else if (!current_.empty()) {
      trace_.lines.push_back(std::move(current_));
    }
    current_.clear();
  }

  SeriesTrace& trace_;
  double top_;
  double pixel_;  // page units of one device pixel
  std::vector<QPointF> current_;
  QPointF last_;
  bool lastInside_ = false;
  bool hasLast_ = false;
};

// Successive readings of one pixel column.
class Column {
 public:
  explicit Column(LineBuilder& line) : line_(line) {}

  void Add(int column, double x, double y) {
    if (column != column_ || count_ == 0) {
      Flush();
      column_ = column;
      first_ = low_ = high_ = {x, y, 0};
    }
    last_ = {x, y, count_};
    if (y > low_.y) low_ = last_;
    if (y < high_.y) high_ = last_;
    ++count_;
  }

  void Flush() {
    if (count_ == 0) return;
    const Spot& early = low_.order < high_.order ? low_ : high_;
    const Spot& late = low_.order < high_.order ? high_ : low_;
    line_.Add({first_.x, first_.y});
    int drawn = 0;
    for (const Spot* spot : {&early, &late, static_cast<const Spot*>(&last_)}) {
      if (spot->order > drawn) line_.Add({spot->x, spot->y});
      drawn = std::max(drawn, spot->order);
    }
    count_ = 0;
  }

  void Break() {
    Flush();
    line_.Break();
  }

 private:
  struct Spot {
    double x = 0, y = 0;
    int order = 0;
  };
  LineBuilder& line_;
  Spot first_, low_, high_, last_;
  int column_ = 0;
  int count_ = 0;
};

// Which rows of the plot, one page unit each, traces cover between two verticals.
class CoveredRows {
 public:
  CoveredRows(const PageScale& scale, double left, double right)
      : top_(scale.PlotTop()),
        left_(left),
        right_(right),
        rows_(static_cast<std::size_t>(scale.PlotBottom() - scale.PlotTop()) + 1, 0) {}

  void Add(QPointF a, QPointF b) {
    if (std::max(a.x(), b.x()) < left_ || std::min(a.x(), b.x()) > right_) return;
    const auto [upper, lower] = std::minmax({a.y(), b.y()});
    std::fill(RowAt(upper), RowAt(lower) + 1, 1);
  }

  void Add(const std::vector<QPointF>& points) {
    for (const QPointF point : points) Add(point, point);
  }

  [[nodiscard]] bool Clear(double upper, double lower) {
    return std::find(RowAt(upper), RowAt(lower) + 1, 1) == RowAt(lower) + 1;
  }

 private:
  [[nodiscard]] std::vector<char>::iterator RowAt(double y) {
    return rows_.begin() + std::clamp<std::ptrdiff_t>(std::lround(y - top_), 0, std::ssize(rows_) - 1);
  }

  double top_, left_, right_;
  std::vector<char> rows_;
};

// t -> x and level -> y, each as one multiplication and one addition.
struct LinearMap {
  double factor, offset;
  [[nodiscard]] double Of(double value) const { return factor * value + offset; }
};

LinearMap MapThrough(double zero, double one) {
  return {one - zero, zero};
}

}  // namespace

SeriesTrace TraceSeries(const GraphSeries& series, const PageScale& scale, double columnsPerUnit) {
  SeriesTrace trace;
  LineBuilder line(trace, scale.PlotTop(), 1 / columnsPerUnit);
  Column column(line);
  const LinearMap xMap = MapThrough(XOfTime(scale, 0), XOfTime(scale, kMinuteUnits));
  const LinearMap yMap = MapThrough(YOfLevel(scale, 0), YOfLevel(scale, 1));
  const auto startMinutes = static_cast<int>(std::lround(scale.startT / kMinuteUnits));
  const auto endMinutes = static_cast<int>(std::lround(scale.endT / kMinuteUnits));
  int previous = std::numeric_limits<int>::min() / 2;
  for (const SeriesPoint& point : series.OnPage(startMinutes, endMinutes)) {
    if (point.minutes < startMinutes) continue;
    // A step back by more than the gap joins nothing either: two read-outs that overlap, or lie in another
    // order.
    if (std::abs(point.minutes - previous) > kGapMinutes) column.Break();
    previous = point.minutes;
    const double x = xMap.Of(point.minutes);
    const double y = yMap.Of(point.levelCm);
    if (point.kind == ReadingKind::Ordinary) {
      column.Add(static_cast<int>(x * columnsPerUnit), x, y);
    } else if (y >= scale.PlotTop()) {
      (point.kind == ReadingKind::Maximum ? trace.maxima : trace.minima).emplace_back(x, y);
    }
  }
  column.Break();
  return trace;
}

QRectF MovedClear(const QRectF& box, const std::vector<SeriesTrace>& traces, const PageScale& scale) {
  CoveredRows rows(scale, box.left(), box.right());
  for (const SeriesTrace& trace : traces) {
    for (const std::vector<QPointF>& line : trace.lines) {
      for (std::size_t i = 1; i < line.size(); ++i) rows.Add(line[i - 1], line[i]);
    }
    for (const auto* points : {&trace.dots, &trace.maxima, &trace.minima}) rows.Add(*points);
  }
  for (double distance = 0; distance < scale.height; ++distance) {
    for (const double shift : {-distance, distance}) {
      const QRectF moved = box.translated(0, shift);
      if (moved.top() < scale.PlotTop() || moved.bottom() > scale.PlotBottom()) continue;
      if (rows.Clear(moved.top(), moved.bottom())) return moved;
    }
  }
  return box;
}

}  // namespace vesk
