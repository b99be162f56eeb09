// Arbitrary bytes as a settings file: reading never fails, and a value that is set is read back, whatever
// stood there.
#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/profile_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString section = QStringLiteral("Options");
  const QString key = QStringLiteral("21");
  const QString value = QStringLiteral("ENGLISH");

  vesk::ProfileText profile(content);
  [[maybe_unused]] const auto before = profile.Value(section, key);
  profile.SetValue(section, key, value);
  if (profile.Value(section, key) != value) std::abort();
  const QByteArray once = profile.Content();
  profile.SetValue(section, key, value);
  if (profile.Content() != once) std::abort();
  return 0;
}
