// The windows inside the main window: shown at its top left corner, found by name, closed with their consent.
#pragma once

#include <QMdiArea>
#include <QString>

#include <functional>

namespace vesk {

class ChildWindows : public QMdiArea {
  Q_OBJECT

 public:
  explicit ChildWindows(QWidget* parent = nullptr);
  ~ChildWindows() override;

  /// Shows a window at a place of the area, no larger than the area. It is deleted when it closes.
  void ShowAt(QWidget* window, const QPoint& place);
  /// The open window of that name; null when there is none.
  [[nodiscard]] QMdiSubWindow* Find(const QString& objectName) const;
  /// False when the window refused; true when it is gone or was not open.
  bool Close(const QString& objectName);
  /// Closes one after the other; stops at the first that refuses and returns false.
  bool CloseAll();

 Q_SIGNALS:
  void EmptyAreaClicked();
  void WindowClosed();

 protected:
  bool viewportEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace vesk
