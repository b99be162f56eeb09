// A station's gaugings as an editable table: one row each, and the empty row for a new one.
#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

#include <optional>
#include <vector>

#include "datafiles/gauging_fields.h"
#include "ratings/merge_gaugings.h"
#include "ratings/recorded_levels.h"
#include "stations/station_register.h"

namespace vesk {

/// Writes every change through at once. A row without a discharge, and what the register refuses, stay in the
/// table, marked, so nothing that was typed is lost. Where another has changed the gauging meanwhile, his
/// change holds and the refused one is told.
class GaugingTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// A row's sort key, a QVariant of number or text.
  static constexpr int kSortRole = Qt::UserRole;

  /// The register must outlive the model. station: its number. levels: of its recording; null: none.
  GaugingTableModel(StationRegister& stations, QString station, LanguageChoice language,
                    RecordedLevels* levels, QObject* parent = nullptr);

  /// Reads all gaugings; what is not saved yet stays.
  Status Load();
  /// Looks the recording's levels up anew.
  void LookUpLevels();
  /// True when others have changed the register since it was read.
  [[nodiscard]] bool IsOutdated() const;
  [[nodiscard]] int GaugingCount() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] bool IsNewRow(int row) const { return row == GaugingCount(); }
  /// Rows that the register does not hold as they are shown.
  [[nodiscard]] int UnsavedCount() const;
  Status SaveUnsaved();
  /// As they are shown; a level that is missing is not the recording's.
  [[nodiscard]] std::vector<Gauging> Gaugings(const std::vector<int>& rows) const;
  [[nodiscard]] std::vector<Gauging> Gaugings() const;
  /// The same that can go into a curve: used, and with a level, the recording's where their own is missing.
  [[nodiscard]] std::vector<Gauging> GaugingsForCurve() const;

  /// Takes gaugings that come in; one step for Undo. What became of them.
  Result<GaugingMerge> Take(const std::vector<Gauging>& incoming);
  Status Delete(const std::vector<int>& rows);
  [[nodiscard]] bool CanUndo() const { return !steps_.empty(); }
  Status Undo();

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  /// A text that the field cannot hold; it was not taken.
  void Refused(const vesk::Message& what);
  void SaveFailed(const vesk::Error& error);
  void Saved();

 private:
  struct Row {
    std::optional<StoredGauging> stored;  ///< as the register holds it
    Gauging shown;
    std::optional<double> recordedCm = {};  ///< the recording's level where the gauging has none
    [[nodiscard]] bool HasDischarge() const { return shown.dischargeM3s > 0; }
    [[nodiscard]] bool Saved() const { return stored && stored->gauging == shown; }
  };
  /// Writes the changes as one step; an error that says so when another came between.
  Status Make(std::vector<GaugingChange> changes, bool isStep = true);
  [[nodiscard]] Error GiveWay(Error error);
  [[nodiscard]] std::vector<GaugingChange> ChangesOfUnsaved() const;
  [[nodiscard]] QString Say(const Message& message) const { return message.In(language_); }
  [[nodiscard]] QVariant TextAt(const Row& row, GaugingField field) const;
  [[nodiscard]] QString ToolTipAt(const Row& row, GaugingField field) const;
  [[nodiscard]] QVariant SortKey(const Row& row, GaugingField field) const;
  void LookUpLevel(Row& row) const;

  StationRegister& stations_;
  QString station_;
  LanguageChoice language_;
  RecordedLevels* levels_;
  std::vector<Row> rows_;
  std::vector<std::vector<GaugingChange>> steps_;  ///< as they were made, the latest last
  qint64 version_ = 0;
  bool overtaken_ = false;  ///< the last change met another one's
  bool fromView_ = false;   ///< a view is about to close its editor
};

/// Sorts for the eye only; the empty row stays last.
class GaugingSortModel : public QSortFilterProxyModel {
 public:
  explicit GaugingSortModel(GaugingTableModel& table, QObject* parent = nullptr);

 protected:
  [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
};

}  // namespace vesk
