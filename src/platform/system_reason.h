// Why the system refused, in the operators' languages where it is one of the usual reasons.
#pragma once

#include <QString>

#include "platform/wording.h"

namespace vesk {

/// errorNumber: errno of the call that failed.
Message SystemReason(int errorNumber);

/// words: as a device or a process of the toolkit gives them (errorString()), which are the system's for the
/// errno behind them.
Message SystemReason(const QString& words);

}  // namespace vesk
