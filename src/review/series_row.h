// A row of a station's series: the reading that the logger recorded, and what the operator's work adds to it.
#pragma once

#include <QString>

#include <cstdint>

#include "datafiles/reading.h"

namespace vesk {

/// Back colour of a row's level cell (Corrected: of the whole row).
enum class RowShade : std::uint8_t {
  None,       ///< default
  Changed,    ///< light yellow, palette colour 14: edited, or changed by the change log
  Grey,       ///< light grey, palette colour 7
  Corrected,  ///< light green, palette colour 10: re-timed by a date correction
};

inline constexpr int kSavedCode = 999;

/// What the operator's work adds to one reading.
struct RowMark {
  double rawCm = 0;  ///< level as the raw file has it, cm; of a computed extreme, what it was computed as
  double baselineCm = 0;     ///< level as it stood after loading and after the last save, cm
  int editCode = kFlagCode;  ///< number of edits, 999 once saved; kFlagCode: the raw flag is the code
  RowShade shade = RowShade::None;

  static constexpr int kFlagCode = -1;
};

/// Where the discharge of a row comes from.
enum class DischargeOrigin : std::uint8_t {
  None,       ///< there is none
  ChangeLog,  ///< a line of the change log, which gets it back with the next save
  Curve,      ///< a rating curve, of the level as it is now; nobody keeps it
};

/// Discharge of a row as its cell shows it.
struct Discharge {
  QString text;
  DischargeOrigin origin = DischargeOrigin::None;
};

/// As a change log's fourth field has it; none when that is empty.
inline Discharge DischargeOfLog(const QString& text) {
  if (text.isEmpty()) return {};
  return {text, DischargeOrigin::ChangeLog};
}

/// What can be changed of a row.
struct RowState {
  double levelCm = 0;
  RowMark mark{};
  Discharge discharge{};
};

/// The edit code as a number: the flag character read as one while the row is untouched.
inline int CodeValue(const Reading& reading, const RowMark& mark) {
  if (mark.editCode != RowMark::kFlagCode) return mark.editCode;
  return reading.flag >= '0' && reading.flag <= '9' ? reading.flag - '0' : 0;
}

}  // namespace vesk
