// Verbs that review without a window: correct a range of readings, accept a finding, approve a water year.
#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "findings/findings.h"
#include "findings/proposed_limits.h"
#include "findings/samples.h"
#include "platform/csv.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "review/editing.h"
#include "review/review_decisions.h"
#include "stations/station_register.h"

namespace vesk {
namespace {

void AddOption(QCommandLineParser& parser, const char* name, const char* text, const char* value = "") {
  parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value)});
}

bool Given(const QCommandLineParser& parser, const char* name) {
  return parser.isSet(QString::fromLatin1(name));
}

QString Value(const QCommandLineParser& parser, const char* name) {
  return parser.value(QString::fromLatin1(name));
}

/// A station's water year and a session on it that may edit.
struct Reviewed {
  QString folder;
  StationYear choice;
  LoadedReadings loaded;
};

Result<Reviewed> LoadForReview(const QCommandLineParser& parser) {
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return folder.Failure();
  const auto chosen = ChooseStationYears(parser, *folder);
  if (!chosen) return chosen.Failure();
  const StationYear& choice = chosen->years.front();
  auto loaded = LoadStationYear(*folder, choice);
  if (!loaded) return loaded.Failure();
  return Reviewed{*folder, choice, std::move(*loaded)};
}

/// Nothing wrong, or why nobody may edit here now.
Status MayWork(EditSession& session) {
  const Wording what{u"Düzeltilmedi", u"Nothing was corrected"};
  if (session.Holder())
    return Error{
        what,
        {},
        Wording{u"bu düzeltmeler üzerinde başkası çalışıyor", u"somebody else works on these corrections"}};
  const auto pending = session.Pending();
  if (!pending) return pending.Failure();
  if (pending->Empty()) return {};
  return Error{
      what,
      {},
      Wording{u"önceki bir oturumun kaydedilmemiş değişiklikleri bekliyor; önce pencerede karar verin",
              u"unsaved changes of an earlier session wait; decide about them in the window first"}};
}

std::optional<double> Number(const QString& text) {
  const auto value = ReadWholeNumber(text);
  constexpr double kMostCm = 10998;  // from one end of the level field to the other
  return value && std::abs(*value) <= kMostCm ? value : std::nullopt;
}

/// What the options ask for; nothing, and what is wrong, when it is not one operation.
std::optional<RangeCorrection> CorrectionOf(const QCommandLineParser& parser, QString& wrong) {
  RangeCorrection correction{.exact = Given(parser, "exact")};
  std::vector<RangeOperation> asked;
  const auto amount = [&](const char* name, RangeOperation operation) {
    if (!Given(parser, name)) return;
    asked.push_back(operation);
    const auto cm = Number(Value(parser, name));
    if (!cm) wrong = QStringLiteral("--%1: expected centimetres").arg(QLatin1String(name));
    correction.firstCm = cm.value_or(0);
  };
  amount("shift", RangeOperation::Shift);
  amount("set", RangeOperation::Set);
  if (Given(parser, "drift")) {
    asked.push_back(RangeOperation::Drift);
    const QStringList parts = Value(parser, "drift").split(QLatin1Char(':'));
    const auto first = Number(parts.value(0));
    const auto last = Number(parts.value(1));
    if (!first || !last || parts.size() != 2)
      wrong = QStringLiteral("--drift: expected CM:CM, for example 0:5");
    correction.firstCm = first.value_or(0);
    correction.lastCm = last.value_or(0);
  }
  for (const auto& [name, operation] : {std::pair("line", RangeOperation::Line),
                                        {"raw", RangeOperation::Raw},
                                        {"other", RangeOperation::OtherReadOut}}) {
    if (Given(parser, name)) asked.push_back(operation);
  }
  if (asked.size() != 1)
    wrong = QStringLiteral("give one of --shift, --drift, --line, --set, --raw and --other");
  if (!wrong.isEmpty()) return std::nullopt;
  correction.operation = asked.front();
  return correction;
}

/// Rows of the ordinary readings from a time to another, both included; 0 and 0 when there is none.
ShownRange RowsBetween(const StationSeries& series, DateTime from, DateTime to) {
  ShownRange rows;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    if (reading.kind != ReadingKind::Ordinary || reading.Time() < from || reading.Time() > to) continue;
    if (rows.first == 0) rows.first = row;
    rows.last = row;
  }
  return rows;
}

void AppendChanges(const StationSeries& series, const std::vector<LevelChange>& changes, QByteArray& text) {
  text += "date,time,label,from_cm,to_cm\n";
  CsvLines csv(text);
  for (const LevelChange& change : changes) {
    for (const GridColumn column : {GridColumn::Date, GridColumn::Time, GridColumn::Label})
      csv.Cell(CellText(series, change.row, column));
    csv.Plain() += NumberText(series.At(change.row).levelCm).toLatin1();
    csv.Plain() += NumberText(change.levelCm).toLatin1();
    csv.EndLine();
  }
}

