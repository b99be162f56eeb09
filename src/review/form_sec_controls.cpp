#include "review/form_sec_controls.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

#include "review/review_grid_view.h"
#include "review/setup_parameters.h"
#include "shell/language.h"
#include "tables/folder_lists.h"
#include "tables/tab_order.h"

namespace vesk {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kGap = 6;

/// Makes and places the controls; one member function a region of the window.
class Builder {
 public:
  Builder(QWidget& form, const Language& language) : form_(form), language_(language) {}

  FormSecControls Build() {
    c_.Columns = new QSplitter(Qt::Horizontal, &form_);
    c_.Columns->setObjectName(QStringLiteral("Columns"));
    c_.Columns->addWidget(LeftColumn());
    c_.Columns->addWidget(ReviewPanel());
    c_.Columns->addWidget(RightColumn());
    c_.Columns->addWidget(GraphColumn());
    c_.Columns->setStretchFactor(0, 0);
    c_.Columns->setStretchFactor(1, 1);
    c_.Columns->setStretchFactor(2, 0);
    c_.Columns->setStretchFactor(3, 1);
    for (QSplitter* splitter : {c_.Columns, c_.LeftParts, c_.RightParts}) {
      splitter->setChildrenCollapsible(false);
      splitter->setHandleWidth(kGap + 2);
    }
    auto* all = new QVBoxLayout(&form_);
    all->setContentsMargins(kGap, kGap, kGap, kGap);
    all->addWidget(c_.Columns, 1);
    all->addLayout(BottomLine());
    OrderTabs();
    return c_;
  }

 private:
  QString Text(const char16_t* turkish, const char16_t* english) const {
    return Either(language_, QString::fromUtf16(turkish), QString::fromUtf16(english));
  }
  QString Text(const char16_t* turkish, Caption english) const {
    return Either(language_, QString::fromUtf16(turkish), language_.Text(english));
  }

  template <class Control>
  Control* Named(Control* control, const char* name) const {
    control->setObjectName(QLatin1String(name));
    return control;
  }
  QPushButton* Button(const QString& caption, const char* name) {
    auto* button = Named(new QPushButton(caption, &form_), name);
    button->setAutoDefault(false);
    return button;
  }
  QListWidget* List(const char* name) {
    auto* list = Named(new QListWidget(&form_), name);
    list->setUniformItemSizes(true);
    list->setMinimumHeight(2 * form_.fontMetrics().height());
    return list;
  }
  QLineEdit* Box(const char* name, int characters, bool readOnly = false) {
    auto* box = Named(new QLineEdit(&form_), name);
    const int width = box->fontMetrics().horizontalAdvance(QLatin1Char('0')) * (characters + 2);
    box->setMinimumWidth(width);
    box->setReadOnly(readOnly);
    if (readOnly) box->setFocusPolicy(Qt::ClickFocus);
    return box;
  }
  /// A label above its control, as one widget; the label is its buddy for accessibility.
  QWidget* Titled(QLabel* title, QWidget* control, QLayout* below = nullptr) {
    auto* part = new QWidget(&form_);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    title->setBuddy(control);
    control->setAccessibleName(title->text());
    column->addWidget(title);
    column->addWidget(control, 1);
    if (below != nullptr) column->addLayout(below);
    return part;
  }

  QWidget* LeftColumn() {
    c_.LeftParts = Named(new QSplitter(Qt::Vertical, &form_), "LeftParts");
    c_.LeftParts->addWidget(Place());
    c_.LeftParts->addWidget(StationsAndYears());
    c_.Label8 = Named(new QLabel(language_.Text(Caption::Files), &form_), "Label8");
    c_.ListOrjDos = List("ListOrjDos");
    c_.LeftParts->addWidget(Titled(c_.Label8, c_.ListOrjDos));
    auto* left = new QWidget(&form_);
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(c_.LeftParts, 1);
    column->addWidget(RatingCurveBox());
    left->setMinimumWidth(200);
    return left;
  }

  QWidget* Place() {
    c_.Drive1 = Named(new DriveList(Text(u"Ev dizini", u"Home"), &form_), "Drive1");
    c_.Dir1 = Named(new DirList(&form_), "Dir1");
    c_.Dir1->setMinimumHeight(3 * form_.fontMetrics().height());
    auto* title = new QLabel(Text(u"Sürücüler  ve  Dizinler", Caption::DriveAndDirectory), &form_);
    c_.Drive1->setAccessibleName(title->text());
    QWidget* part = Titled(title, c_.Dir1);
    static_cast<QVBoxLayout*>(part->layout())->insertWidget(1, c_.Drive1);
    return part;
  }

