// Discharges in the selection window: choosing a rating curve, what the grid shows of it, what takes it away.
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QTableView>
#include <QToolButton>

#include "graphs/form_debi.h"
#include "ratings/curve_file.h"
#include "selection/findings_panel.h"
#include "windows/review_fixture.h"

namespace vesk::test {
namespace {

QString Texts(const char* text) {
  return QString::fromUtf8(text);
}

/// Q = 0.001 h^2 between 50 and 180 cm, 40 cm further at most.
RatingCurve CurveOf(const char* station) {
  RatingCurve curve;
  curve.station = Texts(station);
  CurvePeriod period;
  period.segments = {{0, 0.001, 0, 2}};
  period.lowestCm = 50;
  period.highestCm = 180;
  period.aboveCm = 40;
  curve.periods = {period};
  return curve;
}

class Curves : public ReviewWindowTest {
 protected:
  explicit Curves(LanguageChoice language = LanguageChoice::Turkish) : ReviewWindowTest(language) {
    EXPECT_TRUE(WriteCurveFile(Data() + Texts("E12345.dat"), CurveOf("12345")));
    EXPECT_TRUE(WriteCurveFile(Data() + Texts("Eother.dat"), CurveOf("20000")));
    EXPECT_TRUE(frame_.Run().settings.WriteSetting(Texts("Genel"), Texts("AnahtarDirectory"), Data()));
  }
  void SetUp() override {
    Open();
    form_->resize(1340, 700);
    LoadWaterYear();
    Settle();
  }
  /// Through the button above the grid, then the window of curve files.
  void Choose(int row) {
    auto* choose = form_->findChild<QAction*>(Texts("EgriSec"));
    ASSERT_NE(choose, nullptr);
    choose->trigger();
    QWidget* chooser = frame_.Child(Texts("Form5"));
    ASSERT_NE(chooser, nullptr);
    chooser->findChild<QListWidget*>(Texts("File1"))->setCurrentRow(row);
    QTest::mouseClick(chooser->findChild<QPushButton*>(Texts("Command2")), Qt::LeftButton);
    Settle();
  }
  QString Caption() { return Find<QToolButton>("AnahtarEgrisi").text(); }
};

class EnglishCurves : public Curves {
 protected:
  EnglishCurves() : Curves(LanguageChoice::English) {}
};

TEST_F(Curves, DischargesFollowEveryCorrectionAtOnce) {
  EXPECT_EQ(Cell(1, GridColumn::Discharge), QString());
  Choose(0);
  EXPECT_TRUE(Caption().contains(Texts("E12345.dat"))) << Caption().toStdString();
  EXPECT_EQ(Find<QLineEdit>("Text7").text(), Data() + Texts("E12345.dat"));
  TypeLevel(1, Texts("100"));
  EXPECT_EQ(Cell(1, GridColumn::Discharge), Texts("10.0"));
  TypeLevel(1, Texts("200"));
  EXPECT_EQ(Cell(1, GridColumn::Discharge), Texts("40.0*"));
  const QModelIndex cell = Grid().model()->index(0, static_cast<int>(GridColumn::Discharge));
  EXPECT_TRUE(cell.data(Qt::ToolTipRole).toString().contains(Texts("180 cm")));
  TypeLevel(1, Texts("230"));
  EXPECT_EQ(Cell(1, GridColumn::Discharge), Texts("*"));
  Settle();
  bool told = false;
  for (const ListedFinding& listed : Find<FindingsPanel>("Bulgular").Findings())
    told = told ||
           (listed.finding.rule == FindingRule::Curve && listed.finding.severity == FindingSeverity::Doubt);
  EXPECT_TRUE(told) << "a reading without a discharge is among the findings";
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, GridColumn::Discharge), Texts("40.0*"));
}

TEST_F(Curves, AnotherStationsCurveLeavesNone) {
  Choose(0);
  ASSERT_FALSE(Cell(1, GridColumn::Discharge).isEmpty());
  Choose(1);
  ASSERT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(operator_.told.front().contains(Texts("20000")));
  EXPECT_EQ(Cell(1, GridColumn::Discharge), QString()) << "the curve of before would pass for the chosen one";
  EXPECT_EQ(Find<QLineEdit>("Text7").text(), QString());
}

