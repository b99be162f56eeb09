#include "programs/batch_support.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <thread>
#include <utility>

#include "platform/system_reason.h"
#include "platform/whole_file.h"
#include "programs/ordered_work.h"
#include "stations/station_register.h"
#include "tables/level_table.h"

namespace vesk {
namespace {

QCommandLineOption StationOption() {
  return {QStringLiteral("station"),
          QStringLiteral("Station: five-character number or nine-character entry."), QStringLiteral("S")};
}

/// Files of one station, their headers read, and what there is to say of them.
struct StationFiles {
  StationId station;
  std::vector<RawFile> files;
  std::vector<QString> complaints;
  [[nodiscard]] bool Usable() const {
    return std::all_of(files.begin(), files.end(), [](const RawFile& file) { return file.Usable(); });
  }
};

/// Reads the headers; may run on several threads at a time.
StationFiles WithHeaders(const QString& folder, StationFiles found) {
  ReadHeaders(folder, found.files);
  for (const RawFile& file : found.files) {
    if (file.Usable()) continue;
    found.complaints.push_back(file.WhyRefused().English());
  }
  for (const Message& hidden : HiddenFiles(found.files)) found.complaints.push_back(hidden.English());
  return found;
}

/// The stations of the list in its order.
std::vector<StationId> StationsOfFiles(const std::vector<RawFile>& files) {
  std::vector<QString> names;
  for (const RawFile& file : files) names.push_back(file.listName);
  return StationsOf(names);
}

/// The files of each station, stations in list order. Names match without regard to case.
std::vector<StationFiles> ByStation(const std::vector<RawFile>& files) {
  std::vector<StationFiles> stations;
  QHash<QString, std::size_t> places;
  for (const StationId& station : StationsOfFiles(files)) {
    places.insert(station.Key(), stations.size());
    stations.push_back({station, {}, {}});
  }
  for (const RawFile& file : files) {
    const auto place = places.constFind(file.Station().Key());
    if (place != places.cend()) stations[*place].files.push_back(file);
  }
  return stations;
}

/// Every water year of one station.
void AppendYears(const QString& folder, const StationId& station, const std::vector<RawFile>& files,
                 std::vector<StationYear>& out) {
  std::vector<StationWaterYear> years = WaterYearsOf(files, folder, station, {});
  std::sort(years.begin(), years.end(),
            [](const StationWaterYear& a, const StationWaterYear& b) { return a.year < b.year; });
  for (const StationWaterYear& year : years) out.push_back({station, year.year, files});
}

}  // namespace

void Complain(const QString& text) {
  EndProgressLine();
  const QByteArray bytes = QByteArrayLiteral("vesk4-batch: ") + text.toUtf8() + '\n';
  std::fputs(bytes.constData(), stderr);
}

int Fail(const Error& error) {
  Complain(error.English());
  return kBatchFailed;
}

int WrongUse(const QString& text) {
  Complain(text + QStringLiteral(" (see --help)"));
  return kBatchWrongUse;
}

void ShowProgressLine(const QString& text) {
  if (::isatty(STDERR_FILENO) == 0) return;
  const QByteArray bytes = QByteArrayLiteral("\r\033[K") + text.toUtf8();
  std::fputs(bytes.constData(), stderr);
}

void EndProgressLine() {
  if (::isatty(STDERR_FILENO) != 0) std::fputs("\r\033[K", stderr);
}

std::optional<int> ParseVerb(QCommandLineParser& parser, const QStringList& arguments,
                             const QStringList& positional) {
  const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                QStringLiteral("Shows this help."));
  parser.addOption(help);
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  for (const QString& name : positional) parser.addPositionalArgument(name, QString());
  QStringList line = arguments;
  line.first() = QStringLiteral("vesk4-batch ") + line.first();
  const bool parsed = parser.parse(line);
  if (parser.isSet(help)) {
    QString text = parser.helpText();
    text.replace(QStringLiteral("[options]"),
                 line.first().section(QLatin1Char(' '), 1) + QStringLiteral(" [options]"));
    std::fputs(text.toUtf8().constData(), stdout);
    return kBatchDone;
  }
  QString wrong;
  if (!parsed) wrong = parser.errorText();
  const auto given = parser.positionalArguments().size();
  if (wrong.isEmpty() && given != positional.size()) {
    wrong =
        QStringLiteral("expected %1, got %2 argument(s)").arg(positional.join(QLatin1Char(' '))).arg(given);
  }
  if (wrong.isEmpty()) return std::nullopt;
  Complain(line.first().section(QLatin1Char(' '), 1) + QStringLiteral(": ") + wrong +
           QStringLiteral(" (see --help)"));
  return kBatchWrongUse;
}

