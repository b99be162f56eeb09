#include "ratings/form_anahtar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QThread>
#include <QVBoxLayout>

#include "ratings/curve_plot_view.h"
#include "shell/flow_layout.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {

FormAnahtar::FormAnahtar(MainFrame& frame, const QString& station, const QString& curvePath,
                         std::vector<Gauging> gaugings)
    : frame_(frame), stationGaugings_(std::move(gaugings)) {
  setObjectName(QStringLiteral("Form_Anahtar"));
  RatingCurve curve;
  curve.station = station;
  draft_ = CurveDraft(std::move(curve));
  CreateButtons();
  CreateTabs();
  LayOut();
  ConnectPlot();
  setFocusProxy(plot_);  // the frame gives the focus to the window itself; keys belong to the plot
  ShowAll();
  if (!curvePath.isEmpty()) {
    OpenFile(curvePath);
  } else if (!stationGaugings_.empty()) {
    TakeStationGaugings();
    RequestFit(1);
  }
}

FormAnahtar::~FormAnahtar() {
  for (QThread* thread : running_) {
    thread->disconnect(this);
    thread->wait();
    delete thread;
  }
}

QString FormAnahtar::Say(const Message& message) const {
  return frame_.Run().language.Say(message);
}

QPushButton* FormAnahtar::AddButton(const char* name, const Message& text, const Message& tip,
                                    const QKeySequence& keys) {
  auto* button = new QPushButton(Say(text), this);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  QString shown = Say(tip);
  if (!keys.isEmpty()) {
    shown += QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText));
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  }
  button->setToolTip(shown);
  return button;
}

void FormAnahtar::CreateButtons() {
  const auto add = [this](const char* name, const Wording& text, const Wording& tip, const QKeySequence& keys,
                          auto slot) {
    QPushButton* button = AddButton(name, text, tip, keys);
    connect(button, &QPushButton::clicked, this, slot);
    buttons_.push_back(button);
    return button;
  };
  add("CmdAc", {u"&Aç...", u"&Open..."}, {u"Bir eğri dosyası açar", u"Opens a curve file"},
      QKeySequence::Open, [this] {
        const QString path = QFileDialog::getOpenFileName(this, windowTitle(), CurveFolder(),
                                                          QStringLiteral("E*.dat (E*.dat e*.dat);;* (*)"));
        if (!path.isEmpty() && MayLeave()) OpenFile(path);
      });
  add("CmdKaydet", {u"&Kaydet", u"&Save"}, {u"Eğriyi dosyasına yazar", u"Writes the curve to its file"},
      QKeySequence::Save, [this] { Save(); });
  add("CmdFarkli", {u"&Farklı kaydet...", u"Save &as..."},
      {u"Eğriyi başka bir dosyaya yazar", u"Writes the curve to another file"},
      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), [this] { SaveAs(); });
  undo_ = add("CmdGeri", {u"&Geri al", u"&Undo"}, {u"Son adımı geri alır", u"Takes the last step back"},
              QKeySequence::Undo, [this] { Undo(); });
  redo_ = add("CmdYinele", {u"&Yinele", u"&Redo"}, {u"Geri alınanı yineler", u"Makes the step again"},
              QKeySequence(Qt::CTRL | Qt::Key_Y), [this] { Redo(); });
  add("CmdKarsilastir", {u"Ka&rşılaştır...", u"&Compare..."},
      {u"Eski bir eğriyi arkada gri gösterir; bir daha basınca kaldırır",
       u"Shows an older curve behind in grey; pressed again, takes it away"},
      QKeySequence(), [this] {
        if (older_) {
          older_.reset();
          return ShowPlot();
        }
        const QString path = QFileDialog::getOpenFileName(this, windowTitle(), CurveFolder(),
                                                          QStringLiteral("E*.dat (E*.dat e*.dat);;* (*)"));
        if (!path.isEmpty()) CompareWith(path);
      });
  add("CmdDisaAl", {u"&Dışa aktar...", u"&Export..."},
      {u"Çizimi PNG, PDF veya SVG olarak yazar", u"Writes the picture as PNG, PDF or SVG"},
      QKeySequence(Qt::CTRL | Qt::Key_E), [this] {
        const QString path = QFileDialog::getSaveFileName(
            this, windowTitle(), CurveFolder(), QStringLiteral("PDF (*.pdf);;PNG (*.png);;SVG (*.svg)"));
        if (!path.isEmpty()) ExportTo(path);
      });
  add("CmdYazdir", {u"Ya&zdır...", u"&Print..."},
      {u"Çizimi ve değerleri yazdırır", u"Prints picture and figures"}, QKeySequence::Print,
      [this] { Print(); });
  add("CmdCikis", {u"Ka&pat", u"C&lose"}, {u"Pencereyi kapatır", u"Closes the window"},
      QKeySequence(Qt::CTRL | Qt::Key_W), [this] { close(); });
  logarithmic_ = new QCheckBox(Say(Wording{u"&Logaritmik", u"Lo&garithmic"}), this);
  logarithmic_->setObjectName(QStringLiteral("CheckLog"));
  logarithmic_->setToolTip(Say(Wording{u"Eksenler: ln Q ve ln (h - c)", u"Axes: ln Q and ln (h - c)"}));
  connect(logarithmic_, &QCheckBox::toggled, this, [this] { ShowPlot(); });
}

