// The register window over three stations, driven as an operator does.
#include <gtest/gtest.h>

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

class FormIstGir : public testing::Test {
 protected:
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
  void PressDelete() { QTest::mouseClick(&Delete(), Qt::LeftButton); }
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
