// The command line as a user calls it: the program itself, on the sample data.
#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

#include <array>
#include <string_view>

#include "programs/batch_run.h"
#include "support/invalid_name.h"
#include "tools/sample_data.h"

namespace vesk {
namespace {

/// Names and contents of everything in a folder.
QByteArray Fingerprint(const QString& folder) {
  QStringList names;
  QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
  while (walk.hasNext()) names << walk.next();
  names.sort();
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const QString& name : names) {
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    hash.addData(name.toUtf8());
    hash.addData(file.readAll());
  }
  return hash.result();
}

class BatchTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(temporary_.isValid());
    const auto written = sample::WriteSampleData(Folder());
    ASSERT_TRUE(written.Ok());
    written_ = *written;
  }
  [[nodiscard]] QString Folder() const { return temporary_.path(); }

  QTemporaryDir temporary_;
  QStringList written_;
};

TEST_F(BatchTest, ReadingVerbsLeaveTheFolderAsItIs) {
  const QByteArray before = Fingerprint(Folder());
  const Outcome files = Batch({QStringLiteral("files"), Folder()});
  EXPECT_EQ(files.exit, 0);
  EXPECT_EQ(files.Lines().size(), written_.size() + 1) << "one line a file, and the heading";
  EXPECT_EQ(files.Lines().front(),
            QStringLiteral("file\tstation\tversion\tfirst\tlast\tdays\twater_years\tstatus"));
  EXPECT_EQ(files.out.count(QStringLiteral("\tsuperseded\n")), 1);
  EXPECT_EQ(files.out.count(QStringLiteral("\tVersion Hatasi\n")), 1);
  EXPECT_TRUE(files.err.contains(QStringLiteral("line 3"))) << files.err.toStdString();

  const Outcome header = Batch({QStringLiteral("header"), Folder(), written_.front()});
  EXPECT_EQ(header.exit, 0);
  EXPECT_EQ(header.Lines().size(), 15);

  const Outcome daily = Batch({QStringLiteral("daily"), Folder(), QStringLiteral("--all")});
  EXPECT_EQ(daily.exit, 1) << "all was asked for, and one station's only file is refused";
  EXPECT_GT(daily.Lines().size(), 4 * 365);
  const Outcome computed = Batch({QStringLiteral("daily"), Folder(), QStringLiteral("--all"),
                                  QStringLiteral("--extremes"), QStringLiteral("FT")});
  EXPECT_EQ(computed.Lines().size(), daily.Lines().size());

  const Outcome graph =
      Batch({QStringLiteral("readings"), Folder(), QStringLiteral("--file"), written_.front()});
  EXPECT_EQ(graph.exit, 0);
  EXPECT_EQ(graph.Lines().front(), QStringLiteral("date,time,level_cm,discharge,label,code,baseline_cm"));
  EXPECT_EQ(Fingerprint(Folder()), before);
}

TEST_F(BatchTest, TidyingChangesNoFigure) {
  const QStringList daily = {QStringLiteral("daily"), Folder(), QStringLiteral("--all")};
  const QString before = Batch(daily).out;
  const Outcome tidy = Batch({QStringLiteral("tidy"), Folder()});
  EXPECT_EQ(tidy.exit, 0) << tidy.err.toStdString();
  EXPECT_TRUE(tidy.out.contains(QStringLiteral("archived in Arsiv")));
  EXPECT_EQ(Batch(daily).out, before);
  EXPECT_TRUE(Batch({QStringLiteral("tidy"), Folder()}).out.isEmpty()) << "nothing is left to tidy";
}

TEST_F(BatchTest, CorrectionsAreLaidOverTheReadings) {
  const QString station = written_.front().left(9);
  const QStringList call = {QStringLiteral("readings"),     Folder(),
                            QStringLiteral("--station"),    station.mid(4),
                            QStringLiteral("--water-year"), QStringLiteral("2024")};
  const Outcome raw = Batch(call);
  ASSERT_EQ(raw.exit, 0) << raw.err.toStdString();
  const QStringList fields = raw.Lines().at(10).split(QLatin1Char(','));
  QFile log(Folder() + QStringLiteral("/%1-Degisiklikler2024.txt").arg(station));
  ASSERT_TRUE(log.open(QIODevice::WriteOnly));
  log.write((fields[0] + QLatin1Char('\t') + fields[1] + QStringLiteral("\t4321.5\t\r\n")).toLatin1());
  log.close();
  const Outcome corrected = Batch(call);
  const QStringList changed = corrected.Lines().at(10).split(QLatin1Char(','));
  EXPECT_EQ(changed.mid(0, 3), (QStringList{fields[0], fields[1], QStringLiteral("4321.5")}));
  EXPECT_EQ(changed.at(5), QStringLiteral("999"));
}

