#include "ratings/curve_plot.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/axis_ticks.h"

namespace vesk {
namespace {

constexpr QRgb kCurveColour = 0xB02020, kBandColour = 0xF6DADA, kOlderColour = 0x808080;
constexpr QRgb kGaugingColour = 0x1F4E9E, kUnusedColour = 0x909090, kHandleColour = 0xE07800;
constexpr QRgb kGridColour = 0xE2E2E2, kInkColour = 0x202020;
constexpr int kCurveSteps = 240;
constexpr double kReach = 10;  ///< of the mouse, in letters' pixels

QString TickText(double value, int decimals) {
  return QString::number(value == 0 ? 0 : value, 'f', decimals);
}

/// Levels at which the curve is drawn: evenly on the scale that is shown, breakpoints among them.
std::vector<double> LevelsToDraw(const CurvePeriod& period, const CurveScales& scales) {
  const double low = period.lowestCm - period.belowCm, high = period.highestCm + period.aboveCm;
  std::vector<double> levels;
  for (int i = 0; i <= kCurveSteps; ++i) {
    const double share = static_cast<double>(i) / kCurveSteps;
    const double least = std::max(low, scales.OffsetCm() + 1e-3);
    const double level =
        scales.Logarithmic() && least < high
            ? scales.OffsetCm() +
                  (least - scales.OffsetCm()) *
                      std::pow((high - scales.OffsetCm()) / (least - scales.OffsetCm()), share)
            : low + share * (high - low);
    levels.push_back(level);
  }
  for (const PowerSegment& segment : period.segments) {
    if (segment.fromCm > low && segment.fromCm < high) levels.push_back(segment.fromCm);
  }
  for (const CurvePoint& point : period.points) {
    if (point.levelCm > low && point.levelCm < high) levels.push_back(point.levelCm);
  }
  levels.push_back(period.lowestCm);
  levels.push_back(period.highestCm);
  std::ranges::sort(levels);
  return levels;
}

class Drawing {
 public:
  Drawing(QPainter& painter, const QRectF& all, const CurvePlot& plot, LanguageChoice language)
      : painter_(painter),
        plot_(plot),
        language_(language),
        letters_(painter.fontMetrics()),
        scales_(plot, all, letters_) {}

  void Draw() {
    painter_.setRenderHint(QPainter::Antialiasing);
    DrawGrid();
    DrawBand();
    if (plot_.older) DrawCurve(*plot_.older, QPen(QColor(kOlderColour), Thin(1.5), Qt::DashLine), false);
    DrawCurve(plot_.Period(), QPen(QColor(kCurveColour), Thin(2)), true);
    DrawGaugings();
    if (plot_.handles) DrawNodes();
    DrawResiduals();
  }

 private:
  [[nodiscard]] double Thin(double width) const { return width * letters_.height() / 17; }
  [[nodiscard]] QString Say(const Message& message) const { return message.In(language_); }

  void DrawGrid() {
    const CurveScales::Span x = scales_.Discharges(), y = scales_.Levels();
    const QRectF field = scales_.Field(), below = scales_.Residuals();
    const int acrossMost = static_cast<int>(field.width() / (letters_.averageCharWidth() * 10));
    const int downMost = static_cast<int>(field.height() / (letters_.height() * 2.2));
    AxisTicks across, down;
    if (scales_.Logarithmic()) {
      across.values = LogTicks(x.low, x.high);
      // Round levels, though their distances from c are none: a level is what is read.
      const double offset = scales_.OffsetCm();
      down = LinearTicks(offset + std::pow(10, y.low), offset + std::pow(10, y.high), 4 * downMost);
      for (double& level : down.values) level -= offset;
      std::erase_if(down.values, [](double rise) { return rise <= 0; });
    } else {
      across = LinearTicks(x.low, x.high, acrossMost);
      down = LinearTicks(y.low, y.high, downMost);
    }
    painter_.setFont(painter_.font());
    double lastRight = -1e9;
    for (const double m3s : across.values) {
      const double at = scales_.Logarithmic() ? std::log10(m3s) : m3s;
      const double left = field.left() + (at - x.low) / (x.high - x.low) * field.width();
      Line({left, field.top()}, {left, field.bottom()});
      Line({left, below.top()}, {left, below.bottom()});
      const QString text =
          scales_.Logarithmic() ? QString::number(m3s, 'g', 3) : TickText(m3s, across.decimals);
      const double wide = letters_.horizontalAdvance(text);
      if (left - wide / 2 < lastRight + letters_.averageCharWidth()) continue;
      lastRight = left + wide / 2;
      Text(QRectF(left - wide, below.bottom() + Thin(3), 2 * wide, letters_.height()), Qt::AlignHCenter,
           text);
    }
    double lastTop = 1e9;
    for (const double value : down.values) {
      const double at = scales_.Logarithmic() ? std::log10(value) : value;
      const double top = field.bottom() - (at - y.low) / (y.high - y.low) * field.height();
      Line({field.left(), top}, {field.right(), top});
      const double levelCm = scales_.Logarithmic() ? value + scales_.OffsetCm() : value;
      if (top + letters_.height() > lastTop) continue;
      lastTop = top;
      const QString text = TickText(levelCm, down.decimals);
      Text(QRectF(field.left() - letters_.averageCharWidth() * 10, top - letters_.height() / 2,
                  letters_.averageCharWidth() * 9.4, letters_.height()),
           Qt::AlignRight, text);
    }
    Frames();
  }

