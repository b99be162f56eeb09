#include "graphs/graph_readout.h"

#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"

namespace vesk {
namespace {

const GraphSeries& SeriesOf(const GraphSheet& sheet, int index) {
  return sheet.series[static_cast<std::size_t>(index)];
}

const GraphPoint& PointAt(const GraphSheet& sheet, ReadoutPlace place) {
  return SeriesOf(sheet, place.series).Readable(place.position);
}

int MinutesOf(double t) {
  return static_cast<int>(std::lround(t / kMinuteUnits));
}

GraphSeries::PageRange PageOf(const GraphSeries& series, const PageScale& scale) {
  return series.RangeOf(MinutesOf(scale.startT), MinutesOf(scale.endT));
}

// The first drawn reading from `position` on, in the direction of step (1 or -1).
std::optional<int> NextDrawn(const GraphSeries& series, const GraphSeries::PageRange& page, int position,
                             int step) {
  for (; position >= 0 && position < series.ReadableCount(); position += step) {
    if (series.Drawn(position, page)) return position;
    const int minutes = series.Readable(position).minutes;
    if (step > 0 ? minutes > page.endMinutes : minutes < page.startMinutes) break;
  }
  return std::nullopt;
}

std::optional<ReadoutPlace> NearestInTime(const GraphSheet& sheet, const PageScale& scale, int series,
                                          int minutes) {
  const GraphSeries& searched = SeriesOf(sheet, series);
  const GraphSeries::PageRange page = PageOf(searched, scale);
  const int from = searched.ReadableFrom(minutes);
  const auto later = NextDrawn(searched, page, from, 1);
  const auto earlier = NextDrawn(searched, page, from - 1, -1);
  if (!later && !earlier) return std::nullopt;
  const auto distance = [&](int position) { return std::abs(searched.Readable(position).minutes - minutes); };
  const bool takeLater = later && (!earlier || distance(*later) < distance(*earlier));
  return ReadoutPlace{series, takeLater ? *later : *earlier};
}

// Looks for the reading nearest to a point of the picture: from the point's time outwards, no further than
// the nearest one so far.
class NearestSearch {
 public:
  NearestSearch(const GraphSheet& sheet, const PageScale& scale, QPointF point)
      : sheet_(sheet),
        topCm_(scale.topCm),
        startMinutes_(MinutesOf(scale.startT)),
        endMinutes_(MinutesOf(scale.endT)),
        cursorMinutes_(TimeOfX(scale, point.x()) / kMinuteUnits),
        cursorCm_(LevelOfY(scale, point.y())),
        perMinute_(XOfTime(scale, kMinuteUnits) - XOfTime(scale, 0)),
        perCm_(YOfLevel(scale, 1) - YOfLevel(scale, 0)) {}

  void Search(int series) {
    const GraphSeries& searched = SeriesOf(sheet_, series);
    const GraphSeries::PageRange page = searched.RangeOf(startMinutes_, endMinutes_);
    const int from = searched.ReadableFrom(static_cast<int>(std::lround(cursorMinutes_)));
    for (int at = from; at < searched.ReadableCount() && Try(page, {series, at}); ++at) continue;
    for (int at = from - 1; at >= 0 && Try(page, {series, at}); --at) continue;
  }

  [[nodiscard]] std::optional<ReadoutPlace> Found() const { return found_; }

 private:
  // False when this one and all behind it are too far away in time.
  bool Try(const GraphSeries::PageRange& page, ReadoutPlace place) {
    const GraphPoint& reading = PointAt(sheet_, place);
    const double awayX = (reading.minutes - cursorMinutes_) * perMinute_;
    if (awayX * awayX > nearest_) return false;
    const double awayY = (reading.levelCm - cursorCm_) * perCm_;
    const double distance = awayX * awayX + awayY * awayY;
    const bool nearer = found_ ? distance < nearest_ : distance <= nearest_;
    if (!nearer || reading.levelCm > topCm_) return true;  // above the plot it is cut off
    if (!SeriesOf(sheet_, place.series).Drawn(place.position, page)) return true;
    found_ = place;
    nearest_ = distance;
    return true;
  }

