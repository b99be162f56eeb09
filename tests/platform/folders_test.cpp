#include "platform/folders.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

void MakeFile(const QString& path, const QByteArray& content = "x") {
  ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

QByteArray FileContent(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

TEST(TranslateFolderText, LeadsDriveLettersAndBackslashesToTheHomeFolder) {
  const struct {
    const char* text;
    const char* path;
  } cases[] = {
      {"", ""},
      {"C:\\", "/home/ayse/"},
      {"C:", "/home/ayse/"},
      {"C:\\Sefnor\\", "/home/ayse/Sefnor/"},
      {"c:/Sefnor", "/home/ayse/Sefnor"},
      {"C:\\\\Sefnor", "/home/ayse/Sefnor"},
      {"D:\\Data\\Ham", "/home/ayse/Data/Ham"},
      {"\\Sefnor\\", "/home/ayse/Sefnor/"},
      {"Sefnor", "/home/ayse/Sefnor"},
      {"\\\\server\\share", "//server/share"},
      {"/data/raw/", "/data/raw/"},
      {"/data\\raw", "/data/raw"},
      {"İ:\\x", "/home/ayse/İ:/x"},  // no drive letter
  };
  for (const auto& c : cases) {
    EXPECT_EQ(TranslateFolderText(QString::fromUtf8(c.text), QStringLiteral("/home/ayse/")).toStdString(),
              c.path)
        << c.text;
  }
}

TEST(FindEntry, MatchesWithoutRegardToCaseAndPrefersTheExactName) {
  const QTemporaryDir folder;
  MakeFile(folder.filePath(QStringLiteral("ARSIV/x")));
  MakeFile(folder.filePath(QStringLiteral("ilk.SIL")));
  MakeFile(folder.filePath(QStringLiteral("ilk.sil")));
  EXPECT_EQ(FindEntry(folder.path(), QStringLiteral("Arsiv")), folder.filePath(QStringLiteral("ARSIV")));
  EXPECT_EQ(FindEntry(folder.path(), QStringLiteral("ilk.sil")), folder.filePath(QStringLiteral("ilk.sil")));
  EXPECT_FALSE(FindEntry(folder.path(), QStringLiteral("none")));
  EXPECT_FALSE(FindEntry(folder.filePath(QStringLiteral("none")), QStringLiteral("x")));
}

TEST(CopyNewFile, NeverOverwrites) {
  const QTemporaryDir folder;
  const QString from = folder.filePath(QStringLiteral("from"));
  const QString to = folder.filePath(QStringLiteral("to"));
  MakeFile(from, "new");
  MakeFile(to, "old");
  EXPECT_FALSE(CopyNewFile(from, to));
  EXPECT_EQ(FileContent(to), "old");
  EXPECT_FALSE(CopyNewFile(folder.filePath(QStringLiteral("none")), folder.filePath(QStringLiteral("a"))));
  EXPECT_FALSE(CopyNewFile(from, folder.filePath(QStringLiteral("none/a"))));
  ASSERT_TRUE(CopyNewFile(from, folder.filePath(QStringLiteral("b"))).Ok());
  EXPECT_EQ(FileContent(folder.filePath(QStringLiteral("b"))), "new");
}

class ProgramFolder : public testing::Test {
 protected:
  [[nodiscard]] QString Path(const char* name) const { return root_.filePath(QLatin1String(name)); }
  [[nodiscard]] ProgramPlaces Places() const {
    return {Path("bin"), Path("share-of-user"), QStringLiteral("vesk4.ini")};
  }

  QTemporaryDir root_;
};

TEST_F(ProgramFolder, IsTheExecutablesWhenItsFilesLieThere) {
  MakeFile(Path("bin/IstSbl.mdb"));
  const Result<QString> folder = ResolveProgramFolder(Places());
  ASSERT_TRUE(folder.Ok());
  EXPECT_EQ(folder.Value(), Path("bin/"));
  EXPECT_TRUE(QFile::exists(Path("bin/ilk.sil")));
}

TEST_F(ProgramFolder, IsTheUsersOwnFilledOnceWhenTheFilesAreInstalledElsewhere) {
  MakeFile(Path("bin/vesk4"));
  for (const char* name : {"IstSbl.mdb", "Sablon.xls", "Sablon_E.xls"}) {
    MakeFile(Path("share/vesk4/") + QLatin1String(name), name);
  }
  const Result<QString> folder = ResolveProgramFolder(Places());
  ASSERT_TRUE(folder.Ok());
  EXPECT_EQ(folder.Value(), Path("share-of-user/vesk4/"));
  EXPECT_EQ(FileContent(Path("share-of-user/vesk4/Sablon.xls")), "Sablon.xls");
  EXPECT_TRUE(QFile::exists(Path("share-of-user/vesk4/ilk.sil")));
  EXPECT_FALSE(QFile::exists(Path("bin/ilk.sil")));

  // A later start leaves what the office has made its own, and does not begin anew.
  MakeFile(Path("share-of-user/vesk4/Sablon.xls"), "own");
  MakeFile(Path("share-of-user/vesk4/vesk4.ini"), "[Genel]");
  ASSERT_TRUE(QFile::remove(Path("share-of-user/vesk4/ilk.sil")));
  ASSERT_TRUE(ResolveProgramFolder(Places()).Ok());
  EXPECT_EQ(FileContent(Path("share-of-user/vesk4/Sablon.xls")), "own");
  EXPECT_FALSE(QFile::exists(Path("share-of-user/vesk4/ilk.sil")));
}

TEST_F(ProgramFolder, FailsByNameWhenTheUsersFolderCannotBeMade) {
  MakeFile(Path("share/vesk4/IstSbl.mdb"));
  MakeFile(Path("share-of-user"), "a file in the way");
  const Result<QString> folder = ResolveProgramFolder(Places());
  ASSERT_FALSE(folder.Ok());
  EXPECT_EQ(folder.Failure().path, Path("share-of-user/vesk4/"));
}

}  // namespace
}  // namespace vesk
