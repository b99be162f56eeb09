#include "datafiles/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vesk {
namespace {

bool IsDigit(QChar c) {
  return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// The leading number of a text, blanks skipped, in the shape that from_chars reads.
QByteArray LeadingNumber(QStringView text, QChar decimalSign) {
  QByteArray digits;
  bool point = false;
  bool exponent = false;
  for (const QChar c : text) {
    if (c.isSpace()) continue;
    const bool atStart = digits.isEmpty() || (exponent && (digits.back() == 'e'));
    if (IsDigit(c)) {
      digits += static_cast<char>(c.unicode());
    } else if (c == decimalSign && !point && !exponent) {
      point = true;
      digits += '.';
    } else if ((c == QLatin1Char('-') || c == QLatin1Char('+')) && atStart) {
      if (c == QLatin1Char('-'))
        digits += '-';
      else if (exponent)
        continue;
    } else if ((c == QLatin1Char('e') || c == QLatin1Char('E')) && !exponent && !digits.isEmpty()) {
      exponent = true;
      digits += 'e';
    } else {
      break;
    }
  }
  return digits;
}

double LeadingNumberValue(QStringView text, QChar decimalSign) {
  const QByteArray digits = LeadingNumber(text, decimalSign);
  double value = 0;
  const auto [end, problem] = std::from_chars(digits.constData(), digits.constData() + digits.size(), value);
  if (problem != std::errc{} || !std::isfinite(value)) return 0;
  return value;
}

}  // namespace

double ParseNumber(QStringView text, const Regional& regional) {
  const bool regionalComma = regional.decimalSign == QLatin1Char(',');
  if (text.contains(QLatin1Char(',')) && regionalComma) {
    // The region's own reading takes a whole text only; anything else falls back to the leading number.
    QString pointed = text.trimmed().toString();
    if (pointed.count(QLatin1Char(',')) == 1 && !pointed.contains(QLatin1Char('.'))) {
      pointed.replace(QLatin1Char(','), QLatin1Char('.'));
      bool ok = false;
      const double value = pointed.toDouble(&ok);
      if (ok && std::isfinite(value)) return value;
    }
  }
  return LeadingNumberValue(text, QLatin1Char('.'));
}

std::optional<double> ReadWholeNumber(QStringView text) {
  QString pointed = text.trimmed().toString();
  pointed.replace(QLatin1Char(','), QLatin1Char('.'));
  if (pointed.isEmpty()) return std::nullopt;
  const bool plain = std::all_of(pointed.cbegin(), pointed.cend(), [](QChar c) {
    return IsDigit(c) || c == QLatin1Char('.') || c == QLatin1Char('-') || c == QLatin1Char('+');
  });
  bool ok = false;
  const double value = pointed.toDouble(&ok);  // always the C locale
  if (!plain || !ok || !std::isfinite(value)) return std::nullopt;
  return value;
}

QString NumberText(double value) {
  if (value == 0) return QStringLiteral("0");  // also -0
  std::array<char, 64> buffer{};
  // 15 significant digits hide the binary tail of a decimal figure; %g drops trailing zeros.
  const auto [end, problem] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15);
  if (problem != std::errc{}) return QString::number(value, 'g', 15);
  return QString::fromLatin1(buffer.data(), end - buffer.data());
}

QString TwoDigits(int value) {
  return PaddedNumber(value, 2);
}

QString PaddedNumber(int value, int width) {
  const QString digits = QString::number(std::abs(value)).rightJustified(width, QLatin1Char('0'));
  return value < 0 ? QLatin1Char('-') + digits : digits;
}

}  // namespace vesk
