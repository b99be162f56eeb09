#include "review/not_whole_note.h"

#include <QStringList>

#include "review/load_readings.h"

namespace vesk {
namespace {

QString Listed(const std::vector<QString>& names) {
  return QStringList(names.begin(), names.end()).join(QStringLiteral(", "));
}

}  // namespace

Message NotWholeNote(const LoadedReadings& loaded) {
  if (loaded.whole) return {};
  std::vector<Message> sentences{Wording{u"Yükleme tam değil.", u"The load is not whole."}};
  if (!loaded.missedFiles.empty()) {
    sentences.emplace_back(Wording{u"Eksik dosyalar: %1.", u"Missing files: %1."},
                           Listed(loaded.missedFiles));
  }
  if (!loaded.partialFiles.empty()) {
    sentences.emplace_back(Wording{u"Bir bölümü okunan dosyalar: %1.", u"Files read in part: %1."},
                           Listed(loaded.partialFiles));
  }
  return Message::Joined(std::move(sentences), QStringLiteral(" "));
}

}  // namespace vesk
