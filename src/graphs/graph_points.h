// Readings as points of a graph, from the review grid or from a graph data file.
#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <optional>

#include "datafiles/reading.h"
#include "review/review_grid.h"

namespace vesk {

/// One reading as a graph takes it.
struct GraphPoint {
  int dayNumber = 0;  ///< days from the water year's first day, that day = 1
  int hour = 0;       ///< 0 to 23
  int minute = 0;     ///< 0 to 59
  ReadingKind kind = ReadingKind::Ordinary;
  double levelCm = 0;
  Day date{};

  /// t x 100, whole minutes: 1440 is 00:00 of the water year's first day. A date centuries away stays in
  /// range.
  [[nodiscard]] int Minutes() const {
    return std::clamp(dayNumber, -500000, 500000) * 1440 + hour * 60 + minute;
  }
  /// The horizontal coordinate: a day is 14.4, an hour 0.6, a minute 0.01.
  [[nodiscard]] double X() const { return dayNumber * 14.4 + hour * 0.6 + minute * 0.01; }
};

/// Point of a grid row (from 1); firstDay is the first day of the water year drawn. Nothing for the spare row
/// and beyond: the rows are exhausted.
std::optional<GraphPoint> LoadGridPoint(const ReviewGrid& grid, int row, Day firstDay);

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
