#include "review/edit_journal.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::WriteContent;

JournalRecord EditOf(int row, double levelCm) {
  const Reading reading = test::ReadingAt("01/10/2010 07:30", levelCm);
  return {.row = row,
          .day = reading.day,
          .minuteOfDay = reading.minuteOfDay,
          .label = RecordLabel(reading),
          .levelCm = levelCm,
          .corrections = row};
}

JournalRecord CorrectionTo(const char* time) {
  return {.kind = JournalRecord::Kind::CorrectDates,
          .target = ReadDateTime(QString::fromLatin1(time)).value(),
          .corrections = 2};
}

class Journal : public testing::Test {
 protected:
  std::vector<JournalRecord> Pending() const {
    const auto pending = JournalOf(path_);
    EXPECT_TRUE(pending);
    return pending->records;
  }

  QTemporaryDir folder_;
  QString path_ = JournalPath(folder_.filePath(QStringLiteral("001-12345-Degisiklikler2011.txt")));
};

TEST_F(Journal, StandsBesideTheChangeLogAndIsNoTextFile) {
  EXPECT_EQ(JournalPath(QStringLiteral("/d/log.txt")), QStringLiteral("/d/log.txt.journal"));
  EXPECT_EQ(JournalPath(QStringLiteral("/d/log.txt"), QStringLiteral("001-12345-010203=0001.txt")),
            QStringLiteral("/d/log.txt.001-12345-010203=0001.txt.journal"));
}

TEST_F(Journal, GivesBackWhatWasWrittenLessWhatWasUndone) {
  EditJournal journal(path_);
  EXPECT_TRUE(Pending().empty());
  const std::vector<JournalRecord> records = {EditOf(3, 12.5), CorrectionTo("02/10/2010 08:15"),
                                              EditOf(4, -0.25)};
  for (const JournalRecord& record : records) ASSERT_TRUE(journal.Append(record));
  EXPECT_EQ(Pending(), records);
  ASSERT_TRUE(journal.AppendUndo());
  ASSERT_TRUE(journal.AppendUndo());
  EXPECT_EQ(Pending(), std::vector({records[0]}));
  ASSERT_TRUE(journal.Append(records[1]));  // done again
  ASSERT_TRUE(journal.Append(EditOf(9, 1)));
  EXPECT_EQ(Pending(), std::vector({records[0], records[1], EditOf(9, 1)}));
  ASSERT_TRUE(journal.Remove());
  EXPECT_FALSE(QFileInfo::exists(path_));
  EXPECT_TRUE(journal.Remove());
}

TEST_F(Journal, CutAtAnyByteItGivesTheRecordsBeforeTheCut) {
  EditJournal journal(path_);
  std::vector<JournalRecord> records;
  std::vector<qsizetype> ends;  // length of the journal behind each record
  for (int i = 1; i <= 4; ++i) {
    records.push_back(EditOf(i, i / 4.0));
    ASSERT_TRUE(journal.Append(records.back()));
    ends.push_back(ContentOf(path_).size());
  }
  const QByteArray whole = ContentOf(path_);
  for (qsizetype cut = 0; cut <= whole.size(); ++cut) {
    const auto count = std::count_if(ends.begin(), ends.end(), [&](qsizetype end) { return end <= cut; });
    const PendingEdits pending = DecodeJournal(whole.first(cut));
    ASSERT_EQ(pending.records, std::vector(records.begin(), records.begin() + count)) << cut;
    // A power cut can leave zeros or anything else behind the last whole record.
    ASSERT_EQ(DecodeJournal(whole.first(cut) + QByteArray(5, '\0')).records.size(), pending.records.size())
        << cut;
  }
}

TEST_F(Journal, ADamagedRecordEndsIt) {
  EditJournal journal(path_);
  for (int i = 1; i <= 3; ++i) ASSERT_TRUE(journal.Append(EditOf(i, 10 * i)));
  QByteArray content = ContentOf(path_);
  content.replace("\t20\t", "\t21\t");
  const PendingEdits pending = DecodeJournal(content);
  EXPECT_TRUE(pending.torn);
  EXPECT_EQ(pending.records, std::vector({EditOf(1, 10)}));
}

TEST_F(Journal, GoesOnBehindWhatWasTakenUp) {
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(1, 10)));
  ASSERT_TRUE(WriteContent(path_, ContentOf(path_) + "edit\t2\t01/10"));
  EditJournal journal(path_);
  ASSERT_TRUE(journal.Restart(Pending(), false));
  ASSERT_TRUE(journal.Append(EditOf(3, 30)));
  EXPECT_EQ(Pending(), std::vector({EditOf(1, 10), EditOf(3, 30)}));
  EXPECT_FALSE(JournalOf(path_)->torn);
}