/// Times of --from and --to; `wrong` says what is not right.
std::pair<DateTime, DateTime> SpanOf(const QCommandLineParser& parser, QString& wrong) {
  const auto time = [&](const char* name) {
    const QString text = Value(parser, name);
    const auto read = text.contains(QLatin1Char(':')) ? ReadDateTime(text) : std::nullopt;
    if (!read) wrong = QStringLiteral("--%1: expected \"dd/mm/yyyy hh:mm\"").arg(QLatin1String(name));
    return read.value_or(DateTime{});
  };
  const auto from = time("from");
  const auto to = time("to");
  if (wrong.isEmpty() && from > to) wrong = QStringLiteral("--from must not be behind --to");
  return {from, to};
}

void AddSpan(QCommandLineParser& parser) {
  AddOption(parser, "from", "First reading: \"dd/mm/yyyy hh:mm\".", "TIME");
  AddOption(parser, "to", "Last reading.", "TIME");
}

Status CorrectReadings(Reviewed& reviewed, const QCommandLineParser& parser,
                       const RangeCorrection& correction, const std::pair<DateTime, DateTime>& span,
                       QByteArray& text) {
  EditSession session;
  session.Begin(std::move(reviewed.loaded));
  const StationSeries& series = session.Series();
  auto changes = ProposeCorrection(series, RowsBetween(series, span.first, span.second), correction);
  if (!changes) return changes.Failure();
  // Rows between two times may hold readings of other times where files overlap.
  std::erase_if(*changes, [&](const LevelChange& change) {
    const DateTime time = series.At(change.row).Time();
    return time < span.first || time > span.second;
  });
  if (Given(parser, "records")) {
    const std::vector<LevelChange> records = RecordsConcerned(series, *changes);
    changes->insert(changes->end(), records.begin(), records.end());
  }
  AppendChanges(series, *changes, text);
  if (Given(parser, "dry-run") || changes->empty()) return {};
  if (Status may = MayWork(session); !may) return may;
  const auto done = session.Correct(*changes, {OperationWord(correction.operation), Value(parser, "reason")});
  if (!done) return done.Failure();
  return session.Save();
}

/// What check would tell, with the same limits.
Result<std::vector<Finding>> FindingsOf(const QCommandLineParser& parser, const Reviewed& reviewed) {
  std::optional<StationLimits> kept;
  if (Given(parser, "register")) {
    const auto found = LookupStationLimits(Value(parser, "register"), reviewed.choice.station.Number());
    if (!found) return found.Failure();
    kept = *found;
  }
  const Samples samples(reviewed.loaded.series, reviewed.loaded.readOuts);
  return FindAll(samples, InputOf(reviewed.loaded, kept ? *kept : ProposeLimits(samples)));
}

}  // namespace

int RunCorrectVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Corrects the readings from a time to another, saves them and writes what was changed (CSV)."));
  AddStationOptions(parser, false);
  AddSpan(parser);
  AddOption(parser, "shift", "By so many cm.", "CM");
  AddOption(parser, "drift", "By an amount that runs straight from the first reading to the last.", "CM:CM");
  AddOption(parser, "line", "Straight between the readings on both sides.");
  AddOption(parser, "set", "To a level.", "CM");
  AddOption(parser, "raw", "Back to the levels of the raw files.");
  AddOption(parser, "other", "To the levels of another file that covers the same times.");
  AddOption(parser, "exact", "Not rounded to whole centimetres.");
  AddOption(parser, "records", "The logger's records of these days follow the readings.");
  AddOption(parser, "reason", "Why, for the review record.", "TEXT");
  AddOption(parser, "dry-run", "Only writes what would be changed.");
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  QString wrong = WrongChoice(parser);
  const auto span = wrong.isEmpty() ? SpanOf(parser, wrong) : std::pair<DateTime, DateTime>();
  const auto correction = wrong.isEmpty() ? CorrectionOf(parser, wrong) : std::nullopt;
  if (!wrong.isEmpty()) return WrongUse(QStringLiteral("correct: ") + wrong);
  auto reviewed = LoadForReview(parser);
  if (!reviewed) return Fail(reviewed.Failure());
  const int exit = ExitOf(reviewed->loaded);
  Output output({});
  if (const Status done = CorrectReadings(*reviewed, parser, *correction, span, output.Text()); !done)
    return Fail(done.Failure());
  const Status written = output.Finish();
  return written ? exit : Fail(written.Failure());
}

int RunAcceptVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Accepts the findings of a rule that begin from a time to another, as check tells them."));
  AddStationOptions(parser, false);
  AddSpan(parser);
  AddOption(parser, "rule", "The rule, as check names it.", "RULE");
  AddOption(parser, "reason", "Why they stay as they are.", "TEXT");
  AddOption(parser, "register", "Station register with the station's limits, as for check.", "FILE");
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  QString wrong = WrongChoice(parser);
  const auto span = wrong.isEmpty() ? SpanOf(parser, wrong) : std::pair<DateTime, DateTime>();
  const auto rule = RuleOfWord(Value(parser, "rule"));
  if (wrong.isEmpty() && !rule) wrong = QStringLiteral("--rule: expected one of the words that check writes");
  if (wrong.isEmpty() && Value(parser, "reason").trimmed().isEmpty())
    wrong = QStringLiteral("--reason is missing");
  if (!wrong.isEmpty()) return WrongUse(QStringLiteral("accept: ") + wrong);
  const auto reviewed = LoadForReview(parser);
  if (!reviewed) return Fail(reviewed.Failure());
  const auto findings = FindingsOf(parser, *reviewed);
  if (!findings) return Fail(findings.Failure());
  int accepted = 0;
  for (const Finding& finding : *findings) {
    if (finding.rule != *rule || finding.from < span.first || finding.from > span.second) continue;
    AcceptedFinding acceptance{.rule = RuleWord(finding.rule),
                               .rawFile = finding.file,
                               .from = finding.from,
                               .to = finding.to,
                               .value = finding.value,
                               .by = PresentAuthor()};
    acceptance.by.why.reason = Value(parser, "reason").trimmed();
    const Status done = AcceptFinding(reviewed->loaded.changeLogs.front().saveTo, acceptance);
    if (!done) return Fail(done.Failure());
    ++accepted;
  }
  if (accepted == 0) {
    return Fail(Error{Wording{u"Kabul edilecek bulgu yok", u"There is no such finding to accept"}, {}, {}});
  }
  Output output({});
  output.Text() = QByteArray::number(accepted) + " accepted\n";
  const Status written = output.Finish();
  return written ? kBatchDone : Fail(written.Failure());
}

int RunApproveVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Approves a water year as it is, or takes the approval back."));
  AddStationOptions(parser, false);
  AddOption(parser, "remark", "Why, for the review record.", "TEXT");
  AddOption(parser, "withdraw", "Takes the approval back.");
  AddOption(parser, "register",
            "Station register with the station's limits, as for check, and its rating curve.", "FILE");
  parser.addOption(CurveOption());
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  if (const QString wrong = WrongChoice(parser); !wrong.isEmpty())
    return WrongUse(QStringLiteral("approve: ") + wrong);
  auto reviewed = LoadForReview(parser);
  if (!reviewed) return Fail(reviewed.Failure());
  const int notWhole = ExitOf(reviewed->loaded);
  if (notWhole != kBatchDone) return notWhole;  // what is missing was told
  if (!Given(parser, "withdraw")) {             // a curve that is gone must not keep an approval in force
    const auto curve = CurveFor(CurveChoiceOf(parser), reviewed->choice.station);
    if (!curve) return Fail(curve.Failure());
    reviewed->loaded.series.SetCurve(*curve);
  }
  const QString log = reviewed->loaded.changeLogs.front().saveTo;
  const auto findings = FindingsOf(parser, *reviewed);
  if (!findings) return Fail(findings.Failure());
  const auto decisions = ReadReviewDecisions(log);
  if (!decisions) return Fail(decisions.Failure());
  auto state = PresentState(reviewed->folder, reviewed->loaded.readOuts, log, reviewed->loaded.series);
  if (!state) return Fail(state.Failure());
  for (const Finding& finding : *findings) {
    const AcceptedFinding known{
        RuleWord(finding.rule), finding.file, finding.from, finding.to, finding.value, {}};
    const bool accepted = std::ranges::any_of(
        decisions->accepted, [&](const AcceptedFinding& other) { return other.IsOf(known); });
    state->openFindings += !accepted && finding.severity == FindingSeverity::Doubt ? 1 : 0;
  }
  EditSession session;
  session.Begin(std::move(reviewed->loaded));
  if (const Status may = MayWork(session); !may) return Fail(may.Failure());
  state->withdrawn = Given(parser, "withdraw");
  state->by = PresentAuthor();
  state->by.why.reason = Value(parser, "remark").trimmed();
  if (const Status done = AddApproval(log, *state); !done) return Fail(done.Failure());
  Output output({});
  output.Text() = (state->withdrawn ? QByteArray("withdrawn") : QByteArray("approved")) +
                  ", open findings: " + QByteArray::number(state->openFindings) + '\n';
  const Status written = output.Finish();
  return written ? kBatchDone : Fail(written.Failure());
}

}  // namespace vesk
