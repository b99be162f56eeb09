// Drawing of one graph page: the same routine for the screen, paper, PNG, PDF and SVG.
#pragma once

#include <QSizeF>

#include "graphs/graph_pages.h"
#include "graphs/graph_scales.h"
#include "graphs/graph_sheet.h"

class QPainter;

namespace vesk {

/// The page's scales on a picture of that size (page units of 1/96 inch). Notes of the page take paper from
/// the lower edge: the scale's height ends where they begin.
PageScale ScaleOfPage(const GraphPage& page, const GraphSheet& sheet, QSizeF size);

/// Draws the page from (0, 0) to (size). The painter's transformation brings page units to the device;
/// readings are gathered by the device's pixel columns. columnsPerUnit overrides that for devices whose
/// pixels mean nothing.
void DrawGraphPage(QPainter& painter, QSizeF size, const GraphPage& page, const GraphSheet& sheet,
                   double columnsPerUnit = 0);

}  // namespace vesk
