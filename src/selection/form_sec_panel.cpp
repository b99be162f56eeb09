// The middle of the selection window: the review grid, its corrections, and what is made from it.
#include <QHBoxLayout>
#include <QSplitter>
#include <QToolButton>

#include "selection/findings_panel.h"
#include "selection/form_sec_parts.h"
#include "selection/hydrograph_pane.h"
#include "selection/range_bar.h"
#include "selection/review_grid_view.h"
#include "shell/flow_layout.h"

namespace vesk {
namespace {

class ReviewPanelMaker : public FormSecPart {
 public:
  using FormSecPart::FormSecPart;

  QWidget* ReviewPanel(RowSelection& selection) {
    c_.reviewPanel = Named(new QWidget(&parent_), "Frame3");
    c_.loadedLabel = Named(new QLabel(&parent_), "LoadedLabel");
    c_.loadedLabel->setTextFormat(Qt::PlainText);
    c_.loadedLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QFont bold = c_.loadedLabel->font();
    bold.setBold(true);
    c_.loadedLabel->setFont(bold);
    c_.rowLabel = Named(new QLabel(&parent_), "RowLabel");
    c_.foldChooser = Toggle(Say(Wording{u"Seçim (F7)", u"Choice (F7)"}), "SecimGoster");
    c_.foldHydrograph = Toggle(Say(Wording{u"Hidrograf (F6)", u"Hydrograph (F6)"}), "HidrografGoster");
    c_.zeroBased = Toggle(Say(Wording{u"0'dan", u"From 0"}), "SifirdanBaslat");
    c_.foldHydrograph->setChecked(true);
    c_.zeroBased->setToolTip(
        Say(Wording{u"Hidrografın seviye ekseni 0'dan başlar", u"The hydrograph's level axis begins at 0"}));
    auto* heading = new QHBoxLayout;
    heading->addWidget(c_.foldChooser);
    heading->addWidget(c_.loadedLabel, 1);
    heading->addWidget(c_.rowLabel);
    c_.curve = Named(new QToolButton(&parent_), "AnahtarEgrisi");
    c_.curve->setPopupMode(QToolButton::InstantPopup);
    c_.curve->setFocusPolicy(Qt::TabFocus);
    c_.curve->setAccessibleName(language_.Text(Caption::RatingCurve));
    heading->addWidget(c_.curve);
    heading->addWidget(c_.foldHydrograph);
    heading->addWidget(c_.zeroBased);
    c_.grid = Named(new ReviewGridView(&parent_), "VS1");
    c_.grid->setMinimumHeight(8 * parent_.fontMetrics().height());
    c_.grid->setAccessibleName(language_.Text(Caption::RawData));
    auto* lower = new FlowLayout(kGap);
    lower->addWidget(DateJump());
    lower->addWidget(DateCorrectionBox());
    AddGridCommands(*lower);
    auto* column = new QVBoxLayout(c_.reviewPanel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addLayout(heading);
    column->addWidget(Bench(selection), 1);
    c_.rangeBar = new RangeBar(language_, &parent_);
    column->addWidget(c_.rangeBar);
    column->addWidget(ChangeControls());
    column->addLayout(lower);
    return c_.reviewPanel;
  }

 private:
  QToolButton* Toggle(const QString& caption, const char* name) {
    auto* button = Named(new QToolButton(&parent_), name);
    button->setText(caption);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
  }

  /// Grid and findings side by side, the hydrograph below both.
  QWidget* Bench(RowSelection& selection) {
    c_.findings = new FindingsPanel(language_, &parent_);
    c_.hydrograph = new HydrographPane(selection, language_, &parent_);
    c_.benchColumns = Named(new QSplitter(Qt::Horizontal, &parent_), "BenchColumns");
    c_.benchColumns->addWidget(c_.grid);
    c_.benchColumns->addWidget(c_.findings);
    c_.benchColumns->setStretchFactor(0, 3);
    c_.benchColumns->setStretchFactor(1, 2);
    c_.benchRows = Named(new QSplitter(Qt::Vertical, &parent_), "BenchRows");
    c_.benchRows->addWidget(c_.benchColumns);
    c_.benchRows->addWidget(c_.hydrograph);
    c_.benchRows->setStretchFactor(0, 3);
    c_.benchRows->setStretchFactor(1, 2);
    return c_.benchRows;
  }

  QWidget* ChangeControls() {
    c_.editBar = Named(new QWidget(&parent_), "Frame4");
    auto* title = Named(
        new QLabel(Say(Wording{u"Yapılan Değişiklik Sayısı", u"Number of changes"}), &parent_), "Label5");
    c_.changeCount = Box("Text5", 14, true);
    title->setBuddy(c_.changeCount);
    c_.previousChange = Button(Say(Wording{u"Bir Önceki Değişikliğe Git", u"Previous change"}), "Command7");
    c_.nextChange = Button(Say(Wording{u"Bir Sonraki Değişikliğe Git", u"Next change"}), "Command6");
    c_.undoAll =
        Button(Say(Wording{u"Son Yapılan Değişikliklerden Vazgeç", u"Undo unsaved changes"}), "CmdUndo");
    c_.save = Button(Say(Wording{u"Kaydet", u"Save"}), "Command4");
    auto* count = new QWidget(&parent_);
    auto* pair = new QHBoxLayout(count);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->addWidget(title);
    pair->addWidget(c_.changeCount);
    auto* row = new FlowLayout(kGap);
    for (QWidget* control :
         std::initializer_list<QWidget*>{count, c_.previousChange, c_.nextChange, c_.undoAll, c_.save}) {
      row->addWidget(control);
    }
    c_.editBar->setLayout(row);
    return c_.editBar;
  }

  QWidget* DateJump() {
    c_.dateBar = Named(new QWidget(&parent_), "Frame9");
    c_.date = Box("Text6", 10);
    c_.date->setPlaceholderText(Say(Wording{u"gg/aa/yyyy", u"dd/mm/yyyy"}));
    c_.goToDate = Button(Say(Wording{u"Yukarıdaki Tarihe Git", u"Go to the date above"}), "Command8");
    c_.date->setAccessibleName(c_.goToDate->text());
    auto* column = new QVBoxLayout(c_.dateBar);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addWidget(c_.date);
    column->addWidget(c_.goToDate);
    return c_.dateBar;
  }

  QWidget* DateCorrectionBox() {
    c_.clockBar = Named(new QWidget(&parent_), "Frame10");
    auto* title = Named(
        new QLabel(Say(Wording{u"Son Verinin Değişecek Tarihi", u"True time of the last reading"}), &parent_),
        "Label7");
    c_.lastReading = Box("Text8", 16);
    c_.lastReading->setPlaceholderText(Say(Wording{u"gg/aa/yyyy ss:dd", u"dd/mm/yyyy hh:mm"}));
    title->setBuddy(c_.lastReading);
    c_.lastReading->setAccessibleName(title->text());
    c_.correctDates =
        Button(Say(Wording{u"Tarih  Düzeltme  İşlemine Başla", u"Start the date correction"}), "Command10");
    QSizePolicy keepsItsPlace = c_.correctDates->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    c_.correctDates->setSizePolicy(keepsItsPlace);
    auto* column = new QVBoxLayout(c_.clockBar);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addWidget(title);
    column->addWidget(c_.lastReading);
    c_.removeCorrection =
        Button(Say(Wording{u"Tarih Düzeltmesini Kaldır", u"Remove the date correction"}), "CmdSaatSil");
    c_.removeCorrection->hide();
    c_.clockPairs = Button(Say(Wording{u"Parça Parça...", u"In pieces..."}), "CmdSaatCiftleri");
    c_.clockPairs->setToolTip(Say(Wording{u"Saatin birkaç zamanda karşılaştırıldığı dosyalar için",
                                          u"For files whose clock was compared at several times"}));
    auto* commands = new QHBoxLayout;
    commands->addWidget(c_.correctDates);
    commands->addWidget(c_.clockPairs);
    column->addLayout(commands);
    column->addWidget(c_.removeCorrection);
    return c_.clockBar;
  }

  void AddGridCommands(FlowLayout& row) {
    c_.makeTable = Button(language_.Text(Caption::MakeTable), "Command3");
    c_.drawGraph = Button(language_.Text(Caption::GraphicTab), "CmdGrf");
    c_.closePanel = Button(Say(Wording{u"Pencereyi Kapat", u"Close this panel"}), "Command1");
    for (QPushButton* button : {c_.makeTable, c_.drawGraph, c_.closePanel}) row.addWidget(button);
  }
};

}  // namespace

QWidget* MakeReviewPanel(QWidget& form, const Language& language, FormSecControls& controls,
                         RowSelection& selection) {
  return ReviewPanelMaker(form, language, controls).ReviewPanel(selection);
}

}  // namespace vesk
