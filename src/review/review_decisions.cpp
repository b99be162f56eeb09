#include "review/review_decisions.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/raw_file_names.h"
#include "platform/current_user.h"
#include "platform/system_reason.h"
#include "platform/whole_file.h"
#include "review/change_log.h"

namespace vesk {
namespace {

constexpr double kSameValue = 1e-6;
const QString kAccepted = QStringLiteral("acceptedFindings");
const QString kWithdrawn = QStringLiteral("withdrawnFindings");
const QString kApprovals = QStringLiteral("approvals");
const QString kCurve = QStringLiteral("ratingCurve");

void PutAuthor(QJsonObject& object, const Authorship& by) {
  object[QStringLiteral("by")] = by.login;
  object[QStringLiteral("name")] = by.name;
  object[QStringLiteral("at")] = by.at;
  if (!by.why.reason.isEmpty()) object[QStringLiteral("reason")] = by.why.reason;
}

Authorship AuthorIn(const QJsonObject& object) {
  return {object[QStringLiteral("by")].toString(),
          object[QStringLiteral("name")].toString(),
          object[QStringLiteral("at")].toString(),
          {{}, object[QStringLiteral("reason")].toString()}};
}

QJsonObject Encode(const AcceptedFinding& finding) {
  QJsonObject object{{QStringLiteral("rule"), finding.rule},
                     {QStringLiteral("file"), finding.rawFile},
                     {QStringLiteral("from"), DateTimeText(finding.from)},
                     {QStringLiteral("to"), DateTimeText(finding.to)},
                     {QStringLiteral("value"), finding.value}};
  PutAuthor(object, finding.by);
  return object;
}

/// Nothing when it cannot be meant; it stays in the file.
std::optional<AcceptedFinding> DecodeAccepted(const QJsonObject& object) {
  const auto from = ReadDateTime(object[QStringLiteral("from")].toString());
  const auto to = ReadDateTime(object[QStringLiteral("to")].toString());
  const QJsonValue value = object[QStringLiteral("value")];
  if (!from || !to || !value.isDouble()) return std::nullopt;
  return AcceptedFinding{.rule = object[QStringLiteral("rule")].toString(),
                         .rawFile = object[QStringLiteral("file")].toString(),
                         .from = *from,
                         .to = *to,
                         .value = value.toDouble(),
                         .by = AuthorIn(object)};
}

QJsonObject Encode(const UsedCurve& curve) {
  return {{QStringLiteral("file"), curve.path},
          {QStringLiteral("sha256"), QString::fromLatin1(curve.sha256)}};
}

UsedCurve DecodeCurve(const QJsonObject& object) {
  return {object[QStringLiteral("file")].toString(), object[QStringLiteral("sha256")].toString().toLatin1()};
}

QJsonObject Encode(const Approval& approval) {
  QJsonArray files;
  for (const ApprovedFile& file : approval.rawFiles) {
    files.append(QJsonObject{{QStringLiteral("file"), file.name},
                             {QStringLiteral("sha256"), QString::fromLatin1(file.sha256)}});
  }
  QJsonObject object{{QStringLiteral("withdrawn"), approval.withdrawn},
                     {QStringLiteral("rawFiles"), files},
                     {QStringLiteral("changeLog"), QString::fromLatin1(approval.logHash)},
                     {QStringLiteral("readings"), approval.readings},
                     {QStringLiteral("corrections"), approval.corrections},
                     {QStringLiteral("openFindings"), approval.openFindings}};
  if (!approval.curve.path.isEmpty()) object[kCurve] = Encode(approval.curve);
  PutAuthor(object, approval.by);
  return object;
}

Approval DecodeApproval(const QJsonObject& object) {
  Approval approval{.withdrawn = object[QStringLiteral("withdrawn")].toBool(),
                    .by = AuthorIn(object),
                    .logHash = object[QStringLiteral("changeLog")].toString().toLatin1(),
                    .readings = object[QStringLiteral("readings")].toInt(),
                    .corrections = object[QStringLiteral("corrections")].toInt(),
                    .openFindings = object[QStringLiteral("openFindings")].toInt(),
                    .curve = DecodeCurve(object[kCurve].toObject())};
  const QJsonArray files = object[QStringLiteral("rawFiles")].toArray();
  for (const auto& value : files) {
    const QJsonObject file = value.toObject();
    approval.rawFiles.push_back(
        {file[QStringLiteral("file")].toString(), file[QStringLiteral("sha256")].toString().toLatin1()});
  }
  return approval;
}

/// Drops what is meant from the list, and leaves whatever else stands there. dropped: takes it.
QJsonArray Without(const QJsonArray& accepted, const AcceptedFinding& finding,
                   QJsonArray* dropped = nullptr) {
  QJsonArray kept;
  for (const auto& value : accepted) {
    const auto known = DecodeAccepted(value.toObject());
    const bool meant = known && known->IsOf(finding);
    if (!meant) kept.append(value);
    if (meant && dropped != nullptr) dropped->append(value);
  }
  return kept;
}

Result<QByteArray> HashOfFile(const QString& path) {
  QFile file(path);
  QCryptographicHash hash(QCryptographicHash::Sha256);
  if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) {
    return Error{Wording{u"Ham dosya okunamadı", u"The raw file could not be read"}, path,
                 SystemReason(file.errorString())};
  }
  return hash.result().toHex();
}

int CorrectionsIn(const StationSeries& series) {
  int corrections = 0;
  for (int row = 1; row <= series.ReadingCount(); ++row) corrections += series.IsChanged(row) ? 1 : 0;
  return corrections;
}

/// A year's log changes its name when its converted file comes or goes; what was decided of the year stays in
/// the record of the name without the mark.
QString LogOfDecisions(const QString& changeLogPath) {
  static const QRegularExpression marked(QStringLiteral("(-Degisiklikler[0-9]{4}) [^/]*(\\.txt)\\z"));
  return QString(changeLogPath).replace(marked, QStringLiteral("\\1\\2"));
}

/// A year's log can be read under a name that its next save will not use.
QString LogInUse(const QString& dataDirectory, const QString& changeLogPath, const StationSeries& series) {
  const std::vector<StationWaterYear> years = YearsOf(series.Chosen());
  return years.size() == 1 ? ChangeLogToRead(dataDirectory, series.Station(), years.front()) : changeLogPath;
}

void CompareFiles(const Approval& approved, const Approval& present, std::vector<Message>& differences) {
  // By the part of the name that stays: the day count behind it changes when a file is tidied.
  const auto find = [](const Approval& in, const QString& name) {
    return std::ranges::find_if(in.rawFiles, [&](const ApprovedFile& file) {
      return file.name.left(kStemLength).compare(name.left(kStemLength), Qt::CaseInsensitive) == 0;
    });
  };
  for (const ApprovedFile& file : approved.rawFiles) {
    const auto now = find(present, file.name);
    if (now == present.rawFiles.end()) {
      differences.emplace_back(
          Wording{u"%1: onaylanan dosya artık yüklenmiyor", u"%1: was approved and is no longer loaded"},
          file.name);
    } else if (now->sha256 != file.sha256) {
      differences.emplace_back(
          Wording{u"%1: onaydan sonra değişti", u"%1: has changed since it was approved"}, file.name);
    }
  }
  for (const ApprovedFile& file : present.rawFiles) {
    if (find(approved, file.name) != approved.rawFiles.end()) continue;
    differences.emplace_back(Wording{u"%1: onaydan sonra geldi", u"%1: has come since the approval"},
                             file.name);
  }
}

/// Whichever curve is in use now: what was approved are the discharges of that one.
void CompareCurve(const UsedCurve& approved, std::vector<Message>& differences) {
  if (approved.path.isEmpty()) return;
  const auto hash = QFile::exists(approved.path) ? HashOfFile(approved.path) : QByteArray();
  if (!hash || hash->isEmpty()) {
    differences.emplace_back(Wording{u"anahtar eğrisi %1 artık yok veya okunamıyor",
                                     u"the rating curve %1 is gone or cannot be read"},
                             approved.path);
  } else if (*hash != approved.sha256) {
    differences.emplace_back(Wording{u"anahtar eğrisi %1 onaydan sonra değişti",
                                     u"the rating curve %1 has changed since the approval"},
                             approved.path);
  }
}

}  // namespace

