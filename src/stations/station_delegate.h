// The editor of the register's cells: it tells when Enter ends it, and holds a number back that is none.
#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

namespace vesk {

/// True for what the number of a station looks like in the names of raw files: five digits.
bool IsStationNumber(const QString& text);

class StationDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit StationDelegate(QObject* parent = nullptr);
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

 Q_SIGNALS:
  /// The text was typed as a number and is none; it is not in the table yet.
  void NumberDoubted(const QPersistentModelIndex& index, const QString& text) const;
  void EndedByEnter();
};

}  // namespace vesk
