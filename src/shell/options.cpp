#include "shell/options.h"

#include <limits>

#include "datafiles/numbers.h"
#include "shell/settings.h"

namespace vesk {
namespace {

constexpr int kSlotCount = 40;

/// "01" to "40".
QString SlotKey(int n) {
  return TwoDigits(n);
}

}  // namespace

Options LoadOptions(const Settings& settings) {
  std::vector<QString> keys;
  for (int n = 1; n <= kSlotCount; ++n) keys.push_back(SlotKey(n));
  const std::vector<QString> values = settings.ReadSettings(kOptionsSection, keys);
  Options options;
  for (int n = 1; n <= kSlotCount; ++n) options.Slot(n) = values[static_cast<std::size_t>(n - 1)];
  options.extremeOptionIndex = static_cast<int>(options.Slot(8).indexOf(QLatin1Char('T')));
  options.mouseAdjustment = ParseNumber(options.Slot(22), Regional{.decimalSign = QLatin1Char(',')});
  return options;
}

Options FirstRunOptions() {
  Options options;
  for (const auto& [key, value] : FirstRunOptionEntries()) options.Slot(key.toInt()) = value;
  return options;
}

Status SaveOptions(const Options& options, const Options& asRead, Settings& settings) {
  std::vector<std::pair<QString, std::optional<QString>>> entries;
  for (int n = 1; n <= kSlotCount; ++n) {
    const bool changed = options.Slot(n) != asRead.Slot(n);
    entries.emplace_back(SlotKey(n), changed ? std::optional(options.Slot(n)) : std::nullopt);
  }
  return settings.MergeSettings(kOptionsSection, entries);
}

qint32 ColourNumber(const QString& slotText) {
  bool isNumber = false;
  const qint64 number = slotText.trimmed().toLongLong(&isNumber);
  const bool fits =
      number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<quint32>::max();
  return isNumber && fits ? static_cast<qint32>(number) : 0;
}

}  // namespace vesk
