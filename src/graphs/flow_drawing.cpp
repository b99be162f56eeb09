// Drawing and writing graphs of discharge.
#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "graphs/flow_plot.h"
#include "graphs/graph_labels.h"
#include "platform/axis_ticks.h"
#include "platform/csv.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr QRgb kGridColour = 0xE2E2E2, kInkColour = 0x202020;
constexpr Wording kFailed{u"Grafik kaydedilemedi", u"The graph could not be saved"};

class Drawing {
 public:
  Drawing(QPainter& painter, const QRectF& all, const FlowPlot& plot)
      : painter_(painter), all_(all), plot_(plot), letters_(painter.font()), scales_(plot, all, letters_) {}

  void Draw() {
    painter_.setRenderHint(QPainter::Antialiasing);
    DrawTime();
    DrawValues(scales_.Left(), false);
    if (!plot_.rightCaption.isEmpty()) DrawValues(scales_.Right(), true);
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(QColor(kInkColour), 1));
    painter_.drawRect(scales_.Field());
    painter_.save();
    painter_.setClipRect(scales_.Field());
    for (const FlowLine& line : plot_.lines) DrawLine(line);
    painter_.restore();
    DrawTexts();
    DrawLegend();
  }

 private:
  void Text(const QRectF& where, Qt::Alignment side, const QString& text) {
    painter_.setPen(QColor(kInkColour));
    painter_.drawText(where, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextDontClip, text);
  }
  void GridLine(const QPointF& from, const QPointF& to) {
    painter_.setPen(QPen(QColor(kGridColour), 1));
    painter_.drawLine(from, to);
  }

  void Mark(double x, const QString& text, double& lastRight) {
    const QRectF& field = scales_.Field();
    const double left = field.left() + (x - plot_.low) / (plot_.high - plot_.low) * field.width();
    GridLine({left, field.top()}, {left, field.bottom()});
    const double wide = letters_.horizontalAdvance(text);
    if (left - wide / 2 < lastRight + letters_.averageCharWidth()) return;
    lastRight = left + wide / 2;
    Text(QRectF(left - wide, field.bottom() + 3, 2 * wide, letters_.height()), Qt::AlignHCenter, text);
  }

  /// First days of months; of a span of few months days of theirs, too.
  void DrawTime() {
    double lastRight = -1e9;
    if (plot_.Percent()) {
      const AxisTicks ticks = LinearTicks(plot_.low, plot_.high, 10);
      for (const double percent : ticks.values)
        Mark(percent, QString::number(percent, 'f', ticks.decimals), lastRight);
      return;
    }
    constexpr double kFewMonths = 75, kFewDays = 16;
    const double days = (plot_.high - plot_.low) / kMinutesPerDay;
    // Years over one another are dated by one that has a 29 February.
    constexpr int kLeapYear = 2000;
    const bool common = plot_.aligned || plot_.lines.empty();
    const int year = common ? kLeapYear : plot_.lines.front().waterYear;
    for (double x = std::ceil(plot_.low / kMinutesPerDay) * kMinutesPerDay; x <= plot_.high;
         x += kMinutesPerDay) {
      const Day day = std::chrono::floor<std::chrono::days>(FlowTimeOf(plot_, year, x));
      const bool wanted = DayOf(day) == 1 || days <= kFewDays || (days <= kFewMonths && DayOf(day) % 5 == 0);
      if (wanted)
        Mark(x,
             plot_.aligned       ? DateText(day).left(5)
             : days > kFewMonths ? DateText(day).mid(3)
                                 : DateText(day),
             lastRight);
    }
  }

  void DrawValues(const FlowScales::Span& span, bool right) {
    const QRectF& field = scales_.Field();
    AxisTicks ticks;
    if (plot_.logarithmic) {
      ticks.values = LogTicks(span.low, span.high);
    } else {
      ticks = LinearTicks(span.low, span.high, static_cast<int>(field.height() / (letters_.height() * 2.4)));
    }
    const double wide = letters_.averageCharWidth() * 9;
    for (const double value : ticks.values) {
      const double at = plot_.logarithmic ? std::log10(value) : value;
      const double top = field.bottom() - (at - span.low) / (span.high - span.low) * field.height();
      if (!right) GridLine({field.left(), top}, {field.right(), top});
      const QString text =
          plot_.logarithmic ? QString::number(value, 'g', 3) : QString::number(value, 'f', ticks.decimals);
      const double left = right ? field.right() + letters_.averageCharWidth() / 2
                                : field.left() - wide - letters_.averageCharWidth() / 2;
      Text(QRectF(left, top - letters_.height() / 2, wide, letters_.height()),
           right ? Qt::AlignLeft : Qt::AlignRight, text);
    }
  }

  /// Points of one pixel column are gathered to its first, least, greatest and last: a peak of a single
  /// reading stays visible, and a year of minutes draws as fast as a week.
  void DrawLine(const FlowLine& line) {
    QPen pen(QColor(line.colour), 1.4);
    pen.setJoinStyle(Qt::RoundJoin);
    QPolygonF run;
    bool dashed = false;
    const auto end = [&] {
      pen.setStyle(dashed ? Qt::DashLine : Qt::SolidLine);
      painter_.setPen(pen);
      if (run.size() > 1) painter_.drawPolyline(run);
      if (run.size() == 1) painter_.drawEllipse(run.front(), 1.2, 1.2);
      run.clear();
    };
    std::optional<QPointF> before;
    QPolygonF column;
    const auto flush = [&] {
      if (column.isEmpty()) return;
      const auto [least, most] =
          std::ranges::minmax_element(column, {}, [](const QPointF& one) { return one.y(); });
      const QPointF low = *least, high = *most, last = column.back();
      run << column.front();
      for (const QPointF& one : {low, high, last}) {
        if (one != run.back()) run << one;
      }
      column.clear();
    };
    const double columns = std::max(1.0, std::abs(painter_.deviceTransform().m11()));
    for (const FlowPoint& point : line.points) {
      const auto place = scales_.Place(line, point);
      const bool outside =
          point.x < plot_.low - kMinutesPerDay * 3 || point.x > plot_.high + kMinutesPerDay * 3;
      if (!place || outside) {
        flush();
        end();
        before.reset();
        continue;
      }
      if (!point.joined) {
        flush();
        end();
        dashed = point.flagged;
      } else if (point.flagged != dashed) {
        flush();
        const auto joint = before;
        if (point.flagged && joint) {
          end();
          run << *joint;  // the dashes begin at the last sure point
        } else {
          run << *place;  // and end at the next one
          end();
        }
        dashed = point.flagged;
      }
      const bool same =
          !column.isEmpty() && std::floor(column.back().x() * columns) == std::floor(place->x() * columns);
      if (!same) flush();
      column << *place;
      before = place;
    }
    flush();
    end();
  }

  void DrawTexts() {
    const QRectF& field = scales_.Field();
    const double line = letters_.height();
    QFont bold = painter_.font();
    bold.setBold(true);
    painter_.save();
    painter_.setFont(bold);
    Text(QRectF(all_.left(), all_.top() + line * 0.4, all_.width(), line * 1.2), Qt::AlignHCenter,
         plot_.title);
    painter_.restore();
    Text(QRectF(all_.left() + letters_.averageCharWidth(), field.top() - line * 1.35, field.width() / 2,
                line * 1.2),
         Qt::AlignLeft, plot_.leftCaption);
    if (!plot_.rightCaption.isEmpty())
      Text(QRectF(field.center().x(), field.top() - line * 1.35,
                  field.width() / 2 + 10 * letters_.averageCharWidth(), line * 1.2),
           Qt::AlignRight, plot_.rightCaption);
    Text(QRectF(field.left(), field.bottom() + line * 1.2, field.width(), line * 1.2), Qt::AlignHCenter,
         plot_.belowCaption);
    double top = field.bottom() + line * 2.5;
    for (const QString& note : plot_.notes) {
      Text(QRectF(field.left(), top, field.width(), line * 1.1), Qt::AlignLeft, note);
      top += line * 1.15;
    }
  }

  void DrawLegend() {
    const double line = letters_.height(), letter = letters_.averageCharWidth();
    double left = scales_.Field().left();
    const double top = all_.top() + line * 1.75;
    for (const FlowLine& one : plot_.lines) {
      painter_.setPen(QPen(QColor(one.colour), 2.4));
      painter_.drawLine(QPointF(left, top + line / 2), QPointF(left + 3 * letter, top + line / 2));
      const double wide = letters_.horizontalAdvance(one.name);
      Text(QRectF(left + 3.6 * letter, top, wide, line), Qt::AlignLeft, one.name);
      left += wide + 6 * letter;
    }
  }

  QPainter& painter_;
  const QRectF& all_;
  const FlowPlot& plot_;
  QFontMetricsF letters_;
  FlowScales scales_;
};

