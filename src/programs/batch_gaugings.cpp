// The verbs for what the register knows of a station's discharges: its gaugings, its catchment, its curve.
#include <QDir>
#include <QFileInfo>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "platform/csv.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "ratings/gaugings_csv.h"
#include "ratings/merge_gaugings.h"
#include "ratings/recorded_levels.h"
#include "stations/station_register.h"

namespace vesk {
namespace {

void AddOption(QCommandLineParser& parser, const char* name, const char* text, const char* value = "") {
  parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value)});
}

constexpr int kStationLetters = 5;

/// What is wrong with --register and --station; empty when they are right.
QString WrongRegisterOrStation(const QCommandLineParser& parser) {
  if (!parser.isSet(QStringLiteral("register"))) return QStringLiteral("--register is missing");
  if (parser.value(QStringLiteral("station")).size() != kStationLetters)
    return QStringLiteral("--station: expected a station number of five characters");
  return {};
}

void AddRegisterAndStation(QCommandLineParser& parser) {
  AddOption(parser, "register", "Station register.", "FILE");
  AddOption(parser, "station", "Number of the station.", "S");
}

/// Tells one line for each of these places.
void TellLines(const QString& file, const GaugingsRead& read, const std::vector<std::size_t>& places,
               const char* what) {
  for (const std::size_t place : places)
    Complain(QStringLiteral("%1, line %2: %3").arg(file).arg(read.lines[place]).arg(QLatin1String(what)));
}

/// Tells a station that the register does not name: its number may be mistyped.
void TellUnknownStation(const StationRegister& stations, const QString& station) {
  const auto name = stations.LookupStationName(station);
  if (name && (name->isEmpty() || *name == QLatin1String("-")))
    Complain(QStringLiteral("%1: the register has no name for this station").arg(station));
}

int RunImport(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Takes gaugings (CSV) into the station register. What is there already is not taken twice."));
  AddRegisterAndStation(parser);
  AddOption(parser, "replace", "A gauging of a time that the register has another one of replaces that.");
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("GAUGINGS.csv")})) return *exit;
  if (const QString wrong = WrongRegisterOrStation(parser); !wrong.isEmpty())
    return WrongUse(QStringLiteral("gaugings import: ") + wrong);
  const QString file = parser.positionalArguments().front();
  const QString station = parser.value(QStringLiteral("station"));
  const auto read = ReadGaugingsCsv(file);
  if (!read) return Fail(read.Failure());
  for (const Message& refused : read->refused) Complain(refused.English());
  for (const Message& note : read->notes) Complain(note.English());
  auto stations = StationRegister::Open(parser.value(QStringLiteral("register")));
  if (!stations) return Fail(stations.Failure());
  const auto stored = stations->GaugingsOf(station);
  if (!stored) return Fail(stored.Failure());
  TellUnknownStation(*stations, station);
  const GaugingMerge merge = MergeGaugings(*stored, read->gaugings, parser.isSet(QStringLiteral("replace")));
  if (!merge.changes.empty()) {
    const auto changed = stations->ChangeGaugings(station, merge.changes);
    if (!changed) return Fail(changed.Failure());
    if (!*changed) {
      Complain(QStringLiteral("%1: somebody else changed the gaugings meanwhile; nothing was taken, please "
                              "try again")
                   .arg(stations->Path()));
      return kBatchFailed;
    }
  }
  TellLines(file, *read, merge.different,
            "the register has another gauging of this time, which is kept (see --replace)");
  Output output({});
  const auto count = [&output](const char* name, std::size_t value) {
    output.Text() += QByteArray(name) + ',' + QByteArray::number(static_cast<qulonglong>(value)) + '\n';
  };
  output.Text() += "quantity,value\n";
  count("added", merge.added.size());
  count("replaced", merge.replaced.size());
  count("there_already", merge.same.size());
  count("kept_another", merge.different.size());
  count("refused", read->refused.size());
  if (const Status written = output.Finish(); !written) return Fail(written.Failure());
  return read->refused.empty() && merge.different.empty() ? kBatchDone : kBatchFailed;
}

/// Levels of the recording go where a gauging has none, and each is told.
int TakeLevels(std::vector<Gauging>& gaugings, const QString& folder, const QString& station) {
  const auto data = DataFolder(folder);
  if (!data) return Fail(data.Failure());
  RecordedLevels levels(*data, station);
  for (const std::size_t place : TakeRecordedLevels(gaugings, levels, LanguageChoice::English)) {
    Complain(QStringLiteral("%1: %2 cm is the level of the recording")
                 .arg(DateTimeText(*gaugings[place].time), NumberText(*gaugings[place].levelCm)));
  }
  for (const Gauging& gauging : gaugings) {
    if (gauging.levelCm) continue;
    const QString time =
        gauging.time ? DateTimeText(*gauging.time) : QStringLiteral("a gauging without a time");
    Complain(QStringLiteral("%1: no level, and none in the recording").arg(time));
  }
  return kBatchDone;
}

