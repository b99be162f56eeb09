// The operator's office, played by one with the profile of the test's private home and without a screen.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <functional>
#include <thread>

#include <unistd.h>

#include "platform/libreoffice/office.h"
#include "platform/libreoffice/office_process.h"
#include "tables/build_level_table.h"

namespace vesk::test {
namespace {

bool WaitUntil(const std::function<bool()>& holds) {
  QElapsedTimer waiting;
  waiting.start();
  while (!holds()) {
    if (waiting.hasExpired(20'000)) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return true;
}

/// The office that was started for this test program, by the pipe it was told to listen on.
int OperatorOffice() {
  const QByteArray pipe =
      QByteArrayLiteral("name=vesk4-") + QByteArray::number(QCoreApplication::applicationPid());
  const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
  for (const QString& entry : entries) {
    QFile command(QStringLiteral("/proc/%1/cmdline").arg(entry));
    if (entry.toInt() == 0 || !command.open(QIODevice::ReadOnly)) continue;
    const QByteArray line = command.readAll();
    if (line.contains("soffice.bin") && line.contains(pipe + ';')) return entry.toInt();
  }
  return 0;
}

class OperatorOfficeTest : public testing::Test {
 protected:
  void SetUp() override {
    if (OperatorOfficeRuns()) GTEST_SKIP() << "an office runs with this home already";
    if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("SAL_USE_VCLPLUGIN", "svp");
    for (const QString& path : {own_, other_}) {
      ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_RESOURCES "/Sablon.xls"), path));
    }
  }
  void TearDown() override {
    if (const int left = OperatorOffice(); left > 0) {
      ::kill(left, SIGKILL);
      WaitUntil([] { return !OperatorOfficeRuns(); });
      QDir(QStringLiteral("/tmp"))
          .remove(
              QStringLiteral("OSL_PIPE_%1_vesk4-%2").arg(getuid()).arg(QCoreApplication::applicationPid()));
    }
  }

  QTemporaryDir folder_;
  QString own_ = folder_.filePath(QStringLiteral("own.xls"));
  QString other_ = folder_.filePath(QStringLiteral("other.xls"));
};

TEST_F(OperatorOfficeTest, IsStartedBoundToAndLeftToItsOperator) {
  const auto office = MakeInteractiveSpreadsheet();
  EXPECT_FALSE(office->HasOpenWindow());
  EXPECT_EQ(OperatorOffice(), 0);  // asking starts nothing

  auto own = office->Open(own_);
  ASSERT_TRUE(own.Ok()) << own.Failure().Text().toStdString();
  EXPECT_TRUE((*own)->ShowWindow().Ok());
  const int process = OperatorOffice();
  EXPECT_GT(process, 0);
  EXPECT_TRUE(office->HasOpenWindow());

  {
    const auto another = MakeInteractiveSpreadsheet();  // as the operator's next build would
    EXPECT_TRUE(another->HasOpenWindow());
    auto others = another->Open(other_);
    ASSERT_TRUE(others.Ok()) << others.Failure().Text().toStdString();
    EXPECT_EQ(OperatorOffice(), process);
  }

  EXPECT_TRUE((*own)->Close().Ok());
  EXPECT_TRUE(office->Quit().Ok());
  EXPECT_TRUE(office->HasOpenWindow());  // the other workbook keeps it
  EXPECT_EQ(OperatorOffice(), process);
}

TEST_F(OperatorOfficeTest, EndsWhenNothingElseIsOpen) {
  const auto office = MakeInteractiveSpreadsheet();
  auto own = office->Open(own_);
  ASSERT_TRUE(own.Ok()) << own.Failure().Text().toStdString();
  EXPECT_TRUE((*own)->Close().Ok());
  EXPECT_FALSE(office->HasOpenWindow());
  const Status quit = office->Quit();
  EXPECT_TRUE(quit.Ok()) << quit.Failure().Text().toStdString();
  EXPECT_TRUE(WaitUntil([] { return OperatorOffice() == 0; }));
}

TEST_F(OperatorOfficeTest, IsGivenUpAndNeverKilledWhenItHangs) {
  const auto office = MakeInteractiveSpreadsheet(
      {std::chrono::seconds(60), std::chrono::seconds(2), std::chrono::seconds(5)});
  auto own = office->Open(own_);
  ASSERT_TRUE(own.Ok()) << own.Failure().Text().toStdString();
  const int process = OperatorOffice();
  ASSERT_EQ(::kill(process, SIGSTOP), 0);
  const Status saved = (*own)->Save();
  ASSERT_FALSE(saved.Ok());
  EXPECT_TRUE(saved.Failure().reason.contains(QLatin1String("no answer in time")))
      << saved.Failure().Text().toStdString();
  ASSERT_EQ(::kill(process, SIGCONT), 0);
  EXPECT_EQ(OperatorOffice(), process);
  EXPECT_TRUE(WaitUntil([&office] { return office->HasOpenWindow(); }));  // it can be bound to again
}

class Yes : public BuildQuestions {
 public:
  int told = 0;
  void TellWorkbooksAreOpen(const BuildMessage& /*message*/) override { ++told; }
  bool AskForHourlyValues(const BuildMessage& /*message*/) override { return true; }
  void WarnNotToSwitchSheets(const BuildMessage& /*message*/) override {}
  void ShowProgress(int /*percent*/) override {}
};

TEST_F(OperatorOfficeTest, FinishedTableStaysOpenUnderItsOwnName) {
  const QTemporaryDir tables;
  ReviewGrid grid;
  Reading reading;
  reading.day = WaterYearFirstDay(2011);
  reading.levelCm = 120;
  reading.minuteOfDay = 720;
  grid.Append(reading);
  const auto office = MakeInteractiveSpreadsheet();
  Yes questions;
  const BuildInput input{grid,
                         QStringLiteral("12345"),
                         QStringLiteral("Ad"),
                         2011,
                         ExtremeMode::Recorded,
                         tables.path(),
                         QStringLiteral(VESK_RESOURCES),
                         QStringLiteral("Sablon.xls"),
                         AfterSave::LeaveOpen};
  const auto report = BuildLevelTable(input, *office, questions);
  ASSERT_TRUE(report.Ok()) << report.Failure().Text().toStdString();
  for (const Error& warning : report->warnings) ADD_FAILURE() << warning.Text().toStdString();
  const QStringList found =
      QDir(tables.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  EXPECT_EQ(found, QStringList({QStringLiteral(".~lock.Tablo-12345(2011).xls#"),
                                QStringLiteral("Tablo-12345(2011).xls")}));
  EXPECT_TRUE(BuildLevelTable(input, *office, questions)->stoppedByOpenWorkbooks);
  EXPECT_EQ(questions.told, 1);
}

}  // namespace
}  // namespace vesk::test
