#include "tables/table_record.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr qsizetype kDigestLetters = 64;
constexpr qint64 kLongRecord = 64 * 1024;  // bytes; a record that grew beyond is cut
constexpr qsizetype kLinesKept = 50;

constexpr Wording kNotRemembered{u"Seviye tablosunun yazıldığı kaydedilemedi",
                                 u"The record of the level table could not be written"};

Result<QByteArray> DigestOf(const QString& path) {
  QFile file(path);
  QCryptographicHash digest(QCryptographicHash::Sha256);
  if (file.open(QIODevice::ReadOnly) && digest.addData(&file)) return digest.result().toHex();
  return Error{kNotRemembered, path, SystemReason(file.errorString())};
}

/// Digest and name of each whole line. Two processes may append at once, and a power cut may tear a line.
bool Knows(const QByteArray& record, const QByteArray& digest) {
  for (const QByteArray& line : record.split('\n')) {
    if (line.size() > kDigestLetters && line.at(kDigestLetters) == ' ' && line.startsWith(digest))
      return true;
  }
  return false;
}

/// Keeps the last lines of a long record. One that another process adds meanwhile may be lost: then it is
/// asked about.
Status CutRecord(const QString& path) {
  if (QFileInfo(path).size() < kLongRecord) return {};
  const Result<QByteArray> record = ReadWholeFile(path, kNotRemembered);
  if (!record) return record.Failure();
  const QList<QByteArray> lines = record->split('\n');
  return WriteWholeFile(path, lines.mid(lines.size() - kLinesKept).join('\n'), kNotRemembered);
}

}  // namespace

QString TableRecordPath(const QString& tablePath) {
  const QFileInfo table(tablePath);
  return table.dir().filePath(QLatin1Char('.') + table.fileName() + QStringLiteral(".sha256"));
}

TableFound LookAtTable(const QString& tablePath) {
  if (!QFileInfo(tablePath).exists()) return {};
  const Result<QByteArray> digest = DigestOf(tablePath);
  if (!digest) return {TableOrigin::Unknown, {}};
  const Result<QByteArray> record = ReadWholeFile(TableRecordPath(tablePath), {});
  if (!record || record->isEmpty()) return {TableOrigin::Unknown, *digest};
  return {Knows(*record, *digest) ? TableOrigin::Own : TableOrigin::Changed, *digest};
}

Status RememberTable(const QString& copyPath, const QString& tablePath) {
  const Result<QByteArray> digest = DigestOf(copyPath);
  if (!digest) return digest.Failure();
  const QString path = TableRecordPath(tablePath);
  if (const Status cut = CutRecord(path); !cut) return cut;
  QFile record(path);
  // The line break before makes a torn line of an earlier run harmless; the line goes out in one write.
  const QByteArray line = '\n' + *digest + "  " + QFileInfo(tablePath).fileName().toUtf8() + '\n';
  if (!record.open(QIODevice::Append | QIODevice::Unbuffered) || record.write(line) != line.size()) {
    return Error{kNotRemembered, path, SystemReason(record.errorString())};
  }
  record.close();
  return SyncToDisk(path, kNotRemembered);
}

}  // namespace vesk
