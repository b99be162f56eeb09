// The verb that tells what is doubtful in the readings.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "findings/findings.h"
#include "findings/proposed_limits.h"
#include "findings/samples.h"
#include "platform/csv.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "programs/ordered_work.h"
#include "stations/station_register.h"

namespace vesk {
namespace {

/// What the options say, once they are right.
struct CheckOptions {
  QString folder, registerPath;
  std::vector<FindingRule> rules;  ///< in no order
  StationLimits given;             ///< those that the options set
  bool flatGiven = false;
  bool each = false;
  bool json = false;
  CurveChoice curve = {};
};

/// A station's water year, checked.
struct CheckedYear {
  StationYear choice;
  StationLimits limits;
  bool fromRegister = false;
  std::vector<Finding> findings;
  std::vector<QString> complaints;
  bool loaded = false;
  bool failed = false;
};

std::optional<double> ReadLimit(const QString& text, bool mayBeNegative) {
  const auto value = ReadWholeNumber(text);
  constexpr double kBeyondAllLevels = 1e6;
  if (!value || !std::isfinite(*value) || std::abs(*value) > kBeyondAllLevels) return std::nullopt;
  return mayBeNegative || *value >= 0 ? value : std::nullopt;
}

/// What is wrong with an option of one number; empty, and `into` set, when it is right or not given.
QString TakeLimit(const QCommandLineParser& parser, const char* name, bool mayBeNegative,
                  std::optional<double>& into) {
  const QString option = QString::fromLatin1(name);
  if (!parser.isSet(option)) return {};
  into = ReadLimit(parser.value(option), mayBeNegative);
  return into ? QString() : QStringLiteral("--%1: expected a number").arg(option);
}

QString TakeFlat(const QCommandLineParser& parser, CheckOptions& options) {
  const QString option = QStringLiteral("flat");
  if (!parser.isSet(option)) return {};
  const QStringList parts = parser.value(option).split(QLatin1Char(':'));
  const auto hours = ReadLimit(parts.value(0), false);
  const auto cm = ReadLimit(parts.value(1), false);
  if (parts.size() != 2 || !hours || !cm || *hours == 0)
    return QStringLiteral("--flat: expected HOURS:CM, for example 24:0");
  options.given.flatHours = hours;
  options.given.flatCm = *cm;
  options.flatGiven = true;
  return {};
}

QString TakeLimits(const QCommandLineParser& parser, CheckOptions& options) {
  StationLimits& given = options.given;
  for (const QString& wrong :
       {TakeLimit(parser, "spike", false, given.spikeCm),
        TakeLimit(parser, "rate", false, given.rateCmPerHour), TakeFlat(parser, options),
        TakeLimit(parser, "low", true, given.lowestCm), TakeLimit(parser, "high", true, given.highestCm)}) {
    if (!wrong.isEmpty()) return wrong;
  }
  if (given.lowestCm && given.highestCm && *given.lowestCm >= *given.highestCm)
    return QStringLiteral("--low must be below --high");
  return {};
}

QString TakeRules(const QCommandLineParser& parser, CheckOptions& options) {
  const QString option = QStringLiteral("rules");
  if (!parser.isSet(option)) {
    options.rules.assign(kFindingRules.begin(), kFindingRules.end());
    return {};
  }
  for (const QString& word : parser.value(option).split(QLatin1Char(','))) {
    const auto rule = RuleOfWord(word.trimmed());
    if (rule) {
      options.rules.push_back(*rule);
      continue;
    }
    QStringList words;
    for (const FindingRule known : kFindingRules) words += RuleWord(known);
    return QStringLiteral("--rules: no rule \"%1\"; expected some of %2")
        .arg(word, words.join(QLatin1Char(',')));
  }
  return {};
}

QString TakeFormat(const QCommandLineParser& parser, CheckOptions& options) {
  const QString format = parser.value(QStringLiteral("format"));
  options.json = format == QLatin1String("json");
  return options.json || format == QLatin1String("csv") ? QString()
                                                        : QStringLiteral("--format is csv or json");
}

/// What is wrong with the options; empty when they are right.
QString TakeOptions(const QCommandLineParser& parser, CheckOptions& options) {
  options.registerPath = parser.value(QStringLiteral("register"));
  options.curve = CurveChoiceOf(parser);
  options.each = parser.isSet(QStringLiteral("each"));
  for (const QString& wrong : {WrongChoice(parser), TakeRules(parser, options), TakeFormat(parser, options),
                               TakeLimits(parser, options)}) {
    if (!wrong.isEmpty()) return wrong;
  }
  return {};
}

void AddOptions(QCommandLineParser& parser) {
  AddStationOptions(parser, true);
  const auto add = [&](const char* name, const char* text, const char* value, const char* usual = "") {
    parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value),
                      QString::fromLatin1(usual)});
  };
  add("rules", "Only these rules: words parted by commas.", "RULE,RULE");
  add("format", "csv (default) or json.", "csv|json", "csv");
  parser.addOption(
      {QStringLiteral("each"), QStringLiteral("A line for each flagged reading, not for each run.")});
  add("register",
      "Station register with the stations' limits. Without it, or where it has none, a station's own "
      "readings propose them.",
      "FILE");
  add("spike", "Limit: cm off the mean of the neighbours.", "CM");
  add("rate", "Limit: fastest change.", "CM_PER_H");
  add("flat", "Limit: hours over which the level may stand within so many cm.", "HOURS:CM");
  add("low", "Limit: lowest level.", "CM");
  add("high", "Limit: highest level.", "CM");
  parser.addOption(CurveOption());
  parser.addOption(JobsOption());
  add("out", "Writes to this file instead of standard output.", "FILE");
}

