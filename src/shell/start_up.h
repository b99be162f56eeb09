// What happens between the start of the program and its first window: folders, settings, options, language.
// The windows and the command line run the same steps.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "platform/result.h"
#include "shell/run_values.h"

namespace vesk {

/// What start-up takes from the machine.
struct StartUpInput {
  QString programFolder;      ///< with one trailing "/"
  QString executableName;     ///< without extension; names the settings file
  QString home;               ///< folder that stands for "C:\", with one trailing "/"
  QString referenceDateText;  ///< 2 January 1999 in the system's short date form
  QChar decimalSign = QLatin1Char('.');
};

struct StartUpReport {
  std::vector<Error> problems;  ///< for the operator to read; the run goes on
};

/// "/" or "." when the text has it ("." when it has both); nothing otherwise.
std::optional<QChar> DateSeparatorOf(const QString& referenceDateText);

/// Fills the run values in the fixed order of the steps. Never fails as a whole.
StartUpReport StartUp(const StartUpInput& input, RunValues& run);

/// Fills the tables. Windows that are open keep their texts.
void SwitchLanguage(RunValues& run, LanguageChoice choice);
/// Stores the current choice. Apart from the switch, so that a failure is worded in the new language
/// throughout.
Status StoreLanguage(RunValues& run);

/// Stores the data directory, as the exit entry does.
Status StoreDataDirectory(RunValues& run);

}  // namespace vesk
