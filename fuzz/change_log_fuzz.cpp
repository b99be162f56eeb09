// A change log of any bytes changes levels and discharges of known rows, never the number of rows, and every
// line is a change, an orphan that the next save keeps, or a message.
#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "review/change_log.h"

namespace {

constexpr int kReadings = 48;

vesk::ReviewGrid TwoDays() {
  vesk::ReviewGrid grid;
  for (int i = 0; i < kReadings; ++i) {
    vesk::Reading reading;
    reading.day = std::chrono::sys_days(std::chrono::year(2023) / 10 / 1) + std::chrono::days(i / 24);
    reading.minuteOfDay = static_cast<std::int16_t>(i % 24 == 23 ? 1439 : (i % 24 + 1) * 60);
    reading.levelCm = 100 + i;
    grid.Append(reading);
  }
  grid.TakeBaseline();
  return grid;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vesk::ReviewGrid grid = TwoDays();
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  const auto overlay = vesk::ApplyChangeLog(bytes, QStringLiteral("101-12345-Degisiklikler2024.txt"), grid);
  if (grid.ReadingCount() != kReadings) std::abort();
  int changed = 0;
  for (int row = 1; row <= kReadings; ++row) {
    if (grid.CodeValue(row) == vesk::kSavedCode) ++changed;
    (void)grid.Text(row, vesk::GridColumn::Level);
  }
  if (changed > overlay.applied) std::abort();
  return 0;
}