/// Given limits over those of the register, or over proposed ones.
void ChooseLimits(const CheckOptions& options, const std::optional<StationLimits>& kept,
                  const Samples& samples, CheckedYear& year) {
  year.fromRegister = kept.has_value();
  year.limits = kept ? *kept : ProposeLimits(samples);
  const StationLimits& given = options.given;
  if (given.spikeCm) year.limits.spikeCm = given.spikeCm;
  if (given.rateCmPerHour) year.limits.rateCmPerHour = given.rateCmPerHour;
  if (given.lowestCm) year.limits.lowestCm = given.lowestCm;
  if (given.highestCm) year.limits.highestCm = given.highestCm;
  if (options.flatGiven) {
    year.limits.flatHours = given.flatHours;
    year.limits.flatCm = given.flatCm;
  }
}

CheckedYear Check(const StationYear& choice, const CheckOptions& options) {
  CheckedYear year{.choice = choice, .limits = {}, .findings = {}, .complaints = {}};
  const Teller tell = [&year](const QString& text) { year.complaints.push_back(text); };
  const auto fail = [&](const Error& error) {
    tell(error.English());
    year.failed = true;
  };
  auto loaded = LoadStationYear(options.folder, choice, {}, tell);
  if (!loaded) {
    fail(loaded.Failure());
    return year;
  }
  const auto used = CurveFor(options.curve, choice.station);
  if (used) loaded->series.SetCurve(*used);
  if (!used) fail(used.Failure());
  std::optional<StationLimits> kept;
  if (!options.registerPath.isEmpty()) {
    const auto found = LookupStationLimits(options.registerPath, choice.station.Number());
    if (found) kept = *found;
    if (!found) fail(found.Failure());
  }
  const Samples samples(loaded->series, loaded->readOuts, options.each);
  ChooseLimits(options, kept, samples, year);
  year.findings = FindAll(samples, InputOf(*loaded, year.limits));
  std::erase_if(year.findings, [&](const Finding& finding) {
    return std::ranges::find(options.rules, finding.rule) == options.rules.end();
  });
  year.loaded = true;
  // A correction that finds no reading any more is no finding of a rule, but no clean year either.
  for (const LoadedChangeLog& log : loaded->changeLogs)
    year.failed = year.failed || !log.overlay.orphans.empty();
  return year;
}

QString RowsText(const Finding& finding) {
  if (finding.firstRow == 0) return {};
  const QString first = QString::number(finding.firstRow);
  return finding.firstRow == finding.lastRow ? first
                                             : first + QLatin1Char('-') + QString::number(finding.lastRow);
}

void AppendCsvLines(const CheckedYear& year, QByteArray& text) {
  CsvLines csv(text);
  for (const Finding& finding : year.findings) {
    csv.Cell(year.choice.station.Number());
    csv.Cell(QString::number(year.choice.year.number));
    csv.Cell(RuleWord(finding.rule));
    csv.Cell(SeverityWord(finding.severity));
    csv.Cell(DateTimeText(finding.from));
    csv.Cell(DateTimeText(finding.to));
    csv.Cell(finding.file);
    csv.Cell(RowsText(finding));
    csv.Plain() += NumberText(finding.value).toLatin1();
    csv.Cell(finding.expected.English());
    csv.EndLine();
  }
}

