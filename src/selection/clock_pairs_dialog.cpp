#include "selection/clock_pairs_dialog.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "datafiles/dates.h"
#include "shell/language.h"

namespace vesk {

ClockPairsDialog::ClockPairsDialog(const Language& language, const RawRows& raw, const TrueTimes& present,
                                   QWidget* parent)
    : QDialog(parent), language_(language), raw_(raw), span_(SpanOf(raw).value_or(ReadingSpan())) {
  setObjectName(QStringLiteral("SaatCiftleri"));
  setWindowTitle(language.Say(Wording{u"Saat çiftleri", u"Clock pairs"}));
  auto* hint =
      new QLabel(language.Say(Wording{
                     u"Cihazın gösterdiği ve gerçek zaman (gg/aa/yyyy ss:dd). Aradaki kayıtlar iki çift "
                     u"arasında doğrusal düzeltilir. Son kaydın çifti gereklidir.",
                     u"The time that the logger showed and the true one (dd/mm/yyyy hh:mm). Readings between "
                     u"two pairs are corrected linearly. The last reading's pair is required."}),
                 this);
  hint->setWordWrap(true);
  table_ = new QTableWidget(0, 2, this);
  table_->setObjectName(QStringLiteral("SaatTablosu"));
  table_->setHorizontalHeaderLabels({language.Say(Wording{u"Cihaz zamanı", u"Logger time"}),
                                     language.Say(Wording{u"Gerçek zaman", u"True time"})});
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table_->verticalHeader()->hide();
  table_->setMinimumSize(fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000 00:00")) * 3,
                         fontMetrics().height() * 10);
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("SaatMesaji"));
  message_->setWordWrap(true);
  const auto button = [this](const Wording& text, const char* name, auto action) {
    auto* made = new QPushButton(language_.Say(text), this);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, action);
    return made;
  };
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(button({u"Satır ekle", u"Add a row"}, "SaatEkle", &ClockPairsDialog::AddEmptyRow));
  buttons->addWidget(button({u"Satırı sil", u"Remove the row"}, "SaatSil", &ClockPairsDialog::RemoveRow));
  buttons->addStretch(1);
  buttons->addWidget(button({u"Düzelt", u"Correct"}, "SaatDuzelt", &ClockPairsDialog::Take));
  buttons->addWidget(button({u"Vazgeç", u"Cancel"}, "SaatVazgec", &QDialog::reject));
  auto* all = new QVBoxLayout(this);
  all->addWidget(hint);
  all->addWidget(table_, 1);
  all->addWidget(message_);
  all->addLayout(buttons);
  if (present.before.empty() || present.before.front().logger != span_.first)
    AddRow(span_.first, span_.first);
  for (const ClockPair& pair : present.before) AddRow(pair.logger, pair.truth);
  AddRow(span_.last, present.last);
}

void ClockPairsDialog::AddRow(DateTime logger, DateTime truth) {
  const int row = table_->rowCount();
  table_->insertRow(row);
  table_->setItem(row, 0, new QTableWidgetItem(DateTimeText(logger)));
  table_->setItem(row, 1, new QTableWidgetItem(DateTimeText(truth)));
}

void ClockPairsDialog::AddEmptyRow() {
  const int row = std::max(table_->rowCount() - 1, 0);  // the last reading stays at the end
  table_->insertRow(row);
  for (const int column : {0, 1}) table_->setItem(row, column, new QTableWidgetItem);
  table_->setCurrentCell(row, 0);
  table_->editItem(table_->item(row, 0));
}

void ClockPairsDialog::RemoveRow() {
  if (table_->currentRow() >= 0) table_->removeRow(table_->currentRow());
}

std::optional<std::vector<ClockPair>> ClockPairsDialog::Typed() {
  std::vector<ClockPair> pairs;
  for (int row = 0; row < table_->rowCount(); ++row) {
    std::array<std::optional<DateTime>, 2> times;
    for (const int column : {0, 1}) {
      const QString text = table_->item(row, column)->text().trimmed();
      auto& time = times[static_cast<std::size_t>(column)];
      time = text.contains(QLatin1Char(':')) ? ReadDateTime(text) : std::nullopt;
      if (time) continue;
      message_->setText(language_.Say(Wording{u"%1. satır: \"%2\" yerine gg/aa/yyyy ss:dd bekleniyor",
                                              u"Row %1: \"%2\"; expected dd/mm/yyyy hh:mm"},
                                      row + 1, text));
      table_->setCurrentCell(row, column);
      return std::nullopt;
    }
    pairs.push_back({*times[0], *times[1]});
  }
  std::ranges::sort(pairs, {}, &ClockPair::logger);
  return pairs;
}

void ClockPairsDialog::Take() {
  auto pairs = Typed();
  if (!pairs) return;
  if (pairs->empty() || pairs->back().logger != span_.last) {
    message_->setText(language_.Say(
        Wording{u"Son kaydın (%1) gerçek zamanı yok", u"The true time of the last reading (%1) is missing"},
        DateTimeText(span_.last)));
    return;
  }
  TrueTimes times(pairs->back().truth);
  pairs->pop_back();
  // A first reading that keeps its time needs no pair.
  if (!pairs->empty() && pairs->front() == ClockPair{span_.first, span_.first}) pairs->erase(pairs->begin());
  times.before = std::move(*pairs);
  const auto checked = CheckCorrectionTarget(times, raw_);
  if (!checked) {
    message_->setText(language_.Say(checked.Failure()));
    return;
  }
  chosen_ = times;
  accept();
}

}  // namespace vesk
