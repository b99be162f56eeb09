// The station register as an editable table: one row a station in stored order, and the empty row for a new
// one.
#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QStringList>

#include <optional>
#include <vector>

#include "stations/station_register.h"

namespace vesk {

/// Writes every change through at once, each field by itself. A change that the register refuses stays in the
/// table, marked, and is tried again, so nothing that was typed is lost. Where another has changed the
/// station meanwhile, his change holds and the refused text is told.
class StationTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Number = 0, Name, ColumnCount };

  /// titles: of the two columns. The register must outlive the model.
  StationTableModel(StationRegister& stations, QStringList titles, QObject* parent = nullptr);

  /// Reads all rows of the register. What is not saved yet stays, unless its station has changed.
  Status Load();
  /// True when others have changed the register since it was read.
  [[nodiscard]] bool IsOutdated() const;
  [[nodiscard]] int StationCount() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] bool IsNewRow(int row) const { return row == StationCount(); }
  [[nodiscard]] bool IsUnsaved(int row) const;
  [[nodiscard]] bool HasUnsaved() const;
  /// Tries to write what the register refused before.
  Status SaveUnsaved();
  /// The station of a row as it is shown; an empty one for the new row.
  [[nodiscard]] Station StationAt(int row) const;
  /// Row of a key; -1 when there is none.
  [[nodiscard]] int RowOfKey(qint64 key) const;
  /// Deletes the station of a row. False, with the row left, when another has changed or deleted it
  /// meanwhile.
  Result<bool> DeleteRow(int row);
  [[nodiscard]] bool HasDeleted() const { return !deleted_.empty(); }
  /// Takes the latest deletion back; the row of the station.
  Result<int> RestoreDeleted();

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  void Saved();
  void SaveFailed(const vesk::Error& error);
  /// These were not stored: "number name: text", since another has changed or deleted the station.
  void Overtaken(const QStringList& lines);

 private:
  struct Row {
    Station station;                ///< as the register holds it; without a key when it does not yet
    std::optional<QString> number;  ///< typed and not stored yet
    std::optional<QString> name;
    [[nodiscard]] bool Saved() const { return !number && !name; }
    [[nodiscard]] QString Number() const { return number.value_or(station.number); }
    [[nodiscard]] QString Name() const { return name.value_or(station.name); }
  };
  Status Write(Row& row);
  Status WriteField(Row& row, StationField field);
  void GiveUp(Row& row);
  void RowChanged(int row);
  void TellOvertaken();

  StationRegister& stations_;
  QStringList titles_;
  std::vector<Row> rows_;
  std::vector<DeletedStation> deleted_;  ///< the latest last
  QStringList overtaken_;
  qint64 version_ = 0;
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
