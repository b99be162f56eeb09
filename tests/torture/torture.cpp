// torture: tries to make the program lose work or show a wrong figure. Without arguments the long form of
// every part.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

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
    {"kills", "250 folders, each killed four times", vesk::torture::KillRounds, 250, 8},
    {"sequences", "what was saved is what the next load shows", vesk::torture::Sequences, 10000, 250},
    {"inputs", "files or log change between save and load", vesk::torture::ChangedInputs, 5000, 250},
};

int Play(const Part& part, int rounds, std::uint64_t seed, const QString& scratch, bool& held) {
  const auto begin = std::chrono::steady_clock::now();
  Run run(part.name, rounds, seed, scratch);
  part.play(run);
  const auto taken = std::chrono::steady_clock::now() - begin;
  held = run.Report(std::chrono::duration_cast<std::chrono::milliseconds>(taken)) && held;
  return rounds;
}

/// A warning of the library is a fault of the program's.
void OnLibraryMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
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
  parser.addOption({QStringLiteral("scratch"), QStringLiteral("Folder to work in."), QStringLiteral("DIR"),
                    QDir::tempPath()});
  parser.process(application);

  const QStringList only = parser.value(QStringLiteral("only")).split(QLatin1Char(','), Qt::SkipEmptyParts);
  QTemporaryDir scratch(parser.value(QStringLiteral("scratch")) + QStringLiteral("/torture-XXXXXX"));
  if (!scratch.isValid()) {
    std::fprintf(stderr, "torture: %s\n", qPrintable(scratch.errorString()));
    return 2;
  }
  bool held = true;
  int played = 0;
  for (const Part& part : kParts) {
    if (!only.isEmpty() && !only.contains(QLatin1String(part.name))) continue;
    ++played;
    const int rounds = parser.isSet(QStringLiteral("rounds")) ? parser.value(QStringLiteral("rounds")).toInt()
                       : parser.isSet(QStringLiteral("short")) ? part.shortRounds
                                                               : part.longRounds;
    Play(part, rounds, parser.value(QStringLiteral("seed")).toULongLong(), scratch.path() + QLatin1Char('/'),
         held);
  }
  if (played == 0) {
    std::fputs("torture: no such part; there are:\n", stderr);
    for (const Part& part : kParts) std::fprintf(stderr, "  %-10s %s\n", part.name, part.summary);
    return 2;
  }
  return held ? 0 : 1;
}
