// What the Events Log costs: a roll under Hyper-Drive with and without it, and looking at a log of
// ten million lines.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "bets/change_bet.h"
#include "bets/headless_host.h"
#include "core/record_file.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kSeed = 20'240'601;
constexpr int kRolls = 100'000;
constexpr int kRounds = 5;
constexpr int kLines = 10'000'000;
constexpr int kLinesInView = 60;

/// Of the processor, the writing of files included: what else the machine does stays out.
double Seconds(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// --- Rolls ---

void PassLineAndOdds() {
  RequestChange(PassLine, 30);
  Game.AutoTakeFullOdds = true;
}

void ThirtyBets() {
  for (const BetId bet :
       {PassLine, DontPass, Field,  Big6,   Big8,    Hard4, Hard6, Hard8, Hard10, Place4,
        Place5,   Place6,   Place8, Place9, Place10, Buy4,  Buy10, Lay4,  Lay10,  Two,
        Three,    Seven,    Eleven, Twelve, Craps,   CAndE, Horn,  World, Over7,  Hop13})
    RequestChange(bet, 30);
}

struct LogUse {
  const char* Name;
  bool KnownRolls;
  bool Rolls;
  bool Bets;
  std::vector<double> Runs = {};
  double BytesOfRoll = 0;
};

/// Seconds of a run, its bets made again after every decision.
double Play(void (*layBets)(), const LogUse& use) {
  LayDownDefaults();
  TheHost = HeadlessHost();
  Game.NegBankroll = true;
  Game.HandleWinningBets = WinSameBet;
  Game.HandleLosingBets = LossSameBet;
  Game.KnownRollsOn = use.KnownRolls;
  Game.EventsLogActive = Game.LogRolls = use.Rolls;
  Game.LogBetChanges = Game.LogBetsWon = Game.LogBetsLost = use.Bets;
  layBets();
  init_genrand(kSeed);
  ClearEventsLog();
  Game.NumAutoRolls = Game.AutoRollsLeft = kRolls;
  Game.HyperDriveOn = Game.KeepRolling = true;
  const double passed = Seconds(RollDice);
  Game.HyperDriveOn = false;
  if (Game.RollCount[0] != kRolls) std::puts("the run stopped early");
  return passed;
}

void MeasureRolls(const char* name, void (*layBets)()) {
  std::vector<LogUse> uses = {{"no log, in full", false, false, false},
                              {"no log", true, false, false},
                              {"rolls", true, true, false},
                              {"rolls and bets", true, true, true}};
  for (int round = 0; round < kRounds; ++round)
    for (LogUse& use : uses) {
      use.Runs.push_back(Play(layBets, use));
      use.BytesOfRoll = static_cast<double>(FileLength(Game.EventsLogFile)) / kRolls;
    }
  const double without = Median(uses[0].Runs);
  for (const LogUse& use : uses) {
    const double run = Median(use.Runs);
    std::printf("%-16s %-16s %14.0f %9.1f %10.0f\n", name, use.Name, kRolls / run, run / without,
                use.BytesOfRoll);
  }
}

// --- Looking ---

void WriteLongLog() {
  std::ofstream log(Game.EventsLogFile, std::ios::binary);
  for (int line = 1; line <= kLines; ++line) log << "  Roll #" << line << ":  7 (3.4)\r\n";
}

/// What the view does on each repaint.
void Jump(int line) {
  EnsureLogIndex();
  if (ReadLogLines(std::min(line, LogLineCount() - kLinesInView), kLinesInView).size() !=
      static_cast<std::size_t>(kLinesInView))
    std::puts("lines are missing");
}

void MeasureLooking() {
  LayDownDefaults();
  ClearEventsLog();
  WriteLongLog();
  std::printf("\nA log of %.0f MB in %d lines:\n",
              static_cast<double>(FileLength(Game.EventsLogFile)) / 1e6, kLines);
  std::printf("%-28s %10.2f s\n", "index built", Seconds(EnsureLogIndex));
  std::mt19937 chance(kSeed);
  double slowest = 0;
  for (int jump = 0; jump < 1000; ++jump) {
    const int line = 1 + static_cast<int>(chance() % kLines);
    slowest = std::max(slowest, Seconds([line] { Jump(line); }));
  }
  std::printf("%-28s %10.2f ms\n", "slowest of 1,000 jumps", slowest * 1e3);
  for (const bool forward : {true, false})
    std::printf("%-28s %10.2f s\n", forward ? "searched from top to end" : "and back",
                Seconds([forward] { FindInLog("no such text", forward); }));
}

}  // namespace

int main() {
  const fs::path folder = fs::temp_directory_path() / "kelvanor_bench_log";
  fs::remove_all(folder);
  fs::create_directories(folder);
  Game.DataPath = TextOfPath(folder / "");
  std::printf("%-16s %-16s %14s %9s %10s\n", "", "logged", "rolls a second", "x in full",
              "bytes/roll");
  MeasureRolls("PassLineAndOdds", PassLineAndOdds);
  MeasureRolls("ThirtyBets", ThirtyBets);
  MeasureLooking();
  fs::remove_all(folder);
  return EXIT_SUCCESS;
}
