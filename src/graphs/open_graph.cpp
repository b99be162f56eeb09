#include "graphs/open_graph.h"

#include "graphs/form_graf.h"
#include "graphs/graph_sheet.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

void Open(MainFrame& frame, GraphSheet sheet, std::optional<FlowInput> flow = {}) {
  const RunValues& run = frame.Run();
  auto* window = new FormGraf(std::move(sheet), run.language, run.options.mouseAdjustment, run.dataDirectory);
  window->setProperty(kOpensMaximised, true);  // a graph is worth all the room there is
  if (flow) {
    const bool hasCurve = flow->hasCurve;
    window->SetFlow(
        [&frame, input = *std::move(flow)](FlowKind kind, bool several) {
          frame.ShowChild(new FormDebi(input, several && input.hasCurve ? FlowKind::Discharge : kind, several,
                                       frame.Run().language));
        },
        hasCurve);
  }
  frame.ShowChild(window);
}

}  // namespace

void OpenSingleGraph(MainFrame& frame, const StationSeries& series, const GraphStation& station,
                     const QStringList& notes, std::optional<FlowInput> flow) {
  if (!frame.CloseChild(QStringLiteral("FormGraf"))) return;
  RunValues& run = frame.Run();
  run.stationMode = StationMode::Single;
  Open(frame, MakeSingleSheet(series, station, run.options, run.language, notes), std::move(flow));
}

void OpenMultipleGraph(MainFrame& frame, const std::vector<GraphFileEntry>& files, const QStringList& notes) {
  if (!frame.CloseChild(QStringLiteral("FormGraf"))) return;
  RunValues& run = frame.Run();
  run.stationMode = StationMode::Multiple;
  Open(frame, ReadMultipleSheet(files, run.options, run.language, notes));
}

}  // namespace vesk
