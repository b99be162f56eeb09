// Loading one water year of 15-minute readings into the review grid, beside reading the same bytes alone.
#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include "review/load_readings.h"
#include "review/raw_files.h"
#include "tools/sample_data.h"

namespace {

class BulkFolder {
 public:
  BulkFolder() {
    const auto names = vesk::sample::WriteBulkData(folder_.path(), 1);
    if (names) name_ = names->front();
  }
  [[nodiscard]] QString Directory() const { return folder_.path() + QLatin1Char('/'); }
  [[nodiscard]] QString Path() const { return folder_.filePath(name_); }

 private:
  QTemporaryDir folder_;
  QString name_;
};

const BulkFolder& Bulk() {
  static const BulkFolder folder;
  return folder;
}

void ReadBytes(benchmark::State& state) {
  qint64 bytes = 0;
  for (auto _ : state) {
    QFile file(Bulk().Path());
    if (!file.open(QIODevice::ReadOnly)) state.SkipWithError("file is missing");
    const QByteArray content = file.readAll();
    bytes += content.size();
    benchmark::DoNotOptimize(content.constData());
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(ReadBytes)->Unit(benchmark::kMillisecond);

void LoadWaterYear(benchmark::State& state) {
  vesk::LoadRequest request;
  request.dataDirectory = Bulk().Directory();
  request.station = vesk::StationId(QStringLiteral("101-20000"));
  request.files = vesk::ListRawFiles(Bulk().Directory());
  vesk::ReadHeaders(request.dataDirectory, request.files);
  request.choice = vesk::WaterYears{{{{2025}}}};
  const qint64 fileBytes = QFile(Bulk().Path()).size();
  qint64 bytes = 0;
  for (auto _ : state) {
    const auto loaded = vesk::LoadReadings(request);
    if (!loaded || loaded->series.ReadingCount() != 35040 + 2 * 365)
      state.SkipWithError("not what was written");
    bytes += fileBytes;
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(LoadWaterYear)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
