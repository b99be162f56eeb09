// The operator's office, played by one with the profile of the test's private home and without a screen.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <csignal>

#include <unistd.h>

#include "platform/libreoffice/office.h"
#include "platform/libreoffice/office_process.h"
#include "platform_office/office_processes.h"
#include "tables/grid_rows.h"
#include "tables/plain_answers.h"

namespace vesk::test {
namespace {

/// Offices that were started for this test program, by the pipe they were told to listen on.
std::vector<int> OperatorOffices() {
  const QByteArray pid = QByteArray::number(QCoreApplication::applicationPid());
  return OfficesStartedWith("name=vesk4-" + pid + ';');
}
int OperatorOffice() {
  const std::vector<int> found = OperatorOffices();
  return found.empty() ? 0 : found.front();
}

class OperatorOfficeTest : public testing::Test {
 protected:
  void SetUp() override {
    if (OperatorOfficeRuns()) GTEST_SKIP() << "an office runs with this home already";
    if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("SAL_USE_VCLPLUGIN", "svp");
  }
  void TearDown() override {
    const std::vector<int> left = OperatorOffices();
    if (left.empty()) return;
    for (const int process : left) ::kill(process, SIGKILL);
    WaitUntil([] { return !OperatorOfficeRuns(); });
    const auto pid = QCoreApplication::applicationPid();
    QFile::remove(QStringLiteral("/tmp/OSL_PIPE_%1_vesk4-%2").arg(getuid()).arg(pid));
  }

  QTemporaryDir folder_;
};

TEST_F(OperatorOfficeTest, IsStartedForATableAndLeftToItsOperatorWhileTheTableIsOpen) {
  const StationSeries grid = GridOf("01/10/2010 12:00 120");
  const BuildInput input{.series = grid,
                         .stationNumber = QStringLiteral("12345"),
                         .stationName = {},
                         .waterYear = 2011,
                         .tableDirectory = folder_.path(),
                         .templateDirectory = QStringLiteral(VESK_RESOURCES),
                         .templateName = QStringLiteral("Sablon.xls")};
  PlainAnswers answers;
  const auto office = MakeInteractiveSpreadsheet();
  EXPECT_FALSE(office->HasOpenWindow());
  EXPECT_EQ(OperatorOffice(), 0) << "asking starts nothing";
  const auto report = BuildLevelTable(input, *office, answers);
  ASSERT_TRUE(report.Ok()) << report.Failure().English().toStdString();
  for (const Error& warning : report->warnings) ADD_FAILURE() << warning.English().toStdString();
  const auto files = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
  EXPECT_EQ(
      QDir(folder_.path()).entryList(files),
      QStringList({QStringLiteral(".Tablo-12345(2011).xls.sha256"),
                   QStringLiteral(".~lock.Tablo-12345(2011).xls#"), QStringLiteral("Tablo-12345(2011).xls")}))
      << "open under its own name";

  const int process = OperatorOffice();
  EXPECT_GT(process, 0);
  const auto another = MakeInteractiveSpreadsheet();  // as the operator's next run would
  EXPECT_EQ(BuildLevelTable(input, *another, answers)->end, BuildEnd::WorkbooksAreOpen);
  EXPECT_TRUE(office->Quit().Ok());
  EXPECT_TRUE(another->HasOpenWindow()) << "the open table keeps it";
  auto table = another->Open(report->path, Macros::AsTheOfficeSays);
  ASSERT_TRUE(table.Ok()) << table.Failure().English().toStdString();
  EXPECT_EQ(OperatorOffice(), process);
  EXPECT_TRUE((*table)->Close().Ok());
  EXPECT_FALSE(office->HasOpenWindow());
  const Status quit = office->Quit();
  EXPECT_TRUE(quit.Ok()) << quit.Failure().English().toStdString();
  EXPECT_TRUE(WaitUntil([] { return OperatorOffice() == 0; }));
}

TEST_F(OperatorOfficeTest, IsGivenUpAndNeverKilledWhenItHangs) {
  const auto office = MakeInteractiveSpreadsheet(
      {std::chrono::seconds(60), std::chrono::seconds(2), std::chrono::seconds(5)});
  const QString path = folder_.filePath(QStringLiteral("own.xls"));
  ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_RESOURCES "/Sablon.xls"), path));
  auto own = office->Open(path, Macros::AsTheOfficeSays);
  ASSERT_TRUE(own.Ok()) << own.Failure().English().toStdString();
  const int process = OperatorOffice();
  ASSERT_EQ(::kill(process, SIGSTOP), 0);
  const Status saved = (*own)->Save();
  ASSERT_FALSE(saved.Ok());
  EXPECT_TRUE(saved.Failure().reason.English().contains(QLatin1String("no answer in time")))
      << saved.Failure().English().toStdString();
  ASSERT_EQ(::kill(process, SIGCONT), 0);
  EXPECT_EQ(OperatorOffice(), process);
  EXPECT_TRUE(WaitUntil([&office] { return office->HasOpenWindow(); }));  // it can be bound to again
}

}  // namespace
}  // namespace vesk::test
