#include "graphs/graph_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include "datafiles/archive.h"
#include "datafiles/graph_file.h"
#include "graphs/graph_notes.h"
#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

Error ListFailure(const Message& reason) {
  return {Wording{u"Grafik listesi çizilemez", u"The graph list cannot be drawn"}, {}, reason};
}

// Loggers of one station number may differ in the prefix alone, which a file name leaves out: the second
// would overwrite the first.
Status NoSharedFile(const std::vector<GraphListEntry>& list) {
  const auto& fileOf = FileNameOf;
  for (auto entry = list.begin(); entry != list.end(); ++entry) {
    const QString file = fileOf(*entry);
    const auto earlier = std::find_if(list.begin(), entry, [&](const GraphListEntry& one) {
      return QString::compare(fileOf(one), file, Qt::CaseInsensitive) == 0;
    });
    if (earlier == entry) continue;
    return ListFailure(Message(
        Wording{u"%1 ve %2 istasyonlarının %3 su yılı aynı dosyaya yazılacaktı (%4); birini listeden çıkarın",
                u"%1 and %2 of water year %3 would be written to the same file (%4); take one of them out of "
                u"the list"},
        earlier->station.Text(), entry->station.Text(), entry->year.Text(), file));
  }
  return {};
}

Status CheckList(const std::vector<GraphListEntry>& list) {
  if (list.empty()) return ListFailure(Wording{u"liste boş", u"it is empty"});
  if (list.size() > kMostGraphStations) {
    return ListFailure({Wording{u"%1 satırı var, en çok %2 grafik birlikte çizilebilir",
                                u"it has %1 entries, at most %2 can be drawn together"},
                        list.size(), kMostGraphStations});
  }
  return NoSharedFile(list);
}

// Links and whatever else is no plain file: neither read, deleted nor written through.
bool IsPlainFile(const QFileInfo& file) {
  return file.isFile() && !file.isSymLink();
}

