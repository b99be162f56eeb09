// The verb that writes daily values.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "platform/csv.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "programs/ordered_work.h"
#include "tables/level_table.h"

namespace vesk {
namespace {

void AppendTwoDigits(QByteArray& line, int value) {
  line += static_cast<char>('0' + value / 10);
  line += static_cast<char>('0' + value % 10);
}

/// Levels are whole centimetres but for a few: those skip the general number text.
void AppendNumber(QByteArray& line, double value) {
  const auto whole = static_cast<qint64>(value);
  constexpr double kExactLimit = 1e14;
  if (std::abs(value) < kExactLimit && static_cast<double>(whole) == value) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), whole).ptr;
    line.append(digits.data(), end - digits.data());
  } else {
    line += NumberText(value).toLatin1();
  }
}

/// A level of the daily sheet as time and level; two empty cells when the day has none.
void AppendLevelAt(CsvLines& csv, const std::optional<LevelAt>& level) {
  QByteArray& time = csv.Plain();
  if (level) {
    AppendTwoDigits(time, level->minuteOfDay / 60);
    time += ':';
    AppendTwoDigits(time, level->minuteOfDay % 60);
  }
  QByteArray& levelCm = csv.Plain();
  if (level) AppendNumber(levelCm, level->levelCm);
}

/// What is to be known of a day's or a span's discharges: words of FlagText, "extrapolated" for both sides.
template <class DayOrSpan>
QByteArray FlagsOf(const DayOrSpan& made) {
  const bool peaks = (made.highest && made.highest->flagged) || (made.lowest && made.lowest->flagged);
  QByteArrayList flags;
  if (made.extrapolated || peaks) flags += "extrapolated";
  if (made.tooHigh) flags += "too_high";
  if (made.tooLow) flags += "too_low";
  return flags.join(' ');
}

/// Peak, lowest and mean of a day, and what is to be known of them.
void AppendDischarge(const std::optional<DischargeDay>& day, CsvLines& csv) {
  const auto peak = [&csv](const std::optional<DischargePeak>& one) {
    QByteArray& cell = csv.Plain();
    if (one) cell += FigureText(one->m3s);
  };
  const DischargeDay none;
  const DischargeDay& shown = day ? *day : none;
  peak(shown.highest);
  peak(shown.lowest);
  QByteArray& mean = csv.Plain();
  if (shown.meanM3s) mean += FigureText(*shown.meanM3s);
  QByteArray& share = csv.Plain();
  if (day) share += QByteArray::number(std::floor(shown.share * 1000) / 10);
  csv.Plain() += FlagsOf(shown);
}

void AppendDays(const QString& stationNumber, const LevelTable& table, bool discharge, QByteArray& text) {
  QByteArray station;
  AppendCsv(station, stationNumber);
  const QByteArray year = QByteArray::number(table.waterYear);
  CsvLines csv(text);
  for (const DayRecord& day : table.days) {
    csv.Plain() += station;
    csv.Plain() += year;
    csv.Plain() += DateText(day.day).toLatin1();
    AppendLevelAt(csv, day.maximum);
    AppendLevelAt(csv, day.minimum);
    QByteArray& mean = csv.Plain();
    if (day.meanCm) AppendNumber(mean, *day.meanCm);
    AppendNumber(csv.Plain(), day.readings);
    AppendNumber(csv.Plain(), day.weightedSum);
    AppendNumber(csv.Plain(), day.lastMinute);
    if (discharge) AppendDischarge(day.discharge, csv);
    csv.EndLine();
  }
}

/// What is asked for.
struct DailyRequest {
  QString folder;
  ExtremeMode mode = ExtremeMode::Recorded;
  CurveChoice curve = {};
  std::optional<double> catchmentKm2 = {};
  enum class Per { Day, Month, Year } per = Per::Day;
};

void AppendPeak(const std::optional<DischargePeak>& peak, CsvLines& csv) {
  QByteArray& m3s = csv.Plain();
  if (peak) m3s += FigureText(peak->m3s);
  csv.Cell(peak ? DateTimeText(peak->time) : QString());
}

