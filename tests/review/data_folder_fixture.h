// A data directory with made-up raw files of one station.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "datafiles/dates.h"
#include "support/raw_file_writer.h"

namespace vesk::test {

class DataFolderTest : public testing::Test {
 protected:
  /// A file fresh from the logger, with hourly readings.
  static RawFileSketch Sketch(const char* stem, const char* first, const char* last,
                              const char* version = "10") {
    RawFileSketch sketch;
    sketch.stem = QLatin1String(stem);
    sketch.first = *ReadDateTime(QString::fromLatin1(first));
    sketch.last = *ReadDateTime(QString::fromLatin1(last));
    sketch.version = version;
    sketch.firstLine = "sefnor  ";
    return sketch;
  }
  void Write(const char* stem, const char* first, const char* last, const char* version = "10") {
    WriteSketch(folder_, Sketch(stem, first, last, version));
  }
  void Put(const QString& name, const QByteArray& content = {}) {
    QFile file(folder_ + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
  }
  [[nodiscard]] bool Has(const char* name) const { return QFile::exists(folder_ + QLatin1String(name)); }

  QTemporaryDir temporary_;
  QString folder_ = temporary_.path() + QLatin1Char('/');
};

}  // namespace vesk::test
