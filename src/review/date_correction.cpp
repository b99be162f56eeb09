#include "review/date_correction.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace vesk {
namespace {

using std::chrono::floor;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr double kDayMaximumStart = 0;
constexpr double kDayMinimumStart = 9999;
constexpr std::uint8_t kInsertedFile = 1;  // inserted extremes are labelled "01-"

/// A row on its way through the correction: what moves with its reading.
struct CarriedRow {
  Reading reading;
  RowMark mark;
  QString discharge;
  int rawRow = 0;
};

void SetTime(Reading& reading, DateTime time) {
  reading.day = floor<std::chrono::days>(time);
  reading.minuteOfDay = static_cast<std::int16_t>((time - reading.day).count());
}

/// All rows with their new times, in the order of those times; rows of one minute keep their order.
std::vector<CarriedRow> RetimedRows(const ReviewGrid& grid, const ReadingSpan& span, DateTime target) {
  std::vector<CarriedRow> rows;
  rows.reserve(static_cast<std::size_t>(grid.ReadingCount()));
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    CarriedRow carried{grid.At(row), grid.Mark(row), grid.Discharge(row), row};
    SetTime(carried.reading, RetimedReading(carried.reading.Time(), span, target));
    // A changed level stays marked: operators go from change to change in a re-timed grid, too.
    if (carried.mark.shade != RowShade::Changed) carried.mark.shade = RowShade::Corrected;
    rows.push_back(std::move(carried));
  }
  std::stable_sort(rows.begin(), rows.end(), [](const CarriedRow& a, const CarriedRow& b) {
    return a.reading.Time() < b.reading.Time();
  });
  return rows;
}

/// Greatest and least level of the day that is being walked through.
class DayExtremes {
 public:
  void Take(const Reading& reading) {
    if (empty_) maximum_.minuteOfDay = minimum_.minuteOfDay = reading.minuteOfDay;
    empty_ = false;
    if (reading.levelCm > maximum_.levelCm) Set(maximum_, reading);
    if (reading.levelCm < minimum_.levelCm) Set(minimum_, reading);
  }

  /// The maximum and the minimum row of a day.
  [[nodiscard]] std::array<Reading, 2> Rows(Day day) const {
    std::array<Reading, 2> rows = {maximum_, minimum_};
    rows[0].kind = ReadingKind::Maximum;
    rows[1].kind = ReadingKind::Minimum;
    for (Reading& row : rows) {
      row.day = day;
      row.sourceFile = kInsertedFile;
    }
    return rows;
  }

 private:
  static void Set(Reading& extreme, const Reading& reading) {
    extreme.levelCm = reading.levelCm;
    extreme.minuteOfDay = reading.minuteOfDay;
  }

  Reading maximum_{.levelCm = kDayMaximumStart};
  Reading minimum_{.levelCm = kDayMinimumStart};
  bool empty_ = true;
};

/// A computed extreme, or what the operator put in its place.
CarriedRow ExtremeRow(const Reading& computed, const ExtremeEdits& edits) {
  CarriedRow row{
      .reading = computed,
      .mark = {.rawCm = computed.levelCm, .baselineCm = computed.levelCm, .shade = RowShade::Corrected},
      .discharge = {}};
  const auto edit = edits.find({computed.day, computed.kind});
  if (edit == edits.end()) return row;
  row.reading.levelCm = edit->second.levelCm;
  row.reading.minuteOfDay = static_cast<std::int16_t>(edit->second.minuteOfDay);
  row.mark = edit->second.mark;
  row.discharge = edit->second.discharge;
  return row;
}

/// The rows of the rebuilt grid: readings, with a pair of extremes behind every day that another one follows.
std::vector<CarriedRow> WithDailyExtremes(std::vector<CarriedRow> rows, const ExtremeEdits& edits) {
  std::vector<CarriedRow> rebuilt;
  if (rows.empty()) return rebuilt;
  rebuilt.reserve(rows.size());
  DayExtremes extremes;
  Day previousDay = rows.front().reading.day;
  for (CarriedRow& row : rows) {
    if (row.reading.day != previousDay) {
      for (const Reading& extreme : extremes.Rows(previousDay)) rebuilt.push_back(ExtremeRow(extreme, edits));
      extremes = {};
    }
    previousDay = row.reading.day;
    extremes.Take(row.reading);
    if (row.reading.kind == ReadingKind::Ordinary) rebuilt.push_back(std::move(row));
  }
  return rebuilt;
}

RetimedView ViewOf(const std::vector<CarriedRow>& rows) {
  RetimedView view;
  std::vector<Reading> readings;
  readings.reserve(rows.size());
  view.rawRows.reserve(rows.size());
  for (const CarriedRow& row : rows) {
    readings.push_back(row.reading);
    view.rawRows.push_back(row.rawRow);
  }
  view.grid.Assign(std::move(readings));
  int number = 0;
  for (const CarriedRow& row : rows) {
    view.grid.SetMark(++number, row.mark);
    if (!row.discharge.isEmpty()) view.grid.SetDischarge(number, row.discharge);
  }
  return view;
}

}  // namespace

std::optional<ReadingSpan> SpanOf(const ReviewGrid& grid) {
  const auto ordinary = [](const Reading& reading) { return reading.kind == ReadingKind::Ordinary; };
  const std::vector<Reading>& readings = grid.Readings();
  const auto first = std::find_if(readings.begin(), readings.end(), ordinary);
  if (first == readings.end()) return std::nullopt;
  const auto last = std::find_if(readings.rbegin(), readings.rend(), ordinary);
  return ReadingSpan{first->Time(), last->Time()};
}

DateTime RetimedReading(DateTime time, const ReadingSpan& span, DateTime target) {
  const auto from = static_cast<double>((time - span.first).count());
  const auto length = static_cast<double>((span.last - span.first).count());
  const auto trueLength = static_cast<double>((target - span.first).count());
  // Exact to the second, the way a clock shows it: the seconds are rounded, the minutes are not.
  return span.first + floor<minutes>(seconds(std::llround(from * trueLength / length * 60)));
}

Result<DateTime> ReadCorrectionTarget(const QString& text, const ReviewGrid& raw) {
  const Message what = Wording{u"Tarihler düzeltilmedi", u"The dates were not corrected"};
  const auto refuse = [&what](const Message& reason) { return Error{what, {}, reason}; };
  const auto span = SpanOf(raw);
  if (!span) return refuse(Wording{u"yüklenmiş kayıt yok", u"no readings are loaded"});
  const QString trimmed = text.trimmed();
  const auto target = ReadDateTime(trimmed);
  if (!target || !trimmed.contains(QLatin1Char(':'))) {
    return refuse(Wording{u"son verinin gerçek zamanı gg/aa/yyyy ss:dd biçiminde yazılmalıdır",
                          u"the true time of the last reading is expected as dd/mm/yyyy hh:mm"});
  }
  if (span->last <= span->first) {
    return refuse(
        Wording{u"son kayıt ilk kayıttan sonra değil", u"the last reading does not lie after the first one"});
  }
  if (*target <= span->first) {
    return refuse(
        Wording{u"son verinin gerçek zamanı (gg/aa/yyyy ss:dd) ilk veriden sonra olmalıdır",
                u"the true time of the last reading (dd/mm/yyyy hh:mm) must lie after the first reading"});
  }
  return *target;
}

RetimedView RetimeReadings(const ReviewGrid& raw, DateTime target, const ExtremeEdits& edits) {
  const auto span = SpanOf(raw);
  if (!span || span->first == span->last) return {};
  return ViewOf(WithDailyExtremes(RetimedRows(raw, *span, target), edits));
}

}  // namespace vesk