QFileInfoList GraphPatternEntries(const QString& dataDirectory) {
  return QDir(dataDirectory)
      .entryInfoList({QStringLiteral("Graf*.*")},
                     QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

Status DeleteFile(const QString& path) {
  QFile file(path);
  if (file.remove() || !file.exists()) return {};  // another window may have been quicker
  return Error{Wording{u"Önceki bir grafik veri dosyası silinemedi",
                       u"An earlier graph data file could not be deleted"},
               path, SystemReason(file.errorString())};
}

// Takes one file of the pattern out of the folder.
Status ClearFile(const QString& dataDirectory, const QString& name, const Language& language,
                 QStringList& messages) {
  const QString path = dataDirectory + name;
  const auto content = ReadWholeFile(path, {});
  if (content && IsOwnGraphFile(name, *content)) return DeleteFile(path);
  const Result<QString> moved = MoveToArchive(dataDirectory, name);
  if (moved) {
    messages.append(language.Say(Wording{u"%1: programın grafik dosyası değil, %2 olarak taşındı",
                                         u"%1: no graph file of the program, moved to %2"},
                                 name, QLatin1String(kArchiveFolder) + QLatin1Char('/') + *moved));
  } else {
    messages.append(language.Say(Wording{u"%1: programın grafik dosyası değil, yerinde bırakıldı",
                                         u"%1: no graph file of the program, left where it is"},
                                 name) +
                    QStringLiteral(" (") + language.Say(moved.Failure()) + QLatin1Char(')'));
  }
  return {};
}

Status ClearGraphFiles(const QString& dataDirectory, const Language& language, QStringList& messages) {
  for (const QFileInfo& entry : GraphPatternEntries(dataDirectory)) {
    if (!IsPlainFile(entry)) {
      messages.append(language.Say(
          Wording{u"%1: bağlantı ya da klasör, yerinde bırakıldı", u"%1: a link or folder, left where it is"},
          entry.fileName()));
      continue;
    }
    const Status cleared = ClearFile(dataDirectory, entry.fileName(), language, messages);
    if (!cleared) return cleared;
  }
  return {};
}

// A link or folder that has the name of a file to be written.
Status NothingInTheWay(const QString& dataDirectory, const std::vector<GraphListEntry>& list) {
  for (const GraphListEntry& entry : list) {
    const QFileInfo file(dataDirectory + FileNameOf(entry));
    const bool there = file.exists() || file.isSymLink();
    if (there && !IsPlainFile(file)) {
      return Error{Wording{u"Grafik veri dosyası yazılamadı", u"The graph data file could not be written"},
                   file.filePath(), Wording{u"bu bir dosya değil", u"it is no file"}};
    }
  }
  return {};
}

QString CutMessage(const GraphFileWritten& written, const Language& language) {
  return language.Say(
      Wording{
          u"%1: %2 seviye altı karakterden uzun, başı kesildi; ilki %3. kayıt",
          u"%1: %2 levels have more than six characters and lost their first ones; the first is record %3"},
      written.name, written.cutRecords.size(), written.cutRecords.front());
}

QString RefusedMessage(const QString& file, const Language& language) {
  return language.Say(Wording{u"%1: başlık kabul edilmedi, sonraki dosyalar alınmadı",
                              u"%1: header refused, later files left out"},
                      file);
}

// One entry of the list with what its load gave.
struct LoadedEntry {
  GraphListEntry entry;
  LoadedReadings loaded;
};

QString NameOf(const GraphListEntry& entry) {
  return entry.station.Text().trimmed() + QLatin1Char('/') + entry.year.Text();
}

// Everything is loaded before anything is deleted. Fails when nothing can be loaded.
Result<std::vector<LoadedEntry>> LoadAll(const std::vector<GraphListEntry>& list, const LoadWaterYear& load,
                                         const Language& language, GraphFilesBuilt& built) {
  std::vector<LoadedEntry> all;
  std::optional<Error> failure;
  for (const GraphListEntry& entry : list) {
    auto loaded = load(entry);
    if (loaded) {
      built.notes += NotesOfLoad(*loaded, NameOf(entry), language);
      all.push_back({entry, std::move(*loaded)});
      continue;
    }
    if (!failure) failure = loaded.Failure();
    const QString leftOut = NameOf(entry) + QStringLiteral(": ") + language.Say(loaded.Failure());
    built.messages.append(leftOut);
    built.notes.append(leftOut);
  }
  if (all.empty() && failure) return *failure;
  return all;
}

Status WriteOne(const QString& dataDirectory, const LoadedEntry& one, const Language& language,
                GraphFilesBuilt& built) {
  const auto& [entry, loaded] = one;
  const auto tell = [&built, of = NameOf(entry) + QStringLiteral(": ")](const QString& message) {
    built.messages.append(of + message);
  };
  for (const Message& message : loaded.messages) tell(language.Say(message));
  if (!loaded.refusedFile.isEmpty()) tell(RefusedMessage(loaded.refusedFile, language));
  const auto written = WriteGraphFile(dataDirectory, entry.year.number, entry.station.Text().trimmed(),
                                      loaded.series.ReadingsAsShown());
  if (!written) return written.Failure();
  if (written->records == 0) {
    tell(language.Say(Wording{u"okuma yok", u"no readings"}));
  }
  if (!written->cutRecords.empty()) tell(CutMessage(*written, language));
  built.files.push_back(
      {dataDirectory + written->name, written->name, StationOfGraphFile(written->name), entry.year.number});
  return {};
}

}  // namespace

QString FileNameOf(const GraphListEntry& entry) {
  return GraphFileName(entry.year.number, entry.station.Text().trimmed());
}

QString GraphListEntry::Text() const {
  return station.Text().trimmed().leftJustified(StationId::kLength) + QLatin1Char('/') + year.Text();
}

Result<GraphFilesBuilt> BuildGraphFiles(const QString& dataDirectory, const std::vector<GraphListEntry>& list,
                                        const LoadWaterYear& load, const Language& language) {
  if (const Status fine = CheckList(list); !fine) return fine.Failure();
  if (const Status free = NothingInTheWay(dataDirectory, list); !free) return free.Failure();
  GraphFilesBuilt built;
  const auto loaded = LoadAll(list, load, language, built);
  if (!loaded) return loaded.Failure();
  const Status cleared = ClearGraphFiles(dataDirectory, language, built.messages);
  if (!cleared) return cleared.Failure();
  for (const LoadedEntry& one : *loaded) {
    if (const Status status = WriteOne(dataDirectory, one, language, built); !status) return status.Failure();
  }
  return built;
}

}  // namespace vesk
