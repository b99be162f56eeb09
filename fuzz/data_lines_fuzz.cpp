// Whatever the bytes, every line is counted once, every reading kept is one that the grid can show, and no
// ordinary reading outside a window gets into it.
#include <QByteArrayView>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "datafiles/data_lines.h"

namespace {

constexpr vesk::DayWindow kWaterYear{std::chrono::year(2023) / 10 / 1, std::chrono::year(2024) / 9 / 30};

void Check(bool holds) {
  if (!holds) std::abort();
}

/// No line is lost, and what is left unread lies behind the end.
void CheckCounts(QByteArrayView bytes, const vesk::DataLineTally& tally) {
  const auto breaks = std::count(bytes.begin(), bytes.end(), '\n');
  const auto lines = breaks + (bytes.isEmpty() || bytes.back() == '\n' ? 0 : 1);
  Check(tally.kept + tally.outsideWindow + tally.blank + tally.refused + tally.afterEnd == lines);
  Check(tally.endLine >= vesk::kHeaderLines && tally.endLine - vesk::kHeaderLines + tally.unread <= lines);
  Check(tally.unreadInside <= tally.unread && tally.stray <= tally.outsideWindow);
  Check(tally.ordinary <= tally.kept + tally.outsideWindow &&
        tally.lastReading.has_value() == (tally.ordinary > 0));
}

void CheckWindow(QByteArrayView bytes) {
  std::vector<vesk::Reading> readings;
  CheckCounts(bytes, vesk::DecodeDataLines(bytes, 1, 1, kWaterYear, readings));
  for (const vesk::Reading& reading : readings) {
    const bool inside = reading.day >= kWaterYear.first && reading.day <= kWaterYear.last;
    Check(inside || reading.kind != vesk::ReadingKind::Ordinary);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  if (bytes.isEmpty()) return 0;
  std::vector<vesk::Reading> readings;
  const auto tally = vesk::DecodeDataLines(bytes, 1, 1, {}, readings);
  CheckCounts(bytes, tally);
  Check(tally.kept == static_cast<qint64>(readings.size()));
  Check(tally.refused >= static_cast<qint64>(tally.faults.size()));
  for (const vesk::Reading& reading : readings) {
    Check(reading.minuteOfDay >= 0 && reading.minuteOfDay <= 1439);
    Check(reading.levelByte >= 1 && reading.levelByte <= bytes.size() + 23);
    Check(reading.flag != '\n');
  }
  CheckWindow(bytes);
  return 0;
}
