// Discharges of a year's readings by a rating curve, beside walking the readings alone.
#include <benchmark/benchmark.h>

#include <memory>

#include "ratings/curve_source.h"
#include "review/station_series.h"
#include "tools/sample_data.h"
#include "tools/sample_ratings.h"

namespace {

/// 15-minute readings of a year, one centimetre apart up and down.
vesk::StationSeries Year() {
  constexpr int kReadings = 35040;
  constexpr int kStep = 15;
  std::vector<vesk::Reading> readings(kReadings);
  for (int i = 0; i < kReadings; ++i) {
    vesk::Reading& reading = readings[static_cast<std::size_t>(i)];
    reading.day =
        vesk::Day(std::chrono::year(2023) / 10 / 1) + std::chrono::days(i * kStep / vesk::kMinutesPerDay);
    reading.minuteOfDay = static_cast<std::int16_t>(i * kStep % vesk::kMinutesPerDay);
    reading.levelCm = 150 + std::abs(i % 600 - 300);
  }
  return vesk::StationSeries(std::move(readings));
}

void WalkLevels(benchmark::State& state) {
  const vesk::StationSeries series = Year();
  for (auto _ : state) {
    double sum = 0;
    for (int row = 1; row <= series.ReadingCount(); ++row) sum += series.At(row).levelCm;
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(WalkLevels)->Unit(benchmark::kMillisecond);

void WalkDischarges(benchmark::State& state) {
  vesk::StationSeries series = Year();
  vesk::RatingCurve curve = vesk::sample::SampleCurve();
  if (state.range(0) != 0)
    curve.periods[0].shifts = {{vesk::sample::At(2023, 12, 1), -3}, {vesk::sample::At(2024, 5, 1), 4}};
  series.SetCurve(std::make_shared<vesk::CurveSource>(curve, QString(), QByteArray()));
  for (auto _ : state) {
    double sum = 0;
    for (int row = 1; row <= series.ReadingCount(); ++row) sum += series.CurveDischargeOf(row)->m3s;
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(WalkDischarges)->ArgName("shifts")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
