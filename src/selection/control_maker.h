// Makes the selection window's controls in its language, as its panels lay them out.
#pragma once

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "shell/language.h"

namespace vesk {

inline constexpr int kTwipsPerPixel = 15;
inline constexpr int kGap = 6;  ///< between controls, pixels

/// Every control becomes a child of parent.
class ControlMaker {
 public:
  ControlMaker(QWidget& parent, const Language& language) : parent_(parent), language_(language) {}

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
  QPushButton* Button(const QString& caption, const char* name) const {
    auto* button = Named(new QPushButton(caption, &parent_), name);
    button->setAutoDefault(false);
    return button;
  }
  QListWidget* List(const char* name) const {
    auto* list = Named(new QListWidget(&parent_), name);
    list->setUniformItemSizes(true);
    list->setMinimumHeight(2 * parent_.fontMetrics().height());
    return list;
  }
  QLineEdit* Box(const char* name, int characters, bool readOnly = false) const {
    auto* box = Named(new QLineEdit(&parent_), name);
    const int width = box->fontMetrics().horizontalAdvance(QLatin1Char('0')) * (characters + 2);
    box->setMinimumWidth(width);
    box->setReadOnly(readOnly);
    if (readOnly) box->setFocusPolicy(Qt::ClickFocus);
    return box;
  }
  /// A label above its control, as one widget; the label is its buddy for accessibility.
  QWidget* Titled(QLabel* title, QWidget* control, QLayout* below = nullptr) const {
    auto* part = new QWidget(&parent_);
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
  QTableWidget* Table(const char* name, int rows, int columns) const {
    auto* table = Named(new QTableWidget(rows, columns, &parent_), name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(parent_.fontMetrics().height() + 3);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    return table;
  }

 protected:
  QWidget& parent_;
  const Language& language_;
};

/// What a list or table needs to show the text whole beside its scroll bar, pixels.
int WidthToShow(const QAbstractScrollArea& view, const QString& text);

}  // namespace vesk
