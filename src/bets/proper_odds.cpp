#include "bets/proper_odds.h"

#include <algorithm>

#include "core/game_state.h"
#include "core/text.h"

namespace {

/// The two changes between which an adjustment chooses.
struct Steps {
  Currency Up;
  Currency Down;
};

Currency PayoffPer(int betId) {
  const bool comeOut = Game.Point == 0;
  switch (betId) {
    case PassLine: return Game.Payoff[comeOut ? +Come : BetOnNumber(ComeFamily, Game.Point)].Per;
    case DontPass:
      return Game.Payoff[comeOut ? +DontCome : BetOnNumber(DontComeFamily, Game.Point)].Per;
    case PassLineOdds:
      if (!comeOut) return Game.Payoff[BetOnNumber(ComeOddsFamily, Game.Point)].Per;
      break;
    case DontPassOdds:
      if (!comeOut) return Game.Payoff[BetOnNumber(DontComeOddsFamily, Game.Point)].Per;
      break;
    default: break;
  }
  return Game.Payoff[betId].Per;
}

/// A quotient to nine decimals and then to four, which takes the noise of the division off.
Currency CleanQuotient(double value) {
  constexpr double kEasilyWhole = 1e9;
  if (std::abs(value) < kEasilyWhole && IsWhole(value)) return WholeTimes(value, 1);
  __extension__ using Wide = __int128;
  const auto nine = static_cast<Wide>(std::round(static_cast<long double>(value) * 1e9L));
  constexpr int kFiveDecimals = 100'000;
  Wide four = nine / kFiveDecimals;
  const Wide rest = nine % kFiveDecimals;
  const Wide twice = rest < 0 ? -2 * rest : 2 * rest;
  if (twice > kFiveDecimals || (twice == kFiveDecimals && four % 2 != 0)) four += nine < 0 ? -1 : 1;
  return Currency::FromRaw(static_cast<std::int64_t>(four));
}

double WholePart(Currency value) { return Int(value / Currency(1)); }

/// The step of the largest chip in which the change is made, or `step` when none serves.
Currency ColorStep(int betId, Currency per, Currency step) {
  const Currency amount = Game.Change == 0 ? Game.Bets[betId] : Abs(Game.Change);
  for (int chip = LargestChip; chip >= SmallestChip; --chip) {
    const Currency value = Game.Bets[chip];
    const double chips = amount / value;
    if (IsWhole(chips) && chips > 1 && value * per <= amount) return value * per;
  }
  return step;
}

int BiasOf(int betId) {
  if (IsLay(betId)) return Game.LayBias;
  if (IsPlace(betId)) return Game.PlaceBias;
  if (betId == PassLineOdds || IsComeOdds(betId)) return Game.DoBias;
  if (betId == DontPassOdds || IsDontComeOdds(betId)) return Game.DontBias;
  return BiasNearest;
}

/// Chooses between the two steps by bias, contract, the multiple asked for and nearness.
Currency ChooseStep(int betId, Steps steps) {
  const auto [up, down] = steps;
  const Currency change = Game.Change;
  const Currency bet = Game.Bets[betId];
  switch (BiasOf(betId)) {
    case BiasIncrease: return change < 0 ? down : up;
    case BiasDecrease:
      return (down <= 0 || change <= 0) && change != 0 && (up != 0 || change >= 0) ? up : down;
    default: break;
  }
  if ((betId == PassLine || IsComeOnNumber(betId)) && bet + down < Game.ContractBets[betId])
    return up;
  if ((betId == DontPass || IsDontComeOnNumber(betId)) && Game.ContractBets[betId] > 0 &&
      bet + up > Game.ContractBets[betId])
    return down;
  if (change != 0) {
    if (up != 0 && IsWhole((bet + up) / change)) return up;
    if (down != 0 && IsWhole((bet + down) / change)) return down;
  }
  if (down <= 0 && change > 0) return up;
  if (up >= 0 && change < 0) return down;
  // Required: a tie takes the higher amount.
  return Abs(up - change) > Abs(down - change) ? down : up;
}

void AddText(const std::string& text) {
  if (!Game.MsgText.empty()) Game.MsgText += "\n\n";
  Game.MsgText += text;
}

bool TextHolds(const char* word) { return Game.MsgText.find(word) != std::string::npos; }

/// Tells of the limit that the adjustment met. Outside Hyper-Drive only.
void TellProperOddsLimit(int betId, Currency result, bool tooHigh) {
  const Currency bet = Game.Bets[betId];
  if ((TextHolds("Maximum") || tooHigh) && result != -bet)
    AddText("Maximum bet for proper odds payoff here is: $" + MoneyText(bet + result));
  if (TextHolds("Minimum") || (Game.Change < 0 && result == 0)) {
    if (result == -bet)
      Game.MsgText.clear();
    else
      AddText("Minimum bet for proper odds payoff here is: $" + MoneyText(bet + result));
  }
}

enum class Adjustment { Done, TryMinorCorrection };

Adjustment AdjustIn(int mode, int betId) {
  const Currency bet = Game.Bets[betId];
  const Currency per = PayoffPer(betId);
  Currency step = Unit() * per;
  const Currency steps = CleanQuotient((bet + Game.Change) / step);
  const double whole = WholePart(steps);
  if (steps == WholeTimes(whole, 1)) return Adjustment::Done;
  Steps choice{WholeTimes(whole + 1, step) - bet, WholeTimes(whole, step) - bet};
  if (per > 1 && mode == AdjustColor && IsBet(betId)) {
    step = ColorStep(betId, per, step);
    const double above = (bet + choice.Up) / step;
    if (!IsWhole(above)) choice.Up = WholeTimes(Int(above) + 1, step) - bet;
    choice.Down = RoundDownTo(bet + choice.Down, step) - bet;
  }
  Currency result = ChooseStep(betId, choice);

  const bool tooHigh = bet + choice.Up > Game.MaxHere;
  const bool tooLow = bet + choice.Down < Game.MinHere;
  if (tooHigh && tooLow) {
    if (Game.Change < 0) {
      result = -bet;
      if (!Game.HyperDriveOn) Game.MsgText.clear();
    } else if (mode == AdjustColor) {
      return Adjustment::TryMinorCorrection;
    } else {
      result = std::max(Game.MaxHere - bet, Currency(0));
      if (!Game.HyperDriveOn) AddText("Unable to auto-adjust bet for proper odds payoff.");
    }
  } else {
    if (result == choice.Down && tooLow) result = Game.Change > 0 && !tooHigh ? choice.Up : -bet;
    if (bet + result > Game.MaxHere) result = choice.Down;
    if (bet + result < Game.MinHere && result != -bet) result = choice.Up;
  }
  if (!Game.HyperDriveOn) TellProperOddsLimit(betId, result, tooHigh);
  Game.Change = result;
  return Adjustment::Done;
}

}  // namespace

void AdjustForProperOdds(int betId) {
  const Currency wanted = Game.Bets[betId] + Game.Change;
  if (wanted <= 0) return;
  // A full odds bet is never pushed by colour.
  const bool fullOdds = IsOddsBet(betId) && wanted == Game.MaxHere;
  const int mode = fullOdds ? AdjustMinor : Game.AutoAdjust;
  if (AdjustIn(mode, betId) == Adjustment::TryMinorCorrection) AdjustIn(AdjustMinor, betId);
}
