// Discharges of a year's readings by a rating curve, beside walking the readings alone.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

#include "ratings/curve_source.h"
#include "ratings/fit_curve.h"
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

/// 125 gaugings along the sample's curve, each some percent off it.
void Fit(benchmark::State& state) {
  const vesk::CurvePeriod period = vesk::sample::SampleCurve().periods[0];
  std::vector<vesk::Gauging> gaugings(125);
  for (std::size_t i = 0; i < gaugings.size(); ++i) {
    const double level = 140 + 2.6 * static_cast<double>(i);
    gaugings[i].levelCm = level;
    gaugings[i].dischargeM3s =
        vesk::CurveDischarge(period, level) * (1 + 0.04 * std::sin(12.9898 * static_cast<double>(i)));
  }
  for (auto _ : state) {
    const auto fit = vesk::FitCurve(gaugings, static_cast<int>(state.range(0)));
    if (!fit) state.SkipWithError("no fit");
    benchmark::DoNotOptimize(fit);
  }
}
BENCHMARK(Fit)->DenseRange(1, 3)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
