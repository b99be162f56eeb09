#include "review/raw_files.h"

#include <QFile>
#include <QHash>
#include <QSet>

#include <algorithm>

#include "datafiles/archive.h"
#include "datafiles/header_checks.h"
#include "datafiles/marker.h"
#include "datafiles/numbers.h"
#include "datafiles/raw_file_names.h"
#include "datafiles/tidy_lock.h"
#include "platform/folder_entries.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

bool IsTextName(const QString& name) {
  return name.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive);
}

bool IsRawName(const QString& name) {
  return IsDeliveredName(name) || IsCountedName(name);
}

bool CanBeRead(const FolderEntry& entry) {
  return entry.nameIsText && (entry.kind == EntryKind::File || entry.kind == EntryKind::LinkToFile);
}

std::vector<FolderEntry> EntriesInOrder(const QString& folder) {
  std::vector<FolderEntry> entries = FolderEntries(folder);
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return ComesBefore(a.name, b.name); });
  return entries;
}

/// The "*.txt" files of the folder, and links to such files, in list order.
std::vector<FolderEntry> TextFiles(const QString& dataDirectory) {
  std::vector<FolderEntry> files = EntriesInOrder(dataDirectory);
  std::erase_if(files, [](const FolderEntry& entry) { return !CanBeRead(entry) || !IsTextName(entry.name); });
  return files;
}

bool IsOfStation(const QString& name, const std::optional<StationId>& station) {
  return !station || StationId(name) == *station;
}

/// The name that a file goes under; its own when it keeps that. An unreadable header gives no day count, and
/// a file that has one takes no good file's name. file: gets its header where that was needed.
QString NameInList(const QString& dataDirectory, RawFile& file) {
  const QString& diskName = file.diskName;
  const QString padded = IsCountedName(diskName) ? PaddedCountedName(diskName) : QString();
  if (padded == diskName) return padded;
  file.Take(ReadHeaderOfFile(dataDirectory, diskName));
  if (!file.Usable()) return diskName;
  return padded.isEmpty() ? CountedName(diskName.left(kStemLength), file.header.DaysCovered) : padded;
}

/// Of files that go under one name the last one that still has to get it counts, as it would replace the
/// others. Files that bear it already differ in case only; of these the first one counts.
bool ClaimsBefore(const RawFile& a, const RawFile& b) {
  if (QString::compare(a.listName, b.listName, Qt::CaseInsensitive) != 0) {
    return ComesBefore(a.listName, b.listName);
  }
  const bool claimsA = a.diskName != a.listName;
  const bool claimsB = b.diskName != b.listName;
  if (claimsA != claimsB) return claimsA;
  return claimsA ? ComesBefore(b.diskName, a.diskName) : ComesBefore(a.diskName, b.diskName);
}

/// Leaves one file a name. It knows those that it hides.
std::vector<RawFile> OneFileAName(std::vector<RawFile> files) {
  std::sort(files.begin(), files.end(), ClaimsBefore);
  std::vector<RawFile> shown;
  shown.reserve(files.size());
  for (RawFile& file : files) {
    if (!shown.empty() && QString::compare(shown.back().listName, file.listName, Qt::CaseInsensitive) == 0) {
      shown.back().hides.push_back(file.diskName);
    } else {
      shown.push_back(std::move(file));
    }
  }
  return shown;
}

/// Files of one recording stand side by side in the list. Only where there are several does it matter whether
/// a header can be used.
void MarkSuperseded(const QString& dataDirectory, std::vector<RawFile>& files) {
  std::vector<ListedReadOut> list;
  list.reserve(files.size());
  for (const RawFile& file : files) {
    list.push_back({file.listName, file.Usable(), IsCountedName(file.diskName)});
  }
  const auto sameStem = [&files](std::size_t a, std::size_t b) {
    return QStringView(files[a].listName)
               .left(kStemLength)
               .compare(QStringView(files[b].listName).left(kStemLength), Qt::CaseInsensitive) == 0;
  };
  for (std::size_t i = 0; i < files.size(); ++i) {
    const bool several = (i > 0 && sameStem(i - 1, i)) || (i + 1 < files.size() && sameStem(i, i + 1));
    if (several) list[i].usable = ReadHeaderOfFile(dataDirectory, files[i].diskName).Ok();
  }
  const std::vector<bool> superseded = Superseded(list);
  for (std::size_t i = 0; i < files.size(); ++i) files[i].superseded = superseded[i];
}

/// One pass over a data directory.
class Tidier {
 public:
  explicit Tidier(const QString& dataDirectory) : dataDirectory_(dataDirectory), lock_(dataDirectory) {}

  TidyReport Tidy() {
    if (NamesToGive() && !Lock()) return std::move(report_);
    const std::vector<FolderEntry> files = TextFiles(dataDirectory_);  // as they are now, under the lock
    for (const FolderEntry& file : files) names_[file.name.toCaseFolded()].push_back(file.name);
    for (const FolderEntry& file : files) {
      if (IsRawName(file.name)) TidyOne(file);
    }
    if (renamed_) MakeNamesLast();
    return std::move(report_);
  }

