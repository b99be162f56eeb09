// A load that is not whole, said in one sentence in both languages.
#pragma once

#include "platform/wording.h"

namespace vesk {

struct LoadedReadings;

/// What a load does without, files named: for the question before a table or graph of it, and for the note on
/// these. Empty for a whole load.
Message NotWholeNote(const LoadedReadings& loaded);

}  // namespace vesk