TEST_F(BatchTest, ARefusedFileIsNamedAndWhatWasReadBeforeItIsThere) {
  const QString station = written_.front().left(9);
  QFile rubbish(Folder() + QStringLiteral("/%1-990101.txt").arg(station));
  ASSERT_TRUE(rubbish.open(QIODevice::WriteOnly));
  rubbish.write(QByteArray(3000, '\0'));
  rubbish.close();
  const Outcome daily = Batch({QStringLiteral("daily"), Folder(), QStringLiteral("--station"), station,
                               QStringLiteral("--water-year"), QStringLiteral("2024")});
  EXPECT_EQ(daily.exit, 1);
  EXPECT_GT(daily.Lines().size(), 100);
  EXPECT_TRUE(daily.err.contains(QStringLiteral("-990101.txt: this file is refused")));
}

TEST_F(BatchTest, WrongUseAndFailuresDiffer) {
  const QString outFile = Folder() + QStringLiteral("/no/such/folder/out.csv");
  const struct {
    QStringList arguments;
    int exit;
    const char* told;
  } rows[] = {
      {{}, 2, "Usage"},
      {{QStringLiteral("fly")}, 2, "no verb"},
      {{QStringLiteral("files")}, 2, "DIR"},
      {{QStringLiteral("files"), Folder(), QStringLiteral("--bogus")}, 2, "bogus"},
      {{QStringLiteral("daily"), Folder()}, 2, "--all"},
      {{QStringLiteral("daily"), Folder(), QStringLiteral("--all"), QStringLiteral("--extremes"),
        QStringLiteral("X")},
       2,
       "TF or FT"},
      {{QStringLiteral("readings"), Folder()}, 2, "--file"},
      {{QStringLiteral("readings"), Folder(), QStringLiteral("--file"), written_.front(),
        QStringLiteral("--water-year"), QStringLiteral("2024")},
       2,
       "--file"},
      {{QStringLiteral("files"), Folder() + QStringLiteral("/none")}, 1, "no such folder"},
      {{QStringLiteral("header"), Folder(), QStringLiteral("none.txt")}, 1, "none.txt"},
      {{QStringLiteral("readings"), Folder(), QStringLiteral("--station"), QStringLiteral("99999"),
        QStringLiteral("--water-year"), QStringLiteral("2024")},
       1,
       "99999"},
      {{QStringLiteral("daily"), Folder(), QStringLiteral("--all"), QStringLiteral("--out"), outFile},
       1,
       "out.csv"},
      {{QStringLiteral("table"), QStringLiteral("--help")}, 0, "--hourly"},
  };
  for (const auto& row : rows) {
    const Outcome run = Batch(row.arguments);
    EXPECT_EQ(run.exit, row.exit) << row.arguments.join(QLatin1Char(' ')).toStdString()
                                  << run.err.toStdString();
    EXPECT_TRUE((run.err + run.out).contains(QLatin1String(row.told)))
        << row.arguments.join(QLatin1Char(' ')).toStdString() << ": " << run.err.toStdString();
  }
}

TEST_F(BatchTest, AWaterYearIsFourDigitsForEveryVerb) {
  for (const char* verb : {"readings", "daily", "table", "graph"}) {
    for (const char* year : {"-1", "24", "2024x"}) {
      QStringList call = {QLatin1String(verb),
                          Folder(),
                          QStringLiteral("--station"),
                          QStringLiteral("12001"),
                          QStringLiteral("--water-year"),
                          QLatin1String(year)};
      if (verb == std::string_view("graph"))
        call << QStringLiteral("--out") << Folder() + QStringLiteral("/a.png");
      const Outcome run = Batch(call);
      EXPECT_EQ(run.exit, 2) << verb << ' ' << year << run.err.toStdString();
    }
  }
}

