// A load that is not whole, said in one sentence in both languages.
#pragma once

#include <QString>

namespace vesk {

struct LoadedReadings;

/// The same text in both languages.
struct TwoTexts {
  QString turkish, english;
};

/// What a load does without, files named: for the question before a table or graph of it, and for the note on
/// these. Empty texts for a whole load.
TwoTexts NotWholeNote(const LoadedReadings& loaded);

}  // namespace vesk
