#include "review/review_grid_model.h"

#include <QColor>
#include <QFont>
#include <QItemSelectionRange>

#include <array>

#include "platform/colour_numbers.h"

namespace vesk {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr std::array<int, kGridColumns> kWidthsTwips = {1020, 570, 630, 585, 600, 405, 780};

const QColor kLightGrey(PaletteColour::kLightGrey);
const QColor kLightBlue(PaletteColour::kLightBlue);
const QColor kLightGreen(PaletteColour::kLightGreen);
const QColor kLightRed(PaletteColour::kLightRed);
const QColor kLightYellow(PaletteColour::kLightYellow);
const QColor kWhite(PaletteColour::kWhite);
const QColor kRedOnGreen(0xC0, 0x00, 0x00);  // light red cannot be read on light green
const QColor kMinimumBorder(0, 0, 125);

/// Of a level cell; the rest of a row stays green in a re-timed grid, whatever its level cell shows.
QColor LevelBackColour(RowShade shade) {
  switch (shade) {
    case RowShade::Corrected:
      return kLightGreen;
    case RowShade::Changed:
      return kLightYellow;
    case RowShade::Grey:
      return kLightGrey;
    case RowShade::None:
      return kWhite;
  }
  return kWhite;
}

QColor TextColour(ReadingKind kind, bool onGreen) {
  switch (kind) {
    case ReadingKind::Maximum:
      return onGreen ? kRedOnGreen : kLightRed;
    case ReadingKind::Minimum:
      return kLightBlue;
    case ReadingKind::Ordinary:
      return Qt::black;
  }
  return Qt::black;
}

/// The logger's minima have one, and both of the pair that a date correction adds.
bool HasBorder(ReadingKind kind, bool corrected) {
  return kind == ReadingKind::Minimum || (corrected && kind == ReadingKind::Maximum);
}

Qt::Alignment AlignmentOf(GridColumn column) {
  switch (column) {
    case GridColumn::Level:
    case GridColumn::Discharge:
    case GridColumn::Baseline:
      return Qt::AlignRight | Qt::AlignVCenter;
    default:
      return Qt::AlignLeft | Qt::AlignVCenter;
  }
}

QVariant BoldFont() {
  QFont font;
  font.setBold(true);
  return font;
}

}  // namespace

ReviewGridModel::ReviewGridModel(EditSession& session, QObject* parent)
    : QAbstractTableModel(parent), session_(session) {
  connect(&session_, &EditSession::RowChanged, this, &ReviewGridModel::RowChanged);
  connect(&session_, &EditSession::AllRowsChanged, this, &ReviewGridModel::AllRowsChanged);
  connect(&session_, &EditSession::GridAboutToBeReplaced, this, [this] { beginResetModel(); });
  connect(&session_, &EditSession::GridReplaced, this, [this] { endResetModel(); });
}

QModelIndex ReviewGridModel::IndexOf(int gridRow, GridColumn column) const {
  return index(gridRow - 1, static_cast<int>(column));
}

int ReviewGridModel::ColumnWidthPixels(GridColumn column) {
  return kWidthsTwips[static_cast<std::size_t>(column)] / kTwipsPerPixel;
}

int ReviewGridModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid() || session_.Series().ReadingCount() == 0) return 0;
  return session_.Series().RowCount() - 1;  // the titles are the header
}

int ReviewGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kGridColumns;
}

QVariant ReviewGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const StationSeries& series = session_.Series();
  const int row = GridRow(index);
  const auto column = static_cast<GridColumn>(index.column());
  if (role == Qt::DisplayRole || role == Qt::EditRole) return CellText(series, row, column);
  if (role == Qt::TextAlignmentRole) return QVariant(AlignmentOf(column));
  if (!series.IsReading(row)) {  // the empty row behind the last reading is painted with the others
    return role == Qt::BackgroundRole && session_.IsCorrected() ? QVariant(kLightGreen) : QVariant();
  }
  const ReadingKind kind = series.At(row).kind;
  switch (role) {
    case Qt::BackgroundRole:
      if (column == GridColumn::Level) return LevelBackColour(series.Mark(row).shade);
      return session_.IsCorrected() ? kLightGreen : kWhite;
    case Qt::ForegroundRole:
      return TextColour(kind, session_.IsCorrected());
    case Qt::FontRole:
      return kind == ReadingKind::Ordinary ? QVariant() : BoldFont();
    case Qt::ToolTipRole:
      if (dischargeText_ && column == GridColumn::Discharge) return dischargeText_(row);
      if (!rawLevelText_ || column != GridColumn::Level || !series.IsCorrected(row)) return {};
      return rawLevelText_(series.RawLevel(row));
    case BorderColourRole:
      return HasBorder(kind, session_.IsCorrected()) ? QVariant(kMinimumBorder) : QVariant();
    default:
      return {};
  }
}

QVariant ReviewGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  if (section < 0 || section >= kGridColumns) return {};
  return CellText(session_.Series(), 0, static_cast<GridColumn>(section));
}

Qt::ItemFlags ReviewGridModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  const bool editable = session_.IsEditable(GridRow(index), static_cast<GridColumn>(index.column()));
  return editable ? flags | Qt::ItemIsEditable : flags;
}

bool ReviewGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
  const auto edited = session_.EditLevel(GridRow(index), value.toString());
  if (edited) {
    if (*edited) Q_EMIT LevelTaken(GridRow(index));
    return true;
  }
  Q_EMIT EditRefused(edited.Failure());
  return false;
}

QString ReviewGridModel::SelectionText(const QItemSelection& selection) const {
  QStringList lines;
  for (const QItemSelectionRange& block : selection) {
    for (int row = block.top(); row <= block.bottom(); ++row) {
      QStringList cells;
      for (int column = block.left(); column <= block.right(); ++column) {
        cells += CellText(session_.Series(), row + 1, static_cast<GridColumn>(column));
      }
      lines += cells.join(QLatin1Char('\t'));
    }
  }
  return lines.join(QLatin1Char('\n'));
}

void ReviewGridModel::RowChanged(int gridRow) {
  Q_EMIT dataChanged(IndexOf(gridRow, GridColumn::Date), IndexOf(gridRow, GridColumn::Baseline));
}

void ReviewGridModel::AllRowsChanged() {
  if (rowCount() == 0) return;
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kGridColumns - 1));
}

}  // namespace vesk
