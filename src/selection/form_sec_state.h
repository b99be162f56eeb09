// What of the selection window is enabled, shown and worded: one pure function of what it knows.
#pragma once

#include <QString>

#include <optional>

#include "review/browser.h"

namespace vesk {

struct SelectionFacts {
  ConfirmButton confirm;          ///< as the choice in the lists has it
  bool curvesAreOffered = false;  ///< rating curves belong to the Turkish window that loads
  bool busy = false;              ///< a table or a graph is being made: choices wait
  bool fileChosen = false;        ///< in the lists
  bool filePressed = false;       ///< since the last load or edit: it may not be what the grid holds
  bool yearsChosen = false;       ///< in the lists
  bool choiceIsLoaded = false;    ///< the readings are those of the choice in the lists
  bool stationIsLoaded = false;   ///< the readings are those of the station in the lists
  bool yearIsLoaded = false;      ///< the readings are those of water years
  int readings = 0;
  int changes = 0;  ///< edits since loading
  bool unsaved = false;
  bool canCorrectDates = false;
  bool isCorrected = false;      ///< the readings are re-timed
  bool correctionWaits = false;  ///< to be saved or taken back
  int changedRows = 0;
  int loadedFiles = 0;  ///< entries of the list of files that went into the load
  int graphEntries = 0;
};

struct SelectionState {
  QString confirmCaption;
  bool confirm = false;
  bool cancel = false;
  bool chooseRating = false;
  bool ratingPathShown = false;
  bool makeTable = false;
  bool drawGraph = false;
  bool goToChange = false;     ///< next and previous
  std::optional<int> changes;  ///< the count to show; none: an empty box
  bool save = false;
  bool undoAll = false;
  bool goToDate = false;
  bool correctDates = false;
  bool correctDatesShown = false;
  bool removeCorrectionShown = false;
  bool lastReading = false;
  bool changedRowsShown = false;
  bool loadedPartShown = false;
  bool graphListCommands = false;
};

/// A table must not bear the name of another choice than the one that is loaded, nor a graph.
SelectionState StateOf(const SelectionFacts& facts);

}  // namespace vesk
