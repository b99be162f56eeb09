// Colours as settings store them and as the classic palette of 16 colours numbers them.
#pragma once

#include <QtGlobal>

#include <optional>

namespace vesk {

/// 0xFFRRGGBB of the palette's colours that the program uses; in front of each its number.
struct PaletteColour {
  static constexpr quint32 /* 7 */ kLightGrey = 0xFFC0C0C0;
  static constexpr quint32 /* 9 */ kLightBlue = 0xFF0000FF;
  static constexpr quint32 /* 10 */ kLightGreen = 0xFF00FF00;
  static constexpr quint32 /* 12 */ kLightRed = 0xFFFF0000;
  static constexpr quint32 /* 14 */ kLightYellow = 0xFFFFFF00;
  static constexpr quint32 /* 15 */ kWhite = 0xFFFFFFFF;
};

/// n of a stored number 0x80000000 + n; nothing for a colour 0x00BBGGRR.
constexpr std::optional<unsigned> SystemColourOf(qint32 number) {
  const auto bits = static_cast<quint32>(number);
  if ((bits & 0x80000000U) == 0) return std::nullopt;
  return bits & 0xFFU;
}

/// 0xFFRRGGBB of a stored number 0x00BBGGRR.
constexpr quint32 RgbOf(qint32 number) {
  const auto bits = static_cast<quint32>(number);
  return 0xFF000000U | (bits & 0xFFU) << 16U | (bits & 0xFF00U) | (bits >> 16U & 0xFFU);
}

}  // namespace vesk
