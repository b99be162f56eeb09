// The verb that fits, tabulates and checks rating curves.
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <utility>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "platform/csv.h"
#include "platform/whole_file.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "ratings/curve_draft.h"
#include "ratings/curve_file.h"
#include "ratings/curve_folder.h"
#include "ratings/curve_plot.h"
#include "ratings/fit_curve.h"
#include "ratings/gaugings_csv.h"

namespace vesk {
namespace {

/// Enough to compare fits, and the same on every machine.
constexpr int kFitDigits = 10;

void AppendQuantity(QByteArray& text, const QString& name, double value) {
  text +=
      name.toLatin1() + ',' + (std::isfinite(value) ? FigureText(value, kFitDigits) : QByteArray()) + '\n';
}

QByteArray QuantitiesOf(const CurveFit& fit) {
  QByteArray text = "quantity,value\n";
  AppendQuantity(text, QStringLiteral("n"), fit.gaugings);
  AppendQuantity(text, QStringLiteral("segments"), static_cast<double>(fit.segments.size()));
  AppendQuantity(text, QStringLiteral("sse_ln"), fit.sseLn);
  AppendQuantity(text, QStringLiteral("weighted_sse_ln"), fit.weightedSseLn);
  AppendQuantity(text, QStringLiteral("standard_error_percent"), fit.standardErrorPercent);
  AppendQuantity(text, QStringLiteral("aicc"), fit.aicc);
  for (const FittedParameter& parameter : fit.parameters) {
    AppendQuantity(text, parameter.name, parameter.value);
    AppendQuantity(text, parameter.name + QStringLiteral("_standard_error"), parameter.standardError);
  }
  for (const ResidualTest& test : fit.tests)
    AppendQuantity(text, test.name + QStringLiteral("_probability"), test.probability);
  return text;
}

/// A line a gauging, in order of level.
QByteArray ResidualsOf(const CurveFit& fit, const std::vector<Gauging>& gaugings) {
  QByteArray text = "time,level_cm,discharge_m3s,curve_m3s,residual_percent\n";
  for (const GaugingResidual& residual : fit.residuals) {
    const Gauging& gauging = gaugings[static_cast<std::size_t>(residual.gauging)];
    CsvLines csv(text);
    csv.Cell(gauging.time ? DateTimeText(*gauging.time) : QString());
    csv.Plain() += NumberText(*gauging.levelCm).toLatin1();
    csv.Plain() += FigureText(gauging.dischargeM3s, kFitDigits);
    csv.Plain() += FigureText(gauging.dischargeM3s * std::exp(-residual.lnResidual), kFitDigits);
    csv.Plain() += FigureText(residual.percent, kFitDigits);
    csv.EndLine();
  }
  return text;
}

/// The fitted curve as a file has it: for any time, gauged over the levels of its gaugings, not to be
/// extrapolated.
RatingCurve CurveOfFit(const CurveFit& fit, const std::vector<Gauging>& gaugings, const QString& station) {
  RatingCurve curve;
  curve.station = station;
  CurvePeriod& period = curve.periods.emplace_back();
  period.segments = fit.segments;
  period.lowestCm = *gaugings[static_cast<std::size_t>(fit.residuals.front().gauging)].levelCm;
  period.highestCm = *gaugings[static_cast<std::size_t>(fit.residuals.back().gauging)].levelCm;
  period.gaugings = gaugings;
  return curve;
}

struct FitOptions {
  int segments = 0;
  FitWeights weights = FitWeights::FromUncertainties;
  QString out, report, station;
  LanguageChoice language = LanguageChoice::English;
};

/// What is wrong with the options; empty when they are right.
QString TakeFitOptions(const QCommandLineParser& parser, FitOptions& options) {
  bool numeric = false;
  options.segments = parser.value(QStringLiteral("segments")).toInt(&numeric);
  if (!numeric || options.segments < 1 || options.segments > kMostSegments)
    return QStringLiteral("--segments is 1, 2 or 3");
  const QString weights = parser.value(QStringLiteral("weights"));
  if (weights != QLatin1String("uncertainty") && weights != QLatin1String("equal"))
    return QStringLiteral("--weights is uncertainty or equal");
  if (weights == QLatin1String("equal")) options.weights = FitWeights::Equal;
  options.out = parser.value(QStringLiteral("out"));
  options.report = parser.value(QStringLiteral("report"));
  const QString name = QFileInfo(options.out).fileName();
  if (!options.out.isEmpty() && !IsCurveFileName(name))
    return QStringLiteral("--out: expected a name like E12345.dat");
  const bool known = options.report.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive) ||
                     options.report.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive);
  if (!options.report.isEmpty() && !known)
    return QStringLiteral("--report: expected a file ending in .csv or .pdf");
  const QString language = parser.value(QStringLiteral("language"));
  if (language != QLatin1String("TURKCE") && language != QLatin1String("ENGLISH"))
    return QStringLiteral("--language is TURKCE or ENGLISH");
  options.language = language == QLatin1String("TURKCE") ? LanguageChoice::Turkish : LanguageChoice::English;
  constexpr qsizetype kStationLetters = 5;
  options.station = parser.value(QStringLiteral("station"));
  if (options.station.isEmpty()) options.station = QFileInfo(name).completeBaseName().mid(1, kStationLetters);
  return {};
}

