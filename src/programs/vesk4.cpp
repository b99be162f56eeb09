// The program with windows: reads its options, starts up and opens the main window on the real work windows.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <cstdio>

#include "platform/folders.h"
#include "platform/libreoffice/office.h"
#include "ratings/open_rating.h"
#include "selection/form_sec.h"
#include "shell/anamenu.h"
#include "shell/run_values.h"
#include "shell/start_up.h"
#include "stations/form_ist_gir.h"
#include "tables/form2.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

int PrintUsage(std::FILE* to, int exitCode) {
  std::fputs(
      "Usage: vesk4 [options]\n\n"
      "  --program-folder DIR  folder of the settings file, the templates and the empty station register\n"
      "  --version             print the version\n"
      "  --help                print this text\n\n"
      "Unattended work is done by vesk4-batch.\n",
      to);
  return exitCode;
}

/// What has to be answered before there is a display; -1 to go on.
int AnswerWithoutDisplay(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const QLatin1String argument(argv[i]);
    if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) return PrintUsage(stdout, 0);
    if (argument == QLatin1String("--version")) {
      std::puts("vesk4 " VESK_VERSION);
      return 0;
    }
  }
  const bool hasDisplay = !qEnvironmentVariableIsEmpty("DISPLAY") ||
                          !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
                          !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
  if (hasDisplay) return -1;
  std::fputs("vesk4: there is no display. Without one, use vesk4-batch.\n", stderr);
  return kFailed;
}

vesk::Result<QString> ProgramFolder(const QCommandLineParser& parser, const QString& executableName) {
  const QString chosen = parser.value(QStringLiteral("program-folder"));
  if (chosen.isEmpty()) {
    return vesk::ResolveProgramFolder({QApplication::applicationDirPath(),
                                       QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
                                       executableName + QStringLiteral(".ini")});
  }
  if (QFileInfo(chosen).isDir()) return QDir(chosen).absolutePath() + QLatin1Char('/');
  return vesk::Error{
      vesk::Wording{u"Böyle bir program klasörü yok", u"There is no such program folder"}, chosen, {}};
}

vesk::WindowMakers RealWindows() {
  return {[](vesk::MainFrame& frame) { return new vesk::FormSec(frame); },
          [](vesk::MainFrame& frame) { return new vesk::Form2(frame); },
          [](vesk::MainFrame& frame) {
            return new vesk::Form_IstGir(frame, [&frame](const QString& number, const QString& name) {
              frame.ShowChild(vesk::MakeGaugingsWindow(frame, number, name));
            });
          },
          [] { return vesk::MakeInteractiveSpreadsheet(); }};
}

int Run(const QString& programFolder, const QString& executableName) {
  const QLocale system = QLocale::system();
  vesk::RunValues run;
  const vesk::StartUpReport report =
      vesk::StartUp({programFolder, executableName, vesk::HomeFolder(),
                     system.toString(QDate(1999, 1, 2), QLocale::ShortFormat), system.decimalPoint().front()},
                    run);
  vesk::Anamenu window(run, RealWindows());
  window.showMaximized();
  window.Open(report);
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  if (const int answer = AnswerWithoutDisplay(argc, argv); answer >= 0) return answer;
  const QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Vesk4"));
  QApplication::setDesktopFileName(QStringLiteral("vesk4"));

  QCommandLineParser parser;
  parser.addOption({QStringLiteral("program-folder"), QString(), QStringLiteral("DIR")});
  if (!parser.parse(QApplication::arguments())) {
    std::fprintf(stderr, "vesk4: %s\n", qPrintable(parser.errorText()));
    return PrintUsage(stderr, kWrongUse);
  }
  if (!parser.positionalArguments().isEmpty()) {
    std::fprintf(stderr, "vesk4: no use for \"%s\"\n", qPrintable(parser.positionalArguments().front()));
    return PrintUsage(stderr, kWrongUse);
  }
  const QString executableName = QFileInfo(QApplication::applicationFilePath()).completeBaseName();
  const vesk::Result<QString> folder = ProgramFolder(parser, executableName);
  if (!folder) {
    std::fprintf(stderr, "vesk4: %s\n", qPrintable(folder.Failure().English()));
    return kFailed;
  }
  const bool ownFolder = parser.isSet(QStringLiteral("program-folder"));  // only what is in it counts
  const QString from = ownFolder ? QString() : QApplication::applicationDirPath();
  for (const vesk::Error& missing : vesk::MissingDeliveredFiles(folder.Value(), from)) {
    std::fprintf(stderr, "vesk4: %s\n", qPrintable(missing.English()));  // the windows do without it
  }
  return Run(folder.Value(), executableName);
}