void AppendSpan(const StationYear& choice, const DischargeSpan& span, QByteArray& text) {
  CsvLines csv(text);
  csv.Cell(choice.station.Number());
  csv.Plain() += QByteArray::number(choice.year.number);
  csv.Plain() += DateText(span.first).toLatin1();
  csv.Plain() += DateText(span.last).toLatin1();
  for (const int count : {span.days, span.daysKept, span.daysPartial})
    csv.Plain() += QByteArray::number(count);
  const auto figure = [&csv](const std::optional<double>& value) {
    QByteArray& cell = csv.Plain();
    if (value) cell += FigureText(*value);
  };
  figure(span.meanM3s);
  AppendPeak(span.highest, csv);
  AppendPeak(span.lowest, csv);
  for (const auto& value : {span.volumeHm3, span.runoffMm, span.specificLsKm2}) figure(value);
  csv.Plain() += FlagsOf(span);
  csv.EndLine();
}

/// The months, or the year, of a table's days.
void AppendSpans(const StationYear& choice, const LevelTable& table,
                 const std::optional<double>& catchmentKm2, DailyRequest::Per per, QByteArray& text) {
  std::vector<DischargeDay> days;
  for (const DayRecord& day : table.days) {
    if (day.discharge) days.push_back(*day.discharge);
  }
  const DischargeYear made = SummariseDischarge(days, choice.year.number, catchmentKm2);
  if (per == DailyRequest::Per::Year) return AppendSpan(choice, made.year, text);
  for (const DischargeSpan& month : made.months) AppendSpan(choice, month, text);
}

QByteArray HeadingOf(const DailyRequest& request) {
  if (request.per != DailyRequest::Per::Day) {
    return "station,water_year,from,to,days,days_kept,days_partial,mean_m3s,max_m3s,max_time,min_m3s,"
           "min_time,volume_hm3,runoff_mm,specific_lskm2,discharge_flag\n";
  }
  const QByteArray levels =
      "station,water_year,date,max_time,max_cm,min_time,min_cm,mean_cm,readings,weighted_sum,last_minute";
  return levels +
         (request.curve.MayBe() ? ",max_m3s,min_m3s,mean_m3s,covered_percent,discharge_flag\n" : "\n");
}

/// What one station's water year comes to.
struct DailyYear {
  QByteArray text;
  std::vector<QString> complaints;
  int exit = kBatchDone;
  bool loaded = false;
};

DailyYear MakeDailyYear(const DailyRequest& request, const StationYear& choice) {
  DailyYear made;
  const Teller tell = [&made](const QString& text) { made.complaints.push_back(text); };
  const auto fail = [&](const Error& error) {
    tell(error.English());
    made.exit = kBatchFailed;
  };
  auto loaded = LoadStationYear(request.folder, choice, {}, tell);
  if (!loaded) {
    fail(loaded.Failure());
    return made;
  }
  made.exit = ExitOf(*loaded);
  made.loaded = true;
  const auto used = CurveFor(request.curve, choice.station);
  if (used) loaded->series.SetCurve(*used);
  if (!used) fail(used.Failure());
  const LevelTable table = ComputeLevelTable(loaded->series, choice.year.number, request.mode, {}, false);
  if (request.per == DailyRequest::Per::Day) {
    AppendDays(choice.station.Number(), table, request.curve.MayBe(), made.text);
  } else {
    const auto facts = FactsFor(request.curve.registerPath, choice.station);
    if (!facts) fail(facts.Failure());
    const auto known = facts ? facts->catchmentKm2 : std::nullopt;
    AppendSpans(choice, table, request.catchmentKm2 ? request.catchmentKm2 : known, request.per, made.text);
  }
  return made;
}

