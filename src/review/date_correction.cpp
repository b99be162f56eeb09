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
    CarriedRow carried{grid.At(row), grid.Mark(row), grid.Discharge(row)};
    SetTime(carried.reading, RetimedReading(carried.reading.Time(), span, target));
    carried.mark.shade = RowShade::Corrected;
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

/// The rows of the rebuilt grid: readings, with a pair of extremes behind every day that another one follows.
std::vector<CarriedRow> WithDailyExtremes(std::vector<CarriedRow> rows) {
  std::vector<CarriedRow> rebuilt;
  rebuilt.reserve(rows.size());
  DayExtremes extremes;
  Day previousDay = rows.front().reading.day;
  for (CarriedRow& row : rows) {
    if (DayOf(row.reading.day) != DayOf(previousDay)) {
      for (const Reading& extreme : extremes.Rows(previousDay)) {
        rebuilt.push_back({extreme, {.baselineCm = extreme.levelCm, .shade = RowShade::Corrected}, {}});
      }
      extremes = {};
    }
    previousDay = row.reading.day;
    extremes.Take(row.reading);
    if (row.reading.kind == ReadingKind::Ordinary) rebuilt.push_back(std::move(row));
  }
  return rebuilt;
}

ReviewGrid GridOf(const std::vector<CarriedRow>& rows) {
  ReviewGrid grid;
  std::vector<Reading> readings;
  readings.reserve(rows.size());
  for (const CarriedRow& row : rows) readings.push_back(row.reading);
  grid.Assign(std::move(readings));
  int number = 0;
  for (const CarriedRow& row : rows) {
    ++number;
    grid.SetMark(number, row.mark);
    if (!row.discharge.isEmpty()) grid.SetDischarge(number, row.discharge);
  }
  return grid;
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

Result<DateTime> ReadCorrectionTarget(const QString& text, const ReviewGrid& grid) {
  const QString what = QStringLiteral("The dates were not corrected");
  const auto refuse = [&what](const QString& reason) { return Error{what, {}, reason}; };
  const auto span = SpanOf(grid);
  if (!span) return refuse(QStringLiteral("no readings are loaded"));
  const QString trimmed = text.trimmed();
  const auto target = ReadDateTime(trimmed);
  if (!target || !trimmed.contains(QLatin1Char(':'))) {
    return refuse(QStringLiteral("the true time of the last reading is expected as dd/mm/yyyy hh:mm"));
  }
  if (span->last <= span->first) {
    return refuse(QStringLiteral("the last reading does not lie after the first one"));
  }
  if (*target <= span->first) {
    return refuse(QStringLiteral(
        "the true time of the last reading (dd/mm/yyyy hh:mm) must lie after the first reading"));
  }
  return *target;
}

bool CorrectDates(ReviewGrid& grid, DateTime target) {
  const auto span = SpanOf(grid);
  if (!span || target == span->last) return false;
  grid = GridOf(WithDailyExtremes(RetimedRows(grid, *span, target)));
  return true;
}

}  // namespace vesk