Result<QString> ExistingFolder(const QString& argument) {
  const QFileInfo info(argument);
  if (!info.isDir()) {
    return Error{Wording{u"Veri dizini değil", u"Not a data directory"}, argument,
                 info.exists() ? Wording{u"bu bir dosya", u"it is a file"}
                               : Wording{u"böyle bir klasör yok", u"no such folder"}};
  }
  return info.absoluteFilePath() +
         (info.absoluteFilePath().endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/"));
}

Result<QString> DataFolder(const QString& argument) {
  auto folder = ExistingFolder(argument);
  if (!folder) return folder;
  for (const Message& skipped : SkippedEntries(*folder)) Complain(skipped.English());
  return folder;
}

std::optional<WaterYear> ReadWaterYear(const QString& text) {
  static const QRegularExpression fourDigits(QStringLiteral("\\A[1-9][0-9]{3}\\z"));
  return fourDigits.match(text).hasMatch() ? std::optional(WaterYear{text.toInt()}) : std::nullopt;
}

Result<StationId> FindStation(const std::vector<RawFile>& files, const QString& wanted) {
  std::vector<StationId> found;
  QStringList names;
  for (const StationId& station : StationsOfFiles(files)) {
    const bool same = station == StationId(wanted) && wanted.size() == station.Text().size();
    if (!same && station.Number().compare(wanted, Qt::CaseInsensitive) != 0) continue;
    found.push_back(station);
    names += station.Text();
  }
  const Message what(Wording{u"İstasyon %1", u"Station %1"}, wanted);
  if (found.empty())
    return Error{
        what, {}, Wording{u"veri dizininde ham dosyası yok", u"no raw file of it in the data directory"}};
  if (found.size() > 1) {
    return Error{what,
                 {},
                 Message(Wording{u"birden çok girdiye uyuyor: %1", u"stands for several entries: %1"},
                         names.join(QStringLiteral(", ")))};
  }
  return found.front();
}

Result<StationYear> ChooseStationYear(const QString& folder, const std::vector<RawFile>& inUse,
                                      const QString& wantedStation, WaterYear year) {
  const auto station = FindStation(inUse, wantedStation);
  if (!station) return station.Failure();
  StationFiles found{*station, {}, {}};
  std::copy_if(inUse.begin(), inUse.end(), std::back_inserter(found.files),
               [&](const RawFile& file) { return file.Station() == *station; });
  found = WithHeaders(folder, std::move(found));
  for (const QString& complaint : found.complaints) Complain(complaint);
  return StationYear{*station, year, std::move(found.files)};
}

void AddStationOptions(QCommandLineParser& parser, bool withAll) {
  parser.addOption(StationOption());
  parser.addOption({QStringLiteral("water-year"), QStringLiteral("Water year: the year in which it ends."),
                    QStringLiteral("Y")});
  if (withAll) {
    parser.addOption({QStringLiteral("all"), QStringLiteral("Every station and water year of the folder.")});
  }
}

QString WrongChoice(const QCommandLineParser& parser) {
  const bool withAll = parser.optionNames().contains(QStringLiteral("all"));  // given, so the verb has it
  const bool station = parser.isSet(QStringLiteral("station"));
  const bool year = parser.isSet(QStringLiteral("water-year"));
  if (withAll ? (station || year) : !(station && year)) {
    return QStringLiteral("give either --station and --water-year or --all");
  }
  if (year && !ReadWaterYear(parser.value(QStringLiteral("water-year")))) {
    return QStringLiteral("--water-year: expected a year in four digits");
  }
  return {};
}

QCommandLineOption ExtremesOption() {
  return {QStringLiteral("extremes"),
          QStringLiteral("TF: the logger's own daily extremes (default); FT: computed from the readings."),
          QStringLiteral("TF|FT"), QStringLiteral("TF")};
}

QString WrongChoiceOrExtremes(const QCommandLineParser& parser) {
  if (QString wrong = WrongChoice(parser); !wrong.isEmpty()) return wrong;
  if (ReadExtremeMode(parser.value(QStringLiteral("extremes")))) return {};
  return QStringLiteral("--extremes is TF or FT");
}

QCommandLineOption JobsOption() {
  return {QStringLiteral("jobs"), QStringLiteral("Threads that work side by side (as many as cores)."),
          QStringLiteral("N")};
}

Result<int> ReadJobs(const QCommandLineParser& parser) {
  constexpr int kMostJobs = 256;
  const QString option = QStringLiteral("jobs");
  if (!parser.isSet(option)) {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostJobs);  // 0: unknown
  }
  static const QRegularExpression number(QStringLiteral("\\A[1-9][0-9]{0,2}\\z"));
  const QString text = parser.value(option);
  if (number.match(text).hasMatch() && text.toInt() <= kMostJobs) return text.toInt();
  return Error{
      Message::Verbatim(QStringLiteral("--jobs: expected a number from 1 to %1").arg(kMostJobs)), {}, {}};
}

