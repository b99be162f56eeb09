// How the other windows open the graph window.
#pragma once

#include <QString>

#include <memory>
#include <vector>

#include "graphs/graph_files.h"
#include "review/review_grid.h"

namespace vesk {

class MainFrame;

/// What the title of a single-station graph says.
struct GraphStation {
  QString number;      ///< station number as the title shows it, e.g. "12345"
  QString name;        ///< station name; may be empty
  int waterYear = 0;   ///< calendar year in which the water year ends; 0 takes the one of the grid's first reading
};

/// Opens the graph window on a loaded grid (station mode "Tekli"). A graph window that is already open is closed first.
/// The grid is read once, before the call returns; later edits show when the graph is opened again.
void OpenSingleGraph(MainFrame& frame, std::shared_ptr<const ReviewGrid> grid, const GraphStation& station);

/// Opens the graph window on graph data files (station mode "Çoklu"); a file that cannot be read is reported and left
/// out.
void OpenMultipleGraph(MainFrame& frame, const std::vector<GraphFileEntry>& files);

}  // namespace vesk
