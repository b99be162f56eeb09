#include "shell/settings.h"

#include <QDir>
#include <QFile>

#include "datafiles/archive.h"
#include "platform/system_reason.h"

namespace vesk {
namespace {

void Collect(const Status& status, std::vector<Error>& failures) {
  if (!status) failures.push_back(status.Failure());
}

Status MakeFolder(const QString& path) {
  if (QDir().mkpath(path)) return {};
  return Error{Wording{u"Klasör oluşturulamadı", u"The folder could not be made"}, path, {}};
}

Status DeleteMarker(const QString& programFolder) {
  QFile marker(FindEntry(programFolder, kFirstRunMarker).value_or(programFolder + kFirstRunMarker));
  if (marker.remove()) return {};
  return Error{Wording{u"İlk çalışma işareti silinemedi", u"The first-run marker could not be deleted"},
               marker.fileName(), SystemReason(marker.errorString())};
}

}  // namespace

std::vector<ProfileEntry> FirstRunOptionEntries() {
  const auto entry = [](const char* key, const char* value) {
    return ProfileEntry(QLatin1String(key), QLatin1String(value));
  };
  return {entry("01", "1"),     entry("02", "-2147483643"), entry("03", "16711680"), entry("04", "0"),
          entry("05", "0"),     entry("06", "16711680"),    entry("07", "33023"),    entry("11", "3"),
          entry("12", "False"), entry("13", "True"),        entry("21", "TURKCE")};
}

QString Settings::EncodingName() const {
  const Result<ProfileText> profile = ProfileText::Load(path_);
  const bool isUtf8 = profile && profile->Encoding() == ProfileEncoding::Utf8;
  return isUtf8 ? QStringLiteral("UTF-8") : QStringLiteral("Windows-1254");
}

QString Settings::ReadSetting(const QString& section, const QString& key) const {
  return ReadSettings(section, {key}).front();
}

std::vector<QString> Settings::ReadSettings(const QString& section, const std::vector<QString>& keys) const {
  const Result<ProfileText> profile = ProfileText::Load(path_);
  std::vector<QString> values(keys.size());
  for (std::size_t i = 0; profile && i < keys.size(); ++i) {
    const QString value = profile.Value().Value(section, keys[i]).value_or(QString());
    if (value != QLatin1String("(error)")) values[i] = value;  // what a missing key has always read as
  }
  return values;
}

Status Settings::WriteSetting(const QString& section, const QString& key, const QString& value) {
  return WriteSettings(section, {{key, value}});
}

Status Settings::WriteSettings(const QString& section, const std::vector<ProfileEntry>& entries) {
  Status written = WriteProfileValues(path_, section, entries);
  for (const auto& [key, value] : entries) {
    if (written && section == kGeneralSection && key == kDataDirectoryKey) dataDirectory_ = value;
  }
  return written;
}

Status Settings::MergeSettings(const QString& section,
                               const std::vector<std::pair<QString, std::optional<QString>>>& entries) {
  return UpdateProfile(path_, [&](ProfileText& profile) {
    for (const auto& [key, value] : entries) {
      if (value || !profile.Value(section, key)) profile.SetValue(section, key, value.value_or(QString()));
    }
  });
}

QString Settings::ReadDataDirectory() {
  const QString stored = ReadSetting(kGeneralSection, kDataDirectoryKey);
  QString folder = NormaliseFolderPath(stored, home_);
  dataDirectory_ = folder;
  if (folder == stored) return folder;
  // The folder is usable all the same; start-up compares the stored value and tells the operator. A directory
  // that another window has chosen meanwhile stays.
  [[maybe_unused]] const Status written = UpdateProfile(path_, [&](ProfileText& profile) {
    const QString now = profile.Value(kGeneralSection, kDataDirectoryKey).value_or(QString());
    if (now == stored) profile.SetValue(kGeneralSection, kDataDirectoryKey, folder);
  });
  return folder;
}

Status Settings::StoreDataDirectory(const QString& folder) {
  if (folder == dataDirectory_) return {};
  return WriteSetting(kGeneralSection, kDataDirectoryKey, folder);
}

QString NormaliseFolderPath(const QString& text, const QString& home) {
  const QString translated = TranslateFolderText(text, home);
  if (translated.isEmpty()) return home;
  QString folder = WithTrailingSlash(QDir::cleanPath(translated));
  return IsReachableFolder(folder) ? folder : home;
}

bool IsFirstRun(const QString& programFolder) {
  if (!FindEntry(programFolder, kFirstRunMarker)) return false;
  const QStringList projects =
      QDir(programFolder).entryList({QStringLiteral("*.vbp")}, QDir::AllEntries | QDir::Hidden);
  return projects.isEmpty();  // patterns match without regard to case
}

std::vector<Error> InitialiseDefaults(const QString& programFolder, Settings& settings) {
  std::vector<Error> failures;
  if (!IsFirstRun(programFolder)) return failures;
  const QString dataFolder = settings.Home() + QLatin1String("Sefnor/");
  const QString registerFolder = dataFolder + QLatin1String("ArvelDat/");
  Collect(settings.WriteSettings(kGeneralSection, {{kDataDirectoryKey, dataFolder},
                                                   {QStringLiteral("ArvelDataDirectory"), registerFolder}}),
          failures);
  Collect(settings.WriteSettings(kOptionsSection, FirstRunOptionEntries()), failures);
  const bool stored = failures.empty();
  Collect(MakeFolder(dataFolder + QLatin1String(kArchiveFolder)), failures);
  Collect(MakeFolder(registerFolder), failures);
  if (stored) Collect(DeleteMarker(programFolder), failures);
  return failures;
}

}  // namespace vesk
