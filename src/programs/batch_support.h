// What the verbs of the command line share: options, station and file choice, output.
#pragma once

#include <QByteArray>
#include <QCommandLineParser>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

#include "platform/result.h"
#include "programs/batch.h"
#include "review/load_readings.h"
#include "review/raw_files.h"

namespace vesk {

/// Prints "vesk4-batch: text" on standard error.
void Complain(const QString& text);
/// Takes what there is to say; Complain, or somebody who keeps it until its turn comes.
using Teller = std::function<void(const QString& text)>;
/// Complains, and gives the exit code that goes with it.
int Fail(const Error& error);
int WrongUse(const QString& text);
/// Shows or replaces a progress line on standard error when that is a terminal.
void ShowProgressLine(const QString& text);
void EndProgressLine();

/// Parses the command line of one verb. `positional` names its arguments, which must all be there. An exit
/// code when the verb is not to run: help was asked for, or the use was wrong.
std::optional<int> ParseVerb(QCommandLineParser& parser, const QStringList& arguments,
                             const QStringList& positional);

/// The folder argument with one trailing "/"; fails when it is no folder.
Result<QString> ExistingFolder(const QString& argument);

/// The same for a data directory that is to be read; entries that look like raw files and cannot be read are
/// complained about.
Result<QString> DataFolder(const QString& argument);

/// A water year as the command line gives it: exactly four digits, 1000 to 9999.
std::optional<WaterYear> ReadWaterYear(const QString& text);

/// The station given as five-character number or nine-character entry.
Result<StationId> FindStation(const std::vector<RawFile>& files, const QString& wanted);

/// A station and one of its water years.
struct StationYear {
  StationId station;
  WaterYear year;
  std::vector<RawFile> files;  ///< of the station, in use
};

/// One of them by a station's number or entry. Water year: four digits. Refused files are complained about.
Result<StationYear> ChooseStationYear(const QString& folder, const std::vector<RawFile>& inUse,
                                      const QString& wantedStation, WaterYear year);

/// Options --station, --water-year and --all.
void AddStationOptions(QCommandLineParser& parser, bool withAll);

/// Wrong use of --station, --water-year and --all; empty when they are right.
QString WrongChoice(const QCommandLineParser& parser);

/// Option --extremes: whose daily extremes.
QCommandLineOption ExtremesOption();

/// The same as WrongChoice, --extremes included.
QString WrongChoiceOrExtremes(const QCommandLineParser& parser);

/// Option --jobs: threads that work side by side.
QCommandLineOption JobsOption();

/// Its value, 1 to 256; as many as there are cores when it is not given. Any other value is wrong use.
Result<int> ReadJobs(const QCommandLineParser& parser);

/// What the options, which are right, choose.
struct ChosenYears {
  std::vector<StationYear> years;
  int exit = kBatchDone;  ///< kBatchFailed when all was asked for and a file of it is refused
};

/// Refused files of the chosen stations, and files that others hide, are complained about.
/// jobs: stations whose files are looked into side by side.
Result<ChosenYears> ChooseStationYears(const QCommandLineParser& parser, const QString& folder, int jobs = 1);

/// Loads one of them; what the load has to say is told. May run on several threads at a time. Fails when
/// there is no reading at all. A refused file ends a load: what was read before it is there, and the caller's
/// exit code tells (ExitOf).
Result<LoadedReadings> LoadStationYear(const QString& folder, const StationYear& choice,
                                       const QString& stationName = {}, const Teller& tell = Complain);

/// kBatchFailed when a file or a part of one is missing from the load, or a saved correction found no
/// reading.
int ExitOf(const LoadedReadings& loaded);

/// Tells the messages of a load. One that names neither station nor file gets `label` before it.
void TellLoadMessages(const LoadedReadings& loaded, const StationId& station, const QString& label,
                      const Teller& tell = Complain);

/// Name of a station as the register has it; empty without a register.
QString StationNameFrom(const QString& registerPath, const QString& stationNumber);

/// Text for standard output, or for a file that appears whole or not at all.
class Output {
 public:
  /// path: empty for standard output.
  explicit Output(QString path) : path_(std::move(path)) {}
  QByteArray& Text() { return text_; }
  Status Finish();

 private:
  QString path_;
  QByteArray text_;
};

}  // namespace vesk