QByteArray CsvOf(const FlowPlot& plot) {
  QByteArray text = plot.Percent() ? "water_year,exceeded_percent,quantity,value,flagged\n"
                                   : "water_year,time,quantity,value,flagged\n";
  CsvLines csv(text);
  for (const FlowLine& line : plot.lines) {
    for (const FlowPoint& point : line.points) {
      constexpr int kDigits = 6;
      csv.Plain() += QByteArray::number(line.waterYear);
      csv.Plain() += plot.Percent() ? QByteArray::number(point.x, 'g', kDigits)
                                    : DateTimeText(FlowTimeOf(plot, line.waterYear, point.x)).toLatin1();
      csv.Plain() += line.isLevel ? "level_cm" : "discharge_m3s";
      csv.Plain() +=
          line.isLevel ? NumberText(point.y).toLatin1() : QByteArray::number(point.y, 'g', kDigits);
      csv.Plain() += point.flagged ? "1" : "0";
      csv.EndLine();
    }
  }
  return text;
}

/// Empty when it could not be drawn, for want of memory for example.
QByteArray PictureOf(const QString& ending, const FlowPlot& plot, QSize size, int dotsPerInch) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  constexpr double kUnits = 96;
  const QRectF all(QPointF(0, 0), QSizeF(size));
  bool drawn = false;
  const auto draw = [&](QPaintDevice& device, double factor) {
    QPainter painter;
    if (!painter.begin(&device)) return;
    painter.scale(factor, factor);
    painter.setFont(PageFont(kLabelSize + 1));
    DrawFlowPlot(painter, all, plot);
    drawn = painter.end();
  };
  if (ending == QLatin1String("svg")) {
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(size);
    svg.setViewBox(all);
    svg.setTitle(plot.title);
    draw(svg, 1);
  } else if (ending == QLatin1String("pdf")) {
    QPdfWriter pdf(&buffer);
    constexpr double kPointsPerInch = 72;
    pdf.setPageSize(QPageSize(QSizeF(size) * kPointsPerInch / kUnits, QPageSize::Point));
    pdf.setPageMargins(QMarginsF());
    pdf.setTitle(plot.title);
    draw(pdf, pdf.resolution() / kUnits);
  } else {
    const double factor = dotsPerInch / kUnits;
    QImage image((QSizeF(size) * factor).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    draw(image, factor);
    drawn = drawn && image.save(&buffer, "PNG");
  }
  return drawn ? bytes : QByteArray();
}

}  // namespace

void DrawFlowPlot(QPainter& painter, const QRectF& all, const FlowPlot& plot) {
  painter.save();
  Drawing(painter, all, plot).Draw();
  painter.restore();
}

Status WriteFlowPlot(const QString& path, const FlowPlot& plot, QSize size, int dotsPerInch) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == QLatin1String("csv")) return WriteWholeFile(path, CsvOf(plot), kFailed);
  if (ending != QLatin1String("png") && ending != QLatin1String("pdf") && ending != QLatin1String("svg"))
    return Error{kFailed, path,
                 Wording{u"beklenen .png, .pdf, .svg veya .csv ile biten bir ad",
                         u"expected a name ending in .png, .pdf, .svg or .csv"}};
  const QByteArray picture = PictureOf(ending, plot, size, dotsPerInch);
  if (picture.isEmpty())  // an older file stays as it is
    return Error{kFailed, path, Wording{u"resim çizilemedi", u"the picture could not be drawn"}};
  return WriteWholeFile(path, picture, kFailed);
}

}  // namespace vesk
