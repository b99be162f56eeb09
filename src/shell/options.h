// The options record: forty text slots that mirror keys "01" to "40" of section Options.
#pragma once

#include <QString>

#include <array>

#include "platform/result.h"

namespace vesk {

class Settings;

struct Options {
  std::array<QString, 41> slots_;  ///< index 1 to 40; 0 is never used
  int extremeOptionIndex =
      -1;                      ///< position of the first "T" of slot 8, counted from 0; -1 when there is none
  double mouseAdjustment = 0;  ///< slot 22 as a number, pixels

  [[nodiscard]] const QString& Slot(int n) const { return slots_[static_cast<std::size_t>(n)]; }
  QString& Slot(int n) { return slots_[static_cast<std::size_t>(n)]; }
};

/// Reads all forty keys and derives the two values.
Options LoadOptions(const Settings& settings);
/// What a first run stores, without a settings file.
Options FirstRunOptions();
/// Writes the keys that differ from what was read, in one replacement of the file, which holds all forty
/// then. The others keep what the file holds now, be it another window's.
Status SaveOptions(const Options& options, const Options& asRead, Settings& settings);

/// Colour number (0x00BBGGRR, or 0x80000000 + n for a system colour) of a slot; 0 when it is no number.
qint32 ColourNumber(const QString& slotText);

}  // namespace vesk