  void Frames() {
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(QColor(kInkColour), Thin(1)));
    painter_.drawRect(scales_.Field());
    painter_.drawRect(scales_.Residuals());
    const QRectF field = scales_.Field(), below = scales_.Residuals();
    Text(QRectF(field.left(), below.bottom() + letters_.height() * 1.15, field.width(),
                letters_.height() * 1.2),
         Qt::AlignHCenter, Say(Wording{u"Debi (m³/s)", u"Discharge (m³/s)"}));
    const Message level =
        scales_.Logarithmic()
            ? Message(Wording{u"Seviye (cm), h - c logaritmik", u"Level (cm), h - c logarithmic"})
            : Message(Wording{u"Seviye (cm)", u"Level (cm)"});
    Text(QRectF(field.left(), field.top() - letters_.height() * 1.3, field.width() / 2,
                letters_.height() * 1.2),
         Qt::AlignLeft, Say(level));
    Text(QRectF(field.left() + field.width() / 2, field.top() - letters_.height() * 1.3, field.width() / 2,
                letters_.height() * 1.2),
         Qt::AlignRight, Say(Wording{u"Kuşak: yüzde 95 güven", u"Band: 95 % confidence"}));
    Text(QRectF(below.left(), below.top() - letters_.height() * 1.25, below.width(), letters_.height() * 1.2),
         Qt::AlignLeft, Say(Wording{u"Artıklar (%)", u"Residuals (%)"}));
  }

  void DrawBand() {
    const CurveBand band(plot_.Period());
    QPolygonF lower, upper;
    for (const double level : LevelsToDraw(plot_.Period(), scales_)) {
      const auto ends = band.At(level);
      if (!ends) continue;
      const auto low = scales_.Place(level, ends->lowerM3s), high = scales_.Place(level, ends->upperM3s);
      if (!low || !high) continue;
      lower.append(*low);
      upper.prepend(*high);
    }
    painter_.save();
    painter_.setClipRect(scales_.Field());
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(QColor(kBandColour));
    painter_.drawPolygon(lower + upper);
    painter_.restore();
  }

  /// Beyond the gauged levels dashed.
  void DrawCurve(const CurvePeriod& period, const QPen& pen, bool dashed) {
    painter_.save();
    painter_.setClipRect(scales_.Field());
    painter_.setBrush(Qt::NoBrush);
    QPainterPath gauged, beyond;
    const auto add = [](QPainterPath& path, const QPointF& place, bool begin) {
      if (begin || path.elementCount() == 0)
        path.moveTo(place);
      else
        path.lineTo(place);
    };
    bool beginGauged = true, beginBeyond = true;
    for (const double level : LevelsToDraw(period, scales_)) {
      const auto place = scales_.Place(level, CurveDischarge(period, level));
      const bool inside = level >= period.lowestCm && level <= period.highestCm;
      const bool edge = level == period.lowestCm || level == period.highestCm;
      if (!place) {
        beginGauged = beginBeyond = true;
        continue;
      }
      if (inside) add(gauged, *place, std::exchange(beginGauged, false));
      if (!inside || edge) add(beyond, *place, std::exchange(beginBeyond, false));
      if (inside && !edge) beginBeyond = true;
    }
    painter_.setPen(pen);
    painter_.drawPath(gauged);
    QPen outer = pen;
    if (dashed) outer.setStyle(Qt::DashLine);
    painter_.setPen(outer);
    painter_.drawPath(beyond);
    painter_.restore();
  }