 private:
  [[nodiscard]] bool NamesToGive() const {
    const std::vector<FolderEntry> files = TextFiles(dataDirectory_);
    return std::any_of(files.begin(), files.end(), [](const FolderEntry& file) {
      return IsDeliveredName(file.name) ||
             (IsCountedName(file.name) && PaddedCountedName(file.name) != file.name);
    });
  }

  bool Lock() {
    const Status held = lock_.Take();
    if (!held) report_.failures.push_back(held.Failure().Said());
    return held.Ok();
  }

  void TidyOne(const FolderEntry& file) {
    const Marker marker = MarkerOfFile(dataDirectory_ + file.name);
    const bool ownFile = file.kind == EntryKind::File;
    RawFile named{.diskName = file.name, .listName = {}, .header = {}, .hides = {}};
    const QString to = NameInList(dataDirectory_, named);
    if (!ownFile) {
      if (marker != Marker::None || to != file.name) {
        report_.failures.emplace_back(
            Wording{u"%1 bir bağlantı; okunur, ama işaretlenmez ve adı değiştirilmez",
                    u"%1 is a link; it is read, but neither stamped nor renamed"},
            file.name);
      }
      return;
    }
    if (marker != Marker::None) Stamp(file.name, marker);
    if (to != file.name) Rename(file.name, to);
  }

  void Stamp(const QString& name, Marker marker) {
    if (marker == Marker::OddLine) {
      report_.failures.emplace_back(
          Wording{u"%1, 1. satır: yeni dosya işareti başka uzunlukta bir satırda; olduğu gibi bırakıldı",
                  u"%1, line 1: the marker of a fresh file in a line of another length; left as it is"},
          name);
      return;
    }
    if (const Status stamped = StampMarker(dataDirectory_ + name); !stamped) {
      report_.failures.emplace_back(
          Wording{u"%1 dosyasının okunma işareti silinemedi: %2", u"%1 could not be stamped: %2"}, name,
          stamped.Failure().reason);
    } else {
      report_.done.emplace_back(Wording{u"%1 okundu olarak işaretlendi", u"%1 stamped"}, name);
    }
  }

  void Rename(const QString& from, const QString& to) {
    const Status done = MakeRoom(from, to);
    const Message reason = done ? Move(from, to) : done.Failure().Said();
    if (!reason.IsEmpty()) {
      report_.failures.emplace_back(
          Wording{u"%1 dosyasının adı %2 yapılamadı: %3", u"%1 could not be renamed to %2: %3"}, from, to,
          reason);
      return;
    }
    report_.done.emplace_back(Wording{u"%1 dosyasının adı %2 yapıldı", u"%1 renamed to %2"}, from, to);
    names_[to.toCaseFolded()].push_back(to);
    renamed_ = true;
  }

  /// Whatever bears the new name, case aside, goes to the archive folder.
  Status MakeRoom(const QString& from, const QString& to) {
    QStringList& holders = names_[to.toCaseFolded()];
    holders.removeAll(from);
    while (!holders.isEmpty()) {
      const bool same = SameContent(dataDirectory_ + from, dataDirectory_ + holders.back());
      const auto archived = MoveToArchive(dataDirectory_, holders.back());
      if (!archived) return archived.Failure();
      holders.removeLast();
      if (same) continue;  // the same file once more: nothing to tell
      report_.replaced.push_back(*archived);
      report_.done.emplace_back(Wording{u"%1 başka bir dosyanın adını aldı; o dosya şimdi %2 klasöründe",
                                        u"%1 took the name of another file, which is now in %2"},
                                from, QLatin1String(kArchiveFolder));
    }
    return {};
  }

  /// Empty: done; else the reason.
  [[nodiscard]] Message Move(const QString& from, const QString& to) const {
    const auto moved = MoveToFreeName(dataDirectory_ + from, dataDirectory_ + to, {});
    if (!moved) return moved.Failure().reason;
    return *moved == vesk::Move::Done ? Message() : Wording{u"zaten var", u"it exists already"};
  }

  void MakeNamesLast() {
    const Status synced =
        SyncToDisk(dataDirectory_, Wording{u"Yeni adlar bir elektrik kesintisinde kaybolabilir",
                                           u"The new names may not last through a power cut"});
    if (!synced) report_.failures.push_back(synced.Failure().Said());
  }

  QString dataDirectory_;
  TidyLock lock_;
  QHash<QString, QStringList> names_;  ///< names on disk by their folded form
  TidyReport report_;
  bool renamed_ = false;
};

