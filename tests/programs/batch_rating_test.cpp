// "rating", and what a rating curve adds to the other verbs.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "programs/batch_run.h"
#include "ratings/curve_file.h"
#include "tools/sample_data.h"

namespace vesk {
namespace {

class BatchRating : public testing::Test {
 protected:
  [[nodiscard]] QString Path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  [[nodiscard]] QString Write(const char* name, const QByteArray& text) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return file.fileName();
  }
  /// Q = 0.01 (h - 20)^2.
  [[nodiscard]] QString Gaugings(const QByteArray& further = {}) const {
    return Write("g.csv", "level_cm,discharge_m3s\n30,1\n40,4\n50,9\n60,16\n70,25\n120,100\n" + further);
  }
  static double ValueOf(const QByteArray& out, const char* quantity) {
    for (const QByteArray& line : out.split('\n')) {
      if (line.startsWith(QByteArray(quantity) + ',')) return line.mid(line.indexOf(',') + 1).toDouble();
    }
    ADD_FAILURE() << quantity << " is not in " << out.toStdString();
    return 0;
  }

  QTemporaryDir folder_;
};

TEST_F(BatchRating, FitsTabulatesAndChecks) {
  const QString curve = Path("E12001.dat");
  const Outcome fit =
      Batch({QStringLiteral("rating"), QStringLiteral("fit"), Gaugings(), QStringLiteral("--segments"),
             QStringLiteral("1"), QStringLiteral("--out"), curve});
  ASSERT_EQ(fit.exit, 0) << fit.err.toStdString();
  const QByteArray out = fit.out.toUtf8();
  EXPECT_TRUE(out.startsWith("quantity,value\nn,6\nsegments,1\nsse_ln,"));
  EXPECT_NEAR(ValueOf(out, "c1_cm"), 20, 1e-3);
  EXPECT_NEAR(ValueOf(out, "b1"), 2, 1e-4);
  const auto written = ReadCurveFile(curve);
  ASSERT_TRUE(written);
  EXPECT_EQ(written->station, QStringLiteral("12001"));
  EXPECT_EQ(written->periods[0].gaugings.size(), 6U);

  const Outcome table = Batch({QStringLiteral("rating"), QStringLiteral("table"), curve,
                               QStringLiteral("--levels"), QStringLiteral("10,50,130")});
  EXPECT_EQ(table.exit, 0);
  const QStringList lines = table.out.split(QLatin1Char('\n'));
  ASSERT_GE(lines.size(), 4);
  EXPECT_EQ(lines[0], QStringLiteral("level_cm,discharge_m3s,lower_m3s,upper_m3s,flag"));
  EXPECT_TRUE(lines[1].startsWith(QStringLiteral("10,0,")) && lines[1].endsWith(QStringLiteral(",dry")));
  EXPECT_NEAR(lines[2].section(QLatin1Char(','), 1, 1).toDouble(), 9, 1e-4);
  EXPECT_EQ(lines[3], QStringLiteral("130,,,,too_high"));
  EXPECT_EQ(Batch({QStringLiteral("rating"), QStringLiteral("check"), curve}).exit, 0);
}

TEST_F(BatchRating, NamesWhatIsWrongAndWritesNothing) {
  const QString curve = Path("E12001.dat");
  const QStringList fit = {QStringLiteral("rating"),
                           QStringLiteral("fit"),
                           Gaugings(QByteArray("80,-3\n")),
                           QStringLiteral("--out"),
                           curve,
                           QStringLiteral("--segments")};
  const Outcome told = Batch(fit + QStringList{QStringLiteral("1")});
  EXPECT_EQ(told.exit, 1) << "a line was left out";
  EXPECT_TRUE(told.err.contains(QStringLiteral("line 8"))) << told.err.toStdString();
  EXPECT_EQ(Batch(fit + QStringList{QStringLiteral("4")}).exit, 2);
  QFile::remove(curve);
  EXPECT_EQ(Batch(fit + QStringList{QStringLiteral("3")}).exit, 1) << "six gaugings";
  EXPECT_FALSE(QFile::exists(curve));
  const QString bad =
      Write("Ebad.dat", "Vesk4 rating curve, format 1\nstation = 1\n[period]\nlowest_cm = x\n[end]\n");
  const Outcome check = Batch({QStringLiteral("rating"), QStringLiteral("check"), bad});
  EXPECT_EQ(check.exit, 1);
  EXPECT_TRUE(check.err.contains(QStringLiteral("line 4")));
  EXPECT_EQ(Batch({QStringLiteral("rating")}).exit, 2);
}

TEST_F(BatchRating, ACurveAddsDischargesToReadingsDaysAndFindings) {
  sample::RawFilePlan plan;
  plan.count = 48;
  plan.levelCm = [](DateTime time) { return time <= sample::At(2023, 10, 2) ? 50 : 130; };
  ASSERT_TRUE(sample::WriteRawFile(folder_.path(), plan));
  const QString curve =
      Write("Ex.dat",
            "Vesk4 rating curve, format 1\nstation = 12001\n[period]\nlowest_cm = 30\n"
            "highest_cm = 120\nextrapolate_above_cm = 20\n[segments]\n- 0.01 20 2\n[end]\n");
  const auto run = [&](const char* verb, const QStringList& further) {
    return Batch(QStringList{QString::fromLatin1(verb), folder_.path(), QStringLiteral("--station"),
                             QStringLiteral("12001"), QStringLiteral("--water-year"),
                             QStringLiteral("2024")} +
                 further);
  };
  const QStringList with = {QStringLiteral("--curve"), curve};
  const Outcome plain = run("daily", {});
  const Outcome daily = run("daily", with);
  ASSERT_EQ(daily.exit, 0) << daily.err.toStdString();
  const QStringList days = daily.out.split(QLatin1Char('\n'));
  const QStringList levels = plain.out.split(QLatin1Char('\n'));
  ASSERT_EQ(days.size(), levels.size());
  for (qsizetype i = 0; i + 1 < days.size(); ++i)
    EXPECT_TRUE(days[i].startsWith(levels[i] + QLatin1Char(',')));
  EXPECT_TRUE(days[1].endsWith(QStringLiteral(",9,9,9,100,"))) << days[1].toStdString();
  EXPECT_TRUE(days[2].endsWith(QStringLiteral(",121,121,121,100,extrapolated"))) << days[2].toStdString();
  const Outcome year = run("daily", with + QStringList{QStringLiteral("--per"), QStringLiteral("year")});
  EXPECT_TRUE(year.out.contains(QStringLiteral("01/10/2023,30/09/2024,366,2,0,65,121,")))
      << year.out.toStdString();
  const Outcome runoff =
      run("daily", with + QStringList{QStringLiteral("--per"), QStringLiteral("year"),
                                      QStringLiteral("--catchment"), QStringLiteral("100")});
  // 65 m3/s over two days are 11.232 million m3, 112.32 mm over 100 km2; 65 m3/s are 650 l/s from each km2.
  EXPECT_TRUE(runoff.out.contains(QStringLiteral(",11.232,112.32,650,"))) << runoff.out.toStdString();
  EXPECT_EQ(run("daily", {QStringLiteral("--per"), QStringLiteral("year")}).exit, 2);
  const Outcome readings = run("readings", with);
  EXPECT_TRUE(readings.out.contains(QStringLiteral("01/10/2023,01:00,50,9.00,01-ort,,50,9,\n")));
  EXPECT_TRUE(readings.out.contains(QStringLiteral(",121*,01-ort,,130,121,extrapolated_above\n")));
  const Outcome check = run("check", with + QStringList{QStringLiteral("--rules"), QStringLiteral("curve")});
  EXPECT_EQ(check.exit, 3);
  EXPECT_EQ(check.out.count(QLatin1Char('\n')), 2);
  const QString other = Write("Ey.dat",
                              "Vesk4 rating curve, format 1\nstation = 99999\n[period]\nlowest_cm = 30\n"
                              "highest_cm = 120\n[segments]\n- 0.01 20 2\n[end]\n");
  EXPECT_EQ(run("readings", {QStringLiteral("--curve"), other}).exit, 1);
}

}  // namespace
}  // namespace vesk
