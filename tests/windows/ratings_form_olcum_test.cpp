// The gaugings window, driven as an operator does.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "datafiles/dates.h"
#include "ratings/curve_file.h"
#include "ratings/form_olcum.h"
#include "stations/register_maker.h"
#include "windows/frame_double.h"

namespace vesk {
namespace {

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

class FormOlcumTest : public testing::Test {
 protected:
  FormOlcumTest() { test::MakeRegister(Path()); }
  QString Path() { return frame_.Run().stationDatabasePath; }
  void Show() {
    window_ = new FormOlcum(frame_, Text("12001"), Text("Irmak"),
                            [this](const QString&, const QString&, const std::vector<Gauging>& gaugings) {
                              handedOver_ = gaugings;
                            });
    frame_.ShowChild(window_);
  }
  QTableView& Grid() { return *window_->findChild<QTableView*>(Text("GridOlcum")); }
  QLabel& Message() { return *window_->findChild<QLabel*>(Text("LabelMesaj")); }
  void Press(const char* name) {
    QTest::mouseClick(window_->findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
  }
  /// Types into the current cell, as letters come from the keyboard.
  void Type(const char* text) {
    QTest::keyClicks(&Grid(), QString(QLatin1Char(text[0])));
    auto* editor = qobject_cast<QLineEdit*>(Grid().indexWidget(Grid().currentIndex()));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QLatin1String(text + 1));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
  }
  void Select(int row, int column) { Grid().setCurrentIndex(Grid().model()->index(row, column)); }
  QString Cell(int row, int column) { return Grid().model()->index(row, column).data().toString(); }
  std::vector<StoredGauging> Stored() {
    const auto opened = StationRegister::Open(Path(), StationRegister::Access::ReadOnly);
    EXPECT_TRUE(opened);
    const auto read = opened->GaugingsOf(Text("12001"));
    EXPECT_TRUE(read);
    return read ? *read : std::vector<StoredGauging>();
  }
  void WillAnswer(QMessageBox::StandardButton answer) {
    QTimer::singleShot(50, window_, [this, answer] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      asked_ = box->text();
      box->button(answer)->click();
    });
  }

  test::FrameDouble frame_;
  FormOlcum* window_ = nullptr;
  std::vector<Gauging> handedOver_;
  QString asked_;
};

TEST_F(FormOlcumTest, WhatIsTypedStandsInTheRegisterAtOnceAndIsTakenBack) {
  Show();
  Type("05/10/2023 14:30");
  EXPECT_TRUE(Stored().empty()) << "no discharge yet";
  Select(0, 2);
  Type("3,25");
  ASSERT_EQ(Stored().size(), 1U);
  EXPECT_EQ(Stored()[0].gauging.dischargeM3s, 3.25);
  EXPECT_EQ(Stored()[0].gauging.time, ReadDateTime(u"05/10/2023 14:30"));
  Select(0, 1);
  Type("9x");
  EXPECT_EQ(Stored()[0].gauging.levelCm, std::nullopt);
  EXPECT_TRUE(Message().isVisible() && Message().text().contains(Text("beklenen"))) << "told, not taken";
  Select(0, 1);
  Type("120.5");
  EXPECT_EQ(Stored()[0].gauging.levelCm, 120.5);
  EXPECT_FALSE(Message().isVisible());
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Stored()[0].gauging.levelCm, std::nullopt);
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Stored().empty());
}

TEST_F(FormOlcumTest, ALockedRegisterAndAnUnfinishedRowLoseNothing) {
  Show();
  Select(0, 2);
  {
    test::SqlHand other(Path());
    other.Do("BEGIN IMMEDIATE");
    Type("7");
    EXPECT_TRUE(Message().isVisible());
    EXPECT_EQ(Cell(0, 2), Text("7")) << "it stays in the table";
    other.Do("ROLLBACK");
  }
  Select(1, 5);
  Type("Ayse");  // a row of its own, without a discharge
  ASSERT_EQ(Stored().size(), 1U) << "the refused one went with the next";
  WillAnswer(QMessageBox::No);
  EXPECT_FALSE(window_->close());
  EXPECT_TRUE(asked_.contains(Text("1 satır")));
  Select(1, 2);
  Type("8");
  EXPECT_EQ(Stored().size(), 2U);
  EXPECT_TRUE(window_->close());
}

