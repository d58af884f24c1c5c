#include "bets/vig.h"

namespace {

/// A raw vig in whole Units; any real bet pays at least one.
Currency RoundVig(Currency vig, int rounding, Currency amount) {
  const double units = vig / Unit();
  double rounded = Int(units);
  if (rounding == RoundedUp && rounded != units) rounded = Int(units + 1);
  // Exactly one half rounds down.
  if (rounding == RoundedNormally && units - Int(units) > 0.5) rounded = Int(units + 1);
  const Currency result = WholeTimes(rounded, Unit());
  return result < Unit() && amount > 0 ? Unit() : result;
}
Currency BuyVig(int betId, Currency amount, int rounding) {
  if (Game.BuyVigPct == 0 || !IsBuy(betId)) return 0;
  return RoundVig(amount * Game.BuyVigPct, rounding, amount);
}

Currency LayVig(int betId, Currency amount, int rounding) {
  if (Game.LayVigPct == 0 || !IsLay(betId)) return 0;
  const PayoffRecord& payoff = Game.Payoff[betId];
  const Currency wouldWin =
      Currency::FromCount((amount * payoff.Win) / payoff.Per * Currency::kScale);
  const Currency vig = wouldWin * Game.LayVigPct;
  return vig < 0 ? Currency(0) : RoundVig(vig, rounding, amount);
}

}  // namespace

Currency FigureBuyVig(int betId, Currency amount) {
  return BuyVig(betId, amount, Game.RoundBuyVig);
}

Currency FigureLayVig(int betId, Currency amount) {
  return LayVig(betId, amount, Game.RoundLayVig);
}

Currency VigHeld(int betId) {
  if (IsBuy(betId)) return Game.BuyVigHeld[betId - Buy4];
  if (IsLay(betId)) return Game.LayVigHeld[betId - Lay4];
  return 0;
}

Currency& HeldVigOf(int betId) {
  return IsBuy(betId) ? Game.BuyVigHeld[static_cast<unsigned>(betId - Buy4)]
                      : Game.LayVigHeld[static_cast<unsigned>(betId - Lay4)];
}

bool VigIsUpFront(int betId) {
  return (IsBuy(betId) && Game.BuyVigUpFront) || (IsLay(betId) && Game.LayVigUpFront);
}

VigTerms BuyVigTerms() { return {Game.BuyVigUpFront, Game.RoundBuyVig}; }
VigTerms LayVigTerms() { return {Game.LayVigUpFront, Game.RoundLayVig}; }

HeldVig FigureHeldVig(VigTerms buy, VigTerms lay) {
  HeldVig held;
  for (int id = Lay4; id <= LastBet; ++id) held.TotalOnTable += Game.Bets[id];
  for (int i = 0; i < 6; ++i) {
    held.Buy[i] = BuyVig(Buy4 + i, Game.Bets[Buy4 + i], buy.Rounding);
    held.Lay[i] = LayVig(Lay4 + i, Game.Bets[Lay4 + i], lay.Rounding);
    if (buy.UpFront) held.TotalOnTable += held.Buy[i];
    if (lay.UpFront) held.TotalOnTable += held.Lay[i];
  }
  return held;
}

void RefigureHeldVig() {
  const HeldVig held = FigureHeldVig(BuyVigTerms(), LayVigTerms());
  Game.BuyVigHeld = held.Buy;
  Game.LayVigHeld = held.Lay;
  Game.TotalOnTable = held.TotalOnTable;
}
