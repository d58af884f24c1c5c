#include "screens/frame/asking_window.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QWindow>

namespace {

/// Between two questions, and while another program is in front, no window is active.
QPointer<QWidget> lastActive;

bool MayAsk(const QWidget* window) { return window->isVisible() && !window->isMinimized(); }

QWidget* OwnerOf(const QWidget* screen) {
  return screen->parentWidget() ? screen->parentWidget()->window() : nullptr;
}

}  // namespace

void FollowActiveWindow() {
  static const auto following =
      QObject::connect(qApp, &QGuiApplication::focusWindowChanged, qApp, [] {
        QWidget* active = QApplication::activeWindow();
        // A dialog comes and goes; the window that it belongs to stays.
        while (qobject_cast<QDialog*>(active) && OwnerOf(active)) active = OwnerOf(active);
        if (active) lastActive = active;
      });
}

QWidget* AskingWindow(QWidget* other) {
  if (QWidget* const waiting = QApplication::activeModalWidget()) return waiting;
  QWidget* const active = QApplication::activeWindow();
  // A screen that has just closed asks in the name of the one that it belonged to.
  for (QWidget* window = active ? active : lastActive.data(); window; window = OwnerOf(window))
    if (MayAsk(window)) return window;
  return other;
}
