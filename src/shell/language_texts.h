// The texts of one language as the fill routines of Language take them.
#pragma once

#include <span>
#include <string_view>

#include "shell/caption.h"

namespace vesk {

struct CaptionText {
  Caption caption;
  std::u16string_view text;
};

struct LanguageTexts {
  std::span<const CaptionText> captions;          ///< without the entries that repeat another one
  std::span<const std::u16string_view> messages;  ///< seven, the first is message 1
  std::u16string_view yesWord, noWord, addWord, convertedWord, attentionTitle;
  std::u16string_view templateName;
};

const LanguageTexts& TurkishTexts();
const LanguageTexts& EnglishTexts();

}  // namespace vesk
