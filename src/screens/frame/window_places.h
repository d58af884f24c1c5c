// Where windows stand: kept with the game, and put back on a screen that may be smaller now.
#pragma once

#include <QWidget>

#include "core/kept_views.h"

/// Puts a window where it was left, as far as the screens of today allow, and notes its place
/// whenever it is hidden. Call it before the window is shown first.
void FollowPlace(QWidget* window, WindowId id);

/// Notes the places of all windows that are followed, and which of them can be seen.
void KeepWindowPlaces();

/// True for a window that could be seen when its place was kept.
bool WasOpen(WindowId id);
