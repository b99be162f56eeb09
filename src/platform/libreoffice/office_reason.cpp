#include "platform/libreoffice/office_reason.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>

namespace vesk {
namespace {

constexpr Wording kDiskFull{u"disk dolu", u"the disk is full"};
constexpr qint64 kHardlyAnyRoom = 1 << 20;  // bytes; a workbook of a year takes more while it is saved

/// What an error code of the office is about: bits 8 to 12 of it.
enum class CodeClass : unsigned {
  General = 2,
  NotExists = 3,
  AlreadyExists = 4,
  Access = 5,
  Path = 6,
  Locking = 7,
  Space = 9,
  Read = 11,
  Write = 12,
  Version = 14,
  Format = 15,
  Create = 16,
};

/// Reading and writing fail for many reasons; those that can be seen from outside come first.
Message SeenFromOutside(const QString& path) {
  if (path.isEmpty()) return {};
  const QFileInfo file(path);
  const QString folder = file.absolutePath();
  if (!QFileInfo(folder).isDir())
    return Wording{u"klasörü artık yerinde değil", u"its folder is no longer there"};
  const QStorageInfo volume(folder);
  if (volume.isValid() && volume.isReadOnly()) return Wording{u"disk salt okunur", u"the disk is read-only"};
  if (volume.isValid() && volume.bytesAvailable() < kHardlyAnyRoom) return kDiskFull;
  const bool mayWrite = QFileInfo(folder).isWritable() && (!file.exists() || file.isWritable());
  return mayWrite ? Message() : Wording{u"yazma izni yok", u"there is no permission to write it"};
}

Message Worded(CodeClass codeClass, const QString& path) {
  switch (codeClass) {
    case CodeClass::Space:
      return kDiskFull;
    case CodeClass::Access:
      return Wording{u"okuma veya yazma izni yok", u"there is no permission to read or write it"};
    case CodeClass::Locking:
      return Wording{u"dosyayı başka bir program kullanıyor", u"another program is using it"};
    case CodeClass::NotExists:
    case CodeClass::Path:
      return Wording{u"dosya veya klasörü yerinde değil", u"the file or its folder is not there"};
    case CodeClass::AlreadyExists:
      return Wording{u"bu adda bir dosya var", u"a file of that name is in the way"};
    case CodeClass::Version:
    case CodeClass::Format:
      return Wording{u"tablo dosyası değil veya bozuk", u"it is no workbook, or a damaged one"};
    case CodeClass::General:
    case CodeClass::Read:
    case CodeClass::Write:
    case CodeClass::Create:
      break;
  }
  const Message seen = SeenFromOutside(path);
  return seen.IsEmpty() ? Wording{u"tablolama programı dosyayı eksiksiz okuyamadı veya yazamadı",
                                  u"the spreadsheet application could not read or write it whole"}
                        : seen;
}

}  // namespace

Message WordOfficeReason(const QString& told, const QString& path) {
  static const QRegularExpression kCode(QStringLiteral("\\b0x([0-9a-fA-F]{3,8})\\b"));
  const QRegularExpressionMatch code = kCode.match(told);
  if (!code.hasMatch()) return Message::Verbatim(told);
  constexpr unsigned kClassShift = 8;
  constexpr unsigned kClassBits = 0x1F;
  const auto codeClass =
      static_cast<CodeClass>((code.captured(1).toUInt(nullptr, 16) >> kClassShift) & kClassBits);
  return {Wording{u"%1 [%2]", u"%1 [%2]"}, Worded(codeClass, path), told};
}

}  // namespace vesk