int RunExport(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Writes a station's gaugings (CSV), as import takes them."));
  AddRegisterAndStation(parser);
  AddOption(parser, "levels-from", "Data directory: levels that are missing come from the recording.", "DIR");
  AddOption(parser, "out", "Writes to this file instead of standard output.", "FILE");
  if (const auto exit = ParseVerb(parser, arguments, {})) return *exit;
  if (const QString wrong = WrongRegisterOrStation(parser); !wrong.isEmpty())
    return WrongUse(QStringLiteral("gaugings export: ") + wrong);
  const QString station = parser.value(QStringLiteral("station"));
  const auto stations =
      StationRegister::Open(parser.value(QStringLiteral("register")), StationRegister::Access::ReadOnly);
  if (!stations) return Fail(stations.Failure());
  const auto stored = stations->GaugingsOf(station);
  if (!stored) return Fail(stored.Failure());
  std::vector<Gauging> gaugings;
  for (const StoredGauging& one : *stored) gaugings.push_back(one.gauging);
  int exit = kBatchDone;
  if (parser.isSet(QStringLiteral("levels-from")))
    exit = TakeLevels(gaugings, parser.value(QStringLiteral("levels-from")), station);
  if (exit != kBatchDone) return exit;
  Output output(parser.value(QStringLiteral("out")));
  output.Text() = GaugingsCsv(gaugings);
  const Status written = output.Finish();
  return written ? kBatchDone : Fail(written.Failure());
}

/// What the options make of the facts; what is wrong with them, empty when they are right.
QString TakeFacts(const QCommandLineParser& parser, StationFacts& facts) {
  if (parser.isSet(QStringLiteral("catchment"))) {
    const QString area = parser.value(QStringLiteral("catchment"));
    facts.catchmentKm2 = area.isEmpty() ? std::nullopt : ReadWholeNumber(area);
    const bool right =
        facts.catchmentKm2 && *facts.catchmentKm2 > 0 && *facts.catchmentKm2 <= kMostCatchmentKm2;
    if (!area.isEmpty() && !right)
      return QStringLiteral("--catchment: expected km2 above 0, at most 10000000; empty to forget it");
  }
  if (parser.isSet(QStringLiteral("curve"))) {
    const QString curve = parser.value(QStringLiteral("curve"));
    facts.curve = curve.isEmpty() ? QString() : QFileInfo(curve).absoluteFilePath();
  }
  return {};
}

}  // namespace

int RunGaugingsVerb(const QStringList& arguments) {
  const QString what = arguments.value(1);
  const QStringList rest = arguments.mid(1);
  if (what == QLatin1String("import")) return RunImport(rest);
  if (what == QLatin1String("export")) return RunExport(rest);
  return WrongUse(QStringLiteral("gaugings: expected import or export (see gaugings import --help)"));
}

int RunStationVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Tells a station's catchment area and rating curve as the register has them, or changes them."));
  AddRegisterAndStation(parser);
  AddOption(parser, "catchment", "Keeps this catchment area; empty: forgets it.", "KM2");
  AddOption(parser, "curve", "Keeps this rating curve; empty: forgets it.", "FILE");
  if (const auto exit = ParseVerb(parser, arguments, {})) return *exit;
  if (const QString wrong = WrongRegisterOrStation(parser); !wrong.isEmpty())
    return WrongUse(QStringLiteral("station: ") + wrong);
  const QString station = parser.value(QStringLiteral("station"));
  const bool changes = parser.isSet(QStringLiteral("catchment")) || parser.isSet(QStringLiteral("curve"));
  auto stations =
      StationRegister::Open(parser.value(QStringLiteral("register")),
                            changes ? StationRegister::Access::ReadWrite : StationRegister::Access::ReadOnly);
  if (!stations) return Fail(stations.Failure());
  const auto read = stations->FactsOf(station);
  if (!read) return Fail(read.Failure());
  StationFacts facts = *read;
  if (const QString wrong = TakeFacts(parser, facts); !wrong.isEmpty())
    return WrongUse(QStringLiteral("station: ") + wrong);
  if (facts != *read) {
    // A curve that cannot be used would stop every later table of the station.
    if (!facts.curve.isEmpty() && facts.curve != read->curve) {
      if (const auto curve = OpenCurve(facts.curve, station); !curve) return Fail(curve.Failure());
    }
    TellUnknownStation(*stations, station);
    const auto kept = stations->SetFacts(station, *read, facts);
    if (!kept) return Fail(kept.Failure());
    if (!*kept) {
      Complain(QStringLiteral("%1: somebody else changed this station meanwhile; please try again")
                   .arg(stations->Path()));
      return kBatchFailed;
    }
  }
  Output output({});
  output.Text() = "quantity,value\n";
  CsvLines csv(output.Text());
  csv.Cell(QStringLiteral("catchment_km2"));
  csv.Cell(facts.catchmentKm2 ? NumberText(*facts.catchmentKm2) : QString());
  csv.EndLine();
  csv.Cell(QStringLiteral("curve"));
  csv.Cell(facts.curve);
  csv.EndLine();
  const Status written = output.Finish();
  return written ? kBatchDone : Fail(written.Failure());
}

}  // namespace vesk
