#include "persistence/repair.h"

#include <algorithm>
#include <cstdlib>

#include "bets/chips.h"
#include "bets/consistency.h"
#include "bets/vig.h"
#include "core/game_state.h"
#include "core/limits.h"
#include "rules/defaults.h"
#include "rules/presets.h"
#include "stats/bankroll_graph.h"

namespace {

// --- House rules ---

bool ChipsAreRight() {
  for (int chip = SmallestChip; chip <= LargestChip; ++chip) {
    const Currency value = Game.Bets[chip];
    if (value < kLeastCheck || value > kMostCheck || !IsWhole(value / Unit())) return false;
    if (chip > SmallestChip && value < Game.Bets[chip - 1]) return false;
  }
  return true;
}

/// A ratio pays on whole units of a bet.
void RepairPer(Currency& per, Currency usual) {
  constexpr Currency kHalf = Currency::FromRaw(Currency::kScale / 2);
  per = per <= 0 ? usual : std::clamp(RoundDownTo(per + kHalf, 1), Currency(1), kMostPer);
}

void RepairPayoffs() {
  const auto defaults = DefaultPayoffs(Game.Point);
  for (unsigned id = 1; id < Game.Payoff.size(); ++id)
    RepairPer(Game.Payoff[id].Per, defaults[id].Per);
  for (const PayoffRow& row : PayoffRows()) {
    const auto id = static_cast<unsigned>(row.BetId);
    if (Game.Payoff[id].Win <= 0) Game.Payoff[id].Win = defaults[id].Win;
  }
  bool anyWin = false;
  for (unsigned i = 1; i < Game.FieldPayoff.size(); ++i) {
    PayoffRecord& payoff = Game.FieldPayoff[i];
    RepairPer(payoff.Per, 1);
    payoff.Win = std::max(payoff.Win, -payoff.Per);
    anyWin = anyWin || payoff.Win > 0;
  }
  if (!anyWin) SetFieldPreset(0);
}

void RepairVisibleStacks() {
  auto& stacks = Game.VisibleStacks;
  for (auto stack = stacks.begin(); stack != stacks.end(); ++stack) {
    while (std::find(stacks.begin(), stack, *stack) != stack)
      *stack = *stack < LastSlot ? *stack + 1 : FirstChipStack;
    Game.BetNames[static_cast<unsigned>(FirstChipStack + (stack - stacks.begin()))] =
        "Chip-Stack # " + std::to_string(*stack - ChipStackBase);
  }
}

bool CanBePickedUp(int color) {
  constexpr int kFirstStack = 7;
  constexpr int kLastStack = 10;
  constexpr int kFirstMarker = 89;
  return (color >= 1 && color < kOverflowPicture) ||
         (color >= kFirstStack && color <= kLastStack) || color >= kFirstMarker;
}

void RepairRules() {
  constexpr int kNeither = 7;
  if (!ChipsAreRight()) SetDefaultDenominations();
  RepairPayoffs();
  RepairVisibleStacks();
  Game.MinPlacard = std::max(Game.MinPlacard, Unit());
  Game.MaxPlacard = std::max(Game.MaxPlacard, Game.MinPlacard);
  if (Game.BarDont != 2 && Game.BarDont != 12) Game.BarDont = Game.BarDont < kNeither ? 2 : 12;
  if (!CanBePickedUp(Game.ChipColor)) Game.ChipColor = 1;
}

// --- Money ---

void RepairBet(Currency& bet) { bet = RoundDownTo(std::clamp(bet, Currency(0), kMostBet), Unit()); }

void RepairMoney() {
  if (Bankroll() < 0) Game.NegBankroll = true;
  for (int id = Lay4; id <= LastBet; ++id) RepairBet(Game.Bets[id]);
  for (int id = Lay4; id < kContractSlots; ++id) RepairBet(Game.ContractBets[id]);
  RefigureHeldVig();
}

// --- Dice and graph ---

/// The point number, or 0, that is nearest.
int NearestPoint(int point) {
  int nearest = 0;
  for (const int number : kPointNumbers) {
    if (std::abs(number - point) < std::abs(nearest - point)) nearest = number;
  }
  return nearest;
}

void RepairPoints() {
  for (int* point : {&Game.Point, &Game.PrevPoint, &Game.PrevPrevPoint})
    *point = NearestPoint(*point);
  Game.RollTotal = Game.Die1 + Game.Die2;
}

// --- Counters ---

/// Squares of wagers lie between those of equal wagers and of the highest ones; a file from before
/// they were kept has none.
void RepairSquares(unsigned id) {
  const BetStats& wagers = Game.BetWagers[Actual][id];
  const double count = wagers[StatCount].ToDouble();
  const double sum = wagers[StatSum].ToDouble();
  double& squares = Game.WagerSquares[id];
  if (count == 0) {
    squares = 0;
    return;
  }
  constexpr double kHair = 1e-9;  // of what a sum of many squares may be off by
  const double least = sum / count * sum;
  const double most = std::max(least, sum * wagers[StatHighest].ToDouble());
  if (squares < least * (1 - kHair) || squares > most * (1 + kHair))
    squares = std::clamp(squares, least, most);
}

/// The game goes on with its money and rules, and counts from here.
void BeginCountersAnew() {
  static_cast<Tallies&>(Game) = Tallies{};
  Game.ShooterStats = {};
  Game.ShooterStats[PointsEstablished] = Game.ShooterStats[ComeOutRolls] = Game.Point != 0 ? 1 : 0;
  Game.BetOutcome = {};
  Game.BankrollSum = 0;
  Game.BankrollHigh = Game.BankrollLow = Bankroll();
  RestartGraph();
}

/// True when the counters contradicted each other.
bool RepairCounters() {
  Game.RollsSince[0] = Game.RollCount[0];
  const bool contradict = !FirstInconsistencyOfCounters().empty();
  if (contradict) BeginCountersAnew();
  for (unsigned id = Lay4; id <= LastBet; ++id) RepairSquares(id);
  return contradict;
}

// --- Chips ---

/// What lies on the table must be the bets.
void RepairChips() {
  constexpr int kFarthest = 2000;
  for (Chip& chip : Game.ChipList) {
    chip.X = std::clamp(chip.X, -kFarthest, kFarthest);
    chip.Y = std::clamp(chip.Y, -kFarthest, kFarthest);
  }
  if (FirstInconsistency().empty()) return;
  Game.ChipCount = 0;
  ArrangeAllChips();
}

}  // namespace

bool RepairGame() {
  RepairRules();
  RepairMoney();
  RepairPoints();
  const bool anew = RepairCounters();
  RepairChips();
  return anew;
}
