// The texts of the system in the chosen language. Windows take their captions from here when they load.
#pragma once

#include <QString>

#include <array>

#include "platform/result.h"
#include "shell/caption.h"

namespace vesk {

struct LanguageTexts;

LanguageChoice LanguageChoiceOf(const QString& slotText);  ///< "TURKCE" or "ENGLISH", exactly
QString LanguageSlotText(LanguageChoice choice);

class Language {
 public:
  /// Neither routine clears entries that its language does not have.
  void FillTurkish();
  void FillEnglish();
  [[nodiscard]] LanguageChoice Choice() const { return choice_; }

  [[nodiscard]] const QString& Text(Caption caption) const {
    return captions_[static_cast<std::size_t>(caption)];
  }
  /// index 1 to 7.
  [[nodiscard]] const QString& Message(int index) const { return messages_[static_cast<std::size_t>(index)]; }

  /// What is to be said, in the current language.
  [[nodiscard]] QString Say(const vesk::Message& message) const { return message.In(choice_); }
  [[nodiscard]] QString Say(const Error& error) const { return error.In(choice_); }
  /// A wording with its places filled, %1 first: with messages, names or numbers.
  template <class... Places>
  [[nodiscard]] QString Say(const Wording& wording, Places&&... places) const {
    return vesk::Message(wording, std::forward<Places>(places)...).In(choice_);
  }

  QString yesWord, noWord, addWord, convertedWord, attentionTitle;
  QString templateName;  ///< spreadsheet template of this language

 private:
  void Fill(const LanguageTexts& texts, LanguageChoice choice);

  LanguageChoice choice_ = LanguageChoice::Unknown;
  std::array<QString, kCaptionCount> captions_;
  std::array<QString, 8> messages_;
};

/// A menu caption without its first "&" and with at most 200 characters behind it, as the work mode holds it.
QString WithoutAccessKey(const QString& caption);

}  // namespace vesk
