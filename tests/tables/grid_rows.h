// Grids of a few readings, as a test writes them down.
#pragma once

#include <QStringList>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "review/review_grid.h"

namespace vesk::test {

/// A day a line: "01/10/2010 06:00 100; 12:00 110 yok; 18:30 131.5 Max 20": time, level, Max or Min for a
/// record, discharge.
inline StationSeries GridOf(const char* days) {
  std::vector<Reading> readings;
  std::vector<QString> discharges;
  for (const QString& line : QString::fromUtf8(days).split(QLatin1Char('\n'))) {
    const Day day = ReadDate(line.left(10)).value();
    for (const QString& text : line.mid(11).split(QLatin1String("; "))) {
      QStringList fields = text.split(QLatin1Char(' '));
      const auto kind = ReadKind(fields.value(2));
      if (kind) fields.removeAt(2);
      readings.push_back({.levelCm = ReadWholeNumber(fields.at(1)).value(),
                          .day = day,
                          .minuteOfDay = static_cast<std::int16_t>(ReadClock(fields.at(0)).value()),
                          .kind = kind.value_or(ReadingKind::Ordinary)});
      discharges.push_back(fields.value(2));
    }
  }
  StationSeries series(std::move(readings));
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    RowState state = series.Raw().StateOf(row);
    state.discharge = DischargeOfLog(discharges[static_cast<std::size_t>(row - 1)]);
    series.SetState({.rawRow = row}, state);
  }
  return series;
}

}  // namespace vesk::test
