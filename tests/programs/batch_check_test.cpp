// "check": what it finds, in which form, with which limits and exit codes.
#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cmath>

#include "programs/batch_run.h"
#include "stations/register_maker.h"
#include "stations/station_register.h"
#include "tools/sample_data.h"

namespace vesk {
namespace {

using sample::At;

/// A whole water year of hourly readings that rise and fall by a centimetre an hour.
class BatchCheck : public testing::Test {
 protected:
  void SetUp() override {
    plan_.count = 366 * 24;
    plan_.levelCm = Level;
    Write();
  }

  void Write() { ASSERT_TRUE(sample::WriteRawFile(data_.path(), plan_)); }
  void PutSpike(DateTime at, int cm) {
    plan_.levelCm = [at, cm](DateTime time) { return Level(time) + (time == at ? cm : 0); };
    Write();
  }
  static int Level(DateTime time) {
    const auto hour = std::chrono::duration_cast<std::chrono::hours>(time.time_since_epoch()).count();
    return 100 + static_cast<int>(std::abs(hour % 400 - 200));
  }
  [[nodiscard]] Outcome Check(const QStringList& further = {}) const {
    return Batch(QStringList{QStringLiteral("check"), data_.path(), QStringLiteral("--station"),
                             QStringLiteral("12001"), QStringLiteral("--water-year"),
                             QStringLiteral("2024")} +
                 further);
  }
  [[nodiscard]] static QStringList Words(const char* text) {
    return QString::fromLatin1(text).split(QLatin1Char(' '));
  }

