#include "tables/rating_curve.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

TEST(RatingCurveTest, PathHasOneSeparator) {
  EXPECT_EQ(RatingCurvePath(QStringLiteral("/"), QStringLiteral("E1.dat")), QStringLiteral("/E1.dat"));
  EXPECT_EQ(RatingCurvePath(QStringLiteral("/c"), QStringLiteral("E1.dat")), QStringLiteral("/c/E1.dat"));
}

}  // namespace
}  // namespace vesk
