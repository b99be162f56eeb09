#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <functional>
#include <thread>

#include "platform/libreoffice/office.h"

namespace vesk::test {
namespace {

/// Processes that were started by this one and run an office, as the process table tells it.
std::vector<int> OfficesOfThisProcess() {
  std::vector<int> found;
  const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
  for (const QString& entry : entries) {
    QFile status(QStringLiteral("/proc/%1/stat").arg(entry));
    if (entry.toInt() == 0 || !status.open(QIODevice::ReadOnly)) continue;
    const QString text = QString::fromLatin1(status.readAll());
    const QString parent = text.section(QLatin1String(") "), 1).section(QLatin1Char(' '), 1, 1);
    if (text.contains(QLatin1String("soffice")) &&
        parent.toLongLong() == QCoreApplication::applicationPid()) {
      found.push_back(entry.toInt());
    }
  }
  return found;
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
  std::vector<int> first;
  for (int i = 0; i < 2; ++i) {
    auto workbook = office_->Open(path_);
    ASSERT_TRUE(workbook.Ok()) << workbook.Failure().Text().toStdString();
    EXPECT_TRUE((*workbook)->Close().Ok());
    if (i == 0) first = OfficesOfThisProcess();
  }
  EXPECT_EQ(first.size(), 1U);
  EXPECT_EQ(OfficesOfThisProcess(), first);
  EXPECT_TRUE(office_->Quit().Ok());
  EXPECT_TRUE(OfficesOfThisProcess().empty());
  EXPECT_TRUE(office_->Open(path_).Ok());  // and starts again when it is needed
}

struct Accident {
  const char* name;
  int signal;
  const char* reason;
};

class OfficeAccident : public OfficeProcess, public testing::WithParamInterface<Accident> {};

TEST_P(OfficeAccident, EndsTheCallWithAnErrorAndTheNextWorkbookOpens) {
  auto workbook = office_->Open(path_);
  ASSERT_TRUE(workbook.Ok()) << workbook.Failure().Text().toStdString();
  auto sheet = (*workbook)->Sheet(QStringLiteral("Saatlik"));
  ASSERT_TRUE(sheet.Ok());
  const std::vector<int> offices = OfficesOfThisProcess();
  ASSERT_EQ(offices.size(), 1U);
  ASSERT_EQ(::kill(offices.front(), GetParam().signal), 0);

  // More than a socket's buffer holds, so that a stopped office blocks the sending as well.
  const CellBlock block(20'000, std::vector<CellValue>(4, QStringLiteral("12:00")));
  QElapsedTimer waited;
  waited.start();
  const Status put = (*sheet)->PutBlock(5, 1, block);
  ASSERT_FALSE(put.Ok());
  EXPECT_TRUE(put.Failure().reason.contains(QLatin1String(GetParam().reason)))
      << put.Failure().Text().toStdString();
  EXPECT_FALSE((*workbook)->Save().Ok());
  EXPECT_FALSE((*workbook)->Close().Ok());
  EXPECT_LT(waited.elapsed(), 30'000);

  auto locked = office_->Open(path_);  // the killed office could not take its lock away
  ASSERT_FALSE(locked.Ok());
  EXPECT_TRUE(locked.Failure().path.contains(QLatin1String(".~lock.a.xls#")))
      << locked.Failure().Text().toStdString();
  const QString other = folder_.filePath(QStringLiteral("b.xls"));
  ASSERT_TRUE(QFile::copy(path_, other));
  auto again = office_->Open(other);
  EXPECT_TRUE(again.Ok()) << again.Failure().Text().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Signals, OfficeAccident,
                         testing::Values(Accident{"Killed", SIGKILL, "has ended"},
                                         Accident{"Stopped", SIGSTOP, "no answer in time"}),
                         [](const auto& accident) { return accident.param.name; });

TEST_F(OfficeProcess, MissingFileSheetAndMacroAreNamed) {
  auto missing = office_->Open(folder_.filePath(QStringLiteral("none.xls")));
  ASSERT_FALSE(missing.Ok());
  EXPECT_TRUE(missing.Failure().path.endsWith(QLatin1String("none.xls")));
  auto workbook = office_->Open(path_);
  ASSERT_TRUE(workbook.Ok());
  EXPECT_FALSE((*workbook)->Sheet(QStringLiteral("Yok")).Ok());
  EXPECT_TRUE((*workbook)->RunMacro(QStringLiteral("Yok")).Failure().what.contains(QLatin1String("macro")));
}

}  // namespace
}  // namespace vesk::test
