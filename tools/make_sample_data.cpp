// make_sample_data [--register FILE] FOLDER: writes the sample raw files and, when asked, enters their
// stations into an existing station register. make_sample_data --bulk COUNT FOLDER: writes COUNT files of a
// whole year each for benchmarks.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <cstdio>

#include "stations/station_register.h"
#include "tools/sample_data.h"
#include "tools/sample_ratings.h"

namespace {

int Fail(const QString& text) {
  std::fprintf(stderr, "make_sample_data: %s\n", qUtf8Printable(text));
  return 1;
}

vesk::Status EnterStations(const QString& path) {
  auto stations = vesk::OpenStationDatabase(path);
  if (!stations) return stations.Failure();
  for (const vesk::sample::SampleStation& station : vesk::sample::SampleStations()) {
    const auto added = stations->Add(station.entry.right(5), station.name);
    if (!added) return added.Failure();
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Makes raw logger files, the same bytes every time."));
  parser.addHelpOption();
  parser.addOption({QStringLiteral("register"),
                    QStringLiteral("Station register to enter the stations into."), QStringLiteral("FILE")});
  parser.addOption({QStringLiteral("bulk"),
                    QStringLiteral("Writes COUNT one-year files instead of the sample."),
                    QStringLiteral("COUNT")});
  parser.addOption({QStringLiteral("ratings"),
                    QStringLiteral("Writes sample gaugings and a rating curve into this folder."),
                    QStringLiteral("FOLDER")});
  parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Made when missing."));
  parser.process(application);
  const QStringList folders = parser.positionalArguments();
  const bool bulk = parser.isSet(QStringLiteral("bulk"));
  const int count = parser.value(QStringLiteral("bulk")).toInt();
  if (folders.size() != 1 || (bulk && count <= 0)) parser.showHelp(2);

  const QString& folder = folders.front();
  if (!QDir().mkpath(folder)) return Fail(QStringLiteral("folder could not be made: ") + folder);
  const auto names =
      bulk ? vesk::sample::WriteBulkData(folder, count) : vesk::sample::WriteSampleData(folder);
  if (!names) return Fail(names.Failure().English());
  if (parser.isSet(QStringLiteral("register"))) {
    const auto entered = EnterStations(parser.value(QStringLiteral("register")));
    if (!entered) return Fail(entered.Failure().English());
  }
  if (const QString ratings = parser.value(QStringLiteral("ratings")); !ratings.isEmpty()) {
    if (!QDir().mkpath(ratings)) return Fail(QStringLiteral("folder could not be made: ") + ratings);
    const auto written = vesk::sample::WriteSampleRatings(ratings);
    if (!written) return Fail(written.Failure().English());
  }
  for (const QString& name : *names) std::printf("%s\n", qUtf8Printable(QDir(folder).filePath(name)));
  return 0;
}
