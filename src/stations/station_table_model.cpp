#include "stations/station_table_model.h"

#include <QColor>

#include <algorithm>

#include "datafiles/helpers.h"

namespace vesk {
namespace {

const QColor kUnsavedBack(0xFF, 0xC8, 0xC8);

/// A text as the search compares it: the four letters i of Turkish are one.
QString Folded(QString text) {
  for (const char16_t letter : {u'I', u'\u0130', u'\u0131'}) text.replace(QChar(letter), QLatin1Char('i'));
  return text.toLower();
}

/// Place of a letter in the Turkish alphabet, whatever locale the desktop runs in.
int AlphabetPlace(QChar letter) {
  static const QString kAlphabet =
      QStringLiteral("aAbBcCçÇdDeEfFgGğĞhHıIiİjJkKlLmMnNoOöÖpPqQrRsSşŞtTuUüÜvVwWxXyYzZ");
  constexpr int kBehindLetters = 0x10000;
  const auto place = kAlphabet.indexOf(letter);
  if (place >= 0) return 0x100 + static_cast<int>(place) / 2;
  return letter.unicode() < u'A' ? letter.unicode() : kBehindLetters + letter.unicode();
}

bool TurkishLess(const QString& a, const QString& b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](QChar x, QChar y) { return AlphabetPlace(x) < AlphabetPlace(y); });
}

}  // namespace

StationTableModel::StationTableModel(StationRegister& stations, QStringList titles, QObject* parent)
    : QAbstractTableModel(parent), stations_(stations), titles_(std::move(titles)) {}

Status StationTableModel::Load() {
  Result<std::vector<Station>> stations = OpenStationTable(stations_);
  if (!stations) return stations.Failure();
  beginResetModel();
  rows_.clear();
  for (Station& station : *stations) rows_.push_back({std::move(station), true});
  endResetModel();
  return {};
}

bool StationTableModel::IsUnsaved(int row) const {
  return row >= 0 && row < StationCount() && !rows_[static_cast<std::size_t>(row)].saved;
}

bool StationTableModel::HasUnsaved() const {
  return std::any_of(rows_.begin(), rows_.end(), [](const Row& row) { return !row.saved; });
}

Status StationTableModel::Write(Row& row) {
  if (row.station.key != 0) {
    Status changed = stations_.Change(row.station);
    row.saved = changed.Ok();
    return changed;
  }
  const Result<qint64> added = stations_.Add(row.station.number, row.station.name);
  row.saved = added.Ok();
  if (!added) return added.Failure();
  row.station.key = *added;
  return {};
}

Status StationTableModel::SaveUnsaved() {
  for (int row = 0; row < StationCount(); ++row) {
    if (!IsUnsaved(row)) continue;
    Status written = Write(rows_[static_cast<std::size_t>(row)]);
    RowChanged(row);
    if (!written) return written;
  }
  return {};
}

Status StationTableModel::DeleteRow(int row) {
  const qint64 key = rows_[static_cast<std::size_t>(row)].station.key;
  if (key != 0) {
    if (Status deleted = stations_.Delete(key); !deleted) return deleted;
  }
  beginRemoveRows({}, row, row);
  rows_.erase(rows_.begin() + row);
  endRemoveRows();
  return {};
}

int StationTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : StationCount() + 1;
}

int StationTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant StationTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || IsNewRow(index.row())) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole || role == Qt::EditRole) {
    return index.column() == Number ? row.station.number : row.station.name;
  }
  if (role == Qt::BackgroundRole && !row.saved) return kUnsavedBack;
  if (role == Qt::ForegroundRole && !row.saved) return QColor(Qt::black);
  return {};
}

QVariant StationTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Horizontal) return titles_.value(section);
  return IsNewRow(section) ? QVariant(QStringLiteral("*")) : QVariant(section + 1);
}

Qt::ItemFlags StationTableModel::flags(const QModelIndex& index) const {
  return index.isValid() ? QAbstractTableModel::flags(index) | Qt::ItemIsEditable : Qt::NoItemFlags;
}

bool StationTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole) return false;
  const QString text = value.toString().trimmed();
  const int number = index.row();
  if (IsNewRow(number)) {
    if (text.isEmpty()) return false;
    // The row that was typed into becomes the station, and a new empty one opens behind it.
    beginInsertRows({}, number + 1, number + 1);
    rows_.push_back({});
    endInsertRows();
  }
  Row& row = rows_[static_cast<std::size_t>(number)];
  QString& field = index.column() == Number ? row.station.number : row.station.name;
  if (field == text && row.saved) return true;
  field = text;
  const Status written = Write(row);
  RowChanged(number);
  if (!written) {
    Q_EMIT SaveFailed(written.Failure());
  } else if (const Status others = SaveUnsaved(); !others) {
    Q_EMIT SaveFailed(others.Failure());
  } else {
    Q_EMIT Saved();
  }
  return true;
}

void StationTableModel::RowChanged(int row) {
  Q_EMIT dataChanged(index(row, Number), index(row, Name));
  Q_EMIT headerDataChanged(Qt::Vertical, row, row);
}

StationFilterModel::StationFilterModel(StationTableModel& table, QObject* parent)
    : QSortFilterProxyModel(parent), table_(table) {
  setDynamicSortFilter(false);  // a row stays under the operator's hands while he types into it
  setSourceModel(&table);
}

void StationFilterModel::SetSearchText(const QString& text) {
  wanted_ = Folded(text.trimmed());
  invalidateFilter();
}

bool StationFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex& /*sourceParent*/) const {
  if (wanted_.isEmpty() || table_.IsNewRow(sourceRow) || table_.IsUnsaved(sourceRow)) return true;
  for (const int column : {StationTableModel::Number, StationTableModel::Name}) {
    const QString text = table_.data(table_.index(sourceRow, column), Qt::DisplayRole).toString();
    if (Folded(text).contains(wanted_)) return true;
  }
  return false;
}

bool StationFilterModel::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  const bool ascending = sortOrder() == Qt::AscendingOrder;
  if (table_.IsNewRow(left.row())) return !ascending;
  if (table_.IsNewRow(right.row())) return ascending;
  const QString a = left.data().toString();
  const QString b = right.data().toString();
  const auto numberA = ReadWholeNumber(a);
  const auto numberB = ReadWholeNumber(b);
  if (numberA && numberB && *numberA != *numberB) return *numberA < *numberB;
  return TurkishLess(a, b);
}

}  // namespace vesk
