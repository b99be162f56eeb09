// The register window over three stations, driven as an operator does.
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "stations/form_ist_gir.h"
#include "stations/register_maker.h"
#include "stations/station_register.h"
#include "windows/frame_double.h"

namespace vesk {
namespace {

class FormIstGir : public testing::Test {
 protected:
  ~FormIstGir() override { QApplication::setDoubleClickInterval(doubleClickBefore_); }
  FormIstGir() {
    test::MakeRegister(Path());
    test::SqlHand(Path()).Do(
        "INSERT INTO IstNoAd VALUES ('30001', 'Çay'), ('10002', 'Irmak'), ('20003', 'İnce Su')");
  }
  void Show() {
    window_ = new Form_IstGir(frame_);
    frame_.ShowChild(window_);
  }
  QString Path() { return frame_.Run().stationDatabasePath; }
  template <class Control>
  Control& Find(const char* name) const {
    return *window_->findChild<Control*>(QLatin1String(name));
  }
  QTableView& Grid() const { return Find<QTableView>("DBGrid1"); }
  QPushButton& Delete() const { return Find<QPushButton>("Command2"); }
  QLabel& Message() const { return Find<QLabel>("LabelMesaj"); }
  /// A press by itself, not the second half of a double click.
  void PressDelete() {
    constexpr int kInterval = 5;  // milliseconds
    QApplication::setDoubleClickInterval(kInterval);
    QTest::qWait(2 * kInterval);
    QTest::mouseClick(&Delete(), Qt::LeftButton);
  }
  void Select(int row) {
    Grid().setCurrentIndex(Grid().model()->index(row, 0));
    Grid().scrollTo(Grid().currentIndex());
  }
  std::string Current() const {
    const QModelIndex current = Grid().currentIndex();
    return current.siblingAtColumn(0).data().toString().toStdString() + " column " +
           std::to_string(current.column());
  }
  bool CurrentIsInSight() const {
    return Grid().viewport()->rect().contains(Grid().visualRect(Grid().currentIndex()).center());
  }
  void AddStations(int count) {
    test::SqlHand hand(Path());
    hand.Do("BEGIN");
    for (int i = 0; i < count; ++i)
      hand.Do(
          qPrintable(QStringLiteral("INSERT INTO IstNoAd VALUES ('%1', 'Köprü %2')").arg(50000 + i).arg(i)));
    hand.Do("COMMIT");
  }
  /// Answers the next question, and keeps its text.
  void WillAnswer(QMessageBox::StandardButton answer) {
    auto* look = new QTimer(window_);
    QObject::connect(look, &QTimer::timeout, window_, [this, look, answer] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      look->deleteLater();
      look->stop();
      asked_ = box->text();
      box->button(answer)->click();
    });
    look->start(1);
  }
  void ClickCell(int row, int column) {
    const QRect cell = Grid().visualRect(Grid().model()->index(row, column));
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, cell.center());
  }
  void Type(int row, int column, const QString& text) {
    Grid().setCurrentIndex(Grid().model()->index(row, column));
    QTest::keyClick(&Grid(), Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(Grid().indexWidget(Grid().currentIndex()));
    ASSERT_NE(editor, nullptr);
    editor->setText(text);
    QTest::keyClick(editor, Qt::Key_Return);
    // The delegate commits once the key is dealt with, and the window goes on behind that.
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  bool Armed() const { return Delete().palette().color(QPalette::Button) == QColor(0xFF, 0x80, 0x00); }
  /// "number=name" of each row, comma between.
  std::string Shown() const {
    QStringList rows;
    const QAbstractItemModel& model = *Grid().model();
    for (int row = 0; row < model.rowCount(); ++row)
      rows +=
          model.index(row, 0).data().toString() + QLatin1Char('=') + model.index(row, 1).data().toString();
    return rows.join(QLatin1Char(',')).toStdString();
  }
  std::string Stored() {
    QStringList rows;
    const auto opened = StationRegister::Open(Path(), StationRegister::Access::ReadOnly);
    const auto stations = opened->Stations();
    for (const Station& station : *stations) rows += station.number + QLatin1Char('=') + station.name;
    return rows.join(QLatin1Char(',')).toStdString();
  }

  test::FrameDouble frame_;
  QPointer<Form_IstGir> window_;
  QString asked_;
  const int doubleClickBefore_ = QApplication::doubleClickInterval();
};

TEST_F(FormIstGir, TypedChangesAndNewRowsAreStoredAtOnce) {
  Show();
  EXPECT_EQ(Shown(), "30001=Çay,10002=Irmak,20003=İnce Su,=");
  EXPECT_GE(Grid().columnWidth(0), 100);
  EXPECT_GE(Grid().columnWidth(1), 300);
  Type(1, 1, QStringLiteral("  Iğdır Şelalesi "));
  Type(3, 0, QStringLiteral("40004"));
  Type(3, 1, QStringLiteral("Üçköprü"));
  Type(4, 0, QStringLiteral("   "));
  EXPECT_EQ(Stored(), "30001=Çay,10002=Iğdır Şelalesi,20003=İnce Su,40004=Üçköprü");
}

TEST_F(FormIstGir, DeletingTakesTwoPressesUnderTurkishCaptions) {
  frame_.Run().language.FillEnglish();
  Show();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Input Station No.and Name"));
  EXPECT_EQ(Grid().model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Number"));
  EXPECT_EQ(Delete().text(), QStringLiteral("Delete record"));
  ClickCell(1, 0);
  PressDelete();
  EXPECT_TRUE(Armed());
  EXPECT_EQ(Delete().text(), QStringLiteral("Onayla"));
  EXPECT_EQ(Stored(), "30001=Çay,10002=Irmak,20003=İnce Su");
  PressDelete();
  EXPECT_FALSE(Armed());
  EXPECT_EQ(Delete().text(), QStringLiteral("Kayıt Sil"));
  EXPECT_EQ(Stored(), "30001=Çay,20003=İnce Su");
  EXPECT_EQ(Shown(), "30001=Çay,20003=İnce Su,=");
  ClickCell(2, 0);  // the empty row
  PressDelete();
  PressDelete();
  EXPECT_FALSE(Armed());
  EXPECT_EQ(Shown(), "30001=Çay,20003=İnce Su,=");
}

TEST_F(FormIstGir, AClickElsewhereDisarms) {
  Show();
  ClickCell(0, 0);
  const std::function<void()> kClicks[] = {
      [&] { ClickCell(0, 0); },  // the very cell that is current
      [&] { QTest::mouseClick(window_, Qt::LeftButton, {}, QPoint(2, 2)); },
      [&] { QTest::keyClick(&Grid(), Qt::Key_Down); },
  };
  for (const auto& click : kClicks) {
    PressDelete();
    EXPECT_TRUE(Armed());
    click();
    EXPECT_FALSE(Armed());
    EXPECT_EQ(Delete().text(), QStringLiteral("Kayıt Sil"));
  }
}

TEST_F(FormIstGir, SortingAndSearchingLeaveTheStoredOrderAlone) {
  Show();
  Grid().sortByColumn(0, Qt::DescendingOrder);
  EXPECT_EQ(Shown(), "30001=Çay,20003=İnce Su,10002=Irmak,=");
  Grid().sortByColumn(1, Qt::AscendingOrder);  // c ç ... ı i, as the alphabet has them
  EXPECT_EQ(Shown(), "30001=Çay,10002=Irmak,20003=İnce Su,=");
  auto& search = Find<QLineEdit>("TextAra");
  QTest::keyClicks(&search, QStringLiteral("inc"));
  EXPECT_EQ(Shown(), "20003=İnce Su,=");
  Type(1, 0, QStringLiteral("00001"));
  EXPECT_EQ(Shown(), "20003=İnce Su,00001=,=") << "a new row stays in sight";
  ClickCell(0, 0);
  PressDelete();
  PressDelete();  // deletes the row that is seen
  search.clear();
  Grid().sortByColumn(-1, Qt::AscendingOrder);
  EXPECT_EQ(Shown(), "30001=Çay,10002=Irmak,00001=,=");
  EXPECT_EQ(Stored(), "30001=Çay,10002=Irmak,00001=");
}

TEST_F(FormIstGir, TheArmedDeleteTakesOnlyTheStationThatItNamesAndThatIsInSight) {
  AddStations(200);
  Show();
  const std::string before = Stored();
  auto& search = Find<QLineEdit>("TextAra");
  const std::function<void()> kMoves[] = {
      [&] { search.clear(); },
      [&] { Grid().sortByColumn(1, Qt::DescendingOrder); },
      [&] { Grid().verticalScrollBar()->setValue(0); },
  };
  for (const auto& move : kMoves) {
    search.setText(QStringLiteral("5015"));
    Select(3);
    EXPECT_EQ(Current(), "50153 column 0");
    if (&move != kMoves) search.clear();
    PressDelete();
    EXPECT_TRUE(Armed());
    EXPECT_TRUE(CurrentIsInSight());
    EXPECT_TRUE(Message().text().contains(QStringLiteral("50153 Köprü 153")))
        << Message().text().toStdString();
    move();
    PressDelete();
    EXPECT_EQ(Stored(), before) << "move " << &move - kMoves;
    EXPECT_TRUE(CurrentIsInSight());
    EXPECT_TRUE(Armed());
    ClickCell(Grid().currentIndex().row(), 1);
    EXPECT_FALSE(Armed());
    EXPECT_FALSE(Message().isVisible());
    Grid().sortByColumn(-1, Qt::AscendingOrder);
  }
}

TEST_F(FormIstGir, TheLowestRowInSightIsDeletedWithTwoPressesToo) {
  AddStations(200);
  Show();
  const int lowest = Grid().rowAt(Grid().viewport()->height() - 1);
  Grid().selectionModel()->setCurrentIndex(Grid().model()->index(lowest, 0),
                                           QItemSelectionModel::ClearAndSelect);
  const std::string number = Current().substr(0, 5);
  PressDelete();
  QTest::qWait(50);  // the line that names the station takes its room from the list
  EXPECT_TRUE(CurrentIsInSight());
  PressDelete();
  EXPECT_EQ(Stored().find(number), std::string::npos) << number;
}

TEST_F(FormIstGir, TheCurrentStationStaysInSightWhenTheListChanges) {
  AddStations(200);
  Show();
  auto& search = Find<QLineEdit>("TextAra");
  search.setText(QStringLiteral("50190"));
  Select(0);
  search.clear();
  EXPECT_EQ(Current(), "50190 column 0");
  EXPECT_TRUE(CurrentIsInSight());
  Grid().sortByColumn(0, Qt::AscendingOrder);
  EXPECT_EQ(Current(), "50190 column 0");
  EXPECT_TRUE(CurrentIsInSight());
}

TEST_F(FormIstGir, ADoubleClickArmsAndDeletesNothing) {
  QApplication::setDoubleClickInterval(3600 * 1000);
  Show();
  Select(1);
  QTest::mouseClick(&Delete(), Qt::LeftButton);
  QTest::mouseDClick(&Delete(), Qt::LeftButton);
  for (int i = 0; i < 5; ++i) QTest::keyClick(&Delete(), Qt::Key_Space);
  EXPECT_TRUE(Armed());
  EXPECT_EQ(Stored(), "30001=Çay,10002=Irmak,20003=İnce Su");
}

TEST_F(FormIstGir, AStationThatAnotherHasChangedMeanwhileIsNeitherOverwrittenNorDeleted) {
  Show();
  // The number of the deleted row is given to the new one.
  test::SqlHand(Path()).Do("DELETE FROM IstNoAd WHERE No = '20003'");
  test::SqlHand(Path()).Do("INSERT INTO IstNoAd VALUES ('77777', 'Yeni')");
  Type(2, 1, QStringLiteral("Kalın Su"));
  EXPECT_EQ(Stored(), "30001=Çay,10002=Irmak,77777=Yeni");
  EXPECT_EQ(Shown(), "30001=Çay,10002=Irmak,77777=Yeni,=");
  EXPECT_TRUE(Message().text().contains(QStringLiteral("20003 İnce Su: Kalın Su")))
      << Message().text().toStdString();

  test::SqlHand(Path()).Do("UPDATE IstNoAd SET Ad = 'Büyük Irmak' WHERE No = '10002'");
  Select(1);
  PressDelete();
  PressDelete();
  EXPECT_EQ(Stored(), "30001=Çay,10002=Büyük Irmak,77777=Yeni");
  EXPECT_EQ(Shown(), "30001=Çay,10002=Büyük Irmak,77777=Yeni,=");
  EXPECT_TRUE(Message().isVisible());

  test::SqlHand(Path()).Do("DELETE FROM IstNoAd WHERE No = '30001'");
  QEvent activation(QEvent::WindowActivate);
  QCoreApplication::sendEvent(window_, &activation);
  EXPECT_EQ(Shown(), "10002=Büyük Irmak,77777=Yeni,=") << "coming back to the window shows it";
}

TEST_F(FormIstGir, ADeletionCanBeTakenBackWhileTheWindowIsOpen) {
  test::SqlHand(Path()).Do("ALTER TABLE IstNoAd ADD COLUMN Havza TEXT DEFAULT 'Fırat'");
  test::SqlHand(Path()).Do("UPDATE IstNoAd SET Havza = 'Dicle', Ad = NULL WHERE No = '10002'");
  Show();
  for (int i = 0; i < 2; ++i) {
    Select(1);
    PressDelete();
    PressDelete();
  }
  EXPECT_EQ(Stored(), "30001=Çay");
  for (int i = 0; i < 3; ++i) QTest::keySequence(window_, QKeySequence::Undo);
  EXPECT_EQ(Stored(), "30001=Çay,10002=,20003=İnce Su");
  EXPECT_EQ(Shown(), Stored() + ",=");
  EXPECT_EQ(Current(), "10002 column 0") << "the station that came back last";
  test::SqlHand(Path()).Do("DELETE FROM IstNoAd WHERE Havza = 'Dicle' AND Ad IS NULL");
  EXPECT_EQ(Stored(), "30001=Çay,20003=İnce Su") << "with the fields that the window does not show";
}

TEST_F(FormIstGir, EnterGoesFromNumberToNameToTheNextNewRow) {
  Show();
  Type(3, 0, QStringLiteral("40004"));
  EXPECT_EQ(Current(), "40004 column 1");
  Type(3, 1, QStringLiteral("Üçköprü"));
  EXPECT_EQ(Current(), " column 0");
  EXPECT_EQ(Grid().currentIndex().row(), 4);
  Type(1, 1, QStringLiteral("Başka"));
  EXPECT_EQ(Current(), "10002 column 1") << "a station that was there keeps the place";
}

TEST_F(FormIstGir, ANumberThatIsNoneIsQuestioned) {
  Show();
  for (const char* text : {"Irmak", "1234", "123456", "１２３４５"}) {
    WillAnswer(QMessageBox::No);
    Type(3, 0, QString::fromUtf8(text));
    EXPECT_TRUE(asked_.contains(QString::fromUtf8(text))) << text;
    auto* editor = qobject_cast<QLineEdit*>(Grid().indexWidget(Grid().currentIndex()));
    ASSERT_NE(editor, nullptr) << "what was typed can be mended";
    EXPECT_EQ(editor->text(), QString::fromUtf8(text));
    QTest::keyClick(editor, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Stored(), "30001=Çay,10002=Irmak,20003=İnce Su");
  }
  WillAnswer(QMessageBox::Yes);
  Type(3, 0, QStringLiteral("D17A1"));
  EXPECT_EQ(Stored(), "30001=Çay,10002=Irmak,20003=İnce Su,D17A1=");
}

TEST_F(FormIstGir, WhatALockedRegisterRefusesStaysInTheTableUntilItCanBeStored) {
  Show();
  {
    test::SqlHand other(Path());
    other.Do("BEGIN IMMEDIATE");
    Type(0, 1, QStringLiteral("Yeni Ad"));
    EXPECT_TRUE(Message().isVisible());
    EXPECT_TRUE(Message().text().contains(Path()));
    EXPECT_EQ(Shown(), "30001=Yeni Ad,10002=Irmak,20003=İnce Su,=");
    other.Do("COMMIT");
  }
  EXPECT_EQ(Stored(), "30001=Çay,10002=Irmak,20003=İnce Su");
  Type(1, 1, QStringLiteral("B"));
  EXPECT_FALSE(Message().isVisible());
  EXPECT_EQ(Stored(), "30001=Yeni Ad,10002=B,20003=İnce Su");
}

TEST_F(FormIstGir, ABusyRegisterIsTriedAgainByItself) {
  Show();
  test::SqlHand other(Path());
  other.Do("BEGIN IMMEDIATE");
  Type(0, 1, QStringLiteral("Yeni Ad"));
  EXPECT_TRUE(Message().isVisible());
  other.Do("COMMIT");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !Message().isVisible(); }, 60000));
  EXPECT_EQ(Stored(), "30001=Yeni Ad,10002=Irmak,20003=İnce Su");
}

TEST_F(FormIstGir, ARegisterThatCannotBeOpenedIsShownEmptyWithTheReason) {
  ASSERT_TRUE(test::WriteBytes(Path(), QByteArray("\x00\x01\x00\x00Standard Jet DB\x00", 20)));
  Show();
  EXPECT_FALSE(Grid().isEnabled());
  EXPECT_FALSE(Delete().isEnabled());
  EXPECT_TRUE(Message().isVisible());
  EXPECT_TRUE(Message().text().contains(Path()));
  QTest::mouseClick(&Find<QPushButton>("Command1"), Qt::LeftButton);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(frame_.closeRequests, std::vector<QString>({QStringLiteral("FormSec")}));
  EXPECT_EQ(window_, nullptr);
}

}  // namespace
}  // namespace vesk
