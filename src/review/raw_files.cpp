#include "review/raw_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>

#include "datafiles/archive.h"
#include "datafiles/file_bytes.h"
#include "datafiles/raw_file_names.h"

namespace vesk {
namespace {

std::vector<QString> TextFileNames(const QString& dataDirectory) {
  const QStringList names = QDir(dataDirectory).entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
  std::vector<QString> result;
  for (const QString& name : names) {
    if (name.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive)) result.push_back(name);
  }
  std::sort(result.begin(), result.end(), ComesBefore);
  return result;
}

bool IsOfStation(const QString& name, const QString& station) {
  return station.isEmpty() || name.startsWith(station, Qt::CaseInsensitive);
}

RawHeaderReading ReadHeader(const QString& dataDirectory, const QString& diskName, bool stamp) {
  HeaderSinks sinks;
  sinks.dataDirectory = dataDirectory;
  sinks.stampMarker = stamp;
  return ReadRawHeader(diskName, HeaderScope::WaterYear, HeaderMode::HeaderOnly, sinks);
}

/// Renames, replacing what bears the new name. Empty: done; else the reason.
QString Rename(const QString& dataDirectory, const QString& from, const QString& to) {
  std::error_code problem;
  std::filesystem::rename((dataDirectory + from).toStdU16String(), (dataDirectory + to).toStdU16String(),
                          problem);
  return problem ? QString::fromLocal8Bit(problem.message().c_str()) : QString();
}

bool BeginsWithMarker(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) && file.read(10).contains("sefnor");
}

bool SameContent(const QString& a, const QString& b) {
  FileBytes first;
  FileBytes second;
  const auto one = first.Read(a);
  const auto other = second.Read(b);
  return one && other && *one == *other;
}

/// A renaming replaces what bears the new name. Unless that is the same file once more, a copy goes to the
/// archive.
Status KeepReplaced(const QString& dataDirectory, const QString& from, const QString& to,
                    TidyReport& report) {
  const bool replaces = QFileInfo(dataDirectory + to).isFile() && from != to;
  if (!replaces || SameContent(dataDirectory + from, dataDirectory + to)) return {};
  if (Status kept = CopyToArchive(dataDirectory, to); !kept) return kept;
  report.replaced.push_back(to);
  report.done.push_back(QStringLiteral("%1 took the name of another file, which is now in Arsiv").arg(from));
  return {};
}

void RenameOne(const QString& dataDirectory, const QString& from, const QString& to, TidyReport& report) {
  const Status kept = KeepReplaced(dataDirectory, from, to, report);
  const QString reason = kept ? Rename(dataDirectory, from, to) : kept.Failure().Text();
  if (reason.isEmpty()) {
    report.done.push_back(QStringLiteral("%1 renamed to %2").arg(from, to));
  } else {
    report.failures.push_back(QStringLiteral("%1 could not be renamed to %2: %3").arg(from, to, reason));
  }
}

/// Reads the header and stamps a fresh file on the way.
RawHeaderReading StampOne(const QString& dataDirectory, const QString& name, TidyReport& report) {
  const bool fresh = BeginsWithMarker(dataDirectory + name);
  RawHeaderReading reading = ReadHeader(dataDirectory, name, true);
  if (fresh && BeginsWithMarker(dataDirectory + name)) {
    report.failures.push_back(QStringLiteral("%1 could not be stamped").arg(name));
  } else if (fresh) {
    report.done.push_back(QStringLiteral("%1 stamped").arg(name));
  }
  return reading;
}

void MarkSuperseded(std::vector<RawFile>& files) {
  std::vector<QString> names;
  for (const RawFile& file : files) names.push_back(file.listName);
  const std::vector<QString> superseded = SupersededNames(names);
  for (RawFile& file : files) file.superseded = ListContains(superseded, file.listName);
}

}  // namespace

bool IsStationEntry(const QString& entry) {
  return ParseNumber(entry) > 0;
}

std::vector<QString> ListStations(const QString& dataDirectory) {
  std::vector<QString> stations;
  for (const QString& name : TextFileNames(dataDirectory)) {
    const QString entry = name.left(kStationEntryLength);
    if (IsStationEntry(entry) && !ListContains(stations, entry)) stations.push_back(entry);
  }
  return stations;
}

