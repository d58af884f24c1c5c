#include "bets/vig_and_odds.h"

#include <algorithm>

#include "core/text.h"

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

Currency MultipleForPoint(int point, Currency unchanged) {
  switch (point) {
    case 4:
    case 10: return Game.OddsAllowed410;
    case 5:
    case 9: return Game.OddsAllowed59;
    case 6: return Game.OddsAllowed68;
    // Required: a point of 8 sets nothing, the multiple stays as the last call left it.
    default: return unchanged;
  }
}

Currency MultipleForNumber(int number) {
  if (number == 4 || number == 10) return Game.OddsAllowed410;
  if (number == 5 || number == 9) return Game.OddsAllowed59;
  return Game.OddsAllowed68;
}

int OddsMethodInForce() {
  if (Game.OddsCalcMethod != OddsAutoSelect) return Game.OddsCalcMethod;
  const Currency multiple = Game.OddsMultiple;
  if (multiple == 1) return OddsSingleTimesFlat;
  if (multiple == 2) return OddsColorPush;
  if (multiple == 3) return OddsSingleOfFlat;
  return multiple > 3 ? OddsColorPush : OddsNoPush;
}

/// "X Flat w/ Minor Push": the multiple of the step below `times`, or one more within a flat bet.
Currency MinorPush(Currency times, Currency upTo, Currency step) {
  Currency result = RoundDownTo(times, step);
  if (result < times && result + step < upTo) result += step;
  return result == 0 ? times : result;
}

/// The first amount from `times` on that wins whole chips of `chip`; `times` itself when there is
/// none up to `upTo`.
Currency ColorCandidate(Currency times, Currency upTo, Currency chip, Currency payNum,
                        Currency payDen) {
  // One quotient of exact products: taken in steps, cents would pick up noise.
  const auto num = static_cast<double>(payNum.Raw());
  const double wanted = static_cast<double>(payDen.Raw()) * static_cast<double>(chip.Raw());
  for (Currency candidate = times; candidate <= upTo; candidate += Unit()) {
    if (IsWhole(static_cast<double>(candidate.Raw()) * num / wanted)) return candidate;
  }
  return times;
}

/// "X Flat w/ Color Push": the largest chip whose push stays within one flat bet.
Currency ColorPush(Currency flat, Currency times, Currency upTo, Currency payNum, Currency payDen) {
  // Required: fixed figures, whatever the chip values are. The two smallest chips have none.
  constexpr std::array<int, 3> kFlatMultiples = {100, 25, 5};
  Currency candidate = times;
  for (int rank = 0; rank < 5; ++rank) {
    const Currency chip = Game.Bets[LargestChip - rank];
    const bool smallest = rank == 4;
    const double chipsInFlat = Int(flat / chip);
    const bool raise = smallest ? chipsInFlat >= 1 : chipsInFlat > 1;
    candidate = raise ? ColorCandidate(times, upTo, chip, payNum, payDen) : times;
    if (smallest || !(candidate > times && candidate < upTo)) continue;
    if (rank == 3 || IsWhole(flat / Currency(kFlatMultiples[static_cast<unsigned>(rank)]))) break;
  }
  return candidate;
}

/// The two methods of single odds: the largest of `times` and, for each chip, its whole chips in
/// `amount` raised to an odds step, times `multiple`.
Currency SingleOdds(Currency amount, Currency times, Currency payDen, Currency multiple) {
  Currency result = times;
  for (int chip = SmallestChip; chip <= LargestChip; ++chip) {
    const Currency count = WholeTimes(Int(amount / Game.Bets[chip]), 1);
    result = std::max(result, RoundToOddsStep(count, payDen) * Game.Bets[chip] * multiple);
  }
  return result;
}

}  // namespace

void FigureBuyVig(int betId, Currency amount) {
  Game.BuyVigCalc = 0;
  if (Game.BuyVigPct == 0 || !IsBuy(betId)) return;
  Game.BuyVigCalc = RoundVig(amount * Game.BuyVigPct, Game.RoundBuyVig, amount);
}

void FigureLayVig(int betId, Currency amount) {
  Game.LayVigCalc = 0;
  if (Game.LayVigPct == 0 || !IsLay(betId)) return;
  const PayoffRecord& payoff = Game.Payoff[betId];
  const Currency wouldWin =
      Currency::FromCount((amount * payoff.Win) / payoff.Per * Currency::kScale);
  const Currency vig = wouldWin * Game.LayVigPct;
  if (vig < 0) return;
  Game.LayVigCalc = RoundVig(vig, Game.RoundLayVig, amount);
}

Currency VigHeld(int betId) {
  if (IsBuy(betId)) return Game.BuyVigHeld[betId - Buy4];
  if (IsLay(betId)) return Game.LayVigHeld[betId - Lay4];
  return 0;
}

bool VigIsUpFront(int betId) {
  return (IsBuy(betId) && Game.BuyVigUpFront) || (IsLay(betId) && Game.LayVigUpFront);
}

void RefigureHeldVig() {
  Game.TotalOnTable = 0;
  for (int id = Lay4; id <= LastBet; ++id) Game.TotalOnTable += Game.Bets[id];
  for (int i = 0; i < 6; ++i) {
    FigureBuyVig(Buy4 + i, Game.Bets[Buy4 + i]);
    Game.BuyVigHeld[i] = Game.BuyVigCalc;
    FigureLayVig(Lay4 + i, Game.Bets[Lay4 + i]);
    Game.LayVigHeld[i] = Game.LayVigCalc;
    if (Game.BuyVigUpFront) Game.TotalOnTable += Game.BuyVigCalc;
    if (Game.LayVigUpFront) Game.TotalOnTable += Game.LayVigCalc;
  }
}

Currency RoundToOddsStep(Currency count, Currency step) {
  const double steps = count / step;
  if (steps <= 0.5) return 0;
  return WholeTimes(IsWhole(steps) ? steps : Int(steps) + 1, step);
}

void FigureMaxOdds(int oddsBetId, int flatBetId, Currency payNum, Currency payDen) {
  const bool lineOdds = oddsBetId == PassLineOdds || oddsBetId == DontPassOdds;
  Game.OddsMultiple = lineOdds ? MultipleForPoint(Game.Point, Game.OddsMultiple)
                               : MultipleForNumber(NumberOfBet(oddsBetId));
  const Currency flat = Game.Bets[flatBetId];
  const Currency times = Game.OddsMultiple * flat;
  const Currency upTo = (Game.OddsMultiple + 1) * flat;
  switch (OddsMethodInForce()) {
    case OddsMinorPush: Game.MaxHere = MinorPush(times, upTo, Unit() * payDen); break;
    case OddsColorPush: Game.MaxHere = ColorPush(flat, times, upTo, payNum, payDen); break;
    case OddsSingleTimesFlat: Game.MaxHere = SingleOdds(times, times, payDen, 1); break;
    case OddsSingleOfFlat: Game.MaxHere = SingleOdds(flat, times, payDen, Game.OddsMultiple); break;
    default: Game.MaxHere = times; break;
  }
  Game.MaxHere = RoundDownTo(std::min(Game.MaxHere, RoundDownTo(Game.MaxOddsBet, Unit())), Unit());
}

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
