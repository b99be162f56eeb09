#include "graphs/open_graph.h"

#include "graphs/form_graf.h"
#include "graphs/graph_sheet.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

void Open(MainFrame& frame, GraphSheet sheet) {
  const RunValues& run = frame.Run();
  auto* window = new FormGraf(std::move(sheet), run.language, run.options.mouseAdjustment, run.dataDirectory);
  window->setProperty(kOpensMaximised, true);  // a graph is worth all the room there is
  frame.ShowChild(window);
}

}  // namespace

void OpenSingleGraph(MainFrame& frame, const StationSeries& series, const GraphStation& station,
                     const QStringList& notes) {
  if (!frame.CloseChild(QStringLiteral("FormGraf"))) return;
  RunValues& run = frame.Run();
  run.stationMode = StationMode::Single;
  Open(frame, MakeSingleSheet(series, station, run.options, run.language, notes));
}

void OpenMultipleGraph(MainFrame& frame, const std::vector<GraphFileEntry>& files, const QStringList& notes) {
  if (!frame.CloseChild(QStringLiteral("FormGraf"))) return;
  RunValues& run = frame.Run();
  run.stationMode = StationMode::Multiple;
  Open(frame, ReadMultipleSheet(files, run.options, run.language, notes));
}

}  // namespace vesk
