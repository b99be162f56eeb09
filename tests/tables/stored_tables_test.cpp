#include "tables/stored_tables.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "tables/recording_spreadsheet.h"

namespace vesk {
namespace {

TEST(StoredTablesTest, RemovesIntoTheTrashElseForGoodElseTellsWhy) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("Tablo-12345(2011).xls"));
  ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
  for (const bool trash : {true, false}) {
    const auto removed = RemoveStoredTable(path, [trash](const QString&) { return trash; });
    EXPECT_TRUE(removed && *removed == (trash ? Removal::Trashed : Removal::Deleted));
    EXPECT_EQ(QFile::exists(path), trash) << "the trash itself is the desktop's";
  }
  const auto failed = RemoveStoredTable(path, [](const QString&) { return false; });
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.Failure().path, path);
  EXPECT_FALSE(failed.Failure().reason.isEmpty());
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
