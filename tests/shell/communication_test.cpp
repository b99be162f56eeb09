#include "shell/communication.h"

#include <QTest>

#include "shell/program_folder_fixture.h"

namespace vesk {
namespace {

TEST(SplitProgramPath, TheLastSeparatorDecides) {
  const std::string longName(90, 'x');
  const struct {
    std::string path, folder, fileName;
  } cases[] = {
      {"D:\\A\\B\\Reader.exe", "D:\\A\\B", "Reader.exe"},
      {"C:\\Reader.exe", "", ""},
      {"Reader.exe", "", ""},
      {"D:\\Comm\\" + longName, "D:\\Comm", longName.substr(0, 80)},
      {"/opt/comm/reader", "/opt/comm", "reader"},
      {"/reader", "/", "reader"},
      {"D:\\Comm/x\\r", "D:\\Comm/x", "r"},
  };
  for (const auto& c : cases) {
    const SplitPath split = SplitProgramPath(QString::fromStdString(c.path));
    EXPECT_EQ(split.folder.toStdString(), c.folder) << c.path;
    EXPECT_EQ(split.fileName.toStdString(), c.fileName) << c.path;
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
    MakeSettings("[COMMUNICATION PROGRAMS]\r\nRS232=" + path.toUtf8() + "\r\n");
  }
  static void MakeProgram(const QString& path, const QByteArray& content = "#!/bin/sh\n: > started\n") {
    MakeFolder(QFileInfo(path).path());
    MakeFile(path, content);
    EXPECT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  }

  RunValues run_;
};

TEST_F(CommunicationTest, FindsTheProgramAndItsFolder) {
  const QString reader = home_ + QStringLiteral("Comm/reader");
  const QString atRoot = home_ + QStringLiteral("atroot");
  const QString beside = program_ + QStringLiteral("beside");
  const QString tools = root_.filePath(QStringLiteral("tools/"));
  const QString onPath = tools + QStringLiteral("onpath");
  for (const QString& path : {reader, atRoot, beside, onPath, tools + QStringLiteral("beside")}) {
    MakeProgram(path);
  }
  const struct {
    QString set, program, workingFolder;
  } cases[] = {{QStringLiteral("D:\\Comm\\Reader"), reader, home_ + QStringLiteral("Comm/")},
               {QStringLiteral("C:\\atroot"), atRoot, program_},
               {QStringLiteral("beside"), beside, program_},
               {QStringLiteral("onpath"), onPath, program_}};
  for (const auto& c : cases) {
    SetPath(c.set);
    const Result<CommunicationProgram> found = FindCommunicationProgram(run_, {tools});
    ASSERT_TRUE(found.Ok()) << found.Failure().English().toStdString();
    EXPECT_EQ(found.Value().program, c.program);
    EXPECT_EQ(found.Value().workingFolder, c.workingFolder);
  }
}

TEST_F(CommunicationTest, StartsInTheFolderOfTheProgram) {
  const QString before = QDir::currentPath();
  MakeProgram(home_ + QStringLiteral("Comm/reader"));
  SetPath(QStringLiteral("D:\\Comm\\reader"));
  ASSERT_TRUE(StartCommunicationProgram(run_).Ok());
  EXPECT_EQ(QDir::currentPath(), before);
  const QString mark = home_ + QStringLiteral("Comm/started");
  EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(mark); }, 20000));
}

TEST_F(CommunicationTest, WhatCannotBeStartedIsToldWithTheSettingToFillIn) {
  MakeFolder(home_ + QStringLiteral("Comm/folder"));
  MakeFile(home_ + QStringLiteral("Comm/plain"), "#!/bin/sh\n");
  MakeProgram(home_ + QStringLiteral("Comm/rubbish"),
              "\x7F"
              "ELFrubbish");
  for (const char* name : {"none", "folder", "plain", "rubbish"}) {
    SetPath(QStringLiteral("D:\\Comm\\") + QLatin1String(name));
    const Status started = StartCommunicationProgram(run_);
    ASSERT_FALSE(started.Ok()) << name;
    EXPECT_EQ(started.Failure().path, home_ + QStringLiteral("Comm/") + QLatin1String(name));
    EXPECT_TRUE(started.Failure().reason.English().endsWith(
        SettingsPath() + QStringLiteral(", section [COMMUNICATION PROGRAMS], key RS232 (Windows-1254)")));
  }
  run_.language.FillTurkish();  // its section holds nothing
  const Status unset = StartCommunicationProgram(run_);
  ASSERT_FALSE(unset.Ok());
  EXPECT_TRUE(unset.Failure().reason.English().contains(QStringLiteral("[ILETISIM PROGRAMLARI]")));
}

}  // namespace
}  // namespace vesk
