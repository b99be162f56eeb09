#include "review/contradictions.h"
#include "datafiles/dates.h"
#include "datafiles/numbers.h"

#include <gtest/gtest.h>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::Change;
using test::ReadingAt;

constexpr int kDropOut = 2, kNoon = 3, kMinimum = 5;

/// A day with a drop-out of the sensor, its records, and the next day of another file.
StationSeries DayWithDropOut() {
  std::vector<Reading> readings = {ReadingAt("05/01/2024 10:00", 570),
                                   ReadingAt("05/01/2024 10:15", 30),
                                   ReadingAt("05/01/2024 12:00", 572),
                                   ReadingAt("05/01/2024 12:00", 573, ReadingKind::Maximum),
                                   ReadingAt("05/01/2024 10:14", 30, ReadingKind::Minimum),
                                   ReadingAt("05/01/2024 10:15", 1)};
  readings.back().sourceFile = 2;
  return test::GridOf(std::move(readings));
}

std::string Text(const std::vector<RecordContradiction>& found) {
  QStringList rows;
  for (const RecordContradiction& c : found) {
    rows += QStringLiteral("%1: %2 -> %3 at %4")
                .arg(QString::number(c.row), NumberText(c.recordedCm), NumberText(c.readingsCm),
                     ClockText(c.minuteOfDay));
  }
  return rows.join(QStringLiteral(", ")).toStdString();
}

TEST(Contradictions, ARecordBeyondTheCorrectedReadingsIsFound) {
  StationSeries grid = DayWithDropOut();
  EXPECT_EQ(Text(FindContradictions(grid)), "");
  Change(grid, kDropOut, 571);
  EXPECT_EQ(Text(FindContradictions(grid)), "5: 30 -> 570 at 10:00");
  Change(grid, kMinimum, 569);  // the operator's own word
  EXPECT_EQ(Text(FindContradictions(grid)), "");
}

TEST(Contradictions, TheRecordsMinuteTellsToo) {
  StationSeries grid = DayWithDropOut();
  Change(grid, kNoon, 560);  // 572 at the minute of the Max record, which says 573
  EXPECT_EQ(Text(FindContradictions(grid)), "4: 573 -> 570 at 10:00");
}

TEST(Contradictions, ARecordThatACorrectedReadingExceedsIsFound) {
  StationSeries grid = DayWithDropOut();
  Change(grid, 1, 600);
  EXPECT_EQ(Text(FindContradictions(grid)), "4: 573 -> 600 at 10:00");
  StationSeries corrected = grid;
  Change(corrected, 4, 590);
  EXPECT_EQ(Text(FindContradictions(corrected)), "") << "the operator's own word";
  Change(grid, 1, 571);  // an ordinary correction within the records says nothing against them
  EXPECT_EQ(Text(FindContradictions(grid)), "");
}

}  // namespace
}  // namespace vesk
