// The graph verb, on the sample data.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "tools/sample_data.h"

namespace vesk {
namespace {

class GraphVerb : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(sample::WriteSampleData(data_.path()).Ok()); }

  int Run(const QString& options, QString* out = nullptr, QString* told = nullptr) {
    QProcess process;
    QStringList arguments = options.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    arguments.replaceInStrings(QStringLiteral("DIR"), data_.path());
    arguments.replaceInStrings(QStringLiteral("OUT"), out_.path());
    process.start(QStringLiteral(VESK_BATCH_PROGRAM), arguments);
    if (!process.waitForFinished(60'000)) return -1;
    if (told != nullptr) *told = QString::fromUtf8(process.readAllStandardError());
    if (out != nullptr) *out = QString::fromUtf8(process.readAllStandardOutput());
    return process.exitCode();
  }
  QStringList Read(const char* name) const {
    QFile file(out_.filePath(QString::fromLatin1(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  }

  QTemporaryDir data_, out_;
};

TEST_F(GraphVerb, DrawsEveryFormatAndLeavesTheFolderAsItIs) {
  const QStringList before = QDir(data_.path()).entryList();
  const QString one = QStringLiteral("graph DIR --station 12001 --water-year 2024 ");
  EXPECT_EQ(Run(one + QStringLiteral("--size 800x500 --out OUT/a.png")), 0);
  EXPECT_EQ(QImage(out_.filePath(QStringLiteral("a.png"))).size(), QSize(800, 500));
  EXPECT_EQ(Run(one + QStringLiteral("--language ENGLISH --out OUT/a.svg")), 0);
  EXPECT_TRUE(Read("a.svg").join(QString()).contains(QStringLiteral("Water Year:2024")));
  EXPECT_EQ(Run(one + QStringLiteral("--station 12002 --from 1.3 --to 31.3 --out OUT/a.pdf")), 0);
  EXPECT_TRUE(Read("a.pdf").front().startsWith(QStringLiteral("%PDF")));
  EXPECT_EQ(QDir(data_.path()).entryList(), before);
}

TEST_F(GraphVerb, TheValuesBehindThePageAreTheReadings) {
  const QString station = QStringLiteral(" DIR --station 12002 --water-year 2024 ");
  ASSERT_EQ(Run(QStringLiteral("graph") + station + QStringLiteral("--out OUT/page.csv")), 0);
  QString readings;
  ASSERT_EQ(Run(QStringLiteral("readings") + station, &readings), 0);
  QStringList expected;
  const QStringList lines = readings.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  for (const QString& line : lines.mid(1)) {
    expected += QStringLiteral("12002,") + line.section(QLatin1Char(','), 0, 2);
  }
  const QStringList page = Read("page.csv");
  ASSERT_EQ(page.size(), expected.size() + 1);
  for (qsizetype i = 0; i < expected.size(); ++i) {
    ASSERT_EQ(page[i + 1].section(QLatin1Char(','), 0, 3), expected[i]);
  }
}

TEST_F(GraphVerb, ADateRangeHoldsWholeDaysOnly) {
  ASSERT_EQ(Run(QStringLiteral(
                "graph DIR --station 12002 --water-year 2024 --from 5/3 --to 6.3 --out OUT/page.csv")),
            0);
  const QStringList page = Read("page.csv");
  EXPECT_EQ(page.value(1).section(QLatin1Char(','), 1, 1), QStringLiteral("05/03/2024"));
  EXPECT_EQ(page.back().section(QLatin1Char(','), 1, 1), QStringLiteral("06/03/2024"));
}

TEST_F(GraphVerb, ARefusedFileStillDrawsWhatWasReadAndFails) {
  const QString raw = QDir(data_.path()).entryList({QStringLiteral("*-12001-*.txt")}).value(0);
  QFile rubbish(data_.filePath(raw.left(9) + QStringLiteral("-990101.txt")));
  ASSERT_TRUE(rubbish.open(QIODevice::WriteOnly));
  ASSERT_EQ(rubbish.write(QByteArray(3000, '\0')), 3000);
  rubbish.close();
  const QString year = QStringLiteral(" --water-year 2024 ");
  EXPECT_EQ(Run(QStringLiteral("graph DIR --station 12001") + year + QStringLiteral("--out OUT/one.csv")), 1);
  EXPECT_GT(Read("one.csv").size(), 100);
  EXPECT_EQ(Run(QStringLiteral("graph DIR --station 12001 --station 12002") + year +
                QStringLiteral("--out OUT/two.csv")),
            1);
  EXPECT_GT(Read("two.csv").size(), Read("one.csv").size());
}

TEST_F(GraphVerb, AStationWithoutReadingsIsNamedAndTheOthersAreDrawn) {
  QString told;
  EXPECT_EQ(
      Run(QStringLiteral("graph DIR --station 77777 --station 12002 --water-year 2024 --language ENGLISH "
                         "--out OUT/page.svg"),
          nullptr, &told),
      1);
  EXPECT_TRUE(told.contains(QStringLiteral("77777"))) << told.toStdString();
  const QString page = Read("page.svg").join(QString());
  EXPECT_TRUE(page.contains(QStringLiteral("12002 SGS")));
  EXPECT_TRUE(page.contains(QStringLiteral("77777: there are no readings to draw")));
}

TEST_F(GraphVerb, ALineThatANegativeLevelEndsFailsAndIsNamedOnThePicture) {
  QFile raw(data_.filePath(QStringLiteral("101-12002-240701.txt")));
  ASSERT_TRUE(raw.open(QIODevice::ReadOnly));
  QList<QByteArray> lines = raw.readAll().split('\n');
  raw.close();
  QByteArray& line = lines[lines.size() / 2];
  const qsizetype point = line.lastIndexOf('.');
  const qsizetype blank = line.lastIndexOf(' ', point);
  ASSERT_GT(blank, 0) << line.constData();
  line[blank] = '-';
  ASSERT_TRUE(raw.open(QIODevice::WriteOnly) && raw.write(lines.join('\n')) > 0);
  raw.close();
  QString told;
  EXPECT_EQ(
      Run(QStringLiteral("graph DIR --station 12002 --water-year 2024 --language ENGLISH --out OUT/a.svg"),
          nullptr, &told),
      1);
  EXPECT_TRUE(told.contains(QStringLiteral("ends at a negative level"))) << told.toStdString();
  EXPECT_TRUE(Read("a.svg").join(QString()).contains(QStringLiteral("ends at a negative level")));
}

TEST_F(GraphVerb, SettingsExtremesAndDotsAreAsAsked) {
  const QString one = QStringLiteral("graph DIR --station 12001 --water-year 2024 ");
  QFile settings(out_.filePath(QStringLiteral("own.ini")));
  ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
  ASSERT_GT(settings.write("[Options]\r\n01=1\r\n02=16777215\r\n03=1193046\r\n21=ENGLISH\r\n"), 0);
  settings.close();
  EXPECT_EQ(Run(one + QStringLiteral("--settings OUT/own.ini --out OUT/a.svg")), 0);
  const QString page = Read("a.svg").join(QString());
  EXPECT_TRUE(page.contains(QStringLiteral("Water Year:2024"))) << "the settings' language";
  EXPECT_TRUE(page.contains(QStringLiteral("#563412"))) << "the settings' colour of a station";
  EXPECT_EQ(Run(one + QStringLiteral("--settings OUT/own.ini --language TURKCE --out OUT/b.csv")), 0);
  EXPECT_FALSE(Read("b.csv").filter(QRegularExpression(QStringLiteral(",Max$"))).isEmpty());
  EXPECT_EQ(Run(one + QStringLiteral("--no-extremes --out OUT/b.csv")), 0);
  EXPECT_TRUE(Read("b.csv").filter(QRegularExpression(QStringLiteral(",(Max|Min)$"))).isEmpty());
  EXPECT_EQ(Run(one + QStringLiteral("--size 800x500 --dpi 192 --out OUT/c.png")), 0);
  EXPECT_EQ(QImage(out_.filePath(QStringLiteral("c.png"))).size(), QSize(1600, 1000));
}

TEST_F(GraphVerb, WrongUseAndFailuresHaveTheirExitCodes) {
  const QString one = QStringLiteral("graph DIR --station 12001 --water-year 2024 ");
  struct Case {
    QString options;
    int exit;
  };
  const std::vector<Case> cases = {
      {QStringLiteral("graph DIR --water-year 2024 --out OUT/b.png"), 2},
      {QStringLiteral("graph DIR --station 12001 --out OUT/b.png"), 2},
      {one, 2},
      {one + QStringLiteral("--out OUT/b.jpg"), 2},
      {one + QStringLiteral("--size 10x10 --out OUT/b.png"), 2},
      {one + QStringLiteral("--from 31.11 --out OUT/b.png"), 2},
      {one + QStringLiteral("--dpi 96 --out OUT/b.svg"), 2},
      {one + QStringLiteral("--dpi 2 --out OUT/b.png"), 2},
      {one + QStringLiteral("--size 9000x900 --dpi 1200 --out OUT/b.png"), 2},
      {one + QStringLiteral("--settings OUT/none.ini --out OUT/b.png"), 2},
      {one + QStringLiteral("--from 5.3 --to 5.11 --out OUT/b.png"), 2},
      {one + QStringLiteral("--language Turkish --out OUT/b.png"), 2},
      {one + QStringLiteral("--station 1 --station 2 --station 3 --station 4 --out OUT/b.png"), 2},
      {QStringLiteral("graph DIR --station 77777 --water-year 2024 --out OUT/b.png"), 1},
      {QStringLiteral("graph DIR --station 12001 --water-year 1999 --out OUT/b.png"), 1},
      {QStringLiteral("graph DIR/none --station 12001 --water-year 2024 --out OUT/b.png"), 1},
      {one + QStringLiteral("--out OUT/none/b.png"), 1},
  };
  for (const Case& wrong : cases) EXPECT_EQ(Run(wrong.options), wrong.exit) << wrong.options.toStdString();
  EXPECT_TRUE(QDir(out_.path()).entryList(QDir::Files).isEmpty());
}

}  // namespace
}  // namespace vesk
