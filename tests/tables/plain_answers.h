// An operator who answers a table's questions, keeps what was said and sees the progress never fall.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "tables/build_level_table.h"

namespace vesk::test {

class PlainAnswers : public BuildQuestions {
 public:
  HourlyAnswer hourly = HourlyAnswer::Yes;
  bool despiteNotes = true, replace = true, goOn = true;
  std::function<bool(BuildStep, int)> progress = [](BuildStep, int) { return true; };
  QString said;  ///< "title|text" a line

  void TellWorkbooksAreOpen(const BuildMessage& message) override { Keep(message); }
  bool AskDespiteNotes(const std::vector<QString>& notes) override {
    for (const QString& note : notes) Keep({note, QStringLiteral("note")});
    return despiteNotes;
  }
  bool AskToReplace(const QString& path, TableOrigin origin) override {
    Keep({path, origin == TableOrigin::Changed ? QStringLiteral("changed") : QStringLiteral("unknown")});
    return replace;
  }
  HourlyAnswer AskForHourlyValues(const BuildMessage& message) override {
    Keep(message);
    return hourly;
  }
  bool WarnNotToSwitchSheets(const BuildMessage& message) override {
    Keep(message);
    return goOn;
  }
  bool ShowProgress(BuildStep step, int percent) override {
    EXPECT_TRUE(percent == 0 || (percent >= percent_ && percent <= 100 && step >= step_)) << percent;
    percent_ = percent;
    step_ = step;
    return progress(step, percent);
  }

 private:
  void Keep(const BuildMessage& message) {
    said += message.title + QLatin1Char('|') + message.text + QLatin1Char('\n');
  }
  int percent_ = 0;
  BuildStep step_ = BuildStep::Opening;
};

}  // namespace vesk::test
