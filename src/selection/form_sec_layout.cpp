// Sizes of the selection window: where it starts, and what the operator made of it, kept between runs.
#include <QSplitter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

#include "selection/chooser_panel.h"
#include "selection/control_maker.h"
#include "selection/form_sec.h"
#include "selection/hydrograph_pane.h"
#include "selection/review_grid_view.h"
#include "selection/setup_table.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

QString Section() {
  return QStringLiteral("FormSec");
}

/// Starting height of a mode, pixels.
int StartingHeight(WorkMode mode) {
  switch (mode) {
    case WorkMode::LevelTable:
    case WorkMode::DischargeTable:
      return 4365 / kTwipsPerPixel;
    case WorkMode::MultipleGraph:
      return 6300 / kTwipsPerPixel;
    default:
      return 8595 / kTwipsPerPixel;
  }
}

QString JoinSizes(const QList<int>& sizes) {
  QStringList texts;
  for (const int size : sizes) texts += QString::number(size);
  return texts.join(QLatin1Char(','));
}

/// Empty unless the text holds exactly that many numbers, none of them negative.
QList<int> SplitSizes(const QString& text, qsizetype count) {
  QList<int> sizes;
  for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
    bool ok = false;
    const int size = part.trimmed().toInt(&ok);
    if (!ok || size < 0 || size > 20000) return {};
    sizes += size;
  }
  return sizes.size() == count ? sizes : QList<int>();
}

}  // namespace

QSize FormSec::sizeHint() const {
  const bool collecting = workMode_ == WorkMode::MultipleGraph;
  const int width = collecting ? 720 : 1340;
  return QSize(width, StartingHeight(workMode_)).expandedTo(c_.content->minimumSizeHint());
}

void FormSec::RestoreLayout() {
  c_.columns->updateGeometry();  // its least size is that of the parts which the mode shows
  const bool collecting = workMode_ == WorkMode::MultipleGraph;
  const auto read = [this](const char* key) {
    return run_.settings.ReadSetting(Section(), QLatin1String(key));
  };
  const QList<int> size = SplitSizes(read(collecting ? "GraphSize" : "Size"), 2);
  resize(size.isEmpty() ? sizeHint() : QSize(size[0], size[1]).expandedTo(minimumSizeHint()));
  setProperty(kOpensMaximised, read(collecting ? "GraphMaximized" : "Maximized") == QLatin1String("1"));
  const QList<int> columns = SplitSizes(read(collecting ? "GraphColumns" : "Columns"), c_.columns->count());
  const QList<int> left =
      SplitSizes(read(collecting ? "GraphLeftParts" : "LeftParts"), c_.chooser->Parts().count());
  const QList<int> right = SplitSizes(read("RightParts"), c_.rightParts->count());
  const QList<int> benchColumns = SplitSizes(read("BenchColumns"), c_.benchColumns->count());
  const QList<int> benchRows = SplitSizes(read("BenchRows"), c_.benchRows->count());
  columnsAreKept_ = !columns.isEmpty();
  c_.columns->setSizes(columnsAreKept_ ? columns : QList<int>{260, 720, 310, 380});
  c_.chooser->Parts().setSizes(
      left.isEmpty() ? QList<int>{150, collecting ? 220 : 130, collecting ? 110 : 200} : left);
  c_.rightParts->setSizes(right.isEmpty() ? QList<int>{330, 90, 100} : right);
  c_.benchColumns->setSizes(benchColumns.isEmpty() ? QList<int>{570, 430} : benchColumns);
  c_.benchRows->setSizes(benchRows.isEmpty() ? QList<int>{300, 200} : benchRows);
  ShowHydrograph(read("Hydrograph") != QLatin1String("0"));
  c_.zeroBased->setChecked(read("HydrographFromZero") == QLatin1String("1"));
  chooserStays_ = read("ChooserStays") == QLatin1String("1");
}

// A narrow window, or large letters, leave the side columns what they need and give the grid the rest.
void FormSec::FitColumns() {
  if (columnsAreKept_ || workMode_ == WorkMode::MultipleGraph) return;
  const int all = c_.columns->width() - 2 * c_.columns->handleWidth();
  const int left = std::max(
      {std::min(all * 19 / 100, 260), c_.chooser->minimumSizeHint().width(), c_.chooser->FileListWidth()});
  const int right =
      std::max({std::min(all * 23 / 100, 310), c_.parameters->minimumWidth(),
                c_.setup->columnWidth(0) + WidthToShow(*c_.setup, QStringLiteral("00/00/0000 00:00"))});
  // The grid comes first: tried without its scroll bar's room, it shows what its columns lack.
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  c_.columns->setSizes({left, all - left - right - bar, right + bar, 0});
  const int lacking = std::max(0, c_.grid->horizontalHeader()->length() - c_.grid->viewport()->width());
  c_.columns->setSizes({left, all - left - right + lacking, right - lacking, 0});
}

void FormSec::KeepLayout() const {
  const bool collecting = workMode_ == WorkMode::MultipleGraph;
  // A layout that cannot be kept is no loss worth a message on the way out.
  const auto write = [this](const char* key, const QList<int>& sizes) {
    static_cast<void>(run_.settings.WriteSetting(Section(), QLatin1String(key), JoinSizes(sizes)));
  };
  const QWidget* frame = parentWidget() == nullptr ? this : parentWidget();
  write(collecting ? "GraphMaximized" : "Maximized", {frame->isMaximized() ? 1 : 0});
  if (!frame->isMaximized()) write(collecting ? "GraphSize" : "Size", {width(), height()});
  if (!c_.chooser->isHidden()) write(collecting ? "GraphColumns" : "Columns", c_.columns->sizes());
  if (!c_.chooser->isHidden())
    write(collecting ? "GraphLeftParts" : "LeftParts", c_.chooser->Parts().sizes());
  if (collecting) return;
  write("RightParts", c_.rightParts->sizes());
  write("BenchColumns", c_.benchColumns->sizes());
  // A hidden part has no size: the one that it had is kept.
  if (!c_.hydrograph->isHidden()) write("BenchRows", c_.benchRows->sizes());
  write("Hydrograph", {c_.foldHydrograph->isChecked() ? 1 : 0});
  write("HydrographFromZero", {c_.zeroBased->isChecked() ? 1 : 0});
  write("ChooserStays", {chooserStays_ ? 1 : 0});
}

}  // namespace vesk
