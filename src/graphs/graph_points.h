// Readings as points of a graph, from a series or from a graph data file.
#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <cstdint>
#include <optional>

#include "datafiles/reading.h"
#include "review/station_series.h"

namespace vesk {

/// One reading as a graph takes it, in 16 bytes: a page walks over many of them.
struct GraphPoint {
  double levelCm = 0;
  std::int32_t minutes = 0;  ///< time: 1440 is 00:00 of the water year's first day
  /// Row of the series, or number of the record in its file; both count from 1, below 2^30.
  [[nodiscard]] int Row() const { return static_cast<int>(rowAndKind_ >> 2U); }
  [[nodiscard]] ReadingKind Kind() const { return static_cast<ReadingKind>(rowAndKind_ & 3U); }

  GraphPoint() = default;
  GraphPoint(double level, std::int32_t time, ReadingKind kind = ReadingKind::Ordinary, qint64 row = 0)
      : levelCm(level),
        minutes(time),
        rowAndKind_(static_cast<std::uint32_t>(row) << 2U | static_cast<std::uint32_t>(kind)) {}

  bool operator==(const GraphPoint&) const = default;

 private:
  std::uint32_t rowAndKind_ = 0;
};

/// Minutes of a graph's time: dayNumber counts the water year's first day as 1. A date centuries away stays
/// in range.
constexpr std::int32_t GraphTime(int dayNumber, int minuteOfDay) {
  return std::clamp(dayNumber, -500000, 500000) * kMinutesPerDay + minuteOfDay;
}

/// Point of a row as shown (from 1); firstDay is the first day of the water year drawn. Nothing for the spare
/// row and beyond: the rows are exhausted.
std::optional<GraphPoint> LoadGridPoint(const StationSeries& series, int row, Day firstDay);

enum class FilePointState {
  None,  ///< the record number is below 1
  Point,
  End,         ///< the record lies behind the end of the file
  Unreadable,  ///< the record's date is none or its level is cut: the file is damaged here
};

struct FilePoint {
  FilePointState state = FilePointState::None;
  GraphPoint point;
};

/// Point of record n (from 1) of a graph data file's bytes. previousKind is kept when the label names no
/// kind.
FilePoint LoadFilePoint(QByteArrayView content, qint64 n, Day firstDay, ReadingKind previousKind);

}  // namespace vesk
