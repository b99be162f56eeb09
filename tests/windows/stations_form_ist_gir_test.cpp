#include <gtest/gtest.h>

#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "stations/form_ist_gir.h"
#include "stations/register_maker.h"
#include "stations/station_register.h"
#include "windows/frame_double.h"

namespace vesk {
namespace {

using test::FrameDouble;
using test::SqlHand;

/// The register window over three stations, driven as an operator does.
class FormIstGir : public testing::TestWithParam<LanguageChoice> {
 protected:
  void Fill() {
    test::MakeRegister(Path());
    SqlHand(Path()).Do(
        "INSERT INTO IstNoAd VALUES ('30001', 'Çay'), ('10002', 'Irmak'), ('20003', 'İnce Su')");
  }
  void Show() {
    window_ = new Form_IstGir(frame_);
    frame_.ShowChild(window_);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_));
  }
  QString Path() { return frame_.Run().stationDatabasePath; }
  QTableView& Grid() const { return *window_->findChild<QTableView*>(QStringLiteral("DBGrid1")); }
  QPushButton& Button(const char* name) const {
    return *window_->findChild<QPushButton*>(QLatin1String(name));
  }
  QLineEdit& Search() const { return *window_->findChild<QLineEdit*>(QStringLiteral("TextAra")); }
  QLabel& Message() const { return *window_->findChild<QLabel*>(QStringLiteral("LabelMesaj")); }
  void Click(const char* button) { QTest::mouseClick(&Button(button), Qt::LeftButton); }
  void ClickCell(int row, int column) {
    const QRect cell = Grid().visualRect(Grid().model()->index(row, column));
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, cell.center());
  }
  void Type(int row, int column, const QString& text) {
    Grid().setCurrentIndex(Grid().model()->index(row, column));
    QTest::keyClick(&Grid(), Qt::Key_F2);
    auto* editor = Grid().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->setText(text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();  // the delegate commits once the key is dealt with
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  bool Armed() const {
    return Button("Command2").palette().color(QPalette::Button) == QColor(0xFF, 0x80, 0x00);
  }
  QStringList Shown() const {
    QStringList rows;
    const QAbstractItemModel& model = *Grid().model();
    for (int row = 0; row < model.rowCount(); ++row) {
      rows +=
          model.index(row, 0).data().toString() + QLatin1Char('=') + model.index(row, 1).data().toString();
    }
    return rows;
  }
  QStringList Stored() {
    QStringList rows;
    const auto opened = StationRegister::Open(Path(), StationRegister::Access::ReadOnly);
    const auto stations = opened->Stations();
    for (const Station& station : *stations) rows += station.number + QLatin1Char('=') + station.name;
    return rows;
  }

  FrameDouble frame_{GetParam()};
  Form_IstGir* window_ = nullptr;
};

QStringList Rows(std::initializer_list<const char*> rows) {
  QStringList list;
  for (const char* row : rows) list += QString::fromUtf8(row);
  return list;
}

TEST_P(FormIstGir, ShowsTheStoredOrderUnderItsCaptions) {
  Fill();
  Show();
  const bool english = GetParam() == LanguageChoice::English;
  EXPECT_EQ(window_->windowTitle(),
            english ? QStringLiteral("Input Station No.and Name") : QStringLiteral("İstasyon No-Ad Girişi"));
  EXPECT_EQ(Button("Command2").text(),
            english ? QStringLiteral("Delete record") : QStringLiteral("Kayıt sil"));
  EXPECT_EQ(Grid().model()->headerData(0, Qt::Horizontal).toString(),
            english ? QStringLiteral("Number") : QStringLiteral("No"));
  EXPECT_EQ(Shown(), Rows({"30001=Çay", "10002=Irmak", "20003=İnce Su", "="}));
  EXPECT_GE(Grid().columnWidth(0), 100);
  EXPECT_GE(Grid().columnWidth(1), 300);
  EXPECT_FALSE(Message().isVisible());
}

TEST_P(FormIstGir, TypedChangesAndNewRowsAreStoredAtOnce) {
  Fill();
  Show();
  Type(1, 1, QStringLiteral("  Iğdır Şelalesi "));
  Type(3, 0, QStringLiteral("40004"));
  ASSERT_EQ(Grid().model()->rowCount(), 5);
  Type(3, 1, QStringLiteral("Üçköprü"));
  EXPECT_EQ(Stored(), Rows({"30001=Çay", "10002=Iğdır Şelalesi", "20003=İnce Su", "40004=Üçköprü"}));
  Type(4, 0, QStringLiteral("   "));
  EXPECT_EQ(Stored().size(), 4);
  EXPECT_EQ(*LookupStationName(Path(), QStringLiteral("40004")), QStringLiteral("Üçköprü"));
}

TEST_P(FormIstGir, DeletingTakesTwoPresses) {
  Fill();
  Show();
  ClickCell(1, 0);
  Click("Command2");
  EXPECT_TRUE(Armed());
  EXPECT_EQ(Button("Command2").text(), QStringLiteral("Onayla"));
  EXPECT_EQ(Stored().size(), 3);
  Click("Command2");
  EXPECT_FALSE(Armed());
  EXPECT_EQ(Button("Command2").text(), QStringLiteral("Kayıt Sil"));
  EXPECT_EQ(Stored(), Rows({"30001=Çay", "20003=İnce Su"}));
  EXPECT_EQ(Shown(), Rows({"30001=Çay", "20003=İnce Su", "="}));
}

TEST_P(FormIstGir, AClickElsewhereDisarms) {
  Fill();
  Show();
  ClickCell(0, 0);
  const std::function<void()> kClicks[] = {
      [&] { ClickCell(0, 0); },  // the very cell that is current
      [&] { ClickCell(2, 1); },
      [&] { QTest::mouseClick(window_, Qt::LeftButton, {}, QPoint(2, 2)); },
      [&] { QTest::keyClick(&Grid(), Qt::Key_Up); },
  };
  for (const auto& click : kClicks) {
    Click("Command2");
    EXPECT_TRUE(Armed());
    click();
    EXPECT_FALSE(Armed());
    EXPECT_EQ(Button("Command2").text(), QStringLiteral("Kayıt Sil"));
  }
  EXPECT_EQ(Stored().size(), 3);
}

TEST_P(FormIstGir, TheEmptyRowCannotBeDeleted) {
  Fill();
  Show();
  ClickCell(3, 0);
  Click("Command2");
  Click("Command2");
  EXPECT_FALSE(Armed());
  EXPECT_EQ(Stored().size(), 3);
  EXPECT_EQ(Grid().model()->rowCount(), 4);
}

TEST_P(FormIstGir, SortingAndSearchingLeaveTheStoredOrderAlone) {
  Fill();
  Show();
  Grid().sortByColumn(0, Qt::AscendingOrder);
  EXPECT_EQ(Shown(), Rows({"10002=Irmak", "20003=İnce Su", "30001=Çay", "="}));
  Grid().sortByColumn(0, Qt::DescendingOrder);
  EXPECT_EQ(Shown(), Rows({"30001=Çay", "20003=İnce Su", "10002=Irmak", "="}));
  Grid().sortByColumn(1, Qt::AscendingOrder);  // c ç ... ı i, as the alphabet has them
  EXPECT_EQ(Shown(), Rows({"30001=Çay", "10002=Irmak", "20003=İnce Su", "="}));
  QTest::keyClicks(&Search(), QStringLiteral("inc"));
  EXPECT_EQ(Shown(), Rows({"20003=İnce Su", "="}));
  ClickCell(0, 0);
  Click("Command2");
  Click("Command2");  // deletes the row that is seen
  Search().clear();
  Type(2, 0, QStringLiteral("00001"));
  Grid().sortByColumn(-1, Qt::AscendingOrder);
  EXPECT_EQ(Shown(), Rows({"30001=Çay", "10002=Irmak", "00001=", "="}));
  EXPECT_EQ(Stored(), Rows({"30001=Çay", "10002=Irmak", "00001="}));
}

TEST_P(FormIstGir, ANewRowTypedWhileSearchingStaysInSight) {
  Fill();
  Show();
  QTest::keyClicks(&Search(), QStringLiteral("Çay"));
  Grid().sortByColumn(0, Qt::DescendingOrder);
  Type(1, 0, QStringLiteral("99999"));
  EXPECT_EQ(Grid().currentIndex().data().toString(), QStringLiteral("99999"));
  EXPECT_EQ(Shown(), Rows({"30001=Çay", "99999=", "="}));
}

TEST_P(FormIstGir, WhatALockedRegisterRefusesStaysInTheTableUntilItCanBeStored) {
  Fill();
  Show();
  {
    SqlHand other(Path());
    other.Do("BEGIN IMMEDIATE");
    Type(0, 1, QStringLiteral("Yeni Ad"));
    EXPECT_TRUE(Message().isVisible());
    EXPECT_TRUE(Message().text().contains(Path()));
    EXPECT_EQ(Shown()[0], QStringLiteral("30001=Yeni Ad"));
    other.Do("COMMIT");
  }
  EXPECT_EQ(Stored()[0], QStringLiteral("30001=Çay"));
  Type(1, 1, QStringLiteral("B"));
  EXPECT_FALSE(Message().isVisible());
  EXPECT_EQ(Stored(), Rows({"30001=Yeni Ad", "10002=B", "20003=İnce Su"}));
}

TEST_P(FormIstGir, ARegisterThatCannotBeOpenedIsShownEmptyWithTheReason) {
  const QByteArray old("\x00\x01\x00\x00Standard Jet DB\x00", 20);
  ASSERT_TRUE(test::WriteBytes(Path(), old));
  Show();
  EXPECT_FALSE(Grid().isEnabled());
  EXPECT_FALSE(Button("Command2").isEnabled());
  EXPECT_TRUE(Button("Command1").isEnabled());
  EXPECT_TRUE(Message().isVisible());
  EXPECT_TRUE(Message().text().contains(Path()));
  EXPECT_EQ(test::BytesOf(Path()), old);
}

TEST_P(FormIstGir, ExitClosesTheSelectionWindowThenItself) {
  Fill();
  Show();
  const QPointer<Form_IstGir> window = window_;
  Click("Command1");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(frame_.closeRequests, std::vector<QString>({QStringLiteral("FormSec")}));
  EXPECT_EQ(window, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Languages, FormIstGir,
                         testing::Values(LanguageChoice::Turkish, LanguageChoice::English));

}  // namespace
}  // namespace vesk
