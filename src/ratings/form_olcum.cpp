#include "ratings/form_olcum.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <initializer_list>

#include "datafiles/numbers.h"
#include "ratings/curve_source.h"
#include "ratings/gauging_table_model.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "shell/tab_order.h"
#include "stations/station_curve.h"

namespace vesk {

FormOlcum::FormOlcum(MainFrame& frame, const QString& station, const QString& name, OpenCurveWindow openCurve)
    : frame_(frame),
      station_(station),
      openCurve_(std::move(openCurve)),
      levels_(frame.Run().dataDirectory, station) {
  setObjectName(QStringLiteral("FormOlcum"));
  setWindowTitle(
      Say({Wording{u"Debi ölçümleri: %1", u"Gaugings: %1"}, QStringLiteral("%1 %2").arg(station, name)}));
  CreateControls();
  CreateButtons();
  LayOut();
  OpenRegister();
}

QString FormOlcum::Say(const Message& message) const {
  return frame_.Run().language.Say(message);
}

void FormOlcum::CreateControls() {
  catchment_ = new QLineEdit(this);
  catchment_->setObjectName(QStringLiteral("TextHavza"));
  catchment_->setAlignment(Qt::AlignRight);
  catchment_->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000000.000")));
  catchment_->setAccessibleName(Say(Wording{u"Havza alanı, km²", u"Catchment area, km²"}));
  catchment_->setToolTip(Say(Wording{u"Akış yüksekliği ve özgül debi bu alanla hesaplanır",
                                     u"Runoff depth and specific discharge are computed with it"}));
  curve_ = new QLineEdit(this);
  curve_->setObjectName(QStringLiteral("TextEgri"));
  curve_->setClearButtonEnabled(true);
  curve_->setAccessibleName(Say(Wording{u"İstasyonun anahtar eğrisi", u"Rating curve of the station"}));
  curve_->setToolTip(Say(Wording{u"Komut satırı başka bir eğri verilmedikçe bu eğriyi kullanır",
                                 u"The command line takes this curve unless it is given another one"}));
  grid_ = new QTableView(this);
  grid_->setObjectName(QStringLiteral("GridOlcum"));
  grid_->setAccessibleName(windowTitle());
  grid_->setSelectionBehavior(QAbstractItemView::SelectItems);
  grid_->setAlternatingRowColors(true);
  grid_->setTabKeyNavigation(false);
  grid_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                         QAbstractItemView::AnyKeyPressed);
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("LabelMesaj"));
  message_->setWordWrap(true);
  message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  message_->hide();
  connect(catchment_, &QLineEdit::editingFinished, this, &FormOlcum::KeepFacts);
  connect(curve_, &QLineEdit::editingFinished, this, &FormOlcum::KeepFacts);
}

