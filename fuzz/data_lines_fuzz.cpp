// Whatever the bytes, every line is counted once and every reading kept is one that the grid can show.
#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "datafiles/data_lines.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  std::vector<vesk::Reading> readings;
  const auto tally = vesk::DecodeDataLines(bytes, 1, 1, {}, readings);
  if (tally.kept != static_cast<qint64>(readings.size())) std::abort();
  if (tally.refused < static_cast<qint64>(tally.faults.size())) std::abort();
  for (const vesk::Reading& reading : readings) {
    if (reading.minuteOfDay < 0 || reading.minuteOfDay > 1439) std::abort();
    if (reading.levelByte < 1 || reading.levelByte > bytes.size() + 23) std::abort();
  }
  return 0;
}
