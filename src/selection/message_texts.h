// Lines of the message list in the operator's language. The loading and tidying operations word them in
// English, once, where they arise.
#pragma once

#include <QString>

namespace vesk {

class Language;

/// The line in the current language; the line itself when it is not known there.
QString MessageText(const QString& english, const Language& language);

}  // namespace vesk