void FormOlcum::CreateButtons() {
  const auto make = [this](const char* name, const Wording& text, const Wording& tip) {
    auto* button = new QPushButton(Say(text), this);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(Say(tip));
    button->setAutoDefault(false);
    return button;
  };
  chooseCurve_ = make("CmdEgriSec", {u"Se&ç...", u"&Choose..."},
                      {u"İstasyonun anahtar eğrisini seçer", u"Chooses the station's rating curve"});
  import_ =
      make("CmdIceAl", {u"&İçe al...", u"&Import..."},
           {u"Bir CSV dosyasındaki ölçümleri ekler (Ctrl+O)", u"Adds the gaugings of a CSV file (Ctrl+O)"});
  export_ =
      make("CmdDisaAl", {u"&Dışa aktar...", u"&Export..."},
           {u"Ölçümleri bir CSV dosyasına yazar (Ctrl+S)", u"Writes the gaugings to a CSV file (Ctrl+S)"});
  delete_ = make("CmdSil", {u"&Sil", u"&Delete"},
                 {u"Seçili ölçümleri siler (Ctrl+Del)", u"Deletes the selected gaugings (Ctrl+Del)"});
  undo_ = make("CmdGeri", {u"&Geri al", u"&Undo"},
               {u"Son değişikliği geri alır (Ctrl+Z)", u"Takes the last change back (Ctrl+Z)"});
  curveWindow_ = make("CmdEgri", {u"&Anahtar eğrisi...", u"&Rating curve..."},
                      {u"Bu ölçümlerle anahtar eğrisi penceresini açar (F9)",
                       u"Opens the rating curve window with these gaugings (F9)"});
  exit_ = make("CmdCikis", {u"&Kapat", u"C&lose"}, {u"Pencereyi kapatır (Esc)", u"Closes the window (Esc)"});
  curveWindow_->setVisible(static_cast<bool>(openCurve_));
  connect(chooseCurve_, &QPushButton::clicked, this, &FormOlcum::ChooseCurve);
  connect(import_, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getOpenFileName(this, windowTitle(), frame_.Run().dataDirectory,
                                                      QStringLiteral("CSV (*.csv *.txt *.tsv);;* (*)"));
    if (!path.isEmpty()) ImportFrom(path);
  });
  connect(export_, &QPushButton::clicked, this, [this] {
    const QString proposed = frame_.Run().dataDirectory + QStringLiteral("gaugings-%1.csv").arg(station_);
    const QString path =
        QFileDialog::getSaveFileName(this, windowTitle(), proposed, QStringLiteral("CSV (*.csv)"));
    if (!path.isEmpty()) ExportTo(path);
  });
  connect(delete_, &QPushButton::clicked, this, &FormOlcum::DeleteRows);
  connect(undo_, &QPushButton::clicked, this, &FormOlcum::TakeBack);
  connect(curveWindow_, &QPushButton::clicked, this, [this] {
    if (table_ != nullptr)
      openCurve_(station_, StationCurvePath(register_->Path(), facts_.curve), table_->GaugingsForCurve());
  });
  connect(exit_, &QPushButton::clicked, this, &QWidget::close);
}

void FormOlcum::LayOut() {
  const auto label = [this](const Wording& text, QWidget* buddy) {
    auto* made = new QLabel(Say(text), this);
    made->setBuddy(buddy);
    return made;
  };
  auto* facts = new QHBoxLayout;
  facts->addWidget(label({u"&Havza (km²):", u"Catch&ment (km²):"}, catchment_));
  facts->addWidget(catchment_);
  facts->addSpacing(fontMetrics().height());
  facts->addWidget(label({u"&Eğri:", u"Cur&ve:"}, curve_));
  facts->addWidget(curve_, 1);
  facts->addWidget(chooseCurve_);
  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {import_, export_, delete_, undo_}) buttons->addWidget(button);
  buttons->addStretch(1);
  buttons->addWidget(curveWindow_);
  buttons->addWidget(exit_);
  auto* all = new QVBoxLayout(this);
  all->addLayout(facts);
  all->addWidget(grid_, 1);
  all->addWidget(message_);
  all->addLayout(buttons);
  grid_->horizontalHeader()->setStretchLastSection(true);
  grid_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  ChainTabOrder(
      {catchment_, curve_, chooseCurve_, grid_, import_, export_, delete_, undo_, curveWindow_, exit_});
  constexpr int kLines = 22, kLetters = 110;
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kLines);
}

void FormOlcum::OpenRegister() {
  Result<StationRegister> opened = OpenStationDatabase(frame_.Run().stationDatabasePath);
  if (opened) {
    register_.emplace(std::move(*opened));
    table_ = new GaugingTableModel(*register_, station_, frame_.Run().language.Choice(), &levels_, this);
    const Status read = table_->Load();
    const auto facts = register_->FactsOf(station_);
    if (read && facts) {
      facts_ = *facts;
      ShowFacts();
      return ShowTable();
    }
    opened = read ? facts.Failure() : read.Failure();
    delete table_;
    table_ = nullptr;
  }
  const std::initializer_list<QWidget*> useless{catchment_, curve_,  chooseCurve_, grid_,       import_,
                                                export_,    delete_, undo_,        curveWindow_};
  for (QWidget* control : useless) control->setEnabled(false);
  ShowFailure(opened.Failure());
}

