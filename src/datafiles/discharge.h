// A discharge with what is to be known of it beside its figure.
#pragma once

#include <QString>

#include <cstdint>

namespace vesk {

enum class DischargeFlag : std::uint8_t {
  None,               ///< between the lowest and the highest gauged level
  Dry,                ///< 0: the level is not above that of no flow
  ExtrapolatedBelow,  ///< below the lowest gauged level, within what is permitted
  ExtrapolatedAbove,
  TooLow,    ///< none: lower than may be extrapolated
  TooHigh,   ///< none: higher than may be extrapolated
  NoPeriod,  ///< none: the curve holds at no such time
};

constexpr bool HasDischarge(DischargeFlag flag) {
  return flag <= DischargeFlag::ExtrapolatedAbove;
}

constexpr bool IsExtrapolated(DischargeFlag flag) {
  return flag == DischargeFlag::ExtrapolatedBelow || flag == DischargeFlag::ExtrapolatedAbove;
}

struct DischargeValue {
  double m3s = 0;  ///< says nothing where there is none
  DischargeFlag flag = DischargeFlag::NoPeriod;
};

/// "", "dry", "extrapolated_below", "extrapolated_above", "too_low", "too_high", "no_period": as files have
/// them.
QString FlagText(DischargeFlag flag);

/// What stands behind a figure that has a flag, and in the place of one that is missing.
inline constexpr char16_t kFlaggedSign = u'*';

/// As a cell shows it: three significant digits, "12.3", "0.00456", "1230"; with kFlaggedSign behind it when
/// it has a flag; kFlaggedSign alone where there is none.
QString DischargeText(const DischargeValue& value);

/// Three significant digits of a discharge, without an exponent.
QString DischargeDigits(double m3s);

}  // namespace vesk
