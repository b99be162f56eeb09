// Errors in the operator's language. The libraries word them in English, once, where they arise.
#pragma once

#include <QString>

#include "platform/result.h"
#include "shell/language.h"

namespace vesk {

/// "what: path: reason", each part in the current language where it is known in it.
QString ErrorText(const Error& error, const Language& language);

/// One such part in the current language; the text itself when it is not known there.
QString ErrorPart(const QString& english, const Language& language);

}  // namespace vesk