QJsonValue JsonOf(const std::optional<double>& value) {
  return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QJsonObject JsonOf(const Finding& finding) {
  QJsonObject object{{QStringLiteral("rule"), RuleWord(finding.rule)},
                     {QStringLiteral("severity"), SeverityWord(finding.severity)},
                     {QStringLiteral("from"), DateTimeText(finding.from)},
                     {QStringLiteral("to"), DateTimeText(finding.to)},
                     {QStringLiteral("file"), finding.file},
                     {QStringLiteral("value"), finding.value},
                     {QStringLiteral("value_text"), ValueText(finding).English()},
                     {QStringLiteral("expected"), finding.expected.English()}};
  if (finding.firstRow > 0) {
    object.insert(QStringLiteral("first_row"), finding.firstRow);
    object.insert(QStringLiteral("last_row"), finding.lastRow);
  }
  return object;
}

QJsonObject JsonOf(const CheckedYear& year) {
  const StationLimits& limits = year.limits;
  QJsonArray findings;
  for (const Finding& finding : year.findings) findings.append(JsonOf(finding));
  return {{QStringLiteral("station"), year.choice.station.Number()},
          {QStringLiteral("water_year"), year.choice.year.number},
          {QStringLiteral("limits"),
           QJsonObject{{QStringLiteral("source"),
                        year.fromRegister ? QStringLiteral("register") : QStringLiteral("proposed")},
                       {QStringLiteral("spike_cm"), JsonOf(limits.spikeCm)},
                       {QStringLiteral("rate_cm_per_h"), JsonOf(limits.rateCmPerHour)},
                       {QStringLiteral("flat_h"), JsonOf(limits.flatHours)},
                       {QStringLiteral("flat_cm"), limits.flatCm},
                       {QStringLiteral("low_cm"), JsonOf(limits.lowestCm)},
                       {QStringLiteral("high_cm"), JsonOf(limits.highestCm)}}},
          {QStringLiteral("findings"), findings}};
}

/// The text, and what was found in all years.
struct Checked {
  QByteArray text;
  bool found = false;
  bool failed = false;
  bool loaded = false;
};

Checked CheckYears(const ChosenYears& chosen, const CheckOptions& options, int jobs) {
  Checked all;
  all.failed = chosen.exit != kBatchDone;
  QJsonArray years;
  OrderedWork<CheckedYear> work(chosen.years.size(), jobs,
                                [&](std::size_t i) { return Check(chosen.years[i], options); });
  if (!options.json) all.text = "station,water_year,rule,severity,from,to,file,rows,value,expected\n";
  for (const StationYear& choice : chosen.years) {
    ShowProgressLine(QStringLiteral("%1 %2").arg(choice.station.Text()).arg(choice.year.number));
    const CheckedYear year = work.Next();
    for (const QString& complaint : year.complaints) Complain(complaint);
    all.failed = all.failed || year.failed;
    all.found = all.found || !year.findings.empty();
    all.loaded = all.loaded || year.loaded;
    if (options.json && year.loaded) years.append(JsonOf(year));
    if (!options.json) AppendCsvLines(year, all.text);
  }
  EndProgressLine();
  if (options.json) all.text = QJsonDocument(QJsonObject{{QStringLiteral("years"), years}}).toJson();
  return all;
}

}  // namespace

int RunCheckVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Tells what is doubtful in the readings. Exit code 0: nothing found; 3: findings; 1: a failure."));
  AddOptions(parser);
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  CheckOptions options;
  if (const QString wrong = TakeOptions(parser, options); !wrong.isEmpty())
    return WrongUse(QStringLiteral("check: ") + wrong);
  const auto jobs = ReadJobs(parser);
  if (!jobs) return WrongUse(QStringLiteral("check: ") + jobs.Failure().English());
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return Fail(folder.Failure());
  options.folder = *folder;
  const auto chosen = ChooseStationYears(parser, *folder, *jobs);
  if (!chosen) return Fail(chosen.Failure());

  const Checked all = CheckYears(*chosen, options, *jobs);
  // Headings over nothing would take the place of an older file's findings.
  if (!all.loaded && all.failed && parser.isSet(QStringLiteral("out"))) return kBatchFailed;
  Output output(parser.value(QStringLiteral("out")));
  output.Text() = all.text;
  if (const Status written = output.Finish(); !written) return Fail(written.Failure());
  if (all.failed) return kBatchFailed;
  return all.found ? kBatchFindings : kBatchDone;
}

}  // namespace vesk
