#include "selection/form_sec_controls.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QScrollArea>
#include <QSplitter>

#include "selection/form_sec_maker.h"
#include "selection/review_grid_view.h"
#include "shell/folder_lists.h"
#include "shell/tab_order.h"

namespace vesk {
namespace {

/// Puts the parts together.
class WholeWindow : public FormSecMaker {
 public:
  using FormSecMaker::FormSecMaker;

  void Build() {
    c_.Columns = new QSplitter(Qt::Horizontal, &form_);
    c_.Columns->setObjectName(QStringLiteral("Columns"));
    c_.Columns->addWidget(MakeChoiceColumn(form_, language_, c_));
    c_.Columns->addWidget(MakeReviewPanel(form_, language_, c_));
    c_.Columns->addWidget(MakeParameterColumn(form_, language_, c_));
    c_.Columns->addWidget(MakeGraphColumn(form_, language_, c_));
    c_.Columns->setStretchFactor(0, 0);
    c_.Columns->setStretchFactor(1, 1);
    c_.Columns->setStretchFactor(2, 0);
    c_.Columns->setStretchFactor(3, 1);
    for (QSplitter* splitter : {c_.Columns, c_.LeftParts, c_.RightParts}) {
      splitter->setChildrenCollapsible(false);
      splitter->setHandleWidth(kGap + 2);
    }
    c_.Content = new QWidget(&form_);
    auto* all = new QVBoxLayout(c_.Content);
    all->setContentsMargins(kGap, kGap, kGap, kGap);
    all->addWidget(c_.Columns, 1);
    all->addLayout(BottomLine());
    LetScroll();
    OrderTabs();
  }

 private:
  /// Large letters on a small screen may need more room than there is.
  void LetScroll() {
    auto* area = new QScrollArea(&form_);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(c_.Content);
    auto* whole = new QVBoxLayout(&form_);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
  }

  QLayout* BottomLine() {
    c_.StatusLine = Named(new QLabel(&form_), "StatusLine");
    c_.StatusLine->setTextFormat(Qt::PlainText);
    c_.StatusLine->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    c_.ProgressBar1 = Named(new QProgressBar(&form_), "ProgressBar1");
    c_.ProgressBar2 = Named(new QProgressBar(&form_), "ProgressBar2");
    for (QProgressBar* bar : {c_.ProgressBar1, c_.ProgressBar2}) bar->setMaximumWidth(160);
    c_.CmdTamam = Button(QStringLiteral("..."), "CmdTamam");
    c_.CmdVazgec = Button(language_.Text(Caption::Cancel), "CmdVazgec");
    constexpr int kButtonWidth = 2400 / kTwipsPerPixel;
    c_.CmdTamam->setMinimumWidth(kButtonWidth);
    c_.CmdVazgec->setMinimumWidth(kButtonWidth);
    auto* row = new QHBoxLayout;
    row->addWidget(c_.StatusLine, 1);
    row->addWidget(c_.ProgressBar1);
    row->addWidget(c_.ProgressBar2);
    row->addWidget(c_.CmdTamam);
    row->addWidget(c_.CmdVazgec);
    return row;
  }

  void OrderTabs() const {
    ChainTabOrder({c_.Drive1,   c_.Dir1,     c_.ListIst,     c_.ListSuYili, c_.ListOrjDos, c_.Text7,
                   c_.Command2, c_.CmdTamam, c_.VS1,         c_.Command7,   c_.Command6,   c_.CmdUndo,
                   c_.Command4, c_.Text6,    c_.Command8,    c_.Text8,      c_.Command10,  c_.CmdSaatSil,
                   c_.Command3, c_.CmdGrf,   c_.Command1,    c_.ListGraf,   c_.CmdCiz,     c_.CmdListSil,
                   c_.CmdListe, c_.VS0,      c_.VS_Dosyalar, c_.VSsatir,    c_.ListMsj,    c_.CmdVazgec});
  }
};

}  // namespace

FormSecControls BuildFormSecControls(QWidget& form, const Language& language) {
  FormSecControls controls;
  WholeWindow(form, language, controls).Build();
  return controls;
}

}  // namespace vesk
