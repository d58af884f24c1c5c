#include "stats/bet_tables.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr std::array<BetFamily, 4> kMovingFamilies = {DontComeFamily, DontComeOddsFamily,
                                                      ComeFamily, ComeOddsFamily};

Currency& Stat(BetTable& table, BetKind kind, int betId, BetStat stat) {
  return table[kind][static_cast<unsigned>(betId)][stat];
}

Currency LayVigOf(BetKind kind, int betId) {
  if (kind == Actual) return Game.LayVigHeld[static_cast<unsigned>(betId - Lay4)];
  const PayoffRecord& payoff = Game.Payoff[static_cast<unsigned>(betId)];
  return Currency::FromDouble(Game.LayVigPct * payoff.Win / payoff.Per);
}

Currency BuyVigOf(BetKind kind, int betId) {
  return kind == Actual ? Game.BuyVigHeld[static_cast<unsigned>(betId - Buy4)] : Game.BuyVigPct;
}

Currency VigInWager(BetKind kind, int betId) {
  if (IsLay(betId) && Game.LayVigUpFront) return LayVigOf(kind, betId);
  if (IsBuy(betId) && Game.BuyVigUpFront) return BuyVigOf(kind, betId);
  return Currency();
}

void AddAmounts(BetStats& stats, Currency amount, int count) {
  stats[StatCount] += count;
  stats[StatSum] += amount * count;
  if (amount > stats[StatHighest]) stats[StatHighest] = amount;
  const bool first = stats[StatLowest] == 0;
  if (first || amount < stats[StatLowest]) stats[StatLowest] = amount;
}

void RecordEarlierAmount(BetStats& stats, Currency amount, int count) {
  AddAmounts(stats, amount, count);
  stats[StatLast] = amount;
}

void SetAmountOfRoll(BetStats& stats, Currency amount) {
  stats[StatRollCount] = 1;
  stats[StatRollAmount] = amount;
}

void RecordAmount(BetStats& stats, Currency amount) {
  RecordEarlierAmount(stats, amount, 1);
  SetAmountOfRoll(stats, amount);
}

void EnterRoll(BetKind kind, int betId) {
  Include(Game.RolledBets[kind], static_cast<unsigned>(betId));
}

void Enter(BetKind kind, int betId) {
  Include(Game.TalliedBets[kind], static_cast<unsigned>(betId));
}

/// The row of a decision's wager, which is entered with that of its win or loss.
BetStats& WagersOf(BetKind kind, int betId) {
  Enter(kind, betId);
  return Game.BetWagers[kind][static_cast<unsigned>(betId)];
}
BetStats& WinsOrLosses(BetKind kind, int betId, Currency net) {
  return (net > 0 ? Game.BetWins : Game.BetLosses)[kind][static_cast<unsigned>(betId)];
}

double Square(Currency amount) { return amount.ToDouble() * amount.ToDouble(); }

/// A sum that stays at the end of what money can hold.
void AddUpTo(Currency& sum, Currency amount) {
  std::int64_t raw = 0;
  if (__builtin_add_overflow(sum.Raw(), amount.Raw(), &raw))
    raw = amount < 0 ? std::numeric_limits<std::int64_t>::min()
                     : std::numeric_limits<std::int64_t>::max();
  sum = Currency::FromRaw(raw);
}

/// As most bets are in a game that ends after some rolls.
bool NeverDecided(unsigned betId) { return Game.BetWagers[Actual][betId][StatCount] == 0; }

void AddFinished(BetStats& finished, const BetStats& ended) {
  if (ended[StatCount] == 0) return;
  AddUpTo(finished[StatCount], ended[StatCount]);
  AddUpTo(finished[StatSum], ended[StatSum]);
  finished[StatHighest] = std::max(finished[StatHighest], ended[StatHighest]);
  const bool first = finished[StatLowest] == 0;
  if (first || ended[StatLowest] < finished[StatLowest]) finished[StatLowest] = ended[StatLowest];
  finished[StatLast] = ended[StatLast];
}

/// The rows of a bet in the three tables.
template <typename Action>
void ForRowsOf(BetKind kind, unsigned betId, Action action) {
  action(Game.BetWagers[kind][betId]);
  action(Game.BetWins[kind][betId]);
  action(Game.BetLosses[kind][betId]);
}

void ForgetRoll(BetStats& stats) {
  stats[StatRollCount] = 0;
  stats[StatRollAmount] = 0;
}

}  // namespace

bool PhantomCounts(int betId, bool established) {
  if (betId < DontCome4 || betId > Come10Odds) return true;
  return established || (betId >= Come4 && Game.AllowPutBets);
}

Currency PhantomStake(int betId) { return 1 + VigInWager(Phantom, betId); }

void RecordPhantomWagers(int betId, Currency staked, int count) {
  RecordEarlierAmount(WagersOf(Phantom, betId), staked, count);
}

