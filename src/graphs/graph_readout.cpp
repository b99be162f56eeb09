#include "graphs/graph_readout.h"

#include <algorithm>
#include <cmath>

#include "datafiles/helpers.h"

namespace vesk {
namespace {

const GraphSeries& SeriesOf(const GraphSheet& sheet, int index) {
  return sheet.series[static_cast<std::size_t>(index)];
}

const SeriesPoint& PointAt(const GraphSheet& sheet, ReadoutPlace place) {
  return SeriesOf(sheet, place.series).Readable(place.position);
}

bool OnPage(const PageScale& scale, const SeriesPoint& point) {
  const double t = point.minutes * kMinuteUnits;
  constexpr double kHalfMinute = kMinuteUnits / 2;
  return t > scale.startT - kHalfMinute && t < scale.endT + kHalfMinute;
}

int MinutesOf(double t) {
  return static_cast<int>(std::lround(t / kMinuteUnits));
}

std::optional<ReadoutPlace> NearestInSeries(const GraphSheet& sheet, const PageScale& scale, int series,
                                            int minutes) {
  const int first = MinutesOf(scale.startT);
  const int onPage = std::clamp(minutes, first, std::max(first, MinutesOf(scale.endT)));
  const int nearest = SeriesOf(sheet, series).NearestReadable(onPage);
  if (nearest < 0) return std::nullopt;
  // One just outside the page may be nearer: then its neighbour is the page's first or last one.
  const int count = SeriesOf(sheet, series).ReadableCount();
  for (const int position : {nearest, nearest - 1, nearest + 1}) {
    if (position < 0 || position >= count) continue;
    const ReadoutPlace place{series, position};
    if (OnPage(scale, PointAt(sheet, place))) return place;
  }
  return std::nullopt;
}

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
  const int minutes = MinutesOf(TimeOfX(scale, point.x()));
  std::optional<ReadoutPlace> nearest;
  double nearestDistance = 0;
  for (int series = 0; series < static_cast<int>(sheet.series.size()); ++series) {
    const auto place = NearestInSeries(sheet, scale, series, minutes);
    if (!place) continue;
    const double distance = std::abs(YOfLevel(scale, PointAt(sheet, *place).levelCm) - point.y());
    if (nearest && distance >= nearestDistance) continue;
    nearest = place;
    nearestDistance = distance;
  }
  return nearest;
}

ReadoutPlace StepReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step) {
  const int count = SeriesOf(sheet, place.series).ReadableCount();
  const ReadoutPlace moved{place.series, std::clamp(place.position + step, 0, count - 1)};
  return OnPage(scale, PointAt(sheet, moved)) ? moved : place;
}

ReadoutPlace StepSeries(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step) {
  const int count = static_cast<int>(sheet.series.size());
  const int minutes = PointAt(sheet, place).minutes;
  for (int i = 1; i < count; ++i) {
    const int series = ((place.series + step * i) % count + count) % count;
    if (const auto found = NearestInSeries(sheet, scale, series, minutes)) return *found;
  }
  return place;
}

QPointF PointOfReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place) {
  const SeriesPoint& point = PointAt(sheet, place);
  return {XOfTime(scale, point.minutes * kMinuteUnits), YOfLevel(scale, point.levelCm)};
}

QString CursorText(const GraphCorner& corner) {
  return QStringLiteral("Mouse:") + DateTimeText(corner.time) + QStringLiteral("   H=") +
         QString::number(corner.levelCm);
}

QString ReadingText(const GraphSheet& sheet, ReadoutPlace place) {
  const SeriesPoint& point = PointAt(sheet, place);
  const QString station =
      sheet.series.size() > 1 ? sheet.stationNames.value(place.series) + QStringLiteral("  ") : QString();
  return station + DateTimeText(TimeOfCoordinate(sheet.firstDay, point.minutes * kMinuteUnits)) +
         QStringLiteral("  ") + NumberText(point.levelCm) + QStringLiteral(" cm");
}

}  // namespace vesk
