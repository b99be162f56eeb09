#include "graphs/graph_files.h"

#include <QDir>
#include <QFile>

#include <algorithm>

#include "datafiles/graph_file.h"

namespace vesk {
namespace {

constexpr qsizetype kStationWidth = 9;
constexpr qsizetype kYearWidth = 4;

Error ListFailure(const QString& reason) {
  return {QStringLiteral("The graph list cannot be drawn"), {}, reason};
}

// Loggers of one station number may differ in the prefix alone, which a file name leaves out: the second
// would overwrite the first.
Status NoSharedFile(const std::vector<GraphListEntry>& list, const Language& language) {
  const auto fileOf = [](const GraphListEntry& entry) {
    return GraphFileName(entry.waterYear, entry.station);
  };
  for (auto entry = list.begin(); entry != list.end(); ++entry) {
    const QString file = fileOf(*entry);
    const auto earlier = std::find_if(list.begin(), entry, [&](const GraphListEntry& one) {
      return QString::compare(fileOf(one), file, Qt::CaseInsensitive) == 0;
    });
    if (earlier == entry) continue;
    return ListFailure(
        Either(
            language,
            QStringLiteral("%1 ve %2 istasyonlarının %3 su yılı aynı dosyaya yazılacaktı (%4); birini "
                           "listeden çıkarın"),
            QStringLiteral("%1 and %2 of water year %3 would be written to the same file (%4); take one of "
                           "them out of the list"))
            .arg(earlier->station, entry->station, QString::number(entry->waterYear), file));
  }
  return {};
}

Result<std::vector<GraphListEntry>> ReadList(const QStringList& entries, const Language& language) {
  if (entries.isEmpty()) return ListFailure(QStringLiteral("it is empty"));
  if (entries.size() > kMostGraphStations) {
    return ListFailure(QStringLiteral("it has %1 entries, at most %2 can be drawn together")
                           .arg(entries.size())
                           .arg(kMostGraphStations));
  }
  std::vector<GraphListEntry> list;
  for (const QString& text : entries) {
    const auto entry = ReadGraphListText(text);
    if (!entry) return ListFailure(QStringLiteral("no station and water year in \"%1\"").arg(text));
    list.push_back(*entry);
  }
  if (const Status apart = NoSharedFile(list, language); !apart) return apart.Failure();
  return list;
}

Status DeleteGraphFiles(const QString& dataDirectory) {
  const QStringList names = QDir(dataDirectory).entryList({QStringLiteral("Graf*.*")}, QDir::Files);
  for (const QString& name : names) {
    QFile file(dataDirectory + name);
    if (!file.remove()) {
      return Error{QStringLiteral("An earlier graph data file could not be deleted"), file.fileName(),
                   file.errorString()};
    }
  }
  return {};
}

QString CutMessage(const GraphFileWritten& written, const Language& language) {
  return Either(language, QStringLiteral("%1: %2 seviye altı karakterden uzun, başı kesildi; ilki %3. kayıt"),
                QStringLiteral(
                    "%1: %2 levels have more than six characters and lost their first ones; the first is "
                    "record %3"))
      .arg(written.name)
      .arg(written.cutRecords.size())
      .arg(written.cutRecords.front());
}

QString RefusedMessage(const QString& file, const Language& language) {
  return Either(language, QStringLiteral("%1: başlık kabul edilmedi, sonraki dosyalar alınmadı"),
                QStringLiteral("%1: header refused, later files left out"))
      .arg(file);
}

Status BuildOne(const QString& dataDirectory, const GraphListEntry& entry, const LoadWaterYear& load,
                const Language& language, GraphFilesBuilt& built) {
  const auto loaded = load(entry);
  if (!loaded) return loaded.Failure();
  const auto tell = [&built, of = QStringLiteral("%1/%2: ").arg(entry.station).arg(entry.waterYear)](
                        const QString& message) { built.messages.append(of + message); };
  for (const QString& message : loaded->messages) tell(message);
  if (!loaded->refusedFile.isEmpty()) tell(RefusedMessage(loaded->refusedFile, language));
  const auto written = WriteGraphFile(dataDirectory, entry.waterYear, entry.station, loaded->grid.Readings());
  if (!written) return written.Failure();
  if (written->records == 0) {
    tell(Either(language, QStringLiteral("okuma yok"), QStringLiteral("no readings")));
  }
  if (!written->cutRecords.empty()) tell(CutMessage(*written, language));
  built.files.push_back(
      {dataDirectory + written->name, written->name, StationOfGraphFile(written->name), entry.waterYear});
  return {};
}

}  // namespace

QString GraphListText(const QString& station, const QString& waterYearEntry) {
  return station.trimmed().leftJustified(kStationWidth) + QLatin1Char('/') +
         waterYearEntry.trimmed().left(kYearWidth);
}

std::optional<GraphListEntry> ReadGraphListText(const QString& text) {
  if (text.size() < kStationWidth + kYearWidth) return std::nullopt;
  bool numeric = false;
  const int year = text.right(kYearWidth).toInt(&numeric);
  const QString station = text.left(kStationWidth).trimmed();
  if (!numeric || year <= 0 || station.isEmpty()) return std::nullopt;
  return GraphListEntry{station, year};
}

Result<GraphFilesBuilt> BuildGraphFiles(const QString& dataDirectory, const QStringList& entries,
                                        const LoadWaterYear& load, const Language& language) {
  const auto list = ReadList(entries, language);
  if (!list) return list.Failure();
  if (const Status deleted = DeleteGraphFiles(dataDirectory); !deleted) return deleted.Failure();
  GraphFilesBuilt built;
  for (const GraphListEntry& entry : *list) {
    if (const Status status = BuildOne(dataDirectory, entry, load, language, built); !status)
      return status.Failure();
  }
  return built;
}

}  // namespace vesk