  QWidget* StationsAndYears() {
    c_.ListIst = List("ListIst");
    c_.Label2 = Named(new QLabel(language_.Text(Caption::StationCount), &form_), "Label2");
    c_.Text1 = Box("Text1", 3, true);
    c_.Text1->setMaximumWidth(c_.Text1->minimumWidth());
    auto* count = new QHBoxLayout;
    count->addWidget(c_.Label2);
    count->addWidget(c_.Text1);
    count->addStretch();
    c_.ListSuYili = List("ListSuYili");
    c_.ListSuYili->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* part = new QWidget(&form_);
    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    auto* stations = new QLabel(Text(u"İstasyonlar", Caption::StationsTab), &form_);
    auto* years = new QLabel(Text(u"Su Yılları", Caption::WaterYear), &form_);
    row->addWidget(Titled(stations, c_.ListIst, count), 1);
    row->addWidget(Titled(years, c_.ListSuYili), 1);
    return part;
  }

  QWidget* RatingCurveBox() {
    c_.RatingFrame = Named(new QGroupBox(language_.Text(Caption::RatingCurve), &form_), "RatingFrame");
    c_.Text7 = Box("Text7", 8);
    c_.Text7->setReadOnly(true);
    c_.Text7->setAccessibleName(language_.Text(Caption::RatingCurve));
    c_.Command2 = Button(QStringLiteral("Anahtar Dir."), "Command2");
    auto* row = new QHBoxLayout(c_.RatingFrame);
    row->setContentsMargins(kGap, kGap / 2, kGap, kGap);
    row->addWidget(c_.Text7, 1);
    row->addWidget(c_.Command2);
    return c_.RatingFrame;
  }

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
    auto* lower = new QHBoxLayout;
    lower->addWidget(DateJump());
    lower->addWidget(DateCorrectionBox());
    lower->addStretch(1);
    lower->addLayout(GridCommands());
    auto* column = new QVBoxLayout(c_.Frame3);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addLayout(heading);
    column->addWidget(c_.VS1, 1);
    column->addWidget(ChangeControls());
    column->addLayout(lower);
    return c_.Frame3;
  }

  QWidget* ChangeControls() {
    c_.Frame4 = Named(new QWidget(&form_), "Frame4");
    auto* title =
        Named(new QLabel(Text(u"Yapılan Değişiklik Sayısı", u"Number of changes"), &form_), "Label5");
    c_.Text5 = Box("Text5", 14, true);
    title->setBuddy(c_.Text5);
    c_.Command7 = Button(Text(u"Bir Önceki Değişikliğe Git", u"Previous change"), "Command7");
    c_.Command6 = Button(Text(u"Bir Sonraki Değişikliğe Git", u"Next change"), "Command6");
    c_.CmdUndo = Button(Text(u"Son Yapılan Değişikliklerden Vazgeç", u"Undo unsaved changes"), "CmdUndo");
    c_.Command4 = Button(Text(u"Kaydet", u"Save"), "Command4");
    auto* grid = new QGridLayout(c_.Frame4);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(title, 0, 0);
    grid->addWidget(c_.Text5, 1, 0);
    grid->addWidget(c_.Command7, 0, 1);
    grid->addWidget(c_.Command6, 1, 1);
    grid->addWidget(c_.CmdUndo, 0, 2);
    grid->addWidget(c_.Command4, 1, 2);
    grid->setColumnStretch(3, 1);
    return c_.Frame4;
  }

  QWidget* DateJump() {
    c_.Frame9 = Named(new QWidget(&form_), "Frame9");
    c_.Text6 = Box("Text6", 10);
    c_.Text6->setPlaceholderText(Text(u"gg/aa/yyyy", u"dd/mm/yyyy"));
    c_.Command8 = Button(Text(u"Yukarıdaki Tarihe Git", u"Go to the date above"), "Command8");
    c_.Text6->setAccessibleName(c_.Command8->text());
    auto* column = new QVBoxLayout(c_.Frame9);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addStretch();
    column->addWidget(c_.Text6);
    column->addWidget(c_.Command8);
    return c_.Frame9;
  }

