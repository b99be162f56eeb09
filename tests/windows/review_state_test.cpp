// What is enabled and shown in the selection window, without the window.
#include <gtest/gtest.h>

#include <QStringList>

#include "selection/form_sec_state.h"

namespace vesk {
namespace {

/// What is on, by name.
std::string On(const SelectionState& state) {
  const std::pair<bool, const char*> flags[] = {{state.confirm, "confirm"},
                                                {state.cancel, "cancel"},
                                                {state.chooseRating, "rating"},
                                                {state.ratingPathShown, "path"},
                                                {state.makeTable, "table"},
                                                {state.drawGraph, "graph"},
                                                {state.goToChange, "changes"},
                                                {state.save, "save"},
                                                {state.undoAll, "undo"},
                                                {state.goToDate, "date"},
                                                {state.correctDates, "clock"},
                                                {state.correctDatesShown, "+clock"},
                                                {state.removeCorrectionShown, "+remove"},
                                                {state.lastReading, "last"},
                                                {state.changedRowsShown, "+rows"},
                                                {state.loadedPartShown, "+loaded"},
                                                {state.graphListCommands, "list"}};
  QStringList on;
  for (const auto& [flag, name] : flags) {
    if (flag) on += QLatin1String(name);
  }
  return on.join(QLatin1Char(' ')).toStdString();
}

SelectionFacts Year() {
  return {.confirm = {QStringLiteral("x"), true},
          .curvesAreOffered = true,
          .yearsChosen = true,
          .choiceIsLoaded = true,
          .stationIsLoaded = true,
          .yearIsLoaded = true,
          .readings = 100,
          .changes = 2,
          .loadedFiles = 3};
}

SelectionFacts File() {
  SelectionFacts facts = Year();
  facts.yearsChosen = facts.yearIsLoaded = false;
  facts.fileChosen = facts.canCorrectDates = true;
  facts.loadedFiles = 0;
  return facts;
}

template <class Change>
std::string After(SelectionFacts facts, Change change) {
  change(facts);
  return On(StateOf(facts));
}

TEST(SelectionState, ATableAndAGraphNeedTheChoiceToBeWhatIsLoaded) {
  EXPECT_EQ(On(StateOf({})), "cancel +clock");
  EXPECT_EQ(On(StateOf(Year())), "confirm cancel rating path table graph changes date +clock +loaded");
  EXPECT_EQ(On(StateOf(File())), "confirm cancel rating path graph changes date clock +clock last");
  EXPECT_EQ(After(Year(), [](auto& f) { f.choiceIsLoaded = false; }),
            "confirm cancel rating path changes date +clock +loaded");
  EXPECT_EQ(After(Year(), [](auto& f) { f.choiceIsLoaded = f.stationIsLoaded = false; }),
            "confirm cancel changes date +clock +loaded");
  EXPECT_EQ(After(Year(), [](auto& f) { f.choiceIsLoaded = f.yearsChosen = false; }),
            "confirm cancel changes date +clock +loaded")
      << "the station alone is chosen";
  EXPECT_EQ(After(File(), [](auto& f) { f.filePressed = true; }),
            "confirm cancel rating path graph date clock +clock last")
      << "a file that was only pressed has no changes to show, though it be the loaded one";
  EXPECT_EQ(After(Year(), [](auto& f) { f.busy = true; }), "rating path changes date +clock +loaded");
  EXPECT_EQ(After(Year(), [](auto& f) { f.curvesAreOffered = false; }),
            "confirm cancel rating table graph changes date +clock +loaded");
  EXPECT_EQ(After(Year(), [](auto& f) { f.readings = 0; }), "confirm cancel rating path date +clock +loaded");
}

TEST(SelectionState, UnsavedWorkAndTheClockCommand) {
  EXPECT_EQ(StateOf(Year()).changes, 2);
  EXPECT_EQ(After(Year(),
                  [](auto& f) {
                    f.unsaved = true;
                    f.changedRows = 1;
                  }),
            "confirm cancel rating path table graph changes save undo date +clock +rows +loaded");
  EXPECT_EQ(After(File(), [](auto& f) { f.isCorrected = true; }),
            "confirm cancel rating path graph changes date clock +clock +remove last");
  EXPECT_EQ(After(File(), [](auto& f) { f.isCorrected = f.correctionWaits = f.unsaved = true; }),
            "confirm cancel rating path graph changes save undo date clock")
      << "the next one waits";
  EXPECT_EQ(After({}, [](auto& f) { f.graphEntries = 1; }), "cancel +clock list");
}

}  // namespace
}  // namespace vesk
