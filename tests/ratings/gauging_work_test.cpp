// Gaugings that come in beside stored ones, and levels that the recording gives them.
#include <gtest/gtest.h>

#include "datafiles/dates.h"
#include "ratings/merge_gaugings.h"
#include "ratings/recorded_levels.h"
#include "review/station_series.h"

namespace vesk {
namespace {

Gauging GaugingAt(const char* time, double m3s) {
  Gauging gauging;
  if (*time != 0) gauging.time = ReadDateTime(QString::fromLatin1(time));
  gauging.dischargeM3s = m3s;
  return gauging;
}

TEST(MergeGaugings, KnowsWhatIsThereByItsTime) {
  const std::vector<StoredGauging> stored{
      {1, GaugingAt("05/10/2023 10:00", 1)}, {2, GaugingAt("06/10/2023 10:00", 2)}, {3, GaugingAt("", 5)}};
  const std::vector<Gauging> incoming{GaugingAt("05/10/2023 10:00", 1),  // there already
                                      GaugingAt("06/10/2023 10:00", 9),  // another one of that time
                                      GaugingAt("07/10/2023 10:00", 3),  // new
                                      GaugingAt("07/10/2023 10:00", 3),  // the same line twice
                                      GaugingAt("07/10/2023 10:00", 4),  // and contradicting it
                                      GaugingAt("", 5),
                                      GaugingAt("", 6)};
  const GaugingMerge kept = MergeGaugings(stored, incoming, false);
  EXPECT_EQ(kept.added, (std::vector<std::size_t>{2, 6}));
  EXPECT_EQ(kept.same, (std::vector<std::size_t>{0, 3, 5}));
  EXPECT_EQ(kept.different, (std::vector<std::size_t>{1, 4}));
  EXPECT_EQ(kept.changes.size(), 2U);
  const GaugingMerge replaced = MergeGaugings(stored, incoming, true);
  EXPECT_EQ(replaced.replaced, (std::vector<std::size_t>{1}));
  EXPECT_EQ(replaced.different, (std::vector<std::size_t>{4})) << "of two in one file neither is the later";
  EXPECT_EQ(replaced.changes.front().before->key, 2);
}

Reading ReadingAt(const char* time, double levelCm, ReadingKind kind = ReadingKind::Ordinary) {
  const DateTime at = *ReadDateTime(QString::fromLatin1(time));
  Reading reading;
  reading.day = std::chrono::floor<std::chrono::days>(at);
  reading.minuteOfDay = static_cast<std::int16_t>((at - reading.day).count());
  reading.levelCm = levelCm;
  reading.kind = kind;
  return reading;
}

TEST(RecordedLevels, AreReadBetweenReadingsAndNeverOverAGap) {
  StationSeries series({ReadingAt("05/10/2023 10:00", 100),
                        ReadingAt("05/10/2023 10:10", 900, ReadingKind::Maximum),
                        ReadingAt("05/10/2023 11:00", 110), ReadingAt("05/10/2023 12:00", 120),
                        ReadingAt("05/10/2023 15:00", 150), ReadingAt("05/10/2023 16:00", 160)});
  const auto at = [&series](const char* time) {
    return LevelAt(series, *ReadDateTime(QString::fromLatin1(time)));
  };
  EXPECT_EQ(at("05/10/2023 11:00"), 110);
  EXPECT_NEAR(at("05/10/2023 10:15").value_or(0), 102.5, 1e-9) << "the record beside it is no reading";
  EXPECT_EQ(at("05/10/2023 13:00"), std::nullopt) << "three hours without a reading";
  EXPECT_EQ(at("05/10/2023 09:59"), std::nullopt);
  EXPECT_EQ(at("05/10/2023 16:01"), std::nullopt);
  RowState corrected = *series.StateOf({.rawRow = 3});
  corrected.levelCm = 210;
  series.SetState({.rawRow = 3}, corrected);
  EXPECT_EQ(at("05/10/2023 11:00"), 210) << "as corrected";
}

}  // namespace
}  // namespace vesk
