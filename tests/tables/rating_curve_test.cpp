#include "tables/rating_curve.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

TEST(RatingCurveTest, ListsCurveFilesOnlyWhateverTheirCase) {
  const QTemporaryDir folder;
  for (const char* name : {"E2.dat", "e10.DAT", "F1.dat", "E1.dat.bak", "E3.txt"}) {
    QFile file(folder.filePath(QLatin1String(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Efolder.dat")));
  const std::vector<QString> expected = {QStringLiteral("e10.DAT"), QStringLiteral("E2.dat")};
  EXPECT_EQ(ListRatingCurves(folder.path()), expected);
  EXPECT_TRUE(ListRatingCurves(folder.filePath(QStringLiteral("missing"))).empty());
  EXPECT_TRUE(ListRatingCurves({}).empty());
}

TEST(RatingCurveTest, PathHasOneSeparator) {
  const struct {
    const char* folder;
    const char* file;
    const char* path;
  } kCases[] = {{"/", "E1.dat", "/E1.dat"},
                {"/curves", "E1.dat", "/curves/E1.dat"},
                {"/curves/", "E1.dat", "/curves/E1.dat"},
                {"/curves", "", ""}};
  for (const auto& c : kCases) {
    EXPECT_EQ(RatingCurvePath(QLatin1String(c.folder), QLatin1String(c.file)), QLatin1String(c.path));
  }
}

}  // namespace
}  // namespace vesk
