// The readings of a loaded series as the review's hydrograph draws them: in the order of their times, found
// by time and by row without a search through all of them.
#pragma once

#include <span>
#include <vector>

#include "graphs/graph_points.h"
#include "review/station_series.h"

namespace vesk {

/// Minutes of a graph's time (GraphTime).
struct MinuteSpan {
  double start = 0, end = 0;

  [[nodiscard]] double Length() const { return end - start; }
  bool operator==(const MinuteSpan&) const = default;
};

class ReviewPoints {
 public:
  ReviewPoints() = default;
  explicit ReviewPoints(const StationSeries& series);

  [[nodiscard]] bool Empty() const { return points_.empty(); }
  /// Ordinary readings, levels as corrected.
  [[nodiscard]] const std::vector<GraphPoint>& All() const { return points_; }
  /// Those of a span and the one beyond on either side, to which its lines run.
  [[nodiscard]] std::span<const GraphPoint> In(const MinuteSpan& span) const;
  /// Corrected readings: as they are, and with their raw levels; each raw level with the readings beside it,
  /// so that the raw line leaves and meets the corrected one. In the order of their times.
  [[nodiscard]] const std::vector<GraphPoint>& Corrected() const { return corrected_; }
  [[nodiscard]] const std::vector<std::vector<GraphPoint>>& RawLines() const { return rawLines_; }

  /// First to last reading; a day around a single one.
  [[nodiscard]] MinuteSpan Whole() const;
  /// Levels of the readings in a span; the start values when there is none.
  [[nodiscard]] LevelExtent LevelsIn(const MinuteSpan& span) const;
  /// Place in All() of the reading nearest to a time; All() must not be empty.
  [[nodiscard]] std::size_t Nearest(double minutes) const;
  /// Place in All() of a row, or of the ordinary reading before it; All() must not be empty.
  [[nodiscard]] std::size_t PlaceOfRow(int row) const;
  /// The readings of rows, both ends included, in the order of their times.
  [[nodiscard]] std::vector<GraphPoint> OfRows(int first, int last) const;
  /// Lowest and highest row of the readings in a span; 0 and 0 when there is none.
  [[nodiscard]] std::pair<int, int> RowsIn(const MinuteSpan& span) const;

  /// Graph minutes of a time, and the time of minutes.
  [[nodiscard]] double MinutesOf(DateTime time) const;
  [[nodiscard]] DateTime TimeOf(double minutes) const;
  [[nodiscard]] Day FirstDay() const { return firstDay_; }

 private:
  void TakeCorrections(const StationSeries& series);
  [[nodiscard]] std::pair<std::size_t, std::size_t> PlacesIn(const MinuteSpan& span) const;

  Day firstDay_{};
  std::vector<GraphPoint> points_;
  bool rowsAscend_ = true;          ///< the rows are in the order of their times
  std::vector<std::size_t> byRow_;  ///< places in points_, else
  std::vector<GraphPoint> corrected_;
  std::vector<std::vector<GraphPoint>> rawLines_;
};

/// A span zoomed about a time that stays where it is, moved, or kept within another one.
MinuteSpan Zoomed(const MinuteSpan& span, double about, double factor, const MinuteSpan& whole);
MinuteSpan Within(MinuteSpan span, const MinuteSpan& whole);

}  // namespace vesk
