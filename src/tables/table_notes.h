// What a level table has to say of its readings: short sentences that stand on its sheets and are asked about
// before it is made.
#pragma once

#include <QString>

#include <vector>

#include "review/not_whole_note.h"
#include "review/station_series.h"
#include "tables/level_table.h"

namespace vesk {

/// The weightiest first; empty when there is nothing to say. notWhole: what the load does without. Records
/// that contradict corrected readings matter only where the logger's extremes are taken. language: the
/// table's.
/// waterYear: of the table; flagged discharges of other loaded years are none of its own.
std::vector<QString> NotesOfTable(const Message& notWhole, const StationSeries& series, ExtremeMode mode,
                                  LanguageChoice language, int waterYear);

}  // namespace vesk
