// The hydrograph beside the review grid: the same readings, the same selection. It draws what it is given and
// writes the selection; corrections and findings are the window's affair.
#pragma once

#include <QPixmap>
#include <QWidget>

#include <optional>
#include <utility>
#include <vector>

#include "graphs/graph_scales.h"
#include "graphs/review_points.h"
#include "review/range_correction.h"
#include "review/row_selection.h"

namespace vesk {

class Language;

/// A finding on the time axis.
struct HydrographMark {
  DateTime from{}, to{};
  bool doubt = true;  ///< false: a note, drawn back
  bool gap = false;   ///< readings are missing: shaded
};

class HydrographPane : public QWidget {
  Q_OBJECT

 public:
  HydrographPane(RowSelection& selection, const Language& language, QWidget* parent);

  /// A new load, or none: shows all of it. The series must stay until another one, or none, is set.
  void SetSeries(const StationSeries* series);
  /// Levels, or rows, are others now; what is looked at stays.
  void SeriesChanged();
  void SetMarks(std::vector<HydrographMark> marks);
  /// Levels that a correction would give, ascending rows; none: no preview.
  void SetPreview(const std::vector<LevelChange>& changes);
  /// The level axis begins at 0, else it fits the readings that are seen.
  void SetZeroBased(bool zeroBased);
  [[nodiscard]] bool ZeroBased() const { return zeroBased_; }
  /// Brings rows into view, with what is around them.
  void ShowRows(int first, int last);
  void ShowAll();

  /// What is seen, minutes of the graph's time.
  [[nodiscard]] const MinuteSpan& Seen() const { return seen_; }
  [[nodiscard]] const ReviewPoints& Points() const { return points_; }
  /// Where the plot stands for a time and a level, widget coordinates.
  [[nodiscard]] QPointF PointOf(double minutes, double levelCm) const;

  [[nodiscard]] QSize sizeHint() const override { return {640, 220}; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  struct Drag {
    QPointF from;
    MinuteSpan seen;       ///< when it began
    bool selects = false;  ///< with Shift: a time span; else it pans
    bool moved = false;
  };

  void Look(const MinuteSpan& span);
  void Redraw();
  void FollowCurrent(int row);
  void GoTo(std::size_t place);
  void SelectBetween(double one, double other);
  [[nodiscard]] double MinutesAt(double x) const;
  [[nodiscard]] PageScale Scale() const;
  void DrawBase();
  void DrawMarks(QPainter& painter, const PageScale& scale) const;
  void DrawSelection(QPainter& painter) const;
  void DrawPreview(QPainter& painter) const;
  void DrawCurrent(QPainter& painter) const;
  [[nodiscard]] QString TextOf(const GraphPoint& point) const;

  RowSelection& selection_;
  const Language& language_;
  const StationSeries* series_ = nullptr;
  ReviewPoints points_;
  MinuteSpan seen_;
  PageScale scale_;
  QPixmap base_;
  bool baseIsOld_ = true;
  bool zeroBased_ = false;
  std::vector<HydrographMark> marks_;
  std::vector<GraphPoint> preview_;
  std::optional<Drag> drag_;
};

}  // namespace vesk