void FormAnahtar::CreateTabs() {
  plot_ = new CurvePlotView(frame_.Run().language.Choice(), this);
  plot_->setAccessibleName(Say(Wording{u"Anahtar eğrisi ve debi ölçümleri", u"Rating curve and gaugings"}));
  plot_->setToolTip(
      Say(Wording{u"Ölçüme tıklamak onu eğriye katar veya çıkarır; kareler sürüklenir.\n"
                  u"Oklar: ölçümler, Boşluk: kat/çıkar, N: kare seç, Ctrl+oklar: kareyi oynat",
                  u"A click on a gauging takes it into the curve or out; squares are dragged.\n"
                  u"Arrows: gaugings, Space: in or out, N: choose a square, Ctrl+arrows: move it"}));
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("Sekmeler"));
  tabs_->addTab(CreateFitTab(), Say(Wording{u"Uyum", u"Fit"}));
  tabs_->addTab(CreateGaugingsTab(), Say(Wording{u"Ölçümler", u"Gaugings"}));
  tabs_->addTab(CreateCurveTab(), Say(Wording{u"Eğri", u"Curve"}));
  tabs_->addTab(CreateTableTab(), Say(Wording{u"Tablo", u"Table"}));
  connect(tabs_, &QTabWidget::currentChanged, this, [this] { ShowTable(); });
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("LabelMesaj"));
  message_->setWordWrap(true);
  message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  message_->setMinimumHeight(2 * fontMetrics().height());
  message_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
}

namespace {

QTableWidget* MakeTable(QWidget* parent, const char* name, const QString& spoken, const QStringList& titles) {
  auto* table = new QTableWidget(0, static_cast<int>(titles.size()), parent);
  table->setObjectName(QLatin1String(name));
  table->setAccessibleName(spoken);
  table->setHorizontalHeaderLabels(titles);
  table->setTabKeyNavigation(false);
  table->setAlternatingRowColors(true);
  table->verticalHeader()->setVisible(false);
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  return table;
}

}  // namespace

QWidget* FormAnahtar::CreateFitTab() {
  auto* page = new QWidget(this);
  segments_ = new QComboBox(page);
  segments_->setObjectName(QStringLiteral("ComboParca"));
  for (int i = 1; i <= kMostSegments; ++i) segments_->addItem(QString::number(i));
  weights_ = new QComboBox(page);
  weights_->setObjectName(QStringLiteral("ComboAgirlik"));
  weights_->addItem(Say(Wording{u"Belirsizliklerden", u"From uncertainties"}));
  weights_->addItem(Say(Wording{u"Eşit", u"Equal"}));
  QPushButton* fit = AddButton("CmdUydur", Wording{u"&Uydur", u"&Fit"},
                               Wording{u"Eğriyi ölçümlere uydurur", u"Fits the curve to the gaugings"},
                               QKeySequence(Qt::Key_F5));
  connect(fit, &QPushButton::clicked, this, [this] { RequestFit(segments_->currentIndex() + 1); });
  auto* choice = new QFormLayout;
  choice->addRow(Say(Wording{u"Parça &sayısı:", u"Seg&ments:"}), segments_);
  choice->addRow(Say(Wording{u"&Ağırlıklar:", u"&Weights:"}), weights_);
  choice->addRow(fit);
  const auto label = [page](const char* name) {
    auto* made = new QLabel(page);
    made->setObjectName(QLatin1String(name));
    made->setWordWrap(true);
    made->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return made;
  };
  proposal_ = label("LabelOneri");
  origin_ = label("LabelKaynak");
  tests_ = label("LabelTest");
  parameters_ = MakeTable(page, "GridParametre", Say(Wording{u"Parametreler", u"Parameters"}),
                          {Say(Wording{u"Param.", u"Param."}), Say(Wording{u"Değer", u"Value"}),
                           Say(Wording{u"Std. hata", u"Std. error"}), Say(Wording{u"Alt sınır", u"Lower 95"}),
                           Say(Wording{u"Üst sınır", u"Upper 95"})});
  parameters_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  parameters_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  parameters_->horizontalHeader()->setStretchLastSection(true);
  auto* all = new QVBoxLayout(page);
  all->addLayout(choice);
  all->addWidget(proposal_);
  all->addWidget(origin_);
  all->addWidget(parameters_, 1);
  all->addWidget(tests_);
  return page;
}

