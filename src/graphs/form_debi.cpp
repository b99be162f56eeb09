#include "graphs/form_debi.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

#include "graphs/graph_labels.h"

namespace vesk {

FlowPlotView::FlowPlotView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("CizimDebi"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
}

void FlowPlotView::Show(FlowPlot plot) {
  plot_ = std::move(plot);
  low_ = plot_.low;
  high_ = plot_.high;
  LookAt({});
}

QPointF FlowPlotView::PlaceOf(const FlowPlace& place) const {
  const FlowScales scales(plot_, rect(), fontMetrics());
  const FlowLine& line = plot_.lines[place.line];
  return scales.Place(line, line.points[place.point]).value_or(QPointF());
}

void FlowPlotView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  painter.setFont(font());
  DrawFlowPlot(painter, rect(), plot_);
  if (place_) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.6));
    painter.drawEllipse(PlaceOf(*place_), 5, 5);
  }
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void FlowPlotView::LookAt(const std::optional<FlowPlace>& place) {
  place_ = place;
  Q_EMIT Told(place ? FlowPointText(plot_, *place) : QString());
  update();
}

void FlowPlotView::mouseMoveEvent(QMouseEvent* event) {
  const FlowScales scales(plot_, rect(), fontMetrics());
  LookAt(FlowPointNear(plot_, scales, event->position()));
}

/// Keeps what lies at `about` where it is.
void FlowPlotView::Zoom(double about, double factor) {
  constexpr double kLeastShare = 1e-3;  // of the whole
  const double wide =
      std::clamp((plot_.high - plot_.low) * factor, (high_ - low_) * kLeastShare, high_ - low_);
  const double share = (about - plot_.low) / (plot_.high - plot_.low);
  plot_.low = std::clamp(about - share * wide, low_, high_ - wide);
  plot_.high = plot_.low + wide;
  update();
}

void FlowPlotView::Pan(double share) {
  const double wide = plot_.high - plot_.low;
  plot_.low = std::clamp(plot_.low + share * wide, low_, high_ - wide);
  plot_.high = plot_.low + wide;
  update();
}

void FlowPlotView::wheelEvent(QWheelEvent* event) {
  const FlowScales scales(plot_, rect(), fontMetrics());
  constexpr double kStep = 0.8;
  Zoom(scales.XAt(event->position().x()), event->angleDelta().y() > 0 ? kStep : 1 / kStep);
}

void FlowPlotView::Step(int points, int lines) {
  if (plot_.Empty()) return;
  FlowPlace at = place_.value_or(FlowPlace{});
  const auto count = static_cast<int>(plot_.lines.size());
  if (lines != 0 || plot_.lines[at.line].points.empty()) {
    const double x =
        plot_.lines[at.line].points.empty() ? plot_.low : plot_.lines[at.line].points[at.point].x;
    do {
      at.line = static_cast<std::size_t>((static_cast<int>(at.line) + count + (lines < 0 ? -1 : 1)) % count);
    } while (plot_.lines[at.line].points.empty());
    const auto& other = plot_.lines[at.line].points;
    const auto near = std::ranges::lower_bound(other, x, {}, &FlowPoint::x);
    at.point = near == other.end() ? other.size() - 1 : static_cast<std::size_t>(near - other.begin());
  } else if (place_) {
    const auto last = static_cast<int>(plot_.lines[at.line].points.size()) - 1;
    at.point = static_cast<std::size_t>(std::clamp(static_cast<int>(at.point) + points, 0, last));
  }
  const double x = plot_.lines[at.line].points[at.point].x;
  if (x < plot_.low || x > plot_.high) Pan((x - (plot_.low + plot_.high) / 2) / (plot_.high - plot_.low));
  LookAt(at);
}

void FlowPlotView::keyPressEvent(QKeyEvent* event) {
  constexpr int kMany = 50;
  constexpr double kZoom = 0.6, kPan = 0.25;
  const int step = event->modifiers().testFlag(Qt::ControlModifier) ? kMany : 1;
  const double middle = (plot_.low + plot_.high) / 2;
  switch (event->key()) {
    case Qt::Key_Left:
      return Step(-step, 0);
    case Qt::Key_Right:
      return Step(step, 0);
    case Qt::Key_Up:
      return Step(0, 1);
    case Qt::Key_Down:
      return Step(0, -1);
    case Qt::Key_Plus:
      return Zoom(middle, kZoom);
    case Qt::Key_Minus:
      return Zoom(middle, 1 / kZoom);
    case Qt::Key_PageUp:
      return Pan(-kPan);
    case Qt::Key_PageDown:
      return Pan(kPan);
    case Qt::Key_Home:
      return Zoom(middle, 1e6);
    default:
      QWidget::keyPressEvent(event);
  }
}

FormDebi::FormDebi(FlowInput input, FlowKind kind, bool severalYears, const Language& language)
    : input_(std::move(input)), language_(language) {
  setObjectName(QStringLiteral("FormDebi"));
  CreateControls(kind, severalYears);
  ShowPlot();
  setFocusProxy(view_);  // the frame gives the focus to the window itself; keys belong to the plot
  view_->setFocus();
}

FlowKind FormDebi::Kind() const {
  return static_cast<FlowKind>(kind_->currentData().toInt());
}