std::vector<RawFile> ListRawFiles(const QString& dataDirectory, const QString& station) {
  std::vector<RawFile> files;
  for (const QString& name : TextFileNames(dataDirectory)) {
    if (!IsOfStation(name, station)) continue;
    if (IsCountedName(name)) {
      files.push_back({.diskName = name, .listName = PaddedCountedName(name), .reading = {}});
    } else if (IsDeliveredName(name)) {
      RawFile file{.diskName = name, .listName = {}, .reading = ReadHeader(dataDirectory, name, false)};
      file.listName = CountedName(name.left(kStemLength), file.reading.header.DaysCovered);
      files.push_back(std::move(file));
    }
  }
  // A file as delivered takes the place of one that already bears its new name.
  std::stable_sort(files.begin(), files.end(), [](const RawFile& a, const RawFile& b) {
    if (QString::compare(a.listName, b.listName, Qt::CaseInsensitive) != 0) {
      return ComesBefore(a.listName, b.listName);
    }
    return IsDeliveredName(a.diskName) && !IsDeliveredName(b.diskName);
  });
  files.erase(std::unique(files.begin(), files.end(),
                          [](const RawFile& a, const RawFile& b) {
                            return QString::compare(a.listName, b.listName, Qt::CaseInsensitive) == 0;
                          }),
              files.end());
  MarkSuperseded(files);
  return files;
}

void ReadHeaders(const QString& dataDirectory, std::vector<RawFile>& files) {
  for (RawFile& file : files) file.reading = ReadHeader(dataDirectory, file.diskName, false);
}

std::vector<RawFile> FilesInUse(const std::vector<RawFile>& files) {
  std::vector<RawFile> inUse;
  std::copy_if(files.begin(), files.end(), std::back_inserter(inUse),
               [](const RawFile& file) { return !file.superseded; });
  return inUse;
}

std::vector<QString> FoldersNamedLikeRawFiles(const QString& dataDirectory) {
  std::vector<QString> folders;
  for (const QString& name : QDir(dataDirectory).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
    if (IsDeliveredName(name) || IsCountedName(name)) folders.push_back(name);
  }
  return folders;
}

TidyReport RenameRawFiles(const QString& dataDirectory) {
  TidyReport report;
  for (const QString& name : TextFileNames(dataDirectory)) {
    if (IsDeliveredName(name)) {
      const RawHeaderReading reading = StampOne(dataDirectory, name, report);
      RenameOne(dataDirectory, name, CountedName(name.left(kStemLength), reading.header.DaysCovered), report);
    } else if (IsCountedName(name)) {
      if (BeginsWithMarker(dataDirectory + name)) StampOne(dataDirectory, name, report);
      if (PaddedCountedName(name) != name) RenameOne(dataDirectory, name, PaddedCountedName(name), report);
    }
  }
  for (const QString& name : FoldersNamedLikeRawFiles(dataDirectory)) {
    report.failures.push_back(QStringLiteral("%1 is a folder, not a raw file").arg(name));
  }
  return report;
}

std::vector<WaterYearEntry> WaterYearsOf(const std::vector<RawFile>& files, const QString& dataDirectory,
                                         const QString& station, const QString& convertedWord) {
  std::vector<WaterYearEntry> years;
  for (const RawFile& file : files) {
    if (!file.reading.Usable()) continue;
    for (int year = file.reading.header.FirstWaterYear; year <= file.reading.header.LastWaterYear; ++year) {
      const bool listed = std::any_of(years.begin(), years.end(),
                                      [&](const WaterYearEntry& e) { return e.waterYear == year; });
      if (listed || year <= 0) continue;
      const QString converted = QStringLiteral("%1S%2-%3.txt").arg(dataDirectory).arg(year).arg(station);
      const QString mark = QFile::exists(converted) ? convertedWord : QString();
      years.push_back({year, QStringLiteral("%1 %2").arg(year).arg(mark)});
    }
  }
  return years;
}

}  // namespace vesk
