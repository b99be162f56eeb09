#include "review/edit_journal.h"
#include "datafiles/dates.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

#include "review/grid_maker.h"

namespace vesk {
namespace {

using test::ContentOf;
using test::WriteContent;

JournalRecord EditOf(int row, double levelCm) {
  return {.row = row,
          .rawFile = QStringLiteral("001-12345-010203"),
          .time = ReadDateTime(QStringLiteral("01/10/2010 07:30")).value(),
          .readingKind = ReadingKind::Minimum,
          .fromCm = levelCm - 1,
          .levelCm = levelCm};
}

JournalRecord ExtremeOf(double levelCm) {
  return {.kind = JournalRecord::Kind::EditExtreme,
          .time = ReadDateTime(QStringLiteral("02/10/2010 00:00")).value(),
          .readingKind = ReadingKind::Maximum,
          .levelCm = levelCm};
}

JournalRecord CorrectionTo(const char* time) {
  return {.kind = JournalRecord::Kind::CorrectDates,
          .target = ReadDateTime(QString::fromLatin1(time)).value()};
}

class Journal : public testing::Test {
 protected:
  using Records = std::vector<JournalRecord>;

  [[nodiscard]] Records In(const char* suffix = "") const {
    const auto pending = JournalOf(path_ + QLatin1String(suffix));
    EXPECT_TRUE(pending);
    return pending->records;
  }
  /// A run of the program that ends in a crash behind its first edit.
  void CrashAfter(const JournalRecord& record) const { ASSERT_TRUE(EditJournal(path_).Append(record)); }

  const JournalRecord first_ = EditOf(1, 10), second_ = EditOf(2, 20), third_ = EditOf(3, 30);
  QTemporaryDir folder_;
  QString path_ = JournalPath(folder_.filePath(QStringLiteral("log.txt")), QStringLiteral("a=0001.txt"));
};

TEST_F(Journal, GivesBackWhatWasWrittenLessWhatWasUndone) {
  EXPECT_EQ(path_, folder_.filePath(QStringLiteral("log.txt.a=0001.txt.journal")));
  EditJournal journal(path_);
  const Records records = {EditOf(3, 12.5), CorrectionTo("02/10/2010 08:15"), ExtremeOf(-0.25)};
  for (const JournalRecord& record : records) ASSERT_TRUE(journal.Append(record));
  EXPECT_EQ(In(), records);
  ASSERT_TRUE(journal.AppendUndo());
  ASSERT_TRUE(journal.AppendUndo());
  EXPECT_EQ(In(), Records({records[0]}));
  ASSERT_TRUE(journal.Append(records[1]));  // done again
  ASSERT_TRUE(journal.Append(third_));
  EXPECT_EQ(In(), Records({records[0], records[1], third_}));
  ASSERT_TRUE(journal.Remove());
  EXPECT_FALSE(QFileInfo::exists(path_));
}

TEST_F(Journal, CutOrDamagedAnywhereItGivesTheRecordsBefore) {
  EditJournal journal(path_);
  Records records;
  std::vector<qsizetype> ends;  // length of the journal behind each record
  for (int i = 1; i <= 4; ++i) {
    records.push_back(EditOf(i, i / 4.0));
    ASSERT_TRUE(journal.Append(records.back()));
    ends.push_back(ContentOf(path_).size());
  }
  const QByteArray whole = ContentOf(path_);
  for (qsizetype at = 0; at <= whole.size(); ++at) {
    const auto count = std::count_if(ends.begin(), ends.end(), [&](qsizetype end) { return end <= at; });
    const Records before(records.begin(), records.begin() + count);
    ASSERT_EQ(DecodeJournal(whole.first(at)).records, before) << at;
    // A power cut can leave zeros or anything else behind the last whole record.
    ASSERT_EQ(DecodeJournal(whole.first(at) + QByteArray(5, '\0')).records, before) << at;
    if (at == whole.size()) break;
    QByteArray damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 1);
    ASSERT_EQ(DecodeJournal(damaged).records, before) << at;
  }
}

TEST_F(Journal, WorkThatIsPutOffWaitsUntilNewWorkIsDone) {
  CrashAfter(first_);
  ASSERT_TRUE(QFile::copy(path_, path_ + QStringLiteral(".later")));  // a crash while it was put off
  CrashAfter(second_);
  EditJournal journal(path_);
  ASSERT_TRUE(journal.Finish());  // nothing of its own: nothing goes
  ASSERT_TRUE(journal.Append(third_));
  EXPECT_EQ(In(), Records({third_}));
  ASSERT_TRUE(journal.Finish());
  EXPECT_EQ(In(), Records({first_, second_}));
}

TEST_F(Journal, WorkThatWaitsIsOfferedOnceNothingStandsBeforeIt) {
  CrashAfter(first_);
  CrashAfter(second_);
  EXPECT_EQ(EditJournal(path_).Pending()->records, Records({second_}));
  ASSERT_TRUE(EditJournal(path_).Remove());
  EXPECT_EQ(EditJournal(path_).Pending()->records, Records({first_}));

  const QString later = path_ + QStringLiteral(".later");
  for (const bool takenUp : {true, false}) {
    ASSERT_TRUE(WriteContent(path_, ContentOf(path_) + "edit\t2\t01/10"));
    ASSERT_TRUE(QFile::rename(path_, later));  // as a crash can leave it
    EditJournal journal(path_);
    const auto pending = journal.Pending();
    ASSERT_TRUE(pending);
    EXPECT_EQ(pending->records, Records({first_}));
    ASSERT_TRUE(takenUp ? journal.Restart(pending->records, false) : journal.Remove());
    EXPECT_FALSE(JournalOf(path_)->torn);
    EXPECT_FALSE(QFileInfo::exists(later)) << takenUp;
    EXPECT_EQ(QFileInfo::exists(path_), takenUp);
  }
}

TEST_F(Journal, WorkThatIsNotTakenUpIsKeptUnderANameOfItsOwn) {
  for (const JournalRecord& record : {first_, second_}) {
    CrashAfter(record);
    ASSERT_TRUE(EditJournal(path_).Restart({}, true));
  }
  EXPECT_EQ(In(".old"), Records({first_}));
  EXPECT_EQ(In(".old2"), Records({second_}));
  CrashAfter(first_);
  CrashAfter(second_);  // the first one waits, and comes back
  ASSERT_TRUE(EditJournal(path_).Restart({}, true));
  EXPECT_EQ(In(), Records({first_}));
}

}  // namespace
}  // namespace vesk
