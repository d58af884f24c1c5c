#include "screens/table/qt_host.h"

#include <QCoreApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QProgressDialog>
#include <QRandomGenerator>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "bets/settle.h"
#include "core/host.h"
#include "core/sounds.h"
#include "persistence/game_file.h"
#include "screens/frame/asking_window.h"
#include "screens/frame/guard.h"
#include "screens/frame/player_change.h"
#include "screens/frame/pointer.h"
#include "screens/frame/sound_player.h"
#include "screens/play/frmMsg.h"
#include "screens/play/frmSettleBet.h"
#include "screens/scripts/frmAutoBet.h"
#include "screens/scripts/frmSteps.h"
#include "screens/statistics/graph_printer.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/pile_layout.h"
#include "screens/table/table_layer.h"
#include "screens/table/table_layout.h"
#include "screens/table/table_settings.h"
#include "screens/table/toasts.h"

bool HurryHost = false;

namespace {

frmCrapTable* Table = nullptr;

constexpr int kFrames = 5;
constexpr int kFrameTime = 100;

constexpr int kThrowLeft = 35;
constexpr int kThrowTop = 50;
constexpr int kThrowWidth = 405;
constexpr int kThrowHeight = 320;
constexpr double kClearOfMouseX = 50;
constexpr double kClearOfMouseY = 32;
constexpr double kClearOfDie = 32;
constexpr int kFacesInFlight = 5;  // a 6 never shows in flight

constexpr int kRainChips = 1000;
constexpr int kRainBatch = 10;
constexpr int kRainPause = 30;
constexpr int kRainLeft = 50;
constexpr int kRainTop = 19;
constexpr int kRainWidth = 570;
constexpr int kRainHeight = 367;

constexpr int kProgressSteps = 1000;
constexpr int kProgressLetters = 50;  // its window has room for
constexpr int kPatience = 400;        // milliseconds, before a progress is shown

/// A pause with the event loop running.
void Pause(int milliseconds) {
  if (HurryHost || milliseconds <= 0) {
    QCoreApplication::processEvents();
    return;
  }
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

/// Chance for show only: it must never move the generators of the game.
int Chance(int limit) { return static_cast<int>(QRandomGenerator::global()->bounded(limit)); }

/// A choice that holds for all bets of its kind that the roll still decides.
struct ChoiceOfRoll {
  int Roll = -1;
  bool Lost = false;
  int Button = 0;
};

/// What a settle screen would hide at a place of the screen: the money of the bets there, and
/// above all puck, dice and the pile itself.
double CostOfPlace(const QRect& place, const QRect& pile) {
  constexpr double kNever = 1e9;
  const picLayoutBox* layout = Table->Layout();
  const auto hides = [&](QRectF what) {
    const QRect seen = layout->FromTable(what);
    return place.intersects(QRect(layout->mapToGlobal(seen.topLeft()), seen.size()));
  };
  double cost = place.intersects(pile) ? kNever : 0;
  const TablePiles piles = LayOutPiles();
  if (hides(PuckPlace(piles.Chips))) cost += kNever;
  for (const QPointF& die : Table->View().Dice)
    if (hides(QRectF(die - QPointF(kDieSize, kDieSize) / 2, QSizeF(kDieSize, kDieSize))))
      cost += kNever;
  std::array<bool, kSlots> counted{};
  for (const DrawnChip& chip : piles.Chips) {
    const auto bet = static_cast<unsigned>(chip.BetId);
    if (counted[bet]) continue;
    const QPointF radius(kChipRadius, kChipRadius);
    if (!hides(QRectF(chip.Centre - radius, chip.Centre + radius))) continue;
    counted[bet] = true;
    cost += Game.Bets[bet].ToDouble();
  }
  return cost;
}

/// The pile of the decided bet on the screen, with what it was paid.
QRect PileOnScreen() {
  const picLayoutBox* layout = Table->Layout();
  constexpr double kReach = 13;
  const QPointF place = ChipPosition(Game.DecidedBet);
  const QRect pile =
      layout->FromTable(QRectF(place - QPointF(kReach, kReach), QSizeF(2 * kReach, 2 * kReach)) |
                        Table->Layer().PayoutPlace());
  return {layout->mapToGlobal(pile.topLeft()), pile.size()};
}

void ShowSettleScreen() {
  static ChoiceOfRoll kept;
  Table->Layer().ShowBeforeSettling();
  const int roll = Game.RollCount[0];
  const bool lost = Game.Settle.Lost;
  if (kept.Roll == roll && kept.Lost == lost) {
    Table->Layer().Settled();
    return PressSettleButton(kept.Button);
  }
  frmSettleBet screen(AskingWindow(Table));
  const bool beside = TheTable.Settle == SettleBesideChip && IsShownOnTable(Game.DecidedBet) &&
                      Table->isVisible() && !Table->isMinimized();
  if (beside) {
    const QRect pile = PileOnScreen();
    screen.SitBeside(pile, Table->screen()->availableGeometry(),
                     [&](const QRect& place) { return CostOfPlace(place, pile); });
  }
  if (screen.exec() == QDialog::Rejected) PressSettleButton(0);  // the program was told to end
  Table->Layer().Settled();
  kept.Roll = screen.ForTheRest() ? roll : -1;
  kept.Lost = lost;
  kept.Button = screen.Choice();
}

bool Near(QPointF a, QPointF b, double across, double down) {
  return std::abs(a.x() - b.x()) < across && std::abs(a.y() - b.y()) < down;
}

QPointF MouseOnTable() {
  return Table->Layout()->ToTable(Table->Layout()->mapFromGlobal(QCursor::pos()));
}

QPointF ThrownPlace() {
  return QPointF(Chance(kThrowWidth) + kThrowLeft, Chance(kThrowHeight) + kThrowTop);
}

/// Places of both dice, clear of the mouse and of each other.
void ScatterDice(TableView& view) {
  const QPointF mouse = MouseOnTable();
  const auto onMouse = [&](QPointF place) {
    return Near(place, mouse, kClearOfMouseX, kClearOfMouseY);
  };
  do {
    view.Dice[0] = ThrownPlace();
  } while (onMouse(view.Dice[0]));
  do {
    view.Dice[1] = ThrownPlace();
  } while (onMouse(view.Dice[1]) || Near(view.Dice[1], view.Dice[0], kClearOfDie, kClearOfDie));
}

void ShowDiceFrame(TableView& view, bool last) {
  if (Game.DiceAction == DiceStationary) {
    std::copy(std::begin(kDiceHold), std::end(kDiceHold), std::begin(view.Dice));
  } else {
    ScatterDice(view);
  }
  for (unsigned die = 0; die < 2; ++die) {
    view.Faces[die] = last ? 0 : Chance(kFacesInFlight) + 1;
    view.Turns[die] = last && Game.DiceAction == DiceStationary ? 0 : Chance(90);
  }
  Table->Layout()->update();
}

void SendDiceHome() {
  TableView& view = Table->View();
  std::copy(std::begin(kDiceHome), std::end(kDiceHome), std::begin(view.Dice));
  view.Faces = {0, 0};
  view.Turns = {0, 0};
  Table->Layout()->update();
}

void ThrowDice() {
  Table->Layer().DiceThrown();
  PlayDiceSound();
  if (!HurryHost && MotionWanted()) {
    for (int frame = 1; frame <= kFrames; ++frame) {
      ShowDiceFrame(Table->View(), frame == kFrames);
      Pause(kFrameTime);
    }
  }
  if (Game.DiceAction == DiceStationary || Game.DiceAction == DiceReturnAfterThrown) SendDiceHome();
}

void PlaySound(const std::string& path, SoundMode mode) {
  if (!HurryHost) PlayWave(path, mode);
}

/// Watches for a click or a key, which ends the celebration.
class Interruption : public QObject {
 public:
  Interruption() { QCoreApplication::instance()->installEventFilter(this); }
  bool Came = false;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    const bool any = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress;
    Came = Came || any;
    return any || event->type() == QEvent::MouseButtonRelease;
  }
};

void CelebrateBank() {
  if (!Game.DisableAllSound && Game.WinSound > 0) {
    PlaySound(Game.AppPath + "Chips.wav", SoundMode::Loop);
  }
  Interruption interruption;
  for (int chip = 1; chip <= kRainChips && !interruption.Came; ++chip) {
    const QPointF place(Chance(kRainWidth) + kRainLeft, Chance(kRainHeight) + kRainTop);
    Table->Layout()->RainChip(Chance(kOverflowPicture - 1) + 1, place);
    if (chip % kRainBatch != 0) continue;
    Table->Layout()->update();
    Pause(kRainPause);
  }
  StopWave();
  Table->Layout()->ClearRain();
}

/// The window of the long piece of work that is under way; `share` 1 closes it.
bool ShowProgress(const std::string& what, double share) {
  static QPointer<QProgressDialog> shown;
  if (share >= 1) {
    delete shown;
    return true;
  }
  if (!shown) {
    const QString title = QString::fromStdString(what);
    shown = new QProgressDialog(title + " ...", QObject::tr("Stop"), 0, kProgressSteps,
                                AskingWindow(Table));
    shown->setWindowTitle(title);
    shown->setWindowModality(Qt::ApplicationModal);
    shown->setMinimumDuration(kPatience);
    shown->setMinimumWidth(shown->fontMetrics().averageCharWidth() * kProgressLetters);
  }
  shown->setValue(static_cast<int>(share * kProgressSteps));
  return !shown->wasCanceled();
}

}  // namespace

