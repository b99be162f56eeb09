#include "graphs/flow_plot.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/discharge.h"
#include "datafiles/numbers.h"
#include "datafiles/water_year.h"
#include "graphs/graph_scales.h"

namespace vesk {
namespace {

constexpr std::array<QRgb, 12> kYearColours = {0x1F4E9E, 0xB02020, 0x2C7A2C, 0xC76A00, 0x6B3FA0, 0x007C89,
                                               0x8C564B, 0xAD1457, 0x5D6D00, 0x455A64, 0x3949AB, 0x795548};
constexpr QRgb kLevelColour = 0x2C7A2C, kDischargeColour = 0x1F4E9E;
constexpr int kDaysOfLeapYear = 366;
constexpr double kReach = 16;

/// Days from 1 October to 1 March of a common year: behind them an aligned year has its 29 February.
constexpr int kDaysToMarch = 151;

bool HasLeapDay(int waterYear) {
  return std::chrono::year(waterYear).is_leap();
}

/// One value of a reading.
struct Value {
  double y = 0;
  bool flagged = false;
};

std::optional<Value> LevelOf(const StationSeries& series, int row) {
  const double level = series.At(row).levelCm;
  return level < 0 ? std::nullopt : std::optional(Value{level, false});  // the loggers' sign of a fault
}

std::optional<Value> DischargeOf(const StationSeries& series, int row) {
  const auto value = series.CurveDischargeOf(row);
  if (!value || !HasDischarge(value->flag)) return std::nullopt;
  return Value{value->m3s, IsExtrapolated(value->flag)};
}

class Maker {
 public:
  Maker(const FlowRequest& request, const std::vector<FlowYear>& years, const Language& language)
      : request_(request), years_(years), language_(language) {}

  FlowPlot Make() {
    plot_.kind = request_.kind;
    plot_.logarithmic = request_.logarithmic;
    plot_.aligned = years_.size() > 1;
    plot_.title = Title();
    if (plot_.Percent()) {
      MakeDuration();
    } else {
      MakeHydrographs();
    }
    return std::move(plot_);
  }

 private:
  [[nodiscard]] QString Say(const Message& message) const { return language_.Say(message); }

  [[nodiscard]] QString Title() const {
    QStringList years;
    for (const FlowYear& year : years_) years += QString::number(year.waterYear);
    const QString station = QStringLiteral("%1 %2").arg(request_.station, request_.name).trimmed();
    const Message what =
        request_.kind == FlowKind::Duration ? Message(Wording{u"Süreklilik eğrisi", u"Duration curve"})
        : request_.kind == FlowKind::Level  ? Message(Wording{u"Seviye", u"Level"})
        : request_.kind == FlowKind::Both   ? Message(Wording{u"Seviye ve debi", u"Level and discharge"})
                                            : Message(Wording{u"Debi", u"Discharge"});
    return QStringLiteral("%1: %2 (%3)").arg(Say(what), station, years.join(QStringLiteral(", ")));
  }
  [[nodiscard]] QString LevelCaption() const { return Say(Wording{u"Seviye (cm)", u"Level (cm)"}); }
  [[nodiscard]] QString DischargeCaption() const { return Say(Wording{u"Debi (m³/s)", u"Discharge (m³/s)"}); }

  void MakeHydrographs() {
    plot_.high = kDaysOfLeapYear * kMinutesPerDay;
    if (!plot_.aligned && !years_.empty() && !HasLeapDay(years_.front().waterYear))
      plot_.high -= kMinutesPerDay;
    plot_.belowCaption = Say(Wording{u"Zaman", u"Time"});
    const bool both = request_.kind == FlowKind::Both;
    plot_.leftCaption = request_.kind == FlowKind::Discharge ? DischargeCaption() : LevelCaption();
    if (both) plot_.rightCaption = DischargeCaption();
    for (std::size_t i = 0; i < years_.size(); ++i) {
      if (request_.kind != FlowKind::Discharge) AddLine(i, true, false);
      if (request_.kind != FlowKind::Level) AddLine(i, false, both);
    }
  }

  [[nodiscard]] QRgb ColourOf(std::size_t year, bool level) const {
    if (years_.size() > 1) return kYearColours[(years_.size() - 1 - year) % kYearColours.size()];
    return level ? kLevelColour : kDischargeColour;
  }

  [[nodiscard]] QString NameOf(std::size_t year, bool level) const {
    const QString number = QString::number(years_[year].waterYear);
    if (request_.kind != FlowKind::Both) return number;
    return QStringLiteral("%1 %2").arg(
        number, level ? Say(Wording{u"seviye", u"level"}) : Say(Wording{u"debi", u"discharge"}));
  }

