#include "review/date_correction.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "datafiles/dates.h"

namespace vesk {
namespace {

using std::chrono::floor;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr double kDayMaximumStart = 0;
constexpr double kDayMinimumStart = 9999;

/// All raw rows with their new times, in the order of those times; rows of one minute keep their order.
std::vector<RetimedRow> RowsByNewTime(const RawRows& raw, const ReadingSpan& span, DateTime target) {
  std::vector<RetimedRow> rows;
  rows.reserve(raw.Readings().size());
  for (const Reading& reading : raw.Readings()) {
    rows.push_back({.time = RetimedReading(reading.Time(), span, target),
                    .rawRow = static_cast<int>(rows.size()) + 1,
                    .kind = reading.kind});
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const RetimedRow& a, const RetimedRow& b) { return a.time < b.time; });
  return rows;
}

/// Greatest and least level of the day that is being walked through.
class DayExtremes {
 public:
  void Take(DateTime time, double levelCm) {
    if (empty_) maximum_.time = minimum_.time = time;
    empty_ = false;
    if (levelCm > maximum_.computedCm) Set(maximum_, time, levelCm);
    if (levelCm < minimum_.computedCm) Set(minimum_, time, levelCm);
  }

  /// The maximum and the minimum row of the day.
  [[nodiscard]] std::array<RetimedRow, 2> Rows() const { return {maximum_, minimum_}; }

 private:
  static void Set(RetimedRow& extreme, DateTime time, double levelCm) {
    extreme.time = time;
    extreme.computedCm = levelCm;
  }

  RetimedRow maximum_{.computedCm = kDayMaximumStart, .kind = ReadingKind::Maximum};
  RetimedRow minimum_{.computedCm = kDayMinimumStart, .kind = ReadingKind::Minimum};
  bool empty_ = true;
};

Day DayOfRow(const RetimedRow& row) {
  return floor<std::chrono::days>(row.time);
}

Error Refused(const Message& reason) {
  return {Wording{u"Tarihler düzeltilmedi", u"The dates were not corrected"}, {}, reason};
}

}  // namespace

std::optional<ReadingSpan> SpanOf(const RawRows& raw) {
  const auto ordinary = [](const Reading& reading) { return reading.kind == ReadingKind::Ordinary; };
  const std::vector<Reading>& readings = raw.Readings();
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

Result<DateTime> CheckCorrectionTarget(DateTime target, const RawRows& raw) {
  const auto span = SpanOf(raw);
  if (!span) return Refused(Wording{u"yüklenmiş kayıt yok", u"no readings are loaded"});
  if (span->last <= span->first) {
    return Refused(
        Wording{u"son kayıt ilk kayıttan sonra değil", u"the last reading does not lie after the first one"});
  }
  if (target <= span->first) {
    return Refused(
        Wording{u"son verinin gerçek zamanı (gg/aa/yyyy ss:dd) ilk veriden sonra olmalıdır",
                u"the true time of the last reading (dd/mm/yyyy hh:mm) must lie after the first reading"});
  }
  return target;
}

Result<DateTime> ReadCorrectionTarget(const QString& text, const RawRows& raw) {
  const QString trimmed = text.trimmed();
  const auto target = trimmed.contains(QLatin1Char(':')) ? ReadDateTime(trimmed) : std::nullopt;
  if (!target && SpanOf(raw)) {
    return Refused(Wording{u"son verinin gerçek zamanı gg/aa/yyyy ss:dd biçiminde yazılmalıdır",
                           u"the true time of the last reading is expected as dd/mm/yyyy hh:mm"});
  }
  return CheckCorrectionTarget(target.value_or(DateTime{}), raw);
}

std::vector<RetimedRow> RetimeReadings(const RawRows& raw, DateTime target) {
  const auto span = SpanOf(raw);
  if (!span || span->first == span->last) return {};
  const std::vector<RetimedRow> byTime = RowsByNewTime(raw, *span, target);
  std::vector<RetimedRow> rows;
  rows.reserve(byTime.size());
  DayExtremes extremes;
  Day previousDay = DayOfRow(byTime.front());
  for (const RetimedRow& row : byTime) {
    if (DayOfRow(row) != previousDay) {
      for (const RetimedRow& extreme : extremes.Rows()) rows.push_back(extreme);
      extremes = {};
    }
    previousDay = DayOfRow(row);
    extremes.Take(row.time, raw.At(row.rawRow).levelCm);
    if (row.kind == ReadingKind::Ordinary) rows.push_back(row);
  }
  return rows;
}

}  // namespace vesk
