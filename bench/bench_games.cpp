// What finished games cost: a script that resets the table every hundred rolls, held against the
// same script without it, and looking at a log of a million games.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "autobet/language.h"
#include "autobet/script.h"
#include "bets/headless_host.h"
#include "bets/new_game.h"
#include "dice/generators.h"
#include "figures/games_view.h"
#include "persistence/game_file.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kSeed = 20'240'601;
constexpr int kRolls = 200'000;
constexpr int kRuns = 40;
constexpr int kRollsOfGame = 100;
constexpr int kRounds = 5;
constexpr int kGames = 1'000'000;

double Seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The processor's time of this program: what else the machine does stays out of it.
double ProcessorSeconds(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// --- Resets ---

void Add(int kind, int code, Currency amount = 0, int subject = 0, int target = 0) {
  ScriptLine line;
  line.LineKind = kind;
  line.LineCode = code;
  line.LineAmount = amount;
  line.OfSubject = subject;
  line.ToSubject = target;
  InsertLine(Game.ScrCount + 1, line);
}

void MakeScript(bool resets) {
  ClearScript();
  Add(WhenLine, 0);
  Add(ConditionLine, 0, 0, NextIsComeOut);
  Add(ThenLine, 0);
  Add(ActionLine, BetAmount, 10, 0, PassLine);
  Add(WhenLine, 0);
  Add(ConditionLine, EqualTo, kRollsOfGame, GameRolls);
  Add(ThenLine, 0);
  Add(ActionLine, resets ? ResetTable : StopRolling);
}

Host TimedHost() {
  Host host = HeadlessHost();
  host.Milliseconds = [] {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
  };
  host.SaveGameToTemp = SaveGameToTemp;
  return host;
}

/// Seconds of games of a hundred rolls in one run, or each in a run of its own, which ends with it.
double PlayGames(bool resets, bool reSeeds) {
  LayDownDefaults();
  Game.ReSeed = reSeeds;
  Game.NegBankroll = true;
  MakeScript(resets);
  Game.AutoBetActive = 1;
  Game.ScriptChanged = false;
  init_genrand(kSeed);
  NewGame(false);
  const auto run = [](int rolls) {
    // A new game would begin the count of rolls again.
    TheHost.Yield = [end = std::chrono::steady_clock::now() + std::chrono::seconds(60)] {
      if (std::chrono::steady_clock::now() > end) Game.KeepRolling = false;
    };
    Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
    Game.HyperDriveOn = Game.KeepRolling = true;
    RollDice();
    Game.HyperDriveOn = false;
  };
  if (!resets) {
    Game.RollCount[0] = kRollsOfGame;  // past the line that would stop it
    return ProcessorSeconds([&] { run(kRolls); });
  }
  return ProcessorSeconds([&] {
    static int games;
    games = 0;
    const auto append = TheHost.SaveGameToTemp;
    TheHost.SaveGameToTemp = [append] {
      append();
      if (++games == kRolls / kRollsOfGame) Game.KeepRolling = false;
    };
    run(0);
    TheHost.SaveGameToTemp = append;
  });
}

void MeasureResets(const std::string& folder) {
  TheHost = TimedHost();
  Game.DataPath = folder + "/";
  for (const bool reSeeds : {true, false}) {
    // The least of many times of both: what slows the machine for a while slows both.
    double without = 1e9;
    double with = 1e9;
    for (int round = 0; round < kRuns; ++round) {
      without = std::min(without, PlayGames(false, reSeeds));
      with = std::min(with, PlayGames(true, reSeeds));
    }
    std::printf("A reset every %d rolls, %s: %.2f microseconds, %.1f ns a roll in all\n",
                kRollsOfGame, reSeeds ? "seeded anew" : "not seeded",
                (with - without) * 1e6 * kRollsOfGame / kRolls, with / kRolls * 1e9);
  }
  TheHost = HeadlessHost();
}

// --- A log of a million games ---

void WriteLog(const std::string& path) {
  std::vector<GameRecord> games(kGames);
  std::uint64_t state = kSeed;
  for (GameRecord& game : games) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    const auto net = static_cast<int>(state >> 33U & 0x7FFU) + static_cast<int>(state >> 50U) % 997;
    game[RollsColumn] = kRollsOfGame;
    game[HandleColumn] = 1000;
    game[DollarsNetColumn] = net - 1500;
    game[EndingBankrollColumn] = net - 1000;
  }
  GamesLogWriter(path).Append(games, Durability::System);
}

void MeasureLog(const std::string& path) {
  WriteLog(path);
  const auto least = [](const std::function<void()>& work) {
    double best = 1e9;
    for (int round = 0; round < kRounds; ++round) best = std::min(best, Seconds(work));
    return best;
  };
  GamePopulation population;
  std::printf("Opening %d games: %.3f s", kGames, least([&] {
                population = LoadPopulation(path, DollarsNetColumn);
                SummarizeGames(population, {}, 1);
              }));
  std::printf(", another column %.3f s", least([&] {
                population = LoadPopulation(path, EndingBankrollColumn);
                SummarizeGames(population, {}, 1);
              }));
  std::printf(", another class %.3f s", least([&] {
                SummarizeGames(population, {{}, {true, false, true}}, 1);
              }));
  std::printf(", a jump %.6f s\n", least([&] { GamesLogReader(path).Read(kGames / 2, 512); }));
}

}  // namespace

int main() {
  const std::string folder =
      (fs::temp_directory_path() / ("kelvanor_bench_games_" + std::to_string(::getpid()))).string();
  fs::create_directories(folder);
  MeasureResets(folder);
  MeasureLog(folder + "/million.glg");
  fs::remove_all(folder);
  return 0;
}
