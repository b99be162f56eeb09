#include "datafiles/discharge.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vesk {
namespace {

constexpr int kSignificant = 3;

}  // namespace

QString FlagText(DischargeFlag flag) {
  switch (flag) {
    case DischargeFlag::None:
      return {};
    case DischargeFlag::Dry:
      return QStringLiteral("dry");
    case DischargeFlag::ExtrapolatedBelow:
      return QStringLiteral("extrapolated_below");
    case DischargeFlag::ExtrapolatedAbove:
      return QStringLiteral("extrapolated_above");
    case DischargeFlag::TooLow:
      return QStringLiteral("too_low");
    case DischargeFlag::TooHigh:
      return QStringLiteral("too_high");
    case DischargeFlag::NoPeriod:
      break;
  }
  return QStringLiteral("no_period");
}

QString DischargeDigits(double m3s) {
  if (!std::isfinite(m3s) || m3s == 0) return m3s == 0 ? QStringLiteral("0") : QString();
  // Rounding decides how many digits stand before the point: 99.96 is 100, not 100.0.
  std::array<char, 32> rounded{};
  const auto end = std::to_chars(rounded.data(), rounded.data() + rounded.size(), m3s,
                                 std::chars_format::scientific, kSignificant - 1)
                       .ptr;
  double value = 0;
  std::from_chars(rounded.data(), end, value);
  const int magnitude = static_cast<int>(std::floor(std::log10(std::abs(value)) + 1e-12));
  const int decimals = std::clamp(kSignificant - 1 - magnitude, 0, 12);
  std::array<char, 64> text{};
  const auto done =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
  return done.ec == std::errc{} ? QString::fromLatin1(text.data(), done.ptr - text.data()) : QString();
}

QString DischargeText(const DischargeValue& value) {
  const QChar sign(kFlaggedSign);
  if (!HasDischarge(value.flag)) return sign;
  const QString digits = DischargeDigits(value.m3s);
  return value.flag == DischargeFlag::None ? digits : digits + sign;
}

}  // namespace vesk
