// What a run under Hyper-Drive pays for what is on the screen, as a share of the same rolls without
// it: the five screens of figures with the bankroll graph, and all that is laid over the plain
// table. To be run on the offscreen platform.
#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

#include "autoplay/hyper_drive.h"
#include "bets/change_bet.h"
#include "bets/headless_host.h"
#include "core/host.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "screens/frame/screen.h"
#include "screens/frame/screen_table.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/qt_host.h"
#include "screens/table/table_settings.h"

namespace {

constexpr std::uint32_t kSeed = 20'240'601;
constexpr WindowId kScreens[] = {SummaryWindow,    RollTotalsWindow, RollFreqsWindow,
                                 BetResultsWindow, BetTrendsWindow,  BankrollWindow};

struct Sample {
  const char* Name;
  std::vector<BetId> Bets;
  int Amount;  // in dollars, so low that the bank's limit is far
  int Rolls;
};
const Sample kGames[] = {
    {"Pass Line with odds", {PassLine}, 30, 12'000'000},
    {"thirty bets",
     {PassLine, DontPass, Field,  Big6,   Big8,    Hard4, Hard6, Hard8, Hard10, Place4,
      Place5,   Place6,   Place8, Place9, Place10, Buy4,  Buy10, Lay4,  Lay10,  Two,
      Three,    Seven,    Eleven, Twelve, Craps,   CAndE, Horn,  World, Over7,  Hop13},
     2,
     1'500'000},
};

/// What is on the screen in one run of a pair, and not in the other.
struct Load {
  const char* Name;
  int Pairs;
  int Rolls;  // at least so many in a run, as a start paints all once
  std::function<void()> Show;
  std::function<void()> Hide;
};

double Seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double InTurns = 0;  // seconds that the event loop has had of the runs

/// How fast a game was, and what share of its time the event loop had: all that a load costs is
/// there, and it is steadier than the difference of two speeds.
struct Run {
  double RollsPerSecond = 0;
  double ShareOfTurns = 0;
};

/// Rolls a second, by the processor's time: other programs don't count. What was lost in a run is
/// put back before the next, so that no run ends at the limit of the bank.
Run Play(const Sample& game, int runs) {
  LayDownDefaults();
  Game.NegBankroll = true;
  Game.HandleWinningBets = WinSameBet;
  Game.HandleLosingBets = LossSameBet;
  Game.AutoTakeFullOdds = true;
  for (const BetId bet : game.Bets) RequestChange(bet, game.Amount);
  init_genrand(kSeed);
  Game.HyperDriveOn = Game.KeepRolling = true;
  TheHost.RefreshViews();
  const Currency start = Bankroll();
  const double begun = Seconds();
  InTurns = 0;
  for (int run = 0; run < runs; ++run) {
    Game.NumAutoRolls = Game.AutoRollsLeft = game.Rolls;
    Game.KeepRolling = true;
    RollDice();
    Game.Bets[BankrollIndex] = start;
    Touch(BankrollIndex);
  }
  const double seconds = Seconds() - begun;
  Game.HyperDriveOn = false;
  TheHost.RefreshViews();
  if (Game.RollCount[0] != game.Rolls * runs) std::puts("the run stopped early");
  return {game.Rolls * runs / seconds, InTurns / seconds};
}

void ShowScreens() {
  for (const WindowId id : kScreens) ShowScreen(id);
}

struct Pair {
  Run Without;
  Run With;
  int Refreshes = 0;

  double Cost() const { return 1 - With.RollsPerSecond / Without.RollsPerSecond; }
  double OfTurns() const { return With.ShareOfTurns - Without.ShareOfTurns; }
};

/// The same rolls with and without the load, in turns of which comes first.
Pair Compare(const Sample& game, const Load& load, bool loadFirst, const int& ticks) {
  Pair pair;
  const int runs = std::max(1, load.Rolls / game.Rolls);
  const auto with = [&] {
    load.Show();
    QApplication::processEvents();
    const int before = ticks;
    pair.With = Play(game, runs);
    pair.Refreshes = ticks - before;
    load.Hide();
    QApplication::processEvents();
  };
  if (loadFirst) with();
  pair.Without = Play(game, runs);
  if (!loadFirst) with();
  return pair;
}

/// The middle of all pairs, and between what the middle half of them lies.
struct Spread {
  double Middle = 0;
  double Low = 0;
  double High = 0;
};

template <typename Value>
Spread SpreadOf(const std::vector<Pair>& pairs, Value value) {
  std::vector<double> values;
  for (const Pair& pair : pairs) values.push_back(100 * value(pair));
  std::sort(values.begin(), values.end());
  const std::size_t last = values.size() - 1;
  return {values[last / 2], values[last / 4], values[last - last / 4]};
}

void Measure(const Sample& game, const Load& load, const int& ticks) {
  std::vector<Pair> pairs;
  for (int i = 0; i < load.Pairs; ++i) pairs.push_back(Compare(game, load, i % 2 == 1, ticks));
  const Spread cost = SpreadOf(pairs, [](const Pair& pair) { return pair.Cost(); });
  const Spread turns = SpreadOf(pairs, [](const Pair& pair) { return pair.OfTurns(); });
  const Pair& first = pairs.front();
  std::printf(
      "%-12s %-20s %12.0f %12.0f  %6.2f%% (%6.2f to %5.2f)  %6.2f%% (%5.2f to %5.2f) %6d %9d\n",
      load.Name, game.Name, first.Without.RollsPerSecond, first.With.RollsPerSecond, cost.Middle,
      cost.Low, cost.High, turns.Middle, turns.Low, turns.High, load.Pairs, first.Refreshes);
}

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  QApplication application(argc, argv);
  TheTable = AsTold();
  frmCrapTable table;
  LayDownDefaults();
  InstallQtHost(&table);
  TheHost.ShowMessage = HeadlessHost().ShowMessage;  // nobody answers
  HurryHost = true;
  table.resize(1366, 768);
  table.show();
  const auto lay = [](const TableSettings& settings) {
    TheTable = settings;
    TheTable.Hints = false;
    UseTableSettings();
  };
  const Load loads[] = {
      {"screens", 7, 1, ShowScreens, [] { CloseScreens(); }},
      {"table alive", 31, 24'000'000, [&] { lay({}); }, [&] { lay(AsTold()); }},
  };
  int ticks = 0;
  QObject::connect(table.findChild<QTimer*>("timerRun"), &QTimer::timeout, [&ticks] { ++ticks; });
  TheHost.Yield = [yield = TheHost.Yield] {
    const double begun = Seconds();
    yield();
    InTurns += Seconds() - begun;
  };
  std::printf("%-12s %-20s %12s %12s  %24s  %22s %6s %9s\n", "on screen", "game", "without", "with",
              "cost (middle half)", "of that in turns", "pairs", "refreshes");
  for (const Load& load : loads)
    for (const Sample& game : kGames) Measure(game, load, ticks);
}
