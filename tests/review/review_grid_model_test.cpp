#include "review/review_grid_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QFont>
#include <QTemporaryDir>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::ReadingAt;

class GridModel : public testing::Test {
 protected:
  void SetUp() override {
    LoadedReadings loaded =
        test::LoadOf(test::GridOf({ReadingAt("01/10/2010 00:00", 100), ReadingAt("01/10/2010 12:00", 90.5),
                                   ReadingAt("01/10/2010 12:00", 120, ReadingKind::Maximum),
                                   ReadingAt("01/10/2010 13:00", 80, ReadingKind::Minimum),
                                   ReadingAt("02/10/2010 06:00", 101)}),
                     folder_.path() + QLatin1Char('/'), {});
    session_.Begin(loaded);
  }
  [[nodiscard]] QVariant Data(int row, GridColumn column, int role) const {
    return model_.data(model_.IndexOf(row, column), role);
  }
  [[nodiscard]] QColor Back(int row, GridColumn column) const {
    return Data(row, column, Qt::BackgroundRole).value<QColor>();
  }
  bool Type(int row, const char* text) {
    return model_.setData(model_.IndexOf(row, GridColumn::Level), QString::fromLatin1(text), Qt::EditRole);
  }

  QTemporaryDir folder_;
  EditSession session_;
  ReviewGridModel model_{session_};
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Warning};
};

TEST_F(GridModel, ExtremesAndChangesStandOut) {
  const QColor white(Qt::white), yellow(0xFF, 0xFF, 0), green(0, 0xFF, 0);
  EXPECT_FALSE(Data(1, GridColumn::Date, Qt::FontRole).isValid());
  for (const int row : {3, 4}) EXPECT_TRUE(Data(row, GridColumn::Date, Qt::FontRole).value<QFont>().bold());
  EXPECT_EQ(Data(3, GridColumn::Baseline, Qt::ForegroundRole).value<QColor>(), QColor(0xFF, 0, 0));
  EXPECT_EQ(Data(4, GridColumn::Baseline, Qt::ForegroundRole).value<QColor>(), QColor(0, 0, 0xFF));
  EXPECT_FALSE(Data(3, GridColumn::Date, ReviewGridModel::BorderColourRole).isValid());
  EXPECT_EQ(Data(4, GridColumn::Date, ReviewGridModel::BorderColourRole).value<QColor>(), QColor(0, 0, 125));

  EXPECT_EQ(Back(2, GridColumn::Level), white);
  ASSERT_TRUE(Type(2, "91"));
  EXPECT_EQ(Back(2, GridColumn::Level), yellow);
  EXPECT_EQ(Back(2, GridColumn::Date), white);
  ASSERT_TRUE(session_.CorrectDates(QStringLiteral("03/10/2010 06:00")));
  for (int row = 1; row <= session_.Grid().ReadingCount(); ++row) {
    EXPECT_EQ(Back(row, GridColumn::Date), green) << row;
    EXPECT_EQ(Back(row, GridColumn::Level), green) << row;
  }
  ASSERT_TRUE(Type(1, "5"));
  EXPECT_EQ(Back(1, GridColumn::Level), yellow);
  EXPECT_EQ(Back(1, GridColumn::Date), green);
  session_.UndoAll();
  EXPECT_EQ(Back(1, GridColumn::Date), white);
}

TEST_F(GridModel, OnlyTheLevelOfAReadingIsEditable) {
  ASSERT_EQ(model_.rowCount(), 6);  // an empty one behind the readings
  for (int row = 1; row <= 6; ++row) {
    for (int column = 0; column < kGridColumns; ++column) {
      const bool editable = model_.flags(model_.IndexOf(row, GridColumn(column))) & Qt::ItemIsEditable;
      EXPECT_EQ(editable, row <= 5 && GridColumn(column) == GridColumn::Level) << row << ' ' << column;
    }
  }
}

}  // namespace
}  // namespace vesk
