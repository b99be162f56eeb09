// The readings of one station, ready to be drawn and searched: any page of them is found by binary search.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "graphs/graph_points.h"

namespace vesk {

class GraphSeries {
 public:
  GraphSeries() = default;
  /// points in record order; extremes are left out unless withExtremes.
  GraphSeries(std::vector<GraphPoint> points, bool withExtremes);

  [[nodiscard]] const std::vector<GraphPoint>& Points() const { return points_; }
  [[nodiscard]] bool Empty() const { return points_.empty(); }

  /// Records that a page from startMinutes to endMinutes looks at, in record order: from the first one that
  /// is not before the page up to the first one behind it, or to the first negative level. Records before the
  /// page may still lie between, where read-outs overlap; the caller passes over them.
  [[nodiscard]] std::span<const GraphPoint> OnPage(int startMinutes, int endMinutes) const;
  /// The negative level that ends the series on that page.
  [[nodiscard]] std::optional<GraphPoint> EndedByNegative(int startMinutes, int endMinutes) const;

  /// The records that OnPage gives, and the page: which readings are drawn on it.
  struct PageRange {
    std::size_t first = 0, last = 0;  ///< records, the last one not included
    int startMinutes = 0, endMinutes = 0;
    bool endsNegative = false;
  };
  [[nodiscard]] PageRange RangeOf(int startMinutes, int endMinutes) const;

  /// Drawable readings (no negative level) in time order: how the read-out walks.
  [[nodiscard]] int ReadableCount() const { return static_cast<int>(byTime_.size()); }
  /// position: 0 to ReadableCount() - 1.
  [[nodiscard]] const GraphPoint& Readable(int position) const;
  /// Position of the first reading that is not before that time; ReadableCount() when there is none.
  [[nodiscard]] int ReadableFrom(int minutes) const;
  /// Whether the page draws that reading: behind a negative level, or where a later read-out lies before an
  /// earlier one, it does not.
  [[nodiscard]] bool Drawn(int position, const PageRange& page) const;

 private:
  void MergeByTime(std::vector<std::uint32_t> ordinary, std::vector<std::uint32_t> extremes);

  std::vector<GraphPoint> points_;
  std::vector<std::int32_t> latestSoFar_;  ///< per record: the latest time up to it, so that it only grows
  std::vector<std::uint32_t> negatives_;   ///< records with a negative level
  std::vector<std::uint32_t> byTime_;
};

}  // namespace vesk
