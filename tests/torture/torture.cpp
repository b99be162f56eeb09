// torture: tries to make the program lose work or show a wrong figure. Without arguments the long form of
// every part.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

#include "torture/fault_shim.h"
#include "torture/parts.h"

namespace {

using vesk::torture::Run;

struct Part {
  const char* name;
  const char* summary;
  void (*play)(Run&);
  int longRounds;
  int shortRounds;
};

constexpr Part kParts[] = {
    {"kills", "360 folders, each killed four times", vesk::torture::KillRounds, 360, 20},
    {"two", "two processes on one folder", vesk::torture::TwoProcesses, 500, 10},
    {"faults", "a fault at every call of every operation", vesk::torture::FaultPoints, 2, 1},
    {"full", "a full disk from the n-th byte on", vesk::torture::FullDisk, 5, 1},
    {"damaged", "damaged read-outs", vesk::torture::DamagedReadOuts, 10000, 500},
    {"sequences", "what was saved is what the next load shows", vesk::torture::Sequences, 10000, 200},
    {"inputs", "files or log change between save and load", vesk::torture::ChangedInputs, 5000, 150},
};

/// True when every rule held.
bool Play(const Part& part, Run run) {
  const auto begin = std::chrono::steady_clock::now();
  part.play(run);
  const auto taken = std::chrono::steady_clock::now() - begin;
  return run.Report(std::chrono::duration_cast<std::chrono::milliseconds>(taken));
}

/// In memory where that is possible: the run is about what the program does, not about the disk.
QString Scratch() {
  const QString memory = QStringLiteral("/dev/shm");
  return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
}

/// A warning of the library is a fault of the program.
void OnLibraryMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  if (FaultsMet() > 0) return;  // what the library says of a fault that was put in its way
  std::fprintf(stderr, "%s\n", qPrintable(text));
  if (type == QtWarningMsg || type == QtCriticalMsg) std::abort();
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  qInstallMessageHandler(OnLibraryMessage);
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addOption({QStringLiteral("short"), QStringLiteral("The short form, for the test suite.")});
  parser.addOption(
      {QStringLiteral("only"), QStringLiteral("These parts, parted by commas."), QStringLiteral("PARTS")});
  parser.addOption({QStringLiteral("rounds"), QStringLiteral("Rounds of each part."), QStringLiteral("N")});
  parser.addOption({QStringLiteral("seed"), QStringLiteral("Seed of the first round."), QStringLiteral("S"),
                    QStringLiteral("1")});
  parser.addOption(
      {QStringLiteral("scratch"), QStringLiteral("Folder to work in."), QStringLiteral("DIR"), Scratch()});
  parser.addOption({QStringLiteral("keep"), QStringLiteral("Leave the folders of every round, to look at.")});
  parser.process(application);

  const QStringList only = parser.value(QStringLiteral("only")).split(QLatin1Char(','), Qt::SkipEmptyParts);
  if (parser.isSet(QStringLiteral("keep"))) vesk::torture::KeepFolders();
  QTemporaryDir scratch(parser.value(QStringLiteral("scratch")) + QStringLiteral("/torture-XXXXXX"));
  if (parser.isSet(QStringLiteral("keep"))) {
    scratch.setAutoRemove(false);
    std::printf("folders stay in %s\n", qPrintable(scratch.path()));
  }
  if (!scratch.isValid()) {
    std::fprintf(stderr, "torture: %s\n", qPrintable(scratch.errorString()));
    return 2;
  }
  const bool isShort = parser.isSet(QStringLiteral("short"));
  bool held = true;
  int played = 0;
  for (const Part& part : kParts) {
    if (!only.isEmpty() && !only.contains(QLatin1String(part.name))) continue;
    ++played;
    const int rounds = parser.isSet(QStringLiteral("rounds")) ? parser.value(QStringLiteral("rounds")).toInt()
                       : isShort                              ? part.shortRounds
                                                              : part.longRounds;
    const std::uint64_t seed = parser.value(QStringLiteral("seed")).toULongLong();
    held = Play(part, Run(part.name, rounds, seed, scratch.path() + QLatin1Char('/'), isShort)) && held;
  }
  if (played == 0) {
    std::fputs("torture: no such part; there are:\n", stderr);
    for (const Part& part : kParts) std::fprintf(stderr, "  %-10s %s\n", part.name, part.summary);
    return 2;
  }
  return held ? 0 : 1;
}
