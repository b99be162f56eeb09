// The review grid: every reading of a load, one a row, and what the operator adds to it.
#pragma once

#include <QString>

#include <optional>
#include <unordered_map>
#include <vector>

#include "datafiles/helpers.h"
#include "datafiles/reading.h"

namespace vesk {

/// Columns of the review grid, left to right.
enum class GridColumn : int { Date = 0, Time, Level, Discharge, Label, Code, Baseline };
inline constexpr int kGridColumns = 7;

/// Back colour of a row's level cell (Corrected: of the whole row).
enum class RowShade : std::uint8_t {
  None,       ///< default
  Changed,    ///< light yellow, palette colour 14: edited, or changed by the change log
  Grey,       ///< light grey, palette colour 7
  Corrected,  ///< light green, palette colour 10: re-timed by a date correction
};

/// What the operator's work adds to one reading.
struct RowMark {
  double rawCm = 0;  ///< level as the raw file has it, cm; of a computed extreme, what it was computed as
  double baselineCm = 0;     ///< level as it stood after loading and after the last save, cm
  int editCode = kFlagCode;  ///< number of edits, 999 once saved; kFlagCode: the raw flag is the code
  RowShade shade = RowShade::None;

  static constexpr int kFlagCode = -1;
};

inline constexpr int kSavedCode = 999;

/// Rows are numbered from 1 as operators see them; row 0 is the titles, and one empty row stands behind the
/// last reading, so RowCount() is ReadingCount() + 2. Cell texts are formed when asked for.
class ReviewGrid {
 public:
  void Clear();
  void Append(const Reading& reading);
  /// Replaces all readings; marks and discharges are dropped.
  void Assign(std::vector<Reading> readings);

  [[nodiscard]] int ReadingCount() const { return static_cast<int>(readings_.size()); }
  [[nodiscard]] int RowCount() const { return ReadingCount() + 2; }
  [[nodiscard]] bool IsReading(int row) const { return row >= 1 && row <= ReadingCount(); }

  /// row: 1 to ReadingCount().
  [[nodiscard]] const Reading& At(int row) const { return readings_[static_cast<std::size_t>(row - 1)]; }
  [[nodiscard]] const std::vector<Reading>& Readings() const { return readings_; }
  /// The loader's way in; marks must not exist yet.
  [[nodiscard]] std::vector<Reading>& LoaderReadings() { return readings_; }

  void SetLevel(int row, double levelCm);
  void SetDischarge(int row, const QString& text);
  [[nodiscard]] QString Discharge(int row) const;

  /// Mark of a row; a row that nobody touched has its loaded level as baseline.
  [[nodiscard]] RowMark Mark(int row) const;
  void SetMark(int row, const RowMark& mark);
  /// Level of a row as its raw file has it, cm.
  [[nodiscard]] double RawLevel(int row) const { return Mark(row).rawCm; }
  /// True where the level is no longer the raw file's.
  [[nodiscard]] bool IsCorrected(int row) const { return At(row).levelCm != RawLevel(row); }
  /// The edit code as a number: the flag character read as one while the row is untouched.
  [[nodiscard]] int CodeValue(int row) const;
  [[nodiscard]] bool IsChanged(int row) const { return CodeValue(row) > 0; }
  /// Copies every level into its baseline; done once a load is complete.
  void TakeBaseline();

  /// Text of a cell as the grid shows it; the titles for row 0, empty for the spare row.
  [[nodiscard]] QString Text(int row, GridColumn column) const;

  /// First row at or after startRow with that date and time; RowCount() when there is none.
  [[nodiscard]] int FindRow(Day day, int minuteOfDay, int startRow) const;

 private:
  void EnsureMarks();

  std::vector<Reading> readings_;
  std::vector<RowMark> marks_;  ///< empty until the first mark is set
  std::unordered_map<int, QString> discharges_;
};

/// Reads a level, cm, with point or comma. Nothing for what is no number, nor for one that a file could only
/// hold with an exponent: the next load would not read it.
std::optional<double> ReadLevel(QStringView text);

/// "ort", "Max" or "Min": what a label says of a reading's kind.
QString KindText(ReadingKind kind);
/// Nothing for any other text.
std::optional<ReadingKind> ReadKind(const QString& text);

/// "01-ort", "01-Max" or "01-Min".
QString RecordLabel(const Reading& reading);

/// Widens the extent by every level of the grid.
void LevelRange(const ReviewGrid& grid, LevelExtent& extent);

}  // namespace vesk
