// Who is logged in, as the machine's user list has it.
#pragma once

#include <QString>

namespace vesk {

struct UserName {
  QString login;  ///< the user's number where the list does not know it
  QString name;   ///< full name; may be empty
};

UserName CurrentUser();

}  // namespace vesk
