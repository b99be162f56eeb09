// Every operation of the program meets a fault at each of its calls. Afterwards the old state or the new one
// is whole: the new one when the operation said that it is done. What was acknowledged before is there, and
// no raw file has changed.
#include <cerrno>

#include "torture/fault_shim.h"
#include "torture/parts.h"
#include "torture/theatre.h"

namespace vesk::torture {

void FaultPoints(Run& run) {
  static constexpr int kActions[] = {ENOSPC, EIO, EACCES, kFaultKill, kFaultTear};
  // A round takes every operation; of the short form's one each fifth fault.
  for (int round = 0; round < run.Rounds(); ++round) {
    const std::uint64_t seed = run.SeedOf(round);
    for (const Operation& operation : Operations()) {
      Theatre theatre(run, seed, operation);
      theatre.Rehearse();
      run.Count("calls of " + std::string(operation.name), theatre.Calls());
      int turn = 0;
      for (long nth = 1; nth <= theatre.Calls(); ++nth) {
        for (const int action : kActions) {
          for (const bool stays : {false, true}) {
            if (stays && action < 0) continue;
            for (const bool goesOn : {false, true}) {
              if (goesOn && action < 0) continue;
              // A lock file that could not be removed holds up the next try of the same process for seconds.
              if (goesOn && !operation.opens && (stays || run.IsShort())) continue;
              if (!run.IsShort() || turn++ % 5 == 0) theatre.Play({nth, action, stays, -1}, goesOn);
            }
          }
        }
      }
    }
  }
}

}  // namespace vesk::torture