Status WriteFit(const FitOptions& options, const CurveFit& fit, const std::vector<Gauging>& gaugings) {
  if (!options.out.isEmpty()) {
    const Status written = WriteCurveFile(options.out, CurveOfFit(fit, gaugings, options.station));
    if (!written) return written;
  }
  if (options.report.isEmpty()) return {};
  if (options.report.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) {
    CurvePlot plot;
    plot.curve = CurveOfFit(fit, gaugings, options.station);
    plot.fit = fit;
    return WriteCurveReport(options.report, plot, options.language);
  }
  static constexpr Wording kFailed{u"Rapor yazılamadı", u"The report could not be written"};
  return WriteWholeFile(options.report, ResidualsOf(fit, gaugings), kFailed);
}

int RunFit(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Fits power-law segments to gaugings (CSV) and prints what they are."));
  const auto add = [&parser](const char* name, const char* text, const char* value, const char* usual = "") {
    parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value),
                      QString::fromLatin1(usual)});
  };
  add("segments", "Number of segments.", "1..3");
  add("weights", "uncertainty (default): one over its square; equal.", "uncertainty|equal", "uncertainty");
  add("out", "Rating curve to write.", "E12345.dat");
  add("station", "Station of that curve (the five letters behind the E of its name).", "S");
  add("report", "Writes the residual of each gauging (CSV), or curve, figures and residuals (PDF).",
      "FILE.csv|FILE.pdf");
  add("language", "Language of the PDF (ENGLISH).", "TURKCE|ENGLISH", "ENGLISH");
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("GAUGINGS.csv")})) return *exit;
  FitOptions options;
  if (const QString wrong = TakeFitOptions(parser, options); !wrong.isEmpty())
    return WrongUse(QStringLiteral("rating fit: ") + wrong);
  const auto read = ReadGaugingsCsv(parser.positionalArguments().front());
  if (!read) return Fail(read.Failure());
  for (const Message& refused : read->refused) Complain(refused.English());
  const auto fit = FitCurve(read->gaugings, options.segments, options.weights);
  if (!fit) return Fail(fit.Failure());
  if (const Status written = WriteFit(options, *fit, read->gaugings); !written)
    return Fail(written.Failure());
  Output output({});
  output.Text() = QuantitiesOf(*fit);
  if (const Status written = output.Finish(); !written) return Fail(written.Failure());
  return read->refused.empty() ? kBatchDone : kBatchFailed;
}

/// "10,20.5,30"; nothing when one of them is no number.
std::optional<std::vector<double>> ReadLevels(const QString& text) {
  std::vector<double> levels;
  for (const QString& word : text.split(QLatin1Char(','))) {
    bool numeric = false;
    levels.push_back(word.trimmed().toDouble(&numeric));
    if (!numeric || !std::isfinite(levels.back())) return std::nullopt;
  }
  return levels;
}

