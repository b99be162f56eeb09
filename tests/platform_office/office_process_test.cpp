#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <csignal>
#include <utility>

#include "platform/libreoffice/office.h"
#include "platform_office/office_processes.h"

namespace vesk::test {
namespace {

std::vector<int> OfficesOfThisProcess() {
  return OfficesStartedWith("vesk4-office-" + QByteArray::number(QCoreApplication::applicationPid()) + '-');
}

QStringList Leftovers() {
  const QString pid = QString::number(QCoreApplication::applicationPid());
  return QDir(QDir::tempPath()).entryList({QStringLiteral("vesk4-office-%1-*").arg(pid)}, QDir::Dirs) +
         QDir(QStringLiteral("/tmp"))
             .entryList({QStringLiteral("OSL_PIPE_*_vesk4-office-%1-*").arg(pid)},
                        QDir::AllEntries | QDir::System);
}

class OfficeProcess : public testing::Test {
 protected:
  void SetUp() override {
    path_ = folder_.filePath(QStringLiteral("a.xls"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_RESOURCES "/Sablon.xls"), path_));
    office_ = MakeUnattendedSpreadsheet(
        {std::chrono::seconds(60), std::chrono::seconds(3), std::chrono::seconds(10)});
  }
  void TearDown() override {
    office_.reset();
    EXPECT_TRUE(OfficesOfThisProcess().empty());
    EXPECT_EQ(Leftovers(), QStringList());
  }

  QTemporaryDir folder_;
  QString path_;
  std::unique_ptr<Spreadsheet> office_;
};

TEST_F(OfficeProcess, IsKeptOverWorkbooksAndEndsWithQuit) {
  EXPECT_FALSE(office_->HasOpenWindow());
  EXPECT_TRUE(OfficesOfThisProcess().empty());
  auto missing = office_->Open(folder_.filePath(QStringLiteral("none.xls")), Macros::AsTheOfficeSays);
  ASSERT_FALSE(missing.Ok());
  EXPECT_TRUE(missing.Failure().path.endsWith(QLatin1String("none.xls")));
  const std::vector<int> first = OfficesOfThisProcess();
  EXPECT_EQ(first.size(), 1U);
  auto workbook = office_->Open(path_, Macros::AsTheOfficeSays);
  ASSERT_TRUE(workbook.Ok()) << workbook.Failure().English().toStdString();
  EXPECT_EQ((*workbook)->Sheet(QStringLiteral("Yok")).Failure().reason.English(), QStringLiteral("Yok"));
  EXPECT_FALSE((*workbook)->RunMacro(QStringLiteral("Yok")).Ok());
  EXPECT_TRUE((*workbook)->Close().Ok());
  EXPECT_EQ(OfficesOfThisProcess(), first);
  EXPECT_TRUE(office_->Quit().Ok());
  EXPECT_TRUE(OfficesOfThisProcess().empty());
  EXPECT_TRUE(office_->Open(path_, Macros::AsTheOfficeSays).Ok()) << "starts again when it is needed";
}

class OfficeAccident : public OfficeProcess,
                       public testing::WithParamInterface<std::pair<int, const char*>> {};

TEST_P(OfficeAccident, EndsTheCallWithAnErrorAndTheNextWorkbookOpens) {
  const auto& [signal, reason] = GetParam();
  auto workbook = office_->Open(path_, Macros::AsTheOfficeSays);
  ASSERT_TRUE(workbook.Ok()) << workbook.Failure().English().toStdString();
  auto sheet = (*workbook)->Sheet(QStringLiteral("Saatlik"));
  ASSERT_TRUE(sheet.Ok());
  const std::vector<int> offices = OfficesOfThisProcess();
  ASSERT_EQ(offices.size(), 1U);
  ASSERT_EQ(::kill(offices.front(), signal), 0);

  // More than a socket's buffer holds, so that a stopped office blocks the sending as well.
  const CellBlock block(20'000, std::vector<CellValue>(4, QStringLiteral("12:00")));
  const Status put = (*sheet)->PutBlock(5, 1, block);
  ASSERT_FALSE(put.Ok());
  EXPECT_TRUE(put.Failure().reason.English().contains(QLatin1String(reason)))
      << put.Failure().English().toStdString();
  EXPECT_FALSE((*workbook)->Save().Ok());
  EXPECT_FALSE((*workbook)->Close().Ok());

  auto locked =
      office_->Open(path_, Macros::AsTheOfficeSays);  // the killed office could not take its lock away
  ASSERT_FALSE(locked.Ok());
  EXPECT_TRUE(locked.Failure().path.contains(QLatin1String(".~lock.a.xls#")))
      << locked.Failure().English().toStdString();
  const QString other = folder_.filePath(QStringLiteral("b.xls"));
  ASSERT_TRUE(QFile::copy(path_, other));
  auto again = office_->Open(other, Macros::AsTheOfficeSays);
  EXPECT_TRUE(again.Ok()) << again.Failure().English().toStdString();
}

INSTANTIATE_TEST_SUITE_P(KilledOrStopped, OfficeAccident,
                         testing::Values(std::pair(SIGKILL, "has ended"),
                                         std::pair(SIGSTOP, "no answer in time")));

}  // namespace
}  // namespace vesk::test
