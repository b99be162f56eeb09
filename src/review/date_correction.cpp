#include "review/date_correction.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <vector>

#include "datafiles/dates.h"

namespace vesk {
namespace {

using std::chrono::floor;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr double kDayMaximumStart = 0;
constexpr double kDayMinimumStart = 9999;

constexpr QLatin1Char kPairMark(';');
constexpr QLatin1Char kTruthMark('=');

/// From the first reading to the last one, both included.
std::vector<ClockPair> PairsOf(const TrueTimes& times, const ReadingSpan& span) {
  std::vector<ClockPair> pairs;
  if (times.before.empty() || times.before.front().logger > span.first)
    pairs.push_back({span.first, span.first});
  pairs.insert(pairs.end(), times.before.begin(), times.before.end());
  pairs.push_back({span.last, times.last});
  return pairs;
}

/// Straight between the pairs beside it; what lies before the first or behind the last one goes on with them.
DateTime Retimed(DateTime time, const std::vector<ClockPair>& pairs) {
  auto later = std::ranges::upper_bound(pairs, time, {}, &ClockPair::logger);
  later = std::clamp(later, pairs.begin() + 1, pairs.end() - 1);
  const ClockPair& to = *later;
  const ClockPair& from = *std::prev(later);
  const auto since = static_cast<double>((time - from.logger).count());
  const auto length = static_cast<double>((to.logger - from.logger).count());
  const auto trueLength = static_cast<double>((to.truth - from.truth).count());
  // Exact to the second, the way a clock shows it: the seconds are rounded, the minutes are not.
  return from.truth + floor<minutes>(seconds(std::llround(since * trueLength / length * 60)));
}

/// All raw rows with their new times, in the order of those times; rows of one minute keep their order.
std::vector<RetimedRow> RowsByNewTime(const RawRows& raw, const ReadingSpan& span, const TrueTimes& target) {
  std::vector<RetimedRow> rows;
  rows.reserve(raw.Readings().size());
  const std::vector<ClockPair> pairs = PairsOf(target, span);
  for (const Reading& reading : raw.Readings()) {
    rows.push_back({.time = Retimed(reading.Time(), pairs),
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

QString TrueTimesText(const TrueTimes& times) {
  QString text = DateTimeText(times.last);
  for (const ClockPair& pair : times.before)
    text += kPairMark + DateTimeText(pair.logger) + kTruthMark + DateTimeText(pair.truth);
  return text;
}

std::optional<TrueTimes> ReadTrueTimes(const QString& text) {
  const QStringList parts = text.split(kPairMark);
  const auto last = ReadDateTime(parts.front());
  if (!last) return std::nullopt;
  TrueTimes times(*last);
  for (const QString& part : parts.mid(1)) {
    const auto logger = ReadDateTime(part.section(kTruthMark, 0, 0));
    const auto truth = ReadDateTime(part.section(kTruthMark, 1));
    if (!logger || !truth) return std::nullopt;
    times.before.push_back({*logger, *truth});
  }
  // A time that was cut off could be read as another one.
  return TrueTimesText(times) == text ? std::optional(times) : std::nullopt;
}

bool FitTogether(const TrueTimes& times, const ReadingSpan& span) {
  std::vector<ClockPair> pairs = PairsOf(times, span);
  const auto forward = [](const ClockPair& earlier, const ClockPair& later) {
    return earlier.logger < later.logger && earlier.truth < later.truth;
  };
  return pairs.front().logger == span.first &&
         std::ranges::adjacent_find(pairs, std::not_fn(forward)) == pairs.end();
}

DateTime RetimedReading(DateTime time, const ReadingSpan& span, const TrueTimes& target) {
  return Retimed(time, PairsOf(target, span));
}

Result<TrueTimes> CheckCorrectionTarget(const TrueTimes& target, const RawRows& raw) {
  const auto span = SpanOf(raw);
  if (!span) return Refused(Wording{u"yüklenmiş kayıt yok", u"no readings are loaded"});
  if (span->last <= span->first) {
    return Refused(
        Wording{u"son kayıt ilk kayıttan sonra değil", u"the last reading does not lie after the first one"});
  }
  if (target.before.empty() && target.last <= span->first) {
    return Refused(
        Wording{u"son verinin gerçek zamanı (gg/aa/yyyy ss:dd) ilk veriden sonra olmalıdır",
                u"the true time of the last reading (dd/mm/yyyy hh:mm) must lie after the first reading"});
  }
  if (!FitTogether(target, *span)) {
    return Refused(Wording{u"saat çiftleri artan sırada ve kayıtların zamanları arasında olmalıdır",
                           u"pairs of times must ascend, on both clocks, within the times of the readings"});
  }
  return target;
}

Result<TrueTimes> ReadCorrectionTarget(const QString& text, const RawRows& raw) {
  const QString trimmed = text.trimmed();
  const auto target = trimmed.contains(QLatin1Char(':')) ? ReadDateTime(trimmed) : std::nullopt;
  if (!target && SpanOf(raw)) {
    return Refused(Wording{u"son verinin gerçek zamanı gg/aa/yyyy ss:dd biçiminde yazılmalıdır",
                           u"the true time of the last reading is expected as dd/mm/yyyy hh:mm"});
  }
  return CheckCorrectionTarget(TrueTimes(target.value_or(DateTime{})), raw);
}

std::vector<RetimedRow> RetimeReadings(const RawRows& raw, const TrueTimes& target) {
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
