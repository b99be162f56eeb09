// "correct", "accept" and "approve": reviewing without a window.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/locks.h"
#include "programs/batch_run.h"
#include "review/edit_journal.h"
#include "review/review_decisions.h"
#include "tools/sample_data.h"

namespace vesk {
namespace {

class BatchReview : public testing::Test {
 protected:
  void SetUp() override {
    plan_.count = 48;
    plan_.levelCm = [](DateTime time) { return time == sample::At(2023, 10, 1, 6) ? 150 : 100; };
    ASSERT_TRUE(sample::WriteRawFile(data_.path(), plan_));
    log_ = data_.filePath(QStringLiteral("101-12001-Degisiklikler2024.txt"));
  }
  [[nodiscard]] Outcome Run(const QStringList& arguments) const {
    QStringList line = arguments;
    line.insert(1, data_.path());
    return Batch(line + QStringList{QStringLiteral("--station"), QStringLiteral("12001"),
                                    QStringLiteral("--water-year"), QStringLiteral("2024")});
  }
  [[nodiscard]] Outcome Correct(const QStringList& how, const char* from = "01/10/2023 06:00",
                                const char* to = "01/10/2023 06:00") const {
    return Run(QStringList{QStringLiteral("correct"), QStringLiteral("--from"), QString::fromLatin1(from),
                           QStringLiteral("--to"), QString::fromLatin1(to)} +
               how);
  }
  [[nodiscard]] QString Readings() const { return Run({QStringLiteral("readings")}).out; }

  sample::RawFilePlan plan_;
  QTemporaryDir data_;
  QString log_;
};

TEST_F(BatchReview, CorrectsARangeAndItsRecords) {
  const QString before = Readings();
  const QStringList line{QStringLiteral("--line"), QStringLiteral("--records"), QStringLiteral("--reason"),
                         QStringLiteral("sensör")};
  const Outcome dry = Correct(line + QStringList{QStringLiteral("--dry-run")});
  EXPECT_EQ(dry.exit, 0) << dry.err.toStdString();
  EXPECT_EQ(
      dry.out.toStdString(),
      "date,time,label,from_cm,to_cm\n01/10/2023,06:00,01-ort,150,100\n01/10/2023,06:00,01-Max,150,100\n");
  EXPECT_EQ(Readings(), before) << "a dry run changes nothing";
  EXPECT_EQ(Correct(line).out, dry.out);
  EXPECT_TRUE(Readings().contains(QStringLiteral("01/10/2023,06:00,100,,01-ort,999,100")));
  EXPECT_TRUE(Run({QStringLiteral("history")}).out.contains(QStringLiteral(",sensör,line,")));
  EXPECT_EQ(Correct({QStringLiteral("--raw")}).exit, 0);
  EXPECT_TRUE(Readings().contains(QStringLiteral("01/10/2023,06:00,150,,01-ort,999,150")));
  const Outcome drift =
      Correct({QStringLiteral("--drift"), QStringLiteral("0:10")}, "01/10/2023 10:00", "01/10/2023 20:00");
  EXPECT_EQ(drift.Lines().size(), 1 + 10);
  EXPECT_EQ(drift.Lines().back(), QStringLiteral("01/10/2023,20:00,01-ort,100,110"));
}

TEST_F(BatchReview, RefusesWhatCannotBe) {
  for (const QStringList& wrong : {QStringList{},
                                   {QStringLiteral("--line"), QStringLiteral("--raw")},
                                   {QStringLiteral("--shift"), QStringLiteral("x")},
                                   {QStringLiteral("--drift"), QStringLiteral("5")}})
    EXPECT_EQ(Correct(wrong).exit, 2) << wrong.join(u' ').toStdString();
  EXPECT_EQ(Correct({QStringLiteral("--line")}, "01/10/2023", "01/10/2023 07:00").exit, 2);
  EXPECT_EQ(Correct({QStringLiteral("--line")}, "02/10/2023 07:00", "01/10/2023 07:00").exit, 2);
  EXPECT_EQ(Correct({QStringLiteral("--line")}, "01/10/2022 07:00", "01/10/2022 08:00").exit, 1)
      << "no readings";
  EXPECT_EQ(Correct({QStringLiteral("--shift"), QStringLiteral("9900")}).exit, 1) << "beyond the level field";
  EXPECT_FALSE(QFile::exists(log_));
}

// A window that is open on the corrections, and work of one that died, are in the way of nobody else's.
TEST_F(BatchReview, KeepsOutOfOthersWork) {
  {
    const auto lock = TryLock(log_ + QStringLiteral(".lock"), QStringLiteral("test"));
    ASSERT_TRUE(lock && std::holds_alternative<FileLock>(*lock));
    EXPECT_EQ(Correct({QStringLiteral("--line")}).exit, 1);
    EXPECT_EQ(Run({QStringLiteral("approve")}).exit, 1);
  }
  EditJournal journal(JournalPath(log_));
  ASSERT_TRUE(journal.Append({.row = 6,
                              .rawFile = QStringLiteral("101-12001-231002"),
                              .time = sample::At(2023, 10, 1, 6),
                              .fromCm = 150,
                              .levelCm = 120}));
  journal.Leave();
  const Outcome waits = Correct({QStringLiteral("--line")});
  EXPECT_EQ(waits.exit, 1);
  EXPECT_TRUE(waits.err.contains(QStringLiteral("unsaved changes of an earlier session wait")));
  EXPECT_TRUE(QFile::exists(journal.Path()));
  EXPECT_FALSE(QFile::exists(log_));
}

TEST_F(BatchReview, AcceptsFindingsAndApproves) {
  const auto accept = [&](const char* rule, const QStringList& more) {
    return Run(QStringList{QStringLiteral("accept"), QStringLiteral("--rule"), QString::fromLatin1(rule),
                           QStringLiteral("--from"), QStringLiteral("01/10/2023 00:00"),
                           QStringLiteral("--to"), QStringLiteral("30/09/2024 23:59")} +
               more);
  };
  const QStringList reason{QStringLiteral("--reason"), QStringLiteral("logger set up late")};
  EXPECT_EQ(accept("gap", {}).exit, 2) << "nothing is accepted without a reason";
  EXPECT_EQ(accept("tide", reason).exit, 2);
  EXPECT_EQ(accept("overlap", reason).exit, 1) << "there is none";
  const Outcome before = Run({QStringLiteral("approve")});
  EXPECT_EQ(accept("gap", reason).out, QStringLiteral("1 accepted\n"));
  const Outcome after = Run({QStringLiteral("approve"), QStringLiteral("--remark"), QStringLiteral("ok")});
  const int open = before.out.section(u' ', -1).toInt();
  EXPECT_EQ(after.out, QStringLiteral("approved, open findings: %1\n").arg(open - 1));
  const auto decisions = ReadReviewDecisions(log_);
  ASSERT_TRUE(decisions && decisions->InForce());
  EXPECT_EQ(decisions->InForce()->by.why.reason, QStringLiteral("ok"));
  EXPECT_EQ(decisions->InForce()->rawFiles.size(), 1U);
  EXPECT_EQ(Correct({QStringLiteral("--line")}).exit, 0);
  EXPECT_TRUE(Run({QStringLiteral("readings")})
                  .err.contains(QStringLiteral("corrections have changed since the approval")));
  EXPECT_EQ(Run({QStringLiteral("approve"), QStringLiteral("--withdraw")}).exit, 0);
  EXPECT_EQ(ReadReviewDecisions(log_)->InForce(), nullptr);
}

}  // namespace
}  // namespace vesk
