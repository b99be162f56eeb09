// The review grid as a table model: a thin view of an EditSession's grid, nothing is copied.
#pragma once

#include <QAbstractTableModel>
#include <QItemSelection>

#include <functional>

#include "review/editing.h"

namespace vesk {

/// Model row n is grid row n + 1; the last model row is the empty row behind the readings.
class ReviewGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Role {
    BorderColourRole = Qt::UserRole,  ///< QColor of the cell's border; invalid for none
  };

  /// What the tool tip of a corrected level says of the raw one, cm.
  using RawLevelText = std::function<QString(double rawCm)>;

  /// The session must outlive the model.
  explicit ReviewGridModel(EditSession& session, QObject* parent = nullptr);

  void SetRawLevelText(RawLevelText text) { rawLevelText_ = std::move(text); }
  /// What the tool tip of a discharge says; empty: nothing.
  using DischargeText = std::function<QString(int gridRow)>;
  void SetDischargeText(DischargeText text) { dischargeText_ = std::move(text); }

  [[nodiscard]] static int GridRow(const QModelIndex& index) { return index.row() + 1; }
  /// Index of a grid row's cell; invalid when there is no such row.
  [[nodiscard]] QModelIndex IndexOf(int gridRow, GridColumn column) const;
  /// Width of a column at 15 twips to the pixel; 585 twips are 39 pixels. Least sizes: fonts may ask for
  /// more.
  [[nodiscard]] static int ColumnWidthPixels(GridColumn column);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  /// The selected cells as tab-separated lines, one block behind the other; for the clipboard.
  [[nodiscard]] QString SelectionText(const QItemSelection& selection) const;

 Q_SIGNALS:
  /// A typed level that was not taken.
  void EditRefused(const vesk::Error& error);
  /// A typed level that was taken.
  void LevelTaken(int gridRow);

 private:
  void RowChanged(int gridRow);
  void AllRowsChanged();

  EditSession& session_;
  RawLevelText rawLevelText_;
  DischargeText dischargeText_;
};

}  // namespace vesk
