#include "ratings/curve_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <random>
#include <vector>

#include "datafiles/dates.h"
#include "ratings/curve_check.h"

namespace vesk {
namespace {

/// As the documentation shows it.
QByteArray Example() {
  return "Vesk4 rating curve, format 1\n"
         "station = 12345\n"
         "name = K\xC4\xB1rkp\xC4\xB1nar K\xC3\xB6pr\xC3\xBCs\xC3\xBC\n"
         "remark = surveyed after the flood\n"
         "\n"
         "[period]\n"
         "from = 01/10/2019 00:00\n"
         "to = 30/09/2022 23:59\n"
         "lowest_cm = 20\n"
         "highest_cm = 100\n"
         "extrapolate_above_cm = 20\n"
         "\n"
         "[segments]\n"
         "# lower end (cm), a (m3/s at 1 cm), c (cm), b\n"
         "- 0.01 10 2\n"
         "60 1.25 40 1\n"
         "\n"
         "[shifts]\n"
         "12/03/2020 06:00 -3.5\n"
         "\n"
         "[gaugings]\n"
         "11/05/2020 10:30 | 45.5 | 12.6 | 5 | yes | ADCP | A. Ak | left \\| bank\\nwindy\n"
         " | 70 | 38 |  | no |  |  | \n"
         "\n"
         "[end]\n";
}

QString FaultsOf(const QByteArray& bytes) {
  QStringList lines;
  for (const CurveLineFault& fault : ReadCurveText(bytes).faults) lines += QString::number(fault.line);
  return lines.join(QLatin1Char(' '));
}

TEST(CurveFile, ReadsTheOwnFormat) {
  const CurveText read = ReadCurveText(Example());
  ASSERT_TRUE(read.faults.empty()) << read.faults[0].what.English().toStdString();
  const RatingCurve& curve = read.curve;
  EXPECT_EQ(curve.station, QStringLiteral("12345"));
  EXPECT_EQ(curve.name, QString::fromUtf8("Kırkpınar Köprüsü"));
  ASSERT_EQ(curve.periods.size(), 1U);
  const CurvePeriod& period = curve.periods[0];
  EXPECT_EQ(period.to, ReadDateTime(u"30/09/2022 23:59"));
  EXPECT_EQ(period.belowCm, 0) << "what is not permitted is not done";
  EXPECT_EQ(period.aboveCm, 20);
  ASSERT_EQ(period.segments.size(), 2U);
  EXPECT_EQ(period.segments[1], (PowerSegment{60, 1.25, 40, 1}));
  EXPECT_EQ(period.shifts, (std::vector<CurveShift>{{*ReadDateTime(u"12/03/2020 06:00"), -3.5}}));
  ASSERT_EQ(period.gaugings.size(), 2U);
  EXPECT_EQ(period.gaugings[0].remark, QStringLiteral("left | bank\nwindy"));
  EXPECT_EQ(period.gaugings[0].uncertaintyPercent, 5);
  EXPECT_FALSE(period.gaugings[1].used);
  EXPECT_FALSE(period.gaugings[1].time.has_value());

  QByteArray windows = Example();
  windows.replace("\n", "\r\n");
  EXPECT_EQ(ReadCurveText("\xEF\xBB\xBF" + windows).curve, curve) << "as other editors save it";
  EXPECT_EQ(ReadCurveText(CurveFileText(curve)).curve, curve);
}

TEST(CurveFile, NamesTheLineThatIsWrong) {
  struct Case {
    const char *was, *is;
    const char* lines;
  };
  const std::vector<Case> cases = {
      {"lowest_cm = 20", "lowest_cm = 20,5", "9"},
      {"lowest_cm = 20", "lowest_cm = nan", "9"},
      {"lowest_cm = 20\n", "\n", "6"},
      {"highest_cm = 100", "highest = 100", "6 10"},
      {"highest_cm = 100", "highest_cm = 100\nhighest_cm = 90", "11"},
      {"01/10/2019 00:00", "31/02/2019 00:00", "7"},
      {"01/10/2019 00:00", "01/10/2019 00:00 and more", "7"},
      {"- 0.01 10 2", "- 0.01 10", "15 16"},
      {"- 0.01 10 2", "5 0.01 10 2", "15 16"},
      {"60 1.25 40 1", "60 1.25 40 9", "16"},
      {"60 1.25 40 1", "60 1.30 40 1", "16"},
      {"[shifts]", "[shift]", "18 19"},
      {"[shifts]", "[segments]", "18 19"},
      {"-3.5", "-3,5", "19"},
      {"| yes |", "| maybe |", "22"},
      {"| 12.6 |", "| 0 |", "22"},
      {"station = 12345", "station =", "1"},
      {"[end]\n", "", "25"},
      {"[end]\n", "[end]\nfrom = 01/01/2020 00:00\n", "26"},
      {"format 1", "format 2", "1"},
  };
  for (const Case& one : cases) {
    QByteArray text = Example();
    ASSERT_TRUE(text.contains(one.was)) << one.was;
    text.replace(text.indexOf(one.was), static_cast<qsizetype>(qstrlen(one.was)), one.is);
    EXPECT_EQ(FaultsOf(text), QString::fromLatin1(one.lines)) << one.is << " for " << one.was;
  }
}

TEST(CurveFile, NeverTakesACutFileForACurve) {
  const QByteArray whole = Example();
  const RatingCurve curve = ReadCurveText(whole).curve;
  for (qsizetype length = 0; length < whole.size() - 2; ++length) {
    const CurveText read = ReadCurveText(whole.left(length));
    EXPECT_FALSE(read.faults.empty()) << "cut behind byte " << length;
  }
  EXPECT_EQ(ReadCurveText(whole.chopped(1)).curve, curve) << "the last line's end alone says nothing";
}

/// A random curve without faults.
RatingCurve RandomCurve(std::mt19937& random) {
  const auto number = [&random](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  RatingCurve curve;
  curve.station = QStringLiteral("54321");
  curve.name = QString::fromUtf8("Ş | \\ x");
  curve.remarks = {QStringLiteral("= one"), QStringLiteral("[period]"), QString()};
  CurvePeriod period;
  period.lowestCm = number(-50, 50);
  period.highestCm = period.lowestCm + number(1, 400);
  period.aboveCm = number(0, 50);
  if (random() % 2 == 0) {
    period.segments.push_back({0, number(1e-9, 3), period.lowestCm - number(0.01, 20), number(0.3, 8)});
    const double from = period.lowestCm + number(0.1, 300);
    const PowerSegment& lower = period.segments[0];
    PowerSegment upper{from, 1, from - number(1, 50), number(0.3, 8)};
    upper.a = lower.a * std::pow(from - lower.cCm, lower.b) / std::pow(from - upper.cCm, upper.b);
    period.segments.push_back(upper);
  } else {
    double level = period.lowestCm;
    double discharge = number(0, 1);
    for (int i = 0; i < 20; ++i) {
      period.points.push_back({level, discharge});
      level += number(0.01, 30);
      discharge += number(0, 10);
    }
    period.uncertaintyPercent = number(0.1, 199);
  }
  for (int i = 0; i < 3; ++i) {
    Gauging gauging;
    if (random() % 2 == 0) gauging.time = DateTime(std::chrono::minutes(26'000'000 + random() % 1'000'000));
    if (random() % 2 == 0) gauging.levelCm = number(-50, 500);
    gauging.dischargeM3s = number(1e-6, 5000);
    gauging.used = random() % 2 == 0;
    gauging.method = QStringLiteral("\\n|\\\\|");
    gauging.party = QStringLiteral("# = [x]");
    period.gaugings.push_back(gauging);
  }
  curve.periods = {period};
  return curve;
}

TEST(CurveFile, WritesWhatReadsBackEqual) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    std::mt19937 random(seed);
    const RatingCurve curve = RandomCurve(random);
    ASSERT_TRUE(CheckCurve(curve).empty()) << "seed " << seed;
    const CurveText read = ReadCurveText(CurveFileText(curve));
    ASSERT_TRUE(read.faults.empty()) << "seed " << seed << ": line " << read.faults[0].line << " "
                                     << read.faults[0].what.English().toStdString();
    ASSERT_EQ(read.curve, curve) << "seed " << seed;
  }
}

TEST(CurveFile, IsWrittenWholeOrNotAtAll) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("E12345.dat"));
  RatingCurve curve = ReadCurveText(Example()).curve;
  ASSERT_TRUE(WriteCurveFile(path, curve));
  curve.periods[0].segments[1].b = 9;
  const Status refused = WriteCurveFile(path, curve);
  ASSERT_FALSE(refused);
  EXPECT_TRUE(refused.Failure().English().contains(QStringLiteral("line")));
  const auto kept = ReadCurveFile(path);
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->periods[0].segments[1].b, 1);
  EXPECT_FALSE(ReadCurveFile(folder.filePath(QStringLiteral("E2.dat"))));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(CurveFile, ReadsTablesOfTwoColumns) {
  for (const QByteArray text :
       {"level_cm,discharge_m3s\n10,0\n20,1.5\n", "10\t0\r\n20\t1,5\r\n",
        "# curve\nSeviye;Debi\n10,0;0\n20,0;1,5\n", "\"h\",\"Q\"\n\"10\",\"0\"\n\"20\",\"1.5\"\n"}) {
    const CurveText read = ReadCurveText(text);
    ASSERT_TRUE(read.faults.empty()) << text.toStdString() << read.faults[0].what.English().toStdString();
    EXPECT_EQ(read.curve.periods.at(0).points, (std::vector<CurvePoint>{{10, 0}, {20, 1.5}}));
    EXPECT_EQ(read.curve.periods[0].highestCm, 20);
    EXPECT_EQ(read.curve.periods[0].aboveCm, 0);
  }
  EXPECT_EQ(FaultsOf("10,0\n20,1.5,3\n30,4\n"), QStringLiteral("2"));
  EXPECT_EQ(FaultsOf("10,0\n20,x\n"), QStringLiteral("2"));
  EXPECT_EQ(FaultsOf("10,0\n20,3\n30,2\n"), QStringLiteral("3")) << "a discharge that falls";
  EXPECT_EQ(FaultsOf("10,0\n"), QStringLiteral("0"));
  EXPECT_EQ(FaultsOf("level_cm,discharge_m3s\nor,so\n20,1\n"), QStringLiteral("2"));
  EXPECT_FALSE(FaultsOf("10 20\n").isEmpty());
  EXPECT_FALSE(FaultsOf({}).isEmpty());
  EXPECT_FALSE(FaultsOf(QByteArray(5, '\0')).isEmpty());
}

