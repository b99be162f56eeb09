#include "datafiles/header_checks.h"

namespace vesk {

QString VersionErrorText() {
  return QStringLiteral("Version Hatasi");
}
QString UnknownErrorText() {
  return QStringLiteral("Data'da Bilinmeyen Bir Hata Var");
}
QString UnknownErrorMessage() {
  return QStringLiteral("Bilinmeyen Bir Hata Var. Bu Datayı Programcıya iletiniz..");
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

}  // namespace vesk
