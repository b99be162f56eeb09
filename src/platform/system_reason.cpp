#include "platform/system_reason.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace vesk {
namespace {

struct Reason {
  int number = 0;
  Wording wording;
};

constexpr Reason kReasons[] = {
    {ENOENT, {u"Böyle bir dosya veya dizin yok", u"No such file or directory"}},
    {EACCES, {u"İzin verilmedi", u"Permission denied"}},
    {EPERM, {u"Bu işleme izin verilmiyor", u"Operation not permitted"}},
    {EROFS, {u"Dosya sistemi salt okunur", u"Read-only file system"}},
    {ENOSPC, {u"Diskte yer kalmadı", u"No space left on device"}},
    {EDQUOT, {u"Disk kotası doldu", u"Disk quota exceeded"}},
    {EFBIG, {u"Dosya çok büyük", u"File too large"}},
    {EISDIR, {u"Bu bir dizin", u"Is a directory"}},
    {ENOTDIR, {u"Bu bir dizin değil", u"Not a directory"}},
    {EEXIST, {u"Dosya zaten var", u"File exists"}},
    {ENOTEMPTY, {u"Dizin boş değil", u"Directory not empty"}},
    {EIO, {u"Girdi/çıktı hatası", u"Input/output error"}},
    {ELOOP, {u"Çok fazla sembolik bağlantı", u"Too many levels of symbolic links"}},
    {ENAMETOOLONG, {u"Dosya adı çok uzun", u"File name too long"}},
    {EMFILE, {u"Çok fazla açık dosya", u"Too many open files"}},
    {ETXTBSY, {u"Dosya şu anda çalıştırılıyor", u"Text file busy"}},
    {EXDEV, {u"Başka bir dosya sistemine taşınamaz", u"Invalid cross-device link"}},
};

}  // namespace

Message SystemReason(int errorNumber) {
  const auto* const found = std::ranges::find(kReasons, errorNumber, &Reason::number);
  if (found != std::end(kReasons)) return found->wording;
  return Message::Verbatim(qt_error_string(errorNumber));
}

Message SystemReason(const QString& words) {
  const auto* const found = std::ranges::find_if(
      kReasons, [&words](const Reason& reason) { return words == qt_error_string(reason.number); });
  if (found != std::end(kReasons)) return found->wording;
  return Message::Verbatim(words);
}

}  // namespace vesk
