#include "bets/consistency.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <set>

#include "bets/chips.h"
#include "bets/vig.h"
#include "core/game_state.h"
#include "core/limits.h"
#include "core/text.h"

namespace {

bool IsPointOrNone(int point) { return point == 0 || IsPointNumber(point); }
bool IsDie(int die) { return die >= 1 && die <= 6; }

// --- Money ---

std::string CheckChipValues() {
  for (int chip = SmallestChip; chip <= LargestChip; ++chip) {
    if (Game.Bets[chip] <= 0) return "a chip value isn't above 0";
    if (chip > SmallestChip && Game.Bets[chip] < Game.Bets[chip - 1])
      return "chip values don't ascend";
    if (!IsWhole(Game.Bets[chip] / Unit())) return "a chip value is no multiple of the smallest";
  }
  return {};
}

std::string CheckBets() {
  for (int id = Lay4; id <= LastBet; ++id) {
    if (Game.Bets[id] < 0) return BetName(id) + ": the bet is negative";
    if (Game.Bets[id] > kMostBet) return BetName(id) + ": the bet is beyond the largest";
    if (!IsWhole(Game.Bets[id] / Unit())) return BetName(id) + ": the bet isn't in whole Units";
  }
  return {};
}

std::string CheckHeldVig() {
  const HeldVig held = FigureHeldVig(BuyVigTerms(), LayVigTerms());
  for (unsigned i = 0; i < held.Buy.size(); ++i) {
    const int number = static_cast<int>(i);
    if (Game.BuyVigHeld[i] != held.Buy[i])
      return BetName(Buy4 + number) + ": the held vig isn't that of the bet";
    if (Game.LayVigHeld[i] != held.Lay[i])
      return BetName(Lay4 + number) + ": the held vig isn't that of the bet";
  }
  return {};
}

std::string CheckTotalOnTable() {
  Currency total =
      std::accumulate(Game.Bets.begin() + Lay4, Game.Bets.begin() + LastBet + 1, Currency(0));
  for (const Currency vig : Game.BuyVigHeld) total += Game.BuyVigUpFront ? vig : Currency(0);
  for (const Currency vig : Game.LayVigHeld) total += Game.LayVigUpFront ? vig : Currency(0);
  if (total == Game.TotalOnTable) return {};
  return "the money on the table is $" + MoneyText(total) + ", not $" +
         MoneyText(Game.TotalOnTable);
}

std::string CheckBankrollRange() {
  if (Game.BankrollHistoryCount < 0 || Game.BankrollHistoryCount > kGraphPoints)
    return "the page of the graph has no such point";
  if (Game.RollCount[0] == 0) return {};
  // A script may use the ATM after the roll, which moves these only at the next.
  const Currency decided = Game.BankrollHistory[static_cast<unsigned>(Game.BankrollHistoryCount)];
  if (decided < Game.BankrollLow) return "the bankroll was below its lowest";
  if (decided > Game.BankrollHigh) return "the bankroll was above its highest";
  return {};
}

// --- Dice and table ---

std::string CheckDice() {
  if (!IsDie(Game.Die1) || !IsDie(Game.Die2)) return "a die is outside 1 to 6";
  if (!IsDie(Game.PrevDie1) || !IsDie(Game.PrevDie2)) return "a die before is outside 1 to 6";
  if (Game.RollTotal != Game.Die1 + Game.Die2) return "the total isn't the sum of the dice";
  return {};
}

std::string CheckPoint() {
  if (!IsPointOrNone(Game.Point)) return "the point is no point number";
  if (!IsPointOrNone(Game.PrevPoint) || !IsPointOrNone(Game.PrevPrevPoint))
    return "the point before is no point number";
  return {};
}

std::string CheckWorkingStates() {
  for (int id = Lay4; id <= LastBet; ++id) {
    const int state = Game.BetWorking[id];
    if (state < CalledOff || state > CalledOn) return BetName(id) + ": no such working state";
  }
  return {};
}

// --- Counters ---

std::int64_t SumOfEvents(int first, int last) {
  return std::accumulate(Game.RollCount.begin() + first, Game.RollCount.begin() + last + 1,
                         std::int64_t{0});
}

std::string CheckRollCounts() {
  const int rolls = Game.RollCount[0];
  if (rolls < 0 || rolls > kMaxRolls) return "the count of rolls is out of its limits";
  if (SumOfEvents(Total2, Total12) != rolls) return "the totals don't add up to the rolls";
  if (SumOfEvents(FirstDie1, FirstDie6) != rolls)
    return "the faces of the first die don't add up to the rolls";
  if (SumOfEvents(SecondDie1, SecondDie6) != rolls)
    return "the faces of the second die don't add up to the rolls";
  return {};
}

bool IsBelowZero(int count) { return count < 0; }

std::string CheckGaps() {
  for (int event = 1; event < kRollEvents; ++event) {
    const auto& gaps = Game.RollGapTally[event];
    if (Game.RollsSince[event] < 0 || std::any_of(gaps.begin(), gaps.end(), IsBelowZero))
      return "a count of event " + std::to_string(event) + " is negative";
    const auto count = std::accumulate(gaps.begin() + 1, gaps.end(), std::int64_t{0});
    if (count != Game.RollCount[event])
      return "the gaps of event " + std::to_string(event) + " don't add up to its count";
    // A gap is the way from one occurrence to the next: all of them and the open one are the game.
    std::int64_t rolls = std::int64_t{gaps[0]} + Game.RollsSince[event];
    for (int gap = 1; gap < kLongGap; ++gap) rolls += std::int64_t{gap} * gaps[gap];
    if (rolls != Game.RollCount[0])
      return "the gaps of event " + std::to_string(event) + " don't cover the rolls";
  }
  return {};
}

std::string CheckShooters() {
  const auto& stats = Game.ShooterStats;
  if (std::any_of(stats.begin(), stats.end(), IsBelowZero)) return "a shooter's count is negative";
  if (stats[AllPasses] != stats[PassesByPoint] + stats[PassesByNatural])
    return "the passes don't add up";
  if (stats[AllMisses] != stats[MissesBySevenOut] + stats[MissesOnComeOut])
    return "the misses don't add up";
  if (stats[ShootersFinished] != stats[MissesBySevenOut])
    return "the shooters aren't one a seven-out";
  if (stats[FinishedRollsSum] + stats[ShooterRolls] != Game.RollCount[0])
    return "the rolls of the shooters don't add up to the rolls";
  const int open = Game.Point != 0 ? 1 : 0;
  if (stats[PointsEstablished] != stats[PassesByPoint] + stats[MissesBySevenOut] + open)
    return "the points established don't match those decided";
  if (stats[ComeOutRolls] !=
      stats[PassesByNatural] + stats[MissesOnComeOut] + stats[PointsEstablished])
    return "the come-out rolls don't add up";
  return {};
}

std::string CheckShownStacks() {
  const std::set<int> shown(Game.VisibleStacks.begin(), Game.VisibleStacks.end());
  if (shown.size() != Game.VisibleStacks.size()) return "a Chip-Stack is shown twice";
  if (!std::all_of(shown.begin(), shown.end(), IsChipStack)) return "no such Chip-Stack";
  return {};
}

std::string CheckBetTables() {
  for (int kind = Phantom; kind < kBetKinds; ++kind) {
    for (int id = Lay4; id <= LastBet; ++id) {
      const auto& wagers = Game.BetWagers[kind][id];
      const auto& wins = Game.BetWins[kind][id];
      const auto& losses = Game.BetLosses[kind][id];
      if (wagers[StatCount] != wins[StatCount] + losses[StatCount])
        return BetName(id) + ": wins and losses don't add up to the decisions";
      for (const auto* stats : {&wagers, &wins, &losses}) {
        const auto& s = *stats;
        if (s[StatCount] < 0 || s[StatRollCount] > 1 || s[StatRollCount] > s[StatCount])
          return BetName(id) + ": a count of decisions is impossible";
        if (s[StatCount] > 0 && (s[StatLast] < s[StatLowest] || s[StatLast] > s[StatHighest]))
          return BetName(id) + ": the last amount is outside the lowest and highest";
      }
    }
  }
  return {};
}

// --- Chips ---

/// What lies on the table for one id.
struct Pile {
  Currency Amount;
  bool Overflow = false;
};

std::string CheckChipList() {
  if (Game.ChipCount < 0 || Game.ChipCount > kMaxChips) return "the count of chips is impossible";
  for (int i = 0; i < Game.ChipCount; ++i) {
    const Chip& chip = Game.ChipList[i];
    if (chip.BetId == 0) continue;
    if (!IsBet(chip.BetId) && !IsChipStack(chip.BetId)) return "a chip lies on no bet";
    if (chip.Picture < 1 || chip.Picture > kOverflowPicture) return "a chip has no picture";
  }
  return {};
}

std::string CheckPiles() {
  // A full list has dropped chips.
  if (Game.HyperDriveOn || Game.ChipCount >= kMaxChips) return {};
  std::array<Pile, kSlots> piles{};
  for (int i = 0; i < Game.ChipCount; ++i) {
    const Chip& chip = Game.ChipList[i];
    Pile& pile = piles[chip.BetId];
    if (chip.Picture == kOverflowPicture)
      pile.Overflow = true;
    else if (pile.Amount <= Game.Bets[chip.BetId])  // more of it is wrong in any case
      pile.Amount += ChipValue(chip.Picture);
  }
  for (int id = Lay4; id <= LastBet; ++id) {
    const Pile& pile = piles[id];
    const bool right = pile.Overflow ? pile.Amount < Game.Bets[id] : pile.Amount == Game.Bets[id];
    if (!right) return BetName(id) + ": the chips don't add up to the bet";
  }
  return {};
}

constexpr std::array kChecksOfCounters = {&CheckRollCounts, &CheckGaps, &CheckShooters,
                                          &CheckBetTables, &CheckBankrollRange};

constexpr std::array kOtherChecks = {
    &CheckChipValues, &CheckBets,          &CheckHeldVig,     &CheckTotalOnTable, &CheckDice,
    &CheckPoint,      &CheckWorkingStates, &CheckShownStacks, &CheckChipList,     &CheckPiles};

template <class Checks>
std::string FirstFault(const Checks& checks) {
  for (const auto check : checks) {
    std::string fault = check();
    if (!fault.empty()) return fault;
  }
  return {};
}

}  // namespace

std::string FirstInconsistencyOfCounters() { return FirstFault(kChecksOfCounters); }

std::string FirstInconsistency() {
  const std::string fault = FirstFault(kOtherChecks);
  return fault.empty() ? FirstInconsistencyOfCounters() : fault;
}
