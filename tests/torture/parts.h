// The parts of the torture run. Each plays its rounds and tells the run what it counted and which rules
// broke.
#pragma once

#include "torture/rig.h"

namespace vesk::torture {

/// Killed at any moment: what was acknowledged is what the next start shows.
void KillRounds(Run& run);
/// Two processes on one folder: an edit that either was told is done is there in the end.
void TwoProcesses(Run& run);
/// Every call of every operation fails once, fails from then on, or ends the process.
void FaultPoints(Run& run);
/// No room from the n-th byte on.
void FullDisk(Run& run);
/// Damaged read-outs: every line is kept or spoken of.
void DamagedReadOuts(Run& run);
/// What was on the screen when it was saved is what the next load shows.
void Sequences(Run& run);
/// Raw files or the log change between save and load: a correction stays with its reading or is named.
void ChangedInputs(Run& run);

}  // namespace vesk::torture
