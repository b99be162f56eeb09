#include "tables/stored_tables.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QScopeGuard>
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
  EXPECT_FALSE(failed.Failure().reason.English().isEmpty());
}

TEST(StoredTablesTest, ATrashIsMadeWhereTheHomeHasNoneAndNothingElseIsTakenForOne) {
  QTemporaryDir home(QDir::home().filePath(QStringLiteral("trash-XXXXXX")));  // on the home's own volume
  ASSERT_TRUE(home.isValid() && QDir(home.path()).mkdir(QStringLiteral("here")));
  const QString path = home.filePath(QStringLiteral("Tablo-12345(2011).xls"));
  const QString here = home.filePath(QStringLiteral("here"));
  const auto move = [&](const QString& dataHome) {
    const auto back = qScopeGuard([home = qgetenv("XDG_DATA_HOME"), folder = QDir::currentPath()] {
      qputenv("XDG_DATA_HOME", home);
      QDir::setCurrent(folder);
    });
    qputenv("XDG_DATA_HOME", dataHome.toUtf8());
    QDir::setCurrent(here);
    EXPECT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    return MoveToDesktopTrash(path);
  };
  EXPECT_TRUE(move(home.filePath(QStringLiteral(".local/share"))));
  EXPECT_TRUE(QFile::exists(home.filePath(QStringLiteral(".local/share/Trash/files/Tablo-12345(2011).xls"))));
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_FALSE(move(QStringLiteral("/dev/null/share"))) << "no trash can be made there";
  EXPECT_TRUE(QFile::exists(path)) << "still where it was";
  EXPECT_TRUE(QDir(here).isEmpty()) << "the current folder is no trash";
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
