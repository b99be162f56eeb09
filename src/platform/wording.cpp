#include "platform/wording.h"

#include <QStringList>

namespace vesk {

Message Message::Verbatim(QString words) {
  Message message;
  message.words_ = std::move(words);
  return message;
}

Message Message::Joined(std::vector<Message> parts, const QString& between) {
  std::erase_if(parts, [](const Message& part) { return part.IsEmpty(); });
  if (parts.empty()) return {};
  Message message = Verbatim(between);
  message.places_ = std::move(parts);
  return message;
}

QString Message::In(LanguageChoice language) const {
  std::vector<QString> filled;
  for (const Message& place : places_) filled.push_back(place.In(language));
  if (!wording_) return filled.empty() ? words_ : QStringList(filled.begin(), filled.end()).join(words_);
  // By hand: a file name may hold a "%1" of its own.
  const QStringView pattern(wording_->In(language));
  QString text;
  for (qsizetype i = 0; i < pattern.size(); ++i) {
    const int number = pattern[i] == u'%' && i + 1 < pattern.size() ? pattern[i + 1].digitValue() : 0;
    if (number < 1) {
      text += pattern[i];
      continue;
    }
    if (static_cast<std::size_t>(number) > filled.size()) {  // a fault of the program, better seen than fatal
      text += pattern[i];
      continue;
    }
    text += filled[static_cast<std::size_t>(number) - 1];
    ++i;
  }
  return text;
}

bool operator==(const Message& one, const Message& other) {
  return one.In(LanguageChoice::Turkish) == other.In(LanguageChoice::Turkish) &&
         one.English() == other.English();
}

}  // namespace vesk
