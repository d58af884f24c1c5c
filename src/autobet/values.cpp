#include "autobet/values.h"

#include <algorithm>

#include "autobet/bet_ids.h"
#include "autobet/language.h"
#include "stats/bankroll_graph.h"

namespace {

using Amounts = std::array<Currency, kSlots>;

Currency AmountOf(const Amounts& bets, int id) { return bets[static_cast<unsigned>(id)]; }

Currency StackAmount(const Amounts& bets, int stack) {
  return IsStackNumber(stack) ? AmountOf(bets, ChipStackBase + stack) : Currency();
}

Currency ReferredAmount(const Amounts& bets, int stack) {
  const int id = StackReferredTo(stack, bets);
  return id == 0 ? Currency() : AmountOf(bets, id);
}

Currency SumOf(const Amounts& bets, int first, int last) {
  Currency sum;
  for (int id = first; id <= last; ++id) sum += AmountOf(bets, id);
  return sum;
}

Currency SumOfGroup(const Amounts& bets, int target) {
  const IdRange ids = IdsOfTarget(target);
  Currency sum = SumOf(bets, ids.First, ids.Last);
  if (target == OutsidePlaceBets) sum -= SumOf(bets, Place6, Place8);
  return sum;
}

Currency ValueOfPointBet(int subject) {
  BetFamily family{};
  const int id = FindPointFamily(subject, family) ? BetOnPoint(family) : 0;
  return id == 0 ? Currency() : AmountOf(Game.Bets, id);
}

int CountOfWagers() {
  const auto first = Game.Bets.begin() + Lay4;
  return static_cast<int>(
      std::count_if(first, first + LastBet, [](Currency bet) { return bet > 0; }));
}

Currency SumOfDecided(BetStat stat) {
  Currency sum;
  for (unsigned id = Lay4; id <= LastBet; ++id) sum += Game.BetWagers[Actual][id][stat];
  return sum;
}

int Stat(ShooterStat stat) { return Game.ShooterStats[static_cast<unsigned>(stat)]; }

/// Sources whose value of the last is the value of now; 0 for any other.
Currency ValueWithoutPast(int subject) {
  switch (subject) {
    case GameRollsSource: return Game.RollCount[0];
    case GamePassesSource: return Stat(AllPasses);
    case GameMissesSource: return Stat(AllMisses);
    case AvailableSubject: return FreeMoney();
    case CurrentWagersCount: return CountOfWagers();
    case CurrentWagersMoney: return Game.TotalOnTable;
    case DecidedWagersCount: return SumOfDecided(StatRollCount);
    case DecidedWagersMoney: return SumOfDecided(StatRollAmount);
    default: return 0;
  }
}

/// Sources that are read alike now and of the last: only `bets` tells which of the two it is.
Currency ValueAlike(const Amounts& bets, int subject, int stack) {
  if (IsBet(subject)) return AmountOf(bets, subject);
  if (subject == ChipStackSubject) return StackAmount(bets, stack);
  if (subject == ChipStackRef) return ReferredAmount(bets, stack);
  if (subject >= AllBets && subject <= AllBuyBets) return SumOfGroup(bets, subject);
  return ValueWithoutPast(subject);
}

/// The average as it stood one roll ago. The point before the first of a page is the last of the
/// page before, which lies behind it; the average of all rolls needs no more than an earlier point.
Currency AverageBeforeRoll(int span) {
  const int before = Game.BankrollHistoryCount - 1;
  const bool earlierPage = span > 0 && before == 0 && Game.RollCount[0] > kGraphPoints;
  return BankrollMovingAverage(earlierPage ? 2 * kGraphPoints : before, span);
}

Currency Percent(Currency value, Currency amount) {
  constexpr double kHundred = 100;
  return Currency::FromCount(static_cast<double>(value.Raw()) * amount.ToDouble() / kHundred);
}

}  // namespace

Currency ValueOf(int subject, int stack) {
  switch (subject) {
    case DiceTotalSource: return Game.RollTotal;
    case Die1Source: return Game.Die1;
    case Die2Source: return Game.Die2;
    case ShooterRollsSource: return Stat(ShooterRolls);
    case ShooterPassesSource: return Stat(ShooterPasses);
    case ShooterMissesSource: return Stat(ShooterMisses);
    case HighestBankroll: return std::max(Game.BankrollHigh, Bankroll());
    case BankrollSubject: return Bankroll();
    case LowestBankroll: return std::min(Game.BankrollLow, Bankroll());
    case AverageBankroll: return BankrollMovingAverage(Game.BankrollHistoryCount, stack);
    case AllChipStacks: return SumOf(Game.Bets, ChipStackBase, LastSlot - 1);
    case PointLay:
    case PointCome:
    case PointComeOdds:
    case PointPlace:
    case PointBuy: return ValueOfPointBet(subject);
    default: return ValueAlike(Game.Bets, subject, stack);
  }
}

// Required: the total of the Chip-Stacks and the bets on the point have no past, and are 0.
Currency ValueOfLast(int subject, int stack) {
  switch (subject) {
    case DiceTotalSource: return Game.PrevDie1 + Game.PrevDie2;
    case Die1Source: return Game.PrevDie1;
    case Die2Source: return Game.PrevDie2;
    case ShooterRollsSource: return Stat(LastShooterRolls);
    case ShooterPassesSource: return Stat(LastShooterPasses);
    case ShooterMissesSource: return Stat(LastShooterMisses);
    case HighestBankroll: return Game.BankrollHigh;
    case BankrollSubject: return Game.BetsAtRoll[BankrollIndex];
    case LowestBankroll: return Game.BankrollLow;
    case AverageBankroll: return AverageBeforeRoll(stack);
    default: return ValueAlike(Game.BetsAtRoll, subject, stack);
  }
}

Currency PercentOf(int subject, int stack, Currency amount) {
  return Percent(ValueOf(subject, stack), amount);
}

Currency PercentOfLast(int subject, int stack, Currency amount) {
  return Percent(ValueOfLast(subject, stack), amount);
}
