#include "graphs/graph_page.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "datafiles/helpers.h"
#include "graphs/graph_trace.h"

namespace vesk {
namespace {

constexpr double kTickLength = 10;
constexpr double kGridStrength =
    0.22;  // grid lines are the scale's colour thinned, to stand back behind the series
constexpr double kMarkWidth = 3;
constexpr double kLegendX = 45 + 650;
constexpr double kLegendY = 400;
constexpr double kLegendStep = 15;
constexpr double kLegendLine = 20;
constexpr double kLegendGap = 5;  // between line and text
constexpr double kLegendRim = 5;
constexpr double kLabelSize = 11;
constexpr double kLeastDateSpacing = 10;  // upright digits of two dates side by side
constexpr double kTitleSize = 14;
constexpr double kLevelLabelWidth = 23;  // between the level caption and the ticks

constexpr QRgb kMaximumColour = 0xFFFF0000;  // palette colour 12
constexpr QRgb kMinimumColour = 0xFF0000FF;  // palette colour 9

enum class Place { EndsAt, StartsAt, Centred };

// Sizes are whole page units, so glyphs come out alike on every device.
QFont PageFont(double size, bool bold = false) {
  QFont font(QStringLiteral("Arial"));
  font.setPixelSize(static_cast<int>(size));
  font.setBold(bold);
  return font;
}

// point: where the text ends, starts or is centred; the text's middle line runs through it.
void DrawLabel(QPainter& painter, QPointF point, const QString& text, const QFont& font, Place place) {
  const QFontMetricsF plain(font);
  const double width = plain.horizontalAdvance(text);
  double x = point.x();
  if (place == Place::EndsAt) x -= width;
  if (place == Place::Centred) x -= width / 2;
  painter.setFont(font);
  painter.setPen(Qt::black);
  painter.drawText(QPointF(x, point.y() + plain.capHeight() / 2), text);
}

// Upwards; point as for DrawLabel along the turned text.
void DrawVerticalLabel(QPainter& painter, QPointF point, const QString& text, const QFont& font,
                       Place place) {
  painter.save();
  painter.translate(point);
  painter.rotate(-90);
  DrawLabel(painter, {0, 0}, text, font, place);
  painter.restore();
}

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
    QFont font = PageFont(kLabelSize);
    const double width = QFontMetricsF(font).horizontalAdvance(text);
    if (width > kLevelLabelWidth) font = PageFont(std::max(6.0, kLabelSize * kLevelLabelWidth / width));
    DrawLabel(painter, {scale.PlotLeft() - kTickLength - 1, y}, text, font, Place::EndsAt);
  }
}

void DrawTimeTick(QPainter& painter, const PageScale& scale, const GraphStyle& style, double t,
                  const QString& text) {
  const double x = XOfTime(scale, t);
  DrawScaleLine(painter, style, {x, scale.PlotBottom(), x, scale.PlotBottom() + kTickLength},
                {x, scale.PlotTop(), x, scale.PlotBottom()});
  DrawVerticalLabel(painter, {x, scale.PlotBottom() + kTickLength + 2}, text, PageFont(kLabelSize),
                    Place::EndsAt);
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
    const QString clock = ClockText(static_cast<int>((time - DateTime(day)).count()));
    DrawTimeTick(painter, scale, sheet.style, TimeCoordinate(sheet.firstDay, time), clock);
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
  DrawMarks(painter, scale, trace.dots, 1, colour);
  DrawMarks(painter, scale, trace.maxima, kMarkWidth, QColor(kMaximumColour));
  DrawMarks(painter, scale, trace.minima, kMarkWidth, QColor(kMinimumColour));
}

const QColor& ColourOfStation(const GraphStyle& style, std::size_t index) {
  return style.stations[index % style.stations.size()];
}

void DrawCaptions(QPainter& painter, const PageScale& scale, const GraphTexts& texts) {
  const double middleX = (scale.PlotLeft() + scale.PlotRight()) / 2;
  QFont title = PageFont(kTitleSize, true);
  const double width = QFontMetricsF(title).horizontalAdvance(texts.title);
  const double room = scale.width - 10;
  if (width > room) title = PageFont(std::max(6.0, kTitleSize * room / width), true);
  DrawLabel(painter, {scale.width / 2, kTopMargin / 2}, texts.title, title, Place::Centred);
  DrawLabel(painter, {middleX, scale.height - 9}, texts.timeCaption, PageFont(kLabelSize), Place::Centred);
  DrawVerticalLabel(painter, {6, (scale.PlotTop() + scale.PlotBottom()) / 2}, texts.levelCaption,
                    PageFont(kLabelSize), Place::Centred);
}

// A rim of the paper's colour keeps the legend readable where readings run through it.
void DrawLegendRim(QPainter& painter, const QLineF& line, const QPointF& textAt, const QString& text,
                   const QFont& font, const QColor& paper) {
  QPainterPath letters;
  letters.addText(textAt, font, text);
  painter.setPen(QPen(paper, kLegendRim, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(line);
  painter.strokePath(letters, QPen(paper, kLegendRim, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

// At a fixed place; on a page too small for it, as near to it as the plot allows.
void DrawLegend(QPainter& painter, const PageScale& scale, const GraphSheet& sheet) {
  const QFont font = PageFont(kLabelSize + 1);
  const QFontMetricsF letters(font);
  double widest = 0;
  for (const QString& text : sheet.texts.legend) widest = std::max(widest, letters.horizontalAdvance(text));
  const double endX =
      std::max(scale.PlotLeft() + kLegendLine + 2, std::min(kLegendX, scale.PlotRight() - widest - 10));
  const double baseY = std::min(kLegendY, scale.PlotBottom());
  for (qsizetype i = 0; i < sheet.texts.legend.size(); ++i) {
    const QString& text = sheet.texts.legend[i];
    const double y = baseY - kLegendStep * static_cast<double>(i + 1);
    const QLineF line(endX - kLegendLine, y, endX, y);
    DrawLegendRim(painter, line, {endX + kLegendGap, y + letters.capHeight() / 2}, text, font,
                  sheet.style.background);
    painter.setPen(QPen(ColourOfStation(sheet.style, static_cast<std::size_t>(i)), 2));
    painter.drawLine(line);
    DrawLabel(painter, {endX + kLegendGap, y}, text, font, Place::StartsAt);
  }
}

}  // namespace

PageScale ScaleOfPage(const GraphPage& page, const GraphSheet& sheet, QSizeF size) {
  return MakePageScale(size, TimeCoordinate(sheet.firstDay, page.start),
                       TimeCoordinate(sheet.firstDay, page.end), page.maximumCm);
}

void DrawGraphPage(QPainter& painter, QSizeF size, const GraphPage& page, const GraphSheet& sheet,
                   double columnsPerUnit) {
  const PageScale scale = ScaleOfPage(page, sheet, size);
  painter.save();
  painter.fillRect(QRectF(0, 0, scale.width, scale.height), sheet.style.background);
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
  if (!sheet.texts.legend.isEmpty()) DrawLegend(painter, scale, sheet);
  painter.restore();
}

}  // namespace vesk
