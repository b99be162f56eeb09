// The toolkit's own buttons and dialogs in the language of the windows.
#pragma once

#include <QTranslator>

#include "shell/language.h"

namespace vesk {

class QtTexts {
 public:
  QtTexts() = default;
  ~QtTexts();
  QtTexts(const QtTexts&) = delete;
  QtTexts& operator=(const QtTexts&) = delete;

  /// Turkish from the toolkit's translation, where it is installed; its English otherwise.
  void Follow(LanguageChoice choice);

 private:
  QTranslator turkish_;
};

}  // namespace vesk
