// What lies under the cursor: corners of a zoom rectangle, the read-out and the reading nearest to it.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>

#include "graphs/graph_pages.h"
#include "graphs/graph_scales.h"
#include "graphs/graph_sheet.h"

namespace vesk {

/// Time and level (integer part) at a point of the picture.
GraphCorner CornerAt(const PageScale& scale, Day firstDay, QPointF point);

/// The point itself, or the nearest one of the plot.
QPointF ConfineToPlot(const PageScale& scale, QPointF point);

/// Rectangle between two points, whatever corners they are, inside the plot.
QRectF ZoomRectangle(const PageScale& scale, QPointF a, QPointF b);

/// A rectangle whose time range is `factor` times that of `from` (null: the whole plot), around the cursor's
/// time, from the axis up to the page's maximum. Nothing when it would be the whole plot again.
std::optional<QRectF> ScaledRectangle(const PageScale& scale, double maximumCm, const QRectF& from,
                                      double cursorX, double factor);

/// One reading of one series.
struct ReadoutPlace {
  int series = 0;
  int position = 0;  ///< among the series' readable ones
};

/// Of every series' reading on the page that is nearest in time, the one nearest to the cursor's level.
/// Binary search. Nothing when the page holds no reading.
std::optional<ReadoutPlace> NearestReading(const GraphSheet& sheet, const PageScale& scale, QPointF point);

/// `step` readings on (or back) in the same series; stays at the page's ends.
ReadoutPlace StepReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step);

/// The reading of the next (or previous) series at the same time; the same place when there is none on the
/// page.
ReadoutPlace StepSeries(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step);

/// Where a reading lies on the picture.
QPointF PointOfReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place);

/// "Mouse:dd/mm/yyyy hh:mm   H=123".
QString CursorText(const GraphCorner& corner);
/// "[station  ]dd/mm/yyyy hh:mm  123.5 cm".
QString ReadingText(const GraphSheet& sheet, ReadoutPlace place);

}  // namespace vesk
