#include "figures/bet_sums.h"

#include <algorithm>

#include "core/game_state.h"

namespace {

constexpr std::size_t kKeptLength = LastBet + 1;
constexpr char kSelected = 'S';
constexpr char kDataCodes[] = {'1', '0', '2'};  // by `BetData`

WideStats Widened(const BetStats& stats) {
  WideStats wide{};
  std::transform(stats.begin(), stats.end(), wide.begin(),
                 [](Currency amount) { return WideCount{amount.Raw()}; });
  return wide;
}

WideCount LowerAboveZero(WideCount a, WideCount b) {
  if (a == 0 || b == 0) return a + b;
  return std::min(a, b);
}

void AddStats(WideStats& sums, const WideStats& more) {
  for (const BetStat stat : {StatCount, StatSum, StatLast, StatRollCount, StatRollAmount})
    sums[stat] += more[stat];
  sums[StatHighest] = std::max(sums[StatHighest], more[StatHighest]);
  sums[StatLowest] = LowerAboveZero(sums[StatLowest], more[StatLowest]);
}

/// One bet over several games: the last amount is that of the latest game which has one.
WideStats OverGames(const BetStats& finished, const BetStats& running) {
  WideStats sums = Widened(finished);
  AddStats(sums, Widened(running));
  sums[StatLast] = (running[StatCount] > 0 ? running : finished)[StatLast].Raw();
  return sums;
}

/// Phantom wagers are all alike.
double SquaresOfEqual(const BetStats& wagers) {
  if (wagers[StatCount] <= 0) return 0;
  return wagers[StatSum] / wagers[StatCount] * wagers[StatSum].ToDouble();
}

BetSums SumsOverGames(unsigned id) {
  return {OverGames(Game.FinishedWagers[id], Game.BetWagers[Actual][id]),
          OverGames(Game.FinishedWins[id], Game.BetWins[Actual][id]),
          OverGames(Game.FinishedLosses[id], Game.BetLosses[Actual][id]),
          Game.FinishedSquares[id] + Game.WagerSquares[id]};
}

}  // namespace

BetSelection KeptSelection() {
  BetSelection selection;
  const std::string& kept = Game.BetResultsChoice;
  for (std::size_t line = 0; line < std::min<std::size_t>(kept.size(), LastBet); ++line)
    selection.Selected[line + 1] = kept[line] == kSelected;
  if (kept.size() < kKeptLength) return selection;
  const auto* code = std::find(std::begin(kDataCodes), std::end(kDataCodes), kept[LastBet]);
  if (code != std::end(kDataCodes))
    selection.Data = static_cast<BetData>(code - std::begin(kDataCodes));
  return selection;
}

void KeepSelection(const BetSelection& selection) {
  std::string kept(kKeptLength, ' ');
  for (std::size_t line = 0; line < LastBet; ++line)
    if (selection.Selected[line + 1]) kept[line] = kSelected;
  kept[LastBet] = kDataCodes[static_cast<int>(selection.Data)];
  Game.BetResultsChoice = kept;
}

BetSums SumsOfBet(int betId, BetData data) {
  const auto id = static_cast<unsigned>(betId);
  if (data == BetData::AllGames) return SumsOverGames(id);
  const BetKind kind = data == BetData::PhantomWagers ? Phantom : Actual;
  return {Widened(Game.BetWagers[kind][id]), Widened(Game.BetWins[kind][id]),
          Widened(Game.BetLosses[kind][id]),
          kind == Phantom ? SquaresOfEqual(Game.BetWagers[kind][id]) : Game.WagerSquares[id]};
}

void AddSums(BetSums& sums, const BetSums& more) {
  AddStats(sums.Wagers, more.Wagers);
  AddStats(sums.Wins, more.Wins);
  AddStats(sums.Losses, more.Losses);
  sums.Squares += more.Squares;
}

std::int64_t RollsOf(BetData data) {
  return Game.RollCount[0] + (data == BetData::AllGames ? Game.FinishedRolls : 0);
}
