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

TEST(BatchTable, KeepsWhatWasChangedByHandUnlessToldSoAndTellsWhatIsNotWhole) {
  const QTemporaryDir folder;
  const auto write = [&folder](const char* stem, std::chrono::month month, const char* version) {
    RawFileSketch sketch;
    sketch.stem = QLatin1String(stem);
    sketch.version = version;
    sketch.first = std::chrono::sys_days(std::chrono::year(2010) / month / 1) + std::chrono::hours(1);
    sketch.last = sketch.first + std::chrono::days(3);
    WriteSketch(folder.path() + QLatin1Char('/'), sketch);
  };
  QString told;
  const auto make = [&](const QString& more) {
    QProcess process;
    process.start(QStringLiteral(VESK_BATCH_PROGRAM),
                  {QStringLiteral("table"), folder.path(), QStringLiteral("--station"),
                   QStringLiteral("12345"), QStringLiteral("--water-year"), QStringLiteral("2010"),
                   QStringLiteral("--templates"), QStringLiteral(VESK_RESOURCES), more});
    const bool ended = process.waitForFinished(120'000);
    told = QString::fromUtf8(process.readAllStandardError());
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  };
  const QString hourly = QStringLiteral("--hourly");
  write("010203", std::chrono::January, "10");
  EXPECT_EQ(make(hourly), 0) << told.toStdString();
  EXPECT_EQ(make(hourly), 0) << "its own: " << told.toStdString();
  QFile table(folder.filePath(QStringLiteral("Tablo-12345(2010).xls")));
  ASSERT_TRUE(table.open(QIODevice::Append) && table.write("by hand") > 0);
  table.close();
  const QByteArray edited = LookAtTable(table.fileName()).digest;
  EXPECT_EQ(make(hourly), 1);
  EXPECT_TRUE(told.contains(table.fileName()) && told.contains(QStringLiteral("--replace")));
  EXPECT_EQ(LookAtTable(table.fileName()).digest, edited) << told.toStdString();
  write("010204", std::chrono::March, "99");
  EXPECT_EQ(make(QStringLiteral("--replace")), 1);
  EXPECT_TRUE(told.contains(QStringLiteral("Yükleme tam değil"))) << told.toStdString();
  EXPECT_EQ(LookAtTable(table.fileName()).origin, TableOrigin::Own);
  const auto office = MakeUnattendedSpreadsheet();
  const auto book = office->Open(table.fileName(), Macros::AsTheOfficeSays);
  ASSERT_TRUE(book.Ok()) << book.Failure().English().toStdString();
  const auto note = (*(*book)->Sheet(kDailySheet))->ReadBlock({1, 6, 1, 6});
  ASSERT_TRUE(note.Ok());
  EXPECT_TRUE(std::get<QString>(note->front().front()).contains(QStringLiteral("010204")));
}

}  // namespace
}  // namespace vesk::test
