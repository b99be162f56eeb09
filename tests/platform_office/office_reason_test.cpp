#include "platform/libreoffice/office_reason.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace vesk {
namespace {

TEST(OfficeReason, ACodeIsWordedWithTheOfficesOwnTextBehind) {
  const QTemporaryDir folder;
  const QString there = folder.filePath(QStringLiteral("a.xls"));
  const QString gone = folder.filePath(QStringLiteral("none/a.xls"));
  const struct {
    const char* told;
    QString path;
    const char* worded;
  } kCases[] = {
      {"SfxBaseModel::storeSelf: 0x909 at ./sfxbasemodel.cxx:1693", there, "the disk is full"},
      {"storeSelf: 0x31b", there, "the file or its folder is not there"},
      {"storeSelf: 0x40b02", there, "the spreadsheet application could not read or write it whole"},
      {"storeSelf: 0x40b02", gone, "its folder is no longer there"},
  };
  for (const auto& row : kCases) {
    const QString told = QString::fromLatin1(row.told);
    EXPECT_EQ(WordOfficeReason(told, row.path).English().toStdString(),
              std::string(row.worded) + " [" + row.told + "]");
  }
  for (const char* plain : {"the macro failed", "", "row 0x is no code"}) {
    EXPECT_EQ(WordOfficeReason(QString::fromLatin1(plain), there).English(), QString::fromLatin1(plain));
  }
}

}  // namespace
}  // namespace vesk