TEST_F(Curves, AnotherChoiceTakesTheCurveAway) {
  Choose(0);
  QTest::keyClick(&Find<QLineEdit>("Text7"), Qt::Key_Delete);
  EXPECT_EQ(Cell(1, GridColumn::Discharge), QString());
  Choose(0);
  Click("ListSuYili", 1);
  EXPECT_EQ(Cell(1, GridColumn::Discharge), QString());
  form_->findChild<QAction*>(Texts("EgriYok"))->trigger();
  EXPECT_FALSE(Caption().contains(Texts("E12345.dat")));
}

TEST_F(Curves, SavingWritesWhatTheLogHadNotWhatACurveMade) {
  const QString path = Data() + Texts("001-12345-Degisiklikler2010.txt");
  const QString row = Cell(2, GridColumn::Date) + Texts("\t") + Cell(2, GridColumn::Time) + Texts("\t");
  {
    QFile log(path);
    ASSERT_TRUE(log.open(QIODevice::WriteOnly));
    log.write(row.toLatin1() + "77\t4.5\r\n");
  }
  LoadWaterYear();
  ASSERT_EQ(Cell(2, GridColumn::Discharge), Texts("4.5"));
  Choose(0);
  EXPECT_EQ(Cell(2, GridColumn::Discharge), Texts("5.93"));
  TypeLevel(1, Texts("131"));
  Push("Command4");
  QFile log(path);
  ASSERT_TRUE(log.open(QIODevice::ReadOnly));
  EXPECT_TRUE(log.readLine().trimmed().endsWith("\t131"));
  EXPECT_TRUE(log.readLine().startsWith(row.toLatin1() + "77\t4.5"));
}

TEST_F(Curves, TheCurveChosenLastIsProposedAndNeverTakenUnasked) {
  Choose(0);
  const auto action = [this](const char* name) { return form_->findChild<QAction*>(Texts(name)); };
  const auto open = [this] { Q_EMIT Find<QToolButton>("AnahtarEgrisi").menu()->aboutToShow(); };
  action("EgriYok")->trigger();
  LoadWaterYear();
  EXPECT_EQ(Cell(1, GridColumn::Discharge), QString()) << "nothing is taken unasked";
  open();
  EXPECT_TRUE(action("EgriSon")->text().contains(Texts("E12345.dat (değişmedi)")))
      << action("EgriSon")->text().toStdString();
  EXPECT_FALSE(action("EgriIstasyon")->isEnabled());
  RatingCurve changed = CurveOf("12345");
  changed.periods[0].aboveCm = 50;
  ASSERT_TRUE(WriteCurveFile(Data() + Texts("E12345.dat"), changed));
  open();
  EXPECT_TRUE(action("EgriSon")->text().contains(Texts("o zamandan beri değişti")));
  action("EgriSon")->trigger();
  EXPECT_FALSE(Cell(1, GridColumn::Discharge).isEmpty());
}

TEST_F(Curves, TheGraphWindowLeadsToDischargesOfWhatIsOnTheScreen) {
  Choose(0);
  TypeLevel(1, Texts("100"));
  Push("CmdGrf");
  QWidget* graph = frame_.Child(Texts("FormGraf"));
  ASSERT_NE(graph, nullptr);
  graph->findChild<QAction*>(Texts("MnuDebiGrafik"))->trigger();
  auto* flow = qobject_cast<FormDebi*>(frame_.Child(Texts("FormDebi")));
  ASSERT_NE(flow, nullptr);
  const auto& view = *flow->findChild<FlowPlotView*>();
  ASSERT_EQ(view.Plot().lines.size(), 1U);
  EXPECT_NEAR(view.Plot().lines[0].points[0].y, 10, 1e-9) << "the correction that is not saved yet";
  QTest::keyClick(flow->findChild<FlowPlotView*>(), Qt::Key_Right);
  EXPECT_TRUE(flow->findChild<QLabel*>(Texts("LabelOkuma"))->text().contains(Texts("10.0 m³/s")));
  const QString file = Data() + Texts("q.csv");
  flow->SaveTo(file);
  EXPECT_TRUE(QFile::exists(file));
  flow->findChild<QCheckBox*>(Texts("CheckYillar"))->click();
  EXPECT_GT(view.Plot().lines.size(), 1U) << "the station's other years are loaded beside it";
}

TEST_F(EnglishCurves, AreChosenWithoutTheFrameThatEnglishLacks) {
  EXPECT_FALSE(Find<QLineEdit>("Text7").isVisible());
  Choose(0);
  EXPECT_TRUE(Caption().startsWith(Texts("Curve: E12345.dat")));
  EXPECT_FALSE(Cell(1, GridColumn::Discharge).isEmpty());
}

}  // namespace
}  // namespace vesk::test
