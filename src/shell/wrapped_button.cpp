#include "shell/wrapped_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace vesk {
namespace {

constexpr int kTextFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int kFocusMargin = 2;  // pixels around the text

int TextLeft(const QAbstractButton& button, const WrappedButtonParts& parts) {
  const QStyle* style = button.style();
  return style->pixelMetric(parts.indicatorWidth, nullptr, &button) +
         style->pixelMetric(parts.labelSpacing, nullptr, &button) + kFocusMargin;
}

int FirstLineHeight(const QAbstractButton& button, const WrappedButtonParts& parts) {
  return std::max(button.fontMetrics().height(),
                  button.style()->pixelMetric(parts.indicatorWidth, nullptr, &button));
}

QRect TextBounds(const QAbstractButton& button, int width) {
  return button.fontMetrics().boundingRect(QRect(0, 0, width, 100'000), kTextFlags, button.text());
}

}  // namespace

int WrappedButtonHeight(const QAbstractButton& button, const WrappedButtonParts& parts, int width) {
  const int textWidth = std::max(1, width - TextLeft(button, parts) - kFocusMargin);
  const int lines = TextBounds(button, textWidth).height();
  return std::max(lines, FirstLineHeight(button, parts)) + 2 * kFocusMargin;
}

QSize WrappedButtonSize(const QAbstractButton& button, const WrappedButtonParts& parts, int letters) {
  const int widest = button.fontMetrics().averageCharWidth() * letters;
  const int width = TextBounds(button, widest).width() + TextLeft(button, parts) + 2 * kFocusMargin;
  return {width, WrappedButtonHeight(button, parts, width)};
}

void PaintWrappedButton(QAbstractButton& button, const WrappedButtonParts& parts,
                        QStyleOptionButton& option) {
  QStylePainter painter(&button);
  const int left = TextLeft(button, parts);
  const QRect text = button.rect().adjusted(left, kFocusMargin, -kFocusMargin, -kFocusMargin);
  const bool focus =
      (option.state & QStyle::State_HasFocus) != 0 && (option.state & QStyle::State_KeyboardFocusChange) != 0;

  option.text.clear();
  option.state &= ~QStyle::State_HasFocus;
  option.rect = QRect(0, kFocusMargin, button.width(), FirstLineHeight(button, parts));
  painter.drawControl(parts.control, option);
  painter.drawItemText(text, kTextFlags, button.palette(), button.isEnabled(), button.text(),
                       QPalette::WindowText);
  if (!focus) return;
  QStyleOptionFocusRect ring;
  ring.initFrom(&button);
  ring.rect =
      TextBounds(button, text.width()).translated(text.topLeft()).adjusted(-2, -2, 2, 2) & button.rect();
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, ring);
}

template <class Base>
void WrappedButton<Base>::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionButton option;
  this->initStyleOption(&option);
  PaintWrappedButton(*this, Parts(), option);
}

template <>
WrappedButtonParts WrappedButton<QCheckBox>::Parts() {
  return {QStyle::CE_CheckBox, QStyle::PM_IndicatorWidth, QStyle::PM_CheckBoxLabelSpacing};
}

template <>
WrappedButtonParts WrappedButton<QRadioButton>::Parts() {
  return {QStyle::CE_RadioButton, QStyle::PM_ExclusiveIndicatorWidth, QStyle::PM_RadioButtonLabelSpacing};
}

template class WrappedButton<QCheckBox>;
template class WrappedButton<QRadioButton>;

}  // namespace vesk