bool AcceptedFinding::IsOf(const AcceptedFinding& other) const {
  return rule == other.rule && rawFile.compare(other.rawFile, Qt::CaseInsensitive) == 0 &&
         from == other.from && to == other.to && std::abs(value - other.value) <= kSameValue;
}

const Approval* ReviewDecisions::InForce() const {
  return approvals.empty() || approvals.back().withdrawn ? nullptr : &approvals.back();
}

Result<ReviewDecisions> ReadReviewDecisions(const QString& changeLogPath) {
  const auto record = ReadReviewRecord(LogOfDecisions(changeLogPath));
  if (!record) return record.Failure();
  ReviewDecisions decisions;
  const QJsonArray accepted = record->other[kAccepted].toArray();
  for (const auto& value : accepted) {
    if (auto finding = DecodeAccepted(value.toObject())) decisions.accepted.push_back(std::move(*finding));
  }
  const QJsonArray withdrawn = record->other[kWithdrawn].toArray();
  for (const auto& value : withdrawn) {
    const QJsonObject object = value.toObject();
    if (auto finding = DecodeAccepted(object))
      decisions.withdrawn.push_back(
          {std::move(*finding), AuthorIn(object[QStringLiteral("withdrawn")].toObject())});
  }
  decisions.curve = DecodeCurve(record->other[kCurve].toObject());
  const QJsonArray approvals = record->other[kApprovals].toArray();
  for (const auto& value : approvals) decisions.approvals.push_back(DecodeApproval(value.toObject()));
  return decisions;
}

