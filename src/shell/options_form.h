// What the options dialog shows and edits, apart from its controls.
#pragma once

#include <QString>

#include <array>

#include "shell/options.h"

namespace vesk {

inline constexpr int kSwatchCount = 6;      ///< background, station 1, scale lines, stations 2 to 4
inline constexpr int kPaletteColumns = 13;  ///< colours offered for each swatch
inline constexpr int kPaletteCells = kSwatchCount * kPaletteColumns;

struct OptionsForm {
  bool drawExtremes = false;                   ///< slot 1
  std::array<qint32, kSwatchCount> colours{};  ///< slots 2 to 7, colour numbers
  int extremeIndex = -1;                       ///< slot 8: 0 "TF", 1 "FT", anything else none
  bool quitOffice = false;                     ///< slot 9
  QString mouseAdjustment;                     ///< slot 22, as typed
};

OptionsForm FormOf(const Options& options);
/// Sets slots 1 to 9 and 22 and leaves the other slots alone.
void PutForm(const OptionsForm& form, Options& options);

/// Colour number of a palette cell, 0 to 77. Cell i belongs to swatch i / 13.
qint32 PaletteColour(int cell);

}  // namespace vesk
