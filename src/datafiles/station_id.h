// A station as files and lists name it.
#pragma once

#include <QString>

namespace vesk {

/// The nine characters of a station: the prefix of its logger, "-", its number ("001-12345"). Names that
/// differ in case only are one station.
class StationId {
 public:
  static constexpr qsizetype kLength = 9;

  StationId() = default;
  /// text: a station entry, or the name of one of its raw files; what follows the nine characters is left
  /// out.
  explicit StationId(const QString& text) : text_(text.left(kLength)) {}

  /// As it was written where it was met first.
  [[nodiscard]] const QString& Text() const { return text_; }
  /// "12345" of "001-12345".
  [[nodiscard]] QString Number() const { return text_.mid(kPrefixLength, kNumberLength); }
  /// The same text for all names of one station.
  [[nodiscard]] QString Key() const { return text_.toCaseFolded(); }
  [[nodiscard]] bool IsEmpty() const { return text_.isEmpty(); }

  bool operator==(const StationId& other) const {
    return text_.compare(other.text_, Qt::CaseInsensitive) == 0;
  }

 private:
  static constexpr qsizetype kPrefixLength = 4;
  static constexpr qsizetype kNumberLength = 5;
  QString text_;
};

}  // namespace vesk