  QTemporaryDir data_;
  sample::RawFilePlan plan_;
};

constexpr char kHeadings[] = "station,water_year,rule,severity,from,to,file,rows,value,expected\n";
const DateTime kSpike = At(2024, 3, 5, 7);

TEST_F(BatchCheck, TellsFindingsAndTheirAbsence) {
  const Outcome clean = Check();
  EXPECT_EQ(clean.exit, 0) << clean.out.toStdString() << clean.err.toStdString();
  EXPECT_EQ(clean.out, QLatin1String(kHeadings));
  PutSpike(kSpike, 20);
  const Outcome found = Check(Words("--rules spike,rate,gap"));
  EXPECT_EQ(found.exit, 3);
  EXPECT_EQ(found.out.toStdString(),
            kHeadings +
                std::string(
                    "12001,2024,spike,doubt,05/03/2024 06:00,05/03/2024 08:00,101-12001-231002,4062-4064,20,"
                    "at most 3 cm off the mean of its neighbours\n"
                    "12001,2024,rate,doubt,05/03/2024 07:00,05/03/2024 08:00,101-12001-231002,4063-4064,-21,"
                    "a change of at most 10 cm in an hour\n"));
  EXPECT_EQ(Check(Words("--rules gap,flat")).exit, 0);
  EXPECT_EQ(Check(Words("--rules spike --each")).Lines().size(), 4);
}

TEST_F(BatchCheck, LimitsComeFromTheOptionsTheRegisterOrTheReadings) {
  PutSpike(kSpike, 20);
  const Outcome wide = Check(Words("--rules spike,rate,range --spike 20 --rate 21 --high 1000"));
  EXPECT_EQ(wide.exit, 0) << wide.out.toStdString();
  EXPECT_EQ(Check(Words("--rules range --high 299")).exit, 3);
  EXPECT_EQ(Check(Words("--rules flat --flat 1:1")).exit, 3);
  EXPECT_EQ(Check(Words("--rules flat --flat 1:0")).exit, 0);

  const QString path = data_.filePath(QStringLiteral("register.mdb"));
  test::MakeRegister(path);
  auto stations = StationRegister::Open(path);
  ASSERT_TRUE(*stations->SetLimits(QStringLiteral("12001"), std::nullopt,
                                   StationLimits{.spikeCm = 20, .lowestCm = 101}));
  const QStringList with{QStringLiteral("--register"), path, QStringLiteral("--format"),
                         QStringLiteral("json")};
  const Outcome kept = Check(with + Words("--rules spike,rate,flat,range"));
  const QJsonObject year = QJsonDocument::fromJson(kept.out.toUtf8())
                               .object()
                               .value(QStringLiteral("years"))
                               .toArray()
                               .at(0)
                               .toObject();
  const QJsonObject limits = year.value(QStringLiteral("limits")).toObject();
  EXPECT_EQ(limits.value(QStringLiteral("source")).toString(), QStringLiteral("register"));
  EXPECT_TRUE(limits.value(QStringLiteral("rate_cm_per_h")).isNull()) << "a limit that is not set is none";
  const QJsonObject first = year.value(QStringLiteral("findings")).toArray().at(0).toObject();
  EXPECT_EQ(first.value(QStringLiteral("rule")).toString(), QStringLiteral("range"));
  EXPECT_EQ(first.value(QStringLiteral("value_text")).toString(), QStringLiteral("100 cm"));
  EXPECT_EQ(Check(Words("--rules spike --register /nowhere/register.mdb")).exit, 1);
}

TEST_F(BatchCheck, ADamagedReadOutIsLoud) {
  QFile file(data_.filePath(sample::RawFileName(plan_)));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.resize(file.size() / 2));
  file.close();
  const Outcome cut = Check();
  EXPECT_EQ(cut.exit, 3);
  for (const char* rule : {",header,doubt,", ",gap,doubt,", ",refused,doubt,"})
    EXPECT_TRUE(cut.out.contains(QLatin1String(rule))) << cut.out.toStdString();
}

TEST_F(BatchCheck, AFailureIsNoCleanYear) {
  EXPECT_EQ(Check(Words("--water-year 2019")).exit, 1) << "no readings of that year";
  // A saved correction that finds no reading.
  QFile log(data_.filePath(QStringLiteral("101-12001-Degisiklikler2024.txt")));
  ASSERT_TRUE(log.open(QIODevice::WriteOnly));
  log.write("15/05/2024\t05:07\t100\t\r\n");
  log.close();
  EXPECT_EQ(Check().exit, 1);
  // A file that is refused ends what is read of all years; its findings are told all the same.
  sample::RawFilePlan other = plan_;
  other.stem = "240101";
  other.version = "99";
  ASSERT_TRUE(sample::WriteRawFile(data_.path(), other));
  const Outcome all = Batch({QStringLiteral("check"), data_.path(), QStringLiteral("--all")});
  EXPECT_EQ(all.exit, 1);
}

TEST_F(BatchCheck, AnyNumberOfThreadsSaysTheSame) {
  PutSpike(kSpike, 20);
  for (char c = '0'; c < '9'; ++c) {
    plan_.station = QByteArray("5100") + c;
    Write();
  }
  const auto all = [&](const char* jobs) {
    return Batch({QStringLiteral("check"), data_.path(), QStringLiteral("--all"), QStringLiteral("--jobs"),
                  QLatin1String(jobs)});
  };
  const Outcome one = all("1");
  EXPECT_EQ(one.exit, 3);
  EXPECT_EQ(one.Lines().size(), 1 + 10 * 2);
  const Outcome several = all("4");
  EXPECT_TRUE(several.out == one.out && several.err == one.err);
}

TEST_F(BatchCheck, WrongUseIsToldBeforeAnythingIsRead) {
  for (const char* wrong :
       {"--rules spike,none", "--rules", "--format xml", "--spike -1", "--spike nan", "--rate x", "--flat 24",
        "--flat 0:1", "--flat 1:2:3", "--low 5 --high 5", "--all"}) {
    const Outcome run = Check(Words(wrong));
    EXPECT_EQ(run.exit, 2) << wrong;
    EXPECT_TRUE(run.out.isEmpty()) << wrong;
  }
}

}  // namespace
}  // namespace vesk
