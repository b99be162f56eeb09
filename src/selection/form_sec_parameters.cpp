// The right column of the selection window: what is known of the choice, or the graph list.
#include <QHBoxLayout>
#include <QSplitter>

#include "selection/changed_rows_list.h"
#include "selection/form_sec_maker.h"
#include "selection/message_list.h"
#include "selection/setup_table.h"

namespace vesk {
namespace {

class RightColumnMaker : public FormSecMaker {
 public:
  using FormSecMaker::FormSecMaker;

  QWidget* RightColumn() {
    c_.rightParts = Named(new QSplitter(Qt::Vertical, &form_), "RightParts");
    c_.rightParts->addWidget(SetupParameters());
    c_.rightParts->addWidget(LoadedFiles());
    c_.messagesTitle = Named(new QLabel(Say(Wording{u"Açıklamalar", u"Messages"}), &form_), "Label10");
    c_.messages = new MessageList(language_, &form_);
    c_.rightParts->addWidget(Titled(c_.messagesTitle, c_.messages));
    c_.rightParts->setStretchFactor(0, 3);
    c_.rightParts->setStretchFactor(1, 1);
    c_.rightParts->setStretchFactor(2, 1);
    c_.parameters = c_.rightParts;
    c_.parameters->setMinimumWidth(4030 / kTwipsPerPixel);
    return c_.parameters;
  }

  QWidget* GraphColumn() {
    c_.graphList = List("ListGraf");
    auto* title = new QLabel(language_.Text(Caption::List), &form_);
    c_.drawList = Button(language_.Text(Caption::Draw), "CmdCiz");
    c_.clearList = Button(Text(u"Listeyi Sil", Caption::ClearList), "CmdListSil");
    c_.storedGraphs = Button(language_.Text(Caption::List), "CmdListe");
    c_.storedGraphs->setToolTip(Say(Wording{u"Son çizimin grafik dosyalarından yeniden çiz",
                                            u"Draw again from the last drawing's graph files"}));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(c_.drawList);
    buttons->addWidget(c_.clearList);
    buttons->addWidget(c_.storedGraphs);
    buttons->addStretch();
    c_.graphPanel = Titled(title, c_.graphList, buttons);
    c_.graphPanel->setObjectName(QStringLiteral("GraphPanel"));
    return c_.graphPanel;
  }

 private:
  QWidget* SetupParameters() {
    c_.setupTitle =
        Named(new QLabel(Text(u"SET-UP PARAMETRELERİ", Caption::SetupParameters), &form_), "Label4");
    c_.setup = new SetupTable(&form_);
    return Titled(c_.setupTitle, c_.setup);
  }

  QWidget* LoadedFiles() {
    c_.loadedFiles = Table("VS_Dosyalar", 0, 1);
    c_.loadedFiles->setHorizontalHeaderLabels({Say(Wording{u"Yüklenen dosyalar", u"Loaded files"})});
    c_.changedRows = new ChangedRowsList(&form_);
    QWidget* changed = Titled(new QLabel(Say(Wording{u"Satir No", u"Row no."}), &form_), c_.changedRows);
    changed->setMaximumWidth(90);
    c_.changedPart = changed;
    c_.loadedPart = new QWidget(&form_);
    auto* row = new QHBoxLayout(c_.loadedPart);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(c_.loadedFiles, 1);
    row->addWidget(changed);
    return c_.loadedPart;
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
