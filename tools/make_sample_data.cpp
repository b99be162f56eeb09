// make_sample_data FOLDER: writes the sample raw files.
// make_sample_data --bulk COUNT FOLDER: writes COUNT files of a whole year for benchmarks.
#include <QCoreApplication>
#include <QDir>

#include <cstdio>

#include "tools/sample_data.h"

namespace {

int Fail(const QString& text) {
  std::fprintf(stderr, "make_sample_data: %s\n", qUtf8Printable(text));
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList words = QCoreApplication::arguments().mid(1);
  const bool bulk = words.size() == 3 && words[0] == QLatin1String("--bulk");
  const int count = bulk ? words[1].toInt() : 0;
  if ((!bulk && words.size() != 1) || (bulk && count <= 0)) {
    std::fputs("use: make_sample_data FOLDER\n     make_sample_data --bulk COUNT FOLDER\n", stderr);
    return 2;
  }
  const QString folder = words.last();
  if (!QDir().mkpath(folder)) return Fail(QStringLiteral("folder could not be made: ") + folder);
  const auto names =
      bulk ? vesk::sample::WriteBulkData(folder, count) : vesk::sample::WriteSampleData(folder);
  if (!names) return Fail(names.Failure().Text());
  if (!bulk) {
    for (const QString& name : *names) std::printf("%s\n", qUtf8Printable(QDir(folder).filePath(name)));
  }
  return 0;
}
