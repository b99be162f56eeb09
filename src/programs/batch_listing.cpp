// Verbs that list and tidy: files, header, readings, tidy.
#include <algorithm>
#include <map>

#include "datafiles/archive.h"
#include "datafiles/dates.h"
#include "datafiles/header_checks.h"
#include "datafiles/numbers.h"
#include "platform/csv.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "review/review_grid.h"
#include "review/setup_parameters.h"

namespace vesk {
namespace {

QString DateTimeOrNothing(DateTime time) {
  return time == DateTime{} ? QString() : DateTimeText(time);
}

QString StatusOf(const RawFile& file) {
  if (file.superseded) return QStringLiteral("superseded");
  return file.Usable() ? QStringLiteral("ok") : TextOf(file.refusal->fault);
}

void AppendFileLine(QByteArray& text, const RawFile& file) {
  const RawHeader& header = file.header;
  const QString station = header.StationNo.isEmpty() ? file.Station().Number() : header.StationNo;
  QStringList fields = {file.diskName,
                        station,
                        header.Version,
                        DateTimeOrNothing(header.FirstRecordTime),
                        DateTimeOrNothing(header.LastRecordTime),
                        QString::number(header.DaysCovered),
                        header.WaterYearsText.trimmed(),
                        StatusOf(file)};
  for (QString& field : fields) {
    for (QChar& c : field) {
      if (!c.isPrint()) c = QLatin1Char('?');  // a refused file can hold anything, tabs among it
    }
  }
  text += fields.join(QLatin1Char('\t')).toUtf8() + '\n';
}

int Finish(Output& output) {
  const Status written = output.Finish();
  return written ? kBatchDone : Fail(written.Failure());
}

QCommandLineOption OutOption() {
  return {QStringLiteral("out"), QStringLiteral("Writes to this file instead of standard output."),
          QStringLiteral("FILE")};
}

using Authors = std::map<RowRef, Authorship>;

/// Who corrected each row of a load.
Authors AuthorsOf(const LoadedReadings& loaded) {
  Authors authors;
  for (const LoadedChangeLog& log : loaded.changeLogs)
    authors.insert(log.overlay.authors.begin(), log.overlay.authors.end());
  return authors;
}

void AppendHistory(const StationSeries& series, int row, const Authors& authors, CsvLines& csv) {
  csv.Plain() += NumberText(series.RawLevel(row)).toLatin1();
  const auto known = authors.find(series.RefOf(row));
  const Authorship by = known == authors.end() ? Authorship() : known->second;
  for (const QString& text : {by.why.reason, by.login, by.at}) csv.Cell(text);
}

/// The discharge with more digits than the grid shows, and its flag.
void AppendDischarge(const StationSeries& series, int row, CsvLines& csv) {
  const auto value = series.CurveDischargeOf(row);
  QByteArray& m3s = csv.Plain();
  if (value && HasDischarge(value->flag)) m3s += FigureText(value->m3s);
  csv.Cell(value ? FlagText(value->flag) : QString());
}

/// What readings has behind the grid's columns.
struct MoreColumns {
  const Authors* authors = nullptr;  ///< of the corrections; null: no history
  bool discharge = false;
};

void AppendReadings(const StationSeries& series, const MoreColumns& more, QByteArray& text) {
  const Authors* const authors = more.authors;
  text += "date,time,level_cm,discharge,label,code,baseline_cm";
  text += authors ? ",raw_cm,reason,by,at" : "";
  text += more.discharge ? ",discharge_m3s,discharge_flag\n" : "\n";
  text.reserve(text.size() + series.ReadingCount() * qsizetype{48});
  CsvLines csv(text);
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    for (int column = 0; column < kGridColumns; ++column) {
      csv.Cell(CellText(series, row, static_cast<GridColumn>(column)));
    }
    if (authors) AppendHistory(series, row, *authors, csv);
    if (more.discharge) AppendDischarge(series, row, csv);
    csv.EndLine();
  }
}

/// The list entry of a file given by its name on disk or in the list.
Result<RawFile> FindRawFile(const QString& folder, const QString& name) {
  for (RawFile& file : ListRawFiles(folder)) {
    if (QString::compare(file.diskName, name, Qt::CaseInsensitive) == 0 ||
        QString::compare(file.listName, name, Qt::CaseInsensitive) == 0) {
      return std::move(file);
    }
  }
  return Error{Wording{u"Bu adda ham dosya yok", u"No raw file of that name"}, folder + name, {}};
}

Result<LoadedReadings> LoadOneFile(const QString& folder, const QString& name) {
  const auto file = FindRawFile(folder, name);
  if (!file) return file.Failure();
  LoadRequest request;
  request.dataDirectory = folder;
  request.station = file->Station();
  request.files = {*file};
  auto loaded = LoadReadings(request);
  if (!loaded) return loaded;
  TellLoadMessages(*loaded, request.station, name);
  if (!loaded->refusedFile.isEmpty()) {
    return Error{Wording{u"Ham dosya kabul edilmedi", u"The raw file is refused"}, folder + name,
                 loaded->messages.back()};
  }
  return loaded;
}

Result<LoadedReadings> LoadChosen(const QCommandLineParser& parser, const QString& folder) {
  if (parser.isSet(QStringLiteral("file"))) return LoadOneFile(folder, parser.value(QStringLiteral("file")));
  const auto chosen = ChooseStationYears(parser, folder);
  if (!chosen) return chosen.Failure();
  return LoadStationYear(folder, chosen->years.front());
}

/// Wrong use of the options that choose what to read; empty when they are right.
QString WrongReadings(const QCommandLineParser& parser) {
  const bool station = parser.isSet(QStringLiteral("station"));
  const bool year = parser.isSet(QStringLiteral("water-year"));
  const bool file = parser.isSet(QStringLiteral("file"));
  if (file ? station || year : !(station && year)) {
    return QStringLiteral("give either --station and --water-year or --file");
  }
  return file ? QString() : WrongChoice(parser);
}

}  // namespace

int RunFilesVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Lists the raw files of a data directory, tab-separated."));
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return Fail(folder.Failure());
  std::vector<RawFile> files = ListRawFiles(*folder);
  ReadHeaders(*folder, files);
  Output output({});
  output.Text() = "file\tstation\tversion\tfirst\tlast\tdays\twater_years\tstatus\n";
  for (const RawFile& file : files) {
    AppendFileLine(output.Text(), file);
    if (!file.Usable()) Complain(file.refusal->detail.English());
  }
  for (const Message& hidden : HiddenFiles(files)) Complain(hidden.English());
  return Finish(output);
}

int RunHeaderVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Shows the setup parameters of one raw file."));
  parser.addOption({QStringLiteral("register"), QStringLiteral("Station register for the station's name."),
                    QStringLiteral("FILE")});
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR"), QStringLiteral("FILE")}))
    return *exit;
  const auto folder = DataFolder(parser.positionalArguments().at(0));
  if (!folder) return Fail(folder.Failure());
  const auto file = FindRawFile(*folder, parser.positionalArguments().at(1));
  if (!file) return Fail(file.Failure());
  const QString stationName =
      StationNameFrom(parser.value(QStringLiteral("register")), file->Station().Number());
  const HeaderReading reading = ReadHeaderOfFile(*folder, file->diskName);
  for (const Message& message : HeaderNotes(reading, HeaderScope::SingleFile)) Complain(message.English());
  if (!reading) {
    return Fail({Message::Verbatim(TextOf(reading.Failure().fault)), {}, reading.Failure().detail});
  }
  const SetupCells cells = SetupCellsOf(*reading, stationName);
  Output output({});
  for (std::size_t row = 0; row < cells.size(); ++row) {
    output.Text() += (SetupLabels()[row] + QLatin1Char('\t') + cells[row].trimmed()).toUtf8() + '\n';
  }
  return Finish(output);
}

int RunReadingsVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Writes the readings of a water year, or of one raw file, as the review grid shows them, with the "
      "saved corrections laid over them (CSV)."));
  AddStationOptions(parser, false);
  parser.addOption(
      {QStringLiteral("file"), QStringLiteral("One raw file instead of a water year."), QStringLiteral("F")});
  parser.addOption({QStringLiteral("with-history"),
                    QStringLiteral("Adds the raw level and, of corrected readings, why, by whom and when.")});
  parser.addOption(CurveOption());
  parser.addOption({QStringLiteral("register"),
                    QStringLiteral("Station register with the station's rating curve."),
                    QStringLiteral("FILE")});
  parser.addOption(OutOption());
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  if (const QString wrong = WrongReadings(parser); !wrong.isEmpty()) {
    return WrongUse(QStringLiteral("readings: ") + wrong);
  }
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return Fail(folder.Failure());
  auto loaded = LoadChosen(parser, *folder);
  if (!loaded) return Fail(loaded.Failure());
  const auto used = CurveFor(CurveChoiceOf(parser), loaded->series.Station());
  if (!used) return Fail(used.Failure());
  loaded->series.SetCurve(*used);
  Output output(parser.value(QStringLiteral("out")));
  const Authors authors = AuthorsOf(*loaded);
  const bool history = parser.isSet(QStringLiteral("with-history"));
  AppendReadings(loaded->series, {history ? &authors : nullptr, *used != nullptr}, output.Text());
  return std::max(Finish(output), ExitOf(*loaded));
}

int RunTidyVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Stamps and renames raw files as delivered and archives superseded read-outs."));
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  const auto folder = ExistingFolder(parser.positionalArguments().front());
  if (!folder) return Fail(folder.Failure());
  const TidyReport renamed = RenameRawFiles(*folder);
  std::vector<QString> names;
  for (const RawFile& file : ListRawFiles(*folder)) names.push_back(file.listName);
  const ArchiveReport archived = ArchiveDuplicateRawFiles(*folder, names);
  Output output({});
  for (const Message& line : renamed.done) output.Text() += line.English().toUtf8() + '\n';
  for (const QString& name : archived.archived) {
    output.Text() +=
        QStringLiteral("%1 archived in %2").arg(name, QLatin1String(kArchiveFolder)).toUtf8() + '\n';
  }
  for (const Message& failure : renamed.failures) Complain(failure.English());
  for (const Error& failure : archived.failures) Complain(failure.English());
  const bool whole = renamed.failures.empty() && archived.failures.empty();
  const int exit = Finish(output);
  return whole ? exit : kBatchFailed;
}

}  // namespace vesk
