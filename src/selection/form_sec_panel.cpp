// The middle of the selection window: the review grid, its corrections, and what is made from it.
#include <QHBoxLayout>

#include "selection/form_sec_maker.h"
#include "selection/review_grid_view.h"
#include "shell/flow_layout.h"

namespace vesk {
namespace {

class ReviewPanelMaker : public FormSecMaker {
 public:
  using FormSecMaker::FormSecMaker;

  QWidget* ReviewPanel() {
    c_.Frame3 = Named(new QWidget(&form_), "Frame3");
    c_.LoadedLabel = Named(new QLabel(&form_), "LoadedLabel");
    c_.LoadedLabel->setTextFormat(Qt::PlainText);
    c_.LoadedLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QFont bold = c_.LoadedLabel->font();
    bold.setBold(true);
    c_.LoadedLabel->setFont(bold);
    c_.RowLabel = Named(new QLabel(&form_), "RowLabel");
    auto* heading = new QHBoxLayout;
    heading->addWidget(c_.LoadedLabel, 1);
    heading->addWidget(c_.RowLabel);
    c_.VS1 = Named(new ReviewGridView(&form_), "VS1");
    c_.VS1->setMinimumHeight(8 * form_.fontMetrics().height());
    c_.VS1->setAccessibleName(language_.Text(Caption::RawData));
    auto* lower = new FlowLayout(kGap);
    lower->addWidget(DateJump());
    lower->addWidget(DateCorrectionBox());
    AddGridCommands(*lower);
    auto* column = new QVBoxLayout(c_.Frame3);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addLayout(heading);
    column->addWidget(c_.VS1, 1);
    column->addWidget(ChangeControls());
    column->addLayout(lower);
    return c_.Frame3;
  }

 private:
  QWidget* ChangeControls() {
    c_.Frame4 = Named(new QWidget(&form_), "Frame4");
    auto* title =
        Named(new QLabel(Say(Wording{u"Yapılan Değişiklik Sayısı", u"Number of changes"}), &form_), "Label5");
    c_.Text5 = Box("Text5", 14, true);
    title->setBuddy(c_.Text5);
    c_.Command7 = Button(Say(Wording{u"Bir Önceki Değişikliğe Git", u"Previous change"}), "Command7");
    c_.Command6 = Button(Say(Wording{u"Bir Sonraki Değişikliğe Git", u"Next change"}), "Command6");
    c_.CmdUndo =
        Button(Say(Wording{u"Son Yapılan Değişikliklerden Vazgeç", u"Undo unsaved changes"}), "CmdUndo");
    c_.Command4 = Button(Say(Wording{u"Kaydet", u"Save"}), "Command4");
    auto* count = new QWidget(&form_);
    auto* pair = new QHBoxLayout(count);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->addWidget(title);
    pair->addWidget(c_.Text5);
    auto* row = new FlowLayout(kGap);
    for (QWidget* control :
         std::initializer_list<QWidget*>{count, c_.Command7, c_.Command6, c_.CmdUndo, c_.Command4}) {
      row->addWidget(control);
    }
    c_.Frame4->setLayout(row);
    return c_.Frame4;
  }

  QWidget* DateJump() {
    c_.Frame9 = Named(new QWidget(&form_), "Frame9");
    c_.Text6 = Box("Text6", 10);
    c_.Text6->setPlaceholderText(Say(Wording{u"gg/aa/yyyy", u"dd/mm/yyyy"}));
    c_.Command8 = Button(Say(Wording{u"Yukarıdaki Tarihe Git", u"Go to the date above"}), "Command8");
    c_.Text6->setAccessibleName(c_.Command8->text());
    auto* column = new QVBoxLayout(c_.Frame9);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addWidget(c_.Text6);
    column->addWidget(c_.Command8);
    return c_.Frame9;
  }

  QWidget* DateCorrectionBox() {
    c_.Frame10 = Named(new QWidget(&form_), "Frame10");
    auto* title = Named(
        new QLabel(Say(Wording{u"Son Verinin Değişecek Tarihi", u"True time of the last reading"}), &form_),
        "Label7");
    c_.Text8 = Box("Text8", 16);
    c_.Text8->setPlaceholderText(Say(Wording{u"gg/aa/yyyy ss:dd", u"dd/mm/yyyy hh:mm"}));
    title->setBuddy(c_.Text8);
    c_.Text8->setAccessibleName(title->text());
    c_.Command10 =
        Button(Say(Wording{u"Tarih  Düzeltme  İşlemine Başla", u"Start the date correction"}), "Command10");
    QSizePolicy keepsItsPlace = c_.Command10->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    c_.Command10->setSizePolicy(keepsItsPlace);
    auto* column = new QVBoxLayout(c_.Frame10);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addWidget(title);
    column->addWidget(c_.Text8);
    c_.CmdSaatSil =
        Button(Say(Wording{u"Tarih Düzeltmesini Kaldır", u"Remove the date correction"}), "CmdSaatSil");
    c_.CmdSaatSil->hide();
    column->addWidget(c_.Command10);
    column->addWidget(c_.CmdSaatSil);
    return c_.Frame10;
  }

  void AddGridCommands(FlowLayout& row) {
    c_.Command3 = Button(language_.Text(Caption::MakeTable), "Command3");
    c_.CmdGrf = Button(language_.Text(Caption::GraphicTab), "CmdGrf");
    c_.Command1 = Button(Say(Wording{u"Pencereyi Kapat", u"Close this panel"}), "Command1");
    for (QPushButton* button : {c_.Command3, c_.CmdGrf, c_.Command1}) row.addWidget(button);
  }
};

}  // namespace

QWidget* MakeReviewPanel(QWidget& form, const Language& language, FormSecControls& controls) {
  return ReviewPanelMaker(form, language, controls).ReviewPanel();
}

}  // namespace vesk
