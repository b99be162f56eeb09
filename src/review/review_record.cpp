#include "review/review_record.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/record_label.h"
#include "platform/locks.h"
#include "platform/whole_file.h"
#include "review/review_grid.h"

namespace vesk {
namespace {

constexpr char kFormat[] = "vesk4-review-record";
constexpr int kVersion = 1;
constexpr std::chrono::milliseconds kNoPatience(0);
constexpr std::chrono::milliseconds kPatience(3000);  // of a session that waits for another one's writing

QString Key(const char* name) {
  return QLatin1String(name);
}

QJsonObject Encode(const Correction& correction) {
  QJsonObject object{{Key("file"), correction.rawFile},        {Key("time"), DateTimeText(correction.time)},
                     {Key("kind"), KindText(correction.kind)}, {Key("raw"), correction.rawCm},
                     {Key("level"), correction.levelCm},       {Key("by"), correction.by.login},
                     {Key("name"), correction.by.name},        {Key("at"), correction.by.at}};
  if (correction.computed) object[Key("computed")] = true;
  if (correction.occurrence != 1) object[Key("occurrence")] = correction.occurrence;
  const Purpose& why = correction.by.why;
  if (!why.operation.isEmpty()) object[Key("operation")] = why.operation;
  if (!why.reason.isEmpty()) object[Key("reason")] = why.reason;
  if (!correction.discharge.isEmpty()) object[Key("discharge")] = correction.discharge;
  return object;
}

std::optional<Correction> DecodeCorrection(const QJsonObject& object) {
  const auto time = ReadDateTime(object[Key("time")].toString());
  const auto kind = ReadKind(object[Key("kind")].toString());
  const QJsonValue raw = object[Key("raw")];
  const QJsonValue level = object[Key("level")];
  if (!time || !kind || !raw.isDouble() || !level.isDouble()) return std::nullopt;
  return Correction{.rawFile = object[Key("file")].toString(),
                    .time = *time,
                    .kind = *kind,
                    .computed = object[Key("computed")].toBool(),
                    .occurrence = std::max(object[Key("occurrence")].toInt(1), 1),
                    .rawCm = raw.toDouble(),
                    .levelCm = level.toDouble(),
                    .discharge = object[Key("discharge")].toString(),
                    .by = {object[Key("by")].toString(),
                           object[Key("name")].toString(),
                           object[Key("at")].toString(),
                           {object[Key("operation")].toString(), object[Key("reason")].toString()}}};
}

QJsonObject Encode(const RecordState& state) {
  QJsonArray lines;
  for (const RecordedLine& line : state.lines) {
    QJsonObject object = line.correction ? Encode(*line.correction) : QJsonObject();
    // The bytes as they are: a line that could not be read may hold any of them.
    object[Key("line")] = QString::fromLatin1(line.text);
    lines.append(object);
  }
  QJsonArray hidden;
  for (const Correction& correction : state.hidden) hidden.append(Encode(correction));
  QJsonObject object{{Key("changeLog"), QString::fromLatin1(state.logHash)}, {Key("corrections"), lines}};
  if (!hidden.isEmpty()) object[Key("hidden")] = hidden;
  return object;
}

/// Nothing when a part of it cannot be meant.
std::optional<RecordState> DecodeState(const QJsonObject& object) {
  RecordState state{.logHash = object[Key("changeLog")].toString().toLatin1(), .lines = {}, .hidden = {}};
  const QJsonArray lines = object[Key("corrections")].toArray();
  const QJsonArray hidden = object[Key("hidden")].toArray();
  for (const auto& value : lines) {
    const QJsonObject line = value.toObject();
    if (!line[Key("line")].isString()) return std::nullopt;
    state.lines.push_back({line[Key("line")].toString().toLatin1(), DecodeCorrection(line)});
  }
  for (const auto& value : hidden) {
    auto correction = DecodeCorrection(value.toObject());
    if (!correction) return std::nullopt;
    state.hidden.push_back(std::move(*correction));
  }
  return state;
}

/// A name beside the path that is not taken yet.
QString FreePath(const QString& path) {
  const QString first = path + QStringLiteral(".damaged");
  QString kept = first;
  for (int number = 2; QFileInfo::exists(kept); ++number) kept = first + QString::number(number);
  return kept;
}

}  // namespace

const RecordState* ReviewRecord::StateOf(const QByteArray& logHash) const {
  const auto state = std::find_if(states.begin(), states.end(),
                                  [&](const RecordState& known) { return known.logHash == logHash; });
  return state == states.end() ? nullptr : &*state;
}

QString ReviewRecordPath(const QString& changeLogPath) {
  return changeLogPath + QStringLiteral(".review.json");
}

QByteArray HashOf(const QByteArray& content) {
  return QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
}

Result<ReviewRecord> DecodeReviewRecord(const QByteArray& content, const QString& path) {
  ReviewRecord record;
  if (content.isEmpty()) return record;
  const Message what = Wording{u"İnceleme kaydı okunamadı", u"The review record could not be read"};
  QJsonObject object = QJsonDocument::fromJson(content).object();
  if (object.take(Key("format")).toString() != Key(kFormat) ||
      object.take(Key("version")).toInt() != kVersion) {
    return Error{what, path,
                 Wording{u"bozuk veya programın başka bir sürümüne ait",
                         u"it is damaged, or of another version of the program"}};
  }
  const QJsonArray states = object.take(Key("states")).toArray();
  for (const auto& value : states) {
    auto state = DecodeState(value.toObject());
    if (!state)
      return Error{what, path,
                   Wording{u"bozuk veya programın başka bir sürümüne ait",
                           u"it is damaged, or of another version of the program"}};
    record.states.push_back(std::move(*state));
  }
  record.other = object;
  return record;
}

QByteArray EncodeReviewRecord(const ReviewRecord& record) {
  QJsonObject object = record.other;
  object[Key("format")] = Key(kFormat);
  object[Key("version")] = kVersion;
  QJsonArray states;
  for (const RecordState& state : record.states) states.append(Encode(state));
  object[Key("states")] = states;
  return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

Result<ReviewRecord> ReadReviewRecord(const QString& changeLogPath) {
  const QString path = ReviewRecordPath(changeLogPath);
  const auto content =
      ReadWholeFile(path, Wording{u"İnceleme kaydı okunamadı", u"The review record could not be read"});
  if (!content) return content.Failure();
  return DecodeReviewRecord(*content, path);
}

Status UpdateReviewRecord(const QString& changeLogPath, const std::function<void(ReviewRecord&)>& change) {
  const QString path = ReviewRecordPath(changeLogPath);
  const Message what = Wording{u"İnceleme kaydı kaydedilemedi", u"The review record could not be saved"};
  const QString lockPath = path + QStringLiteral(".lock");
  // One of this process can only be left over from a writing whose lock file the disk did not let go.
  const auto holder = LockHolderOf(lockPath);
  const bool leftOver = holder && holder->here && holder->pid == QCoreApplication::applicationPid();
  const auto lock = TryLock(lockPath, QStringLiteral("Vesk4"), leftOver ? kNoPatience : kPatience);
  if (!lock) return lock.Failure();
  if (std::holds_alternative<LockHolder>(*lock) && !leftOver)
    return Error{what, path, Wording{u"başka bir oturum onu yazıyor", u"another session is writing it"}};
  const auto content = ReadWholeFile(path, what);
  if (!content) return content.Failure();
  auto record = DecodeReviewRecord(*content, path);
  if (!record && !QFile::rename(path, FreePath(path))) {
    return Error{what, path,
                 Wording{u"bozuk dosya başka bir adla saklanamadı",
                         u"the damaged file could not be kept under another name"}};
  }
  ReviewRecord next = record ? std::move(*record) : ReviewRecord();
  change(next);
  const QByteArray written = EncodeReviewRecord(next);
  return written == *content ? Status() : WriteWholeFile(path, written, what);
}

}  // namespace vesk
