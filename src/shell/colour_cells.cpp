#include "shell/colour_cells.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>

#include "shell/language.h"
#include "shell/options_form.h"
#include "shell/system_colours.h"

namespace vesk {
namespace {

struct NamedColour {
  quint32 number = 0;
  Wording name;
};

constexpr NamedColour kNames[] = {
    {0x80000005, {u"pencere zemini", u"window background"}},
    {0x00C0E0FF, {u"açık turuncu", u"light orange"}},
    {0x00C0FFFF, {u"açık sarı", u"light yellow"}},
    {0x00FFFFC0, {u"açık camgöbeği", u"light cyan"}},
    {0x00FFC0C0, {u"açık mavi", u"light blue"}},
    {0x00FF8080, {u"orta mavi", u"medium blue"}},
    {0x00FF0000, {u"mavi", u"blue"}},
    {0x000080FF, {u"turuncu", u"orange"}},
    {0x0080C0FF, {u"kayısı", u"apricot"}},
    {0x0080FFFF, {u"sarı", u"yellow"}},
    {0x000000C0, {u"koyu kırmızı", u"dark red"}},
    {0x00808000, {u"petrol mavisi", u"teal"}},
    {0x00000000, {u"siyah", u"black"}},
};

QColor ContrastTo(const QColor& colour) {
  return qGray(colour.rgb()) > 140 ? Qt::black : Qt::white;
}

}  // namespace

QString ColourName(qint32 number, const Language& language) {
  for (const NamedColour& named : kNames) {
    if (named.number == static_cast<quint32>(number)) {
      return language.Say(named.name);
    }
  }
  return DesktopColour(number, QPalette()).name();
}

ColourCell::ColourCell(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::MinimumExpanding);
}

void ColourCell::SetNumber(qint32 number) {
  number_ = number;
  update();
}

QSize ColourCell::sizeHint() const {
  const int line = fontMetrics().height();
  return {line * 2, line * 7 / 4};
}

void ColourCell::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor colour = DesktopColour(number_, palette());
  const QRectF box = QRectF(rect()).adjusted(3.5, 3.5, -3.5, -3.5);
  painter.setBrush(colour);
  painter.setPen(QPen(palette().color(QPalette::Shadow), 1));
  painter.drawRoundedRect(box, 2, 2);
  if (isChecked()) {
    const double size = box.height() / 4;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ContrastTo(colour));
    painter.drawEllipse(box.center(), size / 1.5, size / 1.5);
  }
  if (hasFocus() || underMouse()) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), hasFocus() ? 2 : 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);
  }
}

void ColourCell::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      Q_EMIT ArrowPressed(-1, 0);
      break;
    case Qt::Key_Right:
      Q_EMIT ArrowPressed(1, 0);
      break;
    case Qt::Key_Up:
      Q_EMIT ArrowPressed(0, -1);
      break;
    case Qt::Key_Down:
      Q_EMIT ArrowPressed(0, 1);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      click();
      break;
    default:
      QAbstractButton::keyPressEvent(event);
  }
}

ColourPalette::ColourPalette(const Language& language, QWidget* parent) : QGroupBox(parent) {
  auto* grid = new QGridLayout(this);
  grid->setSpacing(0);
  for (int cell = 0; cell < kPaletteCells; ++cell) AddCell(cell, language);
  for (int row = 0; row < kSwatchCount; ++row) LetTabStopAt(row * kPaletteColumns);
}

void ColourPalette::AddCell(int cell, const Language& language) {
  auto* button = new ColourCell(this);
  const int row = cell / kPaletteColumns;
  button->setObjectName(QStringLiteral("Label2(%1)").arg(cell));
  button->setCheckable(true);
  button->SetNumber(PaletteColour(cell));
  const QString name = ColourName(PaletteColour(cell), language);
  button->setAccessibleName(name);
  button->setToolTip(name);
  static_cast<QGridLayout*>(layout())->addWidget(button, row, cell % kPaletteColumns);
  connect(button, &QAbstractButton::clicked, this, [this, cell, row] {
    MarkColour(row, PaletteColour(cell));
    Q_EMIT Chosen(row, PaletteColour(cell));
  });
  connect(button, &ColourCell::ArrowPressed, this,
          [this, cell](int columns, int rows) { MoveFocus(cell, columns, rows); });
  cells_.push_back(button);
}

void ColourPalette::MarkColour(int row, qint32 number) {
  for (int cell = row * kPaletteColumns; cell < (row + 1) * kPaletteColumns; ++cell) {
    const bool same = PaletteColour(cell) == number;
    cells_[static_cast<std::size_t>(cell)]->setChecked(same);
    if (same) LetTabStopAt(cell);
  }
}

void ColourPalette::FocusRow(int row) {
  for (int cell = row * kPaletteColumns; cell < (row + 1) * kPaletteColumns; ++cell) {
    ColourCell* button = cells_[static_cast<std::size_t>(cell)];
    if (button->focusPolicy() == Qt::StrongFocus) button->setFocus(Qt::TabFocusReason);
  }
}

void ColourPalette::MoveFocus(int cell, int columns, int rows) {
  const int column = cell % kPaletteColumns + columns;
  const int row = cell / kPaletteColumns + rows;
  if (column < 0 || column >= kPaletteColumns || row < 0 || row >= kSwatchCount) return;
  const int next = row * kPaletteColumns + column;
  LetTabStopAt(next);
  cells_[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
}

void ColourPalette::LetTabStopAt(int cell) {
  const int first = cell / kPaletteColumns * kPaletteColumns;
  for (int other = first; other < first + kPaletteColumns; ++other) {
    cells_[static_cast<std::size_t>(other)]->setFocusPolicy(other == cell ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

}  // namespace vesk
