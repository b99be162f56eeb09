#include "selection/limits_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "datafiles/numbers.h"
#include "shell/language.h"

namespace vesk {
namespace {

constexpr Wording kTitles[] = {
    {u"Sıçrama: komşularının ortalamasından en çok (cm)",
     u"Spike: off the mean of its neighbours at most (cm)"},
    {u"Değişim hızı: en çok (cm/sa)", u"Rate of change at most (cm/h)"},
    {u"Düz çizgi: en çok bu kadar saat", u"Flat line: at most so many hours"},
    {u"Düz çizgi: bu kadar oynama sayılmaz (cm)", u"Flat line: this much movement does not count (cm)"},
    {u"En düşük seviye (cm)", u"Lowest level (cm)"},
    {u"En yüksek seviye (cm)", u"Highest level (cm)"}};
constexpr const char* kNames[] = {"SinirSicrama", "SinirHiz",     "SinirSaat",
                                  "SinirOynama",  "SinirEnDusuk", "SinirEnYuksek"};

QString TextOf(const std::optional<double>& value) {
  return value ? NumberText(*value) : QString();
}

}  // namespace

LimitsDialog::LimitsDialog(const Language& language, const QString& station,
                           const std::optional<StationLimits>& kept, const StationLimits& proposed,
                           QWidget* parent)
    : QDialog(parent), language_(language) {
  setObjectName(QStringLiteral("SinirPenceresi"));
  setWindowTitle(language.Say(Wording{u"%1 istasyonunun sınırları", u"Limits of station %1"}, station));
  auto* form = new QFormLayout;
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    fields_[i] = new QLineEdit(this);
    fields_[i]->setObjectName(QLatin1String(kNames[i]));
    fields_[i]->setPlaceholderText(TextOf({}));
    form->addRow(language.Say(kTitles[i]), fields_[i]);
  }
  auto* hint = new QLabel(
      kept
          ? language.Say(Wording{u"Değerler istasyon veri tabanından. Boş bırakılan sınır aranmaz.",
                                 u"The values are the register's. A limit left empty is not looked for."})
          : language.Say(Wording{u"Veri tabanında bu istasyonun sınırı yok; değerler kendi okumalarından "
                                 u"önerildi. Boş bırakılan sınır aranmaz.",
                                 u"The register has none of this station; the values are proposed by its own "
                                 u"readings. A limit left empty is not looked for."}),
      this);
  hint->setWordWrap(true);
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("SinirMesaji"));
  message_->setWordWrap(true);
  auto* propose = new QPushButton(language.Say(Wording{u"Önerilenler", u"Proposed values"}), this);
  propose->setObjectName(QStringLiteral("SinirOner"));
  auto* forget =
      new QPushButton(language.Say(Wording{u"Veri tabanından çıkar", u"Remove from the register"}), this);
  forget->setObjectName(QStringLiteral("SinirSil"));
  forget->setEnabled(kept.has_value());
  auto* save = new QPushButton(language.Say(Wording{u"Kaydet", u"Save"}), this);
  save->setObjectName(QStringLiteral("SinirKaydet"));
  save->setDefault(true);
  auto* cancel = new QPushButton(language.Say(Wording{u"Vazgeç", u"Cancel"}), this);
  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {propose, forget}) buttons->addWidget(button);
  buttons->addStretch(1);
  for (QPushButton* button : {save, cancel}) buttons->addWidget(button);
  auto* all = new QVBoxLayout(this);
  all->addWidget(hint);
  all->addLayout(form);
  all->addWidget(message_);
  all->addLayout(buttons);
  connect(propose, &QPushButton::clicked, this, [this, proposed] { Fill(proposed); });
  connect(forget, &QPushButton::clicked, this, &LimitsDialog::Forget);
  connect(save, &QPushButton::clicked, this, &LimitsDialog::Take);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  Fill(kept.value_or(proposed));
}

void LimitsDialog::Fill(const StationLimits& limits) {
  fields_[Spike]->setText(TextOf(limits.spikeCm));
  fields_[Rate]->setText(TextOf(limits.rateCmPerHour));
  fields_[FlatHours]->setText(TextOf(limits.flatHours));
  fields_[FlatCm]->setText(NumberText(limits.flatCm));
  fields_[Lowest]->setText(TextOf(limits.lowestCm));
  fields_[Highest]->setText(TextOf(limits.highestCm));
  message_->clear();
}

void LimitsDialog::Refuse(Field field, const QString& reason) {
  message_->setText(language_.Say(kTitles[field]) + QStringLiteral(": ") + reason);
  fields_[static_cast<std::size_t>(field)]->setFocus();
  fields_[static_cast<std::size_t>(field)]->selectAll();
}

/// False, and told, when the field holds something else than a number.
bool LimitsDialog::Read(Field field, bool mayBeNegative, std::optional<double>& into) {
  constexpr double kBeyondAllLevels = 1e6;
  const QString text = fields_[static_cast<std::size_t>(field)]->text().trimmed();
  into = text.isEmpty() ? std::nullopt : ReadWholeNumber(text);
  if (text.isEmpty()) return true;
  if (into && (mayBeNegative || *into >= 0) && std::abs(*into) <= kBeyondAllLevels) return true;
  Refuse(field, mayBeNegative ? language_.Say(Wording{u"beklenen bir sayı", u"expected a number"})
                              : language_.Say(Wording{u"beklenen sıfır veya daha büyük bir sayı",
                                                      u"expected a number, 0 or above"}));
  return false;
}

std::optional<StationLimits> LimitsDialog::Typed() {
  StationLimits limits;
  std::optional<double> flatCm;
  if (!Read(Spike, false, limits.spikeCm) || !Read(Rate, false, limits.rateCmPerHour) ||
      !Read(FlatHours, false, limits.flatHours) || !Read(FlatCm, false, flatCm) ||
      !Read(Lowest, true, limits.lowestCm) || !Read(Highest, true, limits.highestCm))
    return std::nullopt;
  limits.flatCm = flatCm.value_or(0);
  if (limits.flatHours && *limits.flatHours == 0) {
    Refuse(FlatHours,
           language_.Say(Wording{u"beklenen sıfırdan büyük bir sayı", u"expected a number above 0"}));
    return std::nullopt;
  }
  if (limits.lowestCm && limits.highestCm && *limits.lowestCm >= *limits.highestCm) {
    Refuse(Highest,
           language_.Say(Wording{u"en düşük seviyeden büyük olmalı", u"must be above the lowest level"}));
    return std::nullopt;
  }
  return limits;
}

void LimitsDialog::Take() {
  chosen_ = Typed();
  if (chosen_) accept();
}

void LimitsDialog::Forget() {
  chosen_.reset();
  accept();
}

}  // namespace vesk
