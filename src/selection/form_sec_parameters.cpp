// The right column of the selection window: what is known of the choice, or the graph list.
#include <QHBoxLayout>
#include <QScrollBar>
#include <QSplitter>

#include "review/setup_parameters.h"
#include "selection/form_sec_maker.h"

namespace vesk {
namespace {

class RightColumnMaker : public FormSecMaker {
 public:
  using FormSecMaker::FormSecMaker;

  QWidget* RightColumn() {
    c_.RightParts = Named(new QSplitter(Qt::Vertical, &form_), "RightParts");
    c_.RightParts->addWidget(SetupParameters());
    c_.RightParts->addWidget(LoadedFiles());
    c_.Label10 = Named(new QLabel(Say(Wording{u"Açıklamalar", u"Messages"}), &form_), "Label10");
    c_.ListMsj = List("ListMsj");
    c_.ListMsj->setWordWrap(true);
    c_.ListMsj->setUniformItemSizes(false);
    c_.ListMsj->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    c_.RightParts->addWidget(Titled(c_.Label10, c_.ListMsj));
    c_.RightParts->setStretchFactor(0, 3);
    c_.RightParts->setStretchFactor(1, 1);
    c_.RightParts->setStretchFactor(2, 1);
    c_.Parameters = c_.RightParts;
    c_.Parameters->setMinimumWidth(4030 / kTwipsPerPixel);
    return c_.Parameters;
  }

  QWidget* GraphColumn() {
    c_.ListGraf = List("ListGraf");
    auto* title = new QLabel(language_.Text(Caption::List), &form_);
    c_.CmdCiz = Button(language_.Text(Caption::Draw), "CmdCiz");
    c_.CmdListSil = Button(Text(u"Listeyi Sil", Caption::ClearList), "CmdListSil");
    c_.CmdListe = Button(language_.Text(Caption::List), "CmdListe");
    c_.CmdListe->setToolTip(Say(Wording{u"Son çizimin grafik dosyalarından yeniden çiz",
                                        u"Draw again from the last drawing's graph files"}));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(c_.CmdCiz);
    buttons->addWidget(c_.CmdListSil);
    buttons->addWidget(c_.CmdListe);
    buttons->addStretch();
    c_.GraphPanel = Titled(title, c_.ListGraf, buttons);
    c_.GraphPanel->setObjectName(QStringLiteral("GraphPanel"));
    return c_.GraphPanel;
  }

 private:
  QWidget* SetupParameters() {
    c_.Label4 = Named(new QLabel(Text(u"SET-UP PARAMETRELERİ", Caption::SetupParameters), &form_), "Label4");
    c_.VS0 = Table("VS0", kSetupRows, 2);
    c_.VS0->horizontalHeader()->hide();
    for (int row = 0; row < kSetupRows; ++row) {
      auto* label = new QTableWidgetItem(SetupLabels()[static_cast<std::size_t>(row)]);
      label->setFlags(Qt::ItemIsEnabled);
      c_.VS0->setItem(row, 0, label);
      auto* value = new QTableWidgetItem;
      value->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
      c_.VS0->setItem(row, 1, value);
    }
    c_.VS0->horizontalHeader()->setMinimumSectionSize(2000 / kTwipsPerPixel / 2);
    c_.VS0->resizeColumnToContents(0);
    // Values share what the labels leave and carry a tool tip; no scroll bar may hide them.
    c_.VS0->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    c_.VS0->setMinimumWidth(c_.VS0->columnWidth(0) + 2000 / kTwipsPerPixel / 2 +
                            c_.VS0->verticalScrollBar()->sizeHint().width());
    c_.VS0->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    c_.VS0->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    return Titled(c_.Label4, c_.VS0);
  }

  QWidget* LoadedFiles() {
    c_.VS_Dosyalar = Table("VS_Dosyalar", 0, 1);
    c_.VS_Dosyalar->setHorizontalHeaderLabels({Say(Wording{u"Yüklenen dosyalar", u"Loaded files"})});
    c_.VSsatir = List("VSsatir");
    QWidget* changed = Titled(new QLabel(Say(Wording{u"Satir No", u"Row no."}), &form_), c_.VSsatir);
    changed->setMaximumWidth(90);
    c_.ChangedRows = changed;
    c_.LoadedFiles = new QWidget(&form_);
    auto* row = new QHBoxLayout(c_.LoadedFiles);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(c_.VS_Dosyalar, 1);
    row->addWidget(changed);
    return c_.LoadedFiles;
  }
};

}  // namespace

QWidget* MakeParameterColumn(QWidget& form, const Language& language, FormSecControls& controls) {
  return RightColumnMaker(form, language, controls).RightColumn();
}

QWidget* MakeGraphColumn(QWidget& form, const Language& language, FormSecControls& controls) {
  return RightColumnMaker(form, language, controls).GraphColumn();
}

}  // namespace vesk
