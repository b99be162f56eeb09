// Where a reading lies on a graph page: the time coordinate, the page's scales and their ticks. Pure
// geometry.
#pragma once

#include <QSizeF>

#include <vector>

#include "datafiles/reading.h"

namespace vesk {

/// Time coordinate t of a graph: a day is 14.4, an hour 0.6, a minute 0.01; 00:00 of the water year's first
/// day is 14.4.
inline constexpr double kDayUnits = 14.4;
inline constexpr double kHourUnits = 0.6;
inline constexpr double kMinuteUnits = 0.01;
inline constexpr int kGapMinutes = 3600;  ///< readings further apart (60 hours) are not joined

/// Margins around the plot, in page units of 1/96 inch.
inline constexpr double kLeftMargin = 45;
inline constexpr double kRightMargin = 20;
inline constexpr double kTopMargin = 20;
inline constexpr double kBottomMargin = 95;

/// t in whole minutes (t x 100), exact. firstDay: 1 October of the water year; a reading before it counts
/// below 1440.
int GraphMinutes(Day firstDay, DateTime time);
double TimeCoordinate(Day firstDay, DateTime time);
/// The minute that holds t; the exact inverse for a t that came from a minute.
DateTime TimeOfCoordinate(Day firstDay, double t);

/// Step and top of the level axis for a page maximum: at most 15 steps of 10 x {1, 2.5, 5, 10} x {1, 10, 100}
/// cm.
struct LevelAxis {
  double stepCm = 10;
  double topCm = 10;
};
LevelAxis LevelAxisFor(double maximumCm);
/// Top of the axis of a page with that maximum, cm; a maximum out of this world is cut.
double TopOfPage(double maximumCm);

/// Room around a plot, page units.
struct PlotMargins {
  double left = kLeftMargin, right = kRightMargin, top = kTopMargin, bottom = kBottomMargin;
};

/// World window of a page.
struct PageScale {
  double width = 0, height = 0;    ///< page units of 1/96 inch
  double startT = 0, endT = 0;     ///< time coordinates of the plot's left and right edge
  double bottomCm = 0, topCm = 0;  ///< levels of the plot's lower and upper edge
  double stepCm = 10;              ///< distance of the level ticks
  double xMin = 0, xMax = 0;       ///< time coordinates of the page's edges
  double yMin = 0, yMax = 0;       ///< levels of the page's edges, cm
  PlotMargins margins = {};

  [[nodiscard]] double PlotLeft() const { return margins.left; }
  [[nodiscard]] double PlotRight() const { return width - margins.right; }
  [[nodiscard]] double PlotTop() const { return margins.top; }
  [[nodiscard]] double PlotBottom() const { return height - margins.bottom; }
};

/// size: page units; a page smaller than its margins counts as one unit of plot. endT is after startT.
PageScale MakePageScale(QSizeF size, double startT, double endT, double maximumCm);

/// The same for a plot of those margins whose level axis holds lowestCm and highestCm and begins and ends at
/// a tick. As many ticks as stand leastTickDistance (page units) apart.
PageScale MakeFittedScale(QSizeF size, const PlotMargins& margins, double startT, double endT,
                          const LevelExtent& levels, double leastTickDistance);

double XOfTime(const PageScale& scale, double t);
double YOfLevel(const PageScale& scale, double levelCm);
double TimeOfX(const PageScale& scale, double x);
double LevelOfY(const PageScale& scale, double y);

/// Levels of the axis ticks, bottom to top, cm.
std::vector<double> LevelTicks(const PageScale& scale);

/// Days between labelled days: 1, 5, 10, 15 or 30, as far as the page is wide enough for their dates.
int DayInterval(const PageScale& scale);

/// Days that carry a tick and a date, within the page. February counts 28 days, as on the offices' printed
/// graphs.
std::vector<Day> DayTicks(const PageScale& scale, Day firstDay);

/// Times of day between the days that carry a tick and a time of their own: none unless there is room for
/// them, so that a page of a few hours has a time scale too. 00:00 of a 29 February is among them, to carry
/// the date that DayTicks does not give: its hours would stand behind the date of the 28th otherwise.
std::vector<DateTime> ClockTicks(const PageScale& scale, Day firstDay);

}  // namespace vesk
