#include "selection/range_bar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "selection/control_maker.h"
#include "shell/flow_layout.h"
#include "shell/language.h"

namespace vesk {
namespace {

struct OperationName {
  RangeOperation operation = RangeOperation::Shift;
  Wording name;
};

constexpr OperationName kOperations[] = {
    {RangeOperation::Shift, {u"Kaydır", u"Shift"}},
    {RangeOperation::Drift, {u"Doğrusal kayma", u"Linear drift"}},
    {RangeOperation::Line, {u"Komşular arası doğru", u"Straight line"}},
    {RangeOperation::Set, {u"Değer ver", u"Set to"}},
    {RangeOperation::Raw, {u"Ham seviyeye dön", u"Back to raw"}},
    {RangeOperation::OtherReadOut, {u"Öteki dosyadan al", u"From other file"}},
};

constexpr double kMostCm = 10998;  // from one end of the level field to the other

/// A typed comma is the decimal point, as in the grid; nothing groups thousands here.
class LevelSpinBox : public QDoubleSpinBox {
 public:
  using QDoubleSpinBox::QDoubleSpinBox;

 protected:
  QValidator::State validate(QString& input, int& position) const override {
    input.replace(QLatin1Char(','), QLatin1Char('.'));
    return QDoubleSpinBox::validate(input, position);
  }
};

}  // namespace

RangeBar::RangeBar(const Language& language, QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("AralikDuzeltme"));
  operation_ = new QComboBox(this);
  operation_->setObjectName(QStringLiteral("AralikIslem"));
  operation_->setAccessibleName(
      language.Say(Wording{u"Seçili okumalar için düzeltme", u"Correction of the selected readings"}));
  for (const OperationName& known : kOperations)
    operation_->addItem(language.Say(known.name), static_cast<int>(known.operation));
  first_ = Amount("AralikIlk", language.Say(Wording{u"Değer, cm", u"Amount, cm"}));
  arrow_ = new QLabel(QStringLiteral("\u2192"), this);
  last_ = Amount("AralikSon",
                 language.Say(Wording{u"Son okumadaki değer, cm", u"Amount at the last reading, cm"}));
  exact_ = new QCheckBox(language.Say(Wording{u"yuvarlama", u"unrounded"}), this);
  exact_->setObjectName(QStringLiteral("AralikTam"));
  exact_->setToolTip(language.Say(
      Wording{u"Sonuç tam santimetreye yuvarlanmaz", u"The result is not rounded to whole centimetres"}));
  preview_ = new QPushButton(language.Say(Wording{u"Önizle", u"Preview"}), this);
  preview_->setObjectName(QStringLiteral("AralikOnizle"));
  preview_->setCheckable(true);
  apply_ = new QPushButton(language.Say(Wording{u"Uygula", u"Apply"}), this);
  apply_->setObjectName(QStringLiteral("AralikUygula"));
  for (QPushButton* button : {preview_, apply_}) button->setAutoDefault(false);
  reason_ = new QComboBox(this);
  reason_->setObjectName(QStringLiteral("DuzeltmeNedeni"));
  reason_->setEditable(true);
  reason_->setInsertPolicy(QComboBox::NoInsert);
  reason_->completer()->setCaseSensitivity(Qt::CaseSensitive);
  reason_->lineEdit()->setPlaceholderText(
      language.Say(Wording{u"Düzeltme nedeni", u"Reason of the correction"}));
  reason_->setAccessibleName(reason_->lineEdit()->placeholderText());
  reason_->setMinimumWidth(fontMetrics().horizontalAdvance(reason_->lineEdit()->placeholderText()) +
                           fontMetrics().height() * 3);

  auto* amounts = new QWidget(this);
  auto* pair = new QHBoxLayout(amounts);
  pair->setContentsMargins(0, 0, 0, 0);
  pair->addWidget(first_);
  pair->addWidget(arrow_);
  pair->addWidget(last_);
  auto* row = new FlowLayout(kGap);
  for (QWidget* control :
       std::initializer_list<QWidget*>{operation_, amounts, exact_, preview_, apply_, reason_})
    row->addWidget(control);
  setLayout(row);

  connect(operation_, &QComboBox::currentIndexChanged, this, [this] {
    Arrange();
    Q_EMIT PreviewChanged();
  });
  for (QDoubleSpinBox* amount : {first_, last_})
    connect(amount, &QDoubleSpinBox::valueChanged, this, &RangeBar::PreviewChanged);
  connect(exact_, &QCheckBox::toggled, this, &RangeBar::PreviewChanged);
  connect(preview_, &QPushButton::toggled, this, &RangeBar::PreviewChanged);
  connect(apply_, &QPushButton::clicked, this, &RangeBar::ApplyAsked);
  connect(reason_, &QComboBox::currentTextChanged, this, &RangeBar::ReasonChanged);
  Arrange();
  SetSelected(0);
}

QDoubleSpinBox* RangeBar::Amount(const char* name, const QString& title) {
  auto* box = new LevelSpinBox(this);
  box->setObjectName(QLatin1String(name));
  box->setAccessibleName(title);
  box->setToolTip(title);
  box->setRange(-kMostCm, kMostCm);
  box->setDecimals(1);
  box->setSuffix(QStringLiteral(" cm"));
  box->setLocale(QLocale::c());  // levels have a point everywhere in the program
  return box;
}

RangeOperation RangeBar::Operation() const {
  return static_cast<RangeOperation>(operation_->currentData().toInt());
}

RangeCorrection RangeBar::Correction() const {
  return {.operation = Operation(),
          .firstCm = first_->value(),
          .lastCm = last_->value(),
          .exact = exact_->isChecked()};
}

QString RangeBar::Reason() const {
  return reason_->currentText().trimmed();
}

void RangeBar::OfferReasons(const QStringList& reasons) {
  const QSignalBlocker quiet(reason_);
  const QString typed = reason_->currentText();
  reason_->clear();
  reason_->addItems(reasons);
  reason_->setCurrentIndex(-1);
  reason_->setEditText(typed);
}

void RangeBar::Arrange() {
  const RangeOperation operation = Operation();
  const bool drift = operation == RangeOperation::Drift;
  first_->setVisible(drift || operation == RangeOperation::Shift || operation == RangeOperation::Set);
  arrow_->setVisible(drift);
  last_->setVisible(drift);
  exact_->setVisible(operation != RangeOperation::Raw && operation != RangeOperation::OtherReadOut);
}

void RangeBar::SetSelected(int readings) {
  for (QWidget* control :
       std::initializer_list<QWidget*>{operation_, first_, last_, exact_, preview_, apply_})
    control->setEnabled(readings > 0);
  if (readings == 0) EndPreview();
}

bool RangeBar::Previews() const {
  return preview_->isChecked();
}

void RangeBar::EndPreview() {
  preview_->setChecked(false);
}

std::vector<QWidget*> RangeBar::TabStops() const {
  return {operation_, first_, last_, exact_, preview_, apply_, reason_};
}

}  // namespace vesk
