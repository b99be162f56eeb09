#include "shell/qt_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace vesk {

QtTexts::~QtTexts() {
  QCoreApplication::removeTranslator(&turkish_);
}

void QtTexts::Follow(LanguageChoice choice) {
  QCoreApplication::removeTranslator(&turkish_);
  if (choice == LanguageChoice::English) return;
  const bool loaded =
      !turkish_.isEmpty() ||
      turkish_.load(QStringLiteral("qtbase_tr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  if (loaded) QCoreApplication::installTranslator(&turkish_);
}

}  // namespace vesk
