// What a roll costs under Hyper-Drive with nothing, little and much on the table. Each load is held
// against two bare loops, measured in the same run: one that only draws two dice, and one that also
// moves the point and settles a flat Pass Line. They draw from the library's generator, which gives
// the same numbers: a yardstick that doesn't move when the game's own is made faster.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <map>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "allocations.h"
#include "bets/change_bet.h"
#include "bets/headless_host.h"
#include "bets/make_bet.h"
#include "bets/new_game.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"

namespace {

constexpr int kRollsPerRun = 100'000;
constexpr std::uint32_t kSeed = 20'240'601;

/// What is up, and how a run keeps it up.
struct Load {
  const char* Name;
  std::span<const BetId> Bets;
  bool TakeOdds = false;
  int RollsPerRun = kRollsPerRun;  // all bets are laid again before each run
  Currency Stake = 30;             // thirty bets of 30 lose about half of the bank limit in a run
  bool Grows = false;              // a bet is seldom decided at an amount of a decision before
  bool KnownRolls = true;
  bool NeverAgain = false;  // next to never, and runs begin far from each other
};

constexpr std::array kLineBet = {PassLine};

constexpr std::array kComeAndPlace = {
    PassLine, Place6, Place8, Come4, static_cast<BetId>(Come4 + 1), Come10};

/// Bets that come back to the same amount after every decision.
constexpr std::array kThirtyBets = {
    PassLine, DontPass, Field,  Big6,   Big8,    Hard4, Hard6, Hard8, Hard10, Place4,
    Place5,   Place6,   Place8, Place9, Place10, Buy4,  Buy10, Lay4,  Lay10,  Two,
    Three,    Seven,    Eleven, Twelve, Craps,   CAndE, Horn,  World, Over7,  Hop13};

/// Bets that no limit of propositions keeps from growing.
constexpr std::array kGrowingBets = {PassLine, DontPass, Field,  Big6,   Big8,
                                     Place4,   Place5,   Place6, Place8, Place9,
                                     Place10,  Buy4,     Buy10,  Lay4,   Lay10};

constexpr auto kEveryBet = [] {
  std::array<BetId, LastBet> bets{};
  for (int id = Lay4; id <= LastBet; ++id) bets[static_cast<unsigned>(id - 1)] = BetId(id);
  return bets;
}();
/// Rolls after which every bet is laid again; odds and bets on numbers come down one by one.
constexpr int kShortRun = 50;
constexpr int kGrowingRun = 60;

constexpr Load kNoBets = {"NoBets", {}};
constexpr Load kPassLine = {"PassLine", kLineBet};
constexpr Load kPassAndOdds = {"PassAndOdds", kLineBet, true};
constexpr Load kComeSystem = {"ComeSystem", kComeAndPlace, true};
constexpr Load kThirty = {"ThirtyBets", kThirtyBets};
constexpr Load kEveryOnce = {"EveryBetOnce", kEveryBet, true, kRollsPerRun, 6};
constexpr Load kEvery = {"EveryBet", kEveryBet, true, kShortRun, 6};
// What looking for known rolls costs where there are none.
constexpr Load kGrowing = {"Growing", kThirtyBets, false, kGrowingRun, 30, true};
constexpr Load kGrowingInFull = {"GrowingInFull", kThirtyBets, false, kGrowingRun, 30, true, false};
constexpr Load kNeverAgain = {"NeverAgain", kGrowingBets, false, kGrowingRun, 30, true, true, true};
constexpr Load kNeverAgainInFull = {
    "NeverAgainInFull", kGrowingBets, false, kGrowingRun, 30, true, false, true};

/// The processor's time of this program: what else the machine does stays out of it.
double ProcessorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// The least that lies between two looks at the clock: about as much as a roll of a full table
/// takes.
double ClockCost() {
  double least = 1;
  for (int look = 0; look < 1000; ++look) {
    const double start = ProcessorSeconds();
    least = std::min(least, ProcessorSeconds() - start);
  }
  return least;
}

const double clockCost = ClockCost();

/// What a run took, the look at the clock left out.
double SecondsSince(double start) { return std::max(ProcessorSeconds() - start - clockCost, 0.0); }

/// A table where every decided bet that may stay is made again, whatever the bankroll.
void SetRules(const Load& load) {
  LayDownDefaults();
  TheHost = HeadlessHost();
  Game.NegBankroll = true;
  Game.AllowPutBets = true;
  if (load.Grows) Game.MaxPlacard = 1'000'000;
  Game.HandleWinningBets = load.Grows ? WinPressOneUnit : WinSameBet;
  Game.HandleLosingBets = load.Grows ? LossPlusOneUnit : LossSameBet;
  Game.KnownRollsOn = load.KnownRolls;
  Game.AutoTakeFullOdds = Game.AutoLayFullOdds = load.TakeOdds;
  Game.NumAutoRolls = Game.AutoRollsLeft = load.RollsPerRun;
}

/// What each bet of a run begins with.
Currency StakeOf(const Load& load) {
  constexpr int kStakes = 500;
  constexpr int kFarOff = 97;  // no stake comes back before all have been used
  if (!load.Grows) return load.Stake;
  if (load.NeverAgain) return load.Stake + Game.RollCount[0] / load.RollsPerRun * kFarOff % kStakes;
  return load.Stake + Game.RollCount[0] / 9 % kStakes;
}

/// Lays the bets, with a point on 6 where they need one. Don't bets on numbers are as if moved.
void LayBets(const Load& load) {
  if (load.Bets.size() == LastBet) Game.Point = Game.PrevPoint = 6;
  Game.MovingBet = true;
  const Currency stake = StakeOf(load);
  for (const int bet : load.Bets) {
    if (bet == DontPass && Game.Point != 0) Game.ContractBets[DontPass] = stake;
    RequestChange(bet, stake - Game.Bets[static_cast<unsigned>(bet)]);
  }
  Game.MovingBet = false;
  if (load.TakeOdds) TakeAllFullOdds();
}

/// One run: `RollDice` returns when the roll count of Auto-Play has run out.
void RunHyperDrive() {
  Game.HyperDriveOn = true;
  Game.KeepRolling = true;
  RollDice();
  Game.HyperDriveOn = false;
}

std::mt19937 bareGenerator;

int BareDie() {
  constexpr double kPerWord = 1.0 / 4294967296.0;
  return static_cast<int>(static_cast<double>(bareGenerator()) * kPerWord * 6) + 1;
}

void BareDraw(benchmark::State& state) {
  bareGenerator.seed(kSeed);
  for (auto _ : state) {
    int total = 0;
    for (int roll = 0; roll < kRollsPerRun; ++roll) {
      total += BareDie();
      total += BareDie();
    }
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(state.iterations() * kRollsPerRun);
}

/// A flat Pass Line and the point, and nothing else.
struct BareTable {
  int Point = 0;
  long Bankroll = 0;

  void Settle(int total) {
    if (Point == 0) {
      if (total == 7 || total == 11)
        ++Bankroll;
      else if (total == 2 || total == 3 || total == 12)
        --Bankroll;
      else
        Point = total;
    } else if (total == Point || total == 7) {
      Bankroll += total == 7 ? -1 : 1;
      Point = 0;
    }
  }
};

void BareGame(benchmark::State& state) {
  bareGenerator.seed(kSeed);
  for (auto _ : state) {
    BareTable table;
    for (int roll = 0; roll < kRollsPerRun; ++roll) {
      const int die1 = BareDie();
      table.Settle(die1 + BareDie());
    }
    benchmark::DoNotOptimize(table.Bankroll);
  }
  state.SetItemsProcessed(state.iterations() * kRollsPerRun);
}

void Roll(benchmark::State& state, const Load& load) {
  init_genrand(kSeed);
  long allocated = 0;
  SetRules(load);
  for (auto _ : state) {
    if (Game.RollCount[0] >= kMaxRolls / 2) SetRules(load);
    Game.Bets[BankrollIndex] = 0;
    LayBets(load);
    const long before = Allocations();
    const int rolled = Game.RollCount[0];
    const double start = ProcessorSeconds();
    RunHyperDrive();
    state.SetIterationTime(SecondsSince(start));
    allocated += Allocations() - before;
    if (Game.RollCount[0] - rolled != load.RollsPerRun)
      state.SkipWithError("the run stopped early");
  }
  state.SetItemsProcessed(state.iterations() * load.RollsPerRun);
  state.counters["allocs/run"] =
      static_cast<double>(allocated) / static_cast<double>(state.iterations());
}

/// A game of a hundred rolls in a run of many: what it costs beside its rolls shows against
/// `PassLine`.
void ShortGame(benchmark::State& state) {
  constexpr int kRolls = 100;
  Load load = kPassLine;
  load.RollsPerRun = kRolls;
  init_genrand(kSeed);
  SetRules(load);
  Game.ReSeed = false;
  for (auto _ : state) {
    const double start = ProcessorSeconds();
    NewGame(false);
    LayBets(load);
    RunHyperDrive();
    state.SetIterationTime(SecondsSince(start));
    if (Game.RollCount[0] != kRolls) state.SkipWithError("the run stopped early");
  }
  state.SetItemsProcessed(state.iterations() * kRolls);
}

BENCHMARK(BareDraw)->Unit(benchmark::kMillisecond);
BENCHMARK(BareGame)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, NoBets, kNoBets)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, PassLine, kPassLine)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, PassAndOdds, kPassAndOdds)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, ComeSystem, kComeSystem)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, ThirtyBets, kThirty)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, EveryBetOnce, kEveryOnce)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, EveryBet, kEvery)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, Growing, kGrowing)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, GrowingInFull, kGrowingInFull)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, NeverAgain, kNeverAgain)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Roll, NeverAgainInFull, kNeverAgainInFull)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK(ShortGame)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// The usual console lines, and the rate of each benchmark kept for the closing table.
class Reporter : public benchmark::ConsoleReporter {
 public:
  Reporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      const auto rate = run.counters.find("items_per_second");
      if (run.error_occurred || rate == run.counters.end()) continue;
      double& best = rates_[run.run_name.function_name];
      best = std::max(best, static_cast<double>(rate->second));
    }
  }

  void PrintMultiples() const {
    const double draw = Rate("BareDraw");
    const double game = Rate("BareGame");
    std::printf("\n%-20s %16s %14s %14s\n", "", "rolls a second", "x bare draw", "x bare game");
    for (const auto& [name, rate] : rates_)
      std::printf("%-20s %16.0f %14.1f %14.1f\n", name.c_str(), rate, draw / rate, game / rate);
  }

 private:
  double Rate(const std::string& name) const {
    const auto found = rates_.find(name);
    return found == rates_.end() ? 0 : found->second;
  }

  std::map<std::string, double> rates_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintMultiples();
  return 0;
}
