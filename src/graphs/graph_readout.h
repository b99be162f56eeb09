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

inline constexpr double kReadoutReach = 16;  ///< page units that a read-out is away from the cursor at most

/// Of the readings drawn inside the plot, the one nearest to the point on the picture, in both directions.
/// Nothing when none is within kReadoutReach.
std::optional<ReadoutPlace> NearestReading(const GraphSheet& sheet, const PageScale& scale, QPointF point);

/// The first (or last) reading that the page draws, of all series. Nothing when the page draws none.
std::optional<ReadoutPlace> EdgeReading(const GraphSheet& sheet, const PageScale& scale, bool last);

/// The next drawn reading of the same series (step 1) or the one before (step -1); stays at the page's ends.
ReadoutPlace StepReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step);

/// The drawn reading of the next (step 1) or previous (step -1) series that is nearest in time; the same
/// place when no other series has one on the page.
ReadoutPlace StepSeries(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place, int step);

/// Where a reading lies on the picture.
QPointF PointOfReading(const GraphSheet& sheet, const PageScale& scale, ReadoutPlace place);

/// "Mouse:dd/mm/yyyy hh:mm   H=123".
QString CursorText(const GraphCorner& corner);
/// "[station  ]dd/mm/yyyy hh:mm  123.5 cm".
QString ReadingText(const GraphSheet& sheet, ReadoutPlace place);

}  // namespace vesk
