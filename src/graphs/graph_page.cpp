#include "graphs/graph_page.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
#include "graphs/graph_labels.h"
#include "graphs/graph_legend.h"
#include "graphs/graph_notes.h"
#include "graphs/graph_trace.h"

namespace vesk {
namespace {

constexpr double kTickLength = 10;
constexpr double kGridStrength =
    0.22;  // grid lines are the scale's colour thinned, to stand back behind the series
constexpr double kMarkWidth = 3;          // of extremes and of readings that join nothing
constexpr double kLeastDateSpacing = 10;  // upright digits of two dates side by side
constexpr double kTitleSize = 14;
constexpr double kLevelLabelWidth = 23;  // between the level caption and the ticks
constexpr double kCaptionY = 8;          // middle of the time caption, from the plot page's lower edge
constexpr double kNoteStep = 14;         // from note line to note line
constexpr double kNoteMargin = 6;
constexpr int kMostNoteLines = 6;

constexpr QRgb kMaximumColour = 0xFFFF0000;  // palette colour 12
constexpr QRgb kMinimumColour = 0xFF0000FF;  // palette colour 9

QRectF PlotRect(const PageScale& scale) {
  return {QPointF(scale.PlotLeft(), scale.PlotTop()), QPointF(scale.PlotRight(), scale.PlotBottom())};
}

// Mixed here instead of drawn half transparent, which the raster engine blends pixel by pixel.
QColor GridColour(const GraphStyle& style) {
  const auto mix = [](int scale, int paper) {
    return static_cast<int>(std::lround(kGridStrength * scale + (1 - kGridStrength) * paper));
  };
  return QColor(mix(style.scale.red(), style.background.red()),
                mix(style.scale.green(), style.background.green()),
                mix(style.scale.blue(), style.background.blue()));
}

// A tick outside the plot and a grid line through it.
void DrawScaleLine(QPainter& painter, const GraphStyle& style, const QLineF& tick, const QLineF& grid) {
  painter.setPen(QPen(GridColour(style), 1));
  painter.drawLine(grid);
  painter.setPen(QPen(style.scale, 1));
  painter.drawLine(tick);
}

void DrawLevelScale(QPainter& painter, const PageScale& scale, const GraphStyle& style) {
  for (const double level : LevelTicks(scale)) {
    const double y = YOfLevel(scale, level);
    DrawScaleLine(painter, style, {scale.PlotLeft() - kTickLength, y, scale.PlotLeft(), y},
                  {scale.PlotLeft(), y, scale.PlotRight(), y});
    const QString text = QString::number(static_cast<qint64>(std::llround(level)));
    DrawLabel(painter, {scale.PlotLeft() - kTickLength - 1, y}, text,
              FittingFont(text, kLabelSize, kLevelLabelWidth), LabelPlace::EndsAt);
  }
}

void DrawTimeTick(QPainter& painter, const PageScale& scale, const GraphStyle& style, double t,
                  const QString& text) {
  const double x = XOfTime(scale, t);
  DrawScaleLine(painter, style, {x, scale.PlotBottom(), x, scale.PlotBottom() + kTickLength},
                {x, scale.PlotTop(), x, scale.PlotBottom()});
  DrawVerticalLabel(painter, {x, scale.PlotBottom() + kTickLength + 2}, text, PageFont(kLabelSize),
                    LabelPlace::EndsAt);
}

void DrawTimeScale(QPainter& painter, const PageScale& scale, const GraphSheet& sheet) {
  const std::vector<Day> days = DayTicks(scale, sheet.firstDay);
  for (std::size_t i = 0; i < days.size(); ++i) {
    const double t = TimeCoordinate(sheet.firstDay, DateTime(days[i]));
    // The 25th and the end of February come close: the date of the month's last day has the place then.
    const bool room =
        i + 1 == days.size() ||
        XOfTime(scale, TimeCoordinate(sheet.firstDay, DateTime(days[i + 1]))) - XOfTime(scale, t) >=
            kLeastDateSpacing;
    DrawTimeTick(painter, scale, sheet.style, t, room ? DateText(days[i]) : QString());
  }
  for (const DateTime time : ClockTicks(scale, sheet.firstDay)) {
    const Day day = std::chrono::floor<std::chrono::days>(time);
    const bool midnight = time == DateTime(day);
    const QString text =
        midnight ? DateText(day) : ClockText(static_cast<int>((time - DateTime(day)).count()));
    DrawTimeTick(painter, scale, sheet.style, TimeCoordinate(sheet.firstDay, time), text);
  }
}

// Marks are squares cut at the frame: no ink outside, on devices that cannot clip as well.
void DrawMarks(QPainter& painter, const PageScale& scale, const std::vector<QPointF>& points, double width,
               const QColor& colour) {
  const QRectF plot = PlotRect(scale);
  QList<QRectF> squares;
  for (const QPointF& point : points) {
    const QRectF square =
        QRectF(point.x() - width / 2, point.y() - width / 2, width, width).intersected(plot);
    if (!square.isEmpty() && (squares.isEmpty() || squares.back() != square)) squares.append(square);
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawRects(squares);
  painter.setBrush(Qt::NoBrush);
}

std::vector<SeriesTrace> TraceAllSeries(const GraphSheet& sheet, const PageScale& scale,
                                        double columnsPerUnit) {
  std::vector<SeriesTrace> traces;
  for (const GraphSeries& series : sheet.series) traces.push_back(TraceSeries(series, scale, columnsPerUnit));
  return traces;
}

void DrawTrace(QPainter& painter, const PageScale& scale, const SeriesTrace& trace, const QColor& colour,
               double columnsPerUnit) {
  QPen pen(colour, 1);
  pen.setJoinStyle(Qt::RoundJoin);
  pen.setCapStyle(Qt::RoundCap);
  painter.setPen(pen);
  std::size_t points = 0;
  for (const std::vector<QPointF>& line : trace.lines) points += line.size();
  // Smooth where single readings can be told apart; a dense trace is columns of pixels and gains nothing.
  const double columns = (scale.PlotRight() - scale.PlotLeft()) * columnsPerUnit;
  painter.setRenderHint(QPainter::Antialiasing, static_cast<double>(points) < columns);
  for (const std::vector<QPointF>& line : trace.lines) {
    painter.drawPolyline(line.data(), static_cast<int>(line.size()));
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
  DrawMarks(painter, scale, trace.dots, kMarkWidth, colour);
  DrawMarks(painter, scale, trace.maxima, kMarkWidth, QColor(kMaximumColour));
  DrawMarks(painter, scale, trace.minima, kMarkWidth, QColor(kMinimumColour));
}

const QColor& ColourOfStation(const GraphStyle& style, std::size_t index) {
  return style.stations[index % style.stations.size()];
}

void DrawCaptions(QPainter& painter, const PageScale& scale, const GraphTexts& texts) {
  const double middleX = (scale.PlotLeft() + scale.PlotRight()) / 2;
  DrawLabel(painter, {scale.width / 2, kTopMargin / 2}, texts.title,
            FittingFont(texts.title, kTitleSize, scale.width - 10, true), LabelPlace::Centred);
  DrawLabel(painter, {middleX, scale.height - kCaptionY}, texts.timeCaption, PageFont(kLabelSize),
            LabelPlace::Centred);
  DrawVerticalLabel(painter, {6, (scale.PlotTop() + scale.PlotBottom()) / 2}, texts.levelCaption,
                    PageFont(kLabelSize), LabelPlace::Centred);
}

// Start and end below the plot's corners: a page of a few hours has no other date.
void DrawPeriod(QPainter& painter, const PageScale& scale, const GraphPage& page, const QString& caption) {
  const QString start = DateTimeText(page.start);
  const double captionWidth = QFontMetricsF(PageFont(kLabelSize)).horizontalAdvance(caption);
  const double room = (scale.PlotRight() - scale.PlotLeft() - captionWidth) / 2 - kNoteMargin;
  const QFont font = FittingFont(start, kLabelSize, room);
  const double y = scale.height - kCaptionY;
  DrawLabel(painter, {scale.PlotLeft(), y}, start, font, LabelPlace::StartsAt);
  DrawLabel(painter, {scale.PlotRight(), y}, DateTimeText(page.end), font, LabelPlace::EndsAt);
}

// In the middle of the empty plot, on paper free of grid lines.
void DrawBlankReason(QPainter& painter, const PageScale& scale, const GraphSheet& sheet,
                     const QString& reason) {
  const QFont font = PageFont(kTitleSize);
  const QFontMetricsF letters(font);
  double y = scale.PlotTop() + 0.3 * (scale.PlotBottom() - scale.PlotTop());
  for (const QString& line : reason.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const double room = scale.PlotRight() - scale.PlotLeft() - 2 * kNoteMargin;
    const QFont fitting = FittingFont(line, kTitleSize, room);
    const double width = QFontMetricsF(fitting).horizontalAdvance(line) + 2 * kNoteMargin;
    const QPointF middle((scale.PlotLeft() + scale.PlotRight()) / 2, y);
    painter.fillRect(QRectF(middle.x() - width / 2, y - letters.height() / 2, width, letters.height()),
                     sheet.style.background);
    DrawLabel(painter, middle, line, fitting, LabelPlace::Centred);
    y += letters.height() + 2;
  }
}

// Below everything else, on paper that the plot leaves to them.
void DrawNotes(QPainter& painter, const PageScale& scale, const QStringList& notes) {
  double y = scale.height + kNoteStep / 2;
  for (const QString& line : notes) {
    DrawLabel(painter, {kNoteMargin, y}, line, PageFont(kLabelSize), LabelPlace::StartsAt);
    y += kNoteStep;
  }
}

QStringList NoteLines(const PageNotes& notes, QSizeF size) {
  const double mostHeight = size.height() / 4;
  return WrappedNotes(notes.lines, size.width() - 2 * kNoteMargin,
                      std::min(kMostNoteLines, static_cast<int>(mostHeight / kNoteStep)));
}

PageScale ScaleAboveNotes(const GraphPage& page, const GraphSheet& sheet, QSizeF size, qsizetype noteLines) {
  const QSizeF plot(size.width(), size.height() - kNoteStep * static_cast<double>(noteLines));
  return MakePageScale(plot, TimeCoordinate(sheet.firstDay, page.start),
                       TimeCoordinate(sheet.firstDay, page.end), page.maximumCm);
}

}  // namespace

PageScale ScaleOfPage(const GraphPage& page, const GraphSheet& sheet, QSizeF size) {
  return ScaleAboveNotes(page, sheet, size, NoteLines(NotesOfPage(page, sheet), size).size());
}

void DrawGraphPage(QPainter& painter, QSizeF size, const GraphPage& page, const GraphSheet& sheet,
                   double columnsPerUnit) {
  const PageNotes notes = NotesOfPage(page, sheet);
  const QStringList noteLines = NoteLines(notes, size);
  const PageScale scale = ScaleAboveNotes(page, sheet, size, noteLines.size());
  painter.save();
  painter.fillRect(QRectF(QPointF(0, 0), size.expandedTo({scale.width, scale.height})),
                   sheet.style.background);
  DrawLevelScale(painter, scale, sheet.style);
  DrawTimeScale(painter, scale, sheet);
  painter.setPen(QPen(Qt::black, 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(PlotRect(scale));
  // Last of what lies in the plot: a level that runs along a grid line stays visible.
  const double columns =
      columnsPerUnit > 0 ? columnsPerUnit : std::max(1.0, std::abs(painter.deviceTransform().m11()));
  const std::vector<SeriesTrace> traces = TraceAllSeries(sheet, scale, columns);
  painter.save();
  painter.setClipRect(PlotRect(scale));
  for (std::size_t i = 0; i < traces.size(); ++i)
    DrawTrace(painter, scale, traces[i], ColourOfStation(sheet.style, i), columns);
  painter.restore();
  DrawCaptions(painter, scale, sheet.texts);
  DrawPeriod(painter, scale, page, sheet.texts.timeCaption);
  if (!notes.blank.isEmpty()) DrawBlankReason(painter, scale, sheet, notes.blank);
  if (!sheet.texts.legend.isEmpty()) DrawLegend(painter, scale, sheet, traces);
  DrawNotes(painter, scale, noteLines);
  painter.restore();
}

}  // namespace vesk
