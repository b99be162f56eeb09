// A main window's frame for tests of one window: run values on a folder of the test's own, no menus, no
// office.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <vector>

#include "platform/spreadsheet.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk::test {

/// An office that refuses to open anything; a test that needs more hands in its own.
class NoOffice : public Spreadsheet {
 public:
  bool HasOpenWindow() override { return false; }
  Result<std::unique_ptr<Workbook>> Open(const QString& path, Macros /*macros*/) override {
    return Error{Message::Verbatim(QStringLiteral("No office in this test")), path, {}};
  }
  Status Show() override { return {}; }
  Status Recalculate() override { return {}; }
  Status Quit() override { return {}; }
};

class FrameDouble : public MainFrame {
 public:
  explicit FrameDouble(LanguageChoice choice = LanguageChoice::Turkish) {
    EXPECT_TRUE(folder_.isValid());
    run_.programFolder = Folder(QStringLiteral("program"));
    run_.dataDirectory = Folder(QStringLiteral("data"));
    run_.hydrologyDirectory = Folder(QStringLiteral("hydrology"));
    run_.stationDatabasePath = run_.hydrologyDirectory + QStringLiteral("Istasyon.db");
    run_.settings = Settings(run_.programFolder + QStringLiteral("vesk4.ini"));
    EXPECT_TRUE(run_.settings.WriteSetting(QStringLiteral("Genel"), QStringLiteral("DataDirectory"),
                                           run_.dataDirectory));
    if (choice == LanguageChoice::English) run_.language.FillEnglish();
    if (choice == LanguageChoice::Turkish) run_.language.FillTurkish();
  }
  ~FrameDouble() override {
    for (const QPointer<QWidget>& child : children_) delete child.data();
  }
  FrameDouble(const FrameDouble&) = delete;
  FrameDouble& operator=(const FrameDouble&) = delete;

  RunValues& Run() override { return run_; }
  Spreadsheet& Office() override { return office != nullptr ? *office : noOffice_; }
  void ShowChild(QWidget* window) override {
    window->setAttribute(Qt::WA_DeleteOnClose);
    children_.emplace_back(window);
    window->show();
    QApplication::setActiveWindow(window);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
  }
  bool CloseChild(const QString& objectName) override {
    closeRequests.push_back(objectName);
    QWidget* child = Child(objectName);
    return child == nullptr || child->close();
  }
  void SetMenusEnabled(bool enabled) override { menusEnabled = enabled; }
  void ShowDataDirectory() override { dataDirectoryShown = run_.dataDirectory; }

  /// The open child window of that name; null when there is none.
  QWidget* Child(const QString& objectName) {
    for (const QPointer<QWidget>& child : children_) {
      if (child != nullptr && child->objectName() == objectName && !child->isHidden()) return child.data();
    }
    return nullptr;
  }

  Spreadsheet* office = nullptr;  ///< the test's own, when it needs one
  bool menusEnabled = true;
  QString dataDirectoryShown;
  std::vector<QString> closeRequests;

 private:
  QString Folder(const QString& name) {
    EXPECT_TRUE(QDir(folder_.path()).mkpath(name));
    return folder_.filePath(name) + QLatin1Char('/');
  }

  QTemporaryDir folder_;
  RunValues run_;
  NoOffice noOffice_;
  std::vector<QPointer<QWidget>> children_;
};

}  // namespace vesk::test
