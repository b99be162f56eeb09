#include "tables/stored_tables.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "tables/recording_spreadsheet.h"

namespace vesk {
namespace {

QString Touch(const QTemporaryDir& folder, const char* name) {
  QFile file(folder.filePath(QLatin1String(name)));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  return file.fileName();
}

TEST(StoredTablesTest, ListsWorkbooksByName) {
  const QTemporaryDir folder;
  for (const char* name :
       {"Tablo-12345(2012).xls", "tablo-12345(2011).XLS", "Tablo-12345(2011).xlsx", "a.txt"}) {
    Touch(folder, name);
  }
  const std::vector<QString> expected = {QStringLiteral("tablo-12345(2011).XLS"),
                                         QStringLiteral("Tablo-12345(2012).xls")};
  EXPECT_EQ(ListStoredTables(folder.path()), expected);
  EXPECT_TRUE(ListStoredTables(folder.filePath(QStringLiteral("missing"))).empty());
}

TEST(StoredTablesTest, RemovesIntoTheTrashElseForGood) {
  const QTemporaryDir folder;
  const QString path = Touch(folder, "Tablo-12345(2011).xls");
  const auto trashed = RemoveStoredTable(
      path, [](const QString& file) { return QFile::rename(file, file + QLatin1Char('~')); });
  ASSERT_TRUE(trashed);
  EXPECT_EQ(*trashed, Removal::Trashed);

  const QString second = Touch(folder, "Tablo-12345(2012).xls");
  const TrashFunction noTrash = [](const QString&) { return false; };
  const auto deleted = RemoveStoredTable(second, noTrash);
  ASSERT_TRUE(deleted);
  EXPECT_EQ(*deleted, Removal::Deleted);
  EXPECT_FALSE(QFile::exists(second));

  const auto failed = RemoveStoredTable(second, noTrash);
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.Failure().path, second);
  EXPECT_FALSE(failed.Failure().reason.isEmpty());
}

TEST(StoredTablesTest, OpensBeforeTheOperatorsEyesOnTheDailySheet) {
  const QTemporaryDir folder;
  const QString path = Touch(folder, "Tablo-12345(2011).xls");
  test::RecordingSpreadsheet office;
  ASSERT_TRUE(OpenStoredTable(office, path));
  const QStringList expected = {QStringLiteral("open ") + path, QStringLiteral("show"),
                                QStringLiteral("window"), QStringLiteral("select Gunluk")};
  EXPECT_EQ(office.steps, expected);
}

TEST(StoredTablesTest, OnlyAWorkbookThatCannotBeOpenedIsAFailure) {
  const QTemporaryDir folder;
  const QString path = Touch(folder, "Tablo-12345(2011).xls");
  test::RecordingSpreadsheet office;
  office.failing = {QStringLiteral("show"), QStringLiteral("window"), QStringLiteral("select")};
  EXPECT_TRUE(OpenStoredTable(office, path));
  office.sheets.clear();
  EXPECT_TRUE(OpenStoredTable(office, path));
  office.failing = {QStringLiteral("open ") + path};
  const Status refused = OpenStoredTable(office, path);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.Failure().path, path);
  EXPECT_FALSE(OpenStoredTable(office, folder.filePath(QStringLiteral("gone.xls"))));
}

}  // namespace
}  // namespace vesk
