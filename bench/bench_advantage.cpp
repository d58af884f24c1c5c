// What the figures of a bet cost: the comps and the bet results ask for all of them after a roll.
#include <benchmark/benchmark.h>

#include "rules/advantage.h"
#include "rules/comps.h"
#include "rules/defaults.h"

namespace {

void AllAdvantages(benchmark::State& state, bool skewed) {
  LayDownDefaults();
  Game.Point = 6;
  for (auto _ : state) {
    double sum = 0;
    for (int bet = Lay4; bet <= LastBet; ++bet) sum += FigureAdvantage(bet, skewed).EVDec;
    benchmark::DoNotOptimize(sum);
  }
}

void AllComps(benchmark::State& state) {
  LayDownDefaults();
  for (auto& bet : Game.BetWagers[Actual]) bet[StatCount] = bet[StatSum] = 1;
  for (auto _ : state) benchmark::DoNotOptimize(FigureComps(CompsForTab).Value);
}

BENCHMARK_CAPTURE(AllAdvantages, FairDice, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(AllAdvantages, SkewedDice, true)->Unit(benchmark::kMicrosecond);
BENCHMARK(AllComps)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
