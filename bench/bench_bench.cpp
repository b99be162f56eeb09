// The bench around the review grid. Goals: findings of 35,040 readings in 5 ms; a step of panning, zooming or
// selecting over 525,600 readings in 16 ms; a correction of 35,040 rows, and taking it back, in 100 ms each.
// Beside each stands a plain walk over the same readings, which nothing can be faster than.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QWheelEvent>

#include "findings/proposed_limits.h"
#include "review/browser.h"
#include "review/editing.h"
#include "review/row_selection.h"
#include "selection/hydrograph_pane.h"
#include "shell/language.h"
#include "tools/sample_data.h"

namespace {

using namespace vesk;

constexpr QSize kPaneSize(1000, 220);

/// One water year in a folder, at 15 minutes (35,040 readings) or at one minute (525,600).
class Year {
 public:
  explicit Year(int intervalMinutes) {
    sample::RawFilePlan plan;
    plan.first = sample::At(2024, 10, 1, 0, intervalMinutes);
    plan.intervalMinutes = intervalMinutes;
    plan.count = 525600 / intervalMinutes;
    plan.levelCm = [](DateTime time) { return sample::RiverLevelCm({}, time); };
    if (!sample::WriteRawFile(folder_.path(), plan)) qFatal("the raw file could not be written");
    auto read = LoadReadings(WaterYearRequest(folder_.path() + QLatin1Char('/'),
                                              StationId(QStringLiteral("101-12001")), {2025}, {}));
    if (!read) qFatal("the raw file could not be read");
    loaded = std::move(*read);
  }
  static const Year& Of(std::int64_t intervalMinutes) {
    static const Year quarterHours(15);
    static const Year minutes(1);
    return intervalMinutes == 1 ? minutes : quarterHours;
  }

  LoadedReadings loaded;

 private:
  QTemporaryDir folder_;
};

void WalkReadings(benchmark::State& state) {
  const StationSeries& series = Year::Of(state.range(0)).loaded.series;
  for (auto _ : state) {
    double sum = 0;
    for (int row = 1; row <= series.ReadingCount(); ++row) sum += series.At(row).levelCm;
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(WalkReadings)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

void FindFindings(benchmark::State& state) {
  const LoadedReadings& loaded = Year::Of(state.range(0)).loaded;
  const FindingInput input = InputOf(loaded, ProposeLimits(loaded.series, loaded.readOuts));
  for (auto _ : state) benchmark::DoNotOptimize(FindAll(input).size());
}
BENCHMARK(FindFindings)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

void ProposeLimitsOf(benchmark::State& state) {
  const LoadedReadings& loaded = Year::Of(state.range(0)).loaded;
  for (auto _ : state) benchmark::DoNotOptimize(ProposeLimits(loaded.series, loaded.readOuts).spikeCm);
}
BENCHMARK(ProposeLimitsOf)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

/// A pane that is painted as a screen would.
class PaintedPane {
 public:
  explicit PaintedPane(const StationSeries& series) : pane_(selection, Turkish(), nullptr) {
    pane_.resize(kPaneSize);
    pane_.SetSeries(&series);
    Paint();
  }
  void Paint() { pane_.render(&image_); }
  void Turn(int notches) {
    const QPoint middle(kPaneSize.width() / 2, kPaneSize.height() / 2);
    QWheelEvent wheel(middle, middle, {}, {0, notches * 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&pane_, &wheel);
  }
  void Drag(int from, int to, Qt::KeyboardModifiers keys = {}) {
    const auto send = [&](QEvent::Type type, int x, Qt::MouseButton button) {
      QMouseEvent event(type, QPointF(x, 100), QPointF(x, 100), button, Qt::LeftButton, keys);
      QApplication::sendEvent(&pane_, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::NoButton);
    send(QEvent::MouseButtonRelease, to, Qt::LeftButton);
  }

  RowSelection selection;

 private:
  static const Language& Turkish() {
    static const Language language = [] {
      Language made;
      made.FillTurkish();
      return made;
    }();
    return language;
  }
  HydrographPane pane_;
  QImage image_{kPaneSize, QImage::Format_RGB32};
};

void PanHydrograph(benchmark::State& state) {
  PaintedPane pane(Year::Of(state.range(0)).loaded.series);
  pane.Turn(2);  // nearly all of the year is in view
  int way = 1;
  for (auto _ : state) {
    pane.Drag(500, 500 + way * 40);
    pane.Paint();
    way = -way;
  }
}
BENCHMARK(PanHydrograph)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

void SelectInHydrograph(benchmark::State& state) {
  PaintedPane pane(Year::Of(state.range(0)).loaded.series);
  int end = 600;
  for (auto _ : state) {
    pane.Drag(100, end, Qt::ShiftModifier);
    pane.Paint();
    end = end == 600 ? 900 : 600;
  }
}
BENCHMARK(SelectInHydrograph)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

void LookAtNewLevels(benchmark::State& state) {
  const StationSeries& series = Year::Of(state.range(0)).loaded.series;
  for (auto _ : state) benchmark::DoNotOptimize(ReviewPoints(series).All().size());
}
BENCHMARK(LookAtNewLevels)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

/// A drift over every reading of a year: worked out, with its records, done, written to the journal, undone.
void CorrectWholeYear(benchmark::State& state) {
  Year year(15);
  const int rows = year.loaded.series.ReadingCount();
  EditSession session;
  session.Begin(std::move(year.loaded));
  for (auto _ : state) {
    auto changes =
        ProposeCorrection(session.Series(), {1, rows}, {.operation = RangeOperation::Shift, .firstCm = 10});
    const std::vector<LevelChange> records = RecordsConcerned(session.Series(), *changes);
    changes->insert(changes->end(), records.begin(), records.end());
    if (!session.Correct(*changes, {QStringLiteral("shift"), {}})) state.SkipWithError("not corrected");
    state.PauseTiming();
    if (!session.UndoStep()) state.SkipWithError("not undone");
    state.ResumeTiming();
  }
}
BENCHMARK(CorrectWholeYear)->Unit(benchmark::kMillisecond);

void UndoWholeYear(benchmark::State& state) {
  Year year(15);
  const int rows = year.loaded.series.ReadingCount();
  EditSession session;
  session.Begin(std::move(year.loaded));
  for (auto _ : state) {
    state.PauseTiming();
    const auto changes =
        ProposeCorrection(session.Series(), {1, rows}, {.operation = RangeOperation::Shift, .firstCm = 10});
    if (!session.Correct(*changes, {QStringLiteral("shift"), {}})) state.SkipWithError("not corrected");
    state.ResumeTiming();
    if (!session.UndoStep()) state.SkipWithError("not undone");
  }
}
BENCHMARK(UndoWholeYear)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
