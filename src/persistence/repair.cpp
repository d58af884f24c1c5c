#include "persistence/repair.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>

#include "bets/chips.h"
#include "bets/consistency.h"
#include "bets/vig.h"
#include "core/faults.h"
#include "core/game_state.h"
#include "persistence/repair_counters.h"
#include "rules/defaults.h"
#include "rules/presets.h"

namespace {

// --- House rules ---

/// The largest amount of which all chips but the smallest, and a dollar, are whole multiples.
Currency CommonUnit() {
  std::int64_t unit = Currency::kScale;
  for (int chip = SmallestChip + 1; chip <= LargestChip; ++chip)
    unit = std::gcd(unit, std::max<std::int64_t>(Game.Bets[chip].Raw(), 0));
  return Currency::FromRaw(unit);
}

bool ChipsAreRight() {
  for (int chip = SmallestChip; chip <= LargestChip; ++chip) {
    const Currency value = Game.Bets[chip];
    if (value <= 0 || !IsWhole(value / Unit())) return false;
    if (chip > SmallestChip && value < Game.Bets[chip - 1]) return false;
  }
  return true;
}

/// A value between two neighbours that ascend is the one out of place.
void PutChipsInOrder() {
  for (int chip = SmallestChip + 1; chip < LargestChip; ++chip) {
    const Currency below = Game.Bets[chip - 1];
    const Currency above = Game.Bets[chip + 1];
    if (below > 0 && below <= above) Game.Bets[chip] = std::clamp(Game.Bets[chip], below, above);
  }
}

void RepairChipValues() {
  if (ChipsAreRight()) return;
  PutChipsInOrder();
  if (ChipsAreRight()) return;
  const Currency second = Game.Bets[SmallestChip + 1];
  if (Game.Bets[SmallestChip] <= 0 || Game.Bets[SmallestChip] > second) {
    if (second > 0) Game.Bets[SmallestChip] = CommonUnit();
    if (Game.Bets[SmallestChip] <= 0) Game.Bets[SmallestChip] = 1;
  }
  for (int chip = SmallestChip + 1; chip <= LargestChip; ++chip) {
    const Currency value = std::max(Game.Bets[chip], Currency(0));
    Game.Bets[chip] = std::max(RoundDownTo(value, Unit()), Game.Bets[chip - 1]);
  }
}

/// A ratio pays on whole units of a bet.
void RepairPer(Currency& per, Currency usual) {
  constexpr Currency kHalf = Currency::FromRaw(Currency::kScale / 2);
  per = per <= 0 ? usual : std::max(RoundDownTo(per + kHalf, 1), Currency(1));
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
  RepairChipValues();
  RepairPayoffs();
  RepairVisibleStacks();
  Game.MinPlacard = std::max(Game.MinPlacard, Unit());
  Game.MaxPlacard = std::max(Game.MaxPlacard, Game.MinPlacard);
  if (Game.BarDont != 2 && Game.BarDont != 12) Game.BarDont = Game.BarDont < kNeither ? 2 : 12;
  if (!CanBePickedUp(Game.ChipColor)) Game.ChipColor = 1;
}

// --- Money ---

/// A bet that its snapshots don't know and the bankroll can't cover never stood.
void RepairBet(int id) {
  Currency& bet = Game.Bets[id];
  bet = RoundDownTo(std::max(bet, Currency(0)), Unit());
  const Currency most = Bankroll() + (Game.NegBankroll ? Currency(kBankLimit) : Currency(0));
  if (bet <= most || bet == Game.BetsAtRoll[id] || bet == Game.BetsAfterRoll[id]) {
    bet = std::min(bet, RoundDownTo(kBeyondPlay, Unit()));
    return;
  }
  const Currency before = Game.BetsAfterRoll[id];
  const bool stood = before >= 0 && before <= most && IsWhole(before / Unit());
  bet = stood ? before : RoundDownTo(std::max(most, Currency(0)), Unit());
}

bool VigCanBeFigured(int id) {
  try {
    FigureBuyVig(id, Game.Bets[id]);
    FigureLayVig(id, Game.Bets[id]);
    return true;
  } catch (const RunTimeFault&) {
    return false;
  }
}

/// A rate or a payoff that the vig of a bet is beyond reckoning by becomes the usual one.
void RepairVigOf(int id) {
  constexpr Currency kWholeBet = 1;
  if (VigCanBeFigured(id)) return;
  Currency& rate = IsBuy(id) ? Game.BuyVigPct : Game.LayVigPct;
  if (rate > kWholeBet) rate = Settings().LayVigPct;
  if (!VigCanBeFigured(id)) Game.Payoff[id] = DefaultPayoffs(Game.Point)[id];
}

void RepairMoney() {
  Currency& bankroll = Game.Bets[BankrollIndex];
  bankroll = std::clamp(bankroll, -kBeyondPlay, kBeyondPlay);
  if (bankroll < 0) Game.NegBankroll = true;
  for (int id = Lay4; id <= LastBet; ++id) RepairBet(id);
  for (int id = Lay4; id < kContractSlots; ++id)
    Game.ContractBets[id] = std::max(Game.ContractBets[id], Currency(0));
  for (int id = Lay4; id <= LastBet; ++id) RepairVigOf(id);
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

void RepairGraph() {
  const int rolls = Game.RollCount[0];
  int& count = Game.BankrollHistoryCount;
  if ((rolls == 0) != (count == 0)) count = rolls == 0 ? 0 : (rolls - 1) % kGraphPoints + 1;
  // All bankrolls but the last lay within the bank limit.
  const Currency limit = kBankLimit * rolls + kBeyondPlay;
  Game.BankrollSum = std::clamp(Game.BankrollSum, -limit, limit);
  if (rolls == 0) return;
  const Currency decided = Game.BankrollHistory[static_cast<unsigned>(count)];
  Game.BankrollLow = std::min(Game.BankrollLow, decided);
  Game.BankrollHigh = std::max(Game.BankrollHigh, decided);
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

void RepairGame() {
  RepairRules();
  RepairMoney();
  RepairPoints();
  RepairCounters();
  RepairBetTables();
  RepairGraph();
  RepairChips();
}