void FormDebi::CreateControls(FlowKind kind, bool severalYears) {
  kind_ = new QComboBox(this);
  kind_->setObjectName(QStringLiteral("ComboTur"));
  const auto add = [this](FlowKind one, const Wording& text) {
    kind_->addItem(Say(text), static_cast<int>(one));
  };
  if (input_.hasCurve) {
    add(FlowKind::Discharge, {u"Debi", u"Discharge"});
    add(FlowKind::Both, {u"Seviye ve debi", u"Level and discharge"});
  }
  add(FlowKind::Level, {u"Seviye", u"Level"});
  add(FlowKind::Duration, {u"Süreklilik eğrisi", u"Duration curve"});
  kind_->setCurrentIndex(std::max(0, kind_->findData(static_cast<int>(kind))));
  auto* label = new QLabel(Say(Wording{u"&Grafik:", u"&Graph:"}), this);
  label->setBuddy(kind_);
  several_ = new QCheckBox(Say(Wording{u"Bütün &yıllar üst üste", u"All &years over one another"}), this);
  several_->setObjectName(QStringLiteral("CheckYillar"));
  several_->setChecked(severalYears);
  logarithmic_ = new QCheckBox(Say(Wording{u"&Logaritmik", u"&Logarithmic"}), this);
  logarithmic_->setObjectName(QStringLiteral("CheckLog"));
  const auto button = [this](const char* name, const Wording& text, const QKeySequence& keys) {
    auto* made = new QPushButton(Say(text), this);
    made->setObjectName(QLatin1String(name));
    made->setToolTip(
        QStringLiteral("%1 (%2)").arg(Say(text).remove(u'&'), keys.toString(QKeySequence::NativeText)));
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, made, &QPushButton::click);
    return made;
  };
  QPushButton* save = button("CmdKaydet", {u"&Farklı kaydet...", u"Save &as..."}, QKeySequence::Save);
  QPushButton* print = button("CmdYazdir", {u"Ya&zdır...", u"&Print..."}, QKeySequence::Print);
  QPushButton* exit = button("CmdCikis", {u"&Kapat", u"&Close"}, QKeySequence(Qt::Key_Escape));
  view_ = new FlowPlotView(this);
  view_->setToolTip(Say(Wording{u"Tekerlek veya +/-: yakınlaştır, Home: tümü, oklar: okumalar ve yıllar",
                                u"Wheel or +/-: zoom, Home: all, arrows: readings and years"}));
  told_ = new QLabel(this);
  told_->setObjectName(QStringLiteral("LabelOkuma"));
  told_->setMinimumHeight(fontMetrics().height() + 4);
  auto* bar = new QHBoxLayout;
  for (QWidget* one : std::initializer_list<QWidget*>{label, kind_, several_, logarithmic_})
    bar->addWidget(one);
  bar->addStretch(1);
  for (QPushButton* one : {save, print, exit}) bar->addWidget(one);
  auto* all = new QVBoxLayout(this);
  all->addLayout(bar);
  all->addWidget(view_, 1);
  all->addWidget(told_);
  connect(kind_, &QComboBox::currentIndexChanged, this, &FormDebi::ShowPlot);
  connect(several_, &QCheckBox::toggled, this, &FormDebi::ShowPlot);
  connect(logarithmic_, &QCheckBox::toggled, this, &FormDebi::ShowPlot);
  connect(save, &QPushButton::clicked, this, &FormDebi::Save);
  connect(print, &QPushButton::clicked, this, &FormDebi::Print);
  connect(exit, &QPushButton::clicked, this, &QWidget::close);
  connect(view_, &FlowPlotView::Told, told_, &QLabel::setText);
  resize(1000, 620);
}

void FormDebi::ShowPlot() {
  const bool all = several_->isChecked() && input_.allYears;
  if (all && !all_) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    all_ = input_.allYears();
    QApplication::restoreOverrideCursor();
  }
  const FlowRequest request{Kind(), input_.station, input_.name, logarithmic_->isChecked()};
  FlowPlot plot = MakeFlowPlot(request, all ? *all_ : input_.years, language_);
  setWindowTitle(plot.title);
  view_->setAccessibleName(plot.title);
  view_->Show(std::move(plot));
}

void FormDebi::SaveTo(const QString& path) {
  const Status written = WriteFlowPlot(path, view_->Plot(), view_->size());
  told_->setText(written ? Say({Wording{u"Kaydedildi: %1", u"Saved: %1"}, path})
                         : language_.Say(written.Failure()));
}

void FormDebi::Save() {
  const QString name = QStringLiteral("%1Debi-%2.png").arg(input_.saveDirectory, input_.station);
  const QString path = QFileDialog::getSaveFileName(
      this, windowTitle(), name, QStringLiteral("PNG (*.png);;PDF (*.pdf);;SVG (*.svg);;CSV (*.csv)"));
  if (!path.isEmpty()) SaveTo(path);
}

void FormDebi::Print() {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageSize(QPageSize(QPageSize::A4));
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(windowTitle());
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  QPainter painter;
  if (!painter.begin(&printer))
    return told_->setText(Say(Wording{u"Grafik yazdırılamadı", u"The graph could not be printed"}));
  constexpr double kUnits = 96;
  const double factor = printer.resolution() / kUnits;
  painter.scale(factor, factor);
  painter.setFont(PageFont(kLabelSize + 1));
  const QSizeF size = QSizeF(printer.pageRect(QPrinter::DevicePixel).size()) / factor;
  DrawFlowPlot(painter, QRectF(QPointF(0, 0), size), view_->Plot());
}

}  // namespace vesk
