// How the other windows open the graph window.
#pragma once

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

#include "graphs/form_debi.h"
#include "graphs/graph_files.h"
#include "graphs/graph_station.h"
#include "review/station_series.h"

namespace vesk {

class MainFrame;

/// Opens the graph window on a loaded grid (station mode "Tekli"). A graph window that is already open is
/// closed first. The grid is read once, before the call returns; later edits show when the graph is opened
/// again. flow: what graphs of discharge are drawn from; nothing: there are none. notes: what the picture has
/// to say on every page and device (NotesOfLoad), in the run's language.
void OpenSingleGraph(MainFrame& frame, const StationSeries& series, const GraphStation& station,
                     const QStringList& notes = {}, std::optional<FlowInput> flow = {});

/// Opens the graph window on graph data files (station mode "Çoklu"); a file that cannot be read is reported
/// and left out. notes: as above (GraphFilesBuilt::notes).
void OpenMultipleGraph(MainFrame& frame, const std::vector<GraphFileEntry>& files,
                       const QStringList& notes = {});

}  // namespace vesk
