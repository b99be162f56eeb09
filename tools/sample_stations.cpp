// The stations of the sample data: what each of them is there to show.
#include "tools/sample_data.h"

namespace vesk::sample {

namespace {

/// Readings from first to last, both included.
void Span(RawFilePlan& plan, DateTime first, DateTime last) {
  plan.first = first;
  plan.count = static_cast<int>((last - first) / std::chrono::minutes(plan.intervalMinutes)) + 1;
}

std::function<int(DateTime)> LevelsOf(const River& river) {
  return [river](DateTime time) { return RiverLevelCm(river, time); };
}

/// Hourly optical encoder: one spike of the float, and a last read-out whose levels were corrected.
SampleStation HourlyRiver() {
  const River river{.baseCm = 95, .seasonCm = 70, .floodCm = 260, .rippleCm = 1, .seed = 11};
  RawFilePlan plan;
  plan.station = "12001";
  plan.levelCm = [river](DateTime time) {
    return time == At(2024, 5, 17, 14) ? 999 : RiverLevelCm(river, time);
  };
  SampleStation station{QStringLiteral("101-12001"), QStringLiteral("Kızılçay - Değirmenköy"), {}};
  const auto readOut = [&](const char* stem, DateTime first, DateTime last) {
    plan.stem = stem;
    Span(plan, first, last);
    station.files.push_back(plan);
  };
  readOut("240401", At(2023, 10, 1, 1), At(2024, 3, 31, 24));
  readOut("241201", At(2024, 4, 1, 1), At(2024, 11, 30, 24));
  plan.firstLine = "01";
  readOut("251001", At(2024, 12, 1, 1), At(2025, 9, 30, 24));
  return station;
}

/// 15-minute pressure sensor: the first recording was read out twice, after 45 and after 92 days.
SampleStation QuarterHourRiver() {
  RawFilePlan plan;
  plan.station = "12002";
  plan.logger = Logger::PressureSensor;
  plan.intervalMinutes = 15;
  plan.levelCm = LevelsOf({.baseCm = 140, .seasonCm = 40, .floodCm = 420, .rippleCm = 2, .seed = 23});
  SampleStation station{QStringLiteral("101-12002"), QStringLiteral("Büyükçay - Göktepe Köprüsü"), {}};
  const auto readOut = [&](const char* stem, std::optional<int> dayCount, DateTime first, DateTime last) {
    plan.stem = stem;
    plan.dayCount = dayCount;
    Span(plan, first, last);
    station.files.push_back(plan);
  };
  readOut("231001", 45, At(2023, 10, 1, 0, 15), At(2023, 11, 15, 10, 45));
  readOut("231001", 92, At(2023, 10, 1, 0, 15), At(2024, 1, 1, 24));
  readOut("240701", {}, At(2024, 1, 2, 0, 15), At(2024, 6, 30, 24));
  readOut("241001", {}, At(2024, 7, 1, 0, 15), At(2024, 9, 30, 24));
  readOut("250401", {}, At(2024, 10, 1, 0, 15), At(2025, 3, 31, 24));
  readOut("251001", {}, At(2025, 4, 1, 0, 15), At(2025, 9, 30, 24));
  return station;
}

/// Well with an almost constant level; the logger was away for nine days in spring.
SampleStation Well() {
  RawFilePlan plan;
  plan.prefix = "102";
  plan.station = "20510";
  plan.logger = Logger::Aquifer;
  plan.version = "21";
  plan.levelCm = LevelsOf({.baseCm = 1012, .seasonCm = 9, .floodCm = 0, .rippleCm = 1, .seed = 5});
  plan.inGap = [](DateTime time) { return time > At(2024, 3, 11, 9) && time <= At(2024, 3, 20, 9); };
  SampleStation station{QStringLiteral("102-20510"), QStringLiteral("Akyazı Gözlem Kuyusu"), {}};
  const auto readOut = [&](const char* stem, DateTime first, DateTime last) {
    plan.stem = stem;
    Span(plan, first, last);
    station.files.push_back(plan);
  };
  readOut("241001", At(2023, 10, 1, 1), At(2024, 9, 30, 24));
  readOut("251001", At(2024, 10, 1, 1), At(2025, 9, 30, 24));
  return station;
}

/// 15-minute optical encoder whose clock fell 47 minutes behind over a read-out: the header has the true time
/// of the last record. The logger stood still at the end of one day, which therefore has no extremes.
SampleStation SlowClock() {
  RawFilePlan plan;
  plan.prefix = "103";
  plan.station = "31007";
  plan.version = "10";
  plan.intervalMinutes = 15;
  plan.levelCm = LevelsOf({.baseCm = 60, .seasonCm = 30, .floodCm = 180, .rippleCm = 1, .seed = 42});
  plan.noExtremes = [](Day day) { return DateTime(day) == At(2024, 2, 14); };
  plan.inGap = [](DateTime time) { return time > At(2024, 2, 14, 18) && time <= At(2024, 2, 14, 24); };
  SampleStation station{QStringLiteral("103-31007"), QStringLiteral("İncesu - Taşlıyayla"), {}};
  const auto readOut = [&](const char* stem, DateTime first, DateTime last) {
    plan.stem = stem;
    Span(plan, first, last);
    station.files.push_back(plan);
  };
  readOut("240401", At(2023, 10, 1, 0, 15), At(2024, 3, 31, 24));
  station.files.back().lastInHeader = At(2024, 4, 1, 0, 47);
  readOut("241001", At(2024, 4, 1, 1), At(2024, 9, 30, 24));
  readOut("251001", At(2024, 10, 1, 0, 15), At(2025, 9, 30, 24));
  return station;
}

/// A logger of a make that is not read: its version is refused.
SampleStation RefusedVersion() {
  RawFilePlan plan;
  plan.prefix = "104";
  plan.station = "40015";
  plan.stem = "240201";
  plan.version = "12";
  Span(plan, At(2024, 1, 1, 1), At(2024, 1, 31, 24));
  return {QStringLiteral("104-40015"), QStringLiteral("Kuruçay - Eski Köprü"), {plan}};
}

}  // namespace

std::vector<SampleStation> SampleStations() {
  return {HourlyRiver(), QuarterHourRiver(), Well(), SlowClock(), RefusedVersion()};
}

}  // namespace vesk::sample
