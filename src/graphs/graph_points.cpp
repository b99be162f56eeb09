#include "graphs/graph_points.h"

#include <charconv>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/fallback_calendar.h"
#include "datafiles/graph_file.h"
#include "datafiles/numbers.h"

namespace vesk {
namespace {

constexpr qsizetype kLevelWidth = 6;

// Two digits at the start or end of a clock field; anything else counts as 0.
int ClockPart(QByteArrayView text) {
  int value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return static_cast<int>(ParseNumber(QString::fromLatin1(text)));
    value = value * 10 + (c - '0');
  }
  return value;
}

double LevelOf(QByteArrayView text) {
  text = text.trimmed();
  double value = 0;
  const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
  if (error == std::errc() && end == text.end() && std::isfinite(value)) return value;
  return ParseNumber(QString::fromLatin1(text));
}

ReadingKind KindOf(QByteArrayView label, ReadingKind previous) {
  ReadingKind kind = previous;
  const std::string_view text(label.data(), static_cast<std::size_t>(label.size()));
  if (text.find("ort") != std::string_view::npos) kind = ReadingKind::Ordinary;
  if (text.find("Min") != std::string_view::npos) kind = ReadingKind::Minimum;
  if (text.find("Max") != std::string_view::npos) kind = ReadingKind::Maximum;
  return kind;
}

// Years up to 1900 step through the fallback calendar, which does not count the first day.
int FileDayNumber(Day firstDay, Day date) {
  if (YearOf(date) > kLastFallbackYear) return static_cast<int>((date - firstDay).count()) + 1;
  return DayCount(DateText(firstDay), DateText(date));
}

std::optional<Day> DateOf(QByteArrayView text) {
  if (text.size() != 10) return std::nullopt;
  return ReadDate(QString::fromLatin1(text));
}

}  // namespace

std::optional<GraphPoint> LoadGridPoint(const StationSeries& series, int row, Day firstDay) {
  if (!series.IsReading(row)) return std::nullopt;
  const Reading reading = series.At(row);
  const int dayNumber = static_cast<int>((reading.day - firstDay).count()) + 1;
  return GraphPoint(reading.levelCm, GraphTime(dayNumber, reading.minuteOfDay), reading.kind, row);
}

FilePoint LoadFilePoint(QByteArrayView content, qint64 n, Day firstDay, ReadingKind previousKind) {
  if (n <= 0) return {};
  const auto record = GraphRecordAt(content, n);
  if (!record) return {FilePointState::End, {}};
  const auto date = DateOf(record->date);
  if (!date || record->level.size() < kLevelWidth) return {FilePointState::Unreadable, {}};
  const int hour = ClockPart(record->clock.first(std::min<qsizetype>(2, record->clock.size())));
  const int minute = ClockPart(record->clock.last(std::min<qsizetype>(2, record->clock.size())));
  return {FilePointState::Point,
          GraphPoint(LevelOf(record->level), GraphTime(FileDayNumber(firstDay, *date), hour * 60 + minute),
                     KindOf(record->label, previousKind), n)};
}

}  // namespace vesk
