#include "datafiles/header_checks.h"

#include <QStringList>

namespace vesk {

QString TextOf(HeaderFault fault) {
  return fault == HeaderFault::Version ? QStringLiteral("Version Hatasi")
                                       : QStringLiteral("Data'da Bilinmeyen Bir Hata Var");
}

bool IsAcceptedVersion(const QString& version) {
  return QString::fromLatin1(kAcceptedVersions).contains(QLatin1Char('V') + version);
}

QString CorrectionNote(const QString& code, HeaderScope scope) {
  const QString prefix = scope == HeaderScope::SingleFile
                             ? QStringLiteral("-Bu dosyada ")
                             : QStringLiteral("-Su Yılını Oluşturan Dosyalarda ");
  if (code == QLatin1String("01")) return prefix + QStringLiteral("seviye düzeltmesi yapılmış.");
  if (code == QLatin1String("02")) return prefix + QStringLiteral("zaman düzeltmesi yapılmış.");
  if (code == QLatin1String("03"))
    return prefix + QStringLiteral("hem zaman hem de seviye düzeltmesi yapılmış.");
  return {};
}

std::vector<Message> HeaderNotes(const HeaderReading& reading, HeaderScope scope) {
  if (!reading && reading.Failure().fault == HeaderFault::Missing) return {};
  QStringList notes;
  const bool damaged =
      !reading && (reading.Failure().damaged || reading.Failure().fault == HeaderFault::Unreadable);
  if (damaged) notes += QStringLiteral("Bilinmeyen Bir Hata Var. Bu Datayı Programcıya iletiniz..");
  const RawHeader& header = reading ? *reading : reading.Failure().header;
  notes += CorrectionNote(header.correctionCode, scope);
  if (!reading && reading.Failure().fault == HeaderFault::Version) notes += TextOf(HeaderFault::Version);
  notes.removeAll(QString());
  std::vector<Message> messages;
  for (const QString& note : notes) messages.push_back(Message::Verbatim(note));
  return messages;
}

}  // namespace vesk
