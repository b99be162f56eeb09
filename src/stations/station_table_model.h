// The station register as an editable table: one row a station in stored order, and the empty row for a new
// one.
#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QStringList>

#include <vector>

#include "stations/station_register.h"

namespace vesk {

/// Writes every change through at once. A change that the register refuses stays in the table, marked, and is
/// tried again with the next one, so nothing that was typed is lost.
class StationTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Number = 0, Name, ColumnCount };

  /// titles: of the two columns. The register must outlive the model.
  StationTableModel(StationRegister& stations, QStringList titles, QObject* parent = nullptr);

  /// Reads all rows of the register.
  Status Load();
  [[nodiscard]] int StationCount() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] bool IsNewRow(int row) const { return row == StationCount(); }
  [[nodiscard]] bool IsUnsaved(int row) const;
  [[nodiscard]] bool HasUnsaved() const;
  /// Tries to write what the register refused before.
  Status SaveUnsaved();
  /// row: of a station.
  Status DeleteRow(int row);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  void Saved();
  void SaveFailed(const vesk::Error& error);

 private:
  struct Row {
    Station station;
    bool saved = true;
  };
  Status Write(Row& row);
  void RowChanged(int row);

  StationRegister& stations_;
  QStringList titles_;
  std::vector<Row> rows_;
};

/// Sorts and searches the table for the eye only; the empty row stays last and always shows.
class StationFilterModel : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  explicit StationFilterModel(StationTableModel& table, QObject* parent = nullptr);
  /// Shows the stations whose number or name holds the text, capitals and dots of the i disregarded.
  void SetSearchText(const QString& text);

 protected:
  [[nodiscard]] bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
  [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

 private:
  StationTableModel& table_;
  QString wanted_;
};

}  // namespace vesk
