// Graphs of discharge: hydrographs, level and discharge on two axes, duration curves, years over one another.
// One drawing for the screen, paper and files.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

#include "platform/result.h"
#include "ratings/daily_mean.h"
#include "review/station_series.h"
#include "shell/language.h"

namespace vesk {

enum class FlowKind {
  Level,      ///< hydrograph of levels, cm
  Discharge,  ///< hydrograph of discharges, m3/s
  Both,       ///< levels on the left axis, discharges on the right one
  Duration,   ///< daily means over the percentage of days on which they are reached or exceeded
};

/// "level", "discharge", "both", "duration"; nothing for any other text.
std::optional<FlowKind> ReadFlowKind(QStringView text);

/// A water year of a station. series: with its rating curve, when it has one.
struct FlowYear {
  int waterYear = 0;
  StationSeries series;
  std::vector<DailyMean> days;
};

struct FlowPoint {
  double x = 0;          ///< minutes of the year, or per cent
  double y = 0;          ///< cm or m3/s
  bool flagged = false;  ///< extrapolated, or of a part of a day: drawn dashed
  bool joined = false;   ///< by a line to the point before it
};

struct FlowLine {
  QString name;  ///< in the legend
  QRgb colour = 0;
  bool onRight = false;  ///< its values stand on the right axis
  bool isLevel = false;  ///< cm, else m3/s
  int waterYear = 0;
  std::vector<FlowPoint> points;
};

struct FlowPlot {
  FlowKind kind = FlowKind::Discharge;
  QString title;
  QString leftCaption, rightCaption, belowCaption;
  std::vector<FlowLine> lines;
  QStringList notes;         ///< what the picture leaves out, each drawn below it
  bool logarithmic = false;  ///< values; those that are not above 0 have no place then
  bool aligned = false;      ///< years over one another: x counts in a year of 366 days, 29 February included
  double low = 0, high = 0;  ///< of x, what is shown

  [[nodiscard]] bool Percent() const { return kind == FlowKind::Duration; }
  [[nodiscard]] bool Empty() const;
};

/// What a graph is to be of.
struct FlowRequest {
  FlowKind kind = FlowKind::Discharge;
  QString station, name;
  bool logarithmic = false;
};

/// years: one or more, each once. A duration curve is of discharges when there are any, else of levels.
FlowPlot MakeFlowPlot(const FlowRequest& request, const std::vector<FlowYear>& years,
                      const Language& language);

/// A time of that water year as x, and back; on aligned plots 29 February keeps its place in every year.
double FlowXOf(const FlowPlot& plot, int waterYear, DateTime time);
DateTime FlowTimeOf(const FlowPlot& plot, int waterYear, double x);

/// Where values lie in a picture of that size.
class FlowScales {
 public:
  FlowScales(const FlowPlot& plot, const QRectF& all, const QFontMetricsF& letters);
  [[nodiscard]] const QRectF& Field() const { return field_; }
  [[nodiscard]] std::optional<QPointF> Place(const FlowLine& line, const FlowPoint& point) const;
  [[nodiscard]] double XAt(double left) const;
  struct Span {
    double low = 0, high = 1;  ///< as scaled
    bool used = false;
  };
  [[nodiscard]] const Span& Left() const { return left_; }
  [[nodiscard]] const Span& Right() const { return right_; }

 private:
  QRectF field_;
  double low_, high_;
  bool logarithmic_;
  Span left_, right_;
};

void DrawFlowPlot(QPainter& painter, const QRectF& all, const FlowPlot& plot);

/// A point of a line, by their places.
struct FlowPlace {
  std::size_t line = 0, point = 0;
};
/// The point nearest to a place of the picture, within reach.
std::optional<FlowPlace> FlowPointNear(const FlowPlot& plot, const FlowScales& scales, const QPointF& place);
/// "2023: 05/10/2022 12:00  12.3 m3/s *".
QString FlowPointText(const FlowPlot& plot, const FlowPlace& place);

/// Writes .png, .pdf, .svg (the picture) or .csv (its points), whole or not at all. size: units of 1/96 inch;
/// dotsPerInch: of a .png.
Status WriteFlowPlot(const QString& path, const FlowPlot& plot, QSize size, int dotsPerInch = 96);

}  // namespace vesk
