// The verb that makes level tables.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <optional>

#include "datafiles/numbers.h"
#include "platform/folders.h"
#include "platform/libreoffice/office.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "shell/language.h"
#include "tables/build_level_table.h"
#include "tables/table_notes.h"

namespace vesk {
namespace {

/// Answers the build's questions from the options; nobody sits in front of it.
class UnattendedAnswers : public BuildQuestions {
 public:
  UnattendedAnswers(bool hourly, bool replace, QString label)
      : hourly_(hourly), replace_(replace), label_(std::move(label)) {}
  void TellWorkbooksAreOpen(const BuildMessage& message) override { Complain(message.text); }
  bool AskDespiteNotes(const std::vector<QString>& notes) override {
    for (const QString& note : notes) Complain(QStringLiteral("%1: %2").arg(label_, note));
    return true;
  }
  bool AskToReplace(const QString& path, TableOrigin origin) override {
    const QString what = origin == TableOrigin::Changed
                             ? QStringLiteral("was changed after it was written")
                             : QStringLiteral("is there, and no record tells that this program wrote it");
    if (!replace_) Complain(QStringLiteral("%1: %2; it is kept (see --replace)").arg(path, what));
    return replace_;
  }
  HourlyAnswer AskForHourlyValues(const BuildMessage& /*message*/) override {
    return hourly_ ? HourlyAnswer::Yes : HourlyAnswer::No;
  }
  bool WarnNotToSwitchSheets(const BuildMessage& /*message*/) override { return true; }
  bool ShowProgress(BuildStep /*step*/, int percent) override {
    ShowProgressLine(QStringLiteral("%1: %2 %").arg(label_).arg(percent));
    return true;
  }