Status AcceptFinding(const QString& changeLogPath, const AcceptedFinding& finding) {
  return UpdateReviewRecord(LogOfDecisions(changeLogPath), [&](ReviewRecord& record) {
    QJsonArray accepted = Without(record.other[kAccepted].toArray(), finding);
    accepted.append(Encode(finding));
    record.other[kAccepted] = accepted;
  });
}

Status WithdrawAcceptance(const QString& changeLogPath, const AcceptedFinding& finding) {
  return UpdateReviewRecord(LogOfDecisions(changeLogPath), [&](ReviewRecord& record) {
    QJsonArray dropped;
    record.other[kAccepted] = Without(record.other[kAccepted].toArray(), finding, &dropped);
    QJsonArray withdrawn = record.other[kWithdrawn].toArray();
    for (const auto& value : dropped) {
      QJsonObject by;
      PutAuthor(by, PresentAuthor());
      QJsonObject object = value.toObject();
      object[QStringLiteral("withdrawn")] = by;
      withdrawn.append(object);
    }
    if (!withdrawn.isEmpty()) record.other[kWithdrawn] = withdrawn;
  });
}

Status KeepCurveChoice(const QString& changeLogPath, const UsedCurve& curve) {
  return UpdateReviewRecord(LogOfDecisions(changeLogPath), [&](ReviewRecord& record) {
    if (curve.path.isEmpty()) return record.other.remove(kCurve);
    record.other[kCurve] = Encode(curve);
  });
}

Status AddApproval(const QString& changeLogPath, const Approval& approval) {
  return UpdateReviewRecord(LogOfDecisions(changeLogPath), [&](ReviewRecord& record) {
    QJsonArray approvals = record.other[kApprovals].toArray();
    approvals.append(Encode(approval));
    record.other[kApprovals] = approvals;
  });
}

Result<Approval> PresentState(const QString& dataDirectory, const std::vector<ReadOut>& readOuts,
                              const QString& changeLogPath, const StationSeries& series) {
  Approval state;
  for (const ReadOut& readOut : readOuts) {
    const auto hash = HashOfFile(dataDirectory + readOut.diskName);
    if (!hash) return hash.Failure();
    state.rawFiles.push_back({readOut.diskName, *hash});
  }
  const auto log =
      ReadWholeFile(LogInUse(dataDirectory, changeLogPath, series),
                    Wording{u"Değişiklik dosyası okunamadı", u"The change log could not be read"});
  if (!log) return log.Failure();
  state.logHash = HashOf(*log);
  state.readings = series.ReadingCount();
  state.corrections = CorrectionsIn(series);
  if (series.Curve()) state.curve = {series.Curve()->Path(), series.Curve()->Sha256()};
  return state;
}

std::vector<Message> ApprovalDifferences(const Approval& approved, const Approval& present) {
  std::vector<Message> differences;
  CompareFiles(approved, present, differences);
  CompareCurve(approved.curve, differences);
  if (approved.logHash != present.logHash) {
    differences.emplace_back(
        Wording{u"düzeltmeler onaydan sonra değişti (onaylanan: %1, şimdi: %2)",
                u"the corrections have changed since the approval (approved: %1, now: %2)"},
        approved.corrections, present.corrections);
  }
  if (approved.readings != present.readings) {
    differences.emplace_back(
        Wording{u"okuma sayısı %1 iken onaylandı, şimdi %2", u"approved with %1 readings, now there are %2"},
        approved.readings, present.readings);
  }
  return differences;
}

std::vector<Message> ApprovalNotes(const QString& dataDirectory, const std::vector<ReadOut>& readOuts,
                                   const QString& changeLogPath, const StationSeries& series) {
  const auto decisions = ReadReviewDecisions(changeLogPath);
  // A record that cannot be read is told of when its change log is laid.
  const Approval* approved = decisions ? decisions->InForce() : nullptr;
  if (approved == nullptr) return {};
  const auto present = PresentState(dataDirectory, readOuts, changeLogPath, series);
  if (!present) return {present.Failure().Said()};
  const QString who = approved->by.name.isEmpty() ? approved->by.login : approved->by.name;
  std::vector<Message> differences = ApprovalDifferences(*approved, *present);
  if (differences.empty())
    return {Message(Wording{u"Bu su yılı onaylı: %1, %2", u"This water year is approved: %1, %2"}, who,
                    approved->by.at)};
  differences.insert(
      differences.begin(),
      Message(Wording{u"DİKKAT: %1 tarafından onaylanan (%2) su yılı artık onaylandığı gibi değil",
                      u"ATTENTION: the water year that %1 approved (%2) is no longer as it was approved"},
              who, approved->by.at));
  return differences;
}

Authorship PresentAuthor() {
  const UserName user = CurrentUser();
  return {user.login, user.name, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)};
}

}  // namespace vesk
