// Accepted findings and approvals: kept whatever else happens to the record, and told when they no longer
// hold.
#include "review/review_decisions.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "review/session_fixture.h"
#include "support/other_process.h"

namespace vesk {
namespace {

AcceptedFinding Gap(int day, double value = 3) {
  const DateTime from =
      DateTime(std::chrono::sys_days(std::chrono::year(2010) / 10 / 1)) + std::chrono::days(day);
  return {.rule = QStringLiteral("gap"),
          .rawFile = QStringLiteral("001-12345-010203"),
          .from = from,
          .to = from + std::chrono::hours(5),
          .value = value,
          .by = {QStringLiteral("ayşe"),
                 QStringLiteral("Ayşe Öz"),
                 QStringLiteral("2024-01-01T00:00:00Z"),
                 {{}, QStringLiteral("bakım: \"akü\"\nbitti")}}};
}

class Decisions : public test::SessionTest {
 protected:
  void SetUp() override { LoadYear(); }
  ReviewDecisions Read() {
    const auto read = ReadReviewDecisions(logPath_);
    EXPECT_TRUE(read);
    return read ? *read : ReviewDecisions();
  }
};

TEST_F(Decisions, OutliveEverySaveOfTheCorrections) {
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(1)));
  Edit(3, "17");
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(2)));  // while the session works
  ASSERT_TRUE(session_.Save());
  ASSERT_TRUE(AddApproval(logPath_, {.by = {QStringLiteral("ali"), {}, {}, {}}, .readings = 48}));
  Edit(4, "18");
  ASSERT_TRUE(session_.Save());
  const ReviewDecisions kept = Read();
  ASSERT_EQ(kept.accepted.size(), 2U);
  EXPECT_TRUE(kept.accepted[0].IsOf(Gap(1)));
  EXPECT_EQ(kept.accepted[1].by, Gap(2).by);
  EXPECT_EQ(kept.approvals.size(), 1U);
  LoadYear();
  EXPECT_EQ(Row(3), "17/999*") << "and the corrections are those that were saved";
}

TEST_F(Decisions, AFindingOfAnotherValueIsAnother) {
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(1, 3)));
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(1, 3)));
  EXPECT_EQ(Read().accepted.size(), 1U) << "accepted twice is accepted once";
  EXPECT_FALSE(Read().accepted.front().IsOf(Gap(1, 4)));
  EXPECT_FALSE(Read().accepted.front().IsOf(Gap(2, 3)));
  ASSERT_TRUE(WithdrawAcceptance(logPath_, Gap(1, 4)));
  EXPECT_EQ(Read().accepted.size(), 1U);
  ASSERT_TRUE(WithdrawAcceptance(logPath_, Gap(1, 3)));
  EXPECT_TRUE(Read().accepted.empty());
}

// The converted file of a year comes and goes, and with it a mark in the name of the year's log.
TEST_F(Decisions, StayWithTheirYearWhateverItsLogIsNamed) {
  const QString marked =
      QString(logPath_).replace(QStringLiteral("2011.txt"), QStringLiteral("2011 Ok..txt"));
  ASSERT_NE(marked, logPath_);
  ASSERT_TRUE(AcceptFinding(marked, Gap(1)));
  ASSERT_TRUE(AddApproval(marked, {.by = {QStringLiteral("ali"), {}, {}, {}}}));
  EXPECT_EQ(Read().accepted.size(), 1U);
  EXPECT_NE(Read().InForce(), nullptr);
  ASSERT_TRUE(WithdrawAcceptance(logPath_, Gap(1)));
  EXPECT_TRUE(ReadReviewDecisions(marked)->accepted.empty());
}

// What a newer version writes, and what cannot be read, stays in the file.
TEST_F(Decisions, WhatIsNotKnownStays) {
  const QString path = ReviewRecordPath(logPath_);
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(1)));
  QJsonObject object = QJsonDocument::fromJson(test::ContentOf(path)).object();
  object[QStringLiteral("future")] = 7;
  QJsonArray accepted = object[QStringLiteral("acceptedFindings")].toArray();
  accepted.append(QJsonObject{{QStringLiteral("rule"), QStringLiteral("tide")}});
  object[QStringLiteral("acceptedFindings")] = accepted;
  ASSERT_TRUE(test::WriteContent(path, QJsonDocument(object).toJson()));
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(2)));
  ASSERT_TRUE(WithdrawAcceptance(logPath_, Gap(1)));
  object = QJsonDocument::fromJson(test::ContentOf(path)).object();
  EXPECT_EQ(object[QStringLiteral("future")].toInt(), 7);
  EXPECT_EQ(object[QStringLiteral("acceptedFindings")].toArray().size(), 2);
  // A damaged record is put aside and does not keep anybody from deciding.
  ASSERT_TRUE(test::WriteContent(path, "{ damaged"));
  EXPECT_FALSE(ReadReviewDecisions(logPath_));
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(3)));
  EXPECT_EQ(Read().accepted.size(), 1U);
  EXPECT_EQ(test::ContentOf(path + QStringLiteral(".damaged")), "{ damaged");
}

