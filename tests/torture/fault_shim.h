// The fault shim: stands between the program and the system calls that open, write, sync, name and close
// files below one folder, counts them, and lets the n-th one fail or kills the process there. Tests only.
#pragma once

extern "C" {

/// What happens at a call that is due. Any other value is the errno that the call fails with.
enum FaultAction : int {
  kFaultKill = -1,  ///< SIGKILL before the call
  kFaultTear = -2,  ///< a write puts half of its bytes down first, then SIGKILL; other calls as kFaultKill
};

/// Counts calls below that folder from now on, from 0; a null pointer ends it. At most 1,000 characters.
void FaultsWatch(const char* folder);
/// The nth call from now on (1: the next one) meets the action; stays: so does every later one. nth 0: none.
void FaultsArm(long nth, int action, bool stays);
/// After that many more bytes every write below the folder fails with ENOSPC; below 0: never.
void FaultsDiskFull(long bytes);
/// Calls seen since FaultsWatch.
long FaultsSeen();
/// Faults that were due since FaultsArm or FaultsDiskFull.
long FaultsMet();
/// Name of the last call that met a fault ("write"); "" when none did.
const char* FaultsMetName();
/// Path of the file that the call was about; "" when none did.
const char* FaultsMetPath();
}