void FormOlcum::ShowTable() {
  sorted_ = new GaugingSortModel(*table_, this);
  grid_->setModel(sorted_);
  grid_->setSortingEnabled(true);
  grid_->sortByColumn(-1, Qt::AscendingOrder);
  constexpr std::array kLetters = {19, 12, 14, 14, 14, 16, 24, 11};
  int width = 0;
  for (int column = 0; column < table_->columnCount(); ++column) {
    const QString title = table_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const int letters = kLetters[static_cast<std::size_t>(column)] * fontMetrics().averageCharWidth();
    constexpr int kRoom = 24;  // sort mark and margins
    const int shown =
        column == 0 ? fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000 00:00")) + kRoom : 0;
    grid_->setColumnWidth(column, std::max({shown, letters, fontMetrics().horizontalAdvance(title) + kRoom}));
    width += grid_->columnWidth(column);
  }
  constexpr int kRemark = 6;
  grid_->horizontalHeader()->setStretchLastSection(false);
  grid_->horizontalHeader()->setSectionResizeMode(kRemark, QHeaderView::Stretch);
  constexpr int kBesideColumns = 90;  // row numbers, scroll bar, margins
  resize(std::max(this->width(), width + kBesideColumns), height());
  connect(table_, &GaugingTableModel::Refused, this,
          [this](const Message& what) { ShowMessage(Say(what), true); });
  connect(table_, &GaugingTableModel::SaveFailed, this, &FormOlcum::ShowFailure);
  connect(table_, &GaugingTableModel::Saved, message_, &QLabel::hide);
  AddShortcuts();
  setFocusProxy(grid_);  // the frame gives the focus to the window itself
  grid_->setCurrentIndex(sorted_->index(sorted_->rowCount() - 1, 0));
  grid_->setFocus();
}

void FormOlcum::ShowFacts() {
  catchment_->setText(facts_.catchmentKm2 ? NumberText(*facts_.catchmentKm2) : QString());
  curve_->setText(facts_.curve);
}

/// Writes what was typed; what the register cannot take stays in the field and is told.
void FormOlcum::KeepFacts() {
  if (!register_ || table_ == nullptr) return;
  StationFacts wanted;
  const QString area = catchment_->text().trimmed();
  if (!area.isEmpty()) {
    wanted.catchmentKm2 = ReadWholeNumber(area);
    if (!wanted.catchmentKm2 || !(*wanted.catchmentKm2 > 0 && *wanted.catchmentKm2 <= kMostCatchmentKm2)) {
      return ShowMessage(
          Say({Wording{u"Havza alanı: “%1”; beklenen 0'dan büyük, en çok 10000000 olan bir sayı (km²)",
                       u"Catchment area: \"%1\"; expected a number above 0, at most 10000000 (km²)"},
               area}),
          true);
    }
  }
  wanted.curve = curve_->text().trimmed();
  if (wanted == facts_) return;
  if (wanted.curve != facts_.curve && !wanted.curve.isEmpty()) {
    const QString path = StationCurvePath(register_->Path(), wanted.curve);
    if (const auto curve = OpenCurve(path, station_); !curve) return ShowFailure(curve.Failure());
  }
  const auto kept = register_->SetFacts(station_, facts_, wanted);
  if (!kept) return ShowFailure(kept.Failure());
  if (*kept) {
    facts_ = wanted;
    return message_->hide();
  }
  if (const auto present = register_->FactsOf(station_)) facts_ = *present;
  ShowFacts();
  ShowMessage(Say(Wording{u"Başka biri havzayı veya eğriyi değiştirdi; yazdığınız kaydedilmedi.",
                          u"Somebody else has changed catchment or curve; what you typed was not stored."}),
              true);
}

void FormOlcum::ChooseCurve() {
  const QString start =
      facts_.curve.isEmpty()
          ? frame_.Run().settings.ReadSetting(QStringLiteral("Genel"), QStringLiteral("AnahtarDirectory"))
          : facts_.curve;
  const QString path = QFileDialog::getOpenFileName(this, windowTitle(), start,
                                                    QStringLiteral("E*.dat (E*.dat e*.dat E*.DAT)"));
  if (path.isEmpty()) return;
  curve_->setText(path);
  KeepFacts();
}

}  // namespace vesk