 private:
  bool hourly_;
  bool replace_;
  QString label_;
};

struct TableOptions {
  QString folder, outFolder, registerPath, templates, templateName;
  CurveChoice curve = {};
  std::optional<double> catchmentKm2 = {};
  bool hourly = false;
  bool replace = false;
  LanguageChoice language = LanguageChoice::Turkish;
  ExtremeMode mode = ExtremeMode::Recorded;
};

/// The exit code that the load asks for, once the table is made.
Result<int> MakeTable(const StationYear& choice, const TableOptions& options, Spreadsheet& office) {
  const QString number = choice.station.Number();
  const QString name = StationNameFrom(options.registerPath, number);
  auto loaded = LoadStationYear(options.folder, choice, name);
  if (!loaded) return loaded.Failure();
  const auto used = CurveFor(options.curve, choice.station);
  if (!used) return used.Failure();
  loaded->series.SetCurve(*used);
  const auto facts = FactsFor(options.registerPath, choice.station);
  if (!facts) return facts.Failure();
  const BuildInput input{.series = loaded->series,
                         .stationNumber = number,
                         .stationName = name,
                         .waterYear = choice.year.number,
                         .extremeMode = options.mode,
                         .tableDirectory = options.outFolder,
                         .templateDirectory = options.templates,
                         .templateName = options.templateName,
                         .afterSave = AfterSave::Close,
                         .notes = NotesOfTable(NotWholeNote(*loaded), loaded->series, options.mode,
                                               options.language, choice.year.number),
                         .catchmentKm2 = options.catchmentKm2 ? options.catchmentKm2 : facts->catchmentKm2,
                         .language = options.language};
  UnattendedAnswers answers(options.hourly, options.replace,
                            QStringLiteral("%1 %2").arg(number).arg(choice.year.number));
  const auto report = BuildLevelTable(input, office, answers);
  EndProgressLine();
  if (!report) return report.Failure();
  if (report->end != BuildEnd::Made) return kBatchFailed;
  for (const Error& warning : report->warnings) Complain(warning.English());
  if (report->hourlyRowsLeftOut > 0) {
    Complain(
        QStringLiteral(
            "%1: %2 readings did not fit the hourly sheet and are not on it; the daily sheet is complete")
            .arg(report->path)
            .arg(report->hourlyRowsLeftOut));
  }
  const QByteArray path = report->path.toUtf8() + '\n';
  std::fputs(path.constData(), stdout);
  std::fflush(stdout);
  return ExitOf(*loaded);
}

/// The one that was asked for, or where the program's own template lies.
Result<QString> TemplateFolder(const QCommandLineParser& parser, const QString& templateName) {
  const QString option = QStringLiteral("templates");
  if (parser.isSet(option)) return ExistingFolder(parser.value(option));
  const auto found = FindDeliveredFile(QCoreApplication::applicationDirPath(), templateName);
  if (!found) return found.Failure();
  return WithTrailingSlash(QFileInfo(*found).path());
}

Result<TableOptions> ReadTableOptions(const QCommandLineParser& parser) {
  TableOptions options;
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return folder.Failure();
  options.folder = *folder;
  options.outFolder = *folder;
  if (parser.isSet(QStringLiteral("out-dir"))) {
    const QString wanted = parser.value(QStringLiteral("out-dir"));
    if (!QDir().mkpath(wanted))
      return Error{
          Wording{u"Çıktı klasörü oluşturulamadı", u"The output folder could not be made"}, wanted, {}};
    const auto out = ExistingFolder(wanted);
    if (!out) return out.Failure();
    options.outFolder = *out;
  }
  options.curve = CurveChoiceOf(parser);
  options.registerPath = parser.value(QStringLiteral("register"));
  options.hourly = parser.isSet(QStringLiteral("hourly"));
  options.replace = parser.isSet(QStringLiteral("replace"));
  options.mode = ExtremeModeOf(parser.value(QStringLiteral("extremes")));
  Language language;
  if (parser.value(QStringLiteral("language")) == QLatin1String("ENGLISH")) {
    language.FillEnglish();
    options.language = LanguageChoice::English;
  } else {
    language.FillTurkish();
  }
  options.templateName = language.templateName;
  const auto templates = TemplateFolder(parser, options.templateName);
  if (!templates) return templates.Failure();
  options.templates = *templates;
  return options;
}

void AddTableOptions(QCommandLineParser& parser) {
  AddStationOptions(parser, true);
  parser.addOption(ExtremesOption());
  parser.addOption(CurveOption());
  parser.addOption(
      {QStringLiteral("catchment"),
       QStringLiteral("Catchment area, for runoff depth and specific discharge (that of the register)."),
       QStringLiteral("KM2")});
  parser.addOption({QStringLiteral("hourly"), QStringLiteral("Fills the hourly sheet, too.")});
  parser.addOption({QStringLiteral("language"), QStringLiteral("Language of the table (TURKCE)."),
                    QStringLiteral("TURKCE|ENGLISH"), QStringLiteral("TURKCE")});
  parser.addOption({QStringLiteral("out-dir"), QStringLiteral("Folder for the tables (the data directory)."),
                    QStringLiteral("D")});
  parser.addOption(
      {QStringLiteral("register"),
       QStringLiteral("Station register: the stations' names, rating curves and catchment areas."),
       QStringLiteral("FILE")});
  parser.addOption({QStringLiteral("replace"),
                    QStringLiteral("Replaces a table even if it was changed by hand or not made here.")});
  parser.addOption(
      {QStringLiteral("templates"), QStringLiteral("Folder of the table templates."), QStringLiteral("D")});
}

}  // namespace

int RunTableVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Makes level table workbooks and prints their paths."));
  AddTableOptions(parser);
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  if (const QString wrong = WrongChoiceOrExtremes(parser); !wrong.isEmpty())
    return WrongUse(QStringLiteral("table: ") + wrong);
  const QString language = parser.value(QStringLiteral("language"));
  if (language != QLatin1String("TURKCE") && language != QLatin1String("ENGLISH")) {
    return WrongUse(QStringLiteral("table: --language is TURKCE or ENGLISH"));
  }
  const QString catchment = parser.value(QStringLiteral("catchment"));
  const auto area = ReadWholeNumber(catchment);
  if (!catchment.isEmpty() && !(area && *area > 0))
    return WrongUse(QStringLiteral("table: --catchment: expected km2 above 0"));
  auto options = ReadTableOptions(parser);
  if (options && area) options->catchmentKm2 = area;
  if (!options) return Fail(options.Failure());
  const auto chosen = ChooseStationYears(parser, options->folder);
  if (!chosen) return Fail(chosen.Failure());
  const auto office = MakeUnattendedSpreadsheet();
  int exit = chosen->exit;
  for (const StationYear& choice : chosen->years) {
    const Result<int> made = MakeTable(choice, *options, *office);
    exit = std::max(exit, made ? *made : Fail(made.Failure()));
  }
  if (const Status ended = office->Quit(); !ended) Complain(ended.Failure().English());
  return exit;
}

}  // namespace vesk
