// Any bytes as a change log: every line ends as a changed row or is kept for the next save, no row changes
// without a line, and what is saved again loads as the same corrections. Any bytes as a journal end in
// nothing worse than fewer records.
#include <QByteArray>
#include <QString>

#include <cstdint>
#include <cstdlib>

#include "review/change_log.h"
#include "review/edit_journal.h"
#include "review/review_grid.h"

namespace {

/// Two days of readings with an extreme record sharing a reading's minute.
vesk::StationSeries SmallGrid() {
  std::vector<vesk::Reading> readings;
  for (int hour = 0; hour < 48; ++hour) {
    vesk::Reading reading;
    reading.day = std::chrono::year(2010) / 10 / 1;
    reading.day += std::chrono::days(hour / 24);
    reading.minuteOfDay = static_cast<std::int16_t>(hour % 24 * 60);
    reading.levelCm = 100 + hour;
    readings.push_back(reading);
    if (hour % 12 != 0) continue;
    reading.kind = vesk::ReadingKind::Maximum;
    readings.push_back(reading);
  }
  const int count = static_cast<int>(readings.size());
  return vesk::StationSeries(std::move(readings), {{QStringLiteral("001-12345-010203"), 1, count}});
}

void Expect(bool holds) {
  if (!holds) std::abort();
}

int LinesWithText(const QByteArray& content) {
  int count = 0;
  for (const QByteArray& line : content.split('\n')) count += line.trimmed().isEmpty() ? 0 : 1;
  return count;
}

/// Level and discharge, the two cells that a change log holds.
QString Corrections(const vesk::StationSeries& grid, int row) {
  return CellText(grid, row, vesk::GridColumn::Level) + QLatin1Char('\t') +
         CellText(grid, row, vesk::GridColumn::Discharge);
}

/// Rows that the log marked; any other one is as it was loaded.
int MarkedRows(const vesk::StationSeries& grid, const vesk::StationSeries& loaded) {
  int marked = 0;
  for (int row = 1; row <= loaded.ReadingCount(); ++row) {
    const bool isMarked = grid.Mark(row).editCode == vesk::kSavedCode;
    marked += isMarked ? 1 : 0;
    Expect(isMarked || Corrections(grid, row) == Corrections(loaded, row));
    Expect(grid.At(row).Time() == loaded.At(row).Time());
  }
  return marked;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const vesk::StationSeries loaded = SmallGrid();
  vesk::StationSeries series = loaded;
  const auto overlay = vesk::ApplyChangeLog(content, QStringLiteral("log"), {}, series, false);
  Expect(overlay.applied + static_cast<int>(overlay.orphans.size()) == LinesWithText(content));
  Expect(series.ReadingCount() == loaded.ReadingCount());
  Expect(MarkedRows(series, loaded) == overlay.applied);

  const auto saved = vesk::FormChangeLog(series, overlay, {});
  vesk::StationSeries again = loaded;
  const vesk::ReviewRecord record{.states = {saved.state}, .other = {}};
  Expect(vesk::ApplyChangeLog(saved.content, QStringLiteral("log"), record, again, false).orphans ==
         overlay.orphans);
  for (int row = 1; row <= series.ReadingCount(); ++row)
    Expect(Corrections(again, row) == Corrections(series, row));
  (void)vesk::DecodeJournal(content);
  // As a record of its own, and as one that is written and read again.
  if (const auto read = vesk::DecodeReviewRecord(content, {}); read) {
    vesk::StationSeries any = loaded;
    (void)vesk::ApplyChangeLog(saved.content, QStringLiteral("log"), *read, any, true);
  }
  const auto reread = vesk::DecodeReviewRecord(vesk::EncodeReviewRecord(record), {});
  Expect(reread && reread->states == record.states);
  return 0;
}
