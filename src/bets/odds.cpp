#include "bets/odds.h"

#include <algorithm>
#include <utility>

namespace {

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

__extension__ using Wide = __int128;

/// The fewest steps that bring `from` to a multiple of `of`, all above 0; -1 when none do. Every
/// amount of a large bet would be too many to try.
Wide StepsToMultiple(Wide from, Wide step, Wide of) {
  // What a step comes to among the multiples, by Euclid: `factor` steps come to `common`.
  Wide common = step % of;
  Wide rest = of;
  Wide factor = 1;
  Wide nextFactor = 0;
  while (rest != 0) {
    const Wide quotient = common / rest;
    common = std::exchange(rest, common - quotient * rest);
    factor = std::exchange(nextFactor, factor - quotient * nextFactor);
  }
  const Wide missing = (of - from % of) % of;
  if (missing % common != 0) return -1;
  const Wide period = of / common;
  return (missing / common % period) * ((factor % period + period) % period) % period;
}

/// The first amount from `times` on that wins whole chips of `chip`; `times` itself when there is
/// none up to `upTo`.
Currency ColorCandidate(Currency times, Currency upTo, Currency chip, Currency payNum,
                        Currency payDen) {
  // One quotient of exact products: taken in steps, cents would pick up noise.
  const auto num = static_cast<double>(payNum.Raw());
  const double wanted = static_cast<double>(payDen.Raw()) * static_cast<double>(chip.Raw());
  constexpr int kQuickSteps = 1000;
  Currency candidate = times;
  for (int step = 0; step < kQuickSteps; ++step, candidate += Unit()) {
    if (candidate > upTo) return times;
    if (IsWhole(static_cast<double>(candidate.Raw()) * num / wanted)) return candidate;
  }
  const Wide steps =
      StepsToMultiple(Wide{candidate.Raw()} * payNum.Raw(), Wide{Unit().Raw()} * payNum.Raw(),
                      Wide{payDen.Raw()} * chip.Raw());
  const bool found = steps >= 0 && steps <= (upTo - candidate).Raw() / Unit().Raw();
  return found ? candidate + Unit() * static_cast<std::int64_t>(steps) : times;
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
Currency RoundToOddsStep(Currency count, Currency step) {
  const double steps = count / step;
  if (steps <= 0.5) return 0;
  return WholeTimes(IsWhole(steps) ? steps : Int(steps) + 1, step);
}

void SetOddsMultiple(Currency multiple) {
  Game.OddsMultiple = multiple;
  ++Game.MultipleSets;
}

void FigureMaxOdds(int oddsBetId, int flatBetId, Currency payNum, Currency payDen) {
  const bool lineOdds = oddsBetId == PassLineOdds || oddsBetId == DontPassOdds;
  if (!lineOdds) {
    SetOddsMultiple(MultipleForNumber(NumberOfBet(oddsBetId)));
  } else if (Game.Point != 0 && Game.Point != 8) {
    // Required: a point of 8 sets nothing, the multiple stays as the last call left it.
    SetOddsMultiple(MultipleForNumber(Game.Point));
  }
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
