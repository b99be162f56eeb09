// The picture of a rating curve: gaugings and curve with its band, residuals below. One drawing for the
// screen, paper and files.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

#include "platform/result.h"
#include "ratings/curve_draft.h"
#include "ratings/fit_curve.h"
#include "ratings/rating_curve.h"

namespace vesk {

/// What is drawn.
struct CurvePlot {
  RatingCurve curve;
  std::size_t period = 0;                   ///< of the curve
  std::optional<CurvePeriod> older = {};    ///< behind it, for comparison
  std::optional<CurveFit> fit = {};         ///< residuals of the period's gaugings
  bool logarithmic = false;                 ///< ln Q over ln (h - c), c of the lowest segment
  bool handles = false;                     ///< nodes that can be dragged
  std::optional<std::size_t> gauging = {};  ///< the one that is looked at
  std::optional<std::size_t> node = {};

  [[nodiscard]] const CurvePeriod& Period() const { return curve.periods[period]; }
};

/// Where levels and discharges lie in a picture of that size: both axes are linear in their scaled values.
class CurveScales {
 public:
  CurveScales(const CurvePlot& plot, const QRectF& all, const QFontMetricsF& letters);

  [[nodiscard]] QRectF Field() const { return field_; }          ///< of gaugings and curve
  [[nodiscard]] QRectF Residuals() const { return residuals_; }  ///< below it, over the same discharges
  /// Nothing for a value that the scale has no place for: on logarithms 0, or a level not above c.
  [[nodiscard]] std::optional<QPointF> Place(double levelCm, double m3s) const;
  [[nodiscard]] std::optional<QPointF> ResidualPlace(double m3s, double percent) const;
  /// Level and discharge at a place of the picture.
  [[nodiscard]] CurveNode At(const QPointF& place) const;
  [[nodiscard]] double OffsetCm() const { return offset_; }
  [[nodiscard]] double MostResidual() const { return mostResidual_; }
  struct Span {
    double low = 0, high = 1;  ///< as scaled
  };
  [[nodiscard]] Span Levels() const { return levels_; }
  [[nodiscard]] Span Discharges() const { return discharges_; }
  [[nodiscard]] bool Logarithmic() const { return logarithmic_; }

 private:
  [[nodiscard]] double Scaled(double value) const;
  [[nodiscard]] std::vector<CurveNode> Everything(const CurvePlot& plot) const;

  QRectF field_, residuals_;
  bool logarithmic_;
  double offset_ = 0;
  Span levels_, discharges_;
  double mostResidual_ = 10;
};

void DrawCurvePlot(QPainter& painter, const QRectF& all, const CurvePlot& plot, LanguageChoice language);

/// The gauging (place in the period) or node that a place of the picture means: the nearest one within reach.
std::optional<std::size_t> GaugingNear(const CurvePlot& plot, const CurveScales& scales,
                                       const QPointF& place);
std::optional<std::size_t> NodeNear(const CurvePlot& plot, const CurveScales& scales, const QPointF& place);

/// Writes picture, figures of the fit and residuals as A4 pages (PDF), whole or not at all.
Status WriteCurveReport(const QString& path, const CurvePlot& plot, LanguageChoice language);
/// Draws the same pages; newPage begins the next one and is false when there can be none.
void DrawCurveReport(QPainter& painter, const QRectF& page, const CurvePlot& plot, LanguageChoice language,
                     const std::function<bool()>& newPage);
/// Writes the picture alone, by the ending of the name: PNG, PDF or SVG.
Status WriteCurvePicture(const QString& path, const CurvePlot& plot, LanguageChoice language);

}  // namespace vesk
