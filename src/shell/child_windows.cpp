#include "shell/child_windows.h"

#include <QMdiSubWindow>
#include <QMouseEvent>

#include "shell/main_frame.h"

namespace vesk {
namespace {

/// Size that the window asks for, its frame included.
QSize WantedSize(const QMdiSubWindow& frame, const QWidget& window, const QSize& asked) {
  const QSize extra = frame.sizeHint() - window.sizeHint();
  return asked + extra;
}

}  // namespace

ChildWindows::ChildWindows(QWidget* parent) : QMdiArea(parent) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  // Each window keeps its own state: by default a small one would be maximised after a maximised one, and
  // a larger one would be given its normal size in a maximised frame.
  setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
  setBackground(palette().color(QPalette::Window).darker(112));
}

ChildWindows::~ChildWindows() {
  qDeleteAll(subWindowList());
}

void ChildWindows::ShowAt(QWidget* window, const QPoint& place) {
  const QSize asked = window->testAttribute(Qt::WA_Resized) ? window->size() : window->sizeHint();
  window->setAttribute(Qt::WA_DeleteOnClose);
  QMdiSubWindow* frame = addSubWindow(window);
  frame->setAttribute(Qt::WA_DeleteOnClose);
  window->installEventFilter(this);
  connect(window, &QObject::destroyed, frame, [frame] { frame->close(); });
  connect(frame, &QObject::destroyed, this, &ChildWindows::WindowClosed);
  frame->resize(
      WantedSize(*frame, *window, asked).boundedTo(viewport()->size() - QSize(place.x(), place.y())));
  frame->move(place);
  if (window->property(kOpensMaximised).toBool()) {
    frame->showMaximized();
  } else {
    frame->show();
  }
  window->setFocus();
}

QMdiSubWindow* ChildWindows::Find(const QString& objectName) const {
  for (QMdiSubWindow* frame : subWindowList()) {
    const QWidget* window = frame->widget();
    const bool open = window != nullptr && !frame->isHidden() && !window->isHidden();
    if (open && window->objectName() == objectName) return frame;
  }
  return nullptr;
}

bool ChildWindows::Close(const QString& objectName) {
  QMdiSubWindow* frame = Find(objectName);
  return frame == nullptr || frame->close();
}

bool ChildWindows::CloseAll() {
  for (const QPointer<QMdiSubWindow> frame : subWindowList(StackingOrder)) {
    if (frame != nullptr && !frame->isHidden() && !frame->close()) return false;
  }
  return true;
}

bool ChildWindows::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::HideToParent) return QMdiArea::eventFilter(watched, event);
  // A window that closes by its own button takes its frame along; one that is minimised does not.
  auto* frame = qobject_cast<QMdiSubWindow*>(watched->parent());
  if (frame != nullptr && frame->widget() == watched && !frame->isMinimized() && !frame->isShaded())
    frame->hide();
  return false;
}

bool ChildWindows::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    const QPoint place = static_cast<QMouseEvent*>(event)->position().toPoint();
    if (viewport()->childAt(place) == nullptr) Q_EMIT EmptyAreaClicked();
  }
  return QMdiArea::viewportEvent(event);
}

}  // namespace vesk
