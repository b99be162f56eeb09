#include "selection/form_sec_controls.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QScrollArea>
#include <QSplitter>
#include <QToolButton>

#include "selection/changed_rows_list.h"
#include "selection/chooser_panel.h"
#include "selection/findings_panel.h"
#include "selection/form_sec_parts.h"
#include "selection/graph_list_panel.h"
#include "selection/hydrograph_pane.h"
#include "selection/message_list.h"
#include "selection/range_bar.h"
#include "selection/review_grid_view.h"
#include "selection/setup_table.h"
#include "shell/tab_order.h"

namespace vesk {
namespace {

/// Puts the parts together.
class WholeWindow : public FormSecPart {
 public:
  using FormSecPart::FormSecPart;

  void Build(RowSelection& selection) {
    c_.columns = new QSplitter(Qt::Horizontal, &parent_);
    c_.columns->setObjectName(QStringLiteral("Columns"));
    c_.chooser = new ChooserPanel(language_, &parent_);
    c_.graphList = new GraphListPanel(language_, &parent_);
    c_.columns->addWidget(c_.chooser);
    c_.columns->addWidget(MakeReviewPanel(parent_, language_, c_, selection));
    c_.columns->addWidget(MakeParameterColumn(parent_, language_, c_));
    c_.columns->addWidget(c_.graphList);
    c_.columns->setStretchFactor(0, 0);
    c_.columns->setStretchFactor(1, 1);
    c_.columns->setStretchFactor(2, 0);
    c_.columns->setStretchFactor(3, 1);
    for (QSplitter* splitter :
         {c_.columns, &c_.chooser->Parts(), c_.rightParts, c_.benchColumns, c_.benchRows}) {
      splitter->setChildrenCollapsible(false);
      splitter->setHandleWidth(kGap + 2);
    }
    c_.content = new QWidget(&parent_);
    auto* all = new QVBoxLayout(c_.content);
    all->setContentsMargins(kGap, kGap, kGap, kGap);
    all->addWidget(c_.columns, 1);
    all->addLayout(BottomLine());
    LetScroll();
    OrderTabs();
  }

 private:
  /// Large letters on a small screen may need more room than there is.
  void LetScroll() {
    auto* area = new QScrollArea(&parent_);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(c_.content);
    auto* whole = new QVBoxLayout(&parent_);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
  }

  QLayout* BottomLine() {
    c_.status = Named(new QLabel(&parent_), "StatusLine");
    c_.status->setTextFormat(Qt::PlainText);
    c_.status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    c_.progress = Named(new QProgressBar(&parent_), "ProgressBar1");
    c_.progress2 = Named(new QProgressBar(&parent_), "ProgressBar2");
    for (QProgressBar* bar : {c_.progress, c_.progress2}) bar->setMaximumWidth(160);
    c_.confirm = Button(QStringLiteral("..."), "CmdTamam");
    c_.cancel = Button(language_.Text(Caption::Cancel), "CmdVazgec");
    constexpr int kButtonWidth = 2400 / kTwipsPerPixel;
    c_.confirm->setMinimumWidth(kButtonWidth);
    c_.cancel->setMinimumWidth(kButtonWidth);
    auto* row = new QHBoxLayout;
    row->addWidget(c_.status, 1);
    row->addWidget(c_.progress);
    row->addWidget(c_.progress2);
    row->addWidget(c_.confirm);
    row->addWidget(c_.cancel);
    return row;
  }

  void OrderTabs() const {
    std::vector<QWidget*> stops = c_.chooser->TabStops();
    const auto add = [&stops](const std::vector<QWidget*>& more) {
      stops.insert(stops.end(), more.begin(), more.end());
    };
    add({c_.confirm, c_.foldChooser, c_.curve, c_.foldHydrograph, c_.zeroBased, c_.grid});
    add(c_.findings->TabStops());
    add({c_.hydrograph});
    add(c_.rangeBar->TabStops());
    add({c_.previousChange, c_.nextChange, c_.undoAll, c_.save, c_.date, c_.goToDate, c_.lastReading,
         c_.correctDates, c_.clockPairs, c_.removeCorrection, c_.makeTable, c_.drawGraph, c_.closePanel});
    add(c_.graphList->TabStops());
    add({c_.setup, c_.loadedFiles, c_.changedRows, c_.messages, c_.cancel});
    ChainTabOrder(stops);
  }
};

}  // namespace

FormSecControls BuildFormSecControls(QWidget& form, const Language& language, RowSelection& selection) {
  FormSecControls controls;
  WholeWindow(form, language, controls).Build(selection);
  return controls;
}

}  // namespace vesk
