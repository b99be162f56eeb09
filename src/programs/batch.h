// The command line: one function a verb, all over the operations that the windows use.
#pragma once

#include <QStringList>

namespace vesk {

/// Exit codes of the program.
enum BatchExit : int { kBatchDone = 0, kBatchFailed = 1, kBatchWrongUse = 2, kBatchFindings = 3 };

/// One verb. arguments: the verb itself, then what follows it on the command line.
struct BatchVerb {
  const char* name;
  const char* summary;
  int (*run)(const QStringList& arguments);
};

int RunFilesVerb(const QStringList& arguments);
int RunHeaderVerb(const QStringList& arguments);
int RunCorrectVerb(const QStringList& arguments);
int RunAcceptVerb(const QStringList& arguments);
int RunApproveVerb(const QStringList& arguments);
int RunHistoryVerb(const QStringList& arguments);
int RunReadingsVerb(const QStringList& arguments);
int RunCheckVerb(const QStringList& arguments);
int RunDailyVerb(const QStringList& arguments);
int RunRatingVerb(const QStringList& arguments);
int RunGaugingsVerb(const QStringList& arguments);
int RunStationVerb(const QStringList& arguments);
int RunTableVerb(const QStringList& arguments);
int RunTidyVerb(const QStringList& arguments);

}  // namespace vesk
