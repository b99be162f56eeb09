// Sectioned key=value files ("INI"), read and changed the way the desktop's classic profile calls do: names
// match without regard to case, the first section and the first key of a name count, and a change touches its
// own line only.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

#include "platform/result.h"

namespace vesk {

inline constexpr int kProfileValueLength = 254;  ///< characters of a value that a reader gets

/// The content of one profile file, in Windows-1254. Every line that is not asked to change keeps its bytes.
class ProfileText {
 public:
  ProfileText() = default;
  explicit ProfileText(QByteArray content) : content_(std::move(content)) {}

  /// A missing file gives an empty profile; a file that cannot be read, an error.
  static Result<ProfileText> Load(const QString& path);
  /// Replaces the file whole or not at all.
  [[nodiscard]] Status Save(const QString& path) const;

  /// Value without blanks around it and without one pair of quotes, cut to kProfileValueLength characters.
  /// Nothing when the section or the key is missing.
  [[nodiscard]] std::optional<QString> Value(const QString& section, const QString& key) const;
  /// Changes a value in its place, or adds key or section at the end. Line breaks in the value become blanks.
  void SetValue(const QString& section, const QString& key, const QString& value);

  [[nodiscard]] const QByteArray& Content() const { return content_; }

 private:
  QByteArray content_;
};

/// A key and its new value.
using ProfileEntry = std::pair<QString, QString>;

/// Changes several values of one section in one replacement of the file. Nothing is written when the file
/// holds the values already, when it cannot be read, or when a value has characters that the code page lacks.
Status WriteProfileValues(const QString& path, const QString& section,
                          const std::vector<ProfileEntry>& entries);

}  // namespace vesk
