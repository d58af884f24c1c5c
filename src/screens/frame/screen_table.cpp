#include "screens/frame/screen_table.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <map>
#include <utility>

#include "core/game_state.h"
#include "screens/frame/at_table.h"
#include "screens/frame/player_change.h"
#include "screens/frame/screen.h"
#include "screens/frame/window_places.h"

TableCalls AtTable;

namespace {

// In milliseconds.
constexpr int kFastestTick = 100;
constexpr int kSlowestTick = 1000;
constexpr int kRestForWork = 20;  // a tick comes this many times later than the last one took

QPointer<QWidget> Table;
std::span<const ScreenRow> Rows;
std::map<WindowId, QPointer<Screen>> Made;
QPointer<QWidget> Waiting;  // the window that screens can be used beside

const ScreenRow* FindRow(WindowId id) {
  const auto row =
      std::find_if(Rows.begin(), Rows.end(), [id](const ScreenRow& is) { return is.Id == id; });
  return row == Rows.end() ? nullptr : &*row;
}

/// A window that waits blocks all others but those that belong to it.
void LetBelong(Screen* screen, QWidget* owner) {
  screen->winId();  // makes the system's window, if there's none yet
  screen->windowHandle()->setTransientParent(owner->windowHandle());
}

void RefreshAll() {
  for (const auto& [id, screen] : Made)
    if (screen) screen->Refresh();
}

/// The one clock of all screens during a run.
class Clock : public QTimer {
 public:
  Clock() {
    setObjectName("timerRun");
    callOnTimeout(this, [this] {
      RefreshAll();
      Pace();
    });
  }

  void Pace() {
    const double spent = YieldTime - std::exchange(yieldTime_, YieldTime);
    if (!Game.HyperDriveOn) return stop();
    const int next = std::clamp(static_cast<int>(spent * kRestForWork), kFastestTick, kSlowestTick);
    if (!isActive() || interval() != next) start(next);
  }

 private:
  double yieldTime_ = 0;
};

QPointer<Clock> Tick;

}  // namespace

void UseScreens(QWidget* table, std::span<const ScreenRow> rows) {
  Table = table;
  Rows = rows;
  Made.clear();
  Tick = new Clock;
  Tick->setParent(table);
}

MenuRow RowThatShows(WindowId id) {
  for (const ScreenRow& row : Rows) {
    if (row.Id != id) continue;
    return Command(row.Command, QCoreApplication::translate("Screens", row.Caption),
                   [id] { ShowScreen(id); });
  }
  return {};
}

Screen* FindScreen(WindowId id) {
  const auto at = Made.find(id);
  return at == Made.end() ? nullptr : at->second.data();
}

Screen* ShowScreen(WindowId id) {
  Screen* screen = FindScreen(id);
  if (!screen) {
    const ScreenRow* row = FindRow(id);
    if (!row) return nullptr;
    screen = row->Make(Table);
    Made[id] = screen;
    FollowPlace(screen, id);
  }
  if (Waiting) LetBelong(screen, Waiting);
  screen->Present();
  return screen;
}

bool HasScreen(WindowId id) { return FindRow(id); }

void KeepScreensUsable(QWidget* window) {
  if (Waiting == window) return;
  Waiting = window;
  for (const auto& [id, screen] : Made)
    if (screen) LetBelong(screen, window ? window : Table.data());
}

void RefreshScreens() {
  RefreshAll();
  if (Tick) Tick->Pace();
}

void ShowScreensAsLeft() {
  for (const ScreenRow& row : Rows)
    if (WasOpen(row.Id)) ShowScreen(row.Id);
}

bool CloseScreens() {
  bool all = true;
  for (const auto& [id, screen] : Made)
    if (screen) all = screen->close() && all;
  // The handbook stands in no row, and would keep the program alive.
  for (QWidget* window : QApplication::topLevelWidgets())
    if (qobject_cast<Screen*>(window) && window->isVisible()) all = window->close() && all;
  return all;
}