TEST_F(FormOlcumTest, RowsArePastedDeletedAndBroughtBack) {
  Show();
  QApplication::clipboard()->setText(Text("Tarih\tSeviye (cm)\tDebi (m3/s)\n"));
  QTest::keyClick(&Grid(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(Stored().empty());
  QApplication::clipboard()->setText(
      Text("time\tlevel_cm\tdischarge_m3s\n05/10/2023 10:00\t120,5\t3,25\n06/10/2023 10:00\tx\t1\n"
           "07/10/2023 10:00\t130\t4\n"));
  QTest::keyClick(&Grid(), Qt::Key_V, Qt::ControlModifier);
  ASSERT_EQ(Stored().size(), 2U);
  EXPECT_TRUE(Message().text().contains(Text("satır 3"))) << Message().text().toStdString();
  QTest::keyClick(&Grid(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Stored().size(), 2U) << "a second time nothing comes twice";
  const qint64 key = Stored()[0].key;
  Select(0, 0);
  Press("CmdSil");
  ASSERT_EQ(Stored().size(), 1U);
  EXPECT_EQ(Stored()[0].gauging.levelCm, 130);
  Press("CmdGeri");
  ASSERT_EQ(Stored().size(), 2U);
  EXPECT_EQ(Stored()[0].key, key);
  Press("CmdEgri");
  ASSERT_EQ(handedOver_.size(), 2U);
  EXPECT_EQ(handedOver_[0].levelCm, 120.5);
}

TEST_F(FormOlcumTest, AnothersChangeHoldsAndShows) {
  Show();
  Select(0, 2);
  Type("7");
  test::SqlHand(Path()).Do("UPDATE IstOlcum SET DebiM3s = 70");
  Select(0, 5);
  Type("Ayse");
  EXPECT_TRUE(Message().text().contains(Text("başka biri")) && Message().text().contains(Text("Ayse")))
      << Message().text().toStdString();
  EXPECT_EQ(Stored()[0].gauging.dischargeM3s, 70);
  EXPECT_EQ(Stored()[0].gauging.party, QString());
  EXPECT_EQ(Cell(0, 2), Text("70")) << "and shows";
  Select(1, 2);
  Type("8");
  EXPECT_EQ(Stored().size(), 2U) << "what comes after is not held up";
}

TEST_F(FormOlcumTest, CatchmentAndCurveAreKeptWhenTheyCanBeUsed) {
  RatingCurve curve;
  curve.station = Text("12001");
  curve.periods = {CurvePeriod{.segments = {{0, 0.001, 0, 2}}, .lowestCm = 50, .highestCm = 180}};
  const QString path = frame_.Run().dataDirectory + Text("E12001.dat");
  ASSERT_TRUE(WriteCurveFile(path, curve));
  Show();
  auto& area = *window_->findChild<QLineEdit*>(Text("TextHavza"));
  auto& file = *window_->findChild<QLineEdit*>(Text("TextEgri"));
  area.setFocus();
  QTest::keyClicks(&area, Text("-4"));
  QTest::keyClick(&area, Qt::Key_Return);
  EXPECT_TRUE(Message().isVisible());
  EXPECT_EQ(*LookupStationFacts(Path(), Text("12001")), StationFacts());
  area.selectAll();
  QTest::keyClicks(&area, Text("512,5"));
  QTest::keyClick(&area, Qt::Key_Return);
  file.setFocus();
  QTest::keyClicks(&file, Text("../data/E12001.dat"));  // from the register's folder
  QTest::keyClick(&file, Qt::Key_Return);
  EXPECT_EQ(LookupStationFacts(Path(), Text("12001"))->curve, Text("../data/E12001.dat"));
  file.selectAll();
  QTest::keyClicks(&file, path);
  QTest::keyClick(&file, Qt::Key_Return);
  EXPECT_EQ(*LookupStationFacts(Path(), Text("12001")), (StationFacts{.catchmentKm2 = 512.5, .curve = path}));
  QTest::keyClicks(&file, Text("x"));
  QTest::keyClick(&file, Qt::Key_Return);
  EXPECT_TRUE(Message().isVisible()) << "there is no such curve";
  EXPECT_EQ(LookupStationFacts(Path(), Text("12001"))->curve, path);
}

}  // namespace
}  // namespace vesk
