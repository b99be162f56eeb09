#include "review/not_whole_note.h"

#include <QStringList>

#include "review/load_readings.h"

namespace vesk {
namespace {

QString Listed(const std::vector<QString>& names) {
  return QStringList(names.begin(), names.end()).join(QStringLiteral(", "));
}

}  // namespace

TwoTexts NotWholeNote(const LoadedReadings& loaded) {
  if (loaded.whole) return {};
  TwoTexts note{QStringLiteral("Yükleme tam değil."), QStringLiteral("The load is not whole.")};
  if (!loaded.missedFiles.empty()) {
    note.turkish += QStringLiteral(" Eksik dosyalar: %1.").arg(Listed(loaded.missedFiles));
    note.english += QStringLiteral(" Missing files: %1.").arg(Listed(loaded.missedFiles));
  }
  if (!loaded.partialFiles.empty()) {
    note.turkish += QStringLiteral(" Bir bölümü okunan dosyalar: %1.").arg(Listed(loaded.partialFiles));
    note.english += QStringLiteral(" Files read in part: %1.").arg(Listed(loaded.partialFiles));
  }
  return note;
}

}  // namespace vesk
