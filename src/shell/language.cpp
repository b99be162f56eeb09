#include "shell/language.h"

#include "shell/language_texts.h"

namespace vesk {
namespace {

/// Entries that repeat another one in every language.
constexpr std::pair<Caption, Caption> kCopies[] = {
    {Caption::DateTimeLevelHeadingCopy, Caption::DateTimeLevelHeading},
    {Caption::OkCopy, Caption::Ok},
    {Caption::ExitCopy, Caption::Exit},
    {Caption::OmitInstantaneousValuesCopy, Caption::OmitInstantaneousValues}};

QString ToQString(std::u16string_view text) {
  return QStringView(text).toString();
}

std::size_t IndexOf(Caption caption) {
  return static_cast<std::size_t>(caption);
}

}  // namespace

LanguageChoice LanguageChoiceOf(const QString& slotText) {
  if (slotText == QLatin1String("TURKCE")) return LanguageChoice::Turkish;
  if (slotText == QLatin1String("ENGLISH")) return LanguageChoice::English;
  return LanguageChoice::Unknown;
}

QString LanguageSlotText(LanguageChoice choice) {
  switch (choice) {
    case LanguageChoice::Turkish:
      return QStringLiteral("TURKCE");
    case LanguageChoice::English:
      return QStringLiteral("ENGLISH");
    case LanguageChoice::Unknown:
      break;
  }
  return {};
}

void Language::FillTurkish() {
  Fill(TurkishTexts(), LanguageChoice::Turkish);
}

void Language::FillEnglish() {
  Fill(EnglishTexts(), LanguageChoice::English);
}

void Language::Fill(const LanguageTexts& texts, LanguageChoice choice) {
  choice_ = choice;
  for (const CaptionText& entry : texts.captions) captions_[IndexOf(entry.caption)] = ToQString(entry.text);
  for (const auto& [copy, source] : kCopies) captions_[IndexOf(copy)] = captions_[IndexOf(source)];
  for (std::size_t i = 0; i < texts.messages.size(); ++i) messages_[i + 1] = ToQString(texts.messages[i]);
  yesWord = ToQString(texts.yesWord);
  noWord = ToQString(texts.noWord);
  addWord = ToQString(texts.addWord);
  convertedWord = ToQString(texts.convertedWord);
  attentionTitle = ToQString(texts.attentionTitle);
  templateName = ToQString(texts.templateName);
}

QString WithoutAccessKey(const QString& caption) {
  constexpr qsizetype kLongestRest = 200;
  const qsizetype at = caption.indexOf(QLatin1Char('&'));
  return at < 0 ? caption : caption.first(at) + caption.mid(at + 1, kLongestRest);
}

}  // namespace vesk
