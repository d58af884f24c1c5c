#include "support/random_rules.h"

#include <tuple>

#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "rules/presets.h"

namespace {

void DrawLimits(Chance& chance) {
  const Currency unit = Unit();
  Game.MinPlacard = unit * chance.Of({1, 1, 1, 3, 5, 10}) + Hundredths(chance.OneIn(5) ? 10 : 0);
  Game.MaxPlacard = Game.MinPlacard + unit * chance.Of({0, 2, 20, 500, 1000, 9'000'000});
  Game.MaxPropPayoff = unit * chance.Of({0, 1, 10, 100, 3000, 50'000});
  Game.MaxOddsBet = unit * chance.Of({0, 7, 100, 2000, 2000}) + Hundredths(chance.Below(100));
  for (Currency* multiple : {&Game.OddsAllowed410, &Game.OddsAllowed59, &Game.OddsAllowed68})
    *multiple = Hundredths(chance.Of({100, 150, 200, 250, 300, 500, 1000, 50}));
}

void DrawPayoffs(Chance& chance) {
  SetDefaultPayoffs();
  SetFieldPreset(chance.Below(kFieldPresets));
  for (int changes = chance.OneIn(3) ? chance.Below(20) : 0; changes > 0; --changes) {
    PayoffRecord& payoff = Game.Payoff[chance.Between(Lay4, LastBet)];
    payoff.Win = Hundredths(chance.Of({50, 100, 125, 333, 700, 3000}));
    payoff.Per = chance.Between(1, 12);
    payoff.ShownAsTo = chance.OneIn(2);
  }
  CopyPointOddsPayoffs();
}

void DrawAutoPlay(Chance& chance) {
  for (unsigned slot = 0; slot < kModifySlots; ++slot) {
    Game.ModifyAmount[slot] = Hundredths(chance.Of({0, 50, 100, 200, 300, 1500, 20'000, 999'999}));
    Game.ModifyOperator[slot] = chance.Between(ModifyAdd, ModifyDivide);
    Game.ModifyUnit[slot] = chance.Between(ModifyDollars, ModifyLastChip);
  }
  SetDefaultComeOutWorking();
  for (int changes = chance.OneIn(4) ? 20 : 0; changes > 0; --changes)
    Game.ComeOutWorking[chance.Between(Lay4, LastBet)] = chance.Of({+NotWorking, +Working});
}

}  // namespace

void DrawChips(Chance& chance) {
  const Currency unit = chance.Of({Hundredths(25), Hundredths(50), Currency(1), Currency(1),
                                   Currency(1), Currency(2), Currency(5)});
  const auto steps = chance.Of<std::array<int, 5>>(
      {{1, 5, 25, 100, 500}, {1, 5, 25, 100, 500}, {1, 2, 10, 20, 100}, {1, 1, 1, 1, 1}});
  for (unsigned i = 0; i < steps.size(); ++i) Game.Bets[SmallestChip + i] = unit * steps[i];
}

void DrawRules(Chance& chance) {
  DrawLimits(chance);
  DrawPayoffs(chance);
  DrawAutoPlay(chance);
  for (Currency* rate : {&Game.BuyVigPct, &Game.LayVigPct})
    *rate = Currency::FromRaw(chance.Of({0, 100, 475, 500, 500, 1000, 2000}));
  for (bool* rule : {&Game.BuyVigUpFront, &Game.LayVigUpFront}) *rule = chance.OneIn(2);
  for (bool* aid : {&Game.AutoTakeFullOdds, &Game.AutoLayFullOdds, &Game.AutoRemovePlace,
                    &Game.AllowPutBets, &Game.AutoArrangeChips})
    *aid = chance.OneIn(3);
  const std::tuple<int&, int> choices[] = {
      {Game.RoundBuyVig, RoundedUp},        {Game.RoundLayVig, RoundedUp},
      {Game.HandleWinningBets, WinSetBet},  {Game.HandleLosingBets, LossSetBet},
      {Game.AutoAdjust, AdjustColor},       {Game.LayBias, BiasDecrease},
      {Game.PlaceBias, BiasDecrease},       {Game.DoBias, BiasDecrease},
      {Game.DontBias, BiasDecrease},        {Game.OddsCalcMethod, OddsSingleOfFlat},
      {Game.DiceAction, DiceRemainOnTable}, {Game.Notify, 31}};
  for (const auto& [choice, highest] : choices) choice = chance.Between(0, highest);
  Game.HyperThrottle = chance.OneIn(4) ? 1 : 0;
  Game.BarDont = chance.Of({2, 12});
}
