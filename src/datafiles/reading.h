// One reading of a logger, decoded, as the rest of the system sees it.
#pragma once

#include <chrono>
#include <cstdint>

namespace vesk {

using Day = std::chrono::sys_days;

/// A point in time, to the minute, without a time zone: loggers run on their station's own time.
using DateTime = std::chrono::sys_time<std::chrono::minutes>;

inline constexpr int kMinutesPerDay = 1440;
inline constexpr int kLastMinuteOfDay = 1439;

/// A clock of 24:00 is the last minute of its day.
constexpr int WithinDay(int clockMinute) {
  return clockMinute < kMinutesPerDay ? clockMinute : kLastMinuteOfDay;
}
/// Minute under which a logger's reading counts: its midnight, written 00:00 or 24:00, ends the day it is
/// dated.
constexpr int MinuteOfReading(int clockMinute) {
  return clockMinute == 0 ? kLastMinuteOfDay : WithinDay(clockMinute);
}

enum class ReadingKind : std::uint8_t { Ordinary, Maximum, Minimum };

struct Reading {
  double levelCm = 0;            ///< water level, centimetres (metres of the raw line x 100)
  std::int64_t levelByte = 0;    ///< 1-based byte position of the level field in its raw file
  Day day{};                     ///< date of the reading
  std::int16_t minuteOfDay = 0;  ///< 0 to 1439, as shown (MinuteOfReading)
  ReadingKind kind = ReadingKind::Ordinary;
  char flag = ' ';              ///< column 22 of the raw line, Windows-1254; blank when there is none
  std::uint8_t sourceFile = 1;  ///< 1 to 99: place of its raw file among the files to load from

  [[nodiscard]] DateTime Time() const { return DateTime(day) + std::chrono::minutes(minuteOfDay); }
};

/// Running level range, cm; the start values are those of an empty one.
struct LevelExtent {
  double highestCm = 0;
  double lowestCm = 9999999;

  void Widen(double levelCm) {
    if (lowestCm > levelCm) lowestCm = levelCm;
    if (highestCm < levelCm) highestCm = levelCm;
  }
};

}  // namespace vesk
