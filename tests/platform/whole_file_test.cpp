#include "platform/whole_file.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTranslator>

#include "support/full_disk.h"

namespace vesk {
namespace {

/// The library's texts in another language.
class Translated : public QTranslator {
 public:
  Translated() { EXPECT_TRUE(QCoreApplication::installTranslator(this)); }
  ~Translated() override { QCoreApplication::removeTranslator(this); }
  [[nodiscard]] bool isEmpty() const override { return false; }
  QString translate(const char* /*context*/, const char* text, const char* /*disambiguation*/,
                    int /*n*/) const override {
    return QLatin1Char('~') + QLatin1String(text);
  }
};

TEST(WholeFile, AFullDiskLeavesTheFileThatWasThere) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("changes.txt"));
  const QString what = QStringLiteral("The change log could not be saved");
  ASSERT_TRUE(WriteWholeFile(path, "old", what).Ok());
  for (const int bytes : {5000, 100'000}) {  // refused when the last buffer goes out, and before
    Status written;
    {
      const Translated other;
      const test::FullDisk full(4096);
      written = WriteWholeFile(path, QByteArray(bytes, 'x'), what);
    }
    ASSERT_FALSE(written.Ok()) << bytes;
    EXPECT_EQ(written.Failure().what, what);
    EXPECT_EQ(written.Failure().path, path);
    EXPECT_FALSE(written.Failure().reason.endsWith(QStringLiteral("Unknown error")));
    EXPECT_EQ(ReadWholeFile(path, what).Value(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "nothing half-written is left";
  }
}

}  // namespace
}  // namespace vesk
