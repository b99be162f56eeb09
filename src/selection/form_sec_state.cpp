#include "selection/form_sec_state.h"

namespace vesk {

SelectionState StateOf(const SelectionFacts& facts) {
  const bool rows = facts.readings > 0;
  const bool ready = rows && facts.choiceIsLoaded && !facts.busy;
  const bool otherFileChosen = facts.fileChosen && !facts.choiceIsLoaded;
  const bool takesCurve = facts.fileChosen || (facts.yearIsLoaded && facts.choiceIsLoaded);
  SelectionState state;
  state.confirmCaption = facts.confirm.caption;
  state.confirm = facts.confirm.enabled && !facts.busy;
  state.cancel = !facts.busy;
  state.chooseRating = takesCurve;
  state.ratingPathShown = takesCurve && facts.curvesAreOffered;
  state.makeTable = ready && facts.yearIsLoaded;
  state.drawGraph = ready;
  // A file that is chosen and not yet loaded has no changes of its own to show.
  state.goToChange = rows && !otherFileChosen;
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
