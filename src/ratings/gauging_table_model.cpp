#include "ratings/gauging_table_model.h"

#include <QFont>

#include <algorithm>
#include <iterator>

namespace vesk {
namespace {

constexpr Wording kNotSaved{u"Debi ölçümleri kaydedilemedi", u"The gaugings could not be saved"};

GaugingField FieldOf(int column) {
  return kGaugingFields[static_cast<std::size_t>(column)];
}

std::vector<GaugingChange> TurnedRound(const std::vector<GaugingChange>& changes) {
  std::vector<GaugingChange> back;
  std::transform(changes.rbegin(), changes.rend(), std::back_inserter(back), [](const GaugingChange& change) {
    return GaugingChange{change.after, change.before};
  });
  return back;
}

}  // namespace

GaugingTableModel::GaugingTableModel(StationRegister& stations, QString station, LanguageChoice language,
                                     RecordedLevels* levels, QObject* parent)
    : QAbstractTableModel(parent),
      stations_(stations),
      station_(std::move(station)),
      language_(language),
      levels_(levels) {}

void GaugingTableModel::LookUpLevel(Row& row) const {
  row.recordedCm.reset();
  if (levels_ != nullptr && row.shown.time && !row.shown.levelCm)
    row.recordedCm = levels_->At(*row.shown.time);
}

Status GaugingTableModel::Load() {
  const auto version = stations_.Version();  // before the rows: a change in between shows as a newer one
  if (!version) return version.Failure();
  const auto stored = stations_.GaugingsOf(station_);
  if (!stored) return stored.Failure();
  std::vector<Row> unsaved;
  for (const Row& row : rows_) {
    if (!row.Saved()) unsaved.push_back(row);
  }
  beginResetModel();
  version_ = *version;
  rows_.clear();
  for (const StoredGauging& gauging : *stored) {
    Row row{gauging, gauging.gauging};
    const auto typed =
        std::ranges::find_if(unsaved, [&gauging](const Row& one) { return one.stored == gauging; });
    if (typed != unsaved.end()) row.shown = typed->shown;
    LookUpLevel(row);
    rows_.push_back(row);
  }
  for (Row& row : unsaved) {
    if (!row.stored) rows_.push_back(row);
  }
  endResetModel();
  return {};
}

void GaugingTableModel::LookUpLevels() {
  if (levels_ == nullptr) return;
  levels_->Forget();
  for (Row& row : rows_) LookUpLevel(row);
  if (GaugingCount() > 0) Q_EMIT dataChanged(index(0, 0), index(GaugingCount() - 1, columnCount() - 1));
}

bool GaugingTableModel::IsOutdated() const {
  const auto version = stations_.Version();
  return version && *version != version_;
}

int GaugingTableModel::UnsavedCount() const {
  return static_cast<int>(std::ranges::count_if(rows_, [](const Row& row) { return !row.Saved(); }));
}

std::vector<Gauging> GaugingTableModel::Gaugings(const std::vector<int>& rows) const {
  std::vector<Gauging> gaugings;
  for (const int row : rows) {
    if (row < 0 || row >= GaugingCount()) continue;
    const Row& one = rows_[static_cast<std::size_t>(row)];
    if (one.HasDischarge()) gaugings.push_back(one.shown);
  }
  return gaugings;
}

std::vector<Gauging> GaugingTableModel::Gaugings() const {
  std::vector<int> all;
  for (int row = 0; row < GaugingCount(); ++row) all.push_back(row);
  return Gaugings(all);
}

std::vector<Gauging> GaugingTableModel::GaugingsForCurve() const {
  std::vector<Gauging> gaugings;
  for (const Row& row : rows_) {
    if (!row.HasDischarge()) continue;
    Gauging gauging = row.shown;
    if (!gauging.levelCm && row.recordedCm) PutRecordedLevel(gauging, *row.recordedCm, language_);
    if (gauging.levelCm) gaugings.push_back(gauging);
  }
  return gaugings;
}

Status GaugingTableModel::Make(std::vector<GaugingChange> changes, bool isStep) {
  if (changes.empty()) return {};
  overtaken_ = false;
  auto made = stations_.ChangeGaugings(station_, std::move(changes));
  if (!made) return made.Failure();
  overtaken_ = !*made;
  if (overtaken_) {
    return Error{kNotSaved, stations_.Path(),
                 Wording{u"başka biri bu ölçümleri bu arada değiştirdi; onun değişikliği duruyor",
                         u"somebody else has changed these gaugings meanwhile; his change holds"}};
  }
  if (isStep) steps_.push_back(**std::move(made));
  return {};
}

std::vector<GaugingChange> GaugingTableModel::ChangesOfUnsaved() const {
  std::vector<GaugingChange> changes;
  for (const Row& row : rows_) {
    if (row.Saved() || !row.HasDischarge()) continue;
    changes.push_back({row.stored, StoredGauging{row.stored ? row.stored->key : 0, row.shown}});
  }
  return changes;
}

/// Where another came first his gauging shows, and what was typed over it is told; the rest is saved.
Error GaugingTableModel::GiveWay(Error error) {
  std::vector<Row> before = rows_;
  if (const Status read = Load(); !read) return read.Failure();
  QStringList lost;
  for (const Row& row : before) {
    const auto kept = [&row](const Row& now) { return now.shown == row.shown; };
    if (row.Saved() || std::ranges::any_of(rows_, kept)) continue;
    QStringList cells;
    for (const GaugingField field : kGaugingFields) cells += TextOf(row.shown, field);
    lost += cells.join(QStringLiteral(" | "));
  }
  error.reason = Message::Joined({error.reason, Message::Verbatim(lost.join(QStringLiteral("; ")))},
                                 QStringLiteral(": "));
  const Status rest = SaveUnsaved();
  return rest ? error : rest.Failure();
}

Status GaugingTableModel::SaveUnsaved() {
  const std::vector<GaugingChange> changes = ChangesOfUnsaved();
  if (changes.empty()) return {};
  if (const Status made = Make(changes); !made) {
    if (!overtaken_) return made;
    if (!fromView_) return GiveWay(made.Failure());
    // Behind the view, which still has to close its editor: the table is read anew.
    QMetaObject::invokeMethod(
        this, [this, error = made.Failure()] { Q_EMIT SaveFailed(GiveWay(error)); }, Qt::QueuedConnection);
    return {};
  }
  // As it stands in the register now: each row takes the key that it got.
  auto change = steps_.back().begin();
  for (Row& row : rows_) {
    if (row.Saved() || !row.HasDischarge()) continue;
    row.stored = (change++)->after;
  }
  Q_EMIT Saved();
  if (GaugingCount() > 0) Q_EMIT dataChanged(index(0, 0), index(GaugingCount() - 1, columnCount() - 1));
  return {};
}

Result<GaugingMerge> GaugingTableModel::Take(const std::vector<Gauging>& incoming) {
  const auto stored = stations_.GaugingsOf(station_);
  if (!stored) return stored.Failure();
  GaugingMerge merge = MergeGaugings(*stored, incoming, false);
  if (const Status made = Make(merge.changes); !made) return made.Failure();
  if (const Status read = Load(); !read) return read.Failure();
  return merge;
}

Status GaugingTableModel::Delete(const std::vector<int>& rows) {
  std::vector<GaugingChange> changes;
  for (const int row : rows) {
    if (row < 0 || row >= GaugingCount()) continue;
    const Row& one = rows_[static_cast<std::size_t>(row)];
    if (one.stored) changes.push_back({one.stored, {}});
  }
  const Status made = Make(std::move(changes));
  if (made) {
    std::vector<int> falling = rows;
    std::ranges::sort(falling, std::greater());
    for (const int row : falling) {
      if (row >= 0 && row < GaugingCount()) rows_.erase(rows_.begin() + row);
    }
  }
  const Status read = Load();
  return made ? read : made;
}

Status GaugingTableModel::Undo() {
  if (steps_.empty()) return {};
  const std::vector<GaugingChange> back = TurnedRound(steps_.back());
  const Status made = Make(back, false);
  // What another came between can never be taken back; what was merely locked can be tried again.
  if (made || overtaken_) steps_.pop_back();
  const Status read = Load();
  return made ? read : made;
}

int GaugingTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : GaugingCount() + 1;
}

int GaugingTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kGaugingFields.size());
}

QVariant GaugingTableModel::TextAt(const Row& row, GaugingField field) const {
  if (field == GaugingField::Used) return {};
  if (field == GaugingField::Discharge && !row.HasDischarge()) return QString();
  if (field == GaugingField::Level && !row.shown.levelCm && row.recordedCm) {
    constexpr int kDecimals = 1;
    return QString::number(*row.recordedCm, 'f', kDecimals);
  }
  return TextOf(row.shown, field);
}

QString GaugingTableModel::ToolTipAt(const Row& row, GaugingField field) const {
  if (!row.HasDischarge())
    return Say(Wording{u"Kaydedilmedi: debi yok", u"Not saved: there is no discharge"});
  if (!row.Saved()) return Say(Wording{u"Henüz kaydedilmedi", u"Not saved yet"});
  if (field != GaugingField::Level || row.shown.levelCm) return {};
  if (row.recordedCm)
    return Say(Wording{u"Kayıttaki düzeltilmiş seviye; ölçümün kendi seviyesi yok",
                       u"Corrected level of the recording; the gauging has none of its own"});
  return Say(Wording{u"Seviye yok, kayıtta da bulunamadı; eğriye girmez",
                     u"No level, and none in the recording; not taken for curves"});
}

