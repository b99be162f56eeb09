// The texts of the system in the chosen language. Windows take their captions from here when they load.
#pragma once

#include <QString>

#include <array>

#include "shell/caption.h"

namespace vesk {

struct LanguageTexts;

/// The stored language choice; Unknown leaves every text empty until the operator chooses one.
enum class LanguageChoice { Unknown, Turkish, English };

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

  QString yesWord, noWord, addWord, convertedWord, attentionTitle;
  QString templateName;  ///< spreadsheet template of this language

 private:
  void Fill(const LanguageTexts& texts, LanguageChoice choice);

  LanguageChoice choice_ = LanguageChoice::Unknown;
  std::array<QString, kCaptionCount> captions_;
  std::array<QString, 8> messages_;
};

/// English beyond the tables: the text for the current language; Turkish when no language is chosen.
QString Either(const Language& language, const QString& turkish, const QString& english);

/// A menu caption without its first "&" and with at most 200 characters behind it, as the work mode holds it.
QString WithoutAccessKey(const QString& caption);

}  // namespace vesk
