// Makes the selection window's controls in its language; the parts of the window are laid out with it.
#pragma once

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "selection/form_sec_controls.h"
#include "shell/language.h"

namespace vesk {

class FormSecMaker {
 public:
  static constexpr int kTwipsPerPixel = 15;
  static constexpr int kGap = 6;

  FormSecMaker(QWidget& form, const Language& language, FormSecControls& controls)
      : form_(form), language_(language), c_(controls) {}

 protected:
  QString Say(const Wording& wording) const { return language_.Say(wording); }
  QString Text(const char16_t* turkish, Caption english) const {
    return language_.Choice() == LanguageChoice::English ? language_.Text(english)
                                                         : QString::fromUtf16(turkish);
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

  QWidget& form_;
  const Language& language_;
  FormSecControls& c_;
};

/// Left: folder, stations, water years, raw files, rating curve.
QWidget* MakeChoiceColumn(QWidget& form, const Language& language, FormSecControls& controls);
/// Middle: the review grid and what is done with it.
QWidget* MakeReviewPanel(QWidget& form, const Language& language, FormSecControls& controls);
/// Right: setup parameters, loaded files, messages.
QWidget* MakeParameterColumn(QWidget& form, const Language& language, FormSecControls& controls);
/// Right, while graph entries are collected.
QWidget* MakeGraphColumn(QWidget& form, const Language& language, FormSecControls& controls);

}  // namespace vesk
