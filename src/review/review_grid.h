// The review grid: what its columns show of a series. Row 0 is the titles, rows count from 1, and one empty
// row stands behind the last reading.
#pragma once

#include <QString>

#include <optional>

#include "datafiles/reading.h"
#include "review/station_series.h"

namespace vesk {

/// Columns of the review grid, left to right.
enum class GridColumn : int { Date = 0, Time, Level, Discharge, Label, Code, Baseline };
inline constexpr int kGridColumns = 7;

/// Text of a cell; the titles for row 0, empty for the spare row and beyond.
QString CellText(const StationSeries& series, int row, GridColumn column);

/// Reads a level, cm, with point or comma. Nothing for what is no number, nor for one that a file could only
/// hold with an exponent: the next load would not read it.
std::optional<double> ReadLevel(QStringView text);

/// Widens the extent by every level of the series.
void LevelRange(const StationSeries& series, LevelExtent& extent);

}  // namespace vesk
