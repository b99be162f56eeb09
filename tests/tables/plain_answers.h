// An operator who answers a table's questions, keeps what was said and sees the progress never fall.
#pragma once

#include <gtest/gtest.h>

#include "tables/build_level_table.h"

namespace vesk::test {

class PlainAnswers : public BuildQuestions {
 public:
  bool hourly = true;
  QString said;  ///< "title|text" a line

  void TellWorkbooksAreOpen(const BuildMessage& message) override { Keep(message); }
  bool AskForHourlyValues(const BuildMessage& message) override {
    Keep(message);
    return hourly;
  }
  void WarnNotToSwitchSheets(const BuildMessage& message) override { Keep(message); }
  void ShowProgress(int percent) override {
    EXPECT_TRUE(percent == 0 || (percent >= percent_ && percent <= 100)) << percent;
    percent_ = percent;
  }

 private:
  void Keep(const BuildMessage& message) {
    said += message.title + QLatin1Char('|') + message.text + QLatin1Char('\n');
  }
  int percent_ = 0;
};

}  // namespace vesk::test