/// Folded names of the converted files "S<year>-<station>.txt" of the folder.
QSet<QString> ConvertedFiles(const QString& dataDirectory, const QString& station) {
  QSet<QString> names;
  const QString ending = QLatin1Char('-') + station + QStringLiteral(".txt");
  for (const FolderEntry& entry : FolderEntries(dataDirectory)) {
    if (entry.name.endsWith(ending, Qt::CaseInsensitive)) names.insert(entry.name.toCaseFolded());
  }
  return names;
}

}  // namespace

Message RawFile::WhyRefused() const {
  if (!refusal) return {};
  return Message::Joined({Message::Verbatim(TextOf(refusal->fault)), refusal->detail}, QStringLiteral(": "));
}

bool IsStation(const StationId& station) {
  return ParseNumber(station.Text()) > 0;
}

std::vector<StationId> StationsOf(const std::vector<QString>& fileNames) {
  std::vector<StationId> stations;
  QSet<QString> listed;
  for (const QString& name : fileNames) {
    StationId station(name);
    const QString key = station.Key();
    if (!IsStation(station) || listed.contains(key)) continue;
    listed.insert(key);
    stations.push_back(std::move(station));
  }
  return stations;
}

std::vector<StationId> ListStations(const QString& dataDirectory) {
  std::vector<QString> names;
  for (const FolderEntry& file : TextFiles(dataDirectory)) names.push_back(file.name);
  return StationsOf(names);
}

std::vector<RawFile> ListRawFiles(const QString& dataDirectory, const std::optional<StationId>& station) {
  std::vector<RawFile> files;
  for (const FolderEntry& entry : TextFiles(dataDirectory)) {
    if (!IsRawName(entry.name) || !IsOfStation(entry.name, station)) continue;
    RawFile file;
    file.diskName = entry.name;
    file.listName = NameInList(dataDirectory, file);
    files.push_back(std::move(file));
  }
  files = OneFileAName(std::move(files));
  MarkSuperseded(dataDirectory, files);
  return files;
}

void ReadHeaders(const QString& dataDirectory, std::vector<RawFile>& files) {
  for (RawFile& file : files) file.Take(ReadHeaderOfFile(dataDirectory, file.diskName));
}

std::vector<RawFile> FilesInUse(const std::vector<RawFile>& files) {
  std::vector<RawFile> inUse;
  std::copy_if(files.begin(), files.end(), std::back_inserter(inUse),
               [](const RawFile& file) { return !file.superseded; });
  return inUse;
}

std::vector<Message> SkippedEntries(const QString& dataDirectory) {
  std::vector<Message> skipped;
  for (const FolderEntry& entry : EntriesInOrder(dataDirectory)) {
    if (!entry.nameIsText && IsTextName(entry.name)) {
      skipped.emplace_back(
          Wording{u"%1 atlandı; adı geçerli UTF-8 değil", u"%1 is skipped; its name is no valid UTF-8"},
          entry.name);
    } else if (IsRawName(entry.name) && entry.kind == EntryKind::Folder) {
      skipped.emplace_back(Wording{u"%1 bir klasör, ham dosya değil", u"%1 is a folder, not a raw file"},
                           entry.name);
    } else if (IsRawName(entry.name) && entry.kind == EntryKind::Other) {
      skipped.emplace_back(Wording{u"%1 okunabilir bir dosya değil; atlandı",
                                   u"%1 is no file that can be read; it is skipped"},
                           entry.name);
    }
  }
  return skipped;
}

std::vector<Message> HiddenFiles(const std::vector<RawFile>& files) {
  std::vector<Message> hidden;
  for (const RawFile& file : files) {
    for (const QString& name : file.hides) {
      hidden.emplace_back(
          Wording{u"%1 okunmuyor; %2 aynı adla geçiyor", u"%1 is not read; %2 goes under the same name"},
          name, file.diskName);
    }
  }
  return hidden;
}

TidyReport RenameRawFiles(const QString& dataDirectory) {
  TidyReport report = Tidier(dataDirectory).Tidy();
  for (Message& skipped : SkippedEntries(dataDirectory)) report.failures.push_back(std::move(skipped));
  return report;
}

std::vector<StationWaterYear> WaterYearsOf(const std::vector<RawFile>& files, const QString& dataDirectory,
                                           const StationId& station, const QString& convertedWord) {
  std::vector<StationWaterYear> years;
  const QSet<QString> converted =
      convertedWord.isEmpty() ? QSet<QString>() : ConvertedFiles(dataDirectory, station.Text());
  for (const RawFile& file : files) {
    if (!file.Usable()) continue;
    for (int year = file.header.FirstWaterYear; year <= file.header.LastWaterYear; ++year) {
      const bool listed = std::any_of(years.begin(), years.end(),
                                      [&](const StationWaterYear& e) { return e.year.number == year; });
      if (listed || year <= 0) continue;
      const QString name = QStringLiteral("S%1-%2.txt").arg(year).arg(station.Text()).toCaseFolded();
      years.push_back({{year}, converted.contains(name) ? convertedWord : QString()});
    }
  }
  return years;
}

}  // namespace vesk
