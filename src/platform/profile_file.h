// Sectioned key=value files ("INI"), read and changed the way the desktop's classic profile calls do: names
// match without regard to case, the first section and the first key of a name count, and a change touches its
// own line only.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/result.h"

namespace vesk {

inline constexpr int kProfileValueLength = 254;  ///< characters of a value that a reader gets

/// How the letters beyond ASCII of a profile file are written.
enum class ProfileEncoding {
  Windows1254,  ///< also a file that has none
  Utf8,         ///< as editors leave it, with or without a byte order mark
};

/// The encoding of a content. A byte order mark says it; without one, bytes that are valid UTF-8 are UTF-8
/// unless they read just as well in Windows-1254: each a Turkish capital with a sign behind it, as in
/// "DSİ’nin".
ProfileEncoding EncodingOf(QByteArrayView content);

/// The content of one profile file. Every line that is not asked to change keeps its bytes, and the file its
/// encoding; only a value that Windows-1254 cannot hold makes the whole file UTF-8, with a byte order mark.
class ProfileText {
 public:
  ProfileText() = default;
  explicit ProfileText(QByteArray content) : content_(std::move(content)), encoding_(EncodingOf(content_)) {}

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
  [[nodiscard]] ProfileEncoding Encoding() const { return encoding_; }

 private:
  void MakeUtf8();
  void PutValue(const QString& section, const QString& key, const QString& value);

  QByteArray content_;
  ProfileEncoding encoding_ = ProfileEncoding::Windows1254;
};

/// Reads the file, lets the change work on it and writes it back, with no other process in between; one that
/// is writing is waited for, one that died over it is not. Nothing is written when the change leaves the
/// content as it is. A file that can be written in a folder that cannot is written in place.
Status UpdateProfile(const QString& path, const std::function<void(ProfileText&)>& change);

/// True for a file that can be written in a folder that cannot: a power cut may then leave a part of it.
bool IsWrittenInPlace(const QString& path);

/// A key and its new value.
using ProfileEntry = std::pair<QString, QString>;

/// Changes several values of one section in one replacement of the file, and no other value, whatever others
/// have written there meanwhile. Nothing is written when the file holds the values already.
Status WriteProfileValues(const QString& path, const QString& section,
                          const std::vector<ProfileEntry>& entries);

}  // namespace vesk