  void DrawGaugings() {
    const std::vector<Gauging>& gaugings = plot_.Period().gaugings;
    for (std::size_t i = 0; i < gaugings.size(); ++i) {
      if (!gaugings[i].levelCm) continue;
      const auto place = scales_.Place(*gaugings[i].levelCm, gaugings[i].dischargeM3s);
      if (place) DrawGauging(*place, gaugings[i].used, plot_.gauging == i);
    }
  }

  void DrawGauging(const QPointF& place, bool used, bool looked) {
    const double radius = Thin(3.6);
    painter_.setPen(QPen(QColor(used ? kGaugingColour : kUnusedColour), Thin(1.2)));
    painter_.setBrush(used ? QBrush(QColor(kGaugingColour)) : QBrush(Qt::white));
    painter_.drawEllipse(place, radius, radius);
    if (!looked) return;
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(QColor(kInkColour), Thin(1.6)));
    painter_.drawEllipse(place, radius * 2.1, radius * 2.1);
  }

  void DrawNodes() {
    const std::vector<CurveNode> nodes = NodesOf(plot_.Period());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const auto place = scales_.Place(nodes[i].levelCm, nodes[i].dischargeM3s);
      if (!place) continue;
      const double half = Thin(plot_.node == i ? 7 : 5);
      painter_.setPen(QPen(QColor(kInkColour), Thin(plot_.node == i ? 2 : 1)));
      painter_.setBrush(QColor(kHandleColour));
      painter_.drawRect(QRectF(place->x() - half, place->y() - half, 2 * half, 2 * half));
    }
  }

  void DrawResiduals() {
    const QRectF below = scales_.Residuals();
    const double most = scales_.MostResidual();
    for (const double percent : {-most, 0.0, most}) {
      const double top = below.center().y() - percent / most * below.height() / 2;
      if (percent == 0) Line({below.left(), top}, {below.right(), top});
      Text(QRectF(below.left() - letters_.averageCharWidth() * 10, top - letters_.height() / 2,
                  letters_.averageCharWidth() * 9.4, letters_.height()),
           Qt::AlignRight, QString::number(percent, 'f', 0));
    }
    if (!plot_.fit) return;
    const std::vector<Gauging>& gaugings = plot_.Period().gaugings;
    for (const GaugingResidual& residual : plot_.fit->residuals) {
      const auto i = static_cast<std::size_t>(residual.gauging);
      if (i >= gaugings.size()) continue;
      const auto place = scales_.ResidualPlace(gaugings[i].dischargeM3s, residual.percent);
      if (place) DrawGauging(*place, true, plot_.gauging == i);
    }
  }

  void Line(const QPointF& from, const QPointF& to) {
    painter_.setPen(QPen(QColor(kGridColour), Thin(1)));
    painter_.drawLine(from, to);
  }
  void Text(const QRectF& where, Qt::AlignmentFlag side, const QString& text) {
    painter_.setPen(QColor(kInkColour));
    painter_.drawText(where, static_cast<int>(Qt::Alignment(side) | Qt::AlignVCenter) | Qt::TextDontClip,
                      text);
  }

  QPainter& painter_;
  const CurvePlot& plot_;
  LanguageChoice language_;
  QFontMetricsF letters_;
  CurveScales scales_;
};

/// Of places that may be none, the nearest to one within reach.
template <class PlaceOf>
std::optional<std::size_t> Nearest(std::size_t count, const QPointF& to, const PlaceOf& placeOf) {
  std::optional<std::size_t> nearest;
  double least = kReach;
  for (std::size_t i = 0; i < count; ++i) {
    const std::optional<QPointF> place = placeOf(i);
    const double away = place ? std::hypot(place->x() - to.x(), place->y() - to.y()) : kReach;
    if (away < least) {
      least = away;
      nearest = i;
    }
  }
  return nearest;
}

}  // namespace

double CurveScales::Scaled(double value) const {
  return logarithmic_ ? std::log10(value) : value;
}

/// Levels and discharges that must have room: gaugings, the ends of both curves.
std::vector<CurveNode> CurveScales::Everything(const CurvePlot& plot) const {
  std::vector<CurveNode> all;
  for (const Gauging& gauging : plot.Period().gaugings) {
    if (gauging.levelCm) all.push_back({*gauging.levelCm, gauging.dischargeM3s});
  }
  const auto ends = [&all](const CurvePeriod& period) {
    if (period.segments.empty() && period.points.empty()) return;
    for (const double level : {period.lowestCm - period.belowCm, period.highestCm + period.aboveCm})
      all.push_back({level, CurveDischarge(period, level)});
  };
  ends(plot.Period());
  if (plot.older) ends(*plot.older);
  return all;
}