TEST_F(Decisions, AWithdrawnAcceptanceStaysOnRecord) {
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(1)));
  ASSERT_TRUE(WithdrawAcceptance(logPath_, Gap(1)));
  ASSERT_TRUE(WithdrawAcceptance(logPath_, Gap(1)));
  ReviewDecisions kept = Read();
  EXPECT_TRUE(kept.accepted.empty());
  ASSERT_EQ(kept.withdrawn.size(), 1U) << "taken back twice is taken back once";
  EXPECT_EQ(kept.withdrawn[0].finding.by, Gap(1).by) << "who accepted it";
  EXPECT_EQ(kept.withdrawn[0].by.login, PresentAuthor().login);
  ASSERT_TRUE(AcceptFinding(logPath_, Gap(1)));
  ASSERT_TRUE(WithdrawAcceptance(logPath_, Gap(1)));
  EXPECT_EQ(Read().withdrawn.size(), 2U);
}

TEST_F(Decisions, AChangedOrMissingCurveBreaksTheApproval) {
  const QString path = folder_.filePath(QStringLiteral("E12345.dat"));
  ASSERT_TRUE(test::WriteContent(path, "curve"));
  const UsedCurve curve{path, HashOf("curve")};
  ASSERT_TRUE(KeepCurveChoice(logPath_, curve));
  ASSERT_TRUE(AddApproval(logPath_, {.by = {QStringLiteral("ali"), {}, {}, {}}, .curve = curve}));
  const ReviewDecisions kept = Read();
  EXPECT_EQ(kept.curve, curve);
  ASSERT_NE(kept.InForce(), nullptr);
  EXPECT_EQ(kept.InForce()->curve, curve);
  const auto said = [&kept] {
    const auto differences = ApprovalDifferences(*kept.InForce(), Approval());
    return differences.empty() ? QString() : differences.front().English();
  };
  EXPECT_EQ(said(), QString());
  ASSERT_TRUE(test::WriteContent(path, "curvf"));
  EXPECT_TRUE(said().contains(QStringLiteral("has changed since the approval"))) << said().toStdString();
  ASSERT_TRUE(QFile::remove(path));
  EXPECT_TRUE(said().contains(QStringLiteral("is gone"))) << said().toStdString();
  ASSERT_TRUE(KeepCurveChoice(logPath_, {}));
  EXPECT_EQ(Read().curve, UsedCurve());
}

TEST_F(Decisions, SeveralAtOnceLoseNothing) {
  constexpr int kProcesses = 4, kEach = 10;
  std::vector<std::unique_ptr<test::OtherProcess>> others;
  for (int process = 0; process < kProcesses; ++process) {
    others.push_back(std::make_unique<test::OtherProcess>([&, process](test::OtherProcess::Signals&) {
      for (int i = 0; i < kEach; ++i) EXPECT_TRUE(AcceptFinding(logPath_, Gap(process * kEach + i)));
    }));
  }
  for (const auto& other : others) EXPECT_EQ(other->WaitForEnd(), 0);
  EXPECT_EQ(Read().accepted.size(), static_cast<std::size_t>(kProcesses * kEach));
}

TEST_F(Decisions, AnApprovalSaysWhatNoLongerHolds) {
  const auto file = [](const char* name, const char* hash) {
    return ApprovedFile{QString::fromLatin1(name), hash};
  };
  const Approval approved{
      .rawFiles = {file("001-12345-010203=0010.txt", "aa"), file("001-12345-020203.txt", "bb")},
      .logHash = "11",
      .readings = 100,
      .corrections = 3};
  Approval present = approved;
  present.rawFiles[0].name = QStringLiteral("001-12345-010203=0012.txt");
  EXPECT_TRUE(ApprovalDifferences(approved, present).empty()) << "a name that was tidied is the same file";
  present.rawFiles[0].sha256 = "ac";
  present.rawFiles[1] = file("001-12345-030203.txt", "cc");
  present.logHash = "12";
  present.corrections = 4;
  present.readings = 90;
  QStringList said;
  for (const Message& message : ApprovalDifferences(approved, present)) said += message.English();
  EXPECT_EQ(said.join(QStringLiteral("; ")).toStdString(),
            "001-12345-010203=0010.txt: has changed since it was approved; 001-12345-020203.txt: was "
            "approved and is "
            "no longer loaded; 001-12345-030203.txt: has come since the approval; the corrections have "
            "changed since "
            "the approval (approved: 3, now: 4); approved with 100 readings, now there are 90");
  ASSERT_TRUE(AddApproval(logPath_, approved));
  EXPECT_NE(Read().InForce(), nullptr);
  ASSERT_TRUE(AddApproval(logPath_, {.withdrawn = true, .by = {}}));
  EXPECT_EQ(Read().InForce(), nullptr);
  EXPECT_EQ(Read().approvals.front().rawFiles, approved.rawFiles) << "what was approved once stays on record";
}

}  // namespace
}  // namespace vesk
