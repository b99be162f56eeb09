#include "datafiles/record_label.h"

#include <algorithm>
#include <array>

#include "datafiles/numbers.h"

namespace vesk {
namespace {

constexpr std::array<const char*, 3> kKindTexts = {"ort", "Max", "Min"};

}  // namespace

QString KindText(ReadingKind kind) {
  return QLatin1String(kKindTexts[static_cast<std::size_t>(kind)]);
}

std::optional<ReadingKind> ReadKind(const QString& text) {
  const auto found =
      std::ranges::find_if(kKindTexts, [&](const char* kind) { return text == QLatin1String(kind); });
  if (found == kKindTexts.end()) return std::nullopt;
  return static_cast<ReadingKind>(found - kKindTexts.begin());
}

QString RecordLabel(const Reading& reading) {
  return TwoDigits(reading.sourceFile) + QLatin1Char('-') + KindText(reading.kind);
}

}  // namespace vesk