QWidget* FormAnahtar::CreateGaugingsTab() {
  auto* page = new QWidget(this);
  gaugings_ = MakeTable(page, "GridOlcum", Say(Wording{u"Debi ölçümleri", u"Gaugings"}),
                        {Say(Wording{u"Tarih ve saat", u"Time"}), Say(Wording{u"Seviye", u"Level"}),
                         Say(Wording{u"Debi", u"Discharge"}), Say(Wording{u"Artık %", u"Residual %"})});
  gaugings_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  gaugings_->setSelectionBehavior(QAbstractItemView::SelectRows);
  gaugings_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  connect(gaugings_, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
    if (!showing_ && item->column() == 0) Toggle(static_cast<std::size_t>(item->row()));
  });
  connect(gaugings_, &QTableWidget::currentCellChanged, this, [this](int row) {
    if (showing_ || row < 0) return;
    plot_->LookAtGauging(static_cast<std::size_t>(row));
    TellGauging(static_cast<std::size_t>(row));
  });
  take_ = AddButton("CmdIstasyon", Wording{u"&İstasyonunkiler", u"S&tation's"},
                    Wording{u"İstasyonun kayıtlı ölçümlerini bu döneme alır",
                            u"Takes the gaugings that the register keeps for the station"},
                    {});
  QPushButton* open =
      AddButton("CmdOlcumAc", Wording{u"&CSV...", u"CS&V..."},
                Wording{u"Ölçümleri bir CSV dosyasından alır", u"Takes gaugings from a CSV file"}, {});
  connect(take_, &QPushButton::clicked, this, &FormAnahtar::TakeStationGaugings);
  connect(open, &QPushButton::clicked, this, &FormAnahtar::OpenGaugingsFile);
  auto* row = new QHBoxLayout;
  row->addWidget(take_);
  row->addWidget(open);
  row->addStretch(1);
  auto* all = new QVBoxLayout(page);
  all->addWidget(gaugings_, 1);
  all->addLayout(row);
  return page;
}

