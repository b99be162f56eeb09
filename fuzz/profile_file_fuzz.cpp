// A value set in any profile text reads back, and setting it again changes nothing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/profile_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vesk::ProfileText text(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  const QString section = QStringLiteral("Options");
  const QString key = QStringLiteral("21");
  const auto before = text.Value(section, key);
  if (before && before->size() > vesk::kProfileValueLength) std::abort();
  const QString value = QStringLiteral("TURKCE");
  text.SetValue(section, key, value);
  if (text.Value(section, key) != value) std::abort();
  const QByteArray once = text.Content();
  text.SetValue(section, key, value);
  if (text.Content() != once) std::abort();
  return 0;
}
