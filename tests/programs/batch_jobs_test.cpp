// "daily --all" on several threads, and what it takes for one station.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <tuple>

#include "programs/batch_run.h"
#include "tools/sample_data.h"

namespace vesk {
namespace {

class BatchJobs : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(sample::WriteSampleData(data_.path()).Ok()); }
  [[nodiscard]] QByteArray Read(const char* name) const {
    QFile file(data_.filePath(QLatin1String(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
  }
  void Put(const char* name, const QByteArray& content) const {
    QFile file(data_.filePath(QLatin1String(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
  }
  [[nodiscard]] Outcome Daily(const QString& jobs) const {
    return Batch(
        {QStringLiteral("daily"), data_.path(), QStringLiteral("--all"), QStringLiteral("--jobs"), jobs});
  }

  QTemporaryDir data_;
};

TEST_F(BatchJobs, AnyNumberOfThreadsSaysTheSame) {
  QByteArray damaged = Read("103-31007-241001.txt");
  Put("103-31007-241001.txt", damaged.left(damaged.size() / 2));
  Put("102-20510-990101.txt", QByteArray(3000, '\0'));  // refused
  Put("101-12001-Degisiklikler2024.txt", "15/05/2024\t05:00\t100\t\r\n15/05/2024\t05:07\t100\t\r\n");
  for (char c = '0'; c <= '9'; ++c) {  // more stations than wait at a time
    QByteArray other = Read("103-31007-251001.txt");
    const QByteArray number = QByteArray("5100") + c;
    Put(("105-" + number + "-251001.txt").constData(), other.replace("31007", number));
  }
  const Outcome one = Daily(QStringLiteral("1"));
  EXPECT_EQ(one.exit, 1);
  EXPECT_GT(one.Lines().size(), 16 * 365);
  for (const char* told : {"103-31007-241001.txt, line", "-990101.txt: this file is refused", "12001"})
    EXPECT_TRUE(one.err.contains(QLatin1String(told))) << one.err.toStdString();
  for (const char* jobs : {"2", "7"}) {
    const Outcome several = Daily(QLatin1String(jobs));
    EXPECT_EQ(several.exit, one.exit) << jobs;
    EXPECT_TRUE(several.out == one.out) << jobs;
    EXPECT_EQ(several.err.toStdString(), one.err.toStdString()) << jobs;
  }
  const Outcome cores = Batch({QStringLiteral("daily"), data_.path(), QStringLiteral("--all")});
  EXPECT_TRUE(cores.out == one.out && cores.err == one.err) << "without the option";
}

TEST_F(BatchJobs, OnlyANumberOfThreadsIsRightUse) {
  for (const char* jobs : {"0", "-1", "two", "1.5", "257", "4294967297", "2 ", ""}) {
    const Outcome run = Daily(QLatin1String(jobs));
    EXPECT_EQ(run.exit, 2) << jobs;
    EXPECT_TRUE(run.out.isEmpty() && run.err.contains(QStringLiteral("--jobs: expected"))) << jobs;
  }
  EXPECT_NE(Daily(QStringLiteral("256")).exit, 2);
}

TEST_F(BatchJobs, StationsThatDifferInCaseAreOne) {
  for (const auto& [from, number, day] :
       {std::tuple("103-31007-241001.txt", "AB001", "241001"), {"103-31007-251001.txt", "ab001", "251001"}}) {
    Put(("001-" + QByteArray(number) + '-' + day + ".txt").constData(), Read(from).replace("31007", number));
  }
  QStringList spellings;
  for (const QString& line : Daily(QStringLiteral("1")).Lines()) {
    const QString number = line.section(QLatin1Char(','), 0, 0);
    if (number.compare(QStringLiteral("ab001"), Qt::CaseInsensitive) == 0) spellings << number;
  }
  EXPECT_EQ(spellings.size(), 183 + 365);
  EXPECT_EQ(spellings.removeDuplicates(), 183 + 365 - 1) << "under one name";
}

}  // namespace
}  // namespace vesk