CurveScales::CurveScales(const CurvePlot& plot, const QRectF& all, const QFontMetricsF& letters)
    : logarithmic_(plot.logarithmic) {
  const double left = letters.averageCharWidth() * 11, line = letters.height();
  const double inside = all.height() - line * 5.6;
  field_ = QRectF(all.left() + left, all.top() + line * 1.6,
                  all.width() - left - letters.averageCharWidth() * 3, inside * 0.76);
  residuals_ = QRectF(field_.left(), field_.bottom() + line * 1.5, field_.width(), inside * 0.24);
  if (!plot.Period().segments.empty())
    offset_ = plot.Period().segments.front().cCm;
  else if (plot.Period().between == Between::Logarithmic)
    offset_ = plot.Period().offsetCm;
  bool first = true;
  for (const CurveNode& node : Everything(plot)) {
    const double rise = node.levelCm - (logarithmic_ ? offset_ : 0);
    if (logarithmic_ && (rise <= 0 || node.dischargeM3s <= 0)) continue;
    const double y = Scaled(rise), x = Scaled(node.dischargeM3s);
    levels_ = first ? Span{y, y} : Span{std::min(levels_.low, y), std::max(levels_.high, y)};
    discharges_ = first ? Span{x, x} : Span{std::min(discharges_.low, x), std::max(discharges_.high, x)};
    first = false;
  }
  if (!logarithmic_ && !first) discharges_.low = std::min(discharges_.low, 0.0);
  for (Span* span : {&levels_, &discharges_}) {
    const double room = span->high > span->low ? 0.05 * (span->high - span->low) : 1;
    span->high += room;
    if (logarithmic_ || span == &levels_) span->low -= room;
  }
  if (!plot.fit) return;
  for (const GaugingResidual& residual : plot.fit->residuals)
    mostResidual_ = std::max(mostResidual_, std::ceil(std::abs(residual.percent) / 10) * 10);
}

std::optional<QPointF> CurveScales::Place(double levelCm, double m3s) const {
  const double rise = levelCm - (logarithmic_ ? offset_ : 0);
  if (logarithmic_ && (rise <= 0 || m3s <= 0)) return std::nullopt;
  const double x = (Scaled(m3s) - discharges_.low) / (discharges_.high - discharges_.low);
  const double y = (Scaled(rise) - levels_.low) / (levels_.high - levels_.low);
  return QPointF(field_.left() + x * field_.width(), field_.bottom() - y * field_.height());
}

std::optional<QPointF> CurveScales::ResidualPlace(double m3s, double percent) const {
  if (logarithmic_ && m3s <= 0) return std::nullopt;
  const double x = (Scaled(m3s) - discharges_.low) / (discharges_.high - discharges_.low);
  return QPointF(residuals_.left() + x * residuals_.width(),
                 residuals_.center().y() - percent / mostResidual_ * residuals_.height() / 2);
}

CurveNode CurveScales::At(const QPointF& place) const {
  const double x =
      discharges_.low + (place.x() - field_.left()) / field_.width() * (discharges_.high - discharges_.low);
  const double y =
      levels_.low + (field_.bottom() - place.y()) / field_.height() * (levels_.high - levels_.low);
  if (!logarithmic_) return {y, x};
  return {offset_ + std::pow(10, y), std::pow(10, x)};
}

void DrawCurvePlot(QPainter& painter, const QRectF& all, const CurvePlot& plot, LanguageChoice language) {
  painter.save();
  Drawing(painter, all, plot, language).Draw();
  painter.restore();
}

std::optional<std::size_t> GaugingNear(const CurvePlot& plot, const CurveScales& scales,
                                       const QPointF& place) {
  const std::vector<Gauging>& gaugings = plot.Period().gaugings;
  return Nearest(gaugings.size(), place, [&](std::size_t i) {
    return gaugings[i].levelCm ? scales.Place(*gaugings[i].levelCm, gaugings[i].dischargeM3s) : std::nullopt;
  });
}

std::optional<std::size_t> NodeNear(const CurvePlot& plot, const CurveScales& scales, const QPointF& place) {
  if (!plot.handles) return std::nullopt;
  const std::vector<CurveNode> nodes = NodesOf(plot.Period());
  return Nearest(nodes.size(), place,
                 [&](std::size_t i) { return scales.Place(nodes[i].levelCm, nodes[i].dischargeM3s); });
}

}  // namespace vesk
