// What open screens cost a run: Hyper-Drive beside the five screens of figures and the bankroll
// graph, as a share of the same rolls with them closed. To be run on the offscreen platform.
#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
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

namespace {

constexpr std::uint32_t kSeed = 20'240'601;
constexpr int kPairs = 7;
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

/// Rolls a second of a run, by the processor's time: other programs don't count.
double Speed(const Sample& game) {
  LayDownDefaults();
  Game.NegBankroll = true;
  Game.HandleWinningBets = WinSameBet;
  Game.HandleLosingBets = LossSameBet;
  Game.AutoTakeFullOdds = true;
  for (const BetId bet : game.Bets) RequestChange(bet, game.Amount);
  init_genrand(kSeed);
  Game.NumAutoRolls = Game.AutoRollsLeft = game.Rolls;
  Game.HyperDriveOn = Game.KeepRolling = true;
  TheHost.RefreshViews();
  const std::clock_t start = std::clock();
  RollDice();
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  Game.HyperDriveOn = false;
  TheHost.RefreshViews();
  if (Game.RollCount[0] != game.Rolls) std::puts("the run stopped early");
  return game.Rolls / seconds;
}

double SpeedWithScreens(const Sample& game) {
  for (const WindowId id : kScreens) ShowScreen(id);
  QApplication::processEvents();
  const double speed = Speed(game);
  CloseScreens();
  QApplication::processEvents();
  return speed;
}

struct Pair {
  double Closed = 0;
  double Open = 0;
  int Refreshes = 0;

  double Cost() const { return 1 - Open / Closed; }
};

/// The same rolls with and without the screens, in turns of which comes first.
Pair Compare(const Sample& game, bool openFirst, const int& ticks) {
  Pair pair;
  const auto open = [&] {
    const int before = ticks;
    pair.Open = SpeedWithScreens(game);
    pair.Refreshes = ticks - before;
  };
  if (openFirst) open();
  pair.Closed = Speed(game);
  if (!openFirst) open();
  return pair;
}

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  QApplication application(argc, argv);
  frmCrapTable table;
  LayDownDefaults();
  InstallQtHost(&table);
  TheHost.ShowMessage = HeadlessHost().ShowMessage;  // nobody answers
  HurryHost = true;
  table.resize(1366, 768);
  table.show();
  int ticks = 0;
  QObject::connect(table.findChild<QTimer*>("timerRun"), &QTimer::timeout, [&ticks] { ++ticks; });
  std::printf("%-20s %16s %16s %7s %20s\n", "game", "closed, rolls/s", "open, rolls/s", "cost",
              "refreshes in a run");
  for (const Sample& game : kGames) {
    std::vector<Pair> pairs;
    for (int i = 0; i < kPairs; ++i) pairs.push_back(Compare(game, i % 2 == 1, ticks));
    std::sort(pairs.begin(), pairs.end(),
              [](const Pair& a, const Pair& b) { return a.Cost() < b.Cost(); });
    const Pair& middle = pairs[kPairs / 2];
    std::printf("%-20s %16.0f %16.0f %6.1f%% %20d\n", game.Name, middle.Closed, middle.Open,
                100 * middle.Cost(), middle.Refreshes);
  }
}
