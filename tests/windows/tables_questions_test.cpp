// What a table build asks and shows in the window, with the real boxes.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include "selection/review_questions.h"
#include "selection/window_build_questions.h"
#include "shell/language.h"

namespace vesk {
namespace {

class TableQuestions : public testing::Test {
 protected:
  void SetUp() override {
    language_.FillTurkish();
    window_.show();
  }
  /// Presses a key in the box that the call opens, and keeps what the box says.
  template <class Call>
  auto WithKey(Qt::Key key, Call call) {
    QTimer::singleShot(0, &window_, [this, key] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      said_ = box->text() + QLatin1Char('|') + box->informativeText();
      QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
      QWidget* focus = box->focusWidget();
      QApplication::sendEvent(focus == nullptr ? box : focus, &press);
      QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
      QApplication::sendEvent(focus == nullptr ? box : focus, &release);
    });
    return call();
  }

  Language language_;
  QWidget window_;
  ReviewMessageBoxes boxes_{language_};
  WindowBuildQuestions asking_{window_, boxes_, language_, QStringLiteral("TF")};
  QString said_;
};

TEST_F(TableQuestions, EscapeMeansNoTableAtEveryBox) {
  const BuildMessage message{QStringLiteral("Saatlik?"), QString()};
  EXPECT_EQ(WithKey(Qt::Key_Escape, [&] { return asking_.AskForHourlyValues(message); }),
            HourlyAnswer::BackOut);
  EXPECT_EQ(said_, QStringLiteral("Saatlik?|TF")) << "which extremes are in force";
  EXPECT_FALSE(WithKey(Qt::Key_Escape, [&] { return asking_.WarnNotToSwitchSheets(message); }));
  const auto replace = [&] {
    return asking_.AskToReplace(QStringLiteral("/veri/Tablo-12345(2011).xls"), TableOrigin::Changed);
  };
  EXPECT_FALSE(WithKey(Qt::Key_Escape, replace));
  EXPECT_TRUE(said_.contains(QStringLiteral("Tablo-12345(2011).xls"))) << said_.toStdString();
  const auto despite = [&] {
    return asking_.AskDespiteNotes(std::vector<QString>(40, QStringLiteral("<b>")));
  };
  EXPECT_FALSE(WithKey(Qt::Key_Escape, despite));
  EXPECT_EQ(said_.count(QStringLiteral("• <b>")), 12);
  EXPECT_TRUE(said_.contains(QStringLiteral("28 not daha"))) << said_.toStdString();
}

TEST_F(TableQuestions, SpaceOnTheDefaultButtonGoesOnOnlyWhereNothingIsLost) {
  const BuildMessage message{QStringLiteral("Saatlik?"), QString()};
  EXPECT_EQ(WithKey(Qt::Key_Space, [&] { return asking_.AskForHourlyValues(message); }), HourlyAnswer::Yes);
  EXPECT_TRUE(WithKey(Qt::Key_Space, [&] { return asking_.WarnNotToSwitchSheets(message); }));
  EXPECT_FALSE(WithKey(Qt::Key_Space, [&] {
    return asking_.AskToReplace(QStringLiteral("/veri/t.xls"), TableOrigin::Unknown);
  }));
  EXPECT_FALSE(WithKey(Qt::Key_Space, [&] { return asking_.AskDespiteNotes({QStringLiteral("n")}); }));
}

TEST_F(TableQuestions, ProgressSaysWhatIsDoneBlocksTheRestAndStops) {
  ASSERT_TRUE(asking_.ShowProgress(BuildStep::Opening, 0));
  auto* dialog = window_.findChild<QProgressDialog*>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(QApplication::activeModalWidget(), dialog) << "nothing else takes input";
  QString before;
  for (const BuildStep step : {BuildStep::HourlySheet, BuildStep::DailySheet, BuildStep::Saving}) {
    EXPECT_TRUE(asking_.ShowProgress(step, 10 * static_cast<int>(step)));
    EXPECT_NE(dialog->labelText(), before);
    EXPECT_EQ(dialog->value(), 10 * static_cast<int>(step));
    before = dialog->labelText();
  }
  QTimer::singleShot(0, dialog, [dialog] { dialog->findChild<QPushButton*>()->click(); });
  EXPECT_FALSE(asking_.ShowProgress(BuildStep::Saving, 95));
  EXPECT_FALSE(asking_.ShowProgress(BuildStep::Saving, 98)) << "once stopped, for good";
}

}  // namespace
}  // namespace vesk