Result<ChosenYears> ChooseStationYears(const QCommandLineParser& parser, const QString& folder, int jobs) {
  const std::vector<RawFile> inUse = FilesInUse(ListRawFiles(folder));
  ChosenYears choice;
  if (const auto year = ReadWaterYear(parser.value(QStringLiteral("water-year")))) {
    const auto one = ChooseStationYear(folder, inUse, parser.value(QStringLiteral("station")), *year);
    if (!one) return one.Failure();
    choice.years.push_back(*one);
    return choice;
  }
  const std::vector<StationFiles> stations = ByStation(inUse);
  OrderedWork<StationFiles> work(stations.size(), jobs,
                                 [&](std::size_t i) { return WithHeaders(folder, stations[i]); });
  for (std::size_t i = 0; i < stations.size(); ++i) {
    const StationFiles read = work.Next();
    for (const QString& complaint : read.complaints) Complain(complaint);
    if (!read.Usable()) choice.exit = kBatchFailed;
    AppendYears(folder, read.station, read.files, choice.years);
  }
  return choice;
}

void TellLoadMessages(const LoadedReadings& loaded, const StationId& station, const QString& label,
                      const Teller& tell) {
  for (const Message& said : loaded.messages) {
    const QString message = said.English();
    tell(message.contains(station.Text(), Qt::CaseInsensitive) ? message
                                                               : label + QStringLiteral(": ") + message);
  }
}

Result<LoadedReadings> LoadStationYear(const QString& folder, const StationYear& choice,
                                       const QString& stationName, const Teller& tell) {
  LoadRequest request;
  request.dataDirectory = folder;
  request.station = choice.station;
  request.stationName = stationName;
  request.files = choice.files;
  request.choice = WaterYears{{{choice.year}}};
  auto loaded = LoadReadings(request);
  if (!loaded) return loaded;
  const Message what(Wording{u"İstasyon %1, %2 su yılı", u"Station %1, water year %2"}, choice.station.Text(),
                     choice.year.number);
  TellLoadMessages(*loaded, choice.station, what.English(), tell);
  if (!loaded->refusedFile.isEmpty()) {
    tell(Error{what, folder + loaded->refusedFile,
               Wording{u"bu dosya kabul edilmedi ve yüklemeyi bitirdi; yıl eksik olabilir",
                       u"this file is refused and ended the load, so the year may not be whole"}}
             .English());
  }
  if (loaded->series.ReadingCount() == 0) return Error{what, folder, Wording{u"kayıt yok", u"no readings"}};
  return loaded;
}

int ExitOf(const LoadedReadings& loaded) {
  const bool applied = std::all_of(loaded.changeLogs.begin(), loaded.changeLogs.end(),
                                   [](const LoadedChangeLog& log) { return log.overlay.orphans.empty(); });
  return loaded.whole && applied ? kBatchDone : kBatchFailed;
}

QString StationNameFrom(const QString& registerPath, const QString& stationNumber) {
  if (registerPath.isEmpty()) return {};
  const auto name = LookupStationName(registerPath, stationNumber);
  if (name) return *name;
  Complain(name.Failure().English());
  return {};
}

Status Output::Finish() {
  if (path_.isEmpty()) {
    QFile standardOutput;
    if (!standardOutput.open(stdout, QIODevice::WriteOnly) || standardOutput.write(text_) != text_.size() ||
        !standardOutput.flush()) {
      return Error{Message::Verbatim(QStringLiteral("Standard output")),
                   {},
                   SystemReason(standardOutput.errorString())};
    }
    return {};
  }
  return WriteWholeFile(path_, text_, Wording{u"Çıktı yazılamadı", u"The output could not be written"});
}

}  // namespace vesk
