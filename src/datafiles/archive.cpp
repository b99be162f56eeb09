#include "datafiles/archive.h"

#include <QDir>
#include <QFile>

#include <algorithm>

#include "datafiles/file_bytes.h"
#include "datafiles/raw_file_names.h"
#include "platform/folders.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

Status CopyWhole(const QString& from, const QString& to) {
  FileBytes bytes;
  const auto content = bytes.Read(from);
  if (!content) return content.Failure();
  return WriteWholeFile(to, QByteArray::fromRawData(content->data(), content->size()),
                        QStringLiteral("The superseded read-out could not be archived"));
}

}  // namespace

std::vector<QString> SupersededNames(const std::vector<QString>& listedNames) {
  std::vector<QString> superseded;
  for (auto name = listedNames.begin(); name != listedNames.end(); ++name) {
    const QStringView stem = QStringView(*name).left(kStemLength);
    const bool later = std::any_of(name + 1, listedNames.end(), [&](const QString& other) {
      return QStringView(other).left(kStemLength).compare(stem, Qt::CaseInsensitive) == 0;
    });
    if (later) superseded.push_back(*name);
  }
  return superseded;
}

Status CopyToArchive(const QString& dataDirectory, const QString& name) {
  const QString folder = QLatin1String(kArchiveFolder);
  const QString archive = FindEntry(dataDirectory, folder).value_or(dataDirectory + folder);
  if (!QDir().mkpath(archive)) {
    return Error{QStringLiteral("The archive folder could not be made"), archive, QString()};
  }
  return CopyWhole(dataDirectory + name, archive + QLatin1Char('/') + name);
}

ArchiveReport ArchiveDuplicateRawFiles(const QString& dataDirectory,
                                       const std::vector<QString>& listedNames) {
  ArchiveReport report;
  std::vector<QString> present;
  for (const QString& entry : listedNames) {
    const QString name = entry.left(kListNameLength);
    if (QFile::exists(dataDirectory + name)) present.push_back(name);
  }
  for (const QString& name : SupersededNames(present)) {
    const Status copied = CopyToArchive(dataDirectory, name);
    QFile original(dataDirectory + name);
    if (!copied) {
      report.failures.push_back(copied.Failure());
    } else if (!original.remove()) {
      report.failures.push_back(
          {QStringLiteral("The archived read-out could not be removed from the data directory"),
           original.fileName(), original.errorString()});
    } else {
      report.changed = true;
      report.archived.push_back(name);
    }
  }
  return report;
}

}  // namespace vesk
