// The program's own texts. A text is worded in both languages in one place, beside the code that has it to
// say; it travels as a Message (the text and what stands in its places) and becomes words at the window, the
// command line or the file that shows it.
#pragma once

#include <QString>

#include <concepts>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

namespace vesk {

/// The language that operators chose; Unknown before they did, texts are then Turkish.
enum class LanguageChoice { Unknown, Turkish, English };

/// A text in both languages, with the places %1 to %9. The compiler refuses one that lacks a language, or
/// whose languages do not have the same places.
class Wording {
 public:
  consteval Wording(std::u16string_view turkish, std::u16string_view english)
      : turkish_(turkish), english_(english) {
    if (turkish.empty() || english.empty()) throw "a language is missing";
    if (PlacesOf(turkish) != PlacesOf(english)) throw "the places differ";
  }

  [[nodiscard]] constexpr std::u16string_view In(LanguageChoice language) const {
    return language == LanguageChoice::English ? english_ : turkish_;
  }

 private:
  /// A bit a place.
  static constexpr unsigned PlacesOf(std::u16string_view text) {
    unsigned places = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
      if (text[i] == u'%' && text[i + 1] >= u'1' && text[i + 1] <= u'9') places |= 1U << (text[i + 1] - u'0');
    }
    return places;
  }

  std::u16string_view turkish_, english_;
};

/// Something to say, in any language.
class Message {
 public:
  Message() = default;
  /// The wording with its places filled, %1 first: with messages, names (QString, as they are) or numbers.
  template <class... Places>
  Message(const Wording& wording, Places&&... places)  // NOLINT: implicit on purpose
      : wording_(wording), places_{Message::Of(std::forward<Places>(places))...} {}
  /// Words that are the same in every language: a name, a figure, what another program said.
  static Message Verbatim(QString words);
  /// One behind the other, parted by between; empty ones are left out.
  static Message Joined(std::vector<Message> parts, const QString& between);

  [[nodiscard]] bool IsEmpty() const { return !wording_ && words_.isEmpty() && places_.empty(); }
  [[nodiscard]] QString In(LanguageChoice language) const;
  /// As the command line and the tests read it.
  [[nodiscard]] QString English() const { return In(LanguageChoice::English); }

  /// True when both say the same in both languages.
  friend bool operator==(const Message& one, const Message& other);

 private:
  static Message Of(Message message) { return message; }
  static Message Of(const QString& name) { return Verbatim(name); }
  static Message Of(std::integral auto number) { return Verbatim(QString::number(number)); }

  std::optional<Wording> wording_;  ///< nothing: words_, or places_ parted by words_
  QString words_;
  std::vector<Message> places_;
};

}  // namespace vesk
