// All modeless screens, by one table: showing, refreshing, keeping as left and closing follow.
#pragma once

#include <QKeySequence>
#include <span>

#include "core/kept_views.h"
#include "screens/frame/menus.h"

class QWidget;
class Screen;

/// A screen: the window that its place is kept under, the command that shows it, and its maker.
struct ScreenRow {
  WindowId Id;
  const char* Command;  // the name of the menu's action
  const char* Caption;  // in the menu, untranslated
  int Key;              // that gives the command, or 0
  Screen* (*Make)(QWidget* table);
};

/// Tells which screens there are; `table` is the window that they belong to. The rows must live as
/// long as the program.
void UseScreens(QWidget* table, std::span<const ScreenRow> rows);

/// The menu's command that shows a screen, without its key; nothing for a screen that isn't there.
MenuRow RowThatShows(WindowId id);

/// Shows a screen in front of the others; it is made at the first showing, and stands where it was
/// left.
Screen* ShowScreen(WindowId id);

/// A screen if it has been made, else nothing.
Screen* FindScreen(WindowId id);

/// True when there is a screen of this id.
bool HasScreen(WindowId id);

/// Lets all screens be used, those that stand and those that are shown meanwhile, although `window`
/// waits with the rest of the program blocked. Nothing ends it.
void KeepScreensUsable(QWidget* window);

/// Brings all that can be seen up to date. Under Hyper-Drive, which tells nothing of single rolls,
/// one clock then goes on refreshing them, more slowly where that costs more than the run should
/// feel.
void RefreshScreens();

/// Shows the screens that could be seen when the last session ended.
void ShowScreensAsLeft();

/// Closes every screen; false when one of them stays.
bool CloseScreens();