TEST_F(Journal, WorkThatIsPutOffWaitsUntilNewWorkIsDone) {
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(1, 10)));
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(2, 20)));  // and crashed again
  EditJournal journal(path_);
  ASSERT_TRUE(journal.Finish());  // nothing of its own: nothing goes
  ASSERT_TRUE(journal.Append(EditOf(3, 30)));
  EXPECT_EQ(Pending(), std::vector({EditOf(3, 30)}));
  ASSERT_TRUE(journal.Finish());
  EXPECT_EQ(Pending(), std::vector({EditOf(1, 10), EditOf(2, 20)}));
}

TEST_F(Journal, WorkThatWaitsIsOfferedOnceNothingStandsBeforeIt) {
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(1, 10)));
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(2, 20)));  // the first one waits
  EXPECT_EQ(EditJournal(path_).Pending()->records, std::vector({EditOf(2, 20)}));
  ASSERT_TRUE(EditJournal(path_).Remove());
  EXPECT_EQ(EditJournal(path_).Pending()->records, std::vector({EditOf(1, 10)}));

  const QString later = path_ + QStringLiteral(".later");
  for (const bool takenUp : {true, false}) {
    ASSERT_TRUE(QFile::rename(path_, later));  // as a crash can leave it
    EditJournal journal(path_);
    const auto pending = journal.Pending();
    ASSERT_TRUE(pending);
    EXPECT_EQ(pending->records, std::vector({EditOf(1, 10)}));
    ASSERT_TRUE(takenUp ? journal.Restart(pending->records, false) : journal.Remove());
    EXPECT_FALSE(QFileInfo::exists(later)) << takenUp;
    EXPECT_EQ(QFileInfo::exists(path_), takenUp);
  }
}

TEST_F(Journal, NothingTakenUpBringsBackWhatWaits) {
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(1, 10)));
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(2, 20)));
  ASSERT_TRUE(EditJournal(path_).Restart({}, true));
  EXPECT_EQ(Pending(), std::vector({EditOf(1, 10)}));
  EXPECT_EQ(JournalOf(path_ + QStringLiteral(".old"))->records, std::vector({EditOf(2, 20)}));
}

TEST_F(Journal, ACrashWhileWorkIsPutOffDoesNotDoubleIt) {
  ASSERT_TRUE(EditJournal(path_).Append(EditOf(1, 10)));
  ASSERT_TRUE(QFile::copy(path_, path_ + QStringLiteral(".later")));
  EditJournal journal(path_);
  ASSERT_TRUE(journal.Append(EditOf(2, 20)));
  ASSERT_TRUE(journal.Finish());
  EXPECT_EQ(Pending(), std::vector({EditOf(1, 10)}));
}

TEST_F(Journal, EveryJournalThatIsKeptHasANameOfItsOwn) {
  for (int i = 1; i <= 3; ++i) {
    ASSERT_TRUE(EditJournal(path_).Append(EditOf(i, 10)));
    ASSERT_TRUE(EditJournal(path_).Restart({}, true));
  }
  const char* const kSuffixes[] = {".old", ".old2", ".old3"};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(JournalOf(path_ + QLatin1String(kSuffixes[i - 1]))->records, std::vector({EditOf(i, 10)}));
  }
}

TEST_F(Journal, GoesOnWhereItCannotBeRemoved) {
  EditJournal journal(path_);
  ASSERT_TRUE(journal.Append(EditOf(1, 10)));
  const QString away = path_ + QStringLiteral(".away");
  ASSERT_TRUE(QFile::rename(path_, away));
  ASSERT_TRUE(QDir().mkpath(path_));  // a folder cannot be removed as a file
  EXPECT_FALSE(journal.Finish());
  ASSERT_TRUE(QDir().rmdir(path_));
  ASSERT_TRUE(QFile::rename(away, path_));
  ASSERT_TRUE(journal.Append(EditOf(2, 20)));
  EXPECT_EQ(Pending(), std::vector({EditOf(1, 10), EditOf(2, 20)}));
}

TEST_F(Journal, SaysWhyItCannotBeWritten) {
  EditJournal journal(QStringLiteral("/proc/nowhere/log.journal"));
  const Status status = journal.Append(EditOf(1, 10));
  ASSERT_FALSE(status);
  EXPECT_EQ(status.Failure().path, journal.Path());
  EXPECT_FALSE(status.Failure().reason.isEmpty());
}

}  // namespace
}  // namespace vesk
