#include "datafiles/raw_file_names.h"

#include <algorithm>

#include "datafiles/numbers.h"

namespace vesk {
namespace {

constexpr int kCountWidth = 4;

bool HasStem(const QString& name) {
  return name.size() > kStemLength && name[3] == QLatin1Char('-') && name[9] == QLatin1Char('-');
}

bool HasEnding(const QString& name) {
  return name.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive);
}

constexpr int kLargestCount = 9999;

/// A count that does not fit four digits would give a name that no list shows any more.
QString FourDigits(int count) {
  return PaddedNumber(std::clamp(count, 0, kLargestCount), kCountWidth);
}

}  // namespace

bool IsDeliveredName(const QString& name) {
  return name.size() == kStemLength + 4 && HasStem(name) && HasEnding(name);
}

bool IsCountedName(const QString& name) {
  const auto count = name.size() - kStemLength - 1 - 4;
  return HasStem(name) && HasEnding(name) && name[kStemLength] == QLatin1Char('=') && count >= 1 &&
         count <= kCountWidth;
}

QString CountedName(const QString& stem, int daysCovered) {
  return stem + QLatin1Char('=') + FourDigits(daysCovered) + QStringLiteral(".txt");
}

QString PaddedCountedName(const QString& name) {
  const QString count = name.mid(kStemLength + 1, name.size() - kStemLength - 1 - 4);
  bool plain = false;
  const int days = count.toInt(&plain);
  return plain ? name.left(kStemLength) + QLatin1Char('=') + FourDigits(days) + name.right(4) : name;
}

bool ComesBefore(const QString& a, const QString& b) {
  const int order = QString::compare(a, b, Qt::CaseInsensitive);
  return order != 0 ? order < 0 : a < b;
}

}  // namespace vesk
