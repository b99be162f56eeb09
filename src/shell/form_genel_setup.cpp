#include "shell/form_genel_setup.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "shell/colour_cells.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "shell/wrapped_button.h"

namespace vesk {
namespace {

constexpr Caption kSwatchCaptions[kSwatchCount] = {Caption::BackgroundColour, Caption::Station1Colour,
                                                   Caption::ScaleColour,      Caption::Station2Colour,
                                                   Caption::Station3Colour,   Caption::Station4Colour};

QString Indexed(const char* name, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

}  // namespace

FormGenelSetup::FormGenelSetup(MainFrame& frame) : frame_(frame) {
  setObjectName(QStringLiteral("FormGenelSetup"));
  setWindowTitle(QStringLiteral("Ayarlar"));
  const Language& language = frame_.Run().language;

  SSTab1_ = new QTabWidget;
  SSTab1_->setObjectName(QStringLiteral("SSTab1"));
  SSTab1_->addTab(CreateGraphicTab(), language.Text(Caption::GraphicTab));
  SSTab1_->addTab(CreateStationsTab(), language.Text(Caption::StationsTab));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(SSTab1_, 1);
  layout->addWidget(CreateButtons());

  RunValues& run = frame_.Run();
  run.options = LoadOptions(run.settings);
  ShowForm(FormOf(run.options));
}

QWidget* FormGenelSetup::CreateGraphicTab() {
  const Language& language = frame_.Run().language;
  auto* tab = new QWidget;
  QWidget* swatches = CreateSwatches();
  Frame3_ = new ColourPalette(language);
  Frame3_->setObjectName(QStringLiteral("Frame3"));
  Frame3_->setTitle(language.Text(Caption::ColourSelection));
  connect(Frame3_, &ColourPalette::Chosen, this, &FormGenelSetup::SetSwatch);
  Check1_ = new WrappedCheckBox(language.Text(Caption::ShowExtremesOnGraph));
  Check1_->setObjectName(Indexed("Check1", 0));

  auto* layout = new QGridLayout(tab);
  layout->addWidget(swatches, 0, 0);
  layout->addWidget(Frame3_, 0, 1);
  layout->addWidget(Check1_, 1, 0, 1, 2);
  layout->addWidget(CreateAdjustment(), 2, 0, 1, 2);
  layout->setRowStretch(0, 1);
  layout->setColumnStretch(1, 1);
  return tab;
}

QWidget* FormGenelSetup::CreateAdjustment() {
  auto* label = new QLabel(QStringLiteral("Mouse Dusey Ayar (41)"));
  label->setObjectName(QStringLiteral("Label4"));
  Text1_ = new QLineEdit;
  Text1_->setObjectName(QStringLiteral("Text1"));
  Text1_->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
  label->setBuddy(Text1_);

  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  layout->addWidget(label);
  layout->addWidget(Text1_);
  layout->addWidget(CreateHint(QStringLiteral("Vertical mouse adjustment of the graph read-out")), 100);
  layout->addStretch(1);  // what the hint leaves, or all when it is hidden
  return row;
}

QWidget* FormGenelSetup::CreateSwatches() {
  const Language& language = frame_.Run().language;
  auto* box = new QGroupBox(language.Text(Caption::StationColours));
  box->setObjectName(QStringLiteral("Frame1"));
  auto* grid = new QGridLayout(box);
  grid->setVerticalSpacing(0);  // as the palette beside it, so that the rows meet
  for (int k = 0; k < kSwatchCount; ++k) {
    auto* label = new QLabel(language.Text(kSwatchCaptions[k]));
    label->setObjectName(Indexed("Label1", k));
    auto* swatch = new ColourCell;
    swatch->setObjectName(Indexed("Label3", k));
    label->setBuddy(swatch);
    connect(swatch, &QAbstractButton::clicked, this, [this, k] { Frame3_->FocusRow(k); });
    Label3_[static_cast<std::size_t>(k)] = swatch;
    grid->addWidget(label, k, 0);
    grid->addWidget(swatch, k, 1);
    grid->setRowStretch(k, 1);
  }
  grid->setColumnMinimumWidth(1, fontMetrics().height() * 3);
  return box;
}

QWidget* FormGenelSetup::CreateStationsTab() {
  auto* tab = new QWidget;
  Check2_ = new WrappedCheckBox(QStringLiteral(
      "Tablo İşlemlerinde; Excel tablosu kaydedildikten sonra Excel'den otomatik olarak çıkılsın"));
  Check2_->setObjectName(QStringLiteral("Check2"));

  auto* layout = new QVBoxLayout(tab);
  layout->addWidget(CreateExtremeModes());
  layout->addWidget(Check2_);
  layout->addWidget(CreateHint(QStringLiteral("Leave the spreadsheet program after a table has been saved")));
  layout->addStretch(1);
  return tab;
}

QWidget* FormGenelSetup::CreateExtremeModes() {
  auto* box = new QGroupBox(frame_.Run().language.Text(Caption::ExtremeSelection));
  box->setObjectName(QStringLiteral("Frame2"));
  OptionExt_ = {
      new WrappedRadioButton(
          QStringLiteral("Günlük Extrem Değerler cihazın kaydetmiş olduğu değerlerden aynen alınsın")),
      new WrappedRadioButton(QStringLiteral(
          "Günlük Extrem Değerler seçilmiş olan kayıt aralıklarına ait ortalama değerler içerisinden "
          "program tarafından seçilsin"))};
  const QString hints[] = {
      QStringLiteral("Daily extremes as the logger recorded them"),
      QStringLiteral("Daily extremes selected by the program from the mean values of the "
                     "record intervals")};
  auto* layout = new QVBoxLayout(box);
  for (int k = 0; k < 2; ++k) {
    auto* option = OptionExt_[static_cast<std::size_t>(k)];
    option->setObjectName(Indexed("OptionExt", k));
    layout->addWidget(option);
    layout->addWidget(CreateHint(hints[k]));
  }
  return box;
}

QWidget* FormGenelSetup::CreateButtons() {
  const Language& language = frame_.Run().language;
  auto* row = new QWidget;
  auto* confirm = new QPushButton(language.Text(Caption::OkOptions));
  confirm->setObjectName(QStringLiteral("Command1"));
  confirm->setDefault(true);
  auto* leave = new QPushButton(language.Text(Caption::ExitOptions));
  leave->setObjectName(QStringLiteral("Command2"));
  leave->setAutoDefault(true);  // with the focus on it, Return leaves instead of confirming
  connect(confirm, &QPushButton::clicked, this, &FormGenelSetup::Confirm);
  connect(leave, &QPushButton::clicked, this, &QWidget::close);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  layout->addStretch(1);
  layout->addWidget(confirm);
  layout->addWidget(leave);
  return row;
}

QLabel* FormGenelSetup::CreateHint(const QString& english) {
  auto* hint = new QLabel(english);
  hint->setWordWrap(true);
  hint->setForegroundRole(QPalette::PlaceholderText);
  hint->setIndent(fontMetrics().height() * 3 / 2);
  hint->setVisible(frame_.Run().language.Choice() == LanguageChoice::English);
  return hint;
}

void FormGenelSetup::ShowForm(const OptionsForm& form) {
  Check1_->setChecked(form.drawExtremes);
  Check2_->setChecked(form.quitOffice);
  for (std::size_t k = 0; k < OptionExt_.size(); ++k) {
    OptionExt_[k]->setChecked(form.extremeIndex == static_cast<int>(k));
  }
  Text1_->setText(form.mouseAdjustment);
  for (int k = 0; k < kSwatchCount; ++k) {
    SetSwatch(k, form.colours[static_cast<std::size_t>(k)]);
    Frame3_->MarkColour(k, form.colours[static_cast<std::size_t>(k)]);
  }
}

OptionsForm FormGenelSetup::EditedForm() const {
  OptionsForm form;
  form.drawExtremes = Check1_->isChecked();
  form.quitOffice = Check2_->isChecked();
  for (std::size_t k = 0; k < OptionExt_.size(); ++k) {
    if (OptionExt_[k]->isChecked()) form.extremeIndex = static_cast<int>(k);
  }
  form.mouseAdjustment = Text1_->text();
  for (std::size_t k = 0; k < Label3_.size(); ++k) form.colours[k] = Label3_[k]->Number();
  return form;
}

void FormGenelSetup::SetSwatch(int index, qint32 number) {
  const Language& language = frame_.Run().language;
  ColourCell& swatch = *Label3_[static_cast<std::size_t>(index)];
  swatch.SetNumber(number);
  const QString name = ColourName(number, language);
  swatch.setAccessibleName(language.Text(kSwatchCaptions[index]) + QStringLiteral(": ") + name);
  swatch.setToolTip(name);
}

void FormGenelSetup::Confirm() {
  RunValues& run = frame_.Run();
  Options options = run.options;
  PutForm(EditedForm(), options);
  if (const Status saved = SaveOptions(options, run.options, run.settings); !saved) {
    QMessageBox::warning(this, run.language.attentionTitle, run.language.Say(saved.Failure()));
    return;
  }
  run.options = LoadOptions(run.settings);
  close();
}

void FormGenelSetup::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) SSTab1_->setCurrentIndex(0);
}

void FormGenelSetup::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Confirm();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace vesk
