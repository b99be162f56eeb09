// Cells of the review grid on screen: the border of minimum records, and the editor of a level.
#pragma once

#include <QStyledItemDelegate>

namespace vesk {

/// The editor is light yellow and turns "ö", "/" and "," into "." while the operator types.
class ReviewGridDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
};

}  // namespace vesk