TEST(CurveFile, ReadsExpandedRatingTablesInFeet) {
  const QByteArray text =
      "# //RATING ID=\"7.0\"\n# other\n# //STATION NAME=\"A "
      "RIVER\"\nINDEP\tSHIFT\tDEP\tSTOR\n16N\t16N\t16N\t1S\n"
      "1.00\t0.02\t10.00\t*\n1.01\t0.02\t10.30\t\n2.00\t0.01\t100\t*\n";
  const CurveText read = ReadCurveText(text);
  ASSERT_TRUE(read.faults.empty()) << read.faults[0].what.English().toStdString();
  const CurvePeriod& period = read.curve.periods.at(0);
  ASSERT_EQ(period.points.size(), 3U);
  EXPECT_NEAR(period.points[0].levelCm, 30.48, 1e-12);
  EXPECT_NEAR(period.points[0].dischargeM3s, 0.28316846592, 1e-12);
  EXPECT_NEAR(period.points[2].levelCm, 60.96, 1e-12);
  EXPECT_EQ(read.curve.remarks.size(), 2);
  EXPECT_EQ(FaultsOf(QByteArray(text).replace("10.30", "Eqp")), QStringLiteral("7"));
  EXPECT_EQ(FaultsOf(QByteArray(text).replace("10.30", "9.30")), QStringLiteral("7"));
}

}  // namespace
}  // namespace vesk
