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

void AppendDays(const QString& stationNumber, const LevelTable& table, QByteArray& text) {
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
    csv.EndLine();
  }
}

/// What one station's water year comes to.
struct DailyYear {
  QByteArray text;
  std::vector<QString> complaints;
  int exit = kBatchDone;
  bool loaded = false;
};

DailyYear MakeDailyYear(const QString& folder, const StationYear& choice, ExtremeMode mode) {
  DailyYear made;
  const Teller tell = [&made](const QString& text) { made.complaints.push_back(text); };
  const auto loaded = LoadStationYear(folder, choice, {}, tell);
  if (!loaded) {
    tell(loaded.Failure().English());
    made.exit = kBatchFailed;
    return made;
  }
  made.exit = ExitOf(*loaded);
  made.loaded = true;
  AppendDays(choice.station.Number(), ComputeLevelTable(loaded->series, choice.year.number, mode, {}, false),
             made.text);
  return made;
}

/// Adds the years to the text, complaints going out in the same order. loaded: whether there was any.
DailyYear MakeDailyYears(const QString& folder, const ChosenYears& chosen, ExtremeMode mode, int jobs) {
  DailyYear all;
  all.exit = chosen.exit;
  OrderedWork<DailyYear> work(chosen.years.size(), jobs,
                              [&](std::size_t i) { return MakeDailyYear(folder, chosen.years[i], mode); });
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

}  // namespace

int RunDailyVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Writes what the daily sheet of a level table holds (CSV)."));
  AddStationOptions(parser, true);
  parser.addOption(ExtremesOption());
  parser.addOption(JobsOption());
  parser.addOption({QStringLiteral("out"), QStringLiteral("Writes to this file instead of standard output."),
                    QStringLiteral("FILE")});
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  if (const QString wrong = WrongChoiceOrExtremes(parser); !wrong.isEmpty())
    return WrongUse(QStringLiteral("daily: ") + wrong);
  const auto jobs = ReadJobs(parser);
  if (!jobs) return WrongUse(QStringLiteral("daily: ") + jobs.Failure().English());
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return Fail(folder.Failure());
  const auto chosen = ChooseStationYears(parser, *folder, *jobs);
  if (!chosen) return Fail(chosen.Failure());

  const ExtremeMode mode = ExtremeModeOf(parser.value(QStringLiteral("extremes")));
  const DailyYear all = MakeDailyYears(*folder, *chosen, mode, *jobs);
  // Headings over nothing would take the place of an older file's figures.
  if (!all.loaded && all.exit != kBatchDone && parser.isSet(QStringLiteral("out"))) return all.exit;
  Output output(parser.value(QStringLiteral("out")));
  output.Text() =
      "station,water_year,date,max_time,max_cm,min_time,min_cm,mean_cm,readings,weighted_sum,last_minute\n";
  output.Text() += all.text;
  if (const Status written = output.Finish(); !written) return Fail(written.Failure());
  return all.exit;
}

}  // namespace vesk
