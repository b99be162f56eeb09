#include "platform/folders.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

TEST(TranslateFolderText, LeadsDriveLettersAndBackslashesToTheHomeFolder) {
  const std::pair<const char*, const char*> rows[] = {
      {"", ""},
      {"C:", "/home/ayse/"},
      {"C:\\Sefnor\\", "/home/ayse/Sefnor/"},
      {"c:/Sefnor", "/home/ayse/Sefnor"},
      {"C:\\\\Sefnor", "/home/ayse/Sefnor"},
      {"\\Sefnor\\", "/home/ayse/Sefnor/"},
      {"Sefnor", "/home/ayse/Sefnor"},
      {"\\\\server\\share", "//server/share"},
      {"/data\\raw/", "/data/raw/"},
      {"İ:\\x", "/home/ayse/İ:/x"},  // no drive letter
  };
  for (const auto& [text, path] : rows) {
    EXPECT_EQ(TranslateFolderText(QString::fromUtf8(text), QStringLiteral("/home/ayse/")).toStdString(), path)
        << text;
  }
}

class Folders : public testing::Test {
 protected:
  [[nodiscard]] QString Path(const char* name) const { return root_.filePath(QLatin1String(name)); }
  void Make(const char* name, const QByteArray& content = "x") const {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(Path(name)).path()));
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  [[nodiscard]] QByteArray Content(const char* name) const {
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
  }
  [[nodiscard]] Result<QString> Resolve() const {
    return ResolveProgramFolder({Path("bin"), Path("user"), QStringLiteral("vesk4.ini")});
  }

  QTemporaryDir root_;
};

TEST_F(Folders, ACopyNeverOverwrites) {
  Make("from", "new");
  Make("to", "old");
  EXPECT_FALSE(CopyNewFile(Path("from"), Path("to")));
  EXPECT_EQ(Content("to"), "old");
  EXPECT_FALSE(CopyNewFile(Path("none"), Path("a")));
  ASSERT_TRUE(CopyNewFile(Path("from"), Path("b")).Ok());
  EXPECT_EQ(Content("b"), "new");
}

TEST_F(Folders, TheProgramFolderIsTheExecutablesWhenItsFilesLieThere) {
  Make("bin/IstSbl.mdb");
  const Result<QString> folder = Resolve();
  ASSERT_TRUE(folder.Ok());
  EXPECT_EQ(folder.Value(), Path("bin/"));
  EXPECT_TRUE(QFile::exists(Path("bin/ilk.sil")));
}

TEST_F(Folders, TheProgramFolderIsTheUsersOwnFilledOnceWhenTheFilesAreInstalledElsewhere) {
  Make("bin/vesk4");
  for (const char* name : {"share/vesk4/IstSbl.mdb", "share/vesk4/Sablon.xls"}) Make(name, "installed");
  const Result<QString> folder = Resolve();
  ASSERT_TRUE(folder.Ok());
  EXPECT_EQ(folder.Value(), Path("user/vesk4/"));
  EXPECT_EQ(Content("user/vesk4/Sablon.xls"), "installed");
  EXPECT_TRUE(QFile::exists(Path("user/vesk4/ilk.sil")));
  EXPECT_FALSE(QFile::exists(Path("bin/ilk.sil")));

  // A later start leaves what the office has made its own, and does not begin anew.
  Make("user/vesk4/Sablon.xls", "own");
  Make("user/vesk4/vesk4.ini", "[Genel]");
  ASSERT_TRUE(QFile::remove(Path("user/vesk4/ilk.sil")));
  ASSERT_TRUE(Resolve().Ok());
  EXPECT_EQ(Content("user/vesk4/Sablon.xls"), "own");
  EXPECT_FALSE(QFile::exists(Path("user/vesk4/ilk.sil")));
}

TEST_F(Folders, AFileThatCameWithTheProgramIsFoundInEitherPlaceOrBothAreNamed) {
  const QString name = QStringLiteral("Sablon_E.xls");
  const auto find = [&] { return FindDeliveredFile(Path("bin"), name); };
  ASSERT_FALSE(find());
  const QString told = find().Failure().English();
  for (const QString& part : {name, Path("bin/"), Path("share/vesk4/")})
    EXPECT_TRUE(told.contains(part)) << told.toStdString();
  Make("share/vesk4/SABLON_E.XLS");
  EXPECT_EQ(*find(), Path("share/vesk4/SABLON_E.XLS"));
  Make("bin/Sablon_E.xls");
  EXPECT_EQ(*find(), Path("bin/Sablon_E.xls"));

  Make("own/Sablon.xls");
  const std::vector<Error> missing = MissingDeliveredFiles(Path("own/"), Path("bin"));
  ASSERT_EQ(missing.size(), 4U) << "not the one that is there";
  EXPECT_EQ(missing.front().path, QStringLiteral("IstSbl.mdb"));
  EXPECT_TRUE(missing.front().English().contains(Path("own/")));
}

}  // namespace
}  // namespace vesk
