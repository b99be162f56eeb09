#include "platform/process_start.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace vesk {
namespace {

void MakeScript(const QString& path, const QByteArray& content, bool executable) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
  file.close();
  if (!executable) return;
  ASSERT_TRUE(file.setPermissions(file.permissions() | QFile::ExeOwner));
}

TEST(StartProgram, RunsInItsFolderAndLeavesOursAlone) {
  const QTemporaryDir folder;
  const QString before = QDir::currentPath();
  MakeScript(folder.filePath(QStringLiteral("reader")), "#!/bin/sh\npwd > here.tmp && mv here.tmp here\n",
             true);
  ASSERT_TRUE(StartProgram(folder.filePath(QStringLiteral("reader")), folder.path()).Ok());
  const QString note = folder.filePath(QStringLiteral("here"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(note); }, 20000));
  QFile file(note);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(QFile::decodeName(file.readAll().trimmed()), QDir(folder.path()).canonicalPath());
  EXPECT_EQ(QDir::currentPath(), before);
}

TEST(StartProgram, NamesWhatCannotBeStarted) {
  const QTemporaryDir folder;
  const QString plain = folder.filePath(QStringLiteral("plain"));
  const QString rubbish = folder.filePath(QStringLiteral("rubbish"));
  const QString good = folder.filePath(QStringLiteral("good"));
  MakeScript(plain, "x", false);
  MakeScript(rubbish,
             QByteArray("\x7F"
                        "ELFrubbish"),
             true);
  MakeScript(good, "#!/bin/sh\n", true);
  const struct {
    QString program;
    QString workingFolder;
    QString named;
  } cases[] = {
      {folder.filePath(QStringLiteral("none")), folder.path(), folder.filePath(QStringLiteral("none"))},
      {folder.path(), folder.path(), folder.path()},
      {plain, folder.path(), plain},
      {rubbish, folder.path(), rubbish},
      {good, folder.filePath(QStringLiteral("none")), folder.filePath(QStringLiteral("none"))},
  };
  for (const auto& c : cases) {
    const Status started = StartProgram(c.program, c.workingFolder);
    ASSERT_FALSE(started.Ok()) << c.program.toStdString();
    EXPECT_EQ(started.Failure().path, c.named);
    EXPECT_FALSE(started.Failure().reason.isEmpty());
  }
}

}  // namespace
}  // namespace vesk
