// Anamenu: the main window. Its menus are the way into every other window, which open inside it.
#pragma once

#include <QMainWindow>

#include <functional>
#include <memory>

#include "shell/main_frame.h"
#include "shell/qt_texts.h"
#include "shell/start_up.h"

class QAction;
class QLabel;
class QMenu;

namespace vesk {

class ChildWindows;

/// How to make what the main window opens. The program hands in the real ones.
struct WindowMakers {
  std::function<QWidget*(MainFrame&)> selection;        ///< `FormSec`
  std::function<QWidget*(MainFrame&)> storedTables;     ///< `Form2`
  std::function<QWidget*(MainFrame&)> stationRegister;  ///< `Form_IstGir`
  std::function<std::unique_ptr<Spreadsheet>()> office;
};

class Anamenu : public QMainWindow, public MainFrame {
  Q_OBJECT

 public:
  /// @param run started up; outlives the window
  Anamenu(RunValues& run, WindowMakers makers);
  ~Anamenu() override;

  /// Shows the logo and, in a message, what start-up has to say.
  void Open(const StartUpReport& report);

  RunValues& Run() override { return run_; }
  Spreadsheet& Office() override;
  void ShowChild(QWidget* window) override;
  bool CloseChild(const QString& objectName) override;
  void SetMenusEnabled(bool enabled) override;
  void ShowDataDirectory() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void CreateMenus();
  void CreateDataMenu();
  void CreateOthersMenu();
  void CreateLanguageMenu();
  QMenu* AddTopMenu(const char* name);
  template <class Slot>
  QAction* AddEntry(QMenu* menu, const char* name, Slot slot);
  static void AddSeparator(QMenu* menu, const char* name);
  void ApplyMenuCaptions();

  void StartCommunication();
  void OpenDataFile();
  void OpenMultipleGraph();
  void OpenSelection(WorkMode mode);
  void OpenOnce(const QString& objectName, const std::function<QWidget*(MainFrame&)>& make);
  void OpenOptions();
  void ShowLogo();
  void CloseLogo();
  void Switch(LanguageChoice choice);
  void Exit();
  void Tell(const QString& text, const std::function<void()>& afterwards = {});

  RunValues& run_;
  WindowMakers makers_;
  QtTexts qtTexts_;
  std::unique_ptr<Spreadsheet> office_;
  ChildWindows* area_ = nullptr;
  QLabel* dataDirectory_ = nullptr;
  QMenu* Mnu1_ = nullptr;
  QMenu* Mnu3_ = nullptr;
  QMenu* Mnu4_ = nullptr;
  QAction* Mnutrk_ = nullptr;
  QAction* MnuIng_ = nullptr;
};

}  // namespace vesk
