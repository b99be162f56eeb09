// Everything that the pages of one graph share: the series, the texts and the colours.
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>
#include <vector>

#include "graphs/graph_files.h"
#include "graphs/graph_series.h"
#include "graphs/graph_station.h"
#include "review/station_series.h"
#include "shell/language.h"
#include "shell/options.h"

namespace vesk {

struct GraphStyle {
  QColor background;
  QColor scale;                                     ///< ticks and grid lines
  std::array<QColor, kMostGraphStations> stations;  ///< series colours
  bool withExtremes = true;                         ///< mark the logger's extremes
};

/// Colours and extreme marks of the options record (slots 1 to 7).
GraphStyle StyleOf(const Options& options);

/// Colour of a stored colour number: 0x00BBGGRR, or 0x80000000 + n for a system colour.
QColor ColourOf(qint32 number);

struct GraphTexts {
  QString title;
  QString timeCaption;
  QString levelCaption;
  QStringList legend;  ///< one entry a station; empty in a single-station graph
};

struct GraphSheet {
  int waterYear = 0;   ///< of the first station; dates without a year are read in it
  QString years;       ///< all water years as the title names them: "2011", "2011, 2012", "2009-2011"
  Day firstDay{};      ///< 1 October of that water year: where the time coordinate starts
  Day start{}, end{};  ///< first and last day of page 0
  GraphTexts texts;
  GraphStyle style;
  std::vector<GraphSeries> series;
  LevelExtent levels;        ///< of all series, extremes included; the highest is 0 when nothing is above it
  QStringList stationNames;  ///< beside the read-out, one a series
  QStringList notes;         ///< what the picture has to say: what the load misses, what could not be read
  Language language;         ///< of the notes
};

/// One station's grid (station mode "Tekli"). notes: of the load, drawn on every page.
GraphSheet MakeSingleSheet(const StationSeries& series, const GraphStation& station, const Options& options,
                           const Language& language, const QStringList& notes = {});

/// One series of a multiple-station graph that is at hand already.
struct GraphSource {
  QString station;  ///< station number as the legend shows it
  int waterYear = 0;
  StationSeries series;
};

/// Several stations from their grids, without files; sources: 1 to kMostGraphStations.
GraphSheet MakeMultipleSheet(const std::vector<GraphSource>& sources, const Options& options,
                             const Language& language, const QStringList& notes = {});

/// Several stations from graph data files (station mode "Çoklu"); a file that cannot be read is named in the
/// notes and left out.
GraphSheet ReadMultipleSheet(const std::vector<GraphFileEntry>& files, const Options& options,
                             const Language& language, const QStringList& notes = {});

}  // namespace vesk