void RecordPhantomNets(int betId, Currency net, int count, bool latest) {
  BetStats& stats = WinsOrLosses(Phantom, betId, net);
  AddAmounts(stats, Abs(net), count);
  if (latest) stats[StatLast] = Abs(net);
}

void RecordPhantomOfRoll(const PhantomOutcome& outcome) {
  const auto& [betId, staked, net] = outcome;
  EnterRoll(Phantom, betId);
  SetAmountOfRoll(Game.BetWagers[Phantom][static_cast<unsigned>(betId)], staked);
  SetAmountOfRoll(WinsOrLosses(Phantom, betId, net), Abs(net));
}

void RecordBetOutcome(BetKind kind, int betId, Currency wager, Currency net) {
  if (net == 0) return;
  const Currency staked = wager + VigInWager(kind, betId);
  if (kind == Actual) return RecordStaked(betId, staked, net);
  if (!PhantomCounts(betId, Stat(Game.BetWagers, kind, betId, StatEstablished) != 0)) return;
  EnterRoll(kind, betId);
  RecordAmount(WagersOf(kind, betId), staked);
  RecordAmount(WinsOrLosses(kind, betId, net), Abs(net));
}

void RecordStaked(int betId, Currency staked, Currency net) {
  EnterRoll(Actual, betId);
  RecordAmount(WagersOf(Actual, betId), staked);
  Game.WagerSquares[static_cast<unsigned>(betId)] += Square(staked);
  RecordAmount(WinsOrLosses(Actual, betId, net), Abs(net));
}

void CountStreak(int betId, Currency net) {
  int& streak = Game.BetOutcome[static_cast<unsigned>(betId)][1];
  if (net > 0) streak = streak > 0 ? streak + 1 : 1;
  if (net < 0) streak = streak < 0 ? streak - 1 : -1;
}

void RecordEarlierWagers(int betId, Currency staked, int count) {
  RecordEarlierAmount(WagersOf(Actual, betId), staked, count);
  Game.WagerSquares[static_cast<unsigned>(betId)] += count * Square(staked);
}

void RecordEarlierNets(int betId, Currency net, int count) {
  RecordEarlierAmount(WinsOrLosses(Actual, betId, net), Abs(net), count);
}

void ClearRollStats(BetKind kind) {
  ForEachIn(std::exchange(Game.RolledBets[kind], {}),
            [kind](unsigned betId) { ForRowsOf(kind, betId, ForgetRoll); });
}

void ClearBetTables() {
  for (const BetKind kind : {Phantom, Actual})
    ForEachIn(std::exchange(Game.TalliedBets[kind], {}), [kind](unsigned betId) {
      ForRowsOf(kind, betId, [](BetStats& stats) { stats = {}; });
    });
  Game.RolledBets = {};
  Game.WagerSquares = {};
}

void SetEstablished(int betId, bool established) {
  Stat(Game.BetWagers, Phantom, betId, StatEstablished) = established ? 1 : 0;
  if (established) Enter(Phantom, betId);
}

void UpdateEstablished(int lastTotal, bool pointStood) {
  if (IsPointNumber(lastTotal)) {
    for (const BetFamily family : kMovingFamilies) {
      SetEstablished(BetOnNumber(family, lastTotal), pointStood);
    }
  } else if (lastTotal == 7) {
    for (int betId = 1; betId <= LastBet; ++betId) SetEstablished(betId, false);
  }
}

void SumBetStats(int first, int last, bool clear) {
  const std::array tables = {&Game.BetWagers, &Game.BetWins, &Game.BetLosses};
  Enter(Actual, 0);
  if (clear)
    for (BetTable* table : tables) (*table)[Actual][0] = {};
  ForEachIn(Game.TalliedBets[Actual], [&](unsigned at) {
    const int betId = static_cast<int>(at);
    if (!IsBet(betId) || betId < first || betId > last || NeverDecided(at)) return;
    for (BetTable* table : tables)
      // Required: highest and lowest are added too.
      for (unsigned stat = StatCount; stat < kBetStats; ++stat)
        AddUpTo((*table)[Actual][0][stat], (*table)[Actual][at][stat]);
  });
}

void AddFinishedGame() {
  Game.FinishedRolls += Game.RollCount[0];
  ForEachIn(Game.TalliedBets[Actual], [](unsigned betId) {
    if (!IsBet(static_cast<int>(betId)) || NeverDecided(betId)) return;
    AddFinished(Game.FinishedWagers[betId], Game.BetWagers[Actual][betId]);
    AddFinished(Game.FinishedWins[betId], Game.BetWins[Actual][betId]);
    AddFinished(Game.FinishedLosses[betId], Game.BetLosses[Actual][betId]);
    Game.FinishedSquares[betId] += Game.WagerSquares[betId];
  });
}
