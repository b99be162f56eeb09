// Unattended tables over what lies in their place already.
#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include "platform/libreoffice/office.h"
#include "support/raw_file_writer.h"
#include "tables/table_cells.h"
#include "tables/table_record.h"

namespace vesk::test {
namespace {

class BatchTable : public testing::Test {
 protected:
  void SetUp() override {
    Write("010203", std::chrono::January, "10");
    ASSERT_TRUE(folder_.isValid());
  }
  void Write(const char* stem, std::chrono::month month, const char* version) {
    RawFileSketch sketch;
    sketch.stem = QLatin1String(stem);
    sketch.version = version;
    sketch.first = std::chrono::sys_days(std::chrono::year(2010) / month / 1) + std::chrono::hours(1);
    sketch.last = sketch.first + std::chrono::days(3);
    WriteSketch(folder_.path() + QLatin1Char('/'), sketch);
  }
  int Make(const QStringList& more = {}) {
    QProcess process;
    process.start(QStringLiteral(VESK_BATCH_PROGRAM),
                  QStringList{QStringLiteral("table"), folder_.path(), QStringLiteral("--station"),
                              QStringLiteral("12345"), QStringLiteral("--water-year"), QStringLiteral("2010"),
                              QStringLiteral("--templates"), QStringLiteral(VESK_RESOURCES)} +
                      more);
    const bool ended = process.waitForFinished(120'000);
    told_ = QString::fromUtf8(process.readAllStandardError());
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  }
  [[nodiscard]] QByteArray Content() const {
    QFile file(table_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder_;
  QString table_ = folder_.filePath(QStringLiteral("Tablo-12345(2010).xls"));
  QString told_;
};

TEST_F(BatchTable, ReplacesItsOwnAndKeepsWhatWasChangedByHandUnlessToldSo) {
  EXPECT_EQ(Make(), 0) << told_.toStdString();
  EXPECT_EQ(Make(), 0) << told_.toStdString();
  QFile table(table_);
  ASSERT_TRUE(table.open(QIODevice::Append) && table.write("by hand") > 0);
  table.close();
  const QByteArray edited = Content();
  EXPECT_EQ(Make(), 1);
  EXPECT_TRUE(told_.contains(table_) && told_.contains(QStringLiteral("--replace"))) << told_.toStdString();
  EXPECT_EQ(Content(), edited);
  EXPECT_EQ(Make({QStringLiteral("--replace")}), 0) << told_.toStdString();
  EXPECT_NE(Content(), edited);
  EXPECT_EQ(LookAtTable(table_).origin, TableOrigin::Own);
}

TEST_F(BatchTable, ATableThatIsNotWholeSaysSoOnItsSheetsAndByTheExitCode) {
  Write("010204", std::chrono::March, "99");
  EXPECT_EQ(Make({QStringLiteral("--hourly")}), 1);
  EXPECT_TRUE(told_.contains(QStringLiteral("Yükleme tam değil"))) << told_.toStdString();
  const auto office = MakeUnattendedSpreadsheet();
  const auto book = office->Open(table_, Macros::AsTheOfficeSays);
  ASSERT_TRUE(book.Ok()) << book.Failure().English().toStdString();
  const struct {
    QLatin1String sheet;
    int row, column;
  } kCells[] = {{kHourlySheet, 1, 6}, {kDailySheet, 1, 6}, {kMonthlySheet, 19, 1}};
  for (const auto& [name, row, column] : kCells) {
    const auto read = (*(*book)->Sheet(name))->ReadBlock({row, column, row, column});
    ASSERT_TRUE(read.Ok());
    const auto shown = std::get<QString>(read->front().front());
    EXPECT_TRUE(shown.startsWith(QStringLiteral("Yükleme tam değil")) &&
                shown.contains(QStringLiteral("010204")))
        << name.data() << ": " << shown.toStdString();
  }
}

}  // namespace
}  // namespace vesk::test
