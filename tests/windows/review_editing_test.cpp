// Correcting readings in the selection window, saving them and never losing them.
#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

#include "review/review_grid_model.h"
#include "shell/folder_lists.h"
#include "windows/review_fixture.h"

namespace vesk::test {
namespace {

QString Texts(const char* text) {
  return QString::fromUtf8(text);
}

class Editing : public ReviewWindowTest {
 protected:
  void SetUp() override {
    Open();
    LoadWaterYear();
  }
  [[nodiscard]] QString ChangeLog() { return Data() + Texts("001-12345-Degisiklikler2010.txt"); }
  QByteArray ChangeLogContent() {
    QFile file(ChangeLog());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void Reopen() {
    Open();
    LoadWaterYear();
  }
};

TEST_F(Editing, EditUndoEditSaveReload) {
  const QAbstractItemModelTester tester(Grid().model(),
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
  const QString raw = Cell(3, GridColumn::Level);
  TypeLevel(3, Texts("x"));
  EXPECT_EQ(Cell(3, GridColumn::Level), raw);
  EXPECT_EQ(Find<QLabel>("StatusLine").text(), Texts("Seviye değiştirilmedi: seviye bir sayı olmalıdır"));
  EXPECT_FALSE(Button("Command4").isEnabled());
  TypeLevel(3, Texts("12,5"));
  EXPECT_EQ(Cell(3, GridColumn::Level), Texts("12.5"));
  EXPECT_EQ(Cell(3, GridColumn::Code), Texts("1"));
  EXPECT_EQ(Find<QLineEdit>("Text5").text(), Texts("Toplam 1 adet"));
  EXPECT_EQ(Entries("VSsatir"), QStringList({Texts("3")}));
  EXPECT_TRUE(Button("Command4").isEnabled());
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Cell(3, GridColumn::Level), raw);
  QTest::keyClick(&Grid(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Cell(3, GridColumn::Level), Texts("12.5"));
  Push("CmdUndo");
  EXPECT_EQ(Cell(3, GridColumn::Level), raw);
  EXPECT_FALSE(Button("Command4").isEnabled());
  EXPECT_FALSE(Button("CmdUndo").isEnabled());

  TypeLevel(3, Texts("77"));
  QTest::keyClick(form_, Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(Button("Command4").isEnabled());
  EXPECT_EQ(ChangeLogContent(), QByteArray("01/11/2009\t03:00\t77\t\r\n"));
  Push("CmdTamam");
  EXPECT_EQ(operator_.unsavedQuestions, 0);
  EXPECT_EQ(Cell(3, GridColumn::Code), Texts("999"));
  EXPECT_EQ(Cell(3, GridColumn::Baseline), Texts("77"));
}

TEST_F(Editing, ExtremesAndChangesStandOut) {
  const auto colour = [this](int row, GridColumn column, int role) {
    return Grid().model()->index(row - 1, static_cast<int>(column)).data(role).value<QColor>();
  };
  const QColor white(Qt::white), yellow(0xFF, 0xFF, 0);
  constexpr int kMaximum = 25, kMinimum = 26;
  EXPECT_EQ(colour(kMaximum, GridColumn::Date, Qt::ForegroundRole), QColor(0xFF, 0, 0));
  EXPECT_EQ(colour(kMinimum, GridColumn::Baseline, Qt::ForegroundRole), QColor(0, 0, 0xFF));
  EXPECT_EQ(colour(kMinimum, GridColumn::Date, ReviewGridModel::BorderColourRole), QColor(0, 0, 125));
  EXPECT_FALSE(colour(kMaximum, GridColumn::Date, ReviewGridModel::BorderColourRole).isValid());
  EXPECT_EQ(colour(kMaximum, GridColumn::Level, Qt::BackgroundRole), white);
  TypeLevel(kMaximum, Texts("91"));
  EXPECT_EQ(colour(kMaximum, GridColumn::Level, Qt::BackgroundRole), yellow);
  EXPECT_EQ(colour(kMaximum, GridColumn::Date, Qt::BackgroundRole), white);
  for (int column = 0; column < kGridColumns; ++column) {
    const bool editable = Grid().model()->index(0, column).flags() & Qt::ItemIsEditable;
    EXPECT_EQ(editable, GridColumn(column) == GridColumn::Level) << column;
  }
}

TEST_F(Editing, TheFirstLevelIsSavedWhileItIsStillBeingTyped) {
  Grid().GoTo(3, GridColumn::Level, false);
  QTest::keyClick(Grid().viewport(), '7');
  QWidget* editor = QApplication::focusWidget();
  ASSERT_NE(editor, Grid().viewport());
  QTest::keyClick(editor, '7');
  ASSERT_FALSE(Button("Command4").isEnabled());
  QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(ChangeLogContent(), QByteArray("01/11/2009\t03:00\t77\t\r\n"));
}

TEST_F(Editing, ACorrectedReadingOffersTheRecordThatItLeavesWrong) {
  constexpr int kFirst = 1, kMaximum = 25;
  operator_.correctsRecords = true;
  TypeLevel(kFirst, Texts("999"));
  Settle();  // asked behind the edit
  ASSERT_EQ(operator_.records.size(), 2) << "it was the day's lowest, and is now the highest";
  EXPECT_TRUE(operator_.records[0].contains(Texts("999 cm (01:00)")));
  EXPECT_EQ(Cell(kMaximum, GridColumn::Level), Texts("999"));
  EXPECT_EQ(Cell(kMaximum + 1, GridColumn::Level), QString::number(SketchLevelCm(1)));
  TypeLevel(kFirst, Texts("x"));
  EXPECT_FALSE(Find<QLabel>("StatusLine").text().isEmpty());
  Push("Command4");
  TypeLevel(kFirst + 2, Texts("50"));
  Grid().GoTo(kFirst + 1, GridColumn::Level, false);
  QTest::keyClick(&Grid(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(Cell(kFirst, GridColumn::Level) + Cell(kFirst + 2, GridColumn::Level), Texts("99950"))
      << "only what is selected goes back";
  Grid().GoTo(kFirst, GridColumn::Level, false);
  EXPECT_TRUE(Find<QLabel>("RowLabel").text().endsWith(Texts("ham seviye 100 cm")));
  EXPECT_TRUE(Grid().currentIndex().data(Qt::ToolTipRole).toString().startsWith(Texts("Ham seviye: 100 cm")));
  Grid().setFocus();
  QTest::keyClick(&Grid(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(Cell(kFirst, GridColumn::Level), Texts("100"));
  EXPECT_TRUE(Button("Command4").isEnabled());
}

TEST_F(Editing, ASecondWindowOnOneFolderOnlyLooksAndNoSaveIsOverwritten) {
  TypeLevel(3, Texts("50"));
  FormSec* first = form_;
  Open();
  LoadWaterYear();
  EXPECT_EQ(operator_.recoverQuestions, 0);
  EXPECT_TRUE(Find<QLabel>("StatusLine").text().contains(Texts("yalnız bakmak için")));
  TypeLevel(4, Texts("60"));
  EXPECT_EQ(Cell(4, GridColumn::Level), QString::number(SketchLevelCm(3)));
  EXPECT_TRUE(Find<QLabel>("StatusLine").text().contains(Texts("başkası çalışıyor")));
  Kill();
  form_ = first;
  QFile log(ChangeLog());
  ASSERT_TRUE(log.open(QIODevice::WriteOnly) && log.write("01/11/2009\t05:00\t7\t\r\n") > 0);
  log.close();
  operator_.recover = RecoverAnswer::Restore;
  Push("Command4");  // refused, loaded again, and the work laid over
  EXPECT_EQ(Cell(3, GridColumn::Level), Texts("50"));
  EXPECT_EQ(Cell(5, GridColumn::Level), Texts("7"));
  Push("Command4");
  EXPECT_EQ(ChangeLogContent(), QByteArray("01/11/2009\t03:00\t50\t\r\n01/11/2009\t05:00\t7\t\r\n"));
}

TEST_F(Editing, WorkTakenOverFromAnotherMachineIsOfferedOnce) {
  TypeLevel(3, Texts("50"));
  const QString lockPath = ChangeLog() + Texts(".lock");
  QFile lock(lockPath);
  ASSERT_TRUE(lock.open(QIODevice::ReadOnly));
  QJsonObject holder = QJsonDocument::fromJson(lock.readAll()).object();
  lock.close();
  Kill();  // the journal stays, as after a crash
  holder[Texts("host")] = holder[Texts("machine")] = Texts("elsewhere");
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly) && lock.write(QJsonDocument(holder).toJson()) > 0);
  lock.close();
  operator_.yes = true;
  operator_.recover = RecoverAnswer::Later;
  operator_.recoverQuestions = 0;
  operator_.whileAskedToTakeOver = [this] {  // its last save arrives late
    QFile log(ChangeLog());
    EXPECT_TRUE(log.open(QIODevice::WriteOnly) && log.write("01/11/2009\t05:00\t7\t\r\n") > 0);
  };
  Reopen();
  EXPECT_TRUE(operator_.told.join(QLatin1Char(32)).contains(Texts("elsewhere")));
  EXPECT_EQ(operator_.recoverQuestions, 1);
  EXPECT_EQ(Cell(5, GridColumn::Level), Texts("7"));
  TypeLevel(4, Texts("60"));
  EXPECT_EQ(Cell(4, GridColumn::Level), Texts("60")) << "the work is this window's now";
}

TEST_F(Editing, ChangesAndDatesAreFoundByKey) {
  TypeLevel(40, Texts("50"));
  TypeLevel(900, Texts("60"));
  Grid().GoTo(1, GridColumn::Level, false);
  QTest::keyClick(&Grid(), Qt::Key_F8);
  EXPECT_EQ(Grid().CurrentRow(), 40);
  EXPECT_EQ(Grid().currentIndex().column(), 3);
  EXPECT_EQ(Grid().rowAt(0), 39);  // at the top of the grid
  Push("Command6");
  EXPECT_EQ(Grid().CurrentRow(), 900);
  QTest::keyClick(&Grid(), Qt::Key_F8, Qt::ShiftModifier);
  EXPECT_EQ(Grid().CurrentRow(), 40);

  QTest::keyClick(&Grid(), Qt::Key_G, Qt::ControlModifier);
  auto& date = Find<QLineEdit>("Text6");
  ASSERT_TRUE(date.hasFocus());
  QTest::keyClicks(&date, Texts("5.11.2009"));
  QTest::keyClick(&date, Qt::Key_Return);
  EXPECT_EQ(date.text(), Texts("05/11/2009"));
  EXPECT_EQ(Grid().CurrentRow(), 4 * 26 + 1);
  EXPECT_EQ(Grid().rowAt(0), 4 * 26);
  EXPECT_EQ(Grid().selectionModel()->selectedIndexes().size(), 7);

  Grid().GoTo(1, GridColumn::Time, false);
  QTest::keyClick(&Grid(), Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&Grid(), Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&Grid(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), Texts("01:00\t100\n02:00\t101"));
}

TEST_F(Editing, UnsavedChangesAreAskedAboutBeforeAnythingReplacesThem) {
  TypeLevel(3, Texts("50"));
  Click("ListSuYili", 1);
  EXPECT_EQ(operator_.unsavedQuestions, 1);
  EXPECT_EQ(Chosen("ListSuYili"), QStringList({Texts("2010 ")}));  // stayed
  Click("ListIst", 1);
  EXPECT_EQ(operator_.unsavedQuestions, 2);
  EXPECT_EQ(Chosen("ListIst"), QStringList({Texts("001-12345")}));
  Click("Dir1", 0);
  EXPECT_EQ(operator_.unsavedQuestions, 3);
  EXPECT_EQ(Find<DirList>("Dir1").SelectedPath() + QLatin1Char('/'), Data());
  Push("CmdTamam");
  Push("CmdVazgec");
  EXPECT_EQ(operator_.unsavedQuestions, 5);
  ASSERT_NE(form_, nullptr);
  EXPECT_EQ(Cell(3, GridColumn::Level), Texts("50"));
  EXPECT_FALSE(frame_.menusEnabled);

  operator_.unsaved = UnsavedAnswer::Save;
  Click("ListIst", 1);
  EXPECT_EQ(ChangeLogContent(), QByteArray("01/11/2009\t03:00\t50\t\r\n"));
  EXPECT_EQ(Chosen("ListIst"), QStringList({Texts("001-20000")}));

  LoadWaterYear();
  TypeLevel(4, Texts("60"));
  operator_.unsaved = UnsavedAnswer::Discard;
  Click("ListIst", 1);
  EXPECT_EQ(Grid().model()->rowCount(), 0) << "levels that were given up are no readings";
  EXPECT_FALSE(Button("Command3").isEnabled());
  LoadWaterYear();
  TypeLevel(4, Texts("60"));
  Push("CmdVazgec");
  EXPECT_EQ(form_, nullptr);
  Reopen();
  EXPECT_EQ(operator_.recoverQuestions, 0);
  EXPECT_EQ(Cell(4, GridColumn::Level), QString::number(SketchLevelCm(3)));
}

TEST_F(Editing, AnEditSurvivesTheEndOfTheProgram) {
  TypeLevel(3, Texts("50"));
  TypeLevel(5, Texts("60"));
  Kill();
  operator_.recover = RecoverAnswer::Later;
  Reopen();
  EXPECT_EQ(operator_.recoverQuestions, 1);
  EXPECT_EQ(Cell(3, GridColumn::Level), QString::number(SketchLevelCm(2)));
  Kill();
  operator_.recover = RecoverAnswer::Restore;
  Reopen();
  EXPECT_EQ(operator_.recoverQuestions, 2);
  EXPECT_EQ(Cell(3, GridColumn::Level), Texts("50"));
  EXPECT_EQ(Cell(5, GridColumn::Level), Texts("60"));
  EXPECT_EQ(Find<QLineEdit>("Text5").text(), Texts("Toplam 2 adet"));
  Push("Command4");
  EXPECT_FALSE(ChangeLogContent().isEmpty());
  Push("CmdTamam");
  EXPECT_EQ(operator_.recoverQuestions, 2);  // nothing is pending any more
}

TEST_F(Editing, AChangeLogThatCannotBeWrittenKeepsTheChangesAndTheOperator) {
  TypeLevel(3, Texts("50"));
  ASSERT_TRUE(QDir().mkpath(ChangeLog() + Texts("/inside")));
  Push("Command4");
  EXPECT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(Button("Command4").isEnabled());
  operator_.unsaved = UnsavedAnswer::Save;
  Push("CmdVazgec");
  EXPECT_NE(form_, nullptr);
  EXPECT_EQ(Cell(3, GridColumn::Level), Texts("50"));
}

class DateCorrection : public ReviewWindowTest {
 protected:
  void SetUp() override { Reopen(); }
  void Reopen() {
    Open();
    Click("ListIst", 0);
    Click("ListOrjDos", 1);
    Push("CmdTamam");
  }
  /// True when a correction can be started, false when one waits to be saved; fails on anything between.
  bool Offered() {
    const bool shown = !Button("Command10").isHidden();
    EXPECT_EQ(Button("Command10").isEnabled() && shown, shown);
    EXPECT_EQ(Find<QLineEdit>("Text8").isEnabled(), shown);
    return shown;
  }
  void TypeTarget(const QString& text) {
    auto& box = Find<QLineEdit>("Text8");
    QTest::mouseClick(&box, Qt::LeftButton);
    box.selectAll();
    QTest::keyClicks(&box, text);
    Push("Command10");
  }
};

TEST_F(DateCorrection, RetimesASingleFileAndIsSavedLikeAnyEdit) {
  const int readings = Readings();
  TypeTarget(Texts("05/10/2010 22:00"));
  EXPECT_EQ(Cell(1, GridColumn::Time), Texts("01:00"));
  EXPECT_EQ(Cell(Readings(), GridColumn::Time), Texts("22:00"));
  EXPECT_LT(Readings(), readings);  // the last day has no extremes of its own yet
  const QModelIndex cell = Grid().model()->index(0, 0);
  EXPECT_EQ(cell.data(Qt::BackgroundRole).value<QColor>(), QColor(0, 0xFF, 0));
  EXPECT_FALSE(Offered());
  EXPECT_TRUE(Button("Command4").isEnabled());
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Readings(), readings);
  EXPECT_TRUE(Offered());
  QTest::keyClick(&Grid(), Qt::Key_Y, Qt::ControlModifier);
  Kill();
  operator_.recover = RecoverAnswer::Restore;
  Reopen();
  EXPECT_EQ(Cell(Readings(), GridColumn::Time), Texts("22:00"));
  EXPECT_EQ(Find<QLineEdit>("Text8").text(), Texts("05/10/2010 22:00"));
  EXPECT_FALSE(Offered());
  Push("CmdUndo");
  EXPECT_EQ(Readings(), readings);
  EXPECT_TRUE(Offered());
}

TEST_F(DateCorrection, ASavedOneCanBeRemoved) {
  const QString raw = Cell(5, GridColumn::Time);
  const int readings = Readings();
  EXPECT_TRUE(Button("CmdSaatSil").isHidden());
  TypeTarget(Texts("05/10/2010 22:00"));
  Push("Command4");
  EXPECT_FALSE(Button("CmdSaatSil").isHidden());
  const QModelIndex spare = Grid().model()->index(Readings(), 0);
  EXPECT_EQ(spare.data(Qt::BackgroundRole).value<QColor>(), QColor(0, 0xFF, 0));
  Push("CmdSaatSil");
  EXPECT_TRUE(Grid().hasFocus());
  EXPECT_EQ(Cell(5, GridColumn::Time), raw);
  EXPECT_EQ(Readings(), readings);
  EXPECT_TRUE(Button("Command4").isEnabled());
}

TEST_F(DateCorrection, ASavedOneIsNotTakenBackByPressingTheButtonUntouched) {
  TypeTarget(Texts("05/10/2010 22:00"));
  Push("Command4");
  const auto pressUntouched = [this] {
    EXPECT_TRUE(Offered());
    EXPECT_EQ(Find<QLineEdit>("Text8").text(), Texts("05/10/2010 22:00"));
    Push("Command10");
    EXPECT_EQ(Cell(Readings(), GridColumn::Time), Texts("22:00"));
    EXPECT_FALSE(Button("Command4").isEnabled());
  };
  pressUntouched();
  Push("CmdTamam");
  pressUntouched();
}

}  // namespace
}  // namespace vesk::test
