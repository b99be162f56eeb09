// vesk4-batch: the operations of the windows without windows.
#include <QGuiApplication>

#include <malloc.h>

#include <cstdio>
#include <memory>
#include <string_view>

#include "programs/batch.h"
#include "programs/batch_graph.h"

#ifndef VESK_VERSION
#define VESK_VERSION "unknown"
#endif

namespace {

using vesk::BatchVerb;

constexpr BatchVerb kVerbs[] = {
    {"files", "list the raw files of a data directory", vesk::RunFilesVerb},
    {"header", "show the setup parameters of one raw file", vesk::RunHeaderVerb},
    {"readings", "write the readings of a water year or of one file (CSV)", vesk::RunReadingsVerb},
    {"check", "tell what is doubtful in the readings (CSV, JSON)", vesk::RunCheckVerb},
    {"correct", "correct a range of readings and save it", vesk::RunCorrectVerb},
    {"accept", "accept findings with a reason", vesk::RunAcceptVerb},
    {"approve", "approve a water year, or withdraw the approval", vesk::RunApproveVerb},
    {"daily", "write daily extremes and means (CSV)", vesk::RunDailyVerb},
    {"history", "tell what was corrected in a water year, by whom and why (CSV)", vesk::RunHistoryVerb},
    {"gaugings", "take a station's gaugings into the register, or write them (CSV)", vesk::RunGaugingsVerb},
    {"station", "tell or keep a station's catchment area and rating curve", vesk::RunStationVerb},
    {"rating", "fit, tabulate or check rating curves (CSV)", vesk::RunRatingVerb},
    {"table", "make level table workbooks", vesk::RunTableVerb},
    {"graph", "draw a graph of one to four stations (PNG, PDF, SVG)", vesk::RunGraphVerb},
    {"tidy", "stamp, rename and archive raw files", vesk::RunTidyVerb},
};

/// Drawing needs fonts, and so a GUI application, but never a display. The other verbs start without either.
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) {
  const std::string_view verb = argc > 1 ? argv[1] : "";
  const bool draws = verb == "graph" || verb == "rating";
  if (!draws) return std::make_unique<QCoreApplication>(argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return std::make_unique<QGuiApplication>(argc, argv);
}

/// Station after station takes and gives back blocks of a few megabytes. Kept by the allocator, they are not
/// zeroed by the kernel again each time, which took a third of a run over many files.
void KeepFreedMemory() {
  constexpr int kLargestBlock = 32 * 1024 * 1024;
  mallopt(M_MMAP_THRESHOLD, kLargestBlock);
  mallopt(M_TRIM_THRESHOLD, kLargestBlock);
}

void PrintHelp(std::FILE* to) {
  std::fputs("Usage: vesk4-batch VERB DIR [options]\n\nVerbs:\n", to);
  for (const BatchVerb& verb : kVerbs) std::fprintf(to, "  %-10s%s\n", verb.name, verb.summary);
  std::fputs(
      "\n\"vesk4-batch VERB --help\" tells the options of a verb.\n"
      "Exit code 0: done; 1: something failed, as told on standard error; 2: wrong use;\n"
      "3: check has findings.\n",
      to);
}

}  // namespace

int main(int argc, char** argv) {
  KeepFreedMemory();
  const std::unique_ptr<QCoreApplication> application = MakeApplication(argc, argv);
  const QStringList arguments = QCoreApplication::arguments().mid(1);
  if (arguments.isEmpty()) {
    PrintHelp(stderr);
    return vesk::kBatchWrongUse;
  }
  const QString& first = arguments.front();
  if (first == QLatin1String("--help") || first == QLatin1String("-h")) {
    PrintHelp(stdout);
    return vesk::kBatchDone;
  }
  if (first == QLatin1String("--version")) {
    std::puts("vesk4-batch " VESK_VERSION);
    return vesk::kBatchDone;
  }
  for (const BatchVerb& verb : kVerbs) {
    if (first == QLatin1String(verb.name)) return verb.run(arguments);
  }
  std::fprintf(stderr, "vesk4-batch: no verb \"%s\" (see --help)\n", qPrintable(first));
  return vesk::kBatchWrongUse;
}
