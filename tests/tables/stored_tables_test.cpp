#include "tables/stored_tables.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "tables/recording_spreadsheet.h"

namespace vesk {
namespace {

TEST(StoredTablesTest, RemovesIntoTheTrashElseForGood) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("Tablo-12345(2011).xls"));
  ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
  const QString trashed = path + QLatin1Char('~');
  const auto first = RemoveStoredTable(path, [&](const QString& it) { return QFile::rename(it, trashed); });
  EXPECT_TRUE(first && *first == Removal::Trashed && QFile::exists(trashed));
  const TrashFunction noTrash = [](const QString&) { return false; };
  const auto second = RemoveStoredTable(trashed, noTrash);
  EXPECT_TRUE(second && *second == Removal::Deleted && !QFile::exists(trashed));
  const auto third = RemoveStoredTable(path, noTrash);
  ASSERT_FALSE(third);
  EXPECT_EQ(third.Failure().path, path);
  EXPECT_FALSE(third.Failure().reason.isEmpty());
}

TEST(StoredTablesTest, OnlyAWorkbookThatCannotBeOpenedIsAFailure) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("Tablo-12345(2011).xls"));
  test::RecordingSpreadsheet office;
  EXPECT_FALSE(OpenStoredTable(office, path)) << "there is none";
  ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
  office.failing = {QStringLiteral("show"), QStringLiteral("window"), QStringLiteral("select")};
  EXPECT_TRUE(OpenStoredTable(office, path));
  office.sheets.clear();
  EXPECT_TRUE(OpenStoredTable(office, path));
  office.failing = {QStringLiteral("open")};
  const Status refused = OpenStoredTable(office, path);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.Failure().path, path);
}

}  // namespace
}  // namespace vesk