QVariant GaugingTableModel::SortKey(const Row& row, GaugingField field) const {
  constexpr double kLast = 1e300;
  switch (field) {
    case GaugingField::Time:
      return row.shown.time ? static_cast<double>(row.shown.time->time_since_epoch().count()) : kLast;
    case GaugingField::Level:
      return row.shown.levelCm.value_or(row.recordedCm.value_or(kLast));
    case GaugingField::Discharge:
      return row.shown.dischargeM3s;
    case GaugingField::Uncertainty:
      return row.shown.uncertaintyPercent.value_or(kLast);
    case GaugingField::Used:
      return row.shown.used ? 0 : 1;
    default:
      return TextOf(row.shown, field);
  }
}

QVariant GaugingTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() > GaugingCount()) return {};
  const GaugingField field = FieldOf(index.column());
  const bool isFigure = index.column() < 4;
  if (role == Qt::TextAlignmentRole && isFigure) return int(Qt::AlignRight | Qt::AlignVCenter);
  if (IsNewRow(index.row())) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return TextAt(row, field);
    case Qt::EditRole:
      return field == GaugingField::Discharge && !row.HasDischarge() ? QString() : TextOf(row.shown, field);
    case Qt::CheckStateRole:
      if (field == GaugingField::Used) return row.shown.used ? Qt::Checked : Qt::Unchecked;
      return {};
    case Qt::FontRole: {
      QFont font;
      font.setItalic(field == GaugingField::Level && !row.shown.levelCm);
      font.setBold(!row.Saved());
      font.setStrikeOut(!row.shown.used && field != GaugingField::Used);
      return font;
    }
    case Qt::ToolTipRole:
      return ToolTipAt(row, field);
    case kSortRole:
      return SortKey(row, field);
    default:
      return {};
  }
}

QVariant GaugingTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Horizontal) return Say(TitleOf(FieldOf(section)));
  return IsNewRow(section) ? QStringLiteral("*") : QString::number(section + 1);
}

Qt::ItemFlags GaugingTableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  const bool isUsed = FieldOf(index.column()) == GaugingField::Used;
  if (!isUsed) flags |= Qt::ItemIsEditable;
  if (isUsed && !IsNewRow(index.row())) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

bool GaugingTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || (role != Qt::EditRole && role != Qt::CheckStateRole)) return false;
  const GaugingField field = FieldOf(index.column());
  QString text = value.toString().trimmed();
  if (role == Qt::CheckStateRole)
    text = value.toInt() == Qt::Checked ? QStringLiteral("1") : QStringLiteral("0");
  const bool isNew = IsNewRow(index.row());
  if (isNew && text.isEmpty()) return false;
  Row changed = isNew ? Row() : rows_[static_cast<std::size_t>(index.row())];
  const Gauging before = changed.shown;
  if (const Message fault = TakeField(changed.shown, field, text); !fault.IsEmpty()) {
    if (!(text.isEmpty() && !changed.HasDischarge()))
      Q_EMIT Refused(Message::Joined({TitleOf(field), fault}, QStringLiteral(": ")));
    return false;
  }
  if (changed.shown == before && !isNew) return true;
  LookUpLevel(changed);
  if (isNew) {
    beginInsertRows({}, GaugingCount(), GaugingCount());
    rows_.push_back(changed);
    endInsertRows();
  } else {
    rows_[static_cast<std::size_t>(index.row())] = changed;
  }
  Q_EMIT dataChanged(this->index(index.row(), 0), this->index(index.row(), columnCount() - 1));
  fromView_ = true;
  const Status saved = SaveUnsaved();
  fromView_ = false;
  if (!saved) Q_EMIT SaveFailed(saved.Failure());
  return true;
}

GaugingSortModel::GaugingSortModel(GaugingTableModel& table, QObject* parent)
    : QSortFilterProxyModel(parent) {
  setSourceModel(&table);
  setSortRole(GaugingTableModel::kSortRole);
  setDynamicSortFilter(false);  // a row stays under the operator's hands while it is typed
}

bool GaugingSortModel::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  const int last = sourceModel()->rowCount() - 1;
  const bool falling = sortOrder() == Qt::DescendingOrder;
  if (left.row() == last || right.row() == last) return (right.row() == last) != falling;
  const QVariant a = left.data(sortRole()), b = right.data(sortRole());
  if (a.typeId() == QMetaType::QString) return QString::localeAwareCompare(a.toString(), b.toString()) < 0;
  return a.toDouble() < b.toDouble();
}

}  // namespace vesk
