// "gaugings" and "station", and what the register then gives to the other verbs.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "programs/batch_run.h"
#include "stations/register_maker.h"
#include "stations/station_register.h"
#include "tools/sample_data.h"

namespace vesk {
namespace {

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

class BatchGaugings : public testing::Test {
 protected:
  BatchGaugings() { test::MakeRegister(register_); }
  [[nodiscard]] QString Write(const char* name, const QByteArray& text) const {
    EXPECT_TRUE(test::WriteBytes(folder_.filePath(Text(name)), text));
    return folder_.filePath(Text(name));
  }
  [[nodiscard]] Outcome Run(const QStringList& words) const {
    return Batch(words + QStringList{Text("--register"), register_, Text("--station"), Text("12001")});
  }
  [[nodiscard]] Outcome Import(const QString& file, const QStringList& further = {}) const {
    return Run(QStringList{Text("gaugings"), Text("import"), file} + further);
  }

  QTemporaryDir folder_;
  QString register_ = folder_.filePath(Text("Istasyon.mdb"));
};

TEST_F(BatchGaugings, ComeInOnceAndGoOutAsTheyCameIn) {
  const QString file = Write("g.csv",
                             "level_cm,discharge_m3s,uncertainty_percent,time,method,party,remark,used\n"
                             "120.5,3.25,5,05/10/2023 10:00,ADCP,Ali,,1\n,4,,05/11/2023 10:00,,,,0\n");
  const Outcome first = Import(file);
  EXPECT_EQ(first.exit, 0) << first.err.toStdString();
  EXPECT_TRUE(first.out.contains(Text("added,2\n"))) << first.out.toStdString();
  EXPECT_TRUE(first.err.contains(Text("no name for this station"))) << "a mistyped number is told";
  EXPECT_TRUE(Import(file).out.contains(Text("added,0\nreplaced,0\nthere_already,2\n")));
  const Outcome out = Run({Text("gaugings"), Text("export")});
  EXPECT_EQ(out.out.toUtf8(), test::BytesOf(file));

  const QString other =
      Write("h.csv", "time,level_cm,discharge_m3s\n05/10/2023 10:00,121,9\n06/10/2023 10:00,x,9\n");
  const Outcome kept = Import(other);
  EXPECT_EQ(kept.exit, 1);
  EXPECT_TRUE(kept.err.contains(Text("line 2: the register has another")) &&
              kept.err.contains(Text("line 3")))
      << kept.err.toStdString();
  EXPECT_EQ(Run({Text("gaugings"), Text("export")}).out, out.out);
  EXPECT_TRUE(Import(other, {Text("--replace")}).out.contains(Text("replaced,1\n")));
  EXPECT_EQ(Batch({Text("gaugings"), Text("import"), file}).exit, 2);
  EXPECT_EQ(Batch({Text("gaugings")}).exit, 2);
}

TEST_F(BatchGaugings, TakeMissingLevelsFromTheRecordingAndSaySo) {
  sample::RawFilePlan plan;
  plan.levelCm = [](DateTime time) { return time <= sample::At(2023, 10, 1, 5) ? 50 : 130; };
  ASSERT_TRUE(sample::WriteRawFile(folder_.path(), plan));
  ASSERT_EQ(Import(Write("g.csv",
                         "time,discharge_m3s\n01/10/2023 05:30,4\n01/10/2023 05:00,3\n01/01/1990 05:00,3\n"))
                .exit,
            0);
  const Outcome out = Run({Text("gaugings"), Text("export"), Text("--levels-from"), folder_.path()});
  EXPECT_EQ(out.exit, 0);
  EXPECT_EQ(out.Lines().value(2), Text("50,3,,01/10/2023 05:00,,,[level of the recording],1"))
      << out.out.toStdString();
  EXPECT_EQ(out.Lines().value(3), Text("90,4,,01/10/2023 05:30,,,[level of the recording],1"));
  EXPECT_TRUE(out.err.contains(Text("01/10/2023 05:30: 90 cm is the level of the recording")))
      << out.err.toStdString();
  EXPECT_TRUE(out.err.contains(Text("01/01/1990 05:00: no level")));
  // The register still says that no level was measured.
  EXPECT_EQ(Run({Text("gaugings"), Text("export")}).Lines().value(2), Text(",3,,01/10/2023 05:00,,,,1"));
}

TEST_F(BatchGaugings, TheRegistersCurveAndCatchmentMakeTheDischarges) {
  sample::RawFilePlan plan;
  plan.count = 48;
  plan.levelCm = [](DateTime) { return 120; };
  ASSERT_TRUE(sample::WriteRawFile(folder_.path(), plan));
  const QString curve = Write("E12001.dat",
                              "Vesk4 rating curve, format 1\nstation = 12001\n[period]\nlowest_cm = 30\n"
                              "highest_cm = 120\n[segments]\n- 0.01 20 2\n[end]\n");
  const auto daily = [&](const QStringList& further) {
    return Batch(QStringList{Text("daily"), folder_.path(), Text("--station"), Text("12001"),
                             Text("--water-year"), Text("2024")} +
                 further);
  };
  const QStringList fromRegister{Text("--register"), register_};
  const QString levels = daily({}).out;
  ASSERT_EQ(Run({Text("station"), Text("--curve"), curve, Text("--catchment"), Text("100")}).exit, 0);
  EXPECT_EQ(Run({Text("station")}).out, Text("quantity,value\ncatchment_km2,100\ncurve,") + curve + u'\n');
  EXPECT_EQ(daily(fromRegister).out, daily({Text("--curve"), curve}).out);
  EXPECT_EQ(daily(fromRegister + QStringList{Text("--curve"), QString()}).out, levels) << "none, said so";
  // 100 m3/s over two days are 17.28 million m3: 172.8 mm, 1000 l/s from each km2.
  const Outcome year = daily(fromRegister + QStringList{Text("--per"), Text("year")});
  EXPECT_TRUE(year.out.contains(Text(",17.28,172.8,1000,"))) << year.out.toStdString();
  // The file went: figures without it would be another table's.
  ASSERT_TRUE(QFile::remove(curve));
  EXPECT_EQ(daily(fromRegister).exit, 1);
  EXPECT_EQ(Run({Text("station"), Text("--catchment"), Text("-1")}).exit, 2);
  EXPECT_EQ(Run({Text("station"), Text("--curve"), folder_.filePath(Text("Enone.dat"))}).exit, 1);
  EXPECT_EQ(Run({Text("station"), Text("--curve"), QString()}).exit, 0);
  EXPECT_EQ(LookupStationFacts(register_, Text("12001"))->curve, QString());
}

TEST_F(BatchGaugings, GraphsAreOfDischargesDurationsAndSeveralYears) {
  for (const int year : {2022, 2023}) {
    sample::RawFilePlan plan;
    plan.stem = year == 2022 ? "221001" : "231001";
    plan.first = sample::At(year, 10, 1, 1);
    plan.count = 48;
    plan.levelCm = [year](DateTime) { return year == 2022 ? 120 : 70; };
    ASSERT_TRUE(sample::WriteRawFile(folder_.path(), plan));
  }
  const QString curve = Write("E12001.dat",
                              "Vesk4 rating curve, format 1\nstation = 12001\n[period]\nlowest_cm = 30\n"
                              "highest_cm = 120\n[segments]\n- 0.01 20 2\n[end]\n");
  const QString out = folder_.filePath(Text("g.csv"));
  const auto graph = [&](const QStringList& further) {
    QFile::remove(out);
    return Batch(
        QStringList{Text("graph"), folder_.path(), Text("--station"), Text("12001"), Text("--out"), out} +
        further);
  };
  const QStringList with{Text("--curve"), curve, Text("--quantity")};
  const Outcome years = graph(with + QStringList{Text("discharge"), Text("--years"), Text("2024,2023")});
  EXPECT_EQ(years.exit, 0) << years.err.toStdString();
  const QByteArray points = test::BytesOf(out);
  EXPECT_TRUE(points.contains("\n2023,01/10/2022 01:00,discharge_m3s,100,0\n"))
      << points.left(200).toStdString();
  EXPECT_TRUE(points.contains("\n2024,01/10/2023 01:00,discharge_m3s,25,0\n"));
  const QStringList one{Text("--water-year"), Text("2024")};
  EXPECT_EQ(graph(with + QStringList{Text("duration")} + one).exit, 0);
  EXPECT_TRUE(test::BytesOf(out).contains("2024,33.3333,discharge_m3s,25,0\n"))
      << test::BytesOf(out).toStdString();
  EXPECT_EQ(graph(QStringList{Text("--quantity"), Text("discharge")} + one).exit, 2) << "no curve";
  EXPECT_EQ(graph(with + QStringList{Text("level")} + one).exit, 2) << "a curve that would do nothing";
  EXPECT_EQ(graph(with + QStringList{Text("discharge"), Text("--years"), Text("2024"), Text("--water-year"),
                                     Text("2024")})
                .exit,
            2);
  EXPECT_EQ(graph(with + QStringList{Text("flow")} + one).exit, 2);
  EXPECT_EQ(graph(QStringList{Text("--register"), register_, Text("--quantity"), Text("both")} + one).exit, 1)
      << "the register keeps no curve";
  EXPECT_FALSE(QFile::exists(out));
  EXPECT_EQ(graph(with + QStringList{Text("discharge"), Text("--years"), Text("2024,2010")}).exit, 1)
      << "a year that is not there is named, the other drawn";
  EXPECT_TRUE(QFile::exists(out));
}

TEST_F(BatchGaugings, AnApprovalWithACurveBreaksWhenTheCurveChanges) {
  sample::RawFilePlan plan;
  plan.levelCm = [](DateTime) { return 120; };
  ASSERT_TRUE(sample::WriteRawFile(folder_.path(), plan));
  const QByteArray text =
      "Vesk4 rating curve, format 1\nstation = 12001\n[period]\nlowest_cm = 30\nhighest_cm = 120\n"
      "[segments]\n- 0.01 20 2\n[end]\n";
  const QString curve = Write("E12001.dat", text);
  const auto run = [&](const char* verb, const QStringList& further = {}) {
    return Batch(QStringList{Text(verb), folder_.path(), Text("--station"), Text("12001"),
                             Text("--water-year"), Text("2024")} +
                 further);
  };
  ASSERT_EQ(run("approve", {Text("--curve"), curve}).exit, 0);
  EXPECT_TRUE(run("readings").err.contains(Text("is approved")));
  EXPECT_TRUE(run("history", {Text("--approvals")}).out.contains(curve + u','));
  ASSERT_EQ(run("approve", {Text("--curve"), Text("")}).exit, 0);
  ASSERT_EQ(run("approve", {Text("--curve"), curve}).exit, 0);
  ASSERT_EQ(Write("E12001.dat", text + "\n"), curve);
  const QString said = run("readings").err;
  EXPECT_TRUE(said.contains(Text("no longer as it was approved")) &&
              said.contains(Text("E12001.dat has changed")))
      << said.toStdString();
  ASSERT_TRUE(QFile::remove(curve));
  EXPECT_EQ(run("approve", {Text("--withdraw"), Text("--curve"), curve}).exit, 0)
      << "though the curve is gone";
}

}  // namespace
}  // namespace vesk
