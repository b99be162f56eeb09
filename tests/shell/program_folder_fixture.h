// A program folder and a home folder of the test's own, and the files that they start with.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "shell/settings.h"

namespace vesk::test {

class ProgramFolderTest : public testing::Test {
 protected:
  ProgramFolderTest() {
    MakeFolder(program_);
    MakeFolder(home_);
  }

  static void MakeFolder(const QString& path) { EXPECT_TRUE(QDir().mkpath(path)); }
  static void MakeFile(const QString& path, const QByteArray& content = {}) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(content), content.size());
  }
  static std::string Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(unreadable)";
  }
  [[nodiscard]] QString SettingsPath() const { return program_ + QStringLiteral("vesk4.ini"); }
  void MakeSettings(const QByteArray& content) const { MakeFile(SettingsPath(), content); }
  [[nodiscard]] std::string SettingsContent() const { return Content(SettingsPath()); }

  QTemporaryDir root_;
  QString program_ = root_.filePath(QStringLiteral("program/"));
  QString home_ = root_.filePath(QStringLiteral("home/"));
};

}  // namespace vesk::test
