// A graph window on a made-up water year, driven by mouse and keys.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <memory>

#include "datafiles/dates.h"
#include "datafiles/water_year.h"
#include "graphs/form_graf.h"
#include "graphs/graph_page.h"
#include "graphs/open_graph.h"
#include "windows/frame_double.h"

namespace vesk::test {

/// Hourly readings of water year 2011, 100 to 199 cm, and one peak of 250 cm at 15/03/2011 12:00.
inline StationSeries YearGrid() {
  std::vector<Reading> readings;
  for (int hour = 0; hour < 365 * 24; ++hour) {
    const bool peak = hour == 165 * 24 + 12;
    readings.push_back({.levelCm = peak ? 250.0 : 100.0 + hour % 100,
                        .day = WaterYearFirstDay(2011) + std::chrono::days(hour / 24),
                        .minuteOfDay = static_cast<std::int16_t>(hour % 24 * 60)});
  }
  return StationSeries(std::move(readings));
}

class GraphWindow : public testing::Test {
 protected:
  GraphWindow() { frame_.Run().options = FirstRunOptions(); }

  void Open(const StationSeries& grid = YearGrid()) {
    OpenSingleGraph(frame_, grid, {QStringLiteral("12345"), QStringLiteral("Göksu"), 2011});
    Take();
  }
  void Take() {
    form_ = qobject_cast<FormGraf*>(frame_.Child(QStringLiteral("FormGraf")));
    ASSERT_NE(form_, nullptr);
    form_->resize(1200, 700);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form_));
    picture_ = form_->findChild<QWidget*>(QStringLiteral("Picture1"));
    ASSERT_NE(picture_, nullptr);
  }

  template <class Control>
  Control& Find(const char* name) {
    auto* control = form_->findChild<Control*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  QString Field(const char* name) { return Find<QLineEdit>(name).text(); }
  QString Label(const char* name) { return Find<QLabel>(name).text(); }
  QAction& Action(const char* name) { return Find<QAction>(name); }
  void Push(const char* name) { QTest::mouseClick(&Find<QPushButton>(name), Qt::LeftButton); }

  PageScale Scale() const { return ScaleOfPage(form_->Pages().Current(), form_->Sheet(), picture_->size()); }
  /// Where a time and a level lie on the picture.
  QPoint At(const char* time, double levelCm) const {
    const PageScale scale = Scale();
    const DateTime when = ReadDateTime(QString::fromLatin1(time)).value_or(DateTime{});
    const double t = TimeCoordinate(form_->Sheet().firstDay, when);
    return QPointF(XOfTime(scale, t), YOfLevel(scale, levelCm)).toPoint();
  }
  void Drag(QPoint from, QPoint to) {
    QTest::mousePress(picture_, Qt::LeftButton, {}, from);
    Move(to, Qt::LeftButton);
    QTest::mouseRelease(picture_, Qt::LeftButton, {}, to);
  }
  void Move(QPoint to, Qt::MouseButtons held) {
    QMouseEvent move(QEvent::MouseMove, to, picture_->mapToGlobal(to), Qt::NoButton, held, {});
    QCoreApplication::sendEvent(picture_, &move);
  }
  void TurnWheel(QPoint at, int notches) {
    QWheelEvent wheel(at, picture_->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(picture_, &wheel);
  }

  FrameDouble frame_;
  FormGraf* form_ = nullptr;
  QWidget* picture_ = nullptr;
};

}  // namespace vesk::test
