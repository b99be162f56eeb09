// The selection window on a folder of made-up raw files, with an operator whose answers a test decides.
#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <memory>

#include "selection/form_sec.h"
#include "selection/review_grid_view.h"
#include "support/raw_file_writer.h"
#include "windows/frame_double.h"

namespace vesk::test {

/// What the operator answers, and what was asked and told.
struct Operator {
  UnsavedAnswer unsaved = UnsavedAnswer::Stay;
  RecoverAnswer recover = RecoverAnswer::Later;
  bool yes = true;
  bool backsOut = false;  ///< of what a table asks
  int unsavedQuestions = 0;
  int recoverQuestions = 0;
  bool correctsRecords = false;
  QString reason = QStringLiteral("because");
  QStringList reasonsOffered;
  std::optional<StationLimits> limits, keptLimits;
  StationLimits proposedLimits;
  std::optional<TrueTimes> clock;
  std::function<void()> whileAskedToTakeOver;
  QStringList records;  ///< questions about extreme records
  QStringList told;
};

class OperatorsAnswers : public ReviewQuestions {
 public:
  explicit OperatorsAnswers(Operator& person) : person_(person) {}
  UnsavedAnswer AskAboutUnsavedChanges(QWidget*) override {
    ++person_.unsavedQuestions;
    return person_.unsaved;
  }
  RecoverAnswer AskToRecover(QWidget*, int) override {
    ++person_.recoverQuestions;
    return person_.recover;
  }
  bool AskToCorrectRecord(QWidget*, const QString& text) override {
    person_.records += text;
    return person_.correctsRecords;
  }
  bool AskToTakeOver(QWidget*, const QString& text) override {
    person_.told += text;
    if (person_.whileAskedToTakeOver) person_.whileAskedToTakeOver();
    return person_.yes;
  }
  std::optional<QString> AskForReason(QWidget*, const QString&, const QString& text,
                                      const QStringList& earlier) override {
    person_.told += text;
    person_.reasonsOffered = earlier;
    return person_.backsOut ? std::nullopt : std::optional(person_.reason);
  }
  std::optional<std::optional<StationLimits>> AskForLimits(QWidget*, const QString&,
                                                           const std::optional<StationLimits>& kept,
                                                           const StationLimits& proposed) override {
    person_.keptLimits = kept;
    person_.proposedLimits = proposed;
    if (person_.backsOut) return std::nullopt;
    return std::optional<std::optional<StationLimits>>(std::in_place, person_.limits);
  }
  std::optional<TrueTimes> AskForClockPairs(QWidget*, const RawRows&, const TrueTimes&) override {
    return person_.clock;
  }
  bool AskYesNo(QWidget*, const QString&, const QString& text) override {
    person_.told += text;
    return person_.yes;
  }
  std::optional<bool> AskYesNoOrBackOut(QWidget*, const QString&, const QString& text,
                                        const QString& more) override {
    person_.told += text + more;
    return person_.backsOut ? std::nullopt : std::optional(person_.yes);
  }
  bool AskToGoOn(QWidget*, const QString&, const QString& text, const QString&) override {
    person_.told += text;
    return !person_.backsOut;
  }
  bool WarnOrBackOut(QWidget*, const QString&, const QString& text) override {
    person_.told += text;
    return !person_.backsOut;
  }
  void Tell(QWidget*, const QString&, const QString& text) override { person_.told += text; }
  void Warn(QWidget*, const QString&, const QString& text) override { person_.told += text; }

 private:
  Operator& person_;
};

inline DateTime At(int year, int month, int day, int hour = 0, int minute = 0) {
  return DateTime(std::chrono::sys_days(std::chrono::year(year) / month / day)) + std::chrono::hours(hour) +
         std::chrono::minutes(minute);
}

class ReviewWindowTest : public testing::Test {
 protected:
  static constexpr const char* kStation = "001-12345";

  explicit ReviewWindowTest(LanguageChoice language = LanguageChoice::Turkish) : frame_(language) {
    // Two files of water year 2010, one of which reaches into 2011, and a second station.
    Write("12345", "010203", At(2009, 11, 1, 1), At(2010, 2, 1));
    Write("12345", "010204", At(2010, 9, 25, 1), At(2010, 10, 6));
    Write("20000", "010203", At(2010, 3, 1, 1), At(2010, 3, 3));
  }

  QString Data() { return frame_.Run().dataDirectory; }
  void Write(const char* station, const char* stem, DateTime first, DateTime last) {
    RawFileSketch sketch;
    sketch.station = QLatin1String(station);
    sketch.stem = QLatin1String(stem);
    sketch.first = first;
    sketch.last = last;
    sketch.midnightAs24 = true;
    WriteSketch(Data(), sketch);
  }

  void Open(WorkMode mode = WorkMode::DataFile) {
    frame_.Run().workMode = mode;
    form_ = new FormSec(frame_, std::make_unique<OperatorsAnswers>(operator_));
    frame_.ShowChild(form_);
  }
  /// The program dies: nothing is saved, nothing is asked.
  void Kill() { delete form_.data(); }

  template <class Control>
  Control& Find(const char* name) {
    auto* control = form_->findChild<Control*>(QLatin1String(name));
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  QPushButton& Button(const char* name) { return Find<QPushButton>(name); }
  void Push(const char* name) {
    QTest::mouseClick(&Button(name), Qt::LeftButton);
    Settle();
  }
  /// Lets through what waits in the event queue: editors commit and closed windows go there.
  static void Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  void Click(const char* list, int row, Qt::KeyboardModifiers keys = {}) {
    auto& widget = Find<QListWidget>(list);
    ASSERT_LT(row, widget.count());
    widget.scrollToItem(widget.item(row));
    QTest::mouseClick(widget.viewport(), Qt::LeftButton, keys,
                      widget.visualItemRect(widget.item(row)).center());
  }
  QStringList Entries(const char* list) {
    auto& widget = Find<QListWidget>(list);
    QStringList entries;
    for (int row = 0; row < widget.count(); ++row) entries += widget.item(row)->text();
    return entries;
  }
  QStringList Chosen(const char* list) {
    QStringList entries;
    for (const QListWidgetItem* item : Find<QListWidget>(list).selectedItems()) entries += item->text();
    return entries;
  }

  ReviewGridView& Grid() { return Find<ReviewGridView>("VS1"); }
  QString Cell(int row, GridColumn column) {
    return Grid().model()->index(row - 1, static_cast<int>(column)).data().toString();
  }
  int Readings() { return Grid().model()->rowCount() - 1; }
  /// Types into the level cell of a row, as an operator does: click, keys, Enter.
  void TypeLevel(int row, const QString& text) {
    ReviewGridView& grid = Grid();
    grid.GoTo(row, GridColumn::Level, false);
    const QRect cell = grid.visualRect(grid.currentIndex());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell.center());
    QTest::keyClick(grid.viewport(), text.at(0).toLatin1());
    QWidget* editor = QApplication::focusWidget();
    ASSERT_NE(editor, grid.viewport());
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    Settle();
  }
  void LoadWaterYear(int stationRow = 0, int yearRow = 0) {
    Click("ListIst", stationRow);
    Click("ListSuYili", yearRow);
    Push("CmdTamam");
  }

  FrameDouble frame_;
  Operator operator_;
  QPointer<FormSec> form_;
};

}  // namespace vesk::test
