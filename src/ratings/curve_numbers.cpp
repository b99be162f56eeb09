#include "ratings/curve_numbers.h"

#include <array>
#include <charconv>
#include <cmath>

namespace vesk {

std::optional<double> ReadCurveNumber(QStringView text) {
  const QByteArray digits = text.trimmed().toLatin1();
  const char* const end = digits.constData() + digits.size();
  const char* begin = digits.constData();
  if (begin != end && *begin == '+') ++begin;
  double value = 0;
  const auto [stop, problem] = std::from_chars(begin, end, value);
  if (problem != std::errc{} || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

QByteArray CurveNumberText(double value) {
  std::array<char, 64> buffer{};
  if (value == 0) return QByteArrayLiteral("0");  // -0, too
  const auto [end, problem] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return problem == std::errc{} ? QByteArray(buffer.data(), end - buffer.data()) : QByteArray();
}

}  // namespace vesk
