#include "review/edit_journal.h"

#include <QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <optional>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

// One record a line: fields parted by tabs, the last one a checksum of those before it.
//   edit    <row> <date and time> <kind> <level before> <level> <raw file>
//   extreme <date and time> <kind> <level before> <level>
//   dates   <true times>
//   step    <records that follow and belong together> <operation> <reason, percent-encoded>
//   undo    of a record or a step
constexpr char kHeading[] = "journal\t3";
constexpr char kHeadingBefore[] = "journal\t2";  // knew no steps
constexpr char kEditWord[] = "edit";
constexpr char kExtremeWord[] = "extreme";
constexpr char kDatesWord[] = "dates";
constexpr char kStepWord[] = "step";
constexpr char kUndoWord[] = "undo";
constexpr char kOldSuffix[] = ".old";      // work that no longer fits its readings
constexpr char kLaterSuffix[] = ".later";  // work put off by the operator while new work goes on

QByteArray Sealed(const QByteArray& fields) {
  const QByteArray sum = QByteArray::number(qChecksum(fields), 16).rightJustified(4, '0');
  return fields + '\t' + sum + '\n';
}

/// Fields of a sealed line without its end; nothing when the line is not whole.
std::optional<QByteArrayView> Unsealed(QByteArrayView line) {
  const qsizetype tab = line.lastIndexOf('\t');
  if (tab < 0) return std::nullopt;
  const QByteArrayView fields = line.first(tab);
  if (Sealed(fields.toByteArray()).chopped(1) != line) return std::nullopt;
  return fields;
}

bool IsHeading(QByteArrayView fields) {
  return fields == QByteArrayView(kHeading) || fields == QByteArrayView(kHeadingBefore);
}

QByteArray Fields(const JournalRecord& record) {
  const QString time = DateTimeText(record.time);
  const QString kind = KindText(record.readingKind);
  const QString before = NumberText(record.fromCm);
  const QString level = NumberText(record.levelCm);
  QStringList fields;
  switch (record.kind) {
    case JournalRecord::Kind::Edit:
      fields = {
          QLatin1String(kEditWord), QString::number(record.row), time, kind, before, level, record.rawFile};
      break;
    case JournalRecord::Kind::EditExtreme:
      fields = {QLatin1String(kExtremeWord), time, kind, before, level};
      break;
    case JournalRecord::Kind::CorrectDates:
      fields = {QLatin1String(kDatesWord), TrueTimesText(record.target)};
      break;
  }
  return fields.join(QLatin1Char('\t')).toUtf8();
}

/// Time, kind and levels from a field on.
std::optional<JournalRecord> ReadEdit(const QStringList& fields, qsizetype from) {
  const auto time = ReadDateTime(fields.value(from));
  const auto kind = ReadKind(fields.value(from + 1));
  const auto before = ReadWholeNumber(fields.value(from + 2));
  const auto level = ReadLevel(fields.value(from + 3));
  if (!time || !kind || !before || !level) return std::nullopt;
  return JournalRecord{.time = *time, .readingKind = *kind, .fromCm = *before, .levelCm = *level};
}

std::optional<JournalRecord> ReadRecord(const QStringList& fields) {
  const QString& word = fields.front();
  std::optional<JournalRecord> record;
  if (word == QLatin1String(kEditWord)) {
    record = ReadEdit(fields, 2);
    bool rowIsNumber = false;
    if (record) record->row = fields.value(1).toInt(&rowIsNumber);
    if (record) record->rawFile = fields.value(6);
    if (!rowIsNumber) return std::nullopt;
  } else if (word == QLatin1String(kExtremeWord)) {
    record = ReadEdit(fields, 1);
    if (record) record->kind = JournalRecord::Kind::EditExtreme;
  } else if (word == QLatin1String(kDatesWord)) {
    const auto target = ReadTrueTimes(fields.value(1));
    if (target) record = JournalRecord{.kind = JournalRecord::Kind::CorrectDates, .target = *target};
  }
  return record;
}

/// Plays the lines of a journal: what was undone does not count, nor a step that is not whole.
class Playback {
 public:
  /// False for a line that no version of the program writes.
  bool Take(QByteArrayView line) {
    const QStringList fields = QString::fromUtf8(line).split(QLatin1Char('\t'));
    if (awaited_ > 0) return TakeOfStep(fields);
    if (fields.front() == QLatin1String(kUndoWord)) {
      if (!done_.empty()) done_.pop_back();
      return true;
    }
    if (fields.front() == QLatin1String(kStepWord)) return BeginStep(fields);
    std::optional<JournalRecord> record = ReadRecord(fields);
    if (!record) return false;
    done_.push_back({std::move(*record)});
    return true;
  }

  /// A step was begun and its records are not all there.
  [[nodiscard]] bool IsCut() const { return awaited_ > 0; }

