// The names of raw logger files: as delivered, and with the day count that they carry afterwards.
#pragma once

#include <QString>

#include <optional>

namespace vesk {

inline constexpr int kStationEntryLength = 9;  ///< logger prefix, "-", station number
inline constexpr int kStemLength = 16;         ///< up to the six characters of the download software
inline constexpr int kListNameLength = 25;

/// "???-?????-??????.txt", case aside.
bool IsDeliveredName(const QString& name);
/// "???-?????-??????=????.txt", case aside; one to four characters may stand behind "=".
bool IsCountedName(const QString& name);
/// Stem, "=", the day count in four digits, ".txt".
QString CountedName(const QString& stem, int daysCovered);
/// A counted name with its count brought to four digits.
QString PaddedCountedName(const QString& name);
/// Order of a file list: by name, case aside.
bool ComesBefore(const QString& a, const QString& b);

}  // namespace vesk
