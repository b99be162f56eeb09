#include "platform/locks.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>
#include <QTemporaryDir>

#include "support/other_process.h"

namespace vesk {
namespace {

class Locks : public testing::Test {
 protected:
  [[nodiscard]] Result<LockAttempt> Try(int waitMs = 0) const {
    return TryLock(path_, QStringLiteral("tests"), std::chrono::milliseconds(waitMs));
  }
  [[nodiscard]] bool CanTake() const {
    const auto attempt = Try();
    return attempt && std::holds_alternative<FileLock>(*attempt);
  }
  [[nodiscard]] QJsonObject Text() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
  }
  void Write(const QByteArray& bytes) const {
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  /// Leaves the lock of a process that was killed.
  void LeaveLockOfKilledProcess() const {
    test::OtherProcess holder([this](test::OtherProcess::Signals& signals) {
      const auto attempt = Try();
      signals.Tell();
      ::pause();
    });
    holder.WaitUntilTold();
    holder.Kill();
    ASSERT_TRUE(QFile::exists(path_));
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("log.lock"));
};

TEST_F(Locks, OneHoldsItAndTheOthersAreToldWho) {
  test::OtherProcess holder([this](test::OtherProcess::Signals& signals) {
    const auto attempt = Try();
    signals.Tell();
    signals.WaitUntilAsked();
  });
  holder.WaitUntilTold();
  for (const auto& attempt : {Try(), TakeOverLock(path_, {}, LockHolderOf(path_).value_or(LockHolder()))}) {
    ASSERT_TRUE(attempt);
    const auto* other = std::get_if<LockHolder>(&*attempt);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->owner, QStringLiteral("tests"));
    EXPECT_EQ(other->pid, holder.Pid());
    EXPECT_EQ(other->host, QSysInfo::machineHostName());
    EXPECT_EQ(other->user, QFileInfo(folder_.path()).owner());
    EXPECT_LT(std::abs(other->since.secsTo(QDateTime::currentDateTimeUtc())), 600);
    EXPECT_TRUE(other->here);
  }
  holder.Ask();
  const auto waited = Try(60000);
  ASSERT_TRUE(waited);
  EXPECT_TRUE(std::holds_alternative<FileLock>(*waited)) << "released by the other process";
}

TEST_F(Locks, ItGoesWithItsObjectAndOnlyItsOwnFile) {
  {
    const auto first = Try();
    ASSERT_TRUE(first && std::holds_alternative<FileLock>(*first));
    EXPECT_TRUE(std::get<FileLock>(*first).StillOurs());
    EXPECT_FALSE(CanTake()) << "twice in one process";
    EXPECT_EQ(LockHolderOf(path_).value_or(LockHolder()).pid, ::getpid());
  }
  EXPECT_FALSE(QFile::exists(path_));
  EXPECT_FALSE(LockHolderOf(path_));
  {
    const auto lost = Try();
    ASSERT_TRUE(lost && std::holds_alternative<FileLock>(*lost));
    ASSERT_TRUE(QFile::remove(path_));
    Write("another's");
    EXPECT_FALSE(std::get<FileLock>(*lost).StillOurs());
  }
  EXPECT_TRUE(QFile::exists(path_)) << "the lock that stands in its place stays";
}

TEST_F(Locks, AHolderThatWasKilledIsTakenOver) {
  LeaveLockOfKilledProcess();
  EXPECT_FALSE(LockHolderOf(path_));
  EXPECT_TRUE(CanTake());
}

TEST_F(Locks, TheNumberOfADeadHolderGivenToAnotherProcessIsNoHolder) {
  LeaveLockOfKilledProcess();
  QJsonObject text = Text();
  text[QStringLiteral("pid")] = static_cast<qint64>(::getpid());
  Write(QJsonDocument(text).toJson());
  EXPECT_TRUE(CanTake());
}

TEST_F(Locks, OfAnotherMachineNothingIsTakenForDead) {
  // A machine made of the same disk image has another name and the same number.
  for (const char* key : {"host", "machine"}) {
    LeaveLockOfKilledProcess();
    QJsonObject text = Text();
    text[QLatin1String(key)] = QStringLiteral("elsewhere");
    text[QStringLiteral("boot")] = QStringLiteral("another one");
    Write(QJsonDocument(text).toJson());
    const auto attempt = Try();
    ASSERT_TRUE(attempt);
    const auto* holder = std::get_if<LockHolder>(&*attempt);
    ASSERT_NE(holder, nullptr) << key;
    EXPECT_FALSE(holder->here);

    LockHolder earlier = *holder;
    earlier.token = QStringLiteral("of a lock before this one");
    const auto notThatOne = TakeOverLock(path_, {}, earlier);
    EXPECT_TRUE(notThatOne && std::holds_alternative<LockHolder>(*notThatOne));
    const auto taken = TakeOverLock(path_, {}, *holder);
    EXPECT_TRUE(taken && std::holds_alternative<FileLock>(*taken)) << "the operator knows that it is gone";
  }
}

TEST_F(Locks, RemainsOfALockFileAreTakenOver) {
  for (const char* content : {"", "{\"owner\": \"cut"}) {
    Write(content);
    EXPECT_TRUE(CanTake()) << content;
  }
}

TEST_F(Locks, AFolderWithoutRoomForALockIsNamed) {
  path_ = folder_.filePath(QStringLiteral("none/log.lock"));
  const auto noFolder = Try();
  ASSERT_FALSE(noFolder);
  EXPECT_EQ(noFolder.Failure().reason.English(), QStringLiteral("no such folder"));
  path_ = QStringLiteral("/proc/vesk.lock");  // refuses root, too
  EXPECT_FALSE(Try());
  EXPECT_FALSE(LockHolderOf(path_));
}

/// Processes that all add to one number under the lock, some of them killed while they hold it.
TEST_F(Locks, NoTwoProcessesHoldItAtOnce) {
  const QString counter = folder_.filePath(QStringLiteral("counter"));
  const auto count = [&counter] {
    QFile file(counter);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toInt() : 0;
  };
  constexpr int kProcesses = 4;
  constexpr int kRounds = 25;
  std::vector<std::unique_ptr<test::OtherProcess>> processes;
  for (int p = 0; p < kProcesses; ++p) {
    processes.push_back(std::make_unique<test::OtherProcess>([&](test::OtherProcess::Signals& /*signals*/) {
      for (int round = 0; round < kRounds; ++round) {
        auto attempt = Try(60000);
        if (!attempt || !std::holds_alternative<FileLock>(*attempt)) ::_exit(1);
        const int before = count();
        QFile file(counter);
        if (!file.open(QIODevice::WriteOnly)) ::_exit(1);
        file.write(QByteArray::number(before + 1));
        file.close();
        if (round == kRounds - 1) ::_exit(0);  // without release: the next one has to take over
      }
    }));
  }
  for (const auto& process : processes) EXPECT_EQ(process->WaitForEnd(), 0);
  EXPECT_EQ(count(), kProcesses * kRounds);
}

}  // namespace
}  // namespace vesk