QByteArray TableOf(const CurvePeriod& period, const std::vector<double>& levels) {
  QByteArray text = "level_cm,discharge_m3s,lower_m3s,upper_m3s,flag\n";
  CsvLines csv(text);
  for (const CurveTableLine& line : CurveTableOf(period, levels)) {
    csv.Plain() += NumberText(line.levelCm).toLatin1();
    QByteArray& m3s = csv.Plain();
    if (HasDischarge(line.discharge.flag)) m3s += FigureText(line.discharge.m3s);
    QByteArray& lower = csv.Plain();
    if (line.band) lower += FigureText(line.band->lowerM3s);
    QByteArray& upper = csv.Plain();
    if (line.band) upper += FigureText(line.band->upperM3s);
    csv.Cell(FlagText(line.discharge.flag));
    csv.EndLine();
  }
  return text;
}

/// The period of a time as the option gives it, else the last one.
Result<const CurvePeriod*> PeriodOf(const QCommandLineParser& parser, const RatingCurve& curve) {
  static constexpr Wording kNone{u"Eğri bu tarihte geçerli değil", u"The curve does not hold at that time"};
  const QString at = parser.value(QStringLiteral("at"));
  if (at.isEmpty()) return &curve.periods.back();
  const auto time = ReadDateTime(at);
  const CurvePeriod* period = time ? PeriodAt(curve, *time) : nullptr;
  if (period == nullptr) return Error{kNone, {}, Message::Verbatim(at)};
  return period;
}

int RunCurveTable(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Tabulates a rating curve with its 95 % band (CSV)."));
  const auto add = [&parser](const char* name, const char* text, const char* value) {
    parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value)});
  };
  add("step", "Levels that many cm apart (1).", "CM");
  add("levels", "These levels instead, cm.", "H1,H2,...");
  add("at", "The period that holds then (the last one), dd/mm/yyyy hh:mm.", "TIME");
  add("out", "Writes to this file instead of standard output.", "FILE");
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("E….dat")})) return *exit;
  const QString stepText = parser.value(QStringLiteral("step"));
  const double step = stepText.isEmpty() ? 1 : ReadWholeNumber(stepText).value_or(0);
  constexpr double kLeastStep = 0.01;
  if (step < kLeastStep)
    return WrongUse(QStringLiteral("rating table: --step is a number of cm, 0.01 or more"));
  const QString wanted = parser.value(QStringLiteral("levels"));
  const auto levels = wanted.isEmpty() ? std::vector<double>() : ReadLevels(wanted);
  if (!levels) return WrongUse(QStringLiteral("rating table: --levels: expected numbers parted by commas"));
  const auto curve = ReadCurveFile(parser.positionalArguments().front());
  if (!curve) return Fail(curve.Failure());
  const auto period = PeriodOf(parser, *curve);
  if (!period) return Fail(period.Failure());
  Output output(parser.value(QStringLiteral("out")));
  output.Text() = TableOf(**period, wanted.isEmpty() ? TableLevels(**period, step) : *levels);
  const Status written = output.Finish();
  return written ? kBatchDone : Fail(written.Failure());
}

int RunCurveCheck(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Tells everything that is wrong in a rating-curve file, line by line."));
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("E….dat")})) return *exit;
  static constexpr Wording kFailed{u"Anahtar eğrisi okunamadı", u"The rating curve could not be read"};
  const QString path = parser.positionalArguments().front();
  if (!QFileInfo(path).isFile())
    return Fail({kFailed, path, Wording{u"böyle bir dosya yok", u"there is no such file"}});
  const auto bytes = ReadWholeFile(path, kFailed);
  if (!bytes) return Fail(bytes.Failure());
  const CurveText read = ReadCurveText(*bytes);
  for (const CurveLineFault& fault : read.faults)
    Complain(QStringLiteral("%1, line %2: %3").arg(path).arg(fault.line).arg(fault.what.English()));
  return read.faults.empty() ? kBatchDone : kBatchFailed;
}

}  // namespace

int RunRatingVerb(const QStringList& arguments) {
  const QString what = arguments.value(1);
  const QStringList rest = arguments.mid(1);
  if (what == QLatin1String("fit")) return RunFit(rest);
  if (what == QLatin1String("table")) return RunCurveTable(rest);
  if (what == QLatin1String("check")) return RunCurveCheck(rest);
  return WrongUse(QStringLiteral("rating: expected fit, table or check (see rating fit --help)"));
}

}  // namespace vesk
