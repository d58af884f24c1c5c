// The pointer of the mouse while something takes its time.
#pragma once

#include <QCursor>
#include <QGuiApplication>

/// One look of the pointer for all windows, while it lives.
class PointerLook {
 public:
  explicit PointerLook(Qt::CursorShape shape) { QGuiApplication::setOverrideCursor(shape); }
  ~PointerLook() { QGuiApplication::restoreOverrideCursor(); }
  PointerLook(const PointerLook&) = delete;
  PointerLook& operator=(const PointerLook&) = delete;
};
