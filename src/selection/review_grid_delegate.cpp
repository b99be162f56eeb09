#include "selection/review_grid_delegate.h"

#include <QLineEdit>
#include <QPainter>

#include "review/review_grid_model.h"

namespace vesk {
namespace {

/// Replaces what stands for the decimal point, keeping the cursor where it is.
void KeepNormalised(QLineEdit* editor) {
  QObject::connect(editor, &QLineEdit::textEdited, editor, [editor](const QString& text) {
    const QString normalised = NormaliseTypedLevel(text);
    if (normalised == text) return;
    const int cursor = editor->cursorPosition();
    editor->setText(normalised);
    editor->setCursorPosition(cursor);
  });
}

}  // namespace

void ReviewGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  const QVariant border = index.data(ReviewGridModel::BorderColourRole);
  if (!border.isValid()) return;
  painter->save();
  painter->setPen(border.value<QColor>());
  painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter->restore();
}

QWidget* ReviewGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                          const QModelIndex& /*index*/) const {
  auto* editor = new QLineEdit(parent);
  editor->setFrame(false);
  editor->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  QPalette palette = editor->palette();
  palette.setColor(QPalette::Base, QColor(0xFF, 0xFF, 0x00));
  palette.setColor(QPalette::Text, Qt::black);
  editor->setPalette(palette);
  KeepNormalised(editor);
  return editor;
}

}  // namespace vesk
