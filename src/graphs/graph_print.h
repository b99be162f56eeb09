// A graph page on paper.
#pragma once

#include "graphs/graph_page.h"
#include "platform/result.h"

class QPrinter;

namespace vesk {

/// Draws the page as vectors over the printable area of one sheet, margins and texts in their real size.
Status PrintGraphPage(QPrinter& printer, const GraphPage& page, const GraphSheet& sheet);

}  // namespace vesk
