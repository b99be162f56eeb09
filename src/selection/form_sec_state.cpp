#include "selection/form_sec_state.h"

namespace vesk {

SelectionState StateOf(const SelectionFacts& facts) {
  const bool rows = facts.readings > 0;
  const bool ready = rows && facts.choiceIsLoaded && !facts.busy;
  // A curve is chosen behind the years, and another year of the same station does not turn it off.
  const bool takesCurve =
      facts.fileChosen || (facts.yearIsLoaded && facts.stationIsLoaded && facts.yearsChosen);
  SelectionState state;
  state.confirmCaption = facts.confirm.caption;
  state.confirm = facts.confirm.enabled && !facts.busy;
  state.cancel = !facts.busy;
  state.chooseRating = takesCurve;
  state.ratingPathShown = takesCurve && facts.curvesAreOffered;
  state.makeTable = ready && facts.yearIsLoaded;
  state.drawGraph = ready;
  // A file that was only pressed has no changes to show yet.
  state.goToChange = rows && !(facts.fileChosen && facts.filePressed);
  if (state.goToChange) state.changes = facts.changes;
  state.save = facts.unsaved;
  state.undoAll = facts.unsaved;
  state.goToDate = rows || facts.yearsChosen;
  state.correctDatesShown = !facts.correctionWaits;  // one at a time, however it came about
  state.correctDates = rows && facts.canCorrectDates && !facts.busy;
  state.removeCorrectionShown = facts.isCorrected && !facts.correctionWaits;
  state.lastReading = state.correctDates && state.correctDatesShown;
  state.changedRowsShown = facts.changedRows > 0;
  state.loadedPartShown = facts.changedRows > 0 || facts.loadedFiles > 0;
  state.graphListCommands = facts.graphEntries > 0;
  return state;
}

}  // namespace vesk
