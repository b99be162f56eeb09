#include "graphs/form_coklu_secim.h"

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace vesk {

FormCokluSecim::FormCokluSecim(const QStringList& waterYears, const std::vector<int>& chosen,
                               const Language& language, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("FormCokluSecim"));
  setWindowTitle(language.Text(Caption::WaterYear));
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("List1"));
  list_->setAccessibleName(language.Text(Caption::WaterYear));
  for (const QString& text : waterYears) {
    auto* item = new QListWidgetItem(text, list_);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
  }
  for (const int place : chosen) {
    if (QListWidgetItem* item = list_->item(place)) item->setCheckState(Qt::Checked);
  }
  if (list_->count() > 0) list_->setCurrentRow(0);
  auto* accept = new QPushButton(language.Text(Caption::Ok), this);
  accept->setObjectName(QStringLiteral("Command1"));
  accept->setDefault(true);
  auto* cancel = new QPushButton(language.Text(Caption::Cancel), this);
  cancel->setObjectName(QStringLiteral("Command2"));
  connect(accept, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

  auto* column = new QVBoxLayout(this);
  column->addWidget(new QLabel(language.Text(Caption::WaterYear), this));
  column->addWidget(list_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(accept);
  buttons->addWidget(cancel);
  column->addLayout(buttons);
  resize(260, 300);
}

std::vector<int> FormCokluSecim::Chosen() const {
  std::vector<int> places;
  for (int row = 0; row < list_->count(); ++row) {
    if (list_->item(row)->checkState() == Qt::Checked) places.push_back(row);
  }
  return places;
}

}  // namespace vesk
