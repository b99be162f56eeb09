#include "review/review_grid_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QFont>
#include <QSignalSpy>
#include <QTemporaryDir>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::ReadingAt;

class GridModel : public testing::Test {
 protected:
  void Load(ReviewGrid grid) {
    LoadedReadings loaded = test::LoadOf(std::move(grid), folder_.path() + QLatin1Char('/'), {});
    session_.Begin(loaded);
  }
  void SetUp() override {
    Load(test::GridOf({ReadingAt("01/10/2010 00:00", 100), ReadingAt("01/10/2010 12:00", 90.5),
                       ReadingAt("01/10/2010 12:00", 120, ReadingKind::Maximum),
                       ReadingAt("01/10/2010 13:00", 80, ReadingKind::Minimum),
                       ReadingAt("02/10/2010 06:00", 101)}));
  }
  QVariant Data(int row, GridColumn column, int role) const {
    return model_.data(model_.IndexOf(row, column), role);
  }
  QColor Back(int row, GridColumn column) const {
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

TEST_F(GridModel, ShowsReadingsTitlesAndOneEmptyRow) {
  EXPECT_EQ(model_.rowCount(), 6);
  EXPECT_EQ(model_.columnCount(), kGridColumns);
  EXPECT_EQ(model_.headerData(2, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Seviye"));
  EXPECT_EQ(Data(2, GridColumn::Level, Qt::DisplayRole), QStringLiteral("90.5"));
  EXPECT_EQ(Data(3, GridColumn::Label, Qt::DisplayRole), QStringLiteral("01-Max"));
  EXPECT_EQ(Data(6, GridColumn::Date, Qt::DisplayRole), QString());
  session_.Clear();
  EXPECT_EQ(model_.rowCount(), 0);
}

TEST_F(GridModel, ExtremesAndChangesStandOut) {
  const QColor white(Qt::white);
  const QColor yellow(0xFF, 0xFF, 0x00);
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
    EXPECT_EQ(Back(row, GridColumn::Date), QColor(0, 0xFF, 0)) << row;
    EXPECT_EQ(Back(row, GridColumn::Level), QColor(0, 0xFF, 0)) << row;
  }
  ASSERT_TRUE(Type(1, "5"));
  EXPECT_EQ(Back(1, GridColumn::Level), yellow);
  EXPECT_EQ(Back(1, GridColumn::Date), QColor(0, 0xFF, 0));
  session_.UndoAll();
  EXPECT_EQ(Back(1, GridColumn::Date), white);
}

TEST_F(GridModel, OnlyTheLevelOfAReadingIsEditable) {
  ASSERT_TRUE(session_.EditLevel(1, QStringLiteral("99")));
  for (int row = 1; row <= 6; ++row) {
    for (int column = 0; column < kGridColumns; ++column) {
      const bool editable = model_.flags(model_.IndexOf(row, GridColumn(column))) & Qt::ItemIsEditable;
      EXPECT_EQ(editable, row <= 5 && GridColumn(column) == GridColumn::Level) << row << ' ' << column;
    }
  }
}

TEST_F(GridModel, ATypedLevelGoesThroughTheSession) {
  QSignalSpy changed(&model_, &QAbstractItemModel::dataChanged);
  QSignalSpy refused(&model_, &ReviewGridModel::EditRefused);
  EXPECT_TRUE(Type(1, "12/5"));
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex(), model_.index(0, 0));
  EXPECT_EQ(changed[0][1].toModelIndex(), model_.index(0, kGridColumns - 1));
  EXPECT_FALSE(Type(1, ""));
  EXPECT_FALSE(Type(1, "deep"));
  EXPECT_EQ(refused.count(), 2);
  EXPECT_EQ(Data(1, GridColumn::Level, Qt::EditRole), QStringLiteral("12.5"));
}

TEST_F(GridModel, ALoadAnnouncesNoSingleRows) {
  QSignalSpy reset(&model_, &QAbstractItemModel::modelReset);
  QSignalSpy inserted(&model_, &QAbstractItemModel::rowsInserted);
  QSignalSpy changed(&model_, &QAbstractItemModel::dataChanged);
  Load(test::HourlyGrid("01/10/2010 00:00", 8760));
  EXPECT_EQ(reset.count(), 1);
  EXPECT_EQ(inserted.count() + changed.count(), 0);
  EXPECT_EQ(model_.rowCount(), 8761);
}

TEST_F(GridModel, GivesASelectionAsTabSeparatedText) {
  QItemSelection selection(model_.index(0, 1), model_.index(1, 2));
  EXPECT_EQ(model_.SelectionText(selection), QStringLiteral("00:00\t100\n12:00\t90.5"));
  selection.select(model_.index(4, 2), model_.index(4, 2));
  EXPECT_EQ(model_.SelectionText(selection), QStringLiteral("00:00\t100\n12:00\t90.5\n\t101"));
  EXPECT_EQ(model_.SelectionText({}), QString());
}

}  // namespace
}  // namespace vesk