TEST_F(BatchTest, TemplatesAreFoundWhereTheBuildAndAPackagePutThem) {
  // No such station: the verb ends behind the look for its template, without an office.
  const QStringList call = {QStringLiteral("table"),        Folder(),
                            QStringLiteral("--station"),    QStringLiteral("99999"),
                            QStringLiteral("--water-year"), QStringLiteral("2024")};
  EXPECT_FALSE(Batch(call).err.contains(QStringLiteral("Sablon"))) << "as built";
  const QString program = QFileInfo(QStringLiteral(VESK_BATCH_PROGRAM)).path();
  EXPECT_TRUE(QFileInfo::exists(program + QStringLiteral("/../share/vesk4/Sablon.xls")));

  const QDir tree(Folder());
  const QString moved = tree.filePath(QStringLiteral("bin/vesk4-batch"));
  ASSERT_TRUE(tree.mkpath(QStringLiteral("bin")) && tree.mkpath(QStringLiteral("share/vesk4")));
  ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_BATCH_PROGRAM), moved));
  const Outcome nowhere = RunProgram(moved, call);
  EXPECT_EQ(nowhere.exit, 1);
  for (const char* told : {"Sablon.xls", "/bin/", "/share/vesk4/"})
    EXPECT_TRUE(nowhere.err.contains(QLatin1String(told))) << nowhere.err.toStdString();
  for (const char* place : {"share/vesk4/SABLON.XLS", "bin/Sablon.xls"}) {
    QFile file(tree.filePath(QLatin1String(place)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const Outcome found = RunProgram(moved, call);
    EXPECT_FALSE(found.err.contains(QStringLiteral("Sablon"))) << place << found.err.toStdString();
    EXPECT_TRUE(found.err.contains(QStringLiteral("99999"))) << place << found.err.toStdString();
    ASSERT_TRUE(file.remove());
  }
}

TEST_F(BatchTest, AYearThatIsNotWholeIsTold) {
  const QStringList call = {QStringLiteral("daily"),        Folder(),
                            QStringLiteral("--station"),    QStringLiteral("20510"),
                            QStringLiteral("--water-year"), QStringLiteral("2024")};
  ASSERT_EQ(Batch(call).exit, 0);
  QFile file(Folder() + QStringLiteral("/102-20510-241001.txt"));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  const QByteArray good = file.readAll();
  const struct {
    QByteArray content;
    const char* told;
  } rows[] = {
      {QByteArray(good).replace("15/05/2024  05:00", "15/05/2084  05:00"),
       "lines behind it were left unread"},
      {QByteArray(good).replace("15/05/2024  05:00", "15/05/2024  x5:00"), "not loaded; expected a time"},
      {good.left(good.indexOf("15/05/2024  05:00")), "the header promises 8784 samples up to 30/09/2024"}};
  for (const auto& row : rows) {
    ASSERT_TRUE(file.resize(0) && file.seek(0) && file.write(row.content) == row.content.size() &&
                file.flush());
    const Outcome run = Batch(call);
    EXPECT_EQ(run.exit, 1) << row.told;
    EXPECT_TRUE(run.err.contains(QLatin1String(row.told))) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(QStringLiteral("102-20510-241001.txt, line "))) << run.err.toStdString();
  }
  ASSERT_TRUE(file.resize(0) && file.seek(0) && file.write(good) == good.size() && file.flush());
  QFile log(Folder() + QStringLiteral("/102-20510-Degisiklikler2024.txt"));
  ASSERT_TRUE(log.open(QIODevice::WriteOnly));
  log.write("15/05/2024\t05:07\t100\t\r\n");
  log.close();
  EXPECT_EQ(Batch(call).exit, 1) << "a saved correction that belongs to no reading";
}

TEST_F(BatchTest, AnOutputThatFailsLeavesTheOlderFile) {
  QFile out(Folder() + QStringLiteral("/out.csv"));
  ASSERT_TRUE(out.open(QIODevice::WriteOnly));
  out.write("older");
  out.close();
  const Outcome run = Batch({QStringLiteral("daily"), Folder(), QStringLiteral("--station"),
                             QStringLiteral("12001"), QStringLiteral("--water-year"), QStringLiteral("1999"),
                             QStringLiteral("--out"), out.fileName()});
  EXPECT_EQ(run.exit, 1);
  ASSERT_TRUE(out.open(QIODevice::ReadOnly));
  EXPECT_EQ(out.readAll(), "older");
}

TEST_F(BatchTest, NamesThatAreNoTextAreSkippedByName) {
  const test::InvalidName invalid(Folder(), "102-20510-24100\xfc.txt");
  const QString station = QStringLiteral("20510");
  const QStringList year = {QStringLiteral("--station"), station, QStringLiteral("--water-year"),
                            QStringLiteral("2024")};
  for (const char* verb : {"files", "tidy", "daily", "readings"}) {
    QStringList call = {QLatin1String(verb), Folder()};
    if (verb == std::string_view("daily") || verb == std::string_view("readings")) call += year;
    const Outcome run = Batch(call);
    EXPECT_EQ(run.err.count(QStringLiteral("102-20510-24100\\xfc.txt is skipped")), 1)
        << verb << run.err.toStdString();
  }
}

TEST_F(BatchTest, TwoThatTidyAtOnceLoseNothing) {
  const auto readOuts = [this] {
    QSet<QByteArray> contents;
    QDirIterator walk(Folder(), {QStringLiteral("*.txt")}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
      QFile file(walk.next());
      if (file.open(QIODevice::ReadOnly)) contents << file.readAll().mid(10);  // without the stamp
    }
    return contents;
  };
  const QSet<QByteArray> before = readOuts();
  for (int round = 0; round < 2; ++round) {
    std::array<QProcess, 2> tidiers;
    for (QProcess& tidier : tidiers)
      tidier.start(QStringLiteral(VESK_BATCH_PROGRAM), {QStringLiteral("tidy"), Folder()});
    for (QProcess& tidier : tidiers) {
      ASSERT_TRUE(tidier.waitForFinished(60'000));
      EXPECT_EQ(tidier.exitCode(), 0) << tidier.readAllStandardError().toStdString();
    }
    EXPECT_EQ(readOuts(), before);
    ASSERT_TRUE(sample::WriteSampleData(Folder()).Ok()) << "the same read-outs, delivered once more";
  }
}

}  // namespace
}  // namespace vesk
