#include "shell/communication.h"

#include <QTest>

#include "shell/program_folder_fixture.h"

namespace vesk {
namespace {

TEST(SplitProgramPath, TheLastSeparatorDecides) {
  const QString longName(90, QLatin1Char('x'));
  const struct {
    QString path;
    QString folder;
    QString fileName;
  } cases[] = {
      {QStringLiteral("D:\\Comm\\Reader.exe"), QStringLiteral("D:\\Comm"), QStringLiteral("Reader.exe")},
      {QStringLiteral("D:\\A\\B\\Reader.exe"), QStringLiteral("D:\\A\\B"), QStringLiteral("Reader.exe")},
      {QStringLiteral("C:\\Reader.exe"), {}, {}},
      {QStringLiteral("Reader.exe"), {}, {}},
      {{}, {}, {}},
      {QStringLiteral("D:\\Comm\\") + longName, QStringLiteral("D:\\Comm"), longName.left(80)},
      {QStringLiteral("/opt/comm/reader"), QStringLiteral("/opt/comm"), QStringLiteral("reader")},
      {QStringLiteral("/a/b"), QStringLiteral("/a"), QStringLiteral("b")},
      {QStringLiteral("/reader"), QStringLiteral("/"), QStringLiteral("reader")},
      {QStringLiteral("D:\\Comm/x\\r"), QStringLiteral("D:\\Comm/x"), QStringLiteral("r")},
      {QStringLiteral("D:\\Comm\\"), QStringLiteral("D:\\Comm"), {}},
  };
  for (const auto& c : cases) {
    const SplitPath split = SplitProgramPath(c.path);
    EXPECT_EQ(split.folder, c.folder) << c.path.toStdString();
    EXPECT_EQ(split.fileName, c.fileName) << c.path.toStdString();
  }
}

class CommunicationTest : public test::ProgramFolderTest {
 protected:
  CommunicationTest() {
    run_.programFolder = program_;
    run_.settings = Settings(SettingsPath(), home_);
    run_.language.FillEnglish();
  }
  void SetPath(const QString& path) {
    const Status written =
        run_.settings.WriteSetting(QStringLiteral("COMMUNICATION PROGRAMS"), QStringLiteral("RS232"), path);
    EXPECT_TRUE(written.Ok());
  }
  static void MakeProgram(const QString& path, const QByteArray& script = "#!/bin/sh\n") {
    MakeFile(path, script);
    EXPECT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  }

  RunValues run_;
};

TEST_F(CommunicationTest, FindsTheProgramAndItsFolder) {
  MakeFolder(home_ + QStringLiteral("Comm"));
  MakeFolder(root_.filePath(QStringLiteral("tools")));
  const QString tools = root_.filePath(QStringLiteral("tools/"));
  MakeProgram(home_ + QStringLiteral("Comm/reader"));
  MakeProgram(home_ + QStringLiteral("atroot"));
  MakeProgram(program_ + QStringLiteral("beside"));
  MakeProgram(tools + QStringLiteral("onpath"));
  MakeProgram(tools + QStringLiteral("beside"));
  const struct {
    QString set;
    QString program;
    QString workingFolder;
  } cases[] = {
      {QStringLiteral("D:\\Comm\\Reader"), home_ + QStringLiteral("Comm/reader"),
       home_ + QStringLiteral("Comm/")},
      {home_ + QStringLiteral("Comm/reader"), home_ + QStringLiteral("Comm/reader"),
       home_ + QStringLiteral("Comm/")},
      {QStringLiteral("C:\\atroot"), home_ + QStringLiteral("atroot"), program_},
      {QStringLiteral("beside"), program_ + QStringLiteral("beside"), program_},
      {QStringLiteral("onpath"), tools + QStringLiteral("onpath"), program_},
  };
  for (const auto& c : cases) {
    SetPath(c.set);
    const Result<CommunicationProgram> found = FindCommunicationProgram(run_, {tools});
    ASSERT_TRUE(found.Ok()) << c.set.toStdString() << ": " << found.Failure().Text().toStdString();
    EXPECT_EQ(found.Value().program, c.program);
    EXPECT_EQ(found.Value().workingFolder, c.workingFolder);
  }
}

TEST_F(CommunicationTest, WhatIsMissingIsToldWithTheSettingToFillIn) {
  SetPath(QStringLiteral("D:\\None\\Reader.exe"));
  const Status missing = StartCommunicationProgram(run_);
  ASSERT_FALSE(missing.Ok());
  EXPECT_EQ(missing.Failure().path, home_ + QStringLiteral("None/Reader.exe"));

  run_.language.FillTurkish();  // the Turkish section holds nothing
  const Status unset = StartCommunicationProgram(run_);
  ASSERT_FALSE(unset.Ok());
  for (const QString& part :
       {SettingsPath(), QStringLiteral("[ILETISIM PROGRAMLARI]"), QStringLiteral("RS232")}) {
    EXPECT_TRUE(unset.Failure().reason.contains(part)) << unset.Failure().Text().toStdString();
  }
}

TEST_F(CommunicationTest, StartsInTheFolderOfTheProgram) {
  MakeFolder(home_ + QStringLiteral("Comm"));
  MakeProgram(home_ + QStringLiteral("Comm/reader"), "#!/bin/sh\n: > started\n");
  SetPath(QStringLiteral("D:\\Comm\\reader"));
  ASSERT_TRUE(StartCommunicationProgram(run_).Ok());
  const QString mark = home_ + QStringLiteral("Comm/started");
  EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(mark); }, 20000));
}

}  // namespace
}  // namespace vesk
