#include "stations/station_table_model.h"

#include <QColor>

#include <algorithm>
#include <utility>

#include "datafiles/numbers.h"

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

/// True when the register holds the same for both.
bool HoldSame(const Station& a, const Station& b) {
  return a.storedNumber == b.storedNumber && a.storedName == b.storedName;
}

}  // namespace

StationTableModel::StationTableModel(StationRegister& stations, QStringList titles, QObject* parent)
    : QAbstractTableModel(parent), stations_(stations), titles_(std::move(titles)) {}

Status StationTableModel::Load() {
  const Result<qint64> version = stations_.Version();
  if (!version) return version.Failure();
  Result<std::vector<Station>> stations = OpenStationTable(stations_);
  if (!stations) return stations.Failure();
  version_ = *version;
  beginResetModel();
  std::vector<Row> before = std::exchange(rows_, {});
  for (Station& station : *stations) rows_.push_back({std::move(station), {}, {}});
  for (Row& row : before) {
    if (row.Saved()) continue;
    const int at = row.station.key == 0 ? -1 : RowOfKey(row.station.key);
    if (row.station.key == 0) {
      rows_.push_back(std::move(row));
    } else if (at >= 0 && HoldSame(rows_[static_cast<std::size_t>(at)].station, row.station)) {
      rows_[static_cast<std::size_t>(at)] = std::move(row);
    } else {
      GiveUp(row);
    }
  }
  endResetModel();
  TellOvertaken();
  return {};
}

bool StationTableModel::IsOutdated() const {
  const Result<qint64> version = stations_.Version();
  return version && *version != version_;
}

bool StationTableModel::IsUnsaved(int row) const {
  return row >= 0 && row < StationCount() && !rows_[static_cast<std::size_t>(row)].Saved();
}

bool StationTableModel::HasUnsaved() const {
  return std::any_of(rows_.begin(), rows_.end(), [](const Row& row) { return !row.Saved(); });
}

Station StationTableModel::StationAt(int row) const {
  if (row < 0 || row >= StationCount()) return {};
  const Row& at = rows_[static_cast<std::size_t>(row)];
  Station station = at.station;
  station.number = at.Number();
  station.name = at.Name();
  return station;
}

int StationTableModel::RowOfKey(qint64 key) const {
  const auto at = std::ranges::find_if(rows_, [key](const Row& row) { return row.station.key == key; });
  return at == rows_.end() ? -1 : static_cast<int>(at - rows_.begin());
}

Status StationTableModel::Write(Row& row) {
  if (row.station.key != 0) {
    for (const StationField field : {StationField::Number, StationField::Name}) {
      if (Status written = WriteField(row, field); !written) return written;
    }
    return {};
  }
  Result<Station> added = stations_.Add(row.Number(), row.Name());
  if (!added) return added.Failure();
  row = {std::move(*added), {}, {}};
  return {};
}

Status StationTableModel::WriteField(Row& row, StationField field) {
  std::optional<QString>& typed = field == StationField::Number ? row.number : row.name;
  if (!typed) return {};
  Result<std::optional<Station>> written = stations_.Change(row.station, field, *typed);
  if (!written) return written.Failure();
  if (!*written) {
    GiveUp(row);
    return {};
  }
  row.station = std::move(**written);
  typed.reset();
  return {};
}

void StationTableModel::GiveUp(Row& row) {
  for (std::optional<QString>* typed : {&row.number, &row.name}) {
    if (!*typed) continue;
    overtaken_ += QStringLiteral("%1 %2: %3").arg(row.station.number, row.station.name, **typed);
    typed->reset();
  }
}

void StationTableModel::TellOvertaken() {
  const QStringList lines = std::exchange(overtaken_, {});
  if (!lines.isEmpty()) Q_EMIT Overtaken(lines);
}

Status StationTableModel::SaveUnsaved() {
  for (int row = 0; row < StationCount(); ++row) {
    if (!IsUnsaved(row)) continue;
    Status written = Write(rows_[static_cast<std::size_t>(row)]);
    RowChanged(row);
    if (!written) return written;
  }
  TellOvertaken();
  return {};
}

Result<bool> StationTableModel::DeleteRow(int row) {
  const Station station = rows_[static_cast<std::size_t>(row)].station;
  if (station.key == 0) {
    deleted_.push_back({StationAt(row), {QStringLiteral("No"), QStringLiteral("Ad")}, {}});
    deleted_.back().values = {deleted_.back().station.number, deleted_.back().station.name};
  } else {
    Result<std::optional<DeletedStation>> deleted = stations_.Delete(station);
    if (!deleted) return deleted.Failure();
    if (!*deleted) return false;
    deleted_.push_back(std::move(**deleted));
  }
  beginRemoveRows({}, row, row);
  rows_.erase(rows_.begin() + row);
  endRemoveRows();
  return true;
}

Result<int> StationTableModel::RestoreDeleted() {
  Result<Station> restored = stations_.Restore(deleted_.back());
  if (!restored) return restored.Failure();
  deleted_.pop_back();
  const auto behind = std::ranges::find_if(
      rows_, [&restored](const Row& row) { return row.station.key == 0 || row.station.key > restored->key; });
  const int row = static_cast<int>(behind - rows_.begin());
  beginInsertRows({}, row, row);
  rows_.insert(behind, {std::move(*restored), {}, {}});
  endInsertRows();
  return row;
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
    return index.column() == Number ? row.Number() : row.Name();
  }
  if (role == Qt::BackgroundRole && !row.Saved()) return kUnsavedBack;
  if (role == Qt::ForegroundRole && !row.Saved()) return QColor(Qt::black);
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
  const bool isNumber = index.column() == Number;
  if (text == (isNumber ? row.Number() : row.Name()) && row.Saved()) return true;
  (isNumber ? row.number : row.name) = text;
  const Status written = Write(row);
  RowChanged(number);
  if (!written) {
    Q_EMIT SaveFailed(written.Failure());
  } else if (const Status others = SaveUnsaved(); !others) {
    Q_EMIT SaveFailed(others.Failure());
  } else if (!HasUnsaved()) {
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
