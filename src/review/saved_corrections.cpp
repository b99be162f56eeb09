#include "review/saved_corrections.h"

#include <QList>
#include <QStringList>

#include "datafiles/dates.h"
#include "platform/whole_file.h"
#include "review/review_record.h"

namespace vesk {
namespace {

constexpr QLatin1Char kTab('\t');
constexpr QLatin1Char kPlanMark('?');

/// One line of the file.
struct Entry {
  SavedCorrection saved;
  std::optional<PlannedTarget> planned;
};

QString NoTarget() {
  return QStringLiteral("-");
}

QString TargetText(const std::optional<TrueTimes>& target) {
  return target ? TrueTimesText(*target) : NoTarget();
}

QByteArray Line(const Entry& entry) {
  QStringList fields = {entry.saved.rawFile, DateTimeText(entry.saved.first), DateTimeText(entry.saved.last),
                        TargetText(entry.saved.target)};
  if (entry.planned) {
    fields += kPlanMark + QString::fromLatin1(entry.planned->logHash);
    fields += TargetText(entry.planned->target);
  }
  return fields.join(kTab).toUtf8();
}

/// Only as it is written: a time that was cut off could be read as another one.
std::optional<DateTime> ReadTime(const QString& field) {
  const auto time = ReadDateTime(field);
  return time && DateTimeText(*time) == field ? time : std::nullopt;
}

/// False for a field that is neither a time nor the mark for none.
bool ReadTarget(const QString& field, std::optional<TrueTimes>& target) {
  target = ReadTrueTimes(field);
  return target || field == NoTarget();
}

std::optional<Entry> ReadLine(const QByteArray& bytes) {
  const QStringList fields = QString::fromUtf8(bytes).split(kTab);
  if (fields.size() != 4 && fields.size() != 6) return std::nullopt;
  const auto first = ReadTime(fields[1]);
  const auto last = ReadTime(fields[2]);
  if (!first || !last) return std::nullopt;
  Entry entry{.saved = {.rawFile = fields[0], .first = *first, .last = *last, .target = {}}, .planned = {}};
  if (!ReadTarget(fields[3], entry.saved.target)) return std::nullopt;
  if (fields.size() == 4) return entry;
  entry.planned.emplace();
  entry.planned->logHash = fields[4].mid(1).toLatin1();
  if (!fields[4].startsWith(kPlanMark) || !ReadTarget(fields[5], entry.planned->target)) return std::nullopt;
  return entry;
}

/// A plan counts for good when its change log is the one in place, and is dropped otherwise.
void Settle(Entry& entry, const QByteArray& logHash) {
  if (entry.planned && entry.planned->logHash == logHash) entry.saved.target = entry.planned->target;
  entry.planned.reset();
}

bool IsOf(const Entry& entry, const QString& rawFile) {
  return entry.saved.rawFile.compare(rawFile, Qt::CaseInsensitive) == 0;
}

Result<QList<QByteArray>> Lines(const QString& changeLogPath) {
  const auto content = ReadWholeFile(
      SavedCorrectionPath(changeLogPath),
      Wording{u"Kaydedilmiş tarih düzeltmeleri okunamadı", u"The saved date corrections could not be read"});
  if (!content) return content.Failure();
  QList<QByteArray> lines;
  for (const QByteArray& line : content->split('\n')) {
    if (!line.trimmed().isEmpty()) lines.push_back(line.trimmed());
  }
  return lines;
}

}  // namespace

QString SavedCorrectionPath(const QString& changeLogPath) {
  return changeLogPath + QStringLiteral(".dates");
}

Result<std::vector<SavedCorrection>> ReadSavedCorrections(const QString& changeLogPath,
                                                          const QByteArray& logHash) {
  const auto lines = Lines(changeLogPath);
  if (!lines) return lines.Failure();
  std::vector<SavedCorrection> corrections;
  for (const QByteArray& bytes : *lines) {
    auto entry = ReadLine(bytes);
    if (!entry) {
      corrections.push_back({});
      continue;
    }
    Settle(*entry, logHash);
    if (entry->saved.target) corrections.push_back(entry->saved);
  }
  return corrections;
}

Result<CorrectionReading> ReadSavedCorrection(const QString& changeLogPath, const QString& rawFile,
                                              const ReadingSpan& span, const QByteArray& logHash) {
  const auto corrections = ReadSavedCorrections(changeLogPath, logHash);
  if (!corrections) return corrections.Failure();
  CorrectionReading reading;
  reading.correction = {.rawFile = rawFile, .first = span.first, .last = span.last, .target = {}};
  for (const SavedCorrection& saved : *corrections) {
    if (!saved.target) ++reading.unreadable;
    if (saved.rawFile.compare(rawFile, Qt::CaseInsensitive) != 0) continue;
    if (saved.first == span.first && saved.last == span.last && saved.target &&
        FitTogether(*saved.target, span)) {
      reading.correction = saved;
    } else {
      reading.misfit = saved;
    }
  }
  return reading;
}

Status WriteSavedCorrection(const QString& changeLogPath, const SavedCorrection& correction,
                            const std::optional<PlannedTarget>& planned) {
  const Message what = Wording{u"Tarih düzeltmesi kaydedilemedi", u"The date correction could not be saved"};
  const auto lines = Lines(changeLogPath);
  if (!lines) return lines.Failure();
  const auto log = ReadWholeFile(changeLogPath, what);
  if (!log) return log.Failure();
  const QByteArray logHash = HashOf(*log);
  QList<QByteArray> kept;
  for (const QByteArray& bytes : *lines) {
    auto entry = ReadLine(bytes);
    if (entry && IsOf(*entry, correction.rawFile)) continue;
    const bool plan = entry && entry->planned;
    if (plan) Settle(*entry, logHash);
    kept.push_back(plan ? Line(*entry) : bytes);
  }
  if (correction.target || planned) kept.push_back(Line({.saved = correction, .planned = planned}));
  if (kept == *lines) return {};
  QByteArray content;
  for (const QByteArray& line : kept) content += line + "\r\n";
  return WriteWholeFile(SavedCorrectionPath(changeLogPath), content, what);
}

}  // namespace vesk
