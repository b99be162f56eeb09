#include "platform/folder_entries.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>

#include "platform/whole_file.h"
#include "support/invalid_name.h"

namespace vesk {
namespace {

TEST(FolderEntries, ThingsThatAreNoFilesAreToldApartAndNeverWaitedFor) {
  const QTemporaryDir folder;
  const auto at = [&folder](const char* name) { return folder.filePath(QLatin1String(name)); };
  ASSERT_TRUE(WriteNewFile(at("file"), "a", {}).Ok());
  ASSERT_EQ(::mkfifo(QFile::encodeName(at("fifo")).constData(), 0600), 0);
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder")));
  for (const char* target : {"file", "fifo", "folder", "nothing"})
    ASSERT_TRUE(QFile::link(at(target), at((QByteArray("to ") + target).constData())));
  const test::InvalidName invalid(folder.path(), "\xfc");
  QStringList told;
  for (const FolderEntry& entry : FolderEntries(folder.path()))
    told << entry.name + QLatin1Char(' ') + QString::number(static_cast<int>(entry.kind)) +
                (entry.nameIsText ? QString() : QStringLiteral("!"));
  told.sort();
  EXPECT_EQ(told.join(QLatin1Char(',')).toStdString(),
            "\\xfc 0!,fifo 3,file 0,folder 2,to fifo 3,to file 1,to folder 2,to nothing 3");
  QFile file;
  for (const char* name : {"fifo", "to fifo", "folder", "nothing"}) {
    EXPECT_FALSE(OpenToRead(file, at(name), {}).Ok()) << name;
    EXPECT_FALSE(OpenToChange(file, at(name), {}).Ok()) << name;
  }
  EXPECT_FALSE(OpenToChange(file, at("to file"), {}).Ok());
  ASSERT_TRUE(OpenToRead(file, at("to file"), {}).Ok());
  EXPECT_EQ(file.readAll(), "a");
}

}  // namespace
}  // namespace vesk
