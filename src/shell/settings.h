// The settings file: its keys, its first-run defaults, its folder texts.
#pragma once

#include <QString>

#include <optional>
#include <utility>
#include <vector>

#include "platform/folders.h"
#include "platform/profile_file.h"
#include "platform/result.h"

namespace vesk {

/// Section of the folders, and the key of the data directory in it.
inline constexpr QLatin1String kGeneralSection("Genel");
inline constexpr QLatin1String kDataDirectoryKey("DataDirectory");
/// Section of the options, keys "01" to "40".
inline constexpr QLatin1String kOptionsSection("Options");

class Settings {
 public:
  Settings() = default;
  /// @param home folder that stands for "C:\", with one trailing "/"
  explicit Settings(QString path, QString home = HomeFolder())
      : path_(std::move(path)), home_(std::move(home)) {}
  [[nodiscard]] const QString& Path() const { return path_; }
  [[nodiscard]] const QString& Home() const { return home_; }

  /// Code page that the file is read in: "Windows-1254" or "UTF-8".
  [[nodiscard]] QString EncodingName() const;

  /// Value of a key, at most 254 characters; empty when the file, section or key is missing.
  [[nodiscard]] QString ReadSetting(const QString& section, const QString& key) const;
  /// Values of several keys of one section, in their order, from one reading of the file.
  [[nodiscard]] std::vector<QString> ReadSettings(const QString& section,
                                                  const std::vector<QString>& keys) const;
  /// Writes a value, keeping every other line. The file is replaced whole or not at all.
  Status WriteSetting(const QString& section, const QString& key, const QString& value);
  /// Writes several values of one section in one replacement of the file.
  Status WriteSettings(const QString& section, const std::vector<ProfileEntry>& entries);
  /// Writes the values that are given. A key without one stays as the file has it, added empty where it has
  /// not: what another window has stored since this one read it is not lost.
  Status MergeSettings(const QString& section,
                       const std::vector<std::pair<QString, std::optional<QString>>>& entries);
  /// Reads the data directory, normalises it and writes it back. A failing write shows as a stored value that
  /// differs.
  QString ReadDataDirectory();
  /// Stores the data directory unless it is the one that was read or stored last: another window's choice
  /// since then stays.
  Status StoreDataDirectory(const QString& folder);

 private:
  QString path_;
  QString home_;
  QString dataDirectory_;  ///< as it was read or stored last
};

/// One trailing "/"; the fallback folder when the text is empty or names no folder. Drive letters and "\" are
/// translated to this machine's folders first.
QString NormaliseFolderPath(const QString& text, const QString& home = HomeFolder());

/// Keys of section Options and their values after an installation; the other keys have no default.
std::vector<ProfileEntry> FirstRunOptionEntries();

/// True when the first-run marker "ilk.sil" is in the program folder and no project file ("*.vbp") is.
bool IsFirstRun(const QString& programFolder);

/// On a first run, writes the default settings, makes the default folders below the home folder and deletes
/// the marker. Whatever fails, the rest is tried; a failing write of the settings keeps the marker for the
/// next start. Returns what failed.
std::vector<Error> InitialiseDefaults(const QString& programFolder, Settings& settings);

}  // namespace vesk
