#include "screens/frame/window_places.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <algorithm>
#include <vector>

#include "core/game_state.h"

namespace {

constexpr int kVisible = -1;
constexpr int kHidden = 0;
constexpr int kFarthest = 100'000;  // no screen lies beyond

enum TableState : int { TableNormal = 0, TableMinimised = 1, TableMaximised = 2 };

WindowPlace& PlaceOf(WindowId id) { return Game.WindowPlaces[static_cast<unsigned>(id)]; }

int StateOf(const QWidget& window, WindowId id) {
  if (id != TableWindow) return window.isVisible() ? kVisible : kHidden;
  if (window.isMaximized()) return TableMaximised;
  return window.isMinimized() ? TableMinimised : TableNormal;
}

void KeepPlace(const QWidget& window, WindowId id) {
  WindowPlace& place = PlaceOf(id);
  place.State = StateOf(window, id);
  // The place of a window that fills the screen is the one that it goes back to.
  const bool special = window.isMaximized() || window.isMinimized();
  const QPoint frame = window.geometry().topLeft() - window.pos();
  const QRect normal =
      special ? window.normalGeometry().translated(-frame) : QRect(window.pos(), window.size());
  if (normal.width() <= 0 || normal.height() <= 0) return;
  place.Top = normal.top();
  place.Left = normal.left();
  place.Width = normal.width();
  place.Height = normal.height();
}

/// The screen that shows most of a rectangle; the first one when none shows any of it.
QRect ScreenFor(const QRect& wanted) {
  QRect best = QGuiApplication::primaryScreen()->availableGeometry();
  qint64 most = 0;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect seen = screen->availableGeometry() & wanted;
    const qint64 area = qint64{seen.width()} * seen.height();
    if (area <= most) continue;
    most = area;
    best = screen->availableGeometry();
  }
  return best;
}

/// Beside the table, as far as the screen has room for both.
void PutBeside(QWidget* window, const QWidget& table) {
  const QRect screen = table.screen()->availableGeometry();
  const QSize size = window->size().boundedTo(screen.size());
  window->resize(size);
  window->move(std::max(screen.left(), std::min(table.frameGeometry().right() + 1,
                                                screen.right() + 1 - size.width())),
               std::clamp(table.y(), screen.top(), screen.bottom() + 1 - size.height()));
}

void TakePlace(QWidget* window, WindowId id) {
  const WindowPlace& place = PlaceOf(id);
  if (place.Width <= 0 || place.Height <= 0) {
    if (window->parentWidget() && !window->isModal() && id != FileWindow)
      PutBeside(window, *window->parentWidget());
    return;
  }
  const auto bounded = [](int value) { return std::clamp(value, -kFarthest, kFarthest); };
  const QRect screen = ScreenFor(
      {bounded(place.Left), bounded(place.Top), bounded(place.Width), bounded(place.Height)});
  window->resize(std::min(place.Width, screen.width()), std::min(place.Height, screen.height()));
  const int lowest = screen.bottom() + 1 - window->height();
  const int rightmost = screen.right() + 1 - window->width();
  window->move(std::max(screen.left(), std::min(place.Left, rightmost)),
               std::max(screen.top(), std::min(place.Top, lowest)));
  if (id == TableWindow && place.State == TableMaximised)
    window->setWindowState(Qt::WindowMaximized);
}

class Follower : public QObject {
 public:
  Follower(QWidget* window, WindowId id) : QObject(window), Window(window), Id(id) {
    window->installEventFilter(this);
  }

  QWidget* Window;
  WindowId Id;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Hide && !event->spontaneous()) KeepPlace(*Window, Id);
    return false;
  }
};

std::vector<QPointer<Follower>> Followers;

}  // namespace

void FollowPlace(QWidget* window, WindowId id) {
  TakePlace(window, id);
  std::erase_if(Followers, [](const QPointer<Follower>& follower) { return follower.isNull(); });
  Followers.emplace_back(new Follower(window, id));
}

void KeepWindowPlaces() {
  for (const QPointer<Follower>& follower : Followers) {
    if (follower) KeepPlace(*follower->Window, follower->Id);
  }
}

bool WasOpen(WindowId id) { return PlaceOf(id).State == kVisible; }
