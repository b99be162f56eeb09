// The pages that an operator makes of one graph: the whole period, zooms and date ranges.
#pragma once

#include <QImage>
#include <QString>
#include <QTemporaryDir>

#include <optional>
#include <vector>

#include "datafiles/reading.h"
#include "graphs/graph_sheet.h"

namespace vesk {

inline constexpr int kLastPageNumber = 10;

struct GraphPage {
  DateTime start{}, end{};
  double maximumCm = 0;  ///< decides the level axis
};

/// Page 0: the whole period of the sheet, with 1.1 times the highest level as its maximum.
GraphPage WholePeriodPage(const GraphSheet& sheet);

/// One corner of a zoom rectangle as the fields show it.
struct GraphCorner {
  DateTime time{};
  int levelCm = 0;  ///< integer part
};

/// Page of a zoom rectangle; the corners may come in any order.
GraphPage PageOfCorners(const GraphCorner& a, const GraphCorner& b);

/// "1.10", "5/3" or "5:11" read as a day of the water year: months 10 to 12 lie in the year before. The
/// separator is one of \ / . and :. Nothing when that is no day of the calendar.
std::optional<Day> ReadDayOfWaterYear(const QString& text, int waterYear);

/// Page from 00:00 of start to 23:59 of end.
GraphPage PageOfDates(Day start, Day end, double maximumCm);

/// Pages 0 to 10 and where the operator stands.
class PageTable {
 public:
  explicit PageTable(const GraphPage& first) : pages_{first} {}

  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] int LastNumber() const { return static_cast<int>(pages_.size()) - 1; }
  [[nodiscard]] const GraphPage& Current() const { return pages_[static_cast<std::size_t>(number_)]; }
  [[nodiscard]] const GraphPage& First() const { return pages_.front(); }
  [[nodiscard]] bool CanGoBack() const { return number_ > 0; }
  [[nodiscard]] bool CanGoOn() const { return number_ < LastNumber(); }

  /// Makes a page behind the current one and goes to it; pages that followed are gone. False when the table
  /// was full and the last page has been replaced instead.
  bool Add(const GraphPage& page);
  void GoFirst() { number_ = 0; }
  void GoBack() { number_ -= CanGoBack() ? 1 : 0; }
  void GoOn() { number_ += CanGoOn() ? 1 : 0; }

 private:
  std::vector<GraphPage> pages_;
  int number_ = 0;
};

/// Images of drawn pages, "picture0", "picture1" and so on, in a private folder that goes with this object.
class PageImages {
 public:
  void Save(int pageNumber, const QImage& image);
  /// Null when no image of that page, size and pixel ratio is there.
  [[nodiscard]] QImage Load(int pageNumber, QSize pixels, double pixelRatio) const;
  [[nodiscard]] QString Folder() const { return folder_.path(); }

 private:
  [[nodiscard]] QString PathOf(int pageNumber) const;
  QTemporaryDir folder_;
};

}  // namespace vesk
