// What a work window asks of the main window that frames it.
#pragma once

#include <QString>

class QWidget;

namespace vesk {

struct RunValues;
class Spreadsheet;

/// Property (bool) of a window that is to fill the frame when it is first shown. A window state set before
/// would make it a window of the desktop.
inline constexpr const char* kOpensMaximised = "opensMaximised";

class MainFrame {
 public:
  virtual ~MainFrame() = default;
  virtual RunValues& Run() = 0;
  /// The operator's spreadsheet application; started when first used.
  virtual Spreadsheet& Office() = 0;
  /// Puts a window into the frame at its top left corner and shows it. The frame owns it from then on; the
  /// window is deleted when it closes.
  virtual void ShowChild(QWidget* window) = 0;
  /// Closes the open child window with that objectName. False when it refused to close; true when it is gone
  /// or was not open.
  virtual bool CloseChild(const QString& objectName) = 0;
  /// Top-level menus Mnu1, Mnu3 and Mnu4.
  virtual void SetMenusEnabled(bool enabled) = 0;
  /// Shows the run's data directory again; a window that has changed it says so here.
  virtual void ShowDataDirectory() = 0;
};

}  // namespace vesk
