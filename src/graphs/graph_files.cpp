#include "graphs/graph_files.h"

#include <QDir>
#include <QFile>

#include "datafiles/graph_file.h"

namespace vesk {
namespace {

constexpr qsizetype kStationWidth = 9;
constexpr qsizetype kYearWidth = 4;

Error ListFailure(const QString& reason) {
  return {QStringLiteral("The graph list cannot be drawn"), {}, reason};
}

Result<std::vector<GraphListEntry>> ReadList(const QStringList& entries) {
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

QString CutMessage(const GraphFileWritten& written) {
  return QStringLiteral(
             "%1: %2 levels have more than six characters and lost their first ones, first in record %3")
      .arg(written.name)
      .arg(written.cutRecords.size())
      .arg(written.cutRecords.front());
}

Status BuildOne(const QString& dataDirectory, const GraphListEntry& entry, const LoadWaterYear& load,
                GraphFilesBuilt& built) {
  const auto loaded = load(entry);
  if (!loaded) return loaded.Failure();
  for (const QString& message : loaded->messages) built.messages.append(message);
  if (!loaded->refusedFile.isEmpty()) {
    built.messages.append(
        QStringLiteral("%1: header refused, later files left out").arg(loaded->refusedFile));
  }
  const auto written = WriteGraphFile(dataDirectory, entry.waterYear, entry.station, loaded->grid.Readings());
  if (!written) return written.Failure();
  if (written->records == 0) {
    built.messages.append(QStringLiteral("%1/%2: no readings").arg(entry.station).arg(entry.waterYear));
  }
  if (!written->cutRecords.empty()) built.messages.append(CutMessage(*written));
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
                                        const LoadWaterYear& load) {
  const auto list = ReadList(entries);
  if (!list) return list.Failure();
  if (const Status deleted = DeleteGraphFiles(dataDirectory); !deleted) return deleted.Failure();
  GraphFilesBuilt built;
  for (const GraphListEntry& entry : *list) {
    if (const Status status = BuildOne(dataDirectory, entry, load, built); !status) return status.Failure();
  }
  return built;
}

}  // namespace vesk
