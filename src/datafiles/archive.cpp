#include "datafiles/archive.h"

#include <QDir>
#include <QFile>
#include <QHash>

#include "datafiles/file_bytes.h"
#include "datafiles/raw_file_names.h"
#include "datafiles/raw_header.h"
#include "datafiles/tidy_lock.h"
#include "platform/folder_entries.h"
#include "platform/folders.h"
#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr int kMostNumbers = 9999;

Message NotArchived() {
  return Wording{u"Eski okuma dosyası arşivlenemedi", u"The superseded read-out could not be archived"};
}

QString StemOf(const QString& name) {
  return name.left(kStemLength).toCaseFolded();
}

/// "a=0182.txt", "a=0182 (2).txt", "a=0182 (3).txt" ...
QString NumberedName(const QString& name, int number) {
  if (number == 1) return name;
  const qsizetype ending = name.lastIndexOf(QLatin1Char('.'));
  return name.left(ending) + QStringLiteral(" (%1)").arg(number) + name.mid(ending);
}

Result<QString> ArchiveFolder(const QString& dataDirectory) {
  const QString folder = QLatin1String(kArchiveFolder);
  const QString archive = FindEntry(dataDirectory, folder).value_or(dataDirectory + folder);
  if (!QDir().mkpath(archive)) {
    return Error{
        Wording{u"Arşiv klasörü oluşturulamadı", u"The archive folder could not be made"}, archive, {}};
  }
  return archive + QLatin1Char('/');
}

/// The archive folder leads to another disk. The file goes when its copy has been read back, not before.
Result<Move> CopyAndRemove(const QString& from, const QString& to) {
  if (KindOf(to) != EntryKind::Other || QFile::exists(to)) return Move::NameTaken;
  FileBytes bytes;
  const auto content = bytes.Read(from);
  if (!content) return content.Failure();
  const auto copy = QByteArray::fromRawData(content->data(), content->size());
  if (const Status written = WriteNewFile(to, copy, NotArchived()); !written) return written.Failure();
  QFile original(from);
  if (SameContent(from, to) && original.remove()) return Move::Done;
  return Error{Wording{u"Arşivlenen okuma dosyası veri dizininden silinemedi",
                       u"The archived read-out could not be removed from the data directory"},
               from, SystemReason(original.errorString())};
}

Result<Move> MoveTo(const QString& from, const QString& to) {
  auto moved = MoveToFreeName(from, to, NotArchived());
  if (!moved || *moved != Move::OtherDisk) return moved;
  return CopyAndRemove(from, to);
}

/// A content is kept once. Only the copy with the higher number ever goes, so two programs that look at each
/// other's copies cannot both remove theirs.
QString KeptOnce(const QString& archive, const QString& name, int number) {
  for (int lower = 1; lower < number; ++lower) {
    const QString other = NumberedName(name, lower);
    if (!SameContent(archive + other, archive + NumberedName(name, number))) continue;
    if (QFile::remove(archive + NumberedName(name, number))) return other;
  }
  return NumberedName(name, number);
}

}  // namespace

std::vector<bool> Superseded(const std::vector<ListedReadOut>& list) {
  QHash<QString, std::size_t> lastUsable;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (list[i].usable) lastUsable.insert(StemOf(list[i].name), i);
  }
  std::vector<bool> superseded;
  superseded.reserve(list.size());
  for (std::size_t i = 0; i < list.size(); ++i) {
    const auto last = lastUsable.constFind(StemOf(list[i].name));
    const bool laterOne = last != lastUsable.cend() && *last > i;
    superseded.push_back(laterOne && (list[i].usable || list[i].counted));
  }
  return superseded;
}

bool SameContent(const QString& pathA, const QString& pathB) {
  FileBytes first;
  FileBytes second;
  const auto one = first.Read(pathA);
  const auto other = second.Read(pathB);
  return one && other && *one == *other;
}

Result<QString> MoveToArchive(const QString& dataDirectory, const QString& name) {
  const QString from = dataDirectory + name;
  if (KindOf(from) == EntryKind::LinkToFile) {
    return Error{
        NotArchived(), from,
        Wording{u"bu bir bağlantı; bağlantılara dokunulmaz", u"it is a link; links are left as they are"}};
  }
  const auto archive = ArchiveFolder(dataDirectory);
  if (!archive) return archive.Failure();
  for (int number = 1; number <= kMostNumbers; ++number) {
    const QString to = *archive + NumberedName(name, number);
    const auto moved = MoveTo(from, to);
    if (!moved) return moved.Failure();
    if (*moved == Move::NameTaken) continue;
    const Status synced = SyncToDisk(*archive, NotArchived());
    if (synced) return KeptOnce(*archive, name, number);
    (void)MoveTo(to, from);  // told in any case, and nothing is lost where it stands
    return synced.Failure();
  }
  return Error{NotArchived(), from, Wording{u"zaten var", u"it exists already"}};
}

ArchiveReport ArchiveDuplicateRawFiles(const QString& dataDirectory,
                                       const std::vector<QString>& listedNames) {
  ArchiveReport report;
  QHash<QString, int> filesOfStem;
  std::vector<ListedReadOut> present;
  for (const QString& entry : listedNames) {
    const QString name = entry.left(kListNameLength);
    if (!QFile::exists(dataDirectory + name)) continue;
    present.push_back({.name = name, .usable = true, .counted = IsCountedName(name)});
    ++filesOfStem[StemOf(name)];
  }
  for (ListedReadOut& file : present) {
    if (filesOfStem.value(StemOf(file.name)) < 2) continue;
    file.usable = ReadHeaderOfFile(dataDirectory, file.name).Ok();
  }
  const std::vector<bool> superseded = Superseded(present);
  TidyLock lock(dataDirectory);
  for (std::size_t i = 0; i < present.size(); ++i) {
    if (!superseded[i]) continue;
    if (const Status held = lock.Take(); !held) {
      report.failures.push_back(held.Failure());
      return report;
    }
    const auto archived = MoveToArchive(dataDirectory, present[i].name);
    if (archived) {
      report.changed = true;
      report.archived.push_back(*archived);
    } else if (!QFile::exists(dataDirectory + present[i].name)) {
      report.changed = true;  // another program that tidies was quicker
    } else {
      report.failures.push_back(archived.Failure());
    }
  }
  return report;
}

}  // namespace vesk
