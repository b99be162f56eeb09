// The readings of one load with everything that corrects them. Raw readings keep their times and their order;
// a clock correction is a view on them, so that taking it back gives every reading its own time again, and
// what is saved and loaded is one state from which the same rows follow every time.
#pragma once

#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "datafiles/station_id.h"
#include "review/choice.h"
#include "review/date_correction.h"
#include "review/discharge_source.h"
#include "review/raw_rows.h"

namespace vesk {

/// Rows that came in from one raw file, both ends included, counted from 1 in the raw order.
struct RawFileRows {
  QString rawFile;  ///< first 16 characters of its name: the day count behind them changes
  int first = 1;
  int last = 0;
};

/// A row by what it is, whichever rows stand before it: a raw reading, or a computed extreme of a day.
struct RowRef {
  int rawRow = 0;  ///< 1 to the number of raw readings; 0: a computed extreme
  ExtremeKey extreme{};

  bool operator==(const RowRef&) const = default;
  bool operator<(const RowRef& other) const {
    return std::tie(rawRow, extreme) < std::tie(other.rawRow, other.extreme);
  }
};

/// Rows count from 1, as shown; one empty row stands behind the last reading, so RowCount() is
/// ReadingCount() + 2, the titles included.
class StationSeries {
 public:
  StationSeries() = default;
  explicit StationSeries(std::vector<Reading> raw, std::vector<RawFileRows> files = {},
                         StationId station = {}, Choice chosen = {});

  [[nodiscard]] const StationId& Station() const { return station_; }
  /// What of the station was loaded.
  [[nodiscard]] const Choice& Chosen() const { return chosen_; }

  /// The rows as operators see them: the raw ones, or re-timed with computed extremes.
  [[nodiscard]] int ReadingCount() const;
  [[nodiscard]] int RowCount() const { return ReadingCount() + 2; }
  [[nodiscard]] bool IsReading(int row) const { return row >= 1 && row <= ReadingCount(); }
  /// row: 1 to ReadingCount(), here and below. Level as corrected, time as shown.
  [[nodiscard]] Reading At(int row) const { return target_ ? RetimedAt(row) : raw_.At(row); }
  [[nodiscard]] RowMark Mark(int row) const;
  /// From the rating curve when there is one, else as the change log has it.
  [[nodiscard]] Discharge DischargeOf(int row) const;
  /// As the change log has it, whatever a rating curve makes of the level.
  [[nodiscard]] Discharge LoggedDischargeOf(int row) const;
  /// From the rating curve with all its digits; nothing without a curve.
  [[nodiscard]] std::optional<DischargeValue> CurveDischargeOf(int row) const;
  /// Discharges follow the levels from now on; null: no rating curve.
  void SetCurve(std::shared_ptr<const DischargeSource> curve) { curve_ = std::move(curve); }
  [[nodiscard]] const std::shared_ptr<const DischargeSource>& Curve() const { return curve_; }
  /// Level of a row as its raw file has it, cm; of an extreme, as it was computed.
  [[nodiscard]] double RawLevel(int row) const { return Mark(row).rawCm; }
  /// True where the level is no longer the raw file's.
  [[nodiscard]] bool IsCorrected(int row) const { return At(row).levelCm != RawLevel(row); }
  [[nodiscard]] int CodeValue(int row) const { return vesk::CodeValue(At(row), Mark(row)); }
  [[nodiscard]] bool IsChanged(int row) const { return CodeValue(row) > 0; }

  /// Every row as shown, one after the other.
  [[nodiscard]] std::vector<Reading> ReadingsAsShown() const;

  /// The readings with their own times, each with what corrects it.
  [[nodiscard]] const RawRows& Raw() const { return raw_; }
  [[nodiscard]] const std::vector<RawFileRows>& Files() const { return files_; }

  [[nodiscard]] RowRef RefOf(int shownRow) const;
  /// 0 when the row is not on the screen: a logger's record behind a clock correction.
  [[nodiscard]] int ShownRowOf(const RowRef& row) const;
  /// Raw file of a raw row, first 16 characters; empty when it is not known.
  [[nodiscard]] QString FileOf(int rawRow) const;

  /// The row's present state; nothing for a computed extreme that neither is there nor was edited.
  [[nodiscard]] std::optional<RowState> StateOf(const RowRef& row) const;
  /// A computed extreme whose mark says that nobody edited it goes back to what is computed.
  void SetState(const RowRef& row, const RowState& state);
  /// Several at once; the view is formed once.
  void SetStates(const std::vector<std::pair<RowRef, RowState>>& states);

  /// False when every row is as recorded, but for what a corrected clock computes.
  [[nodiscard]] bool HasCorrections() const { return raw_.HasStates() || !edits_.empty(); }

  /// Puts an edited extreme in its place as a file tells of it.
  void PutExtreme(const ExtremeKey& key, const ExtremeEdit& edit);
  /// Edited daily extremes, on the screen or not.
  [[nodiscard]] const ExtremeEdits& EditedExtremes() const { return edits_; }

  /// True time of the last reading and what else is known of the clock; nothing: the logger's own times.
  [[nodiscard]] const std::optional<TrueTimes>& Target() const { return target_; }
  /// target as ReadCorrectionTarget gives it for the raw readings; the last reading's own time is no
  /// correction.
  void SetTarget(const std::optional<TrueTimes>& target);
  /// Time of the last reading as shown; nothing without readings.
  [[nodiscard]] std::optional<DateTime> LastReading() const;

  /// Every level as it is now becomes its baseline; done once a load is complete.
  void TakeBaseline();

 private:
  void Store(const RowRef& row, const RowState& state);
  void FormView();
  [[nodiscard]] const RetimedRow& Retimed(int row) const { return view_[static_cast<std::size_t>(row - 1)]; }
  [[nodiscard]] Reading RetimedAt(int row) const;
  /// What the operator put in the place of a computed extreme; null when nothing.
  [[nodiscard]] const ExtremeEdit* EditOf(const RetimedRow& extreme) const;

  StationId station_;
  Choice chosen_;
  RawRows raw_;
  std::vector<RawFileRows> files_;
  std::optional<TrueTimes> target_;
  ExtremeEdits edits_;
  std::shared_ptr<const DischargeSource> curve_;
  std::vector<RetimedRow> view_;  ///< while target_ is set
};

}  // namespace vesk
