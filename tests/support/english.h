// Messages as the tests read them.
#pragma once

#include <vector>

#include "platform/wording.h"

namespace vesk {

inline std::vector<QString> InEnglish(const std::vector<Message>& messages) {
  std::vector<QString> texts;
  texts.reserve(messages.size());
  for (const Message& message : messages) texts.push_back(message.English());
  return texts;
}

}  // namespace vesk
