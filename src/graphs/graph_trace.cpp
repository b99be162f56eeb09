#include "graphs/graph_trace.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace vesk {
namespace {

constexpr double kDotUnits = 1.5;  // a stretch within so many page units is a dot, on every device

// Collects joined stretches and cuts off what rises above the plot: not every device clips.
class LineBuilder {
 public:
  LineBuilder(SeriesTrace& trace, double top) : trace_(trace), top_(top) {}

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

  [[nodiscard]] bool WithinDot() const {
    const QPointF first = current_.front();
    return std::all_of(current_.begin(), current_.end(), [first](QPointF point) {
      return std::abs(point.x() - first.x()) < kDotUnits && std::abs(point.y() - first.y()) < kDotUnits;
    });
  }

  void Finish() {
    if (!current_.empty() && WithinDot()) {
      trace_.dots.push_back(current_.front());  // a line of hardly any length would not be seen
    } else if (!current_.empty()) {
      trace_.lines.push_back(std::move(current_));
    }
    current_.clear();
  }

  SeriesTrace& trace_;
  double top_;
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
  const auto startMinutes = static_cast<int>(std::lround(scale.startT / kMinuteUnits));
  const auto endMinutes = static_cast<int>(std::lround(scale.endT / kMinuteUnits));
  return TracePoints(series.OnPage(startMinutes, endMinutes), scale, columnsPerUnit, startMinutes);
}

SeriesTrace TracePoints(std::span<const GraphPoint> points, const PageScale& scale, double columnsPerUnit,
                        int fromMinutes) {
  SeriesTrace trace;
  LineBuilder line(trace, scale.PlotTop());
  Column column(line);
  const LinearMap xMap = MapThrough(XOfTime(scale, 0), XOfTime(scale, kMinuteUnits));
  const LinearMap yMap = MapThrough(YOfLevel(scale, 0), YOfLevel(scale, 1));
  int previous = std::numeric_limits<int>::min() / 2;
  for (const GraphPoint& point : points) {
    if (point.minutes < fromMinutes) continue;
    // A step back by more than the gap joins nothing either: two read-outs that overlap, or lie in another
    // order.
    if (std::abs(point.minutes - previous) > kGapMinutes) column.Break();
    previous = point.minutes;
    const double x = xMap.Of(point.minutes);
    const double y = yMap.Of(point.levelCm);
    if (point.Kind() == ReadingKind::Ordinary) {
      column.Add(static_cast<int>(x * columnsPerUnit), x, y);
    } else if (y >= scale.PlotTop()) {
      (point.Kind() == ReadingKind::Maximum ? trace.maxima : trace.minima).emplace_back(x, y);
    }
  }
  column.Break();
  return trace;
}

}  // namespace vesk
