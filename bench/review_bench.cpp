// The selection window's own operations: choosing a station, loading to a painted grid, stepping through it.
// Goals: a station with 60 files of 1 MB in under 100 ms, 35,040 readings on screen in under 100 ms, 525,600
// in under 1 s, an edit, a jump or a step of scrolling in under 16 ms.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QScrollBar>
#include <QTemporaryDir>

#include "review/browser.h"
#include "review/editing.h"
#include "review/review_grid_model.h"
#include "review/row_selection.h"
#include "selection/review_grid_view.h"
#include "tools/sample_data.h"

namespace {

using namespace vesk;

constexpr QSize kViewSize(760, 520);

/// A folder with raw files of one station, written once.
class StationFolder {
 public:
  StationFolder(int files, int readingsPerFile, int intervalMinutes) {
    for (int i = 0; i < files; ++i) {
      sample::RawFilePlan plan;
      plan.stem = QByteArray::number(100000 + i);
      plan.firstLine = QByteArray(8, ' ');
      plan.first = sample::At(2024, 10, 1, 0, intervalMinutes);
      plan.intervalMinutes = intervalMinutes;
      plan.count = readingsPerFile;
      plan.levelCm = [](DateTime time) { return sample::RiverLevelCm({}, time); };
      if (!sample::WriteRawFile(folder_.path(), plan)) qFatal("the raw files could not be written");
    }
  }
  [[nodiscard]] QString Directory() const { return folder_.path() + QLatin1Char('/'); }
  [[nodiscard]] qint64 Bytes() const {
    qint64 bytes = 0;
    for (const QFileInfo& file : QDir(folder_.path()).entryInfoList(QDir::Files)) bytes += file.size();
    return bytes;
  }

 private:
  QTemporaryDir folder_;
};

const StationFolder& Sixty() {
  static const StationFolder folder(60, 34000, 15);
  return folder;
}

/// One water year, at 15 minutes (35,040 readings) or at one minute (525,600).
const StationFolder& Year(int intervalMinutes) {
  static const StationFolder quarterHours(1, 35040, 15);
  static const StationFolder minutes(1, 525600, 1);
  return intervalMinutes == 1 ? minutes : quarterHours;
}

LoadRequest RequestOf(const StationFolder& folder) {
  return WaterYearRequest(folder.Directory(), StationId(QStringLiteral("101-12001")), {2025}, {});
}

void ReadSameBytes(benchmark::State& state, const StationFolder& folder) {
  for (auto _ : state) {
    for (const QFileInfo& info : QDir(folder.Directory()).entryInfoList(QDir::Files)) {
      QFile file(info.filePath());
      if (!file.open(QIODevice::ReadOnly)) state.SkipWithError("file is missing");
      benchmark::DoNotOptimize(file.readAll().size());
    }
  }
  state.SetBytesProcessed(state.iterations() * folder.Bytes());
}
BENCHMARK_CAPTURE(ReadSameBytes, SixtyFiles, Sixty())->Unit(benchmark::kMillisecond);

void ChooseStationOfSixtyFiles(benchmark::State& state) {
  Browser browser(WorkMode::DataFile, {});
  browser.OpenFolder(Sixty().Directory());
  for (auto _ : state) {
    browser.SelectStation(0);
    browser.SelectWaterYears({0});
    benchmark::DoNotOptimize(browser.FileEntries());
  }
  if (browser.Files().size() != 60) state.SkipWithError("not the files that were written");
}
BENCHMARK(ChooseStationOfSixtyFiles)->Unit(benchmark::kMillisecond);

/// Grid, session and view as the window has them, without the window.
struct Screen {
  Screen() : model(session), view(nullptr) {
    view.SetGridModel(model, selection);
    view.resize(kViewSize);
    view.ensurePolished();
  }
  void Paint() {
    QImage image(kViewSize, QImage::Format_RGB32);
    view.render(&image);
    benchmark::DoNotOptimize(image.constBits());
  }
  EditSession session;
  ReviewGridModel model;
  RowSelection selection;
  ReviewGridView view;
};

void LoadToPaintedGrid(benchmark::State& state) {
  const LoadRequest request = RequestOf(Year(static_cast<int>(state.range(0))));
  Screen screen;
  int rows = 0;
  for (auto _ : state) {
    auto loaded = LoadReadings(request);
    if (!loaded) {
      state.SkipWithError("the readings could not be loaded");
      break;
    }
    screen.session.Begin(std::move(*loaded));
    screen.view.GoTo(1, GridColumn::Level, true);
    screen.Paint();
    rows = screen.session.Series().ReadingCount();
  }
  state.counters["rows"] = rows;
}
BENCHMARK(LoadToPaintedGrid)->Arg(15)->Arg(1)->Unit(benchmark::kMillisecond);

/// Steps through a year of one-minute readings.
template <class Step>
void StepThrough(benchmark::State& state, Step step) {
  static Screen* screen = [] {
    auto* made = new Screen;
    auto loaded = LoadReadings(RequestOf(Year(1)));
    if (loaded) made->session.Begin(std::move(*loaded));
    return made;
  }();
  int n = 0;
  for (auto _ : state) {
    step(*screen, ++n);
    screen->Paint();
  }
}

void Scroll(benchmark::State& state) {
  StepThrough(state,
              [](Screen& screen, int n) { screen.view.verticalScrollBar()->setValue(n * 25 % 500000); });
}
BENCHMARK(Scroll)->Unit(benchmark::kMillisecond);

void JumpToDate(benchmark::State& state) {
  StepThrough(state, [](Screen& screen, int n) {
    const DateJump jump = screen.session.GoToDate(QStringLiteral("%1/09/2025").arg(n % 28 + 1));
    screen.view.GoTo(jump.row, GridColumn::Level, true);
  });
}
BENCHMARK(JumpToDate)->Unit(benchmark::kMillisecond);

void EditALevel(benchmark::State& state) {
  StepThrough(state, [](Screen& screen, int n) {
    const int row = n * 97 % 500000 + 1;
    screen.view.GoTo(row, GridColumn::Level, false);
    screen.model.setData(screen.view.currentIndex(), QString::number(n % 1000 + 1000), Qt::EditRole);
  });
}
BENCHMARK(EditALevel)->Unit(benchmark::kMillisecond)->Iterations(200);

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
