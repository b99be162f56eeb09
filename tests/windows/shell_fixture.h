// A main window on a program folder of the test's own, with stand-ins for the work windows.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QTest>

#include <memory>

#include "platform/spreadsheet.h"
#include "shell/anamenu.h"
#include "shell/program_folder_fixture.h"
#include "shell/run_values.h"

namespace vesk::test {

/// A work window that can be told to refuse its closing.
class StandIn : public QWidget {
 public:
  StandIn(const QString& name, const bool& refuses) : refuses_(refuses) {
    setObjectName(name);
    resize(400, 300);
  }

 protected:
  void closeEvent(QCloseEvent* event) override { event->setAccepted(!refuses_); }

 private:
  const bool& refuses_;
};

class ShellWindowsTest : public ProgramFolderTest {
 protected:
  /// Starts up on the program folder and shows the main window.
  void Open(const QByteArray& language = "TURKCE") {
    MakeFolder(home_ + QStringLiteral("Data/Arsiv"));
    MakeFolder(home_ + QStringLiteral("Reg"));
    MakeFile(program_ + QStringLiteral("IstSbl.mdb"));
    MakeSettings(
        "[Genel]\r\nDataDirectory=C:\\Data\\\r\nArvelDataDirectory=C:\\Reg\\\r\n[Options]\r\n02=-"
        "2147483643\r\n"
        "03=16711680\r\n08=FT\r\n17=kept\r\n21=" +
        language + "\r\n22=41\r\n");
    Start();
  }
  void Start() {
    window_.reset();
    run_ = RunValues();
    report_ = StartUp(
        {program_, QStringLiteral("vesk4"), home_, QStringLiteral("02/01/1999"), QLatin1Char('.')}, run_);
    window_ = std::make_unique<Anamenu>(run_, Makers());
    window_->resize(1366, 768);
    window_->show();
    window_->Open(report_);
  }
  WindowMakers Makers() {
    const auto maker = [this](const char* name) {
      return [this, name](MainFrame&) { return new StandIn(QLatin1String(name), refuses_); };
    };
    return {maker("FormSec"), maker("Form2"), maker("Form_IstGir"), {}};
  }

  [[nodiscard]] QAction& Entry(const char* name) const {
    auto* entry = window_->findChild<QAction*>(QLatin1String(name));
    EXPECT_NE(entry, nullptr) << name;
    return *entry;
  }
  [[nodiscard]] QMenu& Menu(const char* name) const {
    return *window_->findChild<QMenu*>(QLatin1String(name));
  }
  void Trigger(const char* name) const {
    Entry(name).trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  /// The open child window of that name; null when there is none.
  [[nodiscard]] QWidget* Child(const char* name) const {
    for (const QMdiSubWindow* frame : window_->findChild<QMdiArea*>()->subWindowList()) {
      QWidget* child = frame->widget();
      if (child != nullptr && frame->isVisible() && child->objectName() == QLatin1String(name)) return child;
    }
    return nullptr;
  }
  [[nodiscard]] QMessageBox* Message() const {
    for (auto* box : window_->findChildren<QMessageBox*>()) {
      if (box->isVisible()) return box;
    }
    return nullptr;
  }

  bool refuses_ = false;  ///< what the stand-ins answer when they are asked to close
  RunValues run_;
  StartUpReport report_;
  std::unique_ptr<Anamenu> window_;
};

}  // namespace vesk::test
