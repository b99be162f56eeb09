// Any bytes as a change log: every line ends as a changed row or is kept for the next save; any bytes as a
// journal end in nothing worse than fewer records.
#include <QByteArray>
#include <QString>

#include <cstdint>
#include <cstdlib>

#include "review/change_log.h"
#include "review/edit_journal.h"

namespace {

/// Two days of readings with an extreme record sharing a reading's minute.
vesk::ReviewGrid SmallGrid() {
  vesk::ReviewGrid grid;
  for (int hour = 0; hour < 48; ++hour) {
    vesk::Reading reading;
    reading.day = std::chrono::year(2010) / 10 / 1;
    reading.day += std::chrono::days(hour / 24);
    reading.minuteOfDay = static_cast<std::int16_t>(hour % 24 * 60);
    reading.levelCm = 100 + hour;
    grid.Append(reading);
    if (hour % 12 != 0) continue;
    reading.kind = vesk::ReadingKind::Maximum;
    grid.Append(reading);
  }
  return grid;
}

int LinesWithText(const QByteArray& content) {
  int count = 0;
  for (const QByteArray& line : content.split('\n')) count += line.trimmed().isEmpty() ? 0 : 1;
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  vesk::ReviewGrid grid = SmallGrid();
  const auto overlay = vesk::ApplyChangeLog(content, QStringLiteral("log"), grid);
  if (overlay.applied + static_cast<int>(overlay.orphans.size()) != LinesWithText(content)) std::abort();
  if (grid.ReadingCount() != SmallGrid().ReadingCount()) std::abort();
  (void)vesk::DecodeJournal(content);
  return 0;
}
