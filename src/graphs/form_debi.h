// FormDebi: graphs of discharge beside those of levels: kind, years, read-out, zoom, files and paper.
#pragma once

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

#include "graphs/flow_plot.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace vesk {

/// What the window draws from.
struct FlowInput {
  QString station, name;
  std::vector<FlowYear> years;                      ///< those that are loaded
  std::function<std::vector<FlowYear>()> allYears;  ///< every water year of the station; asked for once
  QString saveDirectory;
  bool hasCurve = false;
};

/// The plot on the screen.
class FlowPlotView : public QWidget {
  Q_OBJECT

 public:
  explicit FlowPlotView(QWidget* parent = nullptr);
  void Show(FlowPlot plot);
  [[nodiscard]] const FlowPlot& Plot() const { return plot_; }
  [[nodiscard]] QSize sizeHint() const override { return {900, 520}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {360, 240}; }
  [[nodiscard]] QPointF PlaceOf(const FlowPlace& place) const;

 Q_SIGNALS:
  void Told(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void LookAt(const std::optional<FlowPlace>& place);
  void Step(int points, int lines);
  void Zoom(double about, double factor);
  void Pan(double share);

  FlowPlot plot_;
  double low_ = 0, high_ = 0;  ///< the whole
  std::optional<FlowPlace> place_;
};

class FormDebi : public QWidget {
  Q_OBJECT

 public:
  FormDebi(FlowInput input, FlowKind kind, bool severalYears, const Language& language);
  /// Writes what is shown; what cannot be done is told in the window.
  void SaveTo(const QString& path);

 private:
  void CreateControls(FlowKind kind, bool severalYears);
  void ShowPlot();
  void Save();
  void Print();
  [[nodiscard]] QString Say(const Message& message) const { return language_.Say(message); }
  [[nodiscard]] FlowKind Kind() const;

  FlowInput input_;
  Language language_;
  std::optional<std::vector<FlowYear>> all_;
  QComboBox* kind_ = nullptr;
  QCheckBox* several_ = nullptr;
  QCheckBox* logarithmic_ = nullptr;
  FlowPlotView* view_ = nullptr;
  QLabel* told_ = nullptr;
};

}  // namespace vesk