  std::vector<JournalRecord> TakeRecords() {
    std::vector<JournalRecord> records;
    for (std::vector<JournalRecord>& step : done_) std::ranges::move(step, std::back_inserter(records));
    return records;
  }

 private:
  bool BeginStep(const QStringList& fields) {
    bool isNumber = false;
    awaited_ = fields.value(1).toInt(&isNumber);
    if (!isNumber || awaited_ <= 0) return false;
    pattern_ = {.step = ++steps_,
                .operation = fields.value(2),
                .reason = QString::fromUtf8(QByteArray::fromPercentEncoding(fields.value(3).toLatin1()))};
    step_.clear();
    return true;
  }

  bool TakeOfStep(const QStringList& fields) {
    std::optional<JournalRecord> record = ReadRecord(fields);
    if (!record) return false;
    record->step = pattern_.step;
    record->operation = pattern_.operation;
    record->reason = pattern_.reason;
    step_.push_back(std::move(*record));
    if (--awaited_ == 0) done_.push_back(std::move(step_));
    return true;
  }

  std::vector<std::vector<JournalRecord>> done_;
  std::vector<JournalRecord> step_;  ///< under way
  JournalRecord pattern_;
  int awaited_ = 0;
  int steps_ = 0;
};

/// The lines of records, each step headed by its own line.
QByteArray LinesOf(const std::vector<JournalRecord>& records) {
  QByteArray lines;
  for (std::size_t first = 0; first < records.size();) {
    const std::size_t end = EndOfStep(records, first);
    const JournalRecord& head = records[first];
    if (head.step > 0) {
      lines += Sealed(QByteArray(kStepWord) + '\t' + QByteArray::number(static_cast<qint64>(end - first)) +
                      '\t' + head.operation.toUtf8() + '\t' + head.reason.toUtf8().toPercentEncoding());
    }
    for (; first < end; ++first) lines += Sealed(Fields(records[first]));
  }
  return lines;
}

Message NotWritten() {
  return Wording{u"Düzeltme günlüğü yazılamadı", u"The edit journal could not be written"};
}

Error JournalError(const QString& path, const Message& reason) {
  return {NotWritten(), path, reason};
}

Status WriteJournal(const QString& path, const std::vector<JournalRecord>& records) {
  return WriteWholeFile(path, Sealed(kHeading) + LinesOf(records), NotWritten());
}

/// Name under which a journal can be kept without touching one that was kept before.
QString FreeOldPath(const QString& path) {
  const QString first = path + QLatin1String(kOldSuffix);
  QString kept = first;
  for (int number = 2; QFileInfo::exists(kept); ++number) kept = first + QString::number(number);
  return kept;
}

/// The same records behind one another; the numbers of their steps may be others.
bool EndsWith(const std::vector<JournalRecord>& records, const std::vector<JournalRecord>& end) {
  const auto same = [](JournalRecord one, JournalRecord other) {
    one.step = other.step = 0;
    return one == other;
  };
  return end.size() <= records.size() && std::equal(end.rbegin(), end.rend(), records.rbegin(), same);
}

}  // namespace

QString JournalPath(const QString& changeLogPath, const QString& rawFileName) {
  const QString middle = rawFileName.isEmpty() ? QString() : QLatin1Char('.') + rawFileName;
  return changeLogPath + middle + QStringLiteral(".journal");
}

void AppendRecords(std::vector<JournalRecord>& records, const std::vector<JournalRecord>& further) {
  int last = 0;
  for (const JournalRecord& record : records) last = std::max(last, record.step);
  for (JournalRecord record : further) {
    if (record.step > 0) record.step += last;
    records.push_back(std::move(record));
  }
}

std::size_t EndOfStep(const std::vector<JournalRecord>& records, std::size_t first) {
  std::size_t end = first + 1;
  while (records[first].step > 0 && end < records.size() && records[end].step == records[first].step) ++end;
  return end;
}

PendingEdits DecodeJournal(QByteArrayView content) {
  PendingEdits pending;
  Playback playback;
  for (bool heading = true; !content.isEmpty(); heading = false) {
    const qsizetype end = content.indexOf('\n');
    const auto fields = end < 0 ? std::nullopt : Unsealed(content.first(end));
    const bool whole = fields && (heading ? IsHeading(*fields) : playback.Take(*fields));
    if (!whole) {
      pending.torn = true;
      break;
    }
    content = content.sliced(end + 1);
  }
  pending.torn = pending.torn || playback.IsCut();
  pending.records = playback.TakeRecords();
  return pending;
}

Result<PendingEdits> JournalOf(const QString& journalPath) {
  const auto content = ReadWholeFile(
      journalPath, Wording{u"Düzeltme günlüğü okunamadı", u"The edit journal could not be read"});
  if (!content) return content.Failure();
  return DecodeJournal(*content);
}

