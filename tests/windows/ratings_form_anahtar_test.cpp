// The rating curve window, driven by mouse and keyboard.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <cmath>

#include "datafiles/dates.h"
#include "ratings/curve_file.h"
#include "ratings/curve_plot_view.h"
#include "ratings/form_anahtar.h"
#include "windows/frame_double.h"

namespace vesk {
namespace {

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

/// Of Q = 0.01 (h - 20)^2, the last one far off.
std::vector<Gauging> Gaugings() {
  std::vector<Gauging> gaugings;
  for (const double level : {30.0, 40.0, 55.0, 70.0, 90.0, 120.0, 150.0}) {
    Gauging gauging;
    gauging.levelCm = level;
    gauging.dischargeM3s = 0.01 * (level - 20) * (level - 20);
    gaugings.push_back(gauging);
  }
  gaugings[4].dischargeM3s *= 1.5;
  return gaugings;
}

class FormAnahtarTest : public testing::TestWithParam<LanguageChoice> {
 protected:
  FormAnahtarTest() : frame_(GetParam()) {}
  void Show(const QString& path = {}, std::vector<Gauging> gaugings = Gaugings()) {
    window_ = new FormAnahtar(frame_, Text("12001"), path, std::move(gaugings));
    frame_.ShowChild(window_);
    WaitForFit();
  }
  void WaitForFit() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->IsFitting(); }, 20'000));
    QCoreApplication::processEvents();
  }
  CurvePlotView& Plot() { return *window_->findChild<CurvePlotView*>(); }
  const CurvePeriod& Period() { return window_->Draft().Period(); }
  void Press(const char* name) { window_->findChild<QPushButton*>(QLatin1String(name))->click(); }
  QString Told() { return window_->findChild<QLabel*>(Text("LabelMesaj"))->text(); }
  void ClickGauging(std::size_t i) {
    const Gauging& one = Period().gaugings[i];
    QTest::mouseClick(&Plot(), Qt::LeftButton, {}, Plot().PlaceOf(*one.levelCm, one.dischargeM3s).toPoint());
  }
  void WillAnswer(QMessageBox::StandardButton answer) {
    QTimer::singleShot(50, window_, [answer] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      box->button(answer)->click();
    });
  }
  QString File(const char* name) { return frame_.Run().dataDirectory + QLatin1String(name); }

  test::FrameDouble frame_;
  FormAnahtar* window_ = nullptr;
};

TEST_P(FormAnahtarTest, AGaugingSwitchedOffByAClickChangesTheFitAndComesBack) {
  Show();
  ASSERT_EQ(Period().segments.size(), 1U);
  const double before = Period().segments[0].b;
  ClickGauging(4);
  WaitForFit();
  EXPECT_FALSE(Period().gaugings[4].used);
  EXPECT_NEAR(Period().segments[0].b, 2, 1e-3) << "the others lie on one parabola";
  EXPECT_NEAR(Period().segments[0].cCm, 20, 1e-2);
  QTest::keyClick(window_, Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(window_, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Period().gaugings[4].used);
  EXPECT_EQ(Period().segments[0].b, before);
  // The same by keyboard: from the lowest gauging to the fifth, then off.
  Plot().setFocus();
  for (int i = 0; i < 9; ++i) QTest::keyClick(&Plot(), Qt::Key_Left);
  for (int i = 0; i < 4; ++i) QTest::keyClick(&Plot(), Qt::Key_Right);
  EXPECT_TRUE(Told().contains(Text("90 cm"))) << Told().toStdString();
  QTest::keyClick(&Plot(), Qt::Key_Space);
  WaitForFit();
  EXPECT_FALSE(Period().gaugings[4].used);
  EXPECT_TRUE(window_->findChild<QLabel*>(Text("LabelOneri"))->text().contains(Text("AICc")));
}

TEST_P(FormAnahtarTest, ANodeIsDraggedAndTheCurveSaysSo) {
  Show();
  const auto nodes = NodesOf(Period());
  ASSERT_EQ(nodes.size(), 2U);
  const QPoint from = Plot().PlaceOf(nodes[1].levelCm, nodes[1].dischargeM3s).toPoint();
  const QPoint to = from - QPoint(60, 0);
  QTest::mousePress(&Plot(), Qt::LeftButton, {}, from);
  QTest::mouseMove(&Plot(), to);
  QTest::mouseRelease(&Plot(), Qt::LeftButton, {}, to);
  const double dragged = CurveDischarge(Period(), 150);
  EXPECT_LT(dragged, nodes[1].dischargeM3s * 0.95);
  EXPECT_EQ(window_->Draft().State().segments, 0) << "shaped by hand";
  ClickGauging(2);  // a curve shaped by hand does not follow its gaugings
  WaitForFit();
  EXPECT_FALSE(Period().gaugings[2].used);
  EXPECT_EQ(CurveDischarge(Period(), 150), dragged);
  QTest::keyClick(&Plot(), Qt::Key_N);
  QTest::keyClick(&Plot(), Qt::Key_Right, Qt::ControlModifier);
  EXPECT_NEAR(CurveDischarge(Period(), 150), dragged, 1e-9) << "the first node moved, the last stays";
  ClickGauging(0);  // a node lies over it; a click that moves nothing is the gauging's
  EXPECT_FALSE(Period().gaugings[0].used);
  window_->findChild<QCheckBox*>(Text("CheckLog"))->click();
  EXPECT_TRUE(Plot().Plot().logarithmic);
}

TEST_P(FormAnahtarTest, WhatIsSavedReadsBackAndAnothersFileIsNotReplacedUnasked) {
  Show();
  EXPECT_TRUE(window_->windowTitle().endsWith(u'*'));
  const QString file = File("E12001.dat");
  ASSERT_TRUE(window_->SaveTo(file));
  const auto read = ReadCurveFile(file);
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, window_->Draft().Curve());
  EXPECT_FALSE(window_->windowTitle().endsWith(u'*'));
  QFile other(file);
  ASSERT_TRUE(other.open(QIODevice::Append));
  other.write("\n");
  other.close();
  ClickGauging(4);
  WaitForFit();
  WillAnswer(QMessageBox::No);
  Press("CmdKaydet");
  EXPECT_TRUE(ReadCurveFile(file)->periods[0].gaugings[4].used) << "the other's file stands";
  WillAnswer(QMessageBox::Yes);
  Press("CmdKaydet");
  EXPECT_EQ(*ReadCurveFile(file), window_->Draft().Curve());
  EXPECT_FALSE(window_->SaveTo(File("nowhere/E12001.dat")));
  EXPECT_FALSE(Told().isEmpty());
}

