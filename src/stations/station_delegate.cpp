#include "stations/station_delegate.h"

#include <QAbstractItemView>
#include <QLineEdit>

#include <algorithm>

#include "stations/station_table_model.h"

namespace vesk {

bool IsStationNumber(const QString& text) {
  constexpr qsizetype kLength = 5;
  return text.size() == kLength &&
         std::ranges::all_of(text, [](QChar letter) { return letter >= u'0' && letter <= u'9'; });
}

StationDelegate::StationDelegate(QObject* parent) : QStyledItemDelegate(parent) {
  connect(this, &QAbstractItemDelegate::closeEditor, this, [this](QWidget* /*editor*/, EndEditHint hint) {
    if (hint == SubmitModelCache) Q_EMIT EndedByEnter();
  });
}

void StationDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                   const QModelIndex& index) const {
  const auto* line = qobject_cast<QLineEdit*>(editor);
  const QString text = line == nullptr ? QString() : line->text().trimmed();
  const bool changed = line != nullptr && text != index.data(Qt::EditRole).toString();
  if (changed && index.column() == StationTableModel::Number && !IsStationNumber(text)) {
    Q_EMIT NumberDoubted(index, text);
    return;
  }
  QStyledItemDelegate::setModelData(editor, model, index);
}

}  // namespace vesk