Result<PendingEdits> EditJournal::Pending() const {
  return JournalOf(QFileInfo::exists(path_) ? path_ : LaterPath());
}

Status EditJournal::Restart(const std::vector<JournalRecord>& records, bool keepOld) {
  file_.close();
  if (Status back = BringBack(); !back) return back;
  if (keepOld && QFileInfo::exists(path_)) {
    const QString kept = FreeOldPath(path_);
    const auto content = ReadWholeFile(path_, NotWritten());
    if (!content || !WriteWholeFile(kept, *content, NotWritten()))
      return JournalError(kept, Wording{u"eski günlük saklanamadı", u"the old journal could not be kept"});
  }
  if (records.empty()) return Remove();
  if (Status written = WriteJournal(path_, records); !written) return written;
  file_.setFileName(path_);
  if (!file_.open(QIODevice::ReadWrite) || !file_.seek(file_.size())) {
    return JournalError(path_, SystemReason(file_.errorString()));
  }
  return {};
}

/// A journal that nobody took up makes room for a new one, and waits.
Status EditJournal::SetAside() {
  const QString aside = LaterPath();
  const Result<PendingEdits> waiting = JournalOf(aside);
  if (!waiting) return waiting.Failure();
  const Result<PendingEdits> latest = JournalOf(path_);
  if (!latest) return latest.Failure();
  // A crash between the two steps below must not add the same work twice.
  if (!EndsWith(waiting->records, latest->records)) {
    std::vector<JournalRecord> records = waiting->records;
    AppendRecords(records, latest->records);
    if (Status written = WriteJournal(aside, records); !written) return written;
  }
  if (!QFile::remove(path_))
    return JournalError(path_, Wording{u"eski bir günlük yolda duruyor", u"an older journal is in the way"});
  return {};
}

/// Work that waits takes the place of a journal that is gone.
Status EditJournal::BringBack() {
  if (path_.isEmpty() || QFileInfo::exists(path_) || !QFileInfo::exists(LaterPath())) return {};
  if (QFile::rename(LaterPath(), path_)) return {};
  return JournalError(LaterPath(), Wording{u"kaydedilmemiş eski çalışma bu dosyada duruyor",
                                           u"older unsaved work stays in this file"});
}

QString EditJournal::LaterPath() const {
  return path_.isEmpty() ? QString() : path_ + QLatin1String(kLaterSuffix);
}

Status EditJournal::OpenNew() {
  if (path_.isEmpty()) return JournalError(path_, Wording{u"yüklenmiş kayıt yok", u"no readings are loaded"});
  if (QFileInfo::exists(path_)) {
    if (Status aside = SetAside(); !aside) return aside;
  }
  file_.setFileName(path_);
  if (!file_.open(QIODevice::ReadWrite | QIODevice::NewOnly))
    return JournalError(path_, SystemReason(file_.errorString()));
  Status begun = SyncToDisk(QFileInfo(path_).absolutePath(), NotWritten());
  if (begun) begun = AppendLines(Sealed(kHeading));
  if (!begun) file_.remove();  // the next record begins anew: without its heading it would not be read
  return begun;
}

Status EditJournal::AppendLines(const QByteArray& lines) {
  if (!file_.isOpen()) {
    if (Status opened = OpenNew(); !opened) return opened;
  }
  const qint64 start = file_.pos();
  const bool written = file_.write(lines) == lines.size() && file_.flush();
  if (written && ::fdatasync(file_.handle()) == 0) return {};
  const Message reason = written ? SystemReason(errno) : SystemReason(file_.errorString());
  // A line cut short (disk full) would hide every later one.
  if (file_.resize(start)) file_.seek(start);
  return JournalError(path_, reason);
}

Status EditJournal::Append(const std::vector<JournalRecord>& step) {
  return AppendLines(LinesOf(step));
}

Status EditJournal::AppendUndo() {
  return file_.isOpen() ? AppendLines(Sealed(kUndoWord)) : Status();
}

Status EditJournal::Finish() {
  return file_.isOpen() ? Remove() : Status();
}

Status EditJournal::Remove() {
  const QString pending = QFileInfo::exists(path_) ? path_ : LaterPath();
  if (!pending.isEmpty() && QFileInfo::exists(pending) && !QFile::remove(pending)) {
    return Error{Wording{u"Düzeltme günlüğü silinemedi", u"The edit journal could not be removed"}, pending,
                 Wording{u"klasöre yazılamıyor", u"the folder cannot be written"}};
  }
  file_.close();
  // Where it cannot be brought back it waits on: Pending looks there too.
  if (pending == path_) static_cast<void>(BringBack());
  return {};
}

}  // namespace vesk
