// A graph page on paper.
#pragma once

#include "graphs/graph_page.h"
#include "platform/result.h"

class QPrinter;

namespace vesk {

/// Draws the page as vectors over the printable area of one sheet, margins and texts in their real size.
/// Fails with the printer's or the PDF file's name; an older PDF of that name stays then.
Status PrintGraphPage(QPrinter& printer, const GraphPage& page, const GraphSheet& sheet);

}  // namespace vesk
