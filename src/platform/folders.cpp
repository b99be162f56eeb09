#include "platform/folders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>

#include "platform/system_reason.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr std::array<QLatin1String, 5> kDeliveredFiles = {
    kRegisterTemplate, QLatin1String("Sablon.xls"), QLatin1String("Sablon_E.xls"),
    QLatin1String("SablonDebi.xls"), QLatin1String("SablonDebi_E.xls")};

constexpr Wording kNoProgramFolder{u"Program klasörü oluşturulamadı",
                                   u"The program folder could not be made"};
constexpr Wording kNotCopied{u"Dosya kopyalanamadı", u"The file could not be copied"};
constexpr Wording kNoSuchFile{u"böyle bir dosya yok", u"there is no such file"};
constexpr Wording kExists{u"zaten var", u"it exists already"};
constexpr Wording kNoMarker{u"İlk çalışma işareti yazılamadı", u"The first-run marker could not be written"};
constexpr Wording kNotDelivered{u"Programla birlikte gelen dosya bulunamadı",
                                u"A file that comes with the program was not found"};
constexpr Wording kLookedIn{u"bakılan yerler: %1", u"looked in %1"};

bool StartsWithDrive(const QString& text) {
  return text.size() >= 2 && text[1] == QLatin1Char(':') && text[0].unicode() < 0x80 && text[0].isLetter();
}

/// "\name" is the root of the current drive; "\\server" names another machine and is left to the file system.
bool StartsAtDriveRoot(const QString& text) {
  return text.startsWith(QLatin1Char('\\')) && !text.startsWith(QLatin1String("\\\\"));
}

/// Folder that the program's files were installed into; the executable's when they are nowhere.
QString InstalledFolder(const QString& executableFolder) {
  for (const QString& folder : DeliveryFolders(executableFolder)) {
    if (FindEntry(folder, kRegisterTemplate)) return folder;
  }
  return executableFolder;
}

Error NotDelivered(const QString& name, const std::vector<QString>& lookedIn) {
  const QString places = QStringList(lookedIn.begin(), lookedIn.end()).join(QLatin1String(", "));
  return {kNotDelivered, name, Message(kLookedIn, places)};
}

bool IsWritableFolder(const QString& path) {
  const QFileInfo info(path);
  return info.isDir() && info.isWritable();
}

Status FillProgramFolder(const QString& folder, const QString& executableFolder) {
  if (!QDir().mkpath(folder)) return Error{kNoProgramFolder, folder, {}};
  for (const QLatin1String name : kDeliveredFiles) {
    if (FindEntry(folder, name)) continue;
    const Result<QString> source = FindDeliveredFile(executableFolder, name);
    if (!source) continue;  // MissingDeliveredFiles tells
    if (Status copied = CopyNewFile(*source, folder + name); !copied) return copied;
  }
  return {};
}

Status LeaveFirstRunMarker(const QString& folder, const QString& settingsFileName) {
  if (FindEntry(folder, settingsFileName) || FindEntry(folder, kFirstRunMarker)) return {};
  QFile marker(folder + kFirstRunMarker);
  if (!marker.open(QIODevice::WriteOnly)) {
    return Error{kNoMarker, marker.fileName(), SystemReason(marker.errorString())};
  }
  return {};
}

}  // namespace

QString HomeFolder() {
  return WithTrailingSlash(QDir::homePath());
}

QString TranslateFolderText(const QString& text, const QString& home) {
  return TranslatePathText(text, home, home);
}

QString TranslatePathText(const QString& text, const QString& home, const QString& base) {
  if (text.isEmpty()) return {};
  const bool drive = StartsWithDrive(text);
  const bool underHome = drive || StartsAtDriveRoot(text);
  QString rest = drive ? text.mid(2) : text;
  rest.replace(QLatin1Char('\\'), QLatin1Char('/'));
  if (!underHome && rest.startsWith(QLatin1Char('/'))) return rest;
  while (rest.startsWith(QLatin1Char('/'))) rest.remove(0, 1);
  return (underHome ? home : base) + rest;
}

QString WithTrailingSlash(const QString& text) {
  QString path = text;
  while (path.endsWith(QLatin1String("//"))) path.chop(1);
  if (!path.isEmpty() && !path.endsWith(QLatin1Char('/'))) path += QLatin1Char('/');
  return path;
}

bool IsReachableFolder(const QString& path) {
  const QFileInfo info(path);
  return !path.isEmpty() && info.isDir() && info.isExecutable();
}

std::optional<QString> FindEntry(const QString& folder, const QString& name) {
  const QString base = WithTrailingSlash(folder);
  if (base.isEmpty() || name.isEmpty()) return std::nullopt;
  if (QFileInfo::exists(base + name)) return base + name;
  const QStringList entries =
      QDir(base).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
  for (const QString& entry : entries) {
    if (entry.compare(name, Qt::CaseInsensitive) == 0) return base + entry;
  }
  return std::nullopt;
}

std::vector<QString> DeliveryFolders(const QString& executableFolder) {
  const QString beside = WithTrailingSlash(executableFolder);
  return {beside, WithTrailingSlash(QDir::cleanPath(beside + QLatin1String("../share/vesk4")))};
}

Result<QString> FindDeliveredFile(const QString& executableFolder, const QString& name) {
  const std::vector<QString> folders = DeliveryFolders(executableFolder);
  for (const QString& folder : folders) {
    if (const std::optional<QString> path = FindEntry(folder, name)) return *path;
  }
  return NotDelivered(name, folders);
}

std::vector<Error> MissingDeliveredFiles(const QString& programFolder, const QString& executableFolder) {
  std::vector<QString> folders = {programFolder};
  if (!executableFolder.isEmpty()) {
    for (const QString& folder : DeliveryFolders(executableFolder)) {
      if (folder != programFolder) folders.push_back(folder);
    }
  }
  std::vector<Error> missing;
  for (const QLatin1String name : kDeliveredFiles) {
    if (!FindEntry(programFolder, name)) missing.push_back(NotDelivered(name, folders));
  }
  return missing;
}

Status CopyNewFile(const QString& from, const QString& to) {
  if (!QFileInfo::exists(from)) return Error{kNotCopied, from, kNoSuchFile};
  if (QFileInfo::exists(to)) return Error{kNotCopied, to, kExists};
  const Message what = kNotCopied;
  const Result<QByteArray> content = ReadWholeFile(from, what);
  if (!content) return content.Failure();
  return WriteNewFile(to, *content, what);
}

Result<QString> ResolveProgramFolder(const ProgramPlaces& places) {
  const QString executableFolder = WithTrailingSlash(places.executableFolder);
  const QString installed = InstalledFolder(executableFolder);
  QString folder = executableFolder;
  if (installed != executableFolder || !IsWritableFolder(executableFolder)) {
    folder = WithTrailingSlash(places.userDataFolder) + QLatin1String("vesk4/");
  }
  if (const Status filled = FillProgramFolder(folder, executableFolder); !filled) return filled.Failure();
  if (const Status marked = LeaveFirstRunMarker(folder, places.settingsFileName); !marked) {
    return marked.Failure();
  }
  return folder;
}

}  // namespace vesk