  const GraphSheet& sheet_;
  double topCm_;
  int startMinutes_, endMinutes_;
  double cursorMinutes_, cursorCm_;
  double perMinute_, perCm_;  // page units
  std::optional<ReadoutPlace> found_;
  double nearest_ = kReadoutReach * kReadoutReach;  // squared
};

}  // namespace

GraphCorner CornerAt(const PageScale& scale, Day firstDay, QPointF point) {
  return {TimeOfCoordinate(firstDay, TimeOfX(scale, point.x())),
          static_cast<int>(LevelOfY(scale, point.y()) + 1e-9)};
}

QPointF ConfineToPlot(const PageScale& scale, QPointF point) {
  return {std::clamp(point.x(), scale.PlotLeft(), scale.PlotRight()),
          std::clamp(point.y(), scale.PlotTop(), scale.PlotBottom())};
}

QRectF ZoomRectangle(const PageScale& scale, QPointF a, QPointF b) {
  return QRectF(ConfineToPlot(scale, a), ConfineToPlot(scale, b)).normalized();
}

std::optional<QRectF> ScaledRectangle(const PageScale& scale, double maximumCm, const QRectF& from,
                                      double cursorX, double factor) {
  const double plotWidth = scale.PlotRight() - scale.PlotLeft();
  const QRectF base = from.isNull() ? QRectF(scale.PlotLeft(), 0, plotWidth, 0) : from;
  const double width = std::max(base.width() * factor, 2.0);
  if (width >= plotWidth) return std::nullopt;
  const double x = std::clamp(cursorX, base.left(), base.right());
  const double share = base.width() > 0 ? (x - base.left()) / base.width() : 0.5;
  const double left = std::clamp(x - share * width, scale.PlotLeft(), scale.PlotRight() - width);
  const double top = std::clamp(YOfLevel(scale, maximumCm), scale.PlotTop(), scale.PlotBottom() - 1);
  return QRectF(left, top, width, scale.PlotBottom() - top);
}

std::optional<ReadoutPlace> NearestReading(const GraphSheet& sheet, const PageScale& scale, QPointF point) {
  NearestSearch search(sheet, scale, point);
  for (int series = 0; series < static_cast<int>(sheet.series.size()); ++series) search.Search(series);
  return search.Found();
}

std::optional<ReadoutPlace> EdgeReading(const GraphSheet& sheet, const PageScale& scale, bool last) {
  const int minutes = MinutesOf(last ? scale.endT : scale.startT);
  std::optional<ReadoutPlace> edge;
  for (int series = 0; series < static_cast<int>(sheet.series.size()); ++series) {
    const auto place = NearestInTime(sheet, scale, series, minutes);
    const auto further = [&] {
      const int here = PointAt(sheet, *place).minutes;
      const int best = PointAt(sheet, *edge).minutes;
      return last ? here > best : here < best;
    };
    if (place && (!edge || further())) edge = place;
  }
  return edge;
}

ReadoutPlace StepReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step) {
  const GraphSeries& series = SeriesOf(sheet, place.series);
  const auto moved = NextDrawn(series, PageOf(series, scale), place.position + step, step);
  return {place.series, moved.value_or(place.position)};
}

ReadoutPlace StepSeries(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step) {
  const int count = static_cast<int>(sheet.series.size());
  const int minutes = PointAt(sheet, place).minutes;
  for (int i = 1; i < count; ++i) {
    const int series = ((place.series + step * i) % count + count) % count;
    if (const auto found = NearestInTime(sheet, scale, series, minutes)) return *found;
  }
  return place;
}

QPointF PointOfReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place) {
  const GraphPoint& point = PointAt(sheet, place);
  return {XOfTime(scale, point.minutes * kMinuteUnits), YOfLevel(scale, point.levelCm)};
}

QString CursorText(const GraphCorner& corner) {
  return QStringLiteral("Mouse:") + DateTimeText(corner.time) + QStringLiteral("   H=") +
         QString::number(corner.levelCm);
}

QString ReadingText(const GraphSheet& sheet, ReadoutPlace place) {
  const GraphPoint& point = PointAt(sheet, place);
  const QString station =
      sheet.series.size() > 1 ? sheet.stationNames.value(place.series) + QStringLiteral("  ") : QString();
  return station + DateTimeText(TimeOfCoordinate(sheet.firstDay, point.minutes * kMinuteUnits)) +
         QStringLiteral("  ") + NumberText(point.levelCm) + QStringLiteral(" cm");
}

}  // namespace vesk