  QWidget* DateCorrectionBox() {
    c_.Frame10 = Named(new QWidget(&form_), "Frame10");
    auto* title =
        Named(new QLabel(Text(u"Son Verinin Değişecek Tarihi", u"True time of the last reading"), &form_),
              "Label7");
    c_.Text8 = Box("Text8", 16);
    c_.Text8->setPlaceholderText(Text(u"gg/aa/yyyy ss:dd", u"dd/mm/yyyy hh:mm"));
    title->setBuddy(c_.Text8);
    c_.Text8->setAccessibleName(title->text());
    c_.Command10 =
        Button(Text(u"Tarih  Düzeltme  İşlemine Başla", u"Start the date correction"), "Command10");
    QSizePolicy keepsItsPlace = c_.Command10->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    c_.Command10->setSizePolicy(keepsItsPlace);
    auto* column = new QVBoxLayout(c_.Frame10);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap / 2);
    column->addWidget(title);
    column->addWidget(c_.Text8);
    column->addWidget(c_.Command10);
    return c_.Frame10;
  }

  QLayout* GridCommands() {
    c_.Command3 = Button(language_.Text(Caption::MakeTable), "Command3");
    c_.CmdGrf = Button(language_.Text(Caption::GraphicTab), "CmdGrf");
    c_.Command1 = Button(Text(u"Pencereyi Kapat", u"Close this panel"), "Command1");
    auto* column = new QVBoxLayout;
    column->setSpacing(kGap / 2);
    column->addStretch();
    for (QPushButton* button : {c_.Command3, c_.CmdGrf, c_.Command1}) column->addWidget(button);
    return column;
  }

  QTableWidget* Table(const char* name, int rows, int columns) {
    auto* table = Named(new QTableWidget(rows, columns, &form_), name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(form_.fontMetrics().height() + 3);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    return table;
  }

  QWidget* RightColumn() {
    c_.RightParts = Named(new QSplitter(Qt::Vertical, &form_), "RightParts");
    c_.RightParts->addWidget(SetupParameters());
    c_.RightParts->addWidget(LoadedFiles());
    c_.Label10 = Named(new QLabel(Text(u"Açıklamalar", u"Messages"), &form_), "Label10");
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
    return Titled(c_.Label4, c_.VS0);
  }

  QWidget* LoadedFiles() {
    c_.VS_Dosyalar = Table("VS_Dosyalar", 0, 1);
    c_.VS_Dosyalar->setHorizontalHeaderLabels({Text(u"Yüklenen dosyalar", u"Loaded files")});
    c_.VSsatir = List("VSsatir");
    QWidget* changed = Titled(new QLabel(Text(u"Satir No", u"Row no."), &form_), c_.VSsatir);
    changed->setMaximumWidth(90);
    c_.ChangedRows = changed;
    c_.LoadedFiles = new QWidget(&form_);
    auto* row = new QHBoxLayout(c_.LoadedFiles);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(c_.VS_Dosyalar, 1);
    row->addWidget(changed);
    return c_.LoadedFiles;
  }

  QWidget* GraphColumn() {
    c_.ListGraf = List("ListGraf");
    auto* title = new QLabel(language_.Text(Caption::List), &form_);
    c_.CmdCiz = Button(language_.Text(Caption::Draw), "CmdCiz");
    c_.CmdListSil = Button(Text(u"Listeyi Sil", Caption::ClearList), "CmdListSil");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(c_.CmdCiz);
    buttons->addWidget(c_.CmdListSil);
    buttons->addStretch();
    c_.GraphPanel = Titled(title, c_.ListGraf, buttons);
    c_.GraphPanel->setObjectName(QStringLiteral("GraphPanel"));
    return c_.GraphPanel;
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
    ChainTabOrder({c_.Drive1,      c_.Dir1,     c_.ListIst,  c_.ListSuYili, c_.ListOrjDos, c_.Text7,
                   c_.Command2,    c_.CmdTamam, c_.VS1,      c_.Command7,   c_.Command6,   c_.CmdUndo,
                   c_.Command4,    c_.Text6,    c_.Command8, c_.Text8,      c_.Command10,  c_.Command3,
                   c_.CmdGrf,      c_.Command1, c_.ListGraf, c_.CmdCiz,     c_.CmdListSil, c_.VS0,
                   c_.VS_Dosyalar, c_.VSsatir,  c_.ListMsj,  c_.CmdVazgec});
  }

  QWidget& form_;
  const Language& language_;
  FormSecControls c_;
};

}  // namespace

FormSecControls BuildFormSecControls(QWidget& form, const Language& language) {
  return Builder(form, language).Build();
}

}  // namespace vesk
