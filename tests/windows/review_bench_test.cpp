// The bench around the review grid: findings gone to and accepted, the hydrograph in step with the grid,
// corrections over ranges, limits, approval. Through real events.
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QMouseEvent>
#include <QTableView>
#include <QTableWidget>
#include <QToolButton>
#include <QWheelEvent>

#include "review/grid_maker.h"
#include "review/review_decisions.h"
#include "selection/clock_pairs_dialog.h"
#include "selection/findings_panel.h"
#include "selection/hydrograph_pane.h"
#include "selection/limits_dialog.h"
#include "stations/register_maker.h"
#include "stations/station_register.h"
#include "tools/sample_data.h"
#include "windows/review_fixture.h"

namespace vesk::test {
namespace {

QString Texts(const char* text) {
  return QString::fromUtf8(text);
}

/// Rises and falls by a centimetre an hour; two spikes.
int LevelWithSpikes(DateTime time) {
  const auto hour = std::chrono::duration_cast<std::chrono::hours>(time.time_since_epoch()).count();
  const int spike = time == At(2024, 3, 5, 7) ? 40 : time == At(2024, 6, 9, 10) ? -30 : 0;
  return 200 + static_cast<int>(std::abs(hour % 400 - 200)) + spike;
}

class Bench : public ReviewWindowTest {
 protected:
  Bench() {
    plan_.prefix = "001";
    plan_.station = "00001";
    plan_.count = 366 * 24;
    plan_.levelCm = LevelWithSpikes;
    EXPECT_TRUE(sample::WriteRawFile(Data(), plan_));
    frame_.Run().stationDatabasePath = Data() + Texts("register.mdb");
    MakeRegister(frame_.Run().stationDatabasePath);
  }
  void SetUp() override { Reopen(); }
  void Reopen() {
    Open();
    form_->resize(1340, 700);
    LoadWaterYear(0, 0);
    Settle();
  }
  HydrographPane& Pane() { return Find<HydrographPane>("Hidrograf"); }
  FindingsPanel& Findings() { return Find<FindingsPanel>("Bulgular"); }
  QString Status() { return Find<QLabel>("StatusLine").text(); }
  /// "rule from" of all findings, those accepted in brackets.
  std::string List() {
    Settle();
    QStringList found;
    for (const ListedFinding& listed : Findings().Findings()) {
      const QString text =
          RuleWord(listed.finding.rule) + QLatin1Char(' ') + DateTimeText(listed.finding.from);
      found += listed.accepted ? QLatin1Char('(') + text + QLatin1Char(')') : text;
    }
    return found.join(Texts(", ")).toStdString();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(&Grid(), key, with);
    Settle();
  }
  [[nodiscard]] QPoint At1(int row) {
    const ReviewPoints& points = Pane().Points();
    const GraphPoint& point = points.All()[points.PlaceOfRow(row)];
    return Pane().PointOf(point.minutes, point.levelCm).toPoint();
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers with = {}) {
    QTest::mousePress(&Pane(), Qt::LeftButton, with, from);
    // QTest::mouseMove has no buttons held.
    for (const QPoint& at : {(from + to) / 2, to}) {
      QMouseEvent move(QEvent::MouseMove, at, Pane().mapToGlobal(at), Qt::NoButton, Qt::LeftButton, with);
      QApplication::sendEvent(&Pane(), &move);
    }
    QTest::mouseRelease(&Pane(), Qt::LeftButton, with, to);
    Settle();
  }
  std::pair<int, int> SelectedRows() {
    const auto ranges = Grid().selectionModel()->selection();
    return ranges.isEmpty() ? std::pair(0, 0)
                            : std::pair(ranges.first().top() + 1, ranges.first().bottom() + 1);
  }
  void Wheel(QPoint at, int notches) {
    QWheelEvent wheel(at, Pane().mapToGlobal(at), {}, {0, notches * 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Pane(), &wheel);
  }
  QString Log() { return Data() + Texts("001-00001-Degisiklikler2024.txt"); }

  sample::RawFilePlan plan_;
};

TEST_F(Bench, FindCorrectAcceptSelectDriftUndoSaveKillRestoreApprove) {
  EXPECT_EQ(List(),
            "spike 05/03/2024 06:00, rate 05/03/2024 07:00, spike 09/06/2024 09:00, rate 09/06/2024 10:00");
  // A spike is found by F4, corrected in the grid, and gone from the list; the day's record has it still.
  Key(Qt::Key_F4);
  EXPECT_EQ(SelectedRows(), std::pair(4062, 4064));
  EXPECT_TRUE(Status().startsWith(Texts("3 okuma"))) << Status().toStdString();
  TypeLevel(4063, Cell(4062, GridColumn::Level));
  EXPECT_EQ(List(), "extreme 05/03/2024 07:00, spike 09/06/2024 09:00, rate 09/06/2024 10:00");
  // The next one is accepted, with a reason.
  Key(Qt::Key_F4);
  Push("BulguKabul");
  EXPECT_EQ(List(), "(extreme 05/03/2024 07:00), spike 09/06/2024 09:00, rate 09/06/2024 10:00");
  EXPECT_EQ(ReadReviewDecisions(Log())->accepted.front().by.why.reason, Texts("because"));
  // A range is selected in the hydrograph, and drifted over as one step.
  const int first = 1000, last = 1100;
  Drag(At1(first) - QPoint(1, 0), At1(last), Qt::ShiftModifier);
  const auto [from, to] = SelectedRows();
  EXPECT_LE(from, first);
  EXPECT_NEAR(to, last, 20);
  EXPECT_EQ(Grid().CurrentRow(), to);
  auto& operation = Find<QComboBox>("AralikIslem");
  operation.setCurrentIndex(1);
  Find<QDoubleSpinBox>("AralikSon").setValue(50);
  const QImage before = Pane().grab().toImage();
  QTest::mouseClick(&Button("AralikOnizle"), Qt::LeftButton);
  EXPECT_NE(Pane().grab().toImage(), before) << "the preview is drawn";
  const QString raw = Cell(to - 2, GridColumn::Level);
  EXPECT_EQ(Find<QLineEdit>("Text5").text(), Texts("Toplam 1 adet")) << "and nothing is changed by it";
  QTest::keyClicks(Find<QComboBox>("DuzeltmeNedeni").lineEdit(), Texts("sensor drift"));
  operator_.yes = false;  // the records stay
  Push("AralikUygula");
  EXPECT_NE(Cell(to - 2, GridColumn::Level), raw);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Cell(to - 2, GridColumn::Level), raw);
  Key(Qt::Key_Y, Qt::ControlModifier);
  const QString drifted = Cell(to - 2, GridColumn::Level);
  EXPECT_NE(drifted, raw);
  // The program dies before it is saved.
  Kill();
  operator_.recover = RecoverAnswer::Restore;
  Reopen();
  EXPECT_EQ(Cell(to - 2, GridColumn::Level), drifted);
  EXPECT_FALSE(Button("YilOnay").isEnabled()) << "unsaved work is not approved";
  Push("Command4");
  const auto record = ReadReviewRecord(Log());
  ASSERT_TRUE(record);
  EXPECT_EQ(record->states.front().lines.front().correction->by.why,
            (Purpose{Texts("drift"), Texts("sensor drift")}));
  // Approved, then changed: the next load says what no longer fits.
  Push("YilOnay");
  EXPECT_TRUE(operator_.told.back().contains(Texts("2 açık bulgu"))) << operator_.told.back().toStdString();
  EXPECT_EQ(Button("YilOnay").text(), Texts("Onayı geri al..."));
  TypeLevel(20, Texts("17"));
  Push("Command4");
  Reopen();
  const QStringList messages = Entries("ListMsj");
  EXPECT_TRUE(messages.filter(Texts("artık onaylandığı gibi değil")).size() == 1)
      << messages.join(u'|').toStdString();
  EXPECT_TRUE(messages.filter(Texts("düzeltmeler onaydan sonra değişti")).size() == 1);
}

// What is approved is what was looked at: a file that came again while the window was open is not.
TEST_F(Bench, OnlyWhatWasLoadedIsApproved) {
  plan_.levelCm = [](DateTime time) { return LevelWithSpikes(time) + (time == At(2024, 8, 8, 8) ? 1 : 0); };
  QDir(Data()).remove(QDir(Data()).entryList({Texts("001-00001-*")}).front());
  ASSERT_TRUE(sample::WriteRawFile(Data(), plan_));
  Push("YilOnay");
  EXPECT_TRUE(operator_.told.back().contains(Texts("yüklendikten sonra değişti")))
      << operator_.told.join(u'|').toStdString();
  EXPECT_EQ(ReadReviewDecisions(Log())->approvals.size(), 0U);
  form_->close();
  Reopen();
  Push("YilOnay");
  EXPECT_EQ(ReadReviewDecisions(Log())->approvals.size(), 1U);
}

TEST_F(Bench, GridAndHydrographShareOneSelection) {
  // A click in the hydrograph makes its reading current in the grid.
  QTest::mouseClick(&Pane(), Qt::LeftButton, {}, At1(2000));
  EXPECT_NEAR(Grid().CurrentRow(), 2000, 10);
  EXPECT_EQ(SelectedRows(), std::pair(Grid().CurrentRow(), Grid().CurrentRow()));
  // What is selected in the grid is drawn in the hydrograph.
  const QImage one = Pane().grab().toImage();
  Grid().GoTo(5000, GridColumn::Level, true);
  Grid().SelectRows(5000, 5400);
  const QImage other = Pane().grab().toImage();
  EXPECT_NE(one, other);
  const QPoint inside = At1(5200);
  EXPECT_NE(one.pixelColor(inside.x(), 40), other.pixelColor(inside.x(), 40)) << "a band behind the readings";
  // Keys walk from reading to reading, over the day's records in the grid.
  Pane().setFocus();
  Grid().GoTo(24, GridColumn::Level, false);
  QTest::keyClick(&Pane(), Qt::Key_Right);
  EXPECT_EQ(Grid().CurrentRow(), 27) << "rows 25 and 26 are the records of the day";
  QTest::keyClick(&Pane(), Qt::Key_Left);
  EXPECT_EQ(Grid().CurrentRow(), 24);
}

TEST_F(Bench, TheHydrographIsZoomedAndMoved) {
  const MinuteSpan whole = Pane().Seen();
  EXPECT_EQ(whole, Pane().Points().Whole());
  const QPoint at = At1(3000);
  const auto timeAt = [&](int x) {
    const double left = Pane().PointOf(Pane().Seen().start, 0).x();
    const double right = Pane().PointOf(Pane().Seen().end, 0).x();
    return Pane().Seen().start + (x - left) / (right - left) * Pane().Seen().Length();
  };
  const double under = timeAt(at.x());
  Wheel(at, 8);
  EXPECT_NEAR(Pane().Seen().Length(), whole.Length() * std::pow(0.8, 8), 1);
  EXPECT_NEAR(timeAt(at.x()), under, 1) << "the time under the cursor stays";
  const double start = Pane().Seen().start;
  Drag(at, at + QPoint(-50, 0));
  EXPECT_GT(Pane().Seen().start, start);
  EXPECT_NEAR(Pane().Seen().Length(), whole.Length() * std::pow(0.8, 8), 1);
  EXPECT_EQ(SelectedRows().first, SelectedRows().second) << "moving selects nothing";
  Wheel(at, 100);
  EXPECT_EQ(Pane().Seen().Length(), 60) << "no closer than an hour";
  // A reading that becomes current elsewhere is brought into view.
  Grid().GoTo(8000, GridColumn::Level, true);
  const double minutes = Pane().Points().All()[Pane().Points().PlaceOfRow(8000)].minutes;
  EXPECT_TRUE(Pane().Seen().start <= minutes && minutes <= Pane().Seen().end);
  Wheel(at, -100);
  EXPECT_EQ(Pane().Seen(), whole);
  Wheel(at, 5);
  QTest::mouseDClick(&Pane(), Qt::LeftButton, {}, at);
  EXPECT_EQ(Pane().Seen(), whole);
  Key(Qt::Key_F6);
  EXPECT_TRUE(Pane().isHidden());
  Key(Qt::Key_F6);
  EXPECT_FALSE(Pane().isHidden());
}

TEST_F(Bench, TheListIsFilteredAndSorted) {
  auto& filter = Find<QComboBox>("KuralSecimi");
  EXPECT_EQ(filter.itemText(0), Texts("Bütün bulgular (4, açık: 4)"));
  const int spikes = filter.findText(Texts("Sıçrama (2)"));
  ASSERT_GT(spikes, 0);
  filter.setCurrentIndex(spikes);
  const auto& list = Find<QTableView>("BulguListesi");
  EXPECT_EQ(list.model()->rowCount(), 2);
  Key(Qt::Key_F4);
  Key(Qt::Key_F4);
  EXPECT_TRUE(list.currentIndex().siblingAtColumn(1).data().toString().startsWith(Texts("09/06/2024")));
  Key(Qt::Key_F4);
  EXPECT_EQ(Status(), Texts("Bundan sonra bulgu yok."));
  Key(Qt::Key_F4, Qt::ShiftModifier);
  EXPECT_TRUE(list.currentIndex().siblingAtColumn(1).data().toString().startsWith(Texts("05/03/2024")));
  // Sorted by value the largest comes last, whatever its sign.
  Find<QTableView>("BulguListesi").sortByColumn(FindingsModel::Value, Qt::AscendingOrder);
  EXPECT_EQ(list.model()->index(1, FindingsModel::Value).data().toString(), Texts("40 cm"));
}

TEST_F(Bench, LimitsAreKeptInTheRegister) {
  operator_.limits = StationLimits{.spikeCm = 35};
  Push("SinirlarDugmesi");
  EXPECT_EQ(operator_.keptLimits, std::nullopt);
  EXPECT_EQ(operator_.proposedLimits.spikeCm, 3);
  EXPECT_EQ(List(), "spike 05/03/2024 07:00") << "a limit that is not set is not looked for";
  EXPECT_EQ(*LookupStationLimits(frame_.Run().stationDatabasePath, Texts("00001")), operator_.limits);
  // Somebody else sets others while this window is open.
  auto other = StationRegister::Open(frame_.Run().stationDatabasePath);
  const StationLimits theirs{.spikeCm = 100};
  ASSERT_TRUE(*other->SetLimits(Texts("00001"), operator_.limits, theirs));
  operator_.limits = StationLimits{.spikeCm = 1};
  Push("SinirlarDugmesi");
  EXPECT_EQ(*other->LimitsOf(Texts("00001")), theirs);
  EXPECT_TRUE(operator_.told.back().contains(Texts("başkası")));
  EXPECT_EQ(List(), "");
  operator_.limits.reset();
  Push("SinirlarDugmesi");
  EXPECT_EQ(*other->LimitsOf(Texts("00001")), std::nullopt);
}

TEST_F(Bench, TheLimitsDialogTakesNumbersOnly) {
  LimitsDialog dialog(frame_.Run().language, Texts("00001"), std::nullopt, {.spikeCm = 3, .flatHours = 24},
                      nullptr);
  dialog.show();
  const auto field = [&](const char* name) { return dialog.findChild<QLineEdit*>(QLatin1String(name)); };
  auto* save = dialog.findChild<QPushButton*>(Texts("SinirKaydet"));
  EXPECT_EQ(field("SinirSicrama")->text(), Texts("3"));
  for (const char* wrong : {"x", "-1", "1e9"}) {
    field("SinirSicrama")->setText(Texts(wrong));
    QTest::mouseClick(save, Qt::LeftButton);
    EXPECT_TRUE(dialog.isVisible()) << wrong;
    EXPECT_FALSE(dialog.findChild<QLabel*>(Texts("SinirMesaji"))->text().isEmpty()) << wrong;
  }
  field("SinirSicrama")->setText(Texts("2,5"));
  field("SinirHiz")->clear();
  field("SinirEnDusuk")->setText(Texts("50"));
  field("SinirEnYuksek")->setText(Texts("50"));
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_TRUE(dialog.isVisible()) << "the highest level is not above the lowest one";
  field("SinirEnYuksek")->setText(Texts("51"));
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(dialog.Chosen(),
            (StationLimits{.spikeCm = 2.5, .flatHours = 24, .lowestCm = 50, .highestCm = 51}));
}

TEST_F(Bench, TheClockDialogTakesPairsThatAscend) {
  const StationSeries series = HourlyGrid("01/01/2010 00:00", 25);
  const TrueTimes own(ReadDateTime(Texts("02/01/2010 00:00")).value());
  ClockPairsDialog dialog(frame_.Run().language, series.Raw(), own, nullptr);
  dialog.show();
  auto* table = dialog.findChild<QTableWidget*>(Texts("SaatTablosu"));
  const auto press = [&](const char* name) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
  };
  ASSERT_EQ(table->rowCount(), 2) << "the first reading and the last one";
  press("SaatEkle");
  ASSERT_EQ(table->rowCount(), 3);
  table->item(1, 0)->setText(Texts("01/01/2010 12:00"));
  for (const char* wrong : {"", "noon", "01/01/2010", "31/12/2009 12:00", "02/01/2010 01:00"}) {
    table->item(1, 1)->setText(Texts(wrong));
    press("SaatDuzelt");
    EXPECT_TRUE(dialog.isVisible()) << wrong;
    EXPECT_FALSE(dialog.findChild<QLabel*>(Texts("SaatMesaji"))->text().isEmpty()) << wrong;
  }
  table->item(1, 1)->setText(Texts("01/01/2010 12:20"));
  table->item(2, 1)->setText(Texts("02/01/2010 00:30"));
  press("SaatDuzelt");
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(TrueTimesText(dialog.Chosen()).toStdString(),
            "02/01/2010 00:30;01/01/2010 12:00=01/01/2010 12:20");
}

TEST_F(Bench, ARangeIsCorrectedWithItsRecords) {
  const int noon = 12;
  Grid().GoTo(noon, GridColumn::Level, false);
  Grid().SelectRows(noon, noon);
  Find<QComboBox>("AralikIslem").setCurrentIndex(3);
  Find<QDoubleSpinBox>("AralikIlk").setValue(900);
  operator_.backsOut = true;
  Push("AralikUygula");
  EXPECT_NE(Cell(noon, GridColumn::Level), Texts("900")) << "backed out: nothing is changed";
  operator_.backsOut = false;
  operator_.yes = true;
  Push("AralikUygula");
  EXPECT_EQ(Cell(noon, GridColumn::Level), Texts("900"));
  EXPECT_EQ(Cell(25, GridColumn::Level), Texts("900")) << "the day's maximum";
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(Cell(25, GridColumn::Level), Texts("900")) << "taken back together";
  // A comma that is typed is the decimal point.
  auto& amount = Find<QDoubleSpinBox>("AralikIlk");
  amount.selectAll();
  QTest::keyClicks(&amount, Texts("2,5"));
  EXPECT_EQ(amount.value(), 2.5);
  // What cannot be is said, and nothing is changed.
  Find<QComboBox>("AralikIslem").setCurrentIndex(5);
  Push("AralikUygula");
  EXPECT_TRUE(Status().contains(Texts("başka bir dosyada")));
}

TEST_F(Bench, TheChooserFoldsAwayAndComesBack) {
  EXPECT_TRUE(Find<QWidget>("ListIst").isHidden() || !Find<QWidget>("ListIst").isVisible());
  Key(Qt::Key_F7);
  EXPECT_TRUE(Find<QWidget>("ListIst").isVisible());
  EXPECT_TRUE(Find<QToolButton>("SecimGoster").isChecked());
  LoadWaterYear(0, 0);
  EXPECT_TRUE(Find<QWidget>("ListIst").isVisible()) << "opened by the operator, it stays";
  Key(Qt::Key_F7);
  EXPECT_FALSE(Find<QWidget>("ListIst").isVisible());
  form_->close();
  Reopen();
  EXPECT_FALSE(Find<QWidget>("ListIst").isVisible());
}

TEST_F(Bench, TheHydrographShowsWhatTheGraphLeavesOut) {
  // Negative levels, a single reading, none at all, twice the pixels: nothing of it is lost or falls over.
  RowSelection selection;
  HydrographPane pane(selection, frame_.Run().language, nullptr);
  pane.resize(400, 160);
  const QImage empty = pane.grab().toImage();
  std::vector<Reading> readings;
  for (int hour = 0; hour < 48; ++hour) {
    Reading reading;
    reading.day = std::chrono::sys_days(std::chrono::year(2024) / 1 / (1 + hour / 24));
    reading.minuteOfDay = static_cast<std::int16_t>(hour % 24 * 60);
    reading.levelCm = hour - 24;
    readings.push_back(reading);
  }
  const StationSeries series(readings);
  pane.SetSeries(&series);
  EXPECT_NE(pane.grab().toImage(), empty);
  const double y = pane.PointOf(pane.Points().All()[2].minutes, -22).y();
  EXPECT_GT(y, pane.PointOf(pane.Points().All()[40].minutes, 16).y());
  EXPECT_LT(y, 160);
  pane.SetZeroBased(true);
  EXPECT_GE(pane.PointOf(0, 0).y(), 0);
  const StationSeries single(std::vector<Reading>{readings[3]});
  pane.SetSeries(&single);
  EXPECT_NE(pane.grab().toImage(), empty);
  EXPECT_EQ(pane.Seen().Length(), kMinutesPerDay);
  pane.SetSeries(nullptr);
  EXPECT_EQ(pane.grab().toImage(), empty);
}

}  // namespace
}  // namespace vesk::test