  void AddLine(std::size_t place, bool level, bool onRight) {
    const FlowYear& year = years_[place];
    FlowLine line{NameOf(place, level), ColourOf(place, level), onRight, level, year.waterYear, {}};
    int missing = 0;
    bool broken = true;
    std::optional<DateTime> before;
    const DateTime begin(WaterYearFirstDay(year.waterYear));
    const DateTime end = DateTime(WaterYearLastDay(year.waterYear)) + std::chrono::days(1);
    for (int row = 1; row <= year.series.ReadingCount(); ++row) {
      const Reading reading = year.series.At(row);
      if (reading.kind != ReadingKind::Ordinary || reading.Time() < begin || reading.Time() >= end) continue;
      const auto value = level ? LevelOf(year.series, row) : DischargeOf(year.series, row);
      if (!value) {
        ++missing;
        broken = true;
        continue;
      }
      const bool gap = before && (reading.Time() - *before > std::chrono::minutes(kGapMinutes) ||
                                  reading.Time() < *before);
      line.points.push_back(
          {FlowXOf(plot_, year.waterYear, reading.Time()), value->y, value->flagged, !broken && !gap});
      broken = false;
      before = reading.Time();
    }
    if (missing > 0) {
      plot_.notes += Say({level ? Wording{u"%1: %2 okumanın seviyesi eksi, çizilmedi",
                                          u"%1: %2 readings with a negative level are not drawn"}
                                : Wording{u"%1: %2 okumanın debisi yok, çizilmedi",
                                          u"%1: %2 readings without a discharge are not drawn"},
                          line.name, missing});
    }
    NoteFlagged(line);
    plot_.lines.push_back(std::move(line));
  }

  void NoteFlagged(const FlowLine& line) {
    const auto flagged = std::ranges::count_if(line.points, &FlowPoint::flagged);
    if (flagged == 0) return;
    plot_.notes += Say({plot_.Percent() ? Wording{u"%1: kesik çizgi, uzatılmış veya eksik %2 gün",
                                                  u"%1: dashed, %2 days extrapolated or in part"}
                                        : Wording{u"%1: kesik çizgi, ölçülen seviyelerin dışında %2 okuma",
                                                  u"%1: dashed, %2 readings beyond the gauged levels"},
                        line.name, flagged});
  }

  void MakeDuration() {
    plot_.high = 100;
    plot_.belowCaption = Say(Wording{u"Ulaşılan veya aşılan günler (yüzde; sıra / (n + 1))",
                                     u"Days reached or exceeded (per cent; rank / (n + 1))"});
    const bool discharges = std::ranges::any_of(years_, [](const FlowYear& year) {
      return std::ranges::any_of(year.days, [](const DailyMean& day) { return day.m3s.has_value(); });
    });
    plot_.leftCaption = discharges ? DischargeCaption() : LevelCaption();
    for (std::size_t i = 0; i < years_.size(); ++i) AddDuration(i, discharges);
  }

  void AddDuration(std::size_t place, bool discharges) {
    const FlowYear& year = years_[place];
    FlowLine line{QString::number(year.waterYear),
                  ColourOf(place, !discharges),
                  false,
                  !discharges,
                  year.waterYear,
                  {}};
    for (const DailyMean& day : year.days) {
      const auto& mean = discharges ? day.m3s : day.levelCm;
      if (mean && WaterYearOf(day.day) == year.waterYear)
        line.points.push_back({0, *mean, discharges && day.flagged, true});
    }
    std::ranges::stable_sort(line.points, std::greater(), &FlowPoint::y);
    const auto count = static_cast<double>(line.points.size());
    for (std::size_t m = 0; m < line.points.size(); ++m)
      line.points[m].x = 100 * static_cast<double>(m + 1) / (count + 1);
    if (!line.points.empty()) line.points.front().joined = false;
    const int days = HasLeapDay(year.waterYear) ? kDaysOfLeapYear : kDaysOfLeapYear - 1;
    const int without = days - static_cast<int>(line.points.size());
    if (without > 0)
      plot_.notes +=
          Say({Wording{u"%1: %2 günün ortalaması yok", u"%1: %2 days have no mean"}, line.name, without});
    NoteFlagged(line);
    plot_.lines.push_back(std::move(line));
  }

