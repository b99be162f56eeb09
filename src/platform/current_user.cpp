#include "platform/current_user.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

namespace vesk {

UserName CurrentUser() {
  std::array<char, 16384> texts{};
  passwd entry{};
  passwd* found = nullptr;
  const uid_t user = ::getuid();
  if (::getpwuid_r(user, &entry, texts.data(), texts.size(), &found) != 0 || !found) {
    return {QString::number(user), {}};
  }
  // The full name is the first of the comment's fields, which commas part.
  const QString comment = QString::fromLocal8Bit(entry.pw_gecos ? entry.pw_gecos : "");
  return {QString::fromLocal8Bit(entry.pw_name), comment.section(QLatin1Char(','), 0, 0).trimmed()};
}

}  // namespace vesk
