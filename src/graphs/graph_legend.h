// The legend of a graph of several stations: where no reading runs.
#pragma once

#include <QRectF>

#include <optional>
#include <vector>

#include "graphs/graph_scales.h"
#include "graphs/graph_sheet.h"
#include "graphs/graph_trace.h"

class QPainter;

namespace vesk {

/// A box of that size inside the plot that no trace touches: at the wanted top left corner, or at the free
/// place nearest to it. Nothing when there is none.
std::optional<QRectF> FreeBox(const std::vector<SeriesTrace>& traces, const PageScale& scale,
                              const QRectF& wanted);

/// Draws the legend at its usual place (lines of 20 units ending at x = 695, at y = 400 less 15 a station),
/// at the nearest one that no trace touches, or in one row below the dates.
void DrawLegend(QPainter& painter, const PageScale& scale, const GraphSheet& sheet,
                const std::vector<SeriesTrace>& traces);

}  // namespace vesk
