// What it costs a roll to be one of 500 of a game of a population, against the same script over as
// many rolls of one run under Hyper-Drive; and what a second process gains.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <vector>

#include "autobet/compose.h"
#include "autobet/engine.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "batch/jobs.h"
#include "batch/population.h"
#include "bets/headless_host.h"
#include "bets/new_game.h"
#include "core/record_file.h"
#include "dice/generators.h"
#include "persistence/game_file.h"
#include "play/roll_cycle.h"
#include "play/start_up.h"
#include "rules/defaults.h"

namespace {

constexpr int kGames = 2000;
constexpr int kRolls = 500;
constexpr int kRounds = 15;
constexpr std::uint64_t kSeed = 7;

void Add(ScriptLine line) {
  line.LineText = ComposeLine(line);
  InsertLine(Game.ScrCount + 1, line);
}

void Start(int kind) {
  ScriptLine line;
  line.LineKind = kind;
  Add(line);
}

void If(int subject, int op = 0, Currency amount = 0) {
  ScriptLine line;
  line.LineKind = ConditionLine;
  line.OfSubject = subject;
  line.LineCode = op;
  line.LineAmount = amount;
  Add(line);
}

void Bet(Currency amount, int target) {
  ScriptLine line;
  line.LineKind = ActionLine;
  line.LineCode = BetAmount;
  line.LineAmount = amount;
  line.ToSubject = target;
  Add(line);
}

/// Ten lines: a Pass Line bet on the come-out, and odds behind it.
void PassAndOdds() {
  Start(RemarkLine);
  Start(WhenLine);
  If(NextIsComeOut);
  Start(ThenLine);
  Bet(10, PassLine);
  Start(WhileLine);
  If(PointEstablished, AnyNumber);
  If(PassLineOdds, EqualTo, 0);
  Start(ThenLine);
  Bet(20, PassLineOdds);
}

double Now() {
  using namespace std::chrono;
  return duration<double>(steady_clock::now().time_since_epoch()).count();
}

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double Least(const std::vector<double>& values) {
  return *std::min_element(values.begin(), values.end());
}

/// All rolls in one game.
double SecondsOfOneRun(const std::string& script, const std::string& game) {
  PopulationPlan plan = {script, game, kGames * kRolls, kSeed, 0};
  Population population(plan);
  const double start = CpuSeconds();
  const auto played = population.Play(0);
  const double seconds = CpuSeconds() - start;
  if (!played || played->Record[RollsColumn] != kGames * kRolls) std::puts("the run stopped early");
  return seconds;
}

double SecondsOfGames(const std::string& script, const std::string& game) {
  PopulationPlan plan = {script, game, kRolls, kSeed, 0};
  Population population(plan);
  const double start = CpuSeconds();
  for (int index = 0; index < kGames; ++index) population.Play(index);
  return CpuSeconds() - start;
}

double SecondsOfJobs(const std::string& script, const std::string& game, int jobs) {
  constexpr int kForJobs = 2 * kGames;
  PopulationPlan plan = {script, game, kRolls, kSeed, 0};
  Population population(plan);
  Workers workers(jobs, [&](std::int64_t first, std::int64_t count) {
    GameBlock block = {first, count, {}, {}, 0, {}};
    for (std::int64_t index = first; index < first + count; ++index)
      if (const auto played = population.Play(index)) block.Games.push_back(played->Record);
    return block;
  });
  const double start = Now();
  workers.Play(
      0, kForJobs, [](GameBlock&) { return true; }, [] { return true; });
  return Now() - start;
}

}  // namespace

int main() {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("kelvanor_bench_" + std::to_string(std::time({})));
  std::filesystem::create_directory(folder);
  const std::string script = folder / "ten-lines.bet";
  const std::string game = folder / "bench.crp";
  TheHost = HeadlessHost();
  StartAfresh();
  LayDownDefaults();
  Game.DataPath = folder.string() + "/";
  Game.NegBankroll = true;  // that bets go on
  PassAndOdds();
  SaveScript(script);
  Game.AutoBetFile.clear();
  SaveGame(game);

  // The least of many times of each, by turns: what slows the machine for a while slows all.
  std::vector<double> oneRun;
  std::vector<double> games;
  std::vector<double> oneJob;
  std::vector<double> twoJobs;
  for (int round = 0; round < kRounds; ++round) {
    oneRun.push_back(SecondsOfOneRun(script, game));
    games.push_back(SecondsOfGames(script, game));
    oneJob.push_back(SecondsOfJobs(script, game, 1));
    twoJobs.push_back(SecondsOfJobs(script, game, 2));
  }
  std::filesystem::remove_all(folder);
  constexpr double kBillionth = 1e-9;
  std::printf("one run %.1f ns a roll, games of %d rolls %.1f: being games costs %.1f %%\n",
              Least(oneRun) / kGames / kRolls / kBillionth, kRolls,
              Least(games) / kGames / kRolls / kBillionth,
              100 * (Least(games) - Least(oneRun)) / Least(oneRun));
  std::printf("%.0f games a second of a core; two processes %.2f times one\n",
              kGames / Least(games), Least(oneJob) / Least(twoJobs));
  return 0;
}
