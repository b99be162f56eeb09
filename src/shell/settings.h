// The settings file: its keys, its first-run defaults, its folder texts.
#pragma once

#include <QString>

#include "platform/result.h"

namespace vesk {

class Settings {
 public:
  Settings() = default;
  explicit Settings(QString path) : path_(std::move(path)) {}
  [[nodiscard]] const QString& Path() const { return path_; }

  /// Value of a key, at most 254 characters; empty when the file, section or key is missing.
  [[nodiscard]] QString ReadSetting(const QString& section, const QString& key) const;
  /// Writes a value, keeping every other line. The file is replaced whole or not at all.
  Status WriteSetting(const QString& section, const QString& key, const QString& value);
  /// Reads the data directory, normalises it and writes it back.
  QString ReadDataDirectory();

 private:
  QString path_;
};

/// One trailing "/"; the fallback folder when the text is empty or names no folder. Drive letters and "\" are
/// translated to this machine's folders first.
QString NormaliseFolderPath(const QString& text);

/// Writes the first-run defaults when the marker "ilk.sil" is in the program folder, and deletes the marker.
Status InitialiseDefaults(const QString& programFolder, Settings& settings);

}  // namespace vesk