QWidget* FormAnahtar::CreateCurveTab() {
  auto* page = new QWidget(this);
  static constexpr Wording kTitles[FieldCount] = {{u"İstasyon no:", u"Station:"},
                                                  {u"Ad:", u"Name:"},
                                                  {u"Geçerli, başlangıç:", u"Valid from:"},
                                                  {u"Geçerli, bitiş:", u"Valid to:"},
                                                  {u"En düşük ölçülen (cm):", u"Lowest gauged (cm):"},
                                                  {u"En yüksek ölçülen (cm):", u"Highest gauged (cm):"},
                                                  {u"Altına uzatma (cm):", u"Extrapolate below (cm):"},
                                                  {u"Üstüne uzatma (cm):", u"Extrapolate above (cm):"},
                                                  {u"Belirsizlik (%):", u"Uncertainty (%):"}};
  periods_ = new QComboBox(page);
  periods_->setObjectName(QStringLiteral("ComboDonem"));
  connect(periods_, &QComboBox::activated, this, [this](int place) {
    DraftState next = draft_.State();
    next.period = static_cast<std::size_t>(place);
    next.segments = 0;
    draft_.Change(next);
    ShowAll();
  });
  QPushButton* add =
      AddButton("CmdDonemEkle", Wording{u"Ekle", u"Add"},
                Wording{u"Bundan sonra başlayan bir dönem ekler", u"Adds a period behind this one"}, {});
  QPushButton* remove = AddButton("CmdDonemSil", Wording{u"Çıkar", u"Remove"},
                                  Wording{u"Bu dönemi çıkarır", u"Removes this period"}, {});
  connect(add, &QPushButton::clicked, this, &FormAnahtar::AddPeriod);
  connect(remove, &QPushButton::clicked, this, &FormAnahtar::RemovePeriod);
  auto* which = new QHBoxLayout;
  which->addWidget(add);
  which->addWidget(remove);
  auto* form = new QFormLayout(page);
  for (int i = 0; i < FieldCount; ++i) {
    auto* field = new QLineEdit(page);
    field->setObjectName(QStringLiteral("Text%1").arg(i));
    fields_[static_cast<std::size_t>(i)] = field;
    connect(field, &QLineEdit::editingFinished, this, &FormAnahtar::TakeFields);
    if (i == From) {
      form->addRow(Say(Wording{u"Dönem:", u"Period:"}), periods_);
      form->addRow(QString(), which);
    }
    form->addRow(Say(kTitles[i]), field);
  }
  shifts_ = MakeTable(page, "GridKayma", Say(Wording{u"Kaymalar", u"Shifts"}),
                      {Say(Wording{u"Tarih ve saat", u"Time"}), Say(Wording{u"Kayma (cm)", u"Shift (cm)"})});
  shifts_->setMaximumHeight(fontMetrics().height() * 7);
  connect(shifts_, &QTableWidget::itemChanged, this, [this] {
    if (!showing_) TakeShifts();
  });
  remarks_ = new QPlainTextEdit(page);
  remarks_->setObjectName(QStringLiteral("TextNot"));
  remarks_->setTabChangesFocus(true);
  remarks_->setMaximumHeight(fontMetrics().height() * 4);
  connect(remarks_, &QPlainTextEdit::textChanged, this, [this] {
    if (!showing_) TakeFields();
  });
  form->addRow(Say(Wording{u"Kaymalar:", u"Shifts:"}), shifts_);
  form->addRow(Say(Wording{u"Notlar:", u"Remarks:"}), remarks_);
  return page;
}

QWidget* FormAnahtar::CreateTableTab() {
  table_ = MakeTable(
      this, "GridTablo", Say(Wording{u"Eğri tablosu", u"Table of the curve"}),
      {Say(Wording{u"Seviye", u"Level"}), Say(Wording{u"Debi", u"Discharge"}), Say(Wording{u"Alt", u"Lower"}),
       Say(Wording{u"Üst", u"Upper"}), Say(Wording{u"Durum", u"Flag"})});
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  return table_;
}

void FormAnahtar::LayOut() {
  auto* bar = new FlowLayout(fontMetrics().averageCharWidth());
  for (QPushButton* button : buttons_) bar->addWidget(button);
  bar->addWidget(logarithmic_);
  auto* halves = new QSplitter(Qt::Horizontal, this);
  halves->addWidget(plot_);
  halves->addWidget(tabs_);
  halves->setStretchFactor(0, 3);
  halves->setStretchFactor(1, 2);
  halves->setChildrenCollapsible(false);
  auto* all = new QVBoxLayout(this);
  all->addLayout(bar);
  all->addWidget(halves, 1);
  all->addWidget(message_);
  const int letter = fontMetrics().averageCharWidth();
  tabs_->setMinimumWidth(58 * letter);
  constexpr int kPlotLetters = 95, kTabLetters = 62, kLines = 38;
  resize(letter * (kPlotLetters + kTabLetters), fontMetrics().height() * kLines);
  halves->setSizes({letter * kPlotLetters, letter * kTabLetters});
}

void FormAnahtar::ConnectPlot() {
  connect(plot_, &CurvePlotView::GaugingToggled, this, &FormAnahtar::Toggle);
  connect(plot_, &CurvePlotView::GaugingLookedAt, this, &FormAnahtar::TellGauging);
  connect(plot_, &CurvePlotView::NodeDropped, this, &FormAnahtar::DropNode);
  connect(plot_, &CurvePlotView::NodeDragged, this, [this](std::size_t node, const CurveNode& to) {
    if (const auto moved = WithNodeMoved(draft_.Period(), node, to)) ShowPlot(&*moved);
  });
}

}  // namespace vesk