TEST_P(FormAnahtarTest, FieldsShiftsAndPeriodsAreCheckedWhereTheyAreTyped) {
  Show();
  const auto field = [this](int place) { return window_->findChild<QLineEdit*>(Text("Text%1").arg(place)); };
  const auto type = [&](int place, const char* text) {
    field(place)->setText(QLatin1String(text));
    Q_EMIT field(place)->editingFinished();
  };
  type(7, "abc");
  EXPECT_TRUE(Told().contains(Text("abc"))) << Told().toStdString();
  EXPECT_EQ(Period().aboveCm, 0);
  type(7, "25,5");
  EXPECT_EQ(Period().aboveCm, 25.5);
  type(3, "30/09/2023 23:59");
  Press("CmdDonemEkle");
  ASSERT_EQ(window_->Draft().Curve().periods.size(), 2U);
  EXPECT_EQ(Period().from, ReadDateTime(u"01/10/2023 00:00"));
  type(2, "01/01/2023 00:00");
  EXPECT_TRUE(Told().contains(GetParam() == LanguageChoice::English ? Text("Period") : Text("Dönem")))
      << "two periods at once: " << Told().toStdString();
  EXPECT_FALSE(window_->SaveTo(File("E12001.dat"))) << "a curve with a fault is written nowhere";
  EXPECT_FALSE(QFile::exists(File("E12001.dat")));
  Press("CmdDonemSil");
  auto* shifts = window_->findChild<QTableWidget*>(Text("GridKayma"));
  shifts->item(0, 0)->setText(Text("05/10/2022 12:00"));
  EXPECT_TRUE(Period().shifts.empty()) << "its figure is still to come";
  shifts->item(0, 1)->setText(Text("-3.5"));
  ASSERT_EQ(Period().shifts.size(), 1U);
  EXPECT_EQ(Period().shifts[0].shiftCm, -3.5);
  WillAnswer(QMessageBox::Cancel);
  EXPECT_FALSE(window_->close());
  WillAnswer(QMessageBox::Discard);
  EXPECT_TRUE(window_->close());
}

TEST_P(FormAnahtarTest, ADamagedFileOpensNothingAndTooFewGaugingsAreTold) {
  QFile bad(File("Ebad.dat"));
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write("Vesk4 rating curve, format 1\nstation = 12001\n[period]\nlowest_cm = x\n[end]\n");
  bad.close();
  Show(File("Ebad.dat"), {Gaugings()[0], Gaugings()[1]});
  EXPECT_TRUE(Told().contains(Text("4"))) << Told().toStdString();
  Press("CmdIstasyon");
  window_->findChild<QComboBox*>(Text("ComboParca"))->setCurrentIndex(1);
  QTest::keyClick(window_, Qt::Key_F5);
  WaitForFit();
  EXPECT_TRUE(Period().segments.empty());
  EXPECT_TRUE(Told().contains(Text("7"))) << "six parameters and one: " << Told().toStdString();
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, FormAnahtarTest,
                         testing::Values(LanguageChoice::Turkish, LanguageChoice::English));

}  // namespace
}  // namespace vesk
