// Check boxes and option buttons whose text takes as many lines as it needs; the toolkit's own keep to one.
#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <QStyle>

class QStyleOptionButton;

namespace vesk {

/// Where the parts of such a button lie, and how they are drawn.
struct WrappedButtonParts {
  QStyle::ControlElement control;
  QStyle::PixelMetric indicatorWidth;
  QStyle::PixelMetric labelSpacing;
};

int WrappedButtonHeight(const QAbstractButton& button, const WrappedButtonParts& parts, int width);
/// Size of the button when its text is at most that many letters wide.
QSize WrappedButtonSize(const QAbstractButton& button, const WrappedButtonParts& parts, int letters);
void PaintWrappedButton(QAbstractButton& button, const WrappedButtonParts& parts, QStyleOptionButton& option);

template <class Base>
class WrappedButton : public Base {
 public:
  using Base::Base;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override {
    return WrappedButtonHeight(*this, Parts(), width);
  }
  [[nodiscard]] QSize sizeHint() const override { return WrappedButtonSize(*this, Parts(), 70); }
  [[nodiscard]] QSize minimumSizeHint() const override { return WrappedButtonSize(*this, Parts(), 45); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  [[nodiscard]] bool hitButton(const QPoint& position) const override {
    return this->rect().contains(position);
  }

 private:
  static WrappedButtonParts Parts();
};

template <>
WrappedButtonParts WrappedButton<QCheckBox>::Parts();
template <>
WrappedButtonParts WrappedButton<QRadioButton>::Parts();
extern template class WrappedButton<QCheckBox>;
extern template class WrappedButton<QRadioButton>;

using WrappedCheckBox = WrappedButton<QCheckBox>;
using WrappedRadioButton = WrappedButton<QRadioButton>;

}  // namespace vesk
