// The setup parameters of a raw file as the operator sees them: fifteen labels and their values.
#pragma once

#include <QString>

#include <array>
#include <optional>

#include "datafiles/raw_header.h"

namespace vesk {

inline constexpr int kSetupRows = 15;
inline constexpr int kSetupWaterYearsRow = 14;

/// The values beside the labels, top to bottom.
using SetupCells = std::array<QString, kSetupRows>;

/// The labels, top to bottom; Turkish in both languages.
const std::array<QString, kSetupRows>& SetupLabels();

/// stationName: as the register has it.
SetupCells SetupCellsOf(const RawHeader& header, const QString& stationName);
/// None where a header says nothing that can be shown: no header, or one of another version.
std::optional<SetupCells> SetupCellsOf(const HeaderReading& reading, const QString& stationName);

/// Compares the values of a further file with those of the first: what differs reads "--". The water-years
/// row has no reference value, so it reads "--" from the second file on. reference: cells of the first file;
/// cells: what is shown; further: cells of the file just read.
void MergeSetupCells(const SetupCells& reference, const SetupCells& further, SetupCells& cells);

}  // namespace vesk