/// Adds the years to the text, complaints going out in the same order. loaded: whether there was any.
DailyYear MakeDailyYears(const DailyRequest& request, const ChosenYears& chosen, int jobs) {
  DailyYear all;
  all.exit = chosen.exit;
  OrderedWork<DailyYear> work(chosen.years.size(), jobs,
                              [&](std::size_t i) { return MakeDailyYear(request, chosen.years[i]); });
  for (const StationYear& choice : chosen.years) {
    ShowProgressLine(QStringLiteral("%1 %2").arg(choice.station.Text()).arg(choice.year.number));
    const DailyYear made = work.Next();
    for (const QString& complaint : made.complaints) Complain(complaint);
    all.text += made.text;
    all.exit = std::max(all.exit, made.exit);
    all.loaded = all.loaded || made.loaded;
  }
  EndProgressLine();
  return all;
}

/// What is wrong with --per and --catchment; empty when they are right.
QString TakePer(const QCommandLineParser& parser, DailyRequest& request) {
  const QString per = parser.value(QStringLiteral("per"));
  if (per != QLatin1String("day") && per != QLatin1String("month") && per != QLatin1String("year"))
    return QStringLiteral("--per is day, month or year");
  if (per == QLatin1String("month")) request.per = DailyRequest::Per::Month;
  if (per == QLatin1String("year")) request.per = DailyRequest::Per::Year;
  if (request.per != DailyRequest::Per::Day && !request.curve.MayBe())
    return QStringLiteral("--per month and year need --curve or --register");
  if (!parser.isSet(QStringLiteral("catchment"))) return {};
  request.catchmentKm2 = ReadWholeNumber(parser.value(QStringLiteral("catchment")));
  if (!request.catchmentKm2 || *request.catchmentKm2 <= 0)
    return QStringLiteral("--catchment: expected km2 above 0");
  return request.per == DailyRequest::Per::Day ? QStringLiteral("--catchment goes with --per month or year")
                                               : QString();
}

}  // namespace

int RunDailyVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Writes what the daily sheet of a level table holds (CSV)."));
  AddStationOptions(parser, true);
  parser.addOption(ExtremesOption());
  parser.addOption(CurveOption());
  parser.addOption({QStringLiteral("register"),
                    QStringLiteral("Station register with the stations' rating curves and catchment areas."),
                    QStringLiteral("FILE")});
  parser.addOption({QStringLiteral("per"),
                    QStringLiteral("day (default); month or year: what the discharges of the days come to."),
                    QStringLiteral("day|month|year"), QStringLiteral("day")});
  parser.addOption(
      {QStringLiteral("catchment"),
       QStringLiteral("Catchment area, for runoff depth and specific discharge (that of the register)."),
       QStringLiteral("KM2")});
  parser.addOption(JobsOption());
  parser.addOption({QStringLiteral("out"), QStringLiteral("Writes to this file instead of standard output."),
                    QStringLiteral("FILE")});
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  if (const QString wrong = WrongChoiceOrExtremes(parser); !wrong.isEmpty())
    return WrongUse(QStringLiteral("daily: ") + wrong);
  DailyRequest request;
  request.curve = CurveChoiceOf(parser);
  if (const QString wrong = TakePer(parser, request); !wrong.isEmpty())
    return WrongUse(QStringLiteral("daily: ") + wrong);
  const auto jobs = ReadJobs(parser);
  if (!jobs) return WrongUse(QStringLiteral("daily: ") + jobs.Failure().English());
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return Fail(folder.Failure());
  const auto chosen = ChooseStationYears(parser, *folder, *jobs);
  if (!chosen) return Fail(chosen.Failure());

  request.folder = *folder;
  request.mode = ExtremeModeOf(parser.value(QStringLiteral("extremes")));
  const DailyYear all = MakeDailyYears(request, *chosen, *jobs);
  // Headings over nothing would take the place of an older file's figures.
  if (!all.loaded && all.exit != kBatchDone && parser.isSet(QStringLiteral("out"))) return all.exit;
  Output output(parser.value(QStringLiteral("out")));
  output.Text() = HeadingOf(request);
  output.Text() += all.text;
  if (const Status written = output.Finish(); !written) return Fail(written.Failure());
  return all.exit;
}

}  // namespace vesk
