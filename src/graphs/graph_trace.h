// The path of one series on a page: what is left to draw once readings of the same pixel column are gathered.
#pragma once

#include <QPointF>

#include <limits>
#include <span>
#include <vector>

#include "graphs/graph_scales.h"
#include "graphs/graph_series.h"

namespace vesk {

struct SeriesTrace {
  std::vector<std::vector<QPointF>> lines;  ///< joined stretches, page units, inside the plot
  std::vector<QPointF> dots;  ///< single readings that join nothing, stretches too short to be seen as a line
  std::vector<QPointF> maxima;  ///< marks of logger maxima
  std::vector<QPointF> minima;  ///< marks of logger minima
};

/// columnsPerUnit: pixel columns of the device in one page unit. Of the readings of one column the first, the
/// least, the greatest and the last are kept, so a peak of a single reading stays visible at every width.
SeriesTrace TraceSeries(const GraphSeries& series, const PageScale& scale, double columnsPerUnit);

/// The same of points of any level, as they follow each other; those before fromMinutes are passed over.
SeriesTrace TracePoints(std::span<const GraphPoint> points, const PageScale& scale, double columnsPerUnit,
                        int fromMinutes = std::numeric_limits<int>::min());

}  // namespace vesk