  const FlowRequest& request_;
  const std::vector<FlowYear>& years_;
  const Language& language_;
  FlowPlot plot_;
};

}  // namespace

std::optional<FlowKind> ReadFlowKind(QStringView text) {
  if (text == u"level") return FlowKind::Level;
  if (text == u"discharge") return FlowKind::Discharge;
  if (text == u"both") return FlowKind::Both;
  if (text == u"duration") return FlowKind::Duration;
  return std::nullopt;
}

bool FlowPlot::Empty() const {
  return std::ranges::all_of(lines, [](const FlowLine& line) { return line.points.empty(); });
}

FlowPlot MakeFlowPlot(const FlowRequest& request, const std::vector<FlowYear>& years,
                      const Language& language) {
  return Maker(request, years, language).Make();
}

double FlowXOf(const FlowPlot& plot, int waterYear, DateTime time) {
  const auto since = (time - DateTime(WaterYearFirstDay(waterYear))).count();
  const bool moved = plot.aligned && !HasLeapDay(waterYear) && since >= kDaysToMarch * kMinutesPerDay;
  return static_cast<double>(since + (moved ? kMinutesPerDay : 0));
}

DateTime FlowTimeOf(const FlowPlot& plot, int waterYear, double x) {
  auto minutes = static_cast<long>(std::floor(x + 0.5));
  if (plot.aligned && !HasLeapDay(waterYear) && minutes >= kDaysToMarch * kMinutesPerDay)
    minutes = std::max<long>(minutes - kMinutesPerDay, kDaysToMarch * kMinutesPerDay);
  return DateTime(WaterYearFirstDay(waterYear)) + std::chrono::minutes(minutes);
}

FlowScales::FlowScales(const FlowPlot& plot, const QRectF& all, const QFontMetricsF& letters)
    : low_(plot.low), high_(std::max(plot.high, plot.low + 1e-6)), logarithmic_(plot.logarithmic) {
  const double letter = letters.averageCharWidth(), line = letters.height();
  const double right = plot.rightCaption.isEmpty() ? 3 * letter : 11 * letter;
  const double notes = line * 1.15 * static_cast<double>(plot.notes.size());
  field_ = QRectF(all.left() + 11 * letter, all.top() + 4.2 * line, all.width() - 11 * letter - right,
                  std::max(line, all.height() - 7.2 * line - notes));
  for (const FlowLine& one : plot.lines) {
    Span& span = one.onRight ? right_ : left_;
    for (const FlowPoint& point : one.points) {
      if (point.x < low_ || point.x > high_ || (logarithmic_ && point.y <= 0)) continue;
      const double y = logarithmic_ ? std::log10(point.y) : point.y;
      span.low = span.used ? std::min(span.low, y) : y;
      span.high = span.used ? std::max(span.high, y) : y;
      span.used = true;
    }
  }
  for (Span* span : {&left_, &right_}) {
    if (!logarithmic_) span->low = std::min(span->low, 0.0);
    const double room = span->high > span->low ? 0.06 * (span->high - span->low) : 1;
    span->high += room;
    if (logarithmic_) span->low -= room;
  }
}

std::optional<QPointF> FlowScales::Place(const FlowLine& line, const FlowPoint& point) const {
  if (logarithmic_ && point.y <= 0) return std::nullopt;
  const Span& span = line.onRight ? right_ : left_;
  const double y = ((logarithmic_ ? std::log10(point.y) : point.y) - span.low) / (span.high - span.low);
  return QPointF(field_.left() + (point.x - low_) / (high_ - low_) * field_.width(),
                 field_.bottom() - y * field_.height());
}

double FlowScales::XAt(double left) const {
  return low_ + (left - field_.left()) / field_.width() * (high_ - low_);
}

std::optional<FlowPlace> FlowPointNear(const FlowPlot& plot, const FlowScales& scales, const QPointF& place) {
  std::optional<FlowPlace> nearest;
  double least = kReach;
  for (std::size_t line = 0; line < plot.lines.size(); ++line) {
    const std::vector<FlowPoint>& points = plot.lines[line].points;
    const double from = scales.XAt(place.x() - kReach), to = scales.XAt(place.x() + kReach);
    auto point = std::ranges::lower_bound(points, from, {}, &FlowPoint::x);
    for (; point != points.end() && point->x <= to; ++point) {
      const auto at = scales.Place(plot.lines[line], *point);
      const double away = at ? std::hypot(at->x() - place.x(), at->y() - place.y()) : kReach;
      if (away >= least) continue;
      least = away;
      nearest = FlowPlace{line, static_cast<std::size_t>(point - points.begin())};
    }
  }
  return nearest;
}

QString FlowPointText(const FlowPlot& plot, const FlowPlace& place) {
  const FlowLine& line = plot.lines[place.line];
  const FlowPoint& point = line.points[place.point];
  const QString at = plot.Percent() ? QString::number(point.x, 'f', 1) + QStringLiteral(" %")
                                    : DateTimeText(FlowTimeOf(plot, line.waterYear, point.x));
  const QString value = line.isLevel ? NumberText(point.y) + QStringLiteral(" cm")
                                     : DischargeDigits(point.y) + QStringLiteral(" m³/s");
  return QStringLiteral("%1:  %2  %3%4")
      .arg(line.name, at, value, point.flagged ? QStringLiteral(" *") : QString());
}

}  // namespace vesk