std::uint32_t SystemMilliseconds() {
  using namespace std::chrono;
  const auto sinceStart = steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(duration_cast<milliseconds>(sinceStart).count());
}

void InstallQtHost(frmCrapTable* table) {
  Table = table;
  FollowActiveWindow();
  static const QElapsedTimer clock = [] {
    QElapsedTimer started;
    started.start();
    return started;
  }();
  TheHost.ShowMessage = [](bool modal) {
    if (TheTable.Notices == NoticesAsToast && MayBeToast(Game.MsgFlags)) return ShowToast(Table);
    const PointerLook plain(Qt::ArrowCursor);  // whatever is waited for waits for the player now
    ShowMessageScreen(Table, modal);
  };
  OfferToasts();
  TheHost.ShowSettleScreen = ShowSettleScreen;
  TheHost.ThrowDice = ThrowDice;
  TheHost.SendDiceHome = SendDiceHome;
  TheHost.BetDecided = [](int betId, Currency stake, Currency net) {
    Table->Layer().BetDecided(betId, stake, net);
  };
  TheHost.CelebrateBank = CelebrateBank;
  TheHost.PlaySound = PlaySound;
  TheHost.StopSound = StopWave;
  TheHost.Milliseconds = SystemMilliseconds;
  TheHost.Yield = [] {
    const EngineTurn turn;
    const qint64 start = clock.nsecsElapsed();
    QCoreApplication::processEvents();
    YieldTime += static_cast<double>(clock.nsecsElapsed() - start) / 1e6;
  };
  TheHost.Wait = [](int milliseconds) {
    if (!Game.AutoBetRunning) PutStepsAway();
    const EngineTurn turn;
    Pause(milliseconds);
  };
  TheHost.RefreshViews = [] {
    CarryOutChanges();
    Table->RefreshViews();
  };
  TheHost.RedrawBets = [] {
    if (!Game.AutoBetRunning) PutStepsAway();
    Table->RedrawBets();
  };
  TheHost.RedrawLayout = [] { Table->RedrawLayout(); };
  TheHost.ShowStep = [](int line, const std::string& text, const std::string& status) {
    const PointerLook plain(Qt::ArrowCursor);
    ShowStep(Table, line, text, status);
  };
  TheHost.ShowProgress = ShowProgress;
  TheHost.ShowScriptLine = ShowLineInEditor;
  TheHost.SaveGameToTemp = ::SaveGameToTemp;
  TheHost.PrintGraph = [] { Guarded("Print Bankroll Graph", CollectGraph); };
  TheHost.PrintDuePage = [] { Guarded("Print Bankroll Graph", [] { PrintDueGraphs(); }); };
}
