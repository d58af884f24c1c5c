#include "stats/bet_tables.h"

namespace {

constexpr std::array<BetFamily, 4> kMovingFamilies = {DontComeFamily, DontComeOddsFamily,
                                                      ComeFamily, ComeOddsFamily};

Currency& Stat(BetTable& table, BetKind kind, int betId, BetStat stat) {
  return table[kind][static_cast<unsigned>(betId)][stat];
}

/// A phantom wager on a number that no Come or Don't Come bet has moved to.
bool NotEstablished(int betId) {
  if (betId < DontCome4 || betId > Come10Odds) return false;
  if (betId >= Come4 && Game.AllowPutBets) return false;
  return Stat(Game.BetWagers, Phantom, betId, StatEstablished) == 0;
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

void RecordAmount(std::array<Currency, kBetStats>& stats, Currency amount, int count) {
  stats[StatCount] += count;
  stats[StatSum] += amount * count;
  if (amount > stats[StatHighest]) stats[StatHighest] = amount;
  const bool first = stats[StatLowest] == 0;
  if (first || amount < stats[StatLowest]) stats[StatLowest] = amount;
  stats[StatLast] = amount;
  stats[StatRollCount] = 1;
  stats[StatRollAmount] = amount;
}

void SetEstablished(int betId, bool established) {
  Stat(Game.BetWagers, Phantom, betId, StatEstablished) = established ? 1 : 0;
}

}  // namespace

void RecordBetOutcomes(BetKind kind, int betId, Currency wager, Currency net, int count) {
  if (net == 0) return;
  if (kind == Phantom && NotEstablished(betId)) return;
  const auto at = static_cast<unsigned>(betId);
  RecordAmount(Game.BetWagers[kind][at], wager + VigInWager(kind, betId), count);
  RecordAmount((net > 0 ? Game.BetWins : Game.BetLosses)[kind][at], Abs(net), count);
}

void RecordBetOutcome(BetKind kind, int betId, Currency wager, Currency net) {
  RecordBetOutcomes(kind, betId, wager, net, 1);
}

void ClearRollStats() {
  ClearRollStats(Phantom);
  ClearRollStats(Actual);
}

void ClearRollStats(BetKind kind) {
  for (BetTable* table : {&Game.BetWagers, &Game.BetWins, &Game.BetLosses}) {
    for (unsigned betId = 0; betId <= LastBet; ++betId) {
      (*table)[kind][betId][StatRollCount] = 0;
      (*table)[kind][betId][StatRollAmount] = 0;
    }
  }
}

void ClearRollStats(int betId) {
  for (BetTable* table : {&Game.BetWagers, &Game.BetWins, &Game.BetLosses}) {
    auto& stats = (*table)[Actual][static_cast<unsigned>(betId)];
    stats[StatRollCount] = 0;
    stats[StatRollAmount] = 0;
  }
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
